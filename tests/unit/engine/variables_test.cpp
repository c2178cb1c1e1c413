#include "engine/parser.h"
#include "engine/variable.h"

#include <gtest/gtest.h>

#include <string>

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

TEST(Variable, AWalkStepsInDecimalSoTenthsAndZeroAreHitExactly) {
    Variable x("x", complex(-10, 0), complex(10, 0), 201);
    int point = 0;
    do {
        // The nearest double of the decimal value, as typing it would give.
        EXPECT_EQ(x.value().real(), std::stod(std::to_string(point - 100) + "e-1")) << "point " << point;
        ++point;
    } while (x.Increment());
    EXPECT_EQ(point, 201);
    do {
        --point;
        EXPECT_EQ(x.value().real(), std::stod(std::to_string(point - 100) + "e-1")) << "back at " << point;
    } while (x.Decrement());
    EXPECT_EQ(point, 0);

    Variable z("z", complex(0, -1), complex(0, 1), 21);
    for (int k = 0; k < 10; ++k) z.Increment();
    EXPECT_EQ(z.value(), complex(0, 0));
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
    EXPECT_EQ(parser.find_variable("Alpha"), 0); // lookups by name follow the shrunk table
    EXPECT_EQ(parser.find_variable("alphabet"), 1);
    parser.delete_all_vars();
    EXPECT_EQ(parser.find_variable("Alpha"), -1);
    parser.eval_exp("alphabet = 4", true, true, false);
    EXPECT_EQ(parser.find_variable("alphabet"), 0);
}

TEST(VariableText, PlainRangedAndUnassignedForms) {
    Parser parser;
    parser.set_incremental_display(true);
    parser.eval_exp("x = 0, 10, 5", true, true, false);
    parser.eval_exp("y = 1/3", true, true, false);
    parser.eval_exp("z = 2-i", true, true, false);
    parser.set_auto_declare(true);
    parser.eval_exp("u", true, true, false);
    EXPECT_STREQ(parser.get_var_str_value("x", -1, false), "0 (0,10,5,2.5)");
    EXPECT_STREQ(parser.get_var_str_value("x", -1, true), "0,10,5");
    EXPECT_STREQ(parser.get_var_inc_str_value(0, 14), "0,10,5");
    EXPECT_STREQ(parser.get_var_str(1, 5, false), "y = 0.33333");
    EXPECT_STREQ(parser.get_var_str_value("z", -1, false), "2-i");
    EXPECT_STREQ(parser.get_var_inc_str_value(2, 14), "0,0,0");
    EXPECT_STREQ(parser.get_var_str_value("u", -1, false), "?");
    EXPECT_EQ(parser.get_var_str_value_len("z", -1, false), 4u);
    parser.set_incremental_display(false);
    EXPECT_STREQ(parser.get_var_str_value("x", -1, false), "0");

    char text[] = "0 (0,10,5,2.5)";
    EXPECT_STREQ(Parser::get_var_dec_value(text), "0,10,5");
    char plain[] = "42";
    EXPECT_STREQ(Parser::get_var_dec_value(plain), "42");
}

TEST(ParserVariables, ReorderingKeepsEveryEntry) {
    Parser parser;
    for (const char* line : {"a = 1", "bb = 2", "ccc = 3"}) parser.eval_exp(line, true, true, false);
    EXPECT_EQ(parser.max_var_length(), 3);
    parser.switch_vars(0, 2);
    EXPECT_STREQ(parser.get_var_name(0), "ccc");
    EXPECT_STREQ(parser.get_var_name(2), "a");
    EXPECT_EQ(parser.find_variable("ccc"), 0);
    EXPECT_EQ(parser.find_variable("a"), 2);
    parser.move_var(0, 2); // ccc to the end: bb, a, ccc
    EXPECT_STREQ(parser.get_var_name(0), "bb");
    EXPECT_STREQ(parser.get_var_name(1), "a");
    EXPECT_STREQ(parser.get_var_name(2), "ccc");
    EXPECT_EQ(parser.find_variable("ccc"), 2);
    EXPECT_EQ(parser.get_var_value("a"), complex(1, 0));
    parser.move_var(1, -1);
    EXPECT_STREQ(parser.get_var_name(1), "a");
    EXPECT_EQ(parser.get_var_numpoints("a"), 1);
    EXPECT_EQ(parser.get_var_increment(0), complex(0, 0));
}

TEST(Variable, CopiesCarryTheRangeButAssignmentKeepsCountAndLock) {
    Variable ranged("r", complex(0, 0), complex(10, 0), 5);
    ranged.set_locked(true);
    const Variable copy(ranged);
    EXPECT_EQ(copy.num_points(), 5);
    EXPECT_FALSE(copy.locked());
    EXPECT_TRUE(copy.incremented());

    Variable target("t", complex(0, 0), complex(1, 0), 3);
    target.set_locked(true);
    target = ranged;
    EXPECT_EQ(target.name(), "r");
    EXPECT_EQ(target.num_increments(), 4);
    EXPECT_EQ(target.num_points(), 3); // left as it was
    EXPECT_TRUE(target.locked());
}
