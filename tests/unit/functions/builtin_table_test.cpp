#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "functions/builtin_index.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>

using namespace quorvex::functions;

TEST(BuiltinTable, FunctionsMatchWithoutCaseConstantsExactly) {
    const BuiltinFunctions& table = builtin_functions();
    EXPECT_EQ(table.function_index("SQRT"), SQRT);
    EXPECT_EQ(table.function_index("sqrt"), SQRT);
    EXPECT_EQ(table.function_index("PreSist"), PRESIST);
    EXPECT_EQ(table.function_index("SQR"), -1);
    EXPECT_EQ(table.function_index("SQRTX"), -1);
    EXPECT_EQ(table.function_index("INTGRT"), -1); // no row: unreachable from the language
    EXPECT_STREQ(table.function_name(TAN), "TAN");
    EXPECT_STREQ(table.function_name(BUILTIN_COUNT - 1), "PRESIST");
    EXPECT_EQ(table.function_name(BUILTIN_COUNT), nullptr);
    EXPECT_EQ(table.function_name(-1), nullptr);

    EXPECT_EQ(table.constant_index("PI"), 0);
    EXPECT_EQ(table.constant_index("pi"), -1);
    EXPECT_EQ(table.constant_index("e"), 1);
    EXPECT_EQ(table.constant_index("E"), -1);
    EXPECT_EQ(table.constant_index("FALSE"), 15);
    EXPECT_STREQ(table.constant_name(16), "");
    // The nearest double, widened: the tail is the double's, not the constant's.
    EXPECT_EQ(table.constant_value(0), static_cast<long double>(3.141592653589793));
    EXPECT_EQ(table.constant_value(9), 299792458.0L);
}

TEST(BuiltinTable, EveryRowAnswersEitherAValueOrAMessage) {
    quorvex::engine::Parser parser(&builtin_functions());
    for (int f = 0; f < BUILTIN_COUNT; ++f) {
        const std::string call = std::string(builtin_functions().function_name(f)) + "[1,1]";
        parser.eval_exp(call.c_str(), true, true, false);
        if (parser.IsAnError()) {
            EXPECT_NE(parser.GetLastError(), nullptr) << call;
        }
    }
    EXPECT_STREQ(parser.eval_exp("SQRT[16]", true, false, false), "4");
}

TEST(BuiltinTable, TheBrowserDataDescribesEveryFunctionAndConstantOnce) {
    std::ifstream file(QUORVEX_DATA_DIR "builtins.txt");
    ASSERT_TRUE(file) << "data/builtins.txt is missing";
    std::map<std::string, int> seen;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        const auto first_tab = line.find('\t');
        const auto second_tab = line.find('\t', first_tab + 1);
        ASSERT_NE(second_tab, std::string::npos) << line;
        const std::string name = line.substr(0, first_tab);
        ++seen[name];
        EXPECT_LT(second_tab + 1, line.size()) << name << " has no description";
        const bool known = builtin_functions().function_index(name) >= 0 || builtin_functions().constant_index(name) >= 0;
        EXPECT_TRUE(known) << name;
    }
    EXPECT_EQ(seen.size(), static_cast<size_t>(BUILTIN_COUNT + 16));
    for (const auto& [name, count] : seen) EXPECT_EQ(count, 1) << name;
}
