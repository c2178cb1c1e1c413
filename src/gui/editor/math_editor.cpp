#include "math_editor.h"

#include "line_marks.h"
#include "math_highlighter.h"
#include "name_completer.h"
#include "recalculation.h"

#include "engine/builtin_table.h"
#include "gui/common/error_dialog.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QTimer>
#include <QToolTip>
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
    connect(document(), &QTextDocument::contentsChange, this, &MathEditor::follow_marks);
}

void MathEditor::follow_marks(int position, int /*removed*/, int added) {
    QTextBlock first = document()->findBlock(position);
    const QTextBlock last = document()->findBlock(position + added);
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        // Undo brought back a text that has a record: whether it is stale is found again.
        const LineMarks* marks = LineMarks::of(block);
        const document::LineRecord* record = marks ? marks->record_for(block.text()) : nullptr;
        if (record && record != marks->judged && !m_refresh_due) {
            m_refresh_due = true;
            QTimer::singleShot(0, this, [this] {
                m_refresh_due = false;
                refresh_stale_marks();
            });
        }
        if (block == last) break;
    }
    // A line split where its text begins (a line break typed or pasted at its start) leaves the
    // marks on the part before; they go with the line's text to the block that now holds it.
    LineMarks* marks = LineMarks::of(first);
    if (added == 0 || !marks || marks->records.empty() || marks->record_for(first.text())) return;
    const std::string& text = marks->records.front()->text;
    for (QTextBlock block = first.next(); block.isValid() && block.position() <= position + added; block = block.next()) {
        if (LineMarks::of(block) || block.text().toStdString() != text) continue;
        LineMarks& moved = LineMarks::make(block);
        moved.records = std::move(marks->records);
        moved.staleness = marks->staleness;
        moved.judged = marks->judged;
        marks->records.clear();
        marks->staleness = {};
        marks->judged = nullptr;
        m_highlighter->refresh_block(block);
        return;
    }
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

document::LineOutcome MathEditor::compute_block(QTextCursor& cursor, const QTextBlock& block) {
    const QString before = block.text();
    engine::NameUse use;
    engine::Parser& parser = m_processor.parser();
    parser.track_names(&use);
    const document::LineOutcome outcome = m_processor.process(before.toStdString());
    parser.track_names(nullptr);
    const QString after = QString::fromStdString(outcome.text);
    if (after != before) {
        cursor.setPosition(block.position());
        cursor.setPosition(block.position() + static_cast<int>(before.length()), QTextCursor::KeepAnchor);
        cursor.insertText(after);
    }
    const QTextBlock computed = document()->findBlock(block.position());
    if (outcome.computed && !outcome.error) {
        LineMarks& marks = LineMarks::make(computed);
        marks.keep(document::make_record(parser, use, outcome.text));
        marks.staleness = {};
        marks.judged = marks.records.front().get();
        marks.differs_text.reset();
    } else if (LineMarks* marks = LineMarks::of(computed)) {
        // No answer stands for this text now, whatever stood for it before.
        const std::string text = outcome.text;
        std::erase_if(marks->records, [&](const auto& kept) { return kept->text == text; });
        marks->staleness = {};
        marks->judged = nullptr;
    }
    m_highlighter->mark_error(computed, outcome.error);
    return outcome;
}

void MathEditor::announce(bool variables_changed, bool functions_changed) {
    if (variables_changed) Q_EMIT variablesChanged();
    if (functions_changed) {
        refresh_names();
        Q_EMIT functionsChanged();
    }
}

void MathEditor::show_line_error(const QString& message) {
    m_last_error = message;
    if (m_services.sounds) m_services.sounds->play(QStringLiteral("Error.wav"));
    if (m_services.error_dialog)
        m_services.error_dialog->show_error(m_last_error,
                                            QRect(viewport()->mapToGlobal(cursorRect().topLeft()), cursorRect().size()),
                                            window()->frameGeometry());
}

bool MathEditor::compute_current_line(desktop::EditorKey key) {
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    cursor.beginEditBlock();
    const document::LineOutcome outcome = compute_block(cursor, block);
    cursor.endEditBlock();
    m_recalculated = outcome.recalculated;
    const QString after = QString::fromStdString(outcome.text);

    // The caret: behind the answer for F4 and Shift+Enter in method 0, at the line's end when
    // Enter computes in the other methods (the new line then follows the whole line).
    const bool to_end = key == desktop::EditorKey::Enter || key == desktop::EditorKey::Equals ||
                        (key == desktop::EditorKey::ShiftEnter && m_services.options.CalculationMethod != 0);
    const int column = to_end ? after.length()
                              : static_cast<int>(QString::fromStdString(outcome.text.substr(0, outcome.caret)).length());
    cursor.setPosition(block.position() + std::min<int>(column, static_cast<int>(after.length())));
    setTextCursor(cursor);

    if (outcome.error) {
        refresh_stale_marks();
        show_line_error(QString::fromStdString(outcome.message));
        return false;
    }
    m_last_error.clear();
    if (!outcome.computed) return true;
    announce(outcome.variables_changed, outcome.functions_changed);
    if (m_services.sounds)
        m_services.sounds->play(outcome.variables_changed || outcome.functions_changed ? QStringLiteral("Add.wav")
                                                                                       : QStringLiteral("Command.wav"));
    if (refresh_stale_marks() > 0 && m_services.options.RecalcDependentLines && !m_recalculating) {
        // A failure further down is shown and marked there as the command shows it; the caret
        // comes back, without a selection, for Enter to move on from this line.
        const QTextCursor caret = textCursor();
        recalculate_lines(*this, RecalcScope::StaleLines);
        setTextCursor(caret);
    }
    return true;
}

int MathEditor::refresh_stale_marks() {
    std::vector<QTextBlock> blocks;
    std::vector<const document::LineRecord*> records;
    blocks.reserve(static_cast<size_t>(document()->blockCount()));
    records.reserve(blocks.capacity());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const LineMarks* marks = LineMarks::of(block);
        blocks.push_back(block);
        records.push_back(marks ? marks->record_for(block.text()) : nullptr);
    }
    const std::vector<document::Staleness> found = document::find_stale(m_processor.parser(), records);
    m_stale_count = 0;
    std::vector<QTextBlock> redraw;
    for (size_t i = 0; i < blocks.size(); ++i) {
        if (found[i].stale) ++m_stale_count;
        LineMarks* marks = LineMarks::of(blocks[i]);
        if (!marks || (marks->staleness == found[i] && marks->judged == records[i])) continue;
        const bool shown_before = marks->staleness.stale && marks->judged && marks->judged == records[i];
        marks->staleness = found[i];
        marks->judged = records[i];
        if (shown_before != (found[i].stale && records[i])) redraw.push_back(blocks[i]);
    }
    m_highlighter->refresh_blocks(redraw);
    return m_stale_count;
}

QString MathEditor::mark_tooltip(const QTextBlock& block) const {
    const LineMarks* marks = LineMarks::of(block);
    if (!marks) return {};
    const QString text = block.text();
    if (marks->is_stale(text))
        return tr("This answer was computed before %1 changed; Recalculate Stale Lines brings it up to date.")
            .arg(QString::fromStdString(document::changed_names_text(marks->staleness.changed)));
    if (marks->differs(text))
        return tr("Computed again from the lines above, this line gives %1.").arg(marks->differs_answer);
    return {};
}

bool MathEditor::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QTextBlock block = cursorForPosition(help->pos()).block();
        const QString tip = mark_tooltip(block);
        if (tip.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), tip, this);
        return true;
    }
    return QPlainTextEdit::viewportEvent(event);
}

void MathEditor::set_recalculating(bool on) {
    m_recalculating = on;
    setReadOnly(on);
}

} // namespace quorvex::gui
