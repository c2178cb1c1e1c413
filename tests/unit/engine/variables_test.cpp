#include "engine/parser.h"
#include "engine/variable.h"

#include <gtest/gtest.h>

using namespace quorvex::engine;

TEST(Variable, AWalkVisitsEveryPointAndEndsExactlyOnTheHighLimit) {
    Variable x("x", complex(0, 0), complex(10, 0), 5);
    EXPECT_EQ(x.increment(), complex(2.5, 0));
    int evaluations = 1;
    while (x.Increment()) ++evaluations;
    EXPECT_EQ(evaluations, 5);
    EXPECT_EQ(x.value(), complex(10, 0));

    Variable fine("f", complex(0, 0), complex(1, 0), 1001);
    while (fine.Increment()) {
    }
    EXPECT_EQ(fine.value().real(), 1.0); // bit for bit, however the steps rounded

    Variable down("d", complex(5, 0), complex(1, 0), 3);
    EXPECT_EQ(down.increment(), complex(-2, 0));
    EXPECT_TRUE(down.Increment());
    EXPECT_TRUE(down.Increment());
    EXPECT_FALSE(down.Increment());
    EXPECT_EQ(down.value(), complex(1, 0));
    EXPECT_TRUE(down.Decrement());
    EXPECT_TRUE(down.Decrement());
    EXPECT_FALSE(down.Decrement());
    EXPECT_EQ(down.value(), complex(5, 0));
}

TEST(Variable, ComplexRangesUseMagnitudesForTheEndTest) {
    Variable z("z", complex(1, 1), complex(3, 3), 3);
    EXPECT_TRUE(z.Increment());
    EXPECT_EQ(z.value(), complex(2, 2));
    EXPECT_TRUE(z.Increment());
    EXPECT_FALSE(z.Increment());
    EXPECT_EQ(z.value(), complex(3, 3));
}

TEST(Variable, DegenerateRangesLeaveNoValue) {
    Variable plain("p", complex(7, 0), true);
    EXPECT_FALSE(plain.assigned()); // made this way, a variable waits for its first value
    Variable one_point("o", complex(0, 0), complex(1, 0), 1);
    EXPECT_FALSE(one_point.incremented());
    EXPECT_FALSE(one_point.assigned());
    Variable v("v", complex(0, 0), complex(4, 0), 3);
    EXPECT_FALSE(v.SetVarHiLimit(complex(4, 0))); // an unchanged limit empties the variable
    EXPECT_FALSE(v.assigned());
    // The first Increment on an empty variable only positions it.
    EXPECT_FALSE(v.Increment());
    EXPECT_TRUE(v.assigned());
    EXPECT_EQ(v.value(), complex(0, 0));
}

TEST(ParserVariables, LookupIsExactAndRemembersTheLastHit) {
    Parser parser;
    parser.eval_exp("alpha = 1", true, true, false);
    parser.eval_exp("Alpha = 2", true, true, false);
    parser.eval_exp("alphabet = 3", true, true, false);
    EXPECT_EQ(parser.find_variable("Alpha"), 1);
    EXPECT_EQ(parser.find_variable("alph"), -1);
    EXPECT_EQ(parser.find_variable(""), -1);
    EXPECT_EQ(parser.find_variable(nullptr), -1);
    parser.find_variable("alphabet");
    parser.set_var_value(complex(9, 0), nullptr); // -1 forms act on the last entry found
    EXPECT_EQ(parser.get_var_value("alphabet"), complex(9, 0));
    EXPECT_EQ(parser.variable_at(-1)->name(), "alphabet");
    parser.delete_variable(0);
    EXPECT_EQ(parser.variable_count(), 2);
    EXPECT_EQ(parser.variable_at(0)->name(), "Alpha");
}
