#pragma once
#include <QSet>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>

#include <functional>

namespace quorvex::document {
class LineProcessor;
}

namespace quorvex::gui {

// Colours the editor's lines: numbers, names, built-ins, user and library functions, comments,
// answers, and lines the engine refused (until they are computed again or edited). Qt colours
// only the blocks that change, so typing in a long document stays cheap.
class MathHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    MathHighlighter(QTextDocument* document, document::LineProcessor& processor,
                    std::function<bool(std::string_view)> is_builtin);

    // Names of functions the document or a library declares, as written; matched ignoring case.
    void set_function_names(const QStringList& names);
    // Marks the block as refused by the engine (or clears the mark) and recolours it.
    void mark_error(const QTextBlock& block, bool error);
    // Picks colours that read on the palette's base colour (light or dark).
    void adapt_to_palette(const QPalette& palette);

protected:
    void highlightBlock(const QString& text) override;

private:
    document::LineProcessor& m_processor;
    std::function<bool(std::string_view)> m_is_builtin;
    QSet<QString> m_functions; // upper case
    QTextCharFormat m_number, m_name, m_builtin, m_function, m_comment, m_answer, m_error;
};

} // namespace quorvex::gui
