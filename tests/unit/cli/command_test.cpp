// The commands of quorvex-cli, run from argument vectors as the program gets them. Reference
// values that are not exact by hand were computed once with python3 mpmath (25 digits) and are
// written here rounded to the digits the answers show.
#include "cli_options.h"
#include "commands.h"
#include "line_evaluator.h"
#include "parser_setup.h"

#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <regex>
#include <sstream>
#include <vector>

using namespace quorvex::cli;

namespace {

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

std::optional<CliOptions> parse(std::vector<const char*> args, std::string& error) {
    args.insert(args.begin(), "quorvex-cli");
    return parse_options(static_cast<int>(args.size()), const_cast<char**>(args.data()), error);
}

Outcome run(quorvex::engine::Parser& parser, const std::vector<const char*>& args) {
    std::string error;
    const auto options = parse(args, error);
    if (!options || options->command.empty()) {
        ADD_FAILURE() << "not a command line: " << error;
        return {};
    }
    apply_answer_options(parser, *options);
    std::ostringstream out, err;
    const int status = run_command(*options, parser, out, err);
    return {status, out.str(), err.str()};
}

Outcome run(const std::vector<const char*>& args) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    return run(parser, args);
}

} // namespace

TEST(CommandLine, TheFirstPlainArgumentNamesTheCommandAndOwnsWhatFollows) {
    std::string error;
    const auto options =
        parse({"-e", "a=1", "map", "-x", "x", "-1", "1", "3", "--precision", "5", "-e"}, error);
    ASSERT_TRUE(options) << error;
    EXPECT_EQ(options->command, "map");
    EXPECT_EQ(options->command_args, (std::vector<std::string>{"-x", "x", "-1", "1", "3", "-e"}));
    EXPECT_EQ(options->eval_lines, (std::vector<std::string>{"a=1"}));
    EXPECT_EQ(options->precision, 5);

    const auto order =
        parse({"derive", "x", "x", "1", "--order", "3", "--step", "-0.5", "--", "--order"}, error);
    ASSERT_TRUE(order) << error;
    EXPECT_EQ(order->order, 3);
    EXPECT_EQ(order->step, "-0.5");
    EXPECT_EQ(order->command_args, (std::vector<std::string>{"x", "x", "1", "--order"}));

    // A command's name after "--" or after a file is a file.
    for (const std::vector<const char*>& files :
         {std::vector<const char*>{"--", "map"}, {"lines.txt", "map"}}) {
        const auto plain = parse(files, error);
        ASSERT_TRUE(plain) << error;
        EXPECT_TRUE(plain->command.empty());
        EXPECT_EQ(plain->files.back(), "map");
    }
    EXPECT_FALSE(parse({"derive", "x", "x", "1", "--order", "4"}, error));
    EXPECT_FALSE(parse({"--accuracy", "1e-6", "-e", "1"}, error));
    EXPECT_FALSE(parse({"--step", "1", "a.txt"}, error));
}

TEST(MapCommand, PrintsEveryPointAndAnErrorRowWhereTheExpressionFails) {
    // Mapping at -1 succeeds; the run at 0 fails on its own row only.
    Outcome outcome = run({"map", "1/x", "x", "-1", "1", "3"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "-1\t-1\n0\terror: Division By Zero Encountered!\n1\t1\n");

    // Undefined at LOW itself: the mapping moves on to another point.
    outcome = run({"map", "1/x", "x", "0", "2", "3"});
    EXPECT_EQ(outcome.out, "0\terror: Division By Zero Encountered!\n1\t1\n2\t0.5\n");

    // The grid is decimal, so the middle of -0.3 .. 0.3 is 0 exactly and not a binary residue.
    outcome = run({"map", "x^2", "x", "-0.3", "0.3", "7"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "-0.3\t0.09\n-0.2\t0.04\n-0.1\t0.01\n0\t0\n0.1\t0.01\n0.2\t0.04\n0.3\t0.09\n");

    EXPECT_EQ(run({"map", "x^2", "x", "2", "5", "1"}).out, "2\t4\n");
    EXPECT_EQ(run({"--fraction", "map", "1/x", "x", "1", "2", "3"}).out, "1\t1\n3/2\t2/3\n2\t1/2\n");
    EXPECT_EQ(run({"-e", "a = 3", "-e", "f[t] = a*t", "map", "-f[x]", "x", "-1", "1", "2"}).out,
              "-1\t3\n1\t-3\n");
}

TEST(MapCommand, AMappedChainComparesEveryLinkWithItsFirstOperand) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    EXPECT_EQ(run(parser, {"map", "3 > 2 > 2.5", "x", "0", "1", "1"}).out, "0\t1\n");
    // The evaluator compares each link with the one before it: 3 > 2 is 1, and 1 > 2.5 is not.
    CliOptions options;
    options.answers = true;
    std::ostringstream out, err;
    LineEvaluator(options, parser, out, err).run("3 > 2 > 2.5");
    EXPECT_EQ(out.str(), "0\n");
}

TEST(CalculusCommands, TheRunVariableIsMadeForTheRunOrPutBack) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    EXPECT_EQ(run(parser, {"integrate", "t", "t", "0", "1"}).out, "0.5\n");
    EXPECT_FALSE(parser.is_variable("t"));
    parser.eval_exp("t = 7", true, false, false);
    EXPECT_EQ(run(parser, {"derive", "t^2", "t", "3"}).out, "6\n");
    EXPECT_EQ(parser.get_var_value("t"), quorvex::engine::complex(7, 0));
    // With t defined, a limit naming it would silently take its value.
    const Outcome outcome = run(parser, {"integrate", "t", "t", "0", "t"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("can not be a function of t"), std::string::npos) << outcome.err;
}

TEST(CalculusCommands, IntegralsAndDerivativesOfMappedExpressions) {
    EXPECT_EQ(run({"integrate", "x^3", "x", "-1", "1"}).out, "0\n");
    EXPECT_EQ(run({"integrate", "x", "x", "1", "0"}).out, "-0.5\n");
    // pi/4 = 0.78539816339744830962
    EXPECT_EQ(run({"--precision", "10", "integrate", "1/(1+x^2)", "x", "0", "1", "--accuracy", "1e-12"}).out,
              "0.7853981634\n");
    EXPECT_EQ(run({"derive", "x^3", "x", "2"}).out, "12\n");
    EXPECT_EQ(run({"derive", "x^3", "x", "2", "--order", "2"}).out, "12\n");
    EXPECT_EQ(run({"derive", "x^3", "x", "2", "--order", "3"}).out, "6\n");
    EXPECT_EQ(run({"derive", "1/(1+x^2)", "x", "1", "--step", "0.5"}).out, "-0.5\n");
    EXPECT_EQ(run({"derive", "x^0.5", "x", "4"}).out, "0.25\n");
}

TEST(CalculusCommands, ThirdDerivativesAndPointsWhereTheFunctionIsUndefined) {
    // Reference values from mpmath: e^0 = 1, -cos(1) = -0.54030230586813971740, and the third
    // derivative of e^(x^2) at 0.3 = 4.1753690666190827256.
    EXPECT_EQ(run({"derive", "x^5", "x", "2", "--order", "3"}).out, "240\n");
    EXPECT_EQ(run({"--angle", "rad", "derive", "EXP(x)", "x", "0", "--order", "3"}).out, "1\n");
    EXPECT_EQ(run({"--angle", "rad", "derive", "SIN(x)", "x", "1", "--order", "3"}).out, "-0.540302\n");
    EXPECT_EQ(run({"derive", "EXP(x^2)", "x", "0.3", "--order", "3"}).out, "4.17537\n");
    for (const char* step : {"1", "0.5", "0.01"})
        EXPECT_EQ(run({"derive", "x^5", "x", "2", "--order", "3", "--step", step}).out, "240\n") << step;

    // No derivative where the function itself fails: its own message, not a slope of the sides.
    Outcome outcome = run({"derive", "1/x", "x", "0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "error: Division By Zero Encountered!\n");
    outcome = run({"derive", "TAN(x)", "x", "90", "--order", "2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("TAN, the function can not be evaluated"), std::string::npos) << outcome.err;
    // A zero step is the derivative algorithm's own refusal.
    outcome = run({"derive", "x^2", "x", "1", "--step", "0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "error: Step size is zero in derivative algorithm!\n");
}

TEST(CalculusCommands, AnIntegralThatMissesItsAccuracySaysSo) {
    // 2^18 points over a million radians cannot follow the sine (the integral is 1 - cos(1e6) =
    // 0.06340207): the best estimate is shown, with a warning and a failed status.
    const Outcome missed = run({"--angle", "rad", "integrate", "SIN(x)", "x", "0", "1e+6"});
    EXPECT_EQ(missed.status, 1);
    EXPECT_FALSE(missed.out.empty());
    EXPECT_EQ(missed.err, "warning: Then integration algorithm could not converge within the specified accuracy to "
                          "obtain a solution!\n");
    // A steep end fools the extrapolation's error estimate, not the agreement of two stages:
    // 2 (1 - 0.001) = 1.998 and ln(1000) = 6.9077552789821, within the default accuracy 1e-4.
    const Outcome steep = run({"integrate", "x^-0.5", "x", "0.000001", "1"});
    EXPECT_EQ(steep.status, 0);
    EXPECT_NEAR(std::stod(steep.out), 1.998, 1.998e-4);
    EXPECT_NEAR(std::stod(run({"integrate", "1/x", "x", "0.001", "1"}).out), 6.9077552789821, 6.9e-4);
    const Outcome met = run({"integrate", "x^2", "x", "0", "3"});
    EXPECT_EQ(met.status, 0);
    EXPECT_EQ(met.out, "9\n");
    EXPECT_EQ(met.err, "");
}

TEST(CalculusCommands, BuiltInFunctionsRunInsideMappedExpressions) {
    // Six digits by default: the default accuracy leaves noise in the ninth.
    EXPECT_EQ(run({"--angle", "rad", "integrate", "SIN(x)", "x", "0", "PI"}).out, "2\n");
    EXPECT_NE(run({"--angle", "rad", "--precision", "14", "integrate", "SIN(x)", "x", "0", "PI"}).out, "2\n");
    // e = 2.7182818284590452354
    EXPECT_EQ(run({"--precision", "10", "derive", "EXP(x)", "x", "1"}).out, "2.718281828\n");
    // pi/2, 3 pi/2, 5 pi/2 = 1.5707963268, 4.7123889804, 7.8539816340
    EXPECT_EQ(run({"--angle", "rad", "--precision", "10", "roots", "COS(x)", "x", "0", "10", "1001"}).out,
              "1.570796327\t0\n4.71238898\t0\n7.853981634\t0\n");
}

TEST(RootsCommand, ScansTheGridAndKeepsEachRootOnce) {
    // Both roots lie on grid points, each the end of two intervals.
    const Outcome on_grid = run({"roots", "x^2-1", "x", "-2", "2", "101"});
    EXPECT_EQ(on_grid.status, 0);
    EXPECT_EQ(on_grid.out, "-1\t0\n1\t0\n");
    EXPECT_EQ(on_grid.err, "");
    EXPECT_EQ(run({"roots", "x^2-1", "x", "2", "-2", "101"}).out, on_grid.out);
    // sqrt(2) = 1.4142135623730950488
    EXPECT_EQ(run({"roots", "x^2-2", "x", "-2", "2", "101"}).out,
              "-1.4142135623731\t0\n1.4142135623731\t0\n");

    const Outcome none = run({"roots", "x^2+1", "x", "-2", "2", "101"});
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, "Solution - 0 roots found\n");
    const Outcome coarse = run({"roots", "x-0.5", "x", "0", "1", "11"});
    EXPECT_EQ(coarse.out, "0.5\t0\n");
    EXPECT_NE(coarse.err.find("minimum of 101 steps"), std::string::npos);
}

TEST(RootsCommand, EveryReportedRootIsARootInsideTheInterval) {
    // Steps of 2 radians: every multiple of pi from -31 pi to 31 pi, and nothing else.
    const Outcome sine = run({"--angle", "rad", "roots", "SIN(x)", "x", "-100", "100", "101"});
    std::istringstream rows(sine.out);
    int count = 0;
    for (std::string row; std::getline(rows, row); ++count) {
        const double root = std::stod(row.substr(0, row.find('\t')));
        EXPECT_NEAR(root / M_PI, std::round(root / M_PI), 1e-12) << row;
    }
    EXPECT_EQ(count, 63);
    // A change of sign across a pole is no root.
    EXPECT_EQ(run({"roots", "1/x", "x", "-1", "1", "100"}).out, "");
    EXPECT_EQ(run({"--angle", "rad", "roots", "TAN(x)", "x", "1", "2", "101"}).out, "");
}

TEST(RootsCommand, AnEvenRootIsSearchedOnBothBranches) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    // sqrt(x) + 1 has no root; its negative branch -sqrt(x) + 1 has one at 1.
    EXPECT_EQ(run(parser, {"roots", "x^0.5+1", "x", "0", "4", "101"}).out, "1\t0\n");
    EXPECT_FALSE(parser.neg_sqrt());
    EXPECT_EQ(run(parser, {"roots", "x^0.5-1", "x", "0", "4", "101"}).out, "1\t0\n");
}

TEST(PolyrootsCommand, FindsEveryRootInTheOrderOfTheMethod) {
    EXPECT_EQ(run({"polyroots", "1", "0", "1"}).out, "i\n-i\n");
    EXPECT_EQ(run({"polyroots", "1", "-6", "11", "-6"}).out, "1\n2\n3\n");
    // x^3 - 8: 2 and -1 +- sqrt(3) i, sqrt(3) = 1.7320508075688772935
    EXPECT_EQ(run({"polyroots", "1", "0", "0", "-8"}).out, "2\n-1+1.7320508075689i\n-1-1.7320508075689i\n");
    EXPECT_EQ(run({"polyroots", "2", "0", "0"}).out, "0\n0\n");
    // (x - 2)(x - i): a complex coefficient, so Laguerre's method.
    EXPECT_EQ(run({"polyroots", "1", "-(2+i)", "2i"}).out, "2\ni\n");
    EXPECT_EQ(run({"-e", "c = 4", "polyroots", "1", "-c"}).out, "4\n");
}

TEST(MatrixCommand, OperationsOnMatrixText) {
    EXPECT_EQ(run({"matrix", "det", "[[1,2],[3,4]]"}).out, "-2\n");
    EXPECT_EQ(run({"matrix", "inv", "[[1,2],[3,4]]"}).out, "[[-2,1],[1.5,-0.5]]\n");
    // Cells are expressions: 2/3 - pi = -2.4749259869231265718
    EXPECT_EQ(run({"matrix", "det", "[[1/3, PI],[1, 2]]"}).out, "-2.4749259869231\n");
    EXPECT_EQ(run({"matrix", "solve", "[[2,1],[1,3]]", "[[3],[5]]"}).out, "[[0.8],[1.4]]\n");
    EXPECT_EQ(run({"matrix", "mul", "[[1,2],[3,4]]", "[[0,1],[1,0]]"}).out, "[[2,1],[4,3]]\n");
    EXPECT_EQ(run({"matrix", "sub", "[[1,2],[3,4]]", "[[1,1],[1,1]]"}).out, "[[0,1],[2,3]]\n");
    EXPECT_EQ(run({"matrix", "scale", "[[1,2],[3,4]]", "-1/2"}).out, "[[-0.5,-1],[-1.5,-2]]\n");
    EXPECT_EQ(run({"matrix", "transpose", "[[1,2,3]]"}).out, "[[1],[2],[3]]\n");
    EXPECT_EQ(run({"matrix", "adjugate", "[[1,2],[3,4]]"}).out, "[[4,-2],[-3,1]]\n");
    EXPECT_EQ(run({"matrix", "trace", "[[1,2],[3,4]]"}).out, "5\n");
    EXPECT_EQ(run({"matrix", "rank", "[[1,2],[2,4]]"}).out, "1\n");

    const Outcome singular = run({"matrix", "inv", "[[1,2],[2,4]]"});
    EXPECT_EQ(singular.status, 1);
    EXPECT_EQ(singular.out, "");
    EXPECT_EQ(singular.err, "error: the matrix is singular: it has no inverse\n");
    EXPECT_EQ(run({"matrix", "solve", "[[1,2],[2,4]]", "[[1],[2]]"}).status, 1);
}

TEST(FreqCommand, AFileOfValuesGivesItsClassesCountedByHand) {
    const std::string file = std::string(QUORVEX_FIXTURES_DIR) + "data/frequency_values.txt";
    // 12 values from 1 to 12: three classes of width 11/3, holding 1 2 3 4, 5 6 7 8 8 and 9 10 12.
    EXPECT_EQ(run({"freq", file.c_str()}).out,
              "1 to 4.6666666666667\t4\n4.6666666666667+ to 8.3333333333333\t5\n8.3333333333333+ to 12\t3\n");
    // Four classes of width 2.75.
    EXPECT_EQ(run({"freq", file.c_str(), "--intervals", "2*2"}).out,
              "1 to 3.75\t3\n3.75+ to 6.5\t3\n6.5+ to 9.25\t4\n9.25+ to 12\t2\n");
    // The bounds are written at the precision.
    EXPECT_EQ(run({"--precision", "2", "freq", file.c_str()}).out, "1 to 4.7\t4\n4.7+ to 8.3\t5\n8.3+ to 12\t3\n");

    const Outcome too_many = run({"freq", file.c_str(), "--intervals", "100"});
    EXPECT_EQ(too_many.status, 2);
    EXPECT_NE(too_many.err.find("from 2 to 99"), std::string::npos);
    const Outcome missing = run({"freq", "/nonexistent/values.txt"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.err.find("Could Not Be Located"), std::string::npos);
    std::string error;
    EXPECT_FALSE(parse({"map", "x", "x", "0", "1", "2", "--intervals", "3"}, error));
    EXPECT_EQ(error, "--intervals belongs to the freq command");
}

TEST(Commands, AResultBeyondTheRangeOfADoubleIsAnOverflowNotAZero) {
    for (const std::vector<const char*>& args :
         {std::vector<const char*>{"matrix", "det", "[[1e+200,0],[0,1e+200]]"},
          {"matrix", "mul", "[[1e+300]]", "[[1e+300]]"}, {"matrix", "scale", "[[1e+300]]", "1e+300"},
          {"matrix", "add", "[[9*1e+307]]", "[[9*1e+307]]"}, {"integrate", "EXP(x)", "x", "700", "720"}}) {
        const Outcome outcome = run(args);
        EXPECT_EQ(outcome.status, 1) << args[1];
        EXPECT_EQ(outcome.out, "") << args[1];
        EXPECT_NE(outcome.err.find("verflow"), std::string::npos) << args[1] << ": " << outcome.err;
    }
    // A mapped run reports the overflow on the points where it happens and goes on.
    const Outcome mapped = run({"map", "EXP(x)", "x", "700", "720", "3"});
    EXPECT_EQ(mapped.status, 1);
    EXPECT_EQ(mapped.out, "700\t1.014232054735e+304\n710\terror: A floating point overflow has occured!\n"
                          "720\terror: A floating point overflow has occured!\n");
    EXPECT_EQ(run({"map", "EXP(x)*0", "x", "700", "720", "3"}).status, 1);
}

TEST(MatrixCommand, TheDecompositionMultipliesBackToTheMatrix) {
    const char* a = "[[1,2,3],[4,5,6]]";
    std::istringstream lines(run({"matrix", "lu", a}).out);
    std::string l, u, p;
    ASSERT_TRUE(std::getline(lines, l) && std::getline(lines, u) && std::getline(lines, p));
    ASSERT_TRUE(l.starts_with("L = ") && u.starts_with("U = ") && p.starts_with("P = "));
    EXPECT_NE(p, "P = [[1,0],[0,1]]") << "the larger first cell of row 2 must be the pivot";
    EXPECT_EQ(run({"matrix", "mul", p.c_str() + 4, a}).out,
              run({"matrix", "mul", l.c_str() + 4, u.c_str() + 4}).out);
}

TEST(Commands, BadInputIsAUsageErrorAndAFailedLineStopsTheCommand) {
    const std::vector<std::vector<const char*>> usage_errors{
        {"map", "x", "x", "0", "1"},                      // an argument missing
        {"map", "1+", "x", "0", "1", "3"},                // no expression
        {"map", "y", "x", "0", "1", "3"},                 // an unknown name: nothing to map
        {"map", "x", "PI", "0", "1", "3"},                // a constant is no variable
        {"map", "x", "x", "0", "1", "2.5"},               // a point count must be whole
        {"map", "x", "x", "0", "1/0", "3"},               // a limit that fails
        {"integrate", "x", "x", "0", "1+i"},              // a limit that is not real
        {"integrate", "x", "x", "0", "1", "--step", "1"}, // another command's option
        {"roots", "x", "x", "1", "1", "101"},
        {"polyroots", "1"},
        {"polyroots", "0", "1", "2"},
        {"matrix", "frob", "[[1]]"},
        {"matrix", "det", "[[1,2],[3]]"},
        {"matrix", "det", "[[1,2,3],[4,5,6]]"},
        {"matrix", "add", "[[1]]", "[[1,2]]"},
        {"matrix", "inv", "[[1]]", "[[1]]"},
        {"matrix", "det", "[[1,i]]"},
    };
    for (const auto& args : usage_errors) {
        const Outcome outcome = run(args);
        EXPECT_EQ(outcome.status, 2) << args[0] << ' ' << args[1];
        EXPECT_TRUE(outcome.err.starts_with(std::string("quorvex-cli: ") + args[0] + ": ")) << outcome.err;
        EXPECT_NE(outcome.err.find("\nUsage: quorvex-cli "), std::string::npos);
    }

    const Outcome failed_line = run({"-e", "1/0", "map", "x", "x", "0", "1", "2"});
    EXPECT_EQ(failed_line.status, 1);
    EXPECT_EQ(failed_line.out, "");
    EXPECT_EQ(failed_line.err, "error: Division By Zero Encountered!\n");
}

TEST(CalculusCommands, DerivativesWithTheAutomaticStepCarryTheirDigits) {
    // Reference values computed once with mpmath at 25 digits.
    const struct {
        const char* expression;
        const char* x;
        bool radians;
        double orders[3];
    } cases[] = {
        {"x^5", "2", false, {80.0, 160.0, 240.0}},
        {"SIN(x)", "1", true, {0.5403023058681397174, -0.84147098480789650665, -0.5403023058681397174}},
        {"EXP(x)", "1.5", false, {4.4816890703380648226, 4.4816890703380648226, 4.4816890703380648226}},
        {"LN(x)", "3", false, {0.33333333333333333333, -0.11111111111111111111, 0.074074074074074074074}},
        {"LN(x)", "0.5", false, {2.0, -4.0, 16.0}},
        {"EXP(x^2)", "0.3", false, {0.65650457022312621472, 2.5822513095442964446, 4.1753690666190827256}},
        {"ATAN(x)", "0.7", true, {0.67114093959731543624, -0.63060222512499436962, 0.28416399406399554528}},
        {"SQRT(x)", "4", false, {0.25, -0.03125, 0.01171875}},
        {"1/(1+x^2)", "-1.2", false, {0.40311744154797097554, 0.45708671650931135205, 0.35750807769639995144}},
        {"COS(x)*x", "2.5", true, {-2.29732397580682495, 0.80591475065942129898, 3.8996112069006923796}},
    };
    for (const auto& each : cases) {
        for (int order = 1; order <= 3; ++order) {
            const std::string order_text = std::to_string(order);
            std::vector<const char*> args{"--precision", "14"};
            if (each.radians) args.insert(args.end(), {"--angle", "rad"});
            args.insert(args.end(), {"derive", each.expression, "x", each.x, "--order", order_text.c_str()});
            const Outcome outcome = run(args);
            ASSERT_EQ(outcome.status, 0) << each.expression << " order " << order << ": " << outcome.err;
            const double expected = each.orders[order - 1];
            const double digits = -std::log10(std::abs(std::stod(outcome.out) - expected) / std::abs(expected) + 1e-16);
            // Most reach 10 digits (8 for the third order); a function whose nearest singularity is
            // close to the point's own size (SQRT at 4, 1/(1+x^2) at -1.2) half a digit less.
            EXPECT_GE(digits, order == 1 ? 10.5 : order == 2 ? 9.5 : 7.5) << each.expression << " at " << each.x << ", order " << order
                                                        << ": " << outcome.out;
        }
    }
    // A step too small for the order is refused with a reason, not answered with noise.
    const Outcome noisy = run({"derive", "x^5", "x", "2", "--order", "3", "--step", "0.001"});
    EXPECT_EQ(noisy.status, 1);
    EXPECT_NE(noisy.err.find("The step is too small for a derivative of this order"), std::string::npos) << noisy.err;
    EXPECT_EQ(run({"derive", "x^5", "x", "2", "--order", "1", "--step", "0.001"}).status, 0);
}

namespace {

// The certified coefficients B0, B1, ... and R squared of a NIST StRD linear least-squares file.
struct CertifiedFit {
    std::vector<long double> coefficients;
    long double r_squared = 0;
};

CertifiedFit certified_fit(const std::string& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in) << path;
    CertifiedFit set;
    const std::regex parameter(R"(^\s*B(\d+)\s+(\S+)\s+\S+\s*$)");
    const std::regex r_squared(R"(^\s*R-Squared\s+(\S+)\s*$)");
    std::string line;
    std::smatch match;
    while (std::getline(in, line)) {
        if (std::regex_match(line, match, parameter)) set.coefficients.push_back(std::stold(match[2].str()));
        else if (std::regex_match(line, match, r_squared)) set.r_squared = std::stold(match[1].str());
    }
    return set;
}

double correct_digits(long double value, long double certified) {
    if (value == certified) return 19;
    return -std::log10(static_cast<double>(std::fabs(value - certified) / std::fabs(certified)));
}

} // namespace

TEST(Commands, FitGivesTheCertifiedDigitsOfThePublishedPolynomialSets) {
    // Each file is read as it is published, its header above the data skipped; the data's columns
    // are y then x. Printed at 14 digits, a coefficient shows at most about 13.7 correct ones.
    const struct {
        const char* name;
        double digits;
    } sets[] = {{"Norris", 13},   {"Pontius", 13},  {"Filip", 13},    {"Wampler1", 13},
                {"Wampler2", 13}, {"Wampler3", 12.5}, {"Wampler4", 13}, {"Wampler5", 11.5}};
    for (const auto& set : sets) {
        const std::string path = std::string(QUORVEX_FIXTURES) + "nist/" + set.name + ".dat";
        const CertifiedFit certified = certified_fit(path);
        ASSERT_GT(certified.coefficients.size(), 1u) << set.name;
        const std::string degree = std::to_string(certified.coefficients.size() - 1);
        const Outcome outcome = run({"fit", path.c_str(), "--degree", degree.c_str(), "--columns", "2,1"});
        ASSERT_EQ(outcome.status, 0) << set.name << ": " << outcome.err;
        std::istringstream lines(outcome.out);
        std::string key, value;
        for (size_t k = 0; k < certified.coefficients.size(); ++k) {
            ASSERT_TRUE(lines >> key >> value) << set.name;
            EXPECT_EQ(key, "x^" + std::to_string(k));
            EXPECT_GE(correct_digits(std::stold(value), certified.coefficients[k]), set.digits)
                << set.name << " B" << k << " = " << value;
        }
        ASSERT_TRUE(lines >> key >> value);
        EXPECT_EQ(key, "correlation");
        ASSERT_TRUE(lines >> key >> value);
        EXPECT_EQ(key, "determination");
        EXPECT_GE(correct_digits(std::stold(value), certified.r_squared), 13) << set.name;
    }
}

TEST(Commands, FitRefusesWhatItCanNotRead) {
    const std::string norris = std::string(QUORVEX_FIXTURES) + "nist/Norris.dat";
    for (const std::vector<const char*>& args :
         {std::vector<const char*>{"fit", "/nonexistent/points.dat"},
          {"fit", norris.c_str(), "--columns", "2"},
          {"fit", norris.c_str(), "--columns", "1,3"},
          {"fit", norris.c_str(), "--degree", "0"},
          {"fit", norris.c_str(), "--accuracy", "1"}}) {
        const Outcome outcome = run(args);
        EXPECT_EQ(outcome.status, 2) << args.back() << ": " << outcome.out;
        EXPECT_NE(outcome.err.find("Usage: quorvex-cli fit FILE"), std::string::npos) << outcome.err;
    }
    std::string error;
    EXPECT_FALSE(parse({"map", "x", "x", "0", "1", "2", "--degree", "2"}, error));
    EXPECT_EQ(error, "--degree and --columns belong to the fit command");
    // More coefficients than points (41 for Norris's 36) can not be determined: the fit fails.
    const Outcome too_high = run({"fit", norris.c_str(), "--degree", "40", "--columns", "2,1"});
    EXPECT_EQ(too_high.status, 1) << too_high.out;
}
