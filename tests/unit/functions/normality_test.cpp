#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using quorvex::engine::Parser;
using quorvex::functions::builtin_functions;

TEST(Normality, MissingOrDamagedTablesAreReportedNotTrusted) {
    const auto dir = std::filesystem::temp_directory_path() / "quorvex-normality-test";
    std::filesystem::create_directories(dir);
    const std::string prefix = dir.string() + "/";
    std::filesystem::remove(dir / "wstableA1");
    std::filesystem::remove(dir / "wstableA2");

    Parser parser(&builtin_functions(), prefix);
    parser.eval_exp("WSNORM[{1,2,4,3}, 5]", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "Wilks Shiparo table has been moved or deleted, can not perform this test!");

    std::ofstream(dir / "wstableA1") << "3) 0.7071\n5) 0.6872, 0.1677\n"; // the line for 4 is missing
    parser.eval_exp("WSNORM[{1,2,4,3}, 5]", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "A Wilks Shiparo table has been currupted, can not perform this test!");

    std::ofstream(dir / "wstableA1") << "3) 0.7071\n4) 0.6872, 0.1677\n";
    std::ofstream(dir / "wstableA2") << "3) 0.753\n4 0.687, 0.707\n"; // the label lacks its ")"
    parser.eval_exp("WSNORM[{1,2,4,3}, 5]", true, true, false);
    EXPECT_STREQ(parser.GetLastError(), "A Wilks Shiparo table has been currupted, can not perform this test!");
    // A shorter line is read as far as it goes, and the last value read is the critical one.
    std::ofstream(dir / "wstableA2") << "3) 0.753\n4) 0.687, 0.999\n";
    EXPECT_STREQ(parser.eval_exp("WSNORM[{1,2,4,3}, 5]", true, false, false), "0");
    EXPECT_STREQ(parser.eval_exp("WSNORM[{1,2,4,3}, 1]", true, false, false), "1");
    std::filesystem::remove_all(dir);
}
