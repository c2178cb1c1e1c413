#include "manual.h"

#include "document/line_processor.h"
#include "engine/parser.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace quorvex::desktop {

namespace {

const std::string k_no_page;

bool is_name_char(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

std::string upper(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

std::string link(const std::string& target, const std::string& text) {
    return "<a href=\"" + target + "\">" + html_escaped(text) + "</a>";
}

// The line of links above and below a chapter: the contents, the chapters before and after.
std::string navigation(size_t chapter) {
    const auto& chapters = manual_chapters();
    std::string line = "<p class=\"nav\">" + link(k_manual_contents, "Contents");
    if (chapter > 0) line += " | Previous: " + link(chapters[chapter - 1].file, chapters[chapter - 1].title);
    if (chapter + 1 < chapters.size()) line += " | Next: " + link(chapters[chapter + 1].file, chapters[chapter + 1].title);
    return line + "</p>\n";
}

std::string whole_page(const std::string& title, const std::string& body) {
    return "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Quorvex Help: " + html_escaped(title) +
           "</title>\n<style>code, pre { font-family: monospace; } h3 { margin-bottom: 2px; } "
           "p.nav { font-size: small; }</style></head>\n<body>\n" +
           body + "</body></html>\n";
}

// Each <calc>EXPRESSION</calc> of a hand-written fragment becomes the line as the editor leaves
// it, computed here in order, so that a page's examples may build on each other.
std::string with_answers(std::string fragment, engine::Parser& parser) {
    static const std::string open = "<calc>", close = "</calc>";
    for (size_t at = fragment.find(open); at != std::string::npos; at = fragment.find(open, at)) {
        const size_t end = fragment.find(close, at);
        if (end == std::string::npos) break;
        std::string expression = fragment.substr(at + open.size(), end - at - open.size());
        for (const auto& [entity, c] : {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}})
            for (size_t p = expression.find(entity); p != std::string::npos; p = expression.find(entity, p))
                expression.replace(p, std::string_view(entity).size(), c);
        const std::string shown = "<code>" + html_escaped(example_line(expression, parser)) + "</code>";
        fragment.replace(at, end + close.size() - at, shown);
        at += shown.size();
    }
    return fragment;
}

} // namespace

const std::vector<ManualChapter>& manual_chapters() {
    static const std::vector<ManualChapter> chapters{
        {"language.html", "The language"},     {k_function_reference, "Functions and constants"},
        {"editor.html", "The editor and its keys"}, {"graphs.html", "Graphs"},
        {"tools.html", "Tools"},               {"files.html", "Files"},
    };
    return chapters;
}

std::string html_escaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&': result += "&amp;"; break;
        case '<': result += "&lt;"; break;
        case '>': result += "&gt;"; break;
        case '"': result += "&quot;"; break;
        default: result += c;
        }
    }
    return result;
}

std::string example_line(const std::string& example, engine::Parser& parser) {
    document::LineProcessor processor(parser);
    const document::LineOutcome outcome = processor.process(example);
    return outcome.error ? outcome.text + "   (" + outcome.message + ")" : outcome.text;
}

Manual::Manual(const std::function<std::string(const std::string& file)>& fragment, std::vector<BuiltinText> builtins,
               engine::Parser& parser)
    : m_builtins(std::move(builtins)) {
    const auto& chapters = manual_chapters();
    std::string contents = "<h1>Quorvex Help</h1>\n" + with_answers(fragment(k_manual_contents), parser) + "<h2>Contents</h2>\n<ol>\n";
    for (const ManualChapter& chapter : chapters) contents += "<li>" + link(chapter.file, chapter.title) + "</li>\n";
    contents += "</ol>\n";
    m_pages.emplace_back(k_manual_contents, whole_page("Contents", contents));
    for (size_t i = 0; i < chapters.size(); ++i) {
        const std::string body = chapters[i].file == k_function_reference ? function_reference(parser)
                                                                          : with_answers(fragment(chapters[i].file), parser);
        m_pages.emplace_back(chapters[i].file, whole_page(chapters[i].title, navigation(i) + "<h1>" +
                                                                             html_escaped(chapters[i].title) +
                                                                             "</h1>\n" + body + navigation(i)));
    }
}

std::string Manual::function_reference(engine::Parser& parser) const {
    std::string body =
        "<p>Every built-in function and constant: how it is called, what it does, and an example with the "
        "answer the engine gives it, computed as this page was made, with the settings of a new document "
        "(angles in degrees, answers to 14 significant digits). Random deviates show one draw. Function "
        "names may be written in any case and with round or square brackets; constants are written exactly "
        "as here. In the editor, F1 with the caret on a name opens its entry.</p>\n";
    std::vector<const BuiltinText*> sorted;
    for (const BuiltinText& row : m_builtins) sorted.push_back(&row);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const BuiltinText* a, const BuiltinText* b) { return upper(a->name) < upper(b->name); });
    body += "<p>";
    for (const BuiltinText* row : sorted) body += link("#" + row->name, row->name) + " ";
    body += "</p>\n";
    std::string group;
    for (const BuiltinText& row : m_builtins) {
        if (row.group != group || (group.empty() && &row == &m_builtins.front())) {
            group = row.group;
            if (!group.empty()) body += "<h2>" + html_escaped(group) + "</h2>\n";
        }
        body += "<h3><a name=\"" + html_escaped(row.name) + "\"></a>" + html_escaped(row.name) + "</h3>\n";
        body += "<p><code>" + html_escaped(row.prototype) + "</code><br>" + html_escaped(row.description);
        if (!row.example.empty()) body += "<br>Example: <code>" + html_escaped(example_line(row.example, parser)) + "</code>";
        body += "</p>\n";
    }
    return body;
}

const std::string& Manual::page(const std::string& file) const {
    for (const auto& [name, text] : m_pages)
        if (name == file) return text;
    return k_no_page;
}

std::vector<std::string> Manual::files() const {
    std::vector<std::string> result;
    for (const auto& page : m_pages) result.push_back(page.first);
    return result;
}

std::vector<std::pair<std::string, std::string>> Manual::index() const {
    std::vector<std::pair<std::string, std::string>> entries;
    for (const ManualChapter& chapter : manual_chapters()) entries.emplace_back(chapter.title, chapter.file);
    for (const BuiltinText& row : m_builtins)
        entries.emplace_back(row.name, std::string(k_function_reference) + "#" + row.name);
    return entries;
}

std::string help_target(std::string_view line, size_t column, const std::vector<BuiltinText>& builtins) {
    column = std::min(column, line.size());
    size_t start = column, end = column;
    while (start > 0 && is_name_char(line[start - 1])) --start;
    while (end < line.size() && is_name_char(line[end])) ++end;
    std::string_view word = line.substr(start, end - start);
    const bool starts_with_digit = !word.empty() && std::isdigit(static_cast<unsigned char>(word.front()));
    // "1e+5": the e belongs to the number.
    if (starts_with_digit && (word.back() == 'e' || word.back() == 'E') && end < line.size() &&
        (line[end] == '+' || line[end] == '-'))
        return {};
    while (!word.empty() && std::isdigit(static_cast<unsigned char>(word.front()))) word.remove_prefix(1);
    if (word.empty()) return {};
    for (const BuiltinText& row : builtins) {
        const bool found = row.is_constant() ? row.name == word : upper(row.name) == upper(word);
        if (found) return std::string(k_function_reference) + "#" + row.name;
    }
    return {};
}

} // namespace quorvex::desktop
