#include "math_highlighter.h"

#include "desktop/line_colouring.h"
#include "document/line_processor.h"

#include "line_marks.h"

#include <QPalette>

namespace quorvex::gui {

namespace {

// Beyond this many blocks one pass over the document is cheaper than a pass per block.
constexpr size_t k_one_pass_from = 64;

} // namespace

MathHighlighter::MathHighlighter(QTextDocument* document, document::LineProcessor& processor,
                                 std::function<bool(std::string_view)> is_builtin)
    : QSyntaxHighlighter(document), m_processor(processor), m_is_builtin(std::move(is_builtin)) {
    adapt_to_palette(QPalette());
}

void MathHighlighter::adapt_to_palette(const QPalette& palette) {
    const bool dark = palette.color(QPalette::Base).lightness() < 128;
    const auto colour = [dark](QColor light, QColor on_dark) { return dark ? on_dark : light; };
    m_number.setForeground(colour(QColor(0x00, 0x66, 0x99), QColor(0x6c, 0xc4, 0xff)));
    m_builtin.setForeground(colour(QColor(0x1a, 0x3f, 0xc4), QColor(0x8a, 0xa8, 0xff)));
    m_function.setForeground(colour(QColor(0x8a, 0x1f, 0x9e), QColor(0xd6, 0x8a, 0xf0)));
    m_name.setForeground(palette.color(QPalette::Text));
    m_comment.setForeground(colour(QColor(0x6a, 0x73, 0x7d), QColor(0x8b, 0x94, 0x9e)));
    m_comment.setFontItalic(true);
    m_answer.setForeground(colour(QColor(0x0b, 0x6e, 0x2e), QColor(0x7e, 0xe7, 0x87)));
    m_error.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    m_error.setUnderlineColor(colour(QColor(0xc4, 0x1a, 0x1a), QColor(0xff, 0x6b, 0x6b)));
    // An answer out of date: the palette's own faint text, slanted and underlined with dots on a
    // light wash of the selection colour, so it reads as provisional on any theme and apart from
    // a comment.
    const QColor faint = palette.color(QPalette::PlaceholderText);
    QColor wash = palette.color(QPalette::Highlight);
    wash.setAlpha(48);
    m_stale.setForeground(faint);
    m_stale.setBackground(wash);
    m_stale.setFontItalic(true);
    m_stale.setUnderlineStyle(QTextCharFormat::DotLine);
    m_stale.setUnderlineColor(faint);
    rehighlight();
}

void MathHighlighter::set_function_names(const QStringList& names) {
    QSet<QString> upper;
    for (const QString& name : names) upper.insert(name.toUpper());
    if (upper == m_functions) return;
    m_functions = std::move(upper);
    rehighlight();
}

void MathHighlighter::mark_error(const QTextBlock& block, bool error) {
    LineMarks* marks = LineMarks::of(block);
    if (!error && (!marks || !marks->error_text)) return;
    if (error)
        LineMarks::make(block).error_text = block.text();
    else
        marks->error_text.reset();
    rehighlightBlock(block);
}

void MathHighlighter::refresh_blocks(const std::vector<QTextBlock>& blocks) {
    if (blocks.size() > k_one_pass_from) {
        rehighlight();
        return;
    }
    for (const QTextBlock& block : blocks) rehighlightBlock(block);
}

void MathHighlighter::highlightBlock(const QString& text) {
    if (text.isEmpty()) return;
    const std::string line = text.toStdString();
    desktop::NameKinds kinds;
    kinds.is_builtin = m_is_builtin;
    kinds.is_user_function = [this](std::string_view name) {
        return m_functions.contains(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())).toUpper());
    };
    const size_t answer = m_processor.IsRecalculating(line) ? desktop::answer_position(line) : std::string::npos;
    // Positions are bytes of the UTF-8 line; the text is ASCII in all but damaged documents, where
    // a position past a multi-byte character is only a colour out of place.
    for (const desktop::ColourSpan& span : desktop::colour_line(line, kinds, answer)) {
        const QTextCharFormat* format = &m_name;
        switch (span.kind) {
        case desktop::SpanKind::Number: format = &m_number; break;
        case desktop::SpanKind::Name: format = &m_name; break;
        case desktop::SpanKind::BuiltinName: format = &m_builtin; break;
        case desktop::SpanKind::UserFunction: format = &m_function; break;
        case desktop::SpanKind::Comment: format = &m_comment; break;
        case desktop::SpanKind::Answer: format = &m_answer; break;
        }
        setFormat(static_cast<int>(span.start), static_cast<int>(span.length), *format);
    }
    const auto* marks = dynamic_cast<const LineMarks*>(currentBlockUserData());
    if (marks && (marks->is_stale(text) || marks->differs(text))) {
        const int from = answer == std::string::npos ? 0 : QString::fromUtf8(line.data(), static_cast<qsizetype>(answer)).length();
        const size_t comment = document::find_comment(line);
        const int to = comment == std::string::npos || comment < answer
                           ? static_cast<int>(text.length())
                           : static_cast<int>(QString::fromUtf8(line.data(), static_cast<qsizetype>(comment)).length());
        for (int i = from; i < to; ++i) {
            QTextCharFormat merged = format(i);
            merged.merge(m_stale);
            setFormat(i, 1, merged);
        }
    }
    if (marks && marks->has_error(text)) {
        for (int i = 0; i < text.length(); ++i) {
            QTextCharFormat merged = format(i);
            merged.setUnderlineStyle(m_error.underlineStyle());
            merged.setUnderlineColor(m_error.underlineColor());
            setFormat(i, 1, merged);
        }
    }
}

} // namespace quorvex::gui
