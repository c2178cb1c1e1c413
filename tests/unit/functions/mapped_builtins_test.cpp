// Built-in functions in mapped runs: a run at new variable values must give what a direct
// evaluation of the same text gives at those values, except where the machine's rules say
// otherwise (data lists shared across one nesting level, PRESIST, both arms of IF).
#include "engine/mapped_machine.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using quorvex::engine::complex;
using quorvex::engine::MachineState;
using quorvex::engine::Parser;
using quorvex::functions::builtin_functions;

namespace {

constexpr const char* k_too_deep = "Some algorithms do not support more than 5 recursive calls to functions "
                                   "with data list arguments, you are "
                                   "implimenting one of them!";
constexpr const char* k_complex_item = "Complex data point encountered, data must be real!";

struct Case {
    std::string text;
    double mapped_at; // x while the text is mapped
    double run_at;    // x for the run
    bool whole_line = false;
};

complex evaluate(Parser& parser, const std::string& text) {
    complex value;
    parser.eval_exp(text.c_str(), value, true, false, false);
    return value;
}

void set_x(Parser& parser, complex x) {
    parser.set_var_value(x, "x");
}

// Maps `text` at one value of x, runs it at another and at the first again; each run must agree
// with a direct evaluation, and the two values must differ, or the case would prove nothing.
void expect_runs_match(Parser& parser, const std::string& text, double mapped_at, double run_at) {
    SCOPED_TRACE(text);
    set_x(parser, complex(mapped_at, 0));
    const complex at_mapping = evaluate(parser, text);
    ASSERT_FALSE(parser.IsAnError()) << parser.GetLastError();
    const int equation = parser.map_expression(text.c_str());
    ASSERT_GT(equation, 0) << parser.GetLastError();

    set_x(parser, complex(run_at, 0));
    const complex expected = evaluate(parser, text);
    ASSERT_FALSE(parser.IsAnError()) << parser.GetLastError();
    EXPECT_NE(expected, at_mapping) << "the case does not depend on x";
    EXPECT_EQ(parser.solve_equation(equation, false, true), expected);
    EXPECT_FALSE(parser.IsAnError()) << parser.GetLastError();

    set_x(parser, complex(mapped_at, 0));
    EXPECT_EQ(parser.solve_equation(equation, false, true), at_mapping);
    parser.delete_equation(equation);
}

class MappedBuiltins : public ::testing::Test {
protected:
    MappedBuiltins() : parser(&builtin_functions(), QUORVEX_DATA_DIR) { evaluate(parser, "x = 1"); }

    // Each case also runs behind "7-", so a step that leaves the wrong number of operands
    // shows in the subtraction.
    void check(const std::vector<Case>& cases) {
        for (const Case& c : cases) {
            expect_runs_match(parser, c.text, c.mapped_at, c.run_at);
            if (!c.whole_line) expect_runs_match(parser, "7-" + c.text, c.mapped_at, c.run_at);
        }
    }

    // Runs `text`, mapped at one x, at another x; the run must fail with `code` and answer 0.
    void expect_refused(const std::string& text, double mapped_at, complex run_at, int code) {
        SCOPED_TRACE(text);
        set_x(parser, complex(mapped_at, 0));
        const int equation = parser.map_expression(text.c_str());
        ASSERT_GT(equation, 0) << parser.GetLastError();
        set_x(parser, run_at);
        EXPECT_EQ(parser.solve_equation(equation, false, true), complex(0, 0));
        EXPECT_TRUE(parser.IsAnError());
        EXPECT_EQ(parser.error_code(), code) << parser.GetLastError();
        parser.delete_equation(equation);
    }

    Parser parser;
};

} // namespace

TEST_F(MappedBuiltins, ScalarFunctionsRunAsTheyEvaluate) {
    // clang-format off
    check({
        {"SQRT[x]*2", 16, 2.25}, {"LN[x]", 2, 5}, {"LOG10[x]", 2, 1000},
        {"LOG[x, 2]", 8, 10}, {"EXP[x]", 1, -2.5}, {"POW[x, 3]", 2, -1.5},
        {"ABS[x]", -3, 2.5}, {"ROUND[x]", 2.4, 2.6}, {"TRUNC[x]", -2.7, 3.9},
        {"REM[x, 3]", 10, 7.5}, {"FLOOR[x]", -2.5, 2.5}, {"CEIL[x]", -2.5, 2.5},
        {"GCD[x, 12]", 18, 8}, {"LCM[x, 4]", 6, 10}, {"CUBERT[x]", -8, 27},
        {"REAL[x+2i]", 1, 3}, {"IMAG[2+x*i]", 1, 3}, {"NORM[x+2i]", 1, 3},
        {"CMAG[x+2i]", 1, 3}, {"CANGLE[x+2i]", 1, -3}, {"PTOC[x, 0.5]", 2, 3},
        {"CONJ[x+2i]", 1, 3}, {"DEG[x]", 1, 2}, {"RAD[x]", 90, 45},
        {"SIN[x]", 30, 45}, {"COS[x]", 60, 30}, {"TAN[x]", 45, 30},
        {"SINH[x]", 0.5, 1.5}, {"COSH[x]", 0.5, 1.5}, {"TANH[x]", 0.5, 1.5},
        {"ASIN[x]", 0.5, 0.25}, {"ACOS[x]", 0.5, 0.25}, {"ATAN[x]", 1, 2},
        {"ASINH[x]", 0.5, 2}, {"ACOSH[x]", 1.5, 3}, {"ATANH[x]", 0.5, -0.25},
        {"HYPOT[x, 4]", 3, 5}, {"SQRT[x-9]", 25, 4}, {"ERF[x]", 0.5, 1.5},
        {"ERFC[x]", 0.5, 1.5}, {"COMB[x, 2]", 5, 7}, {"PERM[x, 2]", 5, 7},
        {"RTOP[x, 4]", 3, 1, true}, {"PTOR[2, x]", 30, 60, true}, {"BASECON[x, 10]", 255, 100, true},
    });
    // clang-format on
}

TEST_F(MappedBuiltins, ListFunctionsRunOnTheirListAndNumbers) {
    std::vector<Case> cases;
    for (const char* name :
         {"MEAN",   "GMEAN",   "HMEAN",  "QMEAN",    "RMS",    "MEDIAN", "MIN",    "MAX",
          "SUMX",   "SUMXSQ",  "AVGDEV", "SUMDEVSQ", "RANGE",  "SVAR",   "PVAR",   "SSTDEV",
          "PSTDEV", "STSTDEV", "SKEW",   "KURT",     "LQRTLE", "UQRTLE", "SRESIST"})
        cases.push_back({std::string(name) + "[{4, x, 3, 7, 2, 9}]", 0.5, 12});
    cases.insert(cases.end(), {
                                  {"MODE[{1, 2, 2, x, x, x}]", 5, 7},
                                  {"SUMDEV[{1, x, 3}]+x", 2, 8},
                                  {"COUNT[{1, x, 3}]*x", 2, 8},
                                  {"RANK[{4, 1, x, 3}, 3]", 2, 5},
                                  {"PRCTLE[{1, 5, 2, 8, 3}, x]*x+1", 40, 70},
                                  {"WSNORM[{2.1, 3.4, 1.9, 5.6, 4.2, 3.3, x}, 5]", 3.5, 40},
                                  // A nested list has a level of its own, whichever function opens it.
                                  {"x + MEAN[{1, MEAN[{x, 3}], 5}] * 2", 2, 8},
                                  {"MEAN[{1, NORMX[{1, 2, x}, 0.4], 5}]", 3, 9},
                                  {"MEAN[{ZSCORE[{1, 2, x}, 2], 2, 3}]", 3, 9},
                                  {"MEAN[{1, CPK[{4, 5, x, 6}, 1, 9], 5}]", 5, 7},
                                  {"MEAN[{PP[{4, 5, x, 6}, 1, 9], 2, 3}]", 5, 7},
                                  {"NORPROB[{1, 2, x, 4, 5}, 1.5, 4]", 3, 9},
                                  {"NORMX[{1, 2, x, 5}, 0.4]", 3, 9},
                                  {"ZSCORE[{1, 2, x, 5}, 2]", 3, 9},
                              });
    // Capability of a list: the limits after it.
    for (const char* name : {"CP", "CPL", "CPU", "CPK", "CPM", "PP", "PPL", "PPU", "PPK"}) {
        const std::string row = name;
        const char* limits =
            row.size() == 2 || row.back() == 'K' ? "1, 9" : (row.back() == 'M' ? "1, 9, 5" : "9");
        cases.push_back({row + "[{4, 5, x, 6, 5, 4, 6}, " + limits + "]", 5, 7});
    }
    check(cases);
}

TEST_F(MappedBuiltins, DistributionsAndCapabilityFromNumbersRunAsTheyEvaluate) {
    // Each family's parameters after x; some depend on x themselves.
    const std::vector<std::pair<std::string, std::string>> families = {
        {"BETA", "2, x+2"},      {"CAUCHY", "1, 2"},     {"DBLEXP", "0.5, 1"}, {"EXP", "2"},
        {"GAMMA", "2, 3"},       {"LOGISTIC", "0.5, x"}, {"LOGNORM", "0, 1"},  {"RAYLEIGH", "2"},
        {"UNIFORM", "0, 2*x+1"}, {"WEIBULL", "2, 3"},    {"CHISQ", "4"},       {"FRATIO", "3, 5"},
        {"NORMAL", "0, 1"},      {"STUDT", "5"},
    };
    std::vector<Case> cases;
    for (const auto& [family, shape] : families)
        for (const char* kind : {"CDF", "PDF", "X"})
            cases.push_back({family + kind + "[x, " + shape + "]", 0.3, 0.8});
    cases.insert(cases.end(), {
                                  {"NORDIST[x, 1, 2]", 0.3, 0.8},
                                  {"NORPROB[x, 2, 1, 1.5]", 0.3, 0.8},
                                  {"NORMX[x, 0, 1]", 0.3, 0.8},
                                  {"ZSCORE[x, 1, 2]", 0.3, 0.8},
                                  {"CP[x, 10, 1.5]", 1, 2},
                                  {"CPL[x, 5, 1]", 1, 2},
                                  {"CPU[10, x, 1]", 4, 6},
                                  {"CPK[x, 10, 5, 1]", 1, 2},
                                  {"CPM[x, 10, 6, 5, 1]", 1, 2},
                                  {"PP[x, 10, 1.5]", 1, 2},
                                  {"PPL[x, 5, 1]", 1, 2},
                                  {"PPU[10, x, 1]", 4, 6},
                                  {"PPK[x, 10, 5, 1]", 1, 2},
                              });
    check(cases);
}

TEST_F(MappedBuiltins, LogicRunsOnExactTruthValues) {
    check({
        {"AND[x > 1, 1]", 0, 2},
        {"OR[x > 1, 0]", 0, 2},
        {"AND[1, x > 0, x < 5]", 2, 6},
        {"OR[0, x > 3, x > 5]", 2, 4},
        {"NOT[x > 1]", 0, 2},
        {"IF[x > 1, x*2, x/2+3i]", 0, 2},
    });
    expect_refused("NOT[x]", 1, complex(2, 0), 22);
    expect_refused("AND[x, 1]", 1, complex(1, 1), 22);
    expect_refused("IF[x, 1, 2]", 1, complex(0.5, 0), 22);
}

TEST_F(MappedBuiltins, RealOnlyParametersAndLimitsAreCheckedInRuns) {
    // A complex operand ends the run with 0, not with the operand left on the stack.
    expect_refused("ERF[x]", 1, complex(2, 1), 13);
    expect_refused("NORDIST[x, 0, 1]", 1, complex(2, 1), 13);
    expect_refused("RANK[{1, 2, 3}, x]", 1, complex(2, 1), 13);
    expect_refused("EXPCDF[1, x]", 1, complex(2, 1), 13);
    expect_refused("CPK[{4, 5, 6, 5}, x, 9]", 1, complex(2, 1), 13);
    expect_refused("RAND[x, 2]", 1, complex(1, 1), 13);
    // The limits of the direct call.
    expect_refused("COMB[x, 3]", 5, complex(2, 0), 27);
    expect_refused("PERM[x, 3]", 5, complex(4.5, 0), 19);
    expect_refused("EXPCDF[1, x]", 1, complex(-1, 0), 54);
    expect_refused("NORMX[x, 0, 1]", 0.5, complex(1.5, 0), 32);
    expect_refused("NORMX[{1, 2, 3}, x]", 0.5, complex(1.5, 0), 32);
    expect_refused("ZSCORE[{1, x, 1}, 1]", 2, complex(1, 0), 55);
    expect_refused("CP[1, 9, x]", 1, complex(0, 0), 55);
    expect_refused("NORDEV[0, x]", 1, complex(-1, 0), 55);
    expect_refused("NCHIDEV[x, 1]", 2, complex(0.5, 0), 46);
    expect_refused("LN[x]", 1, complex(0, 0), 21);
    expect_refused("PRCTLE[{1, 2, 3}, x]", 50, complex(100.5, 0), 60);
    expect_refused("GCD[x, 12]", 6, complex(1e15, 0), 59);
    expect_refused("REM[x, 7]", 6, complex(-1e15, 0), 59);
    // Without a text to write to, BASECON gives a value in base 10 only.
    expect_refused("BASECON[x, 16]", 255, complex(255, 0), 37);
}

TEST_F(MappedBuiltins, ListsOfOneLevelAccumulateAcrossBuiltinsWithinARun) {
    EXPECT_EQ(evaluate(parser, "MEAN[{1,2}]+MEAN[{3,4}]"), complex(5, 0));
    const int means = parser.map_expression("MEAN[{1,2}]+MEAN[{3,4}]");
    ASSERT_GT(means, 0);
    EXPECT_EQ(parser.solve_equation(means, false, true), complex(4, 0)); // 1.5 + 2.5
    EXPECT_EQ(parser.solve_equation(means, false, true), complex(4, 0)); // each run starts empty

    // PRESIST runs as the plain sum of its list.
    EXPECT_EQ(evaluate(parser, "PRESIST[{2,2}]"), complex(1, 0));
    const int parallel = parser.map_expression("PRESIST[{2,2}]");
    ASSERT_GT(parallel, 0);
    EXPECT_EQ(parser.solve_equation(parallel, false, true), complex(4, 0));
}

TEST_F(MappedBuiltins, FiveNestedListsRunASixthIsRefused) {
    const std::string five = "MEAN[{1, MEAN[{2, MEAN[{3, MEAN[{4, MEAN[{5, x}]}]}]}]}]";
    expect_runs_match(parser, five, 7, 9);

    const std::string six = "MEAN[{0, " + five + "}]";
    set_x(parser, complex(7, 0));
    const int equation = parser.map_expression(six.c_str());
    ASSERT_GT(equation, 0) << parser.GetLastError(); // the direct evaluation has no such limit
    EXPECT_EQ(parser.solve_equation(equation, false, true), complex(0, 0));
    EXPECT_STREQ(parser.GetLastError(), k_too_deep);
}

TEST_F(MappedBuiltins, AComplexListItemIsAMapperErrorInARun) {
    set_x(parser, complex(2, 0));
    const int equation = parser.map_expression("MEAN[{1, x}]");
    ASSERT_GT(equation, 0);
    set_x(parser, complex(2, 3));
    EXPECT_EQ(parser.solve_equation(equation, false, true), complex(0, 0));
    EXPECT_STREQ(parser.GetLastError(), k_complex_item);
}

TEST_F(MappedBuiltins, BothArmsOfIfAreComputedInPassAndRun) {
    set_x(parser, complex(1, 0));
    EXPECT_EQ(parser.map_expression("IF[1, 2, 1/0]"), 0); // the arm not taken fails the mapping
    EXPECT_TRUE(parser.IsAnError());
    const int guarded = parser.map_expression("IF[x > 0, 2, 1/x]");
    ASSERT_GT(guarded, 0);
    EXPECT_EQ(parser.solve_equation(guarded, false, true), complex(2, 0));
    set_x(parser, complex(0, 0));
    parser.solve_equation(guarded, false, true);
    EXPECT_TRUE(parser.IsAnError()); // 1/x runs although the condition picks the other arm
}

TEST_F(MappedBuiltins, DeviatesDrawAnewInRangeOnEveryRun) {
    struct Draw {
        const char* text;
        double low, high;
        bool whole = false;
    };
    const std::vector<Draw> draws = {
        {"RAND[x, x+1]", 3, 4},
        {"RAND[]", 0, 1},
        {"NORDEV[x, 0.001]", 2.99, 3.01},
        {"NORDEV[]", -50, 50},
        {"EXPDEV[x, 2]", 3, 1e9},
        {"EXPDEV[]", 0, 1e9},
        {"RAYDEV[x, 5]", 3, 1e9},
        {"RAYDEV[]", 0, 1e9},
        {"BERDEV[x/10]", 0, 1, true},
        {"BETADEV[x, 2]", 0, 1},
        {"BNLDEV[0.5, x]", 0, 3, true},
        {"CAUDEV[x, 1]", -1e300, 1e300},
        {"CHIDEV[x]", 0, 1e9},
        {"DEXPDEV[x, 0.001]", 2.9, 3.1},
        {"FDEV[x, 4]", 0, 1e9},
        {"GAMDEV[x, 2]", 0, 1e9},
        {"LOGDEV[x, 0.001]", 2.9, 3.1},
        {"NCHIDEV[x, 1]", 0, 1e9},
    };
    parser.random_engine().seed(7);
    for (const Draw& d : draws) {
        SCOPED_TRACE(d.text);
        set_x(parser, complex(2, 0));
        const int equation = parser.map_expression(d.text);
        ASSERT_GT(equation, 0) << parser.GetLastError();
        set_x(parser, complex(3, 0));
        std::vector<double> values;
        for (int i = 0; i < 20; ++i) {
            const complex value = parser.solve_equation(equation, false, true);
            ASSERT_FALSE(parser.IsAnError()) << parser.GetLastError();
            EXPECT_EQ(value.imag(), 0);
            EXPECT_GE(value.real(), d.low);
            EXPECT_LE(value.real(), d.high);
            if (d.whole) {
                EXPECT_EQ(value.real(), std::trunc(value.real()));
            }
            values.push_back(value.real());
        }
        if (!d.whole) {
            EXPECT_NE(values.front(), values.back()) << "no new draw";
        }
        parser.delete_equation(equation);
    }
}

TEST(MappedBuiltinSteps, EveryBuiltinCodeHasAStepAndNoOther) {
    Parser parser(&builtin_functions(), QUORVEX_DATA_DIR);
    parser.SetSilentMode(true);
    for (int code = 0; code <= 201; ++code) {
        if (code == 33) continue; // the power operator: the engine's own step
        MachineState machine;
        for (double v : {0.5, 1.0, 0.25, 2.0, 3.0})
            machine.push(complex(v, 0));
        std::vector<long double> data = {1, 2, 3, 4, 5, 6};
        parser.ClearLastError();
        parser.SetSolvingMap(true);
        const bool known = builtin_functions().run_instruction(code, parser, machine, data);
        parser.SetSolvingMap(false);
        const bool builtin = code >= 28 && code <= 193 && code != 37 && code != 38 && code != 116;
        EXPECT_EQ(known, builtin) << code;
    }
}
