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

void ErrorDialog::show_error(const QString& text, const QPoint& anchor) {
    if (text.isEmpty()) return;
    m_text->setText(text);
    adjustSize();
    // Below the caret's line, kept on the screen.
    QPoint at = anchor + QPoint(0, fontMetrics().height());
    if (const QScreen* screen = QGuiApplication::screenAt(anchor)) {
        const QRect room = screen->availableGeometry();
        at.setX(std::clamp(at.x(), room.left(), std::max(room.left(), room.right() - width())));
        at.setY(std::clamp(at.y(), room.top(), std::max(room.top(), room.bottom() - height())));
    }
    move(at);
    show();
}

QString ErrorDialog::text() const { return m_text->text(); }

} // namespace quorvex::gui
