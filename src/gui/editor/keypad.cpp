#include "keypad.h"

#include "document_window.h"
#include "math_editor.h"

#include "gui/common/error_dialog.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBlock>
#include <QToolButton>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

// The caret keys move a selection whole, both of its ends, so it can be slid along a line.
void shift_selection(QTextCursor& cursor, int step) {
    const int anchor = cursor.anchor() + step, position = cursor.position() + step;
    const int last = cursor.document()->characterCount() - 1;
    if (std::min(anchor, position) < 0 || std::max(anchor, position) > last) return;
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
}

// MR and ANS type their text at the caret, which then goes to the line's end.
void recall(MathEditor* editor, const QString& text) {
    QTextCursor cursor = editor->textCursor();
    cursor.insertText(text);
    cursor.movePosition(QTextCursor::EndOfBlock);
    editor->setTextCursor(cursor);
}

} // namespace

Keypad::Keypad(Services& services, std::function<DocumentWindow*()> active, QWidget* parent)
    : QDockWidget(tr("Calculator"), parent), m_services(services), m_active(std::move(active)) {
    setObjectName(QStringLiteral("keypad"));
    auto* panel = new QWidget(this);
    const auto editor = [this]() -> MathEditor* {
        DocumentWindow* window = m_active();
        return window ? window->editor() : nullptr;
    };
    const auto type = [editor](const QString& text) {
        return [editor, text] {
            if (MathEditor* e = editor()) e->insertPlainText(text);
        };
    };
    const auto function = [editor](const char* name, int kind, bool brace) {
        return [editor, name, kind, brace] {
            if (MathEditor* e = editor()) e->set_keypad_line(desktop::insert_function(e->keypad_line(), name, kind, brace));
        };
    };
    const auto apply = [editor](const char* text, bool prefix) {
        return [editor, text, prefix] {
            if (MathEditor* e = editor()) e->set_keypad_line(desktop::apply_operator(e->keypad_line(), text, prefix));
        };
    };

    const auto on_line = [editor](desktop::KeypadLine (*change)(desktop::KeypadLine)) {
        return [editor, change] {
            if (MathEditor* e = editor()) e->set_keypad_line(change(e->keypad_line()));
        };
    };
    const auto move = [editor](const std::function<void(QTextCursor&)>& step) {
        return [editor, step] {
            MathEditor* e = editor();
            if (!e) return;
            QTextCursor cursor = e->textCursor();
            step(cursor);
            e->setTextCursor(cursor);
        };
    };

    // Functions and operators on the operand: six columns.
    // One grid keeps the rows of the three blocks level: functions in columns 0-5, digits in 7-11,
    // memory and caret in 13-14, with gaps between the blocks.
    auto* grid = new QGridLayout;
    constexpr int digits = 7, memory = 13;
    grid->setColumnMinimumWidth(digits - 1, 10);
    grid->setColumnMinimumWidth(memory - 1, 10);
    auto* functions = grid;
    const char* const one_argument[4][6] = {{"SIN", "COS", "TAN", "ASIN", "ACOS", "ATAN"},
                                            {"SINH", "COSH", "TANH", "ASINH", "ACOSH", "ATANH"},
                                            {"COT", "SEC", "CSC", "ABS", "REAL", "IMAG"},
                                            {"LN", "LOG10", "EXP", "SQRT", "CUBERT", nullptr}};
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 6; ++c)
            if (const char* name = one_argument[r][c]) add(functions, r, c, QString::fromLatin1(name), function(name, 1, false));
    add(functions, 3, 5, QStringLiteral("LOG"), function("LOG", 2, false), tr("logarithm of x to a base"));
    add(functions, 4, 0, QStringLiteral("POW"), function("POW", 2, false), tr("x to the power y"));
    add(functions, 4, 1, QStringLiteral("PCHANGE"), function("PCHANGE", 2, false), tr("percent change from x to y"));
    add(functions, 4, 2, QStringLiteral("PERCENT"), function("PERCENT", 2, false), tr("x percent of y"));
    add(functions, 4, 3, QString::fromUtf8("→DEG"), function("DEG", 1, false), tr("radians to degrees"));
    add(functions, 4, 4, QString::fromUtf8("→RAD"), function("RAD", 1, false), tr("degrees to radians"));
    add(functions, 4, 5, QStringLiteral("n!"), apply("!", false), tr("factorial"));
    const char* const lists[8] = {"SUMX", "SUMXSQ", "MEAN", "MEDIAN", "SSTDEV", "PSTDEV", "SVAR", "PVAR"};
    for (int i = 0; i < 8; ++i)
        add(functions, 5 + i / 6, i % 6, QString::fromLatin1(lists[i]), function(lists[i], 2, true), tr("of a list"));
    add(functions, 6, 2, QString::fromUtf8("x²"), apply("^2", false));
    add(functions, 6, 3, QString::fromUtf8("x³"), apply("^3", false));
    add(functions, 6, 4, QStringLiteral("1/x"), apply("1/", true));
    add(functions, 6, 5, QStringLiteral("10^x"), apply("10^", true));
    add(functions, 7, 0, QString::fromUtf8("ʸ√x"), on_line(&desktop::inverse_power), tr("the y-th root of x"));
    add(functions, 7, 1, QString::fromUtf8("±"), on_line(&desktop::toggle_sign), tr("change the operand's sign"));
    add(functions, 7, 2, QStringLiteral("(x)"), on_line(&desktop::wrap_parentheses), tr("the operand in parentheses"));
    add(functions, 7, 3, QStringLiteral("PI"), type(QStringLiteral("PI")));
    add(functions, 7, 4, QStringLiteral("e"), type(QStringLiteral("e")));
    add(functions, 7, 5, QStringLiteral("i"), type(QStringLiteral("i")));

    // Digits, arithmetic and comparisons: five columns.
    const char* const keys[5][5] = {{"7", "8", "9", "/", "<"},   {"4", "5", "6", "*", ">"},
                                    {"1", "2", "3", "-", "<="},  {"0", ".", ",", "+", ">="},
                                    {"(", ")", "=", "==", "!="}};
    for (int r = 0; r < 5; ++r)
        for (int c = 0; c < 5; ++c) add(grid, r, digits + c, QString::fromLatin1(keys[r][c]), type(QString::fromLatin1(keys[r][c])));
    add(grid, 5, digits + 0, QString::fromUtf8("⌫"), [editor] {
        if (MathEditor* e = editor()) e->textCursor().deletePreviousChar();
    }, tr("delete backwards"));
    add(grid, 5, digits + 1, QStringLiteral("Del"), [editor] {
        MathEditor* e = editor();
        // On an empty line there is nothing to delete: the line end stays.
        if (!e || (e->textCursor().block().text().isEmpty() && !e->textCursor().hasSelection())) return;
        e->textCursor().deleteChar();
    }, tr("delete forwards"));
    add(grid, 5, digits + 2, QStringLiteral("Del line"), [editor] {
        MathEditor* e = editor();
        if (!e) return;
        QTextCursor cursor = e->textCursor();
        const QTextBlock block = cursor.block();
        int from = block.position(), to = block.position() + block.length() - 1;
        if (block.next().isValid()) ++to;                 // the line with its line end
        else if (block.previous().isValid()) --from;      // the last line takes the one before it
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        e->setTextCursor(cursor);
    }, tr("delete the caret's line"));
    add(grid, 6, digits, QStringLiteral("Enter"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        if (e->textCursor().block().text().trimmed().isEmpty()) {
            tell("There is no expression to compute!");
            return;
        }
        const bool computed = e->compute_current_line(desktop::EditorKey::Enter);
        QTextCursor cursor = e->textCursor();
        cursor.movePosition(QTextCursor::EndOfBlock);
        const bool last = !cursor.block().next().isValid();
        // A computed line gets a new one after it. A failed one keeps the caret to be corrected; at
        // the end of the text a line is still added below it.
        if (computed || last) {
            cursor.insertBlock();
            if (!computed) cursor.movePosition(QTextCursor::PreviousBlock), cursor.movePosition(QTextCursor::EndOfBlock);
        }
        e->setTextCursor(cursor);
    }, tr("compute the line"));
    const auto span = [grid](int row, int column, int rows, int columns) {
        QWidget* button = grid->itemAtPosition(row, column)->widget();
        grid->removeWidget(button);
        grid->addWidget(button, row, column, rows, columns);
        return button;
    };
    span(5, digits + 2, 1, 3);
    span(6, digits, 2, 5)->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);

    // Memory, angle unit and the caret: two columns.
    // MS keeps the selection or the caret's line as text; M+ adds it to what is kept. Without a
    // selection the caret goes to the line's end, as after reading the whole line.
    const auto save = [this, editor](bool add) {
        return [this, editor, add] {
            MathEditor* e = editor();
            if (!e) return;
            QTextCursor cursor = e->textCursor();
            const QString text = cursor.hasSelection() ? cursor.selectedText() : cursor.block().text();
            if (text.isEmpty()) {
                tell("You must select the text or place the cursor on the line that you would like to save in the "
                     "Math Editor.");
                return;
            }
            if (!cursor.hasSelection()) {
                cursor.movePosition(QTextCursor::EndOfBlock);
                e->setTextCursor(cursor);
            }
            tell(e->memory().save(text.toStdString(), add));
        };
    };
    add(grid, 0, memory + 0, QStringLiteral("MS"), save(false), tr("keep the line or selection in memory"));
    add(grid, 0, memory + 1, QStringLiteral("M+"), save(true), tr("add the line or selection to memory"));
    add(grid, 1, memory + 0, QStringLiteral("M-"), [this, editor] {
        if (MathEditor* e = editor()) tell(e->memory().remove_last());
    }, tr("take the last addition out of memory"));
    add(grid, 1, memory + 1, QStringLiteral("MR"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        if (!e->memory().text()) {
            tell("You must first save the text you would like to recall using the memory save button MS.");
            return;
        }
        recall(e, QString::fromStdString(*e->memory().text()));
    }, tr("type the memory's text"));
    add(grid, 2, memory + 0, QStringLiteral("MC"), [this, editor] {
        if (MathEditor* e = editor())
            if (const auto said = e->memory().clear()) tell(*said);
    }, tr("clear the memory"));
    add(grid, 2, memory + 1, QStringLiteral("ANS"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        const std::string& last = e->processor().LastAnswer();
        if (last.empty()) {
            tell("You must first compute an expression in the Math Editor before you can recall it.");
            return;
        }
        recall(e, QString::fromStdString(last));
    }, tr("type the last answer"));
    add(grid, 3, memory + 0, QStringLiteral("DEG"), [this] { set_angle_unit(0); }, tr("angles in degrees"));
    add(grid, 3, memory + 1, QStringLiteral("RAD"), [this] { set_angle_unit(1); }, tr("angles in radians"));
    add(grid, 4, memory + 0, QString::fromUtf8("◀"), move([](QTextCursor& c) { shift_selection(c, -1); }),
        tr("caret one place left"));
    add(grid, 4, memory + 1, QString::fromUtf8("▶"), move([](QTextCursor& c) { shift_selection(c, 1); }),
        tr("caret one place right"));
    add(grid, 5, memory + 0, QString::fromUtf8("⇤"), move([](QTextCursor& c) { c.movePosition(QTextCursor::StartOfBlock); }),
        tr("start of the line"));
    add(grid, 5, memory + 1, QString::fromUtf8("⇥"), move([](QTextCursor& c) { c.movePosition(QTextCursor::EndOfBlock); }),
        tr("end of the line"));
    add(grid, 6, memory + 0, QString::fromUtf8("▲"), move([](QTextCursor& c) {
        if (c.block().previous().isValid()) c.setPosition(c.block().previous().position());
    }), tr("start of the line above"));
    add(grid, 6, memory + 1, QString::fromUtf8("▼"), move([](QTextCursor& c) {
        // Below the last line a new one is made.
        if (!c.block().next().isValid()) {
            c.movePosition(QTextCursor::EndOfBlock);
            c.insertBlock();
        } else {
            c.setPosition(c.block().next().position());
        }
    }), tr("start of the line below"));

    m_tools = new QHBoxLayout;
    m_tools->addStretch();
    auto* pads = new QHBoxLayout;
    pads->addLayout(grid);
    pads->addStretch();
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(6, 4, 6, 6);
    layout->addLayout(m_tools);
    layout->addLayout(pads);
    grid->setSpacing(3);
    setWidget(panel);
}

void Keypad::add_tools(const QList<QAction*>& actions) {
    for (QAction* action : actions) {
        if (!action) continue;
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        m_tools->insertWidget(m_tools->count() - 1, button);
    }
}

void Keypad::set_angle_unit(int type) {
    DocumentWindow* window = m_active();
    if (!window) return;
    window->parser().set_angle_type(type);
    window->parser().set_vars_saved(false);
    tell(type == 0 ? "All trignometric angle computations will now be made using angles measured in degrees."
                   : "All trignometric angle computations will now be made using angles measured in radians.");
}

void Keypad::add(QGridLayout* grid, int row, int column, const QString& caption, std::function<void()> action,
                 const QString& tip) {
    auto* button = new QPushButton(caption, this);
    button->setFocusPolicy(Qt::NoFocus); // the editor keeps the caret
    button->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("PCHANGE")) + 12);
    if (!tip.isEmpty()) button->setToolTip(tip);
    const auto run = [this, action] {
        if (m_services.error_dialog) m_services.error_dialog->hide();
        action();
    };
    connect(button, &QPushButton::clicked, this, run);
    m_actions.insert(caption, run);
    grid->addWidget(button, row, column);
}

bool Keypad::press(const QString& caption) {
    const auto found = m_actions.constFind(caption);
    if (found == m_actions.constEnd()) return false;
    (*found)();
    return true;
}

void Keypad::tell(const std::string& text) {
    MessageReporter reporter(this, m_services.collected_messages);
    reporter.report(text, "Calculator", engine::MessageKind::Information);
}

} // namespace quorvex::gui
