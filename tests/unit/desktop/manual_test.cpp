#include "desktop/builtin_texts.h"
#include "desktop/manual.h"
#include "document/line_processor.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "store/atomic_write.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <regex>
#include <set>

using namespace quorvex;
using desktop::BuiltinText;

namespace {

std::vector<BuiltinText> shipped_builtins() {
    std::string text;
    EXPECT_TRUE(store::read_whole_file(QUORVEX_DATA_DIR "builtins.txt", text));
    return desktop::read_builtin_texts(text);
}

std::string shipped_fragment(const std::string& file) {
    std::string text;
    store::read_whole_file(QUORVEX_MANUAL_DIR + file, text);
    return text;
}

std::string upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

} // namespace

TEST(BuiltinTexts, ReadsRowsGroupsAndLineEnds) {
    const auto rows = desktop::read_builtin_texts("# note\r\n## Roots\r\nSQRT\tSQRT[z]\tSquare root\tSQRT[4]\r\n"
                                                  "BAD\tBAD[z]\n\nCUBERT\tCUBERT[z]\tCube root\n## Constants\nPI\tPI\tPi\tPI");
    ASSERT_EQ(rows.size(), 3u); // the row without a description is left out
    EXPECT_EQ(rows[0].name, "SQRT");
    EXPECT_EQ(rows[0].prototype, "SQRT[z]");
    EXPECT_EQ(rows[0].description, "Square root");
    EXPECT_EQ(rows[0].example, "SQRT[4]"); // the CR is not part of the last field
    EXPECT_EQ(rows[0].group, "Roots");
    EXPECT_EQ(rows[1].example, "");
    EXPECT_EQ(rows[1].group, "Roots");
    EXPECT_FALSE(rows[1].is_constant());
    EXPECT_TRUE(rows[2].is_constant());
    EXPECT_EQ(rows[2].group, "Constants");
}

// Each text's example runs through the engine as the editor runs a line: it must compute without an
// error, show an answer and call the entry it illustrates, so a description and its function
// can not drift apart unnoticed.
TEST(BuiltinTexts, EveryShippedExampleComputesAndShowsItsOwnEntry) {
    const auto rows = shipped_builtins();
    const auto& table = functions::builtin_functions();
    std::set<std::string> names;
    engine::Parser parser(&table, QUORVEX_DATA_DIR);
    document::LineProcessor processor(parser);
    for (const BuiltinText& row : rows) {
        names.insert(row.name);
        EXPECT_FALSE(row.group.empty()) << row.name;
        ASSERT_FALSE(row.example.empty()) << row.name << " has no example";
        const document::LineOutcome outcome = processor.process(row.example);
        EXPECT_FALSE(outcome.error) << row.example << ": " << outcome.message;
        EXPECT_TRUE(outcome.answered) << row.example;
        const bool mentions = row.is_constant() ? row.example.find(row.name) != std::string::npos
                                                : upper(row.example).find(row.name + "[") != std::string::npos;
        EXPECT_TRUE(mentions) << row.example << " does not show " << row.name;
        EXPECT_EQ(row.is_constant(), table.constant_index(row.name) >= 0) << row.name;
    }
    for (int i = 0; const char* name = table.function_name(i); ++i) EXPECT_TRUE(names.count(name)) << name;
    for (int i = 0; *table.constant_name(i); ++i) EXPECT_TRUE(names.count(table.constant_name(i))) << table.constant_name(i);
}

// Texts that say how a function answers are held to the answers it gives.
TEST(BuiltinTexts, DescriptionsAgreeWithTheAnswers) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    std::map<std::string, std::string> shown;
    for (const BuiltinText& row : shipped_builtins()) shown[row.name] = row.description;
    // A real square root shows both roots; the text must not promise the positive one alone.
    EXPECT_NE(desktop::example_line("SQRT[4]", parser).find(" : "), std::string::npos);
    EXPECT_EQ(shown["SQRT"].find("positive root"), std::string::npos);
    EXPECT_NE(shown["SQRT"].find("both"), std::string::npos);
    // A fractional power of a negative real is real, for even roots too.
    EXPECT_EQ(desktop::example_line("POW[-4, 0.5]", parser).find('i'), std::string::npos);
    EXPECT_NE(shown["POW"].find("(-4)^0.5"), std::string::npos);
    // PTOC takes radians in degree mode too: a quarter turn is PI/2.
    EXPECT_EQ(desktop::example_line("PTOC[2, PI/2]", parser), "PTOC[2, PI/2] = 2i");
    EXPECT_NE(shown["PTOC"].find("radians whatever"), std::string::npos);
    // The tiny constants fall under the zero tolerance.
    EXPECT_EQ(desktop::example_line("PLANK", parser), "PLANK = 0");
    EXPECT_NE(shown["PLANK"].find("shows as 0"), std::string::npos);
}

TEST(HelpTarget, FindsTheBuiltInNameTheCaretTouches) {
    const auto rows = shipped_builtins();
    const auto at = [&](std::string_view line, size_t column) { return desktop::help_target(line, column, rows); };
    EXPECT_EQ(at("y = SQRT[4]", 5), "functions.html#SQRT");  // inside
    EXPECT_EQ(at("y = SQRT[4]", 8), "functions.html#SQRT");  // just behind
    EXPECT_EQ(at("y = SQRT[4]", 4), "functions.html#SQRT");  // just before
    EXPECT_EQ(at("sin(30)", 1), "functions.html#SIN");       // functions in any case
    EXPECT_EQ(at("2*PI", 3), "functions.html#PI");
    EXPECT_EQ(at("2PI", 2), "functions.html#PI");            // an implied product
    EXPECT_EQ(at("LN[e^2]", 4), "functions.html#e");
    EXPECT_EQ(at("pi", 1), "");                              // constants exactly
    EXPECT_EQ(at("E", 1), "");
    EXPECT_EQ(at("1e+5", 1), "");                            // an exponent
    EXPECT_EQ(at("x = 2", 1), "");                           // not a built-in name
    EXPECT_EQ(at("SIN (30)", 4), "");                        // on the blank behind the name
    EXPECT_EQ(at("", 0), "");
    EXPECT_EQ(at("SIN", 99), "functions.html#SIN");          // a column past the end is the end
}

// Every page is whole, every link leads to a page and an anchor that exist, and the examples'
// answers are the engine's.
TEST(Manual, PagesLinkToWhatExistsAndShowTheEnginesAnswers) {
    const auto rows = shipped_builtins();
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const desktop::Manual manual(shipped_fragment, rows, parser);
    const auto files = manual.files();
    ASSERT_EQ(files.front(), desktop::k_manual_contents);
    EXPECT_EQ(files.size(), desktop::manual_chapters().size() + 1);
    EXPECT_TRUE(manual.page("nowhere.html").empty());

    std::map<std::string, std::set<std::string>> anchors;
    const std::regex anchor("<a name=\"([^\"]+)\">"), href("href=\"([^\"]*)\"");
    for (const std::string& file : files) {
        const std::string& page = manual.page(file);
        EXPECT_NE(page.find("</html>"), std::string::npos) << file;
        EXPECT_EQ(page.find("<calc>"), std::string::npos) << file << " has an example left uncomputed";
        for (auto it = std::sregex_iterator(page.begin(), page.end(), anchor); it != std::sregex_iterator(); ++it)
            anchors[file].insert((*it)[1]);
    }
    for (const std::string& file : files) {
        const std::string& page = manual.page(file);
        for (auto it = std::sregex_iterator(page.begin(), page.end(), href); it != std::sregex_iterator(); ++it) {
            const std::string target = (*it)[1];
            const size_t hash = target.find('#');
            const std::string to_file = hash == 0 ? file : target.substr(0, hash);
            EXPECT_FALSE(manual.page(to_file).empty()) << file << " links to " << target;
            if (hash != std::string::npos) {
                EXPECT_TRUE(anchors[to_file].count(target.substr(hash + 1))) << file << " links to " << target;
            }
        }
    }
    for (const auto& [text, target] : manual.index()) EXPECT_FALSE(manual.page(target.substr(0, target.find('#'))).empty()) << text;

    // The reference shows each entry's example as a fresh engine answers it.
    engine::Parser fresh(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const std::string& reference = manual.page(desktop::k_function_reference);
    for (const BuiltinText& row : rows) {
        EXPECT_TRUE(anchors[desktop::k_function_reference].count(row.name)) << row.name;
        if (row.group == "Random deviates") continue; // a draw differs each time
        EXPECT_NE(reference.find(desktop::html_escaped(desktop::example_line(row.example, fresh))), std::string::npos)
            << row.example;
    }
}

TEST(Manual, HandWrittenExamplesAreComputedInOrder) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const auto fragment = [](const std::string& file) -> std::string {
        return file == "language.html" ? "<p><calc>k = 4</calc> then <calc>k &lt; 5</calc> and <calc>1/0</calc></p>" : "";
    };
    const desktop::Manual manual(fragment, {}, parser);
    const std::string& page = manual.page("language.html");
    EXPECT_NE(page.find("<code>k &lt; 5 = 1</code>"), std::string::npos) << page;
    EXPECT_NE(page.find("Division By Zero"), std::string::npos); // a failing example shows its message
}
