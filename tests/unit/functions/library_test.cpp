// The system function library as shipped: every function evaluates to its independently computed
// value, every one has a description, and a missing library is reported once.
#include "engine/function_library.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

using quorvex::engine::Parser;

namespace {

struct RecordingReporter : quorvex::engine::Reporter {
    std::vector<std::string> said;
    void report(std::string_view text, std::string_view caption, quorvex::engine::MessageKind) override {
        said.push_back(std::string(caption) + ": " + std::string(text));
    }
};

// A Parser whose user library is `text`, in a folder of its own, with its messages recorded.
struct WithUserLibrary {
    std::string dir;
    RecordingReporter reporter;
    Parser parser{&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR};
    WithUserLibrary(const std::string& name, const std::string& text) : dir(testing::TempDir() + name) {
        std::filesystem::create_directories(dir);
        std::ofstream(dir + "/QuorvexUser.lib", std::ios::binary) << text;
        parser.set_reporter(&reporter);
        parser.set_library_dirs(QUORVEX_DATA_DIR, dir);
    }
    ~WithUserLibrary() { std::filesystem::remove_all(dir); }
};

} // namespace

TEST(SystemLibrary, EveryFunctionEvaluatesAtItsSamplePointAndIsDescribed) {
    Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_library_dirs(QUORVEX_DATA_DIR, "");
    parser.answer_format().zero_precision = 1e-30f; // physics answers are tiny, not zero
    quorvex::engine::FunctionLibrary* library = parser.system_library();
    ASSERT_NE(library, nullptr);

    std::set<std::string> listed;
    auto& file = library->file();
    const std::vector<std::string> categories = file.GetFunctionCatagories();
    EXPECT_GE(categories.size(), 8u);
    for (const std::string& category : categories) {
        std::vector<std::string> names;
        EXPECT_TRUE(file.GetFunctionNames(names, category)) << category;
        for (const std::string& name : names) {
            const std::string bare = name.substr(0, name.find('['));
            EXPECT_TRUE(listed.insert(bare).second) << bare << " is defined twice";
            std::string description;
            EXPECT_TRUE(file.GetFunctionValue(bare, description)) << bare << " has no description";
        }
    }
    EXPECT_GE(listed.size(), 60u);

    std::ifstream samples(QUORVEX_SAMPLES);
    ASSERT_TRUE(samples);
    std::set<std::string> sampled;
    std::string line;
    while (std::getline(samples, line)) {
        if (line.empty() || line[0] == '#') continue;
        const size_t tab = line.find('\t');
        const std::string call = line.substr(0, tab);
        const long double expected = std::stold(line.substr(tab + 1));
        sampled.insert(call.substr(0, call.find('[')));
        quorvex::engine::complex answer;
        parser.eval_exp(call.c_str(), answer, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << call << ": " << parser.GetLastError();
        EXPECT_NEAR(static_cast<double>(answer.real() / expected), 1.0, 1e-12) << call;
        EXPECT_EQ(answer.imag(), 0) << call;
    }
    EXPECT_EQ(sampled, listed); // a function without a sample point would go untested
}

TEST(SystemLibrary, AMissingLibraryIsReportedOnceAndNothingElseFails) {
    RecordingReporter reporter;
    Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_reporter(&reporter);
    parser.set_library_dirs("/nonexistent", "");
    quorvex::engine::complex answer;
    parser.eval_exp("2+3", answer, true, false, false);
    parser.eval_exp("SQRT[16]", answer, true, false, false);
    EXPECT_EQ(answer.real(), 4);
    ASSERT_EQ(reporter.said.size(), 1u);
    EXPECT_EQ(reporter.said[0], "File Access: The Quorvex function library file \" /nonexistent/Quorvex.lib \" could "
                                "not be opened! If the file exist's, check your system level access privilages.");
}

TEST(UserLibrary, EntriesNamedLikeBuiltinsAreSkippedAndReportedOnce) {
    WithUserLibrary library("quorvex-shadowing-library",
                            "[MINE]\r\nSQRT[X]=(X)\r\nSQRT=not a root\r\nTWICE[X]=2*(X)\r\nTWICE=doubles\r\n"
                            "abs[X]=(X)+1\r\nabs=no\r\n");
    Parser& parser = library.parser;
    const RecordingReporter& reporter = library.reporter;
    const std::string& dir = library.dir;
    const auto value = [&](const char* text) {
        quorvex::engine::complex answer;
        parser.eval_exp(text, answer, true, false, false);
        EXPECT_FALSE(parser.IsAnError()) << text << ": " << parser.GetLastError();
        return answer.real();
    };
    // The built-ins keep their meaning in a line and inside a user function; the other entry works.
    EXPECT_EQ(value("SQRT(16)"), 4);
    EXPECT_EQ(value("ABS(-3)"), 3);
    EXPECT_EQ(value("TWICE(4)"), 8);
    value("f(x) = sqrt(x)+1");
    EXPECT_EQ(value("f(9)"), 4);
    ASSERT_EQ(reporter.said.size(), 1u);
    EXPECT_EQ(reporter.said[0], "Function Library: The function library \" " + dir +
                                    "/QuorvexUser.lib \" defines ' SQRT ' and ' abs ', which are names of built-in "
                                    "functions. The entries are skipped and the built-in functions are used.");
}

TEST(UserLibrary, ADamagedLibraryIsReportedAndItsGoodEntriesStillWork) {
    // Notes ahead of the first category are the file's own; inside it, a line without '=' is not.
    WithUserLibrary damaged("quorvex-damaged-library",
                            "My notes, free text\r\n[MINE]\r\nTWICE[X]=2*(X)\r\nTWICE=doubles\r\nthis is no entry\r\n");
    EXPECT_STREQ(damaged.parser.eval_exp("TWICE(4)", true, false, false), "8");
    ASSERT_EQ(damaged.reporter.said.size(), 1u);
    EXPECT_NE(damaged.reporter.said[0].find("holds lines that are no function entries (line 5)"), std::string::npos)
        << damaged.reporter.said[0];

    // Bytes that are no text at all.
    WithUserLibrary binary("quorvex-binary-library", std::string("\0\x01garbage[[[\r\n=\r\n", 16));
    EXPECT_STREQ(binary.parser.eval_exp("2+2", true, false, false), "4");
    binary.parser.eval_exp("COT(45)", true, false, false); // reading the libraries
    ASSERT_FALSE(binary.reporter.said.empty());
    EXPECT_NE(binary.reporter.said[0].find("holds bytes that are no text"), std::string::npos)
        << binary.reporter.said[0];
}
