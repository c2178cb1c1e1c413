// Data files whose points read data files: a file that reads itself, or a chain too deep to
// follow, is refused with a message in evaluations and in mapped runs alike.
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

using quorvex::engine::complex;
using quorvex::engine::Parser;
using quorvex::functions::builtin_functions;

namespace {
// A folder of data files written for one test and removed after it.
struct ScratchFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() /
                                 ("quorvex-data-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                                  "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    ScratchFolder() { std::filesystem::create_directories(path); }
    ~ScratchFolder() { std::filesystem::remove_all(path); }
    std::string file(const std::string& name, const std::string& text) const {
        const std::string full = (path / name).string();
        std::ofstream(full, std::ios::binary) << text;
        return full;
    }
};
} // namespace

TEST(DataFileChains, FilesThatReadThemselvesOrNestTooDeepAreRefusedInEvaluationsAndMappedRuns) {
    const ScratchFolder folder;
    Parser parser(&builtin_functions(), QUORVEX_DATA_DIR);
    // Directly, and through a second file reached by another spelling of the same path.
    const std::string self = folder.file("self.txt", "MEAN[{" + (folder.path / "self.txt").string() + "}]\n");
    const std::string a = folder.path.string() + "/a.txt", b = folder.path.string() + "/b.txt";
    folder.file("a.txt", "1 MEAN[{" + b + "}]");
    std::filesystem::create_symlink(a, folder.path / "link.txt");
    folder.file("b.txt", "2 SUMX[{" + folder.path.string() + "/link.txt}]");
    for (const std::string& start : {self, a}) {
        parser.eval_exp(("MEAN[{" + start + "}]").c_str(), true, true, false);
        ASSERT_TRUE(parser.IsAnError()) << start;
        EXPECT_NE(std::string(parser.GetLastError()).find("reads itself through its own data points"), std::string::npos)
            << parser.GetLastError();
    }
    // A long chain that does end is refused at its limit, not followed until the stack is gone.
    const int length = 200;
    for (int i = 1; i <= length; ++i)
        folder.file(std::to_string(i) + ".txt",
                    i == length ? "5 7" : "3 MEAN[{" + (folder.path / (std::to_string(i + 1) + ".txt")).string() + "}]");
    parser.eval_exp(("MEAN[{" + (folder.path / "1.txt").string() + "}]").c_str(), true, true, false);
    ASSERT_TRUE(parser.IsAnError());
    EXPECT_NE(std::string(parser.GetLastError()).find("nested more than 32 deep"), std::string::npos);
    // A short chain is fine: MEAN(3, MEAN(5, 7)) one level up.
    EXPECT_STREQ(parser.eval_exp(("MEAN[{" + (folder.path / "199.txt").string() + "}]").c_str(), true, false, false),
                 "4.5");

    // A mapped run reads the file again: a file changed into a cycle after the mapping fails there.
    const std::string changing = folder.file("changing.txt", "1 2");
    parser.eval_exp("x = 1", true, true, false);
    const int equation = parser.map_expression(("x+MEAN[{" + changing + "}]").c_str());
    ASSERT_GT(equation, 0) << parser.GetLastError();
    parser.set_var_value(complex(1, 0), "x");
    EXPECT_EQ(parser.solve_equation(equation, false, true).real(), 2.5);
    folder.file("changing.txt", "1 MEAN[{" + changing + "}]");
    parser.solve_equation(equation, false, true);
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_NE(std::string(parser.GetLastError()).find("reads itself"), std::string::npos) << parser.GetLastError();
    parser.delete_equation(equation);
}


TEST(DataFileChains, AFileOfNumbersIsReadOnceAndAgainWhenItChanges) {
    const ScratchFolder folder;
    Parser parser(&builtin_functions(), QUORVEX_DATA_DIR);
    const std::string numbers = folder.file("numbers.txt", "1 2");
    const std::string call = "MEAN[{" + numbers + "}]";
    EXPECT_STREQ(parser.eval_exp(call.c_str(), true, false, false), "1.5");
    EXPECT_STREQ(parser.eval_exp(call.c_str(), true, false, false), "1.5");
    // Same size, other numbers: the change of time tells the file apart from the one kept.
    std::filesystem::last_write_time(numbers, std::filesystem::last_write_time(numbers) - std::chrono::seconds(5));
    folder.file("numbers.txt", "3 5");
    EXPECT_STREQ(parser.eval_exp(call.c_str(), true, false, false), "4");
    folder.file("numbers.txt", "7 8 9");
    EXPECT_STREQ(parser.eval_exp(call.c_str(), true, false, false), "8");
    // A file that went away is missing, whatever was read from it before.
    std::filesystem::remove(numbers);
    parser.eval_exp(call.c_str(), true, false, false);
    EXPECT_TRUE(parser.IsAnError());
}
