// quorvex-cli --check: a document edited outside the program, a text of lines, and the options.
#include "check_files.h"

#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

using namespace quorvex;

namespace {

struct SilentReporter : engine::Reporter {
    void report(std::string_view, std::string_view, engine::MessageKind) override {}
};

struct Checked {
    int status;
    std::string out, err;
};

Checked check(const std::string& path) {
    cli::CliOptions options;
    engine::Parser parser(&functions::builtin_functions());
    SilentReporter reporter;
    std::ostringstream out, err;
    const int status = cli::check_file(options, parser, reporter, path, out, err);
    return {status, out.str(), err.str()};
}

std::optional<cli::CliOptions> parse(std::vector<const char*> args, std::string& error) {
    args.insert(args.begin(), "quorvex-cli");
    return cli::parse_options(static_cast<int>(args.size()), const_cast<char**>(args.data()), error);
}

} // namespace

TEST(CheckFiles, ADocumentEditedByHandShowsEachAnswerThatNoLongerFollows) {
    // Saved with r = 2, then its first line changed to r = 3 in another editor.
    const std::string path = QUORVEX_FIXTURES "documents/edited_by_hand.qvx";
    const Checked checked = check(path);
    EXPECT_EQ(checked.status, 1);
    EXPECT_EQ(checked.out, path + ":2: stored 12.566370614359, now 28.274333882308\n" + path +
                               ":3: stored 4, now 6\n" + path + ":5: stored 5, now 7\n" + path +
                               ":7: stored 4, now 9\n");
    EXPECT_EQ(checked.err, "");
}

TEST(CheckFiles, TextFilesAgreeOrNameTheLineAndUnreadableFilesAreNoAnswer) {
    const std::string path = ::testing::TempDir() + "check_lines.txt";
    {
        std::ofstream file(path, std::ios::binary);
        file << "a = 4\r\nb = a*2 = 8\r\nSQRT(a) = 2 : -2\r\n\r\n3 // no answer\n";
    }
    EXPECT_EQ(check(path).status, 0);
    EXPECT_EQ(check(path).out, "");
    {
        std::ofstream file(path, std::ios::binary);
        file << "a = 4\nb = a*2 = 8\nc = b/(a-4) = 1\n";
    }
    const Checked failing = check(path);
    EXPECT_EQ(failing.status, 1);
    EXPECT_EQ(failing.out, path + ":3: stored 1, now error: Division By Zero Encountered!\n");
    std::remove(path.c_str());
    EXPECT_EQ(check(path).status, 2);

    std::string error;
    const auto options = parse({"--check", "a.qvx", "b.txt"}, error);
    ASSERT_TRUE(options) << error;
    EXPECT_TRUE(options->check);
    EXPECT_EQ(options->files.size(), 2u);
    for (const std::vector<const char*>& bad : std::vector<std::vector<const char*>>{
             {"--check"}, {"--check", "-e", "1", "a.txt"}, {"--check", "--in-place", "a.txt"}, {"--check", "--answers", "a"}}) {
        EXPECT_FALSE(parse(bad, error)) << bad.size();
        EXPECT_NE(error.find("--check"), std::string::npos) << error;
    }
}
