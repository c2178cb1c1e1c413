#include "math_editor.h"

#include "math_highlighter.h"
#include "name_completer.h"

#include "engine/builtin_table.h"
#include "gui/common/error_dialog.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QTextBlock>

namespace quorvex::gui {

MathEditor::MathEditor(Services& services, engine::Parser& parser, QWidget* parent)
    : QPlainTextEdit(parent), m_services(services), m_processor(parser) {
    setObjectName(QStringLiteral("mathEditor"));
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(false);
    apply_options();
    const engine::BuiltinTable* table = parser.builtins();
    m_highlighter = new MathHighlighter(document(), m_processor, [table](std::string_view name) {
        return table && (table->function_index(name) >= 0 || table->constant_index(name) >= 0);
    });
    m_completer = new NameCompleter(parser, this);
    m_completer->setWidget(this);
    connect(m_completer, qOverload<const QModelIndex&>(&QCompleter::activated), this, &MathEditor::insert_completion);
    m_completer->popup()->installEventFilter(this);
    m_highlighter->set_function_names(m_completer->function_names());
    m_highlighter->adapt_to_palette(palette());
}

desktop::KeypadLine MathEditor::keypad_line() const {
    // The keypad counts in bytes of UTF-8, the editor in UTF-16 units: the same places either way.
    const QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    const QString text = block.text();
    const auto bytes_to = [&](int position) {
        const int at = std::clamp(position - block.position(), 0, static_cast<int>(text.length()));
        return static_cast<size_t>(text.left(at).toUtf8().size());
    };
    return {text.toStdString(), bytes_to(cursor.selectionStart()), bytes_to(cursor.selectionEnd())};
}

void MathEditor::set_keypad_line(const desktop::KeypadLine& line) {
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    cursor.beginEditBlock();
    cursor.setPosition(block.position());
    cursor.setPosition(block.position() + block.text().length(), QTextCursor::KeepAnchor);
    cursor.insertText(QString::fromStdString(line.text));
    cursor.endEditBlock();
    const auto units_to = [&line](size_t bytes) {
        return static_cast<int>(QString::fromUtf8(line.text.data(), static_cast<qsizetype>(std::min(bytes, line.text.size()))).size());
    };
    cursor.setPosition(block.position() + units_to(line.start));
    cursor.setPosition(block.position() + units_to(line.end), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void MathEditor::refresh_names() {
    m_completer->refresh_document_functions();
    m_highlighter->set_function_names(m_completer->function_names());
}

void MathEditor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) m_highlighter->adapt_to_palette(palette());
    QPlainTextEdit::changeEvent(event);
}

void MathEditor::update_completion(const QString& typed) {
    QTextCursor cursor = textCursor();
    // The name being typed: letters, digits and '_' left of the caret.
    const QString text = cursor.block().text();
    int start = cursor.positionInBlock();
    while (start > 0 && (text.at(start - 1).isLetterOrNumber() || text.at(start - 1) == QLatin1Char('_'))) --start;
    const QString prefix = text.mid(start, cursor.positionInBlock() - start);
    const bool naming = !typed.isEmpty() && (typed.back().isLetterOrNumber() || typed.back() == QLatin1Char('_'));
    if (!naming || prefix.length() < 2 || !prefix.front().isLetter()) {
        m_completer->popup()->hide();
        return;
    }
    if (prefix != m_completer->completionPrefix() || !m_completer->popup()->isVisible()) {
        m_completer->setCompletionPrefix(prefix);
        m_completer->popup()->setCurrentIndex(m_completer->completionModel()->index(0, 0));
        m_moved_in_names = false;
    }
    if (m_completer->completionCount() == 0) {
        m_completer->popup()->hide();
        return;
    }
    QRect place = cursorRect();
    place.setWidth(m_completer->popup_width());
    m_completer->complete(place);
}

void MathEditor::insert_completion(const QModelIndex& index) {
    QString text = index.sibling(index.row(), 0).data(NameCompleter::InsertRole).toString();
    if (text.isEmpty()) return;
    QTextCursor cursor = textCursor();
    // A bracket the line has already stays the only one.
    const QString line = cursor.block().text();
    const int column = cursor.positionInBlock();
    const QChar next = column < line.length() ? line.at(column) : QChar();
    if ((next == QLatin1Char('(') || next == QLatin1Char('[')) && (text.endsWith(QLatin1Char('(')) || text.endsWith(QLatin1Char('['))))
        text.chop(1);
    const int typed = static_cast<int>(m_completer->completionPrefix().length());
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, typed);
    cursor.insertText(text);
    setTextCursor(cursor);
}

bool MathEditor::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_completer->popup() && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            m_moved_in_names = true;
            break;
        default:
            break;
        }
    }
    return QPlainTextEdit::eventFilter(watched, event);
}

void MathEditor::apply_options() {
    document::LineSettings settings = m_processor.settings();
    settings.calculation_method = m_services.options.CalculationMethod;
    m_processor.set_settings(settings);
}

void MathEditor::set_as_fraction(bool on) {
    document::LineSettings settings = m_processor.settings();
    settings.as_fraction = on;
    m_processor.set_settings(settings);
}

void MathEditor::close_error() {
    if (m_services.error_dialog && m_services.error_dialog->isVisible()) m_services.error_dialog->hide();
}

char MathEditor::char_before_caret() const {
    const QTextCursor cursor = textCursor();
    const int column = cursor.positionInBlock();
    if (column == 0) return 0;
    const QChar c = cursor.block().text().at(column - 1);
    return c.unicode() < 128 ? static_cast<char>(c.unicode()) : '?';
}

void MathEditor::keyPressEvent(QKeyEvent* event) {
    close_error();
    const int key = event->key();
    if (m_completer->popup()->isVisible()) {
        // The list of names takes these keys: Tab picks the name, Escape closes. Enter picks only
        // a name the user went to with the arrows; otherwise it computes, as it always does.
        const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
        const bool chosen = m_moved_in_names && m_completer->popup()->currentIndex().isValid();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Escape || (enter && chosen)) {
            event->ignore();
            return;
        }
    }
    if (key == Qt::Key_Delete && event->modifiers() == Qt::ControlModifier) {
        clear_selection(); // Clear, not the deletion of the next word
        return;
    }
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    std::optional<desktop::EditorKey> editor_key;
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && plain)
        editor_key = shift ? desktop::EditorKey::ShiftEnter : desktop::EditorKey::Enter;
    else if (key == Qt::Key_F4 && plain)
        editor_key = desktop::EditorKey::F4;
    else if (event->text() == QStringLiteral("="))
        editor_key = desktop::EditorKey::Equals;
    if (!editor_key) {
        QPlainTextEdit::keyPressEvent(event);
        update_completion(event->text());
        return;
    }
    m_completer->popup()->hide();
    const desktop::KeyDecision decision =
        desktop::decide_key(*editor_key, m_services.options.CalculationMethod, char_before_caret());
    const bool succeeded = decision.compute && compute_current_line(*editor_key);
    if (!decision.type) return;
    if (*editor_key == desktop::EditorKey::ShiftEnter || *editor_key == desktop::EditorKey::Enter) {
        move_on_after_compute(decision.compute, succeeded);
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void MathEditor::clear_selection() {
    QTextCursor cursor = textCursor();
    if (!cursor.hasSelection()) return;
    cursor.removeSelectedText();
    setTextCursor(cursor);
}

void MathEditor::move_on_after_compute(bool computed, bool succeeded) {
    QTextCursor cursor = textCursor();
    const bool last_line = !cursor.block().next().isValid();
    switch (desktop::after_compute(computed && m_recalculated, computed && !succeeded, last_line)) {
    case desktop::AfterCompute::NewLine:
        // A plain new line, whatever Shift says: Shift+Enter would make a line separator.
        cursor.insertBlock();
        setTextCursor(cursor);
        break;
    case desktop::AfterCompute::NextLine:
        cursor.movePosition(QTextCursor::NextBlock);
        cursor.movePosition(QTextCursor::EndOfBlock);
        setTextCursor(cursor);
        break;
    case desktop::AfterCompute::StayOnLine:
        break;
    }
    ensureCursorVisible();
}

void MathEditor::focusOutEvent(QFocusEvent* event) {
    // The error dialog itself never takes the focus, so any focus change is the user moving on.
    close_error();
    QPlainTextEdit::focusOutEvent(event);
}

bool MathEditor::compute_current_line(desktop::EditorKey key) {
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    const QString before = block.text();
    const std::string line = before.toStdString();
    const document::LineOutcome outcome = m_processor.process(line);
    m_recalculated = outcome.recalculated;
    const QString after = QString::fromStdString(outcome.text);

    if (after != before) {
        cursor.beginEditBlock();
        cursor.setPosition(block.position());
        cursor.setPosition(block.position() + before.length(), QTextCursor::KeepAnchor);
        cursor.insertText(after);
        cursor.endEditBlock();
    }
    // The caret: behind the answer for F4 and Shift+Enter in method 0, at the line's end when
    // Enter computes in the other methods (the new line then follows the whole line).
    const bool to_end = key == desktop::EditorKey::Enter || key == desktop::EditorKey::Equals ||
                        (key == desktop::EditorKey::ShiftEnter && m_services.options.CalculationMethod != 0);
    const int column = to_end ? after.length()
                              : static_cast<int>(QString::fromStdString(outcome.text.substr(0, outcome.caret)).length());
    cursor.setPosition(block.position() + std::min<int>(column, static_cast<int>(after.length())));
    setTextCursor(cursor);

    m_highlighter->mark_error(document()->findBlock(block.position()), outcome.error);
    if (outcome.error) {
        m_last_error = QString::fromStdString(outcome.message);
        if (m_services.sounds) m_services.sounds->play(QStringLiteral("Error.wav"));
        if (m_services.error_dialog)
            m_services.error_dialog->show_error(m_last_error,
                                                QRect(viewport()->mapToGlobal(cursorRect().topLeft()), cursorRect().size()),
                                                window()->frameGeometry());
        return false;
    }
    m_last_error.clear();
    if (!outcome.computed) return true;
    if (outcome.variables_changed) Q_EMIT variablesChanged();
    if (outcome.functions_changed) {
        refresh_names();
        Q_EMIT functionsChanged();
    }
    if (m_services.sounds)
        m_services.sounds->play(outcome.variables_changed || outcome.functions_changed ? QStringLiteral("Add.wav")
                                                                                       : QStringLiteral("Command.wav"));
    return true;
}

} // namespace quorvex::gui
