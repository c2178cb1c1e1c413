#pragma once
#include <QDialog>
#include <QPointer>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace quorvex::gui {

// Find (Ctrl+F) and Replace (Ctrl+H) over the math editor's text: the next or previous match,
// case and whole words as asked, wrapping around the document once; Replace All in one step
// that a single undo takes back. It works on whichever editor it is given.
class FindReplaceDialog : public QDialog {
    Q_OBJECT

public:
    explicit FindReplaceDialog(QWidget* parent = nullptr);

    // Shows the dialog for `editor`, with the replace fields or without, the editor's selection
    // as the text to find.
    void open_for(QPlainTextEdit* editor, bool replace);
    // The editor to search from now on (another document became the active one).
    void set_editor(QPlainTextEdit* editor) { m_editor = editor; }

    QLineEdit* find_field() const { return m_find; }
    QLineEdit* replace_field() const { return m_replace; }
    // Selects the next match (the previous one with `backwards`); false, with a note, when
    // there is none anywhere.
    bool find_next(bool backwards = false);
    // Replaces the selected match and goes on to the next one.
    bool replace_one();
    // Replaces every match; the number replaced.
    int replace_all();
    void set_match_case(bool on);
    void set_whole_words(bool on);

private:
    int flags(bool backwards) const;

    // The editor searched; it goes away with its document, and the dialog then does nothing.
    QPointer<QPlainTextEdit> m_editor;
    QLineEdit* m_find;
    QLineEdit* m_replace;
    QLabel* m_replace_label;
    QCheckBox* m_case;
    QCheckBox* m_words;
    QLabel* m_note;
    QPushButton* m_replace_button;
    QPushButton* m_replace_all_button;
};

} // namespace quorvex::gui
