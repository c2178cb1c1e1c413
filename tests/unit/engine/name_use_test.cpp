// The names an evaluation reads and writes: assignments, ranged variables, functions calling
// functions, parameters that shadow a variable, recursion refused, and a failed right side.
#include "engine/parser.h"

#include <gtest/gtest.h>

using namespace quorvex::engine;

namespace {

struct NameUseTest : ::testing::Test {
    Parser parser;
    NameUse use;

    NameUse run(const char* line) {
        use.clear();
        parser.track_names(&use);
        parser.eval_exp(line, true, false, false);
        parser.track_names(nullptr);
        return use;
    }
    using Names = NameUse::Names;
};

} // namespace

TEST_F(NameUseTest, AssignmentsRangesAndFunctionsReportWhatTheyReadAndWrite) {
    EXPECT_EQ(run("r = 2").written, Names{"r"});
    EXPECT_TRUE(use.read.empty());
    const NameUse area = run("area = 3*r^2+r");
    EXPECT_EQ(area.read, Names{"r"});
    EXPECT_EQ(area.written, Names{"area"});
    EXPECT_EQ(run("t = 0, r*10, 11").written, Names{"t"});
    EXPECT_EQ(use.read, Names{"r"});

    // A function reads what its body reads; a parameter stands for the argument, whose names
    // are read instead, even when a variable of the parameter's name exists.
    run("x = 100");
    run("k = 3");
    EXPECT_EQ(run("f(x) = k*x").written, Names{"f[]"});
    EXPECT_EQ(run("g(x) = f(x)+1").written, Names{"g[]"});
    const NameUse call = run("g(r)");
    EXPECT_EQ(call.read, (Names{"g[]", "f[]", "k", "r"}));
    EXPECT_TRUE(call.written.empty());
    EXPECT_EQ(NameUse::display_name("f[]"), "f");

    // A failed right side writes nothing; a function may not call itself.
    EXPECT_TRUE(run("y = 1/0").written.empty());
    EXPECT_TRUE(run("h(x) = h(x)+1").written.empty());
    // Without tracking nothing is kept.
    use.clear();
    parser.eval_exp("area", true, false, false);
    EXPECT_TRUE(use.read.empty());
}

TEST_F(NameUseTest, RedefinedNamesReportTheirNewMeaning) {
    run("k = 2");
    run("m = 5");
    run("f(x) = k*x");
    run("g(x) = f(x)-1");
    EXPECT_EQ(run("g(3)").read, (Names{"g[]", "f[]", "k"}));
    // A function declared again: its callers now read what the new body reads.
    EXPECT_EQ(run("f(x) = m*x^2").written, Names{"f[]"});
    EXPECT_EQ(run("g(3)").read, (Names{"g[]", "f[]", "m"}));
    // A variable given a value from itself reads and writes it.
    const NameUse step = run("k = k+1");
    EXPECT_EQ(step.read, Names{"k"});
    EXPECT_EQ(step.written, Names{"k"});
    // A variable turned into a ranged one is written again; its range reads what its limits read.
    const NameUse ranged = run("k = 0, m*2, 5");
    EXPECT_EQ(ranged.written, Names{"k"});
    EXPECT_EQ(ranged.read, Names{"m"});
}
