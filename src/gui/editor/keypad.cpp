#include "keypad.h"

#include "document_window.h"
#include "math_editor.h"

#include "gui/common/error_dialog.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"

#include <QGridLayout>
#include <QPushButton>
#include <QTextBlock>

namespace quorvex::gui {

Keypad::Keypad(Services& services, std::function<DocumentWindow*()> active, QWidget* parent)
    : QDockWidget(tr("Calculator"), parent), m_services(services), m_active(std::move(active)) {
    setObjectName(QStringLiteral("keypad"));
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setSpacing(3);
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

    // Functions, operators, digits: a grid of eight columns.
    const char* const functions[] = {"SIN", "COS", "TAN", "ASIN", "ACOS", "ATAN", "LN", "LOG10", "EXP", "SQRT", "ABS", "CUBERT"};
    int n = 0;
    for (const char* name : functions) {
        add(grid, n / 6, n % 6, QString::fromLatin1(name), function(name, 1, false));
        ++n;
    }
    add(grid, 0, 6, QStringLiteral("POW"), function("POW", 2, false), tr("x to the power y"));
    add(grid, 1, 6, QStringLiteral("MEAN"), function("MEAN", 2, true), tr("mean of a list"));
    add(grid, 0, 7, QStringLiteral("DEG"), [this] {
        if (DocumentWindow* window = m_active()) {
            window->parser().set_angle_type(0);
            window->parser().set_vars_saved(false);
            tell("All trignometric angle computations will now be made using angles measured in degrees.");
        }
    });
    add(grid, 1, 7, QStringLiteral("RAD"), [this] {
        if (DocumentWindow* window = m_active()) {
            window->parser().set_angle_type(1);
            window->parser().set_vars_saved(false);
            tell("All trignometric angle computations will now be made using angles measured in radians.");
        }
    });
    const struct {
        const char* caption;
        const char* text;
        bool prefix;
    } operators[] = {{"x²", "^2", false}, {"x³", "^3", false}, {"1/x", "1/", true}, {"10^x", "10^", true}, {"n!", "!", false}};
    n = 0;
    for (const auto& op : operators) add(grid, 2, n++, QString::fromUtf8(op.caption), apply(op.text, op.prefix));
    add(grid, 2, 5, QStringLiteral("±"), apply("-", true), tr("minus sign before the operand"));
    add(grid, 2, 6, QStringLiteral("("), type(QStringLiteral("(")));
    add(grid, 2, 7, QStringLiteral(")"), type(QStringLiteral(")")));

    const char* const keys[4][8] = {{"7", "8", "9", "/", "<", ">", "PI", "MS"},
                                    {"4", "5", "6", "*", "<=", ">=", "e", "M+"},
                                    {"1", "2", "3", "-", "==", "!=", "i", "M-"},
                                    {"0", ".", ",", "+", "=", "ANS", "MR", "MC"}};
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 8; ++c) {
            const QString key = QString::fromLatin1(keys[r][c]);
            if (key.startsWith(QLatin1Char('M')) || key == QStringLiteral("ANS")) continue;
            add(grid, 3 + r, c, key, type(key));
        }
    add(grid, 3, 7, QStringLiteral("MS"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        const QString text = e->textCursor().hasSelection() ? e->textCursor().selectedText() : e->textCursor().block().text();
        if (text.isEmpty()) {
            tell("You must select the text or place the cursor on the line that you would like to save in the Math Editor.");
            return;
        }
        tell(e->memory().save(text.toStdString(), false));
    });
    add(grid, 4, 7, QStringLiteral("M+"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        const QString text = e->textCursor().hasSelection() ? e->textCursor().selectedText() : e->textCursor().block().text();
        if (!text.isEmpty()) tell(e->memory().save(text.toStdString(), true));
    });
    add(grid, 5, 7, QStringLiteral("M-"), [this, editor] {
        if (MathEditor* e = editor()) tell(e->memory().remove_last());
    });
    add(grid, 6, 5, QStringLiteral("ANS"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        const std::string& last = e->processor().LastAnswer();
        if (last.empty()) {
            tell("You must first compute an expression in the Math Editor before you can recall it.");
            return;
        }
        e->insertPlainText(QString::fromStdString(last));
    });
    add(grid, 6, 6, QStringLiteral("MR"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        if (!e->memory().text()) {
            tell("You must first save the text you would like to recall using the memory save button MS.");
            return;
        }
        e->insertPlainText(QString::fromStdString(*e->memory().text()));
    });
    add(grid, 6, 7, QStringLiteral("MC"), [this, editor] {
        if (MathEditor* e = editor())
            if (const auto said = e->memory().clear()) tell(*said);
    });
    add(grid, 7, 0, QStringLiteral("⌫"), [editor] {
        if (MathEditor* e = editor()) e->textCursor().deletePreviousChar();
    }, tr("delete backwards"));
    add(grid, 7, 1, QStringLiteral("Del"), [editor] {
        if (MathEditor* e = editor()) e->textCursor().deleteChar();
    }, tr("delete forwards"));
    add(grid, 7, 6, QStringLiteral("Enter"), [this, editor] {
        MathEditor* e = editor();
        if (!e) return;
        if (e->textCursor().block().text().trimmed().isEmpty()) {
            tell("There is no expression to compute!");
            return;
        }
        e->compute_current_line(desktop::EditorKey::Enter);
        QTextCursor cursor = e->textCursor();
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertBlock();
        e->setTextCursor(cursor);
    });
    grid->addWidget(grid->itemAtPosition(7, 6)->widget(), 7, 6, 1, 2);
    setWidget(panel);
}

void Keypad::add(QGridLayout* grid, int row, int column, const QString& caption, std::function<void()> action,
                 const QString& tip) {
    auto* button = new QPushButton(caption, this);
    button->setFocusPolicy(Qt::NoFocus); // the editor keeps the caret
    button->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("LOG10")) + 14);
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
