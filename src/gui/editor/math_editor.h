#pragma once
#include "desktop/editor_keys.h"
#include "desktop/keypad_text.h"
#include "document/line_processor.h"

#include <QPlainTextEdit>
#include <QTextBlock>

namespace quorvex::gui {

class MathHighlighter;
class NameCompleter;
struct Services;

// The pane in which the user types mathematics. The text is the document's text; a line is
// evaluated when the user asks (Enter, Shift+Enter, '=' or F4, by the calculation method) and its
// answer is written into the line by the line processor. Errors go to the shared error dialog,
// which the next key or a focus change closes.
class MathEditor : public QPlainTextEdit {
    Q_OBJECT

public:
    MathEditor(Services& services, engine::Parser& parser, QWidget* parent = nullptr);

    // Evaluates the caret's line as the key `key` asks; false when the engine refused it. With
    // the option to recalculate dependent lines, the lines it made stale follow.
    bool compute_current_line(desktop::EditorKey key = desktop::EditorKey::F4);
    // Computes `block` as Enter would, inside an edit the caller opened on `cursor`: the answer
    // written, what the line read and wrote kept with it, a refusal marked. Shows nothing.
    document::LineOutcome compute_block(QTextCursor& cursor, const QTextBlock& block);
    // Tells the lists and the colouring what computed lines changed, as Enter does.
    void announce(bool variables_changed, bool functions_changed);
    // Shows the message of the refused line under the caret as Enter does: sound and box.
    void show_line_error(const QString& message);
    // Marks every line whose answer a change has made out of date and clears the marks no longer
    // due; returns the count of stale lines.
    int refresh_stale_marks();
    int stale_count() const { return m_stale_count; }
    // What the mouse shows over a marked line: why its answer is stale or differs; else empty.
    QString mark_tooltip(const QTextBlock& block) const;
    // A recalculation runs: the text takes no typing, and the document may not close.
    bool recalculating() const { return m_recalculating; }
    void set_recalculating(bool on);
    void set_as_fraction(bool on);
    // Clear (Ctrl+Delete): the selected text goes, not to the clipboard; nothing without one.
    void clear_selection();
    bool as_fraction() const { return m_processor.settings().as_fraction; }
    // Takes the calculation method of the program's options (after the options dialog).
    void apply_options();
    document::LineProcessor& processor() { return m_processor; }
    // The message of the last refused line, empty after a success.
    const QString& last_error() const { return m_last_error; }
    NameCompleter* completer() const { return m_completer; }
    MathHighlighter* highlighter() const { return m_highlighter; }
    // The document's functions changed (a declaration, a load): completion and colours follow.
    void refresh_names();
    // The caret's line and the selection within it, for the keypad, and the line put back.
    desktop::KeypadLine keypad_line() const;
    void set_keypad_line(const desktop::KeypadLine& line);
    // The keypad's text memory of this editor.
    desktop::KeypadMemory& memory() { return m_memory; }

Q_SIGNALS:
    void variablesChanged();
    void functionsChanged();

protected:
    // Over a marked line the tooltip says why its answer is out of date.
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // Watches the name list for the arrow keys: once the user moved in it, Enter takes a name.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void close_error();
    // Keeps the marks with their lines as the text changes: a line split at its start, a text
    // that undo brings back.
    void follow_marks(int position, int removed, int added);
    void update_completion(const QString& typed);
    void insert_completion(const QModelIndex& index);
    // After Enter or Shift+Enter computed: a new line, the next line, or the same line.
    void move_on_after_compute(bool computed, bool succeeded);
    char char_before_caret() const;

    Services& m_services;
    document::LineProcessor m_processor;
    QString m_last_error;
    bool m_recalculated = false; // the last line computed held an old answer
    bool m_moved_in_names = false; // the user went through the name list with the arrow keys
    bool m_recalculating = false;
    bool m_refresh_due = false; // the stale marks are found again once the events are done
    int m_stale_count = 0;
    desktop::KeypadMemory m_memory;
    MathHighlighter* m_highlighter;
    NameCompleter* m_completer;
};

} // namespace quorvex::gui
