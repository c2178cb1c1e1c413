#pragma once
#include <QSet>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>

#include <functional>
#include <vector>

namespace quorvex::document {
class LineProcessor;
}

namespace quorvex::gui {

// Colours the editor's lines: numbers, names, built-ins, user and library functions, comments,
// answers, lines the engine refused (until they are computed again or edited), and answers out of
// date (stale, or differing in a document check). Qt colours
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
    // Recolours a block whose stale or differing mark changed.
    void refresh_block(const QTextBlock& block) { rehighlightBlock(block); }
    // Recolours many such blocks, in one pass when they are many: each block recoloured on its
    // own is laid out on its own.
    void refresh_blocks(const std::vector<QTextBlock>& blocks);
    // Picks colours that read on the palette's base colour (light or dark).
    void adapt_to_palette(const QPalette& palette);

protected:
    void highlightBlock(const QString& text) override;

private:
    document::LineProcessor& m_processor;
    std::function<bool(std::string_view)> m_is_builtin;
    QSet<QString> m_functions; // upper case
    QTextCharFormat m_number, m_name, m_builtin, m_function, m_comment, m_answer, m_error, m_stale;
};

} // namespace quorvex::gui
