// Inputs the fuzzer found troublesome, kept so that they stay harmless.
#include "engine/parser.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

using namespace quorvex::engine;

TEST(FuzzRegression, FunctionsThatCallEachOtherStopQuickly) {
    // A cycle of functions used to be expanded ten thousand times over an ever longer line.
    std::ifstream file(QUORVEX_FIXTURES "fuzz/function_cycle_timeout.txt");
    ASSERT_TRUE(file);
    Parser parser;
    std::string last_error;
    for (std::string line; std::getline(file, line);) {
        parser.eval_exp(line.c_str(), true, true, false);
        last_error = parser.GetLastError() ? parser.GetLastError() : "";
    }
    EXPECT_EQ(last_error, "The functions of this line call each other without end, so the line can not be evaluated!");

    // Calls that multiply at every level grow the line without a cycle.
    parser.eval_exp("a[x] = x+x+x+x", true, true, false);
    parser.eval_exp("b[x] = a[a[a[a[a[a[a[a[a[a[a[a[x]]]]]]]]]]]]", true, true, false);
    parser.eval_exp("b[1]", true, true, false);
    EXPECT_TRUE(parser.IsAnError());
    EXPECT_STREQ(parser.eval_exp("a[a[1]]", true, false, false), "16");
}
