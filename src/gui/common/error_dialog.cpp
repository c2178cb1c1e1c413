#include "error_dialog.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace quorvex::gui {

ErrorDialog::ErrorDialog(QWidget* parent) : QDialog(parent), m_text(new QLabel(this)) {
    setWindowTitle(QStringLiteral("Computation Error"));
    setObjectName(QStringLiteral("errorDialog"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setModal(false);

    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size, size));
    icon->setAlignment(Qt::AlignTop);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_text->setMinimumWidth(fontMetrics().averageCharWidth() * 40);

    auto* row = new QHBoxLayout;
    row->addWidget(icon);
    row->addWidget(m_text, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setFocusPolicy(Qt::NoFocus);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::hide);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(buttons);
}

void ErrorDialog::show_error(const QString& text, const QRect& caret, const QRect& within) {
    if (text.isEmpty()) return;
    m_text->setText(text);
    adjustSize();
    // The whole window counts, its title bar too (known once it has been shown).
    const QSize whole = size() + (frameGeometry().size() - geometry().size()).expandedTo(QSize(0, 0));
    const QScreen* screen = QGuiApplication::screenAt(caret.center());
    if (!screen && parentWidget()) screen = parentWidget()->screen();
    if (!screen) screen = QGuiApplication::primaryScreen();
    QRect room = screen ? screen->availableGeometry() : within;
    // Inside the main window when the dialog fits there, so that it does not hang below its edge.
    const QRect inside = within.intersected(room);
    if (inside.width() >= whole.width() && inside.height() >= whole.height()) room = inside;
    const int gap = fontMetrics().height() / 2;
    int y = caret.bottom() + gap;
    if (y + whole.height() - 1 > room.bottom()) y = caret.top() - gap - whole.height(); // above the line
    QPoint at(caret.left(), y);
    if (!room.isEmpty()) {
        at.setX(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() + 1 - whole.width())));
        at.setY(std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() + 1 - whole.height())));
    }
    move(at);
    show();
}

QString ErrorDialog::text() const { return m_text->text(); }

} // namespace quorvex::gui
