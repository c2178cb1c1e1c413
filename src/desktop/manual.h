#pragma once
#include "builtin_texts.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::desktop {

// A page of the manual: its file name (also its address inside the help window) and title.
struct ManualChapter {
    std::string file;
    std::string title;
};

inline constexpr char k_manual_contents[] = "index.html";
inline constexpr char k_function_reference[] = "functions.html";

// The chapters in reading order. The function reference is made from builtins.txt; the others
// are written by hand as HTML fragments of the same name (docs/manual/language.html, ...).
const std::vector<ManualChapter>& manual_chapters();

// An example as the math editor leaves its line after Enter: "SQRT[4] = 2 : -2", or the line
// followed by the engine's message when it fails.
std::string example_line(const std::string& example, engine::Parser& parser);

// The manual as HTML pages, the same in the help window and in the files `make docs` writes.
// Each page is complete (head, title, links to the contents and to the pages before and after).
class Manual {
public:
    // `fragment` returns the hand-written body of a chapter's file, empty when there is none.
    // The examples' answers are computed once here with `parser`, as its settings stand.
    Manual(const std::function<std::string(const std::string& file)>& fragment, std::vector<BuiltinText> builtins,
           engine::Parser& parser);

    // The page of `file`, or empty when the manual has no such page.
    const std::string& page(const std::string& file) const;
    // Every page's file, the contents first.
    std::vector<std::string> files() const;
    // The help window's index: each chapter's title and each built-in name with its address
    // ("functions.html#SQRT").
    std::vector<std::pair<std::string, std::string>> index() const;
    const std::vector<BuiltinText>& builtins() const { return m_builtins; }

private:
    std::string function_reference(engine::Parser& parser) const;

    std::vector<BuiltinText> m_builtins;
    std::vector<std::pair<std::string, std::string>> m_pages; // file, whole page
};

// The address of the manual's entry for the built-in name the caret touches at `column` of
// `line` (inside the name or just behind it), as "functions.html#NAME"; empty when the caret is
// on no built-in name. Function names match in any case, constants exactly, as the engine reads
// them; the exponent of a number ("1e+5") is no name.
std::string help_target(std::string_view line, size_t column, const std::vector<BuiltinText>& builtins);

// Text made safe inside HTML.
std::string html_escaped(std::string_view text);

} // namespace quorvex::desktop
