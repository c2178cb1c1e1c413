#include "find_replace_dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>

namespace quorvex::gui {

FindReplaceDialog::FindReplaceDialog(QWidget* parent)
    : QDialog(parent), m_find(new QLineEdit(this)), m_replace(new QLineEdit(this)),
      m_replace_label(new QLabel(tr("Replace &with:"), this)), m_case(new QCheckBox(tr("Match &case"), this)),
      m_words(new QCheckBox(tr("Whole w&ords"), this)), m_note(new QLabel(this)),
      m_replace_button(new QPushButton(tr("&Replace"), this)),
      m_replace_all_button(new QPushButton(tr("Replace &All"), this)) {
    setObjectName(QStringLiteral("findReplace"));
    auto* find_label = new QLabel(tr("Fi&nd what:"), this);
    find_label->setBuddy(m_find);
    m_replace_label->setBuddy(m_replace);
    auto* next = new QPushButton(tr("Find &Next"), this);
    auto* previous = new QPushButton(tr("Find &Previous"), this);
    next->setDefault(true);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);

    auto* grid = new QGridLayout;
    grid->addWidget(find_label, 0, 0);
    grid->addWidget(m_find, 0, 1);
    grid->addWidget(next, 0, 2);
    grid->addWidget(m_replace_label, 1, 0);
    grid->addWidget(m_replace, 1, 1);
    grid->addWidget(previous, 1, 2);
    grid->addWidget(m_case, 2, 1);
    grid->addWidget(m_replace_button, 2, 2);
    grid->addWidget(m_words, 3, 1);
    grid->addWidget(m_replace_all_button, 3, 2);
    grid->setColumnStretch(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addWidget(m_note);
    layout->addWidget(close);

    connect(next, &QPushButton::clicked, this, [this] { find_next(false); });
    connect(previous, &QPushButton::clicked, this, [this] { find_next(true); });
    connect(m_replace_button, &QPushButton::clicked, this, &FindReplaceDialog::replace_one);
    connect(m_replace_all_button, &QPushButton::clicked, this, &FindReplaceDialog::replace_all);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_find, &QLineEdit::textChanged, m_note, &QLabel::clear);
    resize(460, sizeHint().height());
}

void FindReplaceDialog::open_for(QPlainTextEdit* editor, bool replace) {
    m_editor = editor;
    setWindowTitle(replace ? tr("Replace") : tr("Find"));
    for (QWidget* widget : {static_cast<QWidget*>(m_replace_label), static_cast<QWidget*>(m_replace),
                            static_cast<QWidget*>(m_replace_button), static_cast<QWidget*>(m_replace_all_button)})
        widget->setVisible(replace);
    const QString selected = editor ? editor->textCursor().selectedText() : QString();
    // A selection within one line is what the user wants to find.
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) m_find->setText(selected);
    m_note->clear();
    show();
    raise();
    activateWindow();
    m_find->setFocus();
    m_find->selectAll();
}

int FindReplaceDialog::flags(bool backwards) const {
    QTextDocument::FindFlags found;
    if (backwards) found |= QTextDocument::FindBackward;
    if (m_case->isChecked()) found |= QTextDocument::FindCaseSensitively;
    if (m_words->isChecked()) found |= QTextDocument::FindWholeWords;
    return static_cast<int>(found);
}

bool FindReplaceDialog::find_next(bool backwards) {
    const QString text = m_find->text();
    if (!m_editor || text.isEmpty()) return false;
    const auto how = QTextDocument::FindFlags(flags(backwards));
    if (m_editor->find(text, how)) {
        m_note->clear();
        return true;
    }
    // Once around the document: from the other end.
    QTextCursor cursor = m_editor->textCursor();
    const QTextCursor kept = cursor;
    cursor.movePosition(backwards ? QTextCursor::End : QTextCursor::Start);
    m_editor->setTextCursor(cursor);
    if (m_editor->find(text, how)) {
        m_note->setText(tr("Continued from the %1.").arg(backwards ? tr("end") : tr("beginning")));
        return true;
    }
    m_editor->setTextCursor(kept);
    m_note->setText(tr("\"%1\" was not found.").arg(text));
    return false;
}

bool FindReplaceDialog::replace_one() {
    if (!m_editor || m_find->text().isEmpty()) return false;
    QTextCursor cursor = m_editor->textCursor();
    const Qt::CaseSensitivity sensitivity = m_case->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (cursor.hasSelection() && cursor.selectedText().compare(m_find->text(), sensitivity) == 0) {
        cursor.insertText(m_replace->text());
        m_editor->setTextCursor(cursor);
    }
    return find_next(false);
}

int FindReplaceDialog::replace_all() {
    if (!m_editor || m_find->text().isEmpty()) return 0;
    QTextDocument* document = m_editor->document();
    const auto how = QTextDocument::FindFlags(flags(false));
    QTextCursor edit(document);
    edit.beginEditBlock();
    int count = 0;
    QTextCursor found = document->find(m_find->text(), 0, how);
    while (!found.isNull()) {
        found.insertText(m_replace->text());
        ++count;
        found = document->find(m_find->text(), found.position(), how);
    }
    edit.endEditBlock();
    m_note->setText(count == 1 ? tr("1 replacement made.") : tr("%1 replacements made.").arg(count));
    return count;
}

void FindReplaceDialog::set_match_case(bool on) { m_case->setChecked(on); }

void FindReplaceDialog::set_whole_words(bool on) { m_words->setChecked(on); }

} // namespace quorvex::gui
