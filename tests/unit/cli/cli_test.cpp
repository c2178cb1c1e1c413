#include "cli_options.h"
#include "interactive.h"
#include "parser_setup.h"
#include "line_evaluator.h"

#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

using namespace quorvex::cli;

namespace {

std::optional<CliOptions> parse(std::vector<const char*> args, std::string& error) {
    args.insert(args.begin(), "quorvex-cli");
    return parse_options(static_cast<int>(args.size()), const_cast<char**>(args.data()), error);
}

} // namespace

TEST(CliOptions, ValuesAreCheckedAndOrderIsKept) {
    std::string error;
    const auto options = parse({"-e", "1", "--eval", "2", "--angle", "rad", "--precision", "5", "--format", "sci",
                                "--zero", "1e-20", "--point", "--sign", "--fraction", "--answers", "a.txt"},
                               error);
    ASSERT_TRUE(options) << error;
    EXPECT_EQ(options->eval_lines, (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(options->files, (std::vector<std::string>{"a.txt"}));
    EXPECT_EQ(options->angle_type, 1);
    EXPECT_EQ(options->precision, 5);
    EXPECT_EQ(options->format, 1);
    EXPECT_FLOAT_EQ(*options->zero_tolerance, 1e-20f);
    EXPECT_TRUE(options->point && options->sign && options->fraction && options->answers);

    for (const std::vector<const char*>& bad : std::vector<std::vector<const char*>>{
             {"--precision", "15"}, {"--precision", "x"}, {"--angle", "grad"}, {"--format"}, {"--zero", "-1"},
             {"--unknown"}, {"-e"}}) {
        EXPECT_FALSE(parse(bad, error)) << bad[0];
        EXPECT_FALSE(error.empty());
    }
    // --precise switches the engine that evaluates the lines, also behind a command.
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    apply_answer_options(parser, *options);
    EXPECT_FALSE(parser.precise());
    const auto precise = parse({"map", "x", "x", "0", "1", "2", "--precise"}, error);
    ASSERT_TRUE(precise) << error;
    EXPECT_EQ(precise->command_args.size(), 5u);
    apply_answer_options(parser, *precise);
    EXPECT_TRUE(parser.precise());
    EXPECT_NE(std::string(usage_text()).find("\n      --precise       "), std::string::npos);

    const auto dashes = parse({"--", "-e"}, error);
    ASSERT_TRUE(dashes);
    EXPECT_EQ(dashes->files, (std::vector<std::string>{"-e"}));
}

TEST(LineEvaluator, AnswersModeGivesOneLinePerInput) {
    CliOptions options;
    options.answers = true;
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    std::ostringstream out, err;
    LineEvaluator evaluator(options, parser, out, err);
    EXPECT_TRUE(evaluator.run("x = 5"));
    EXPECT_TRUE(evaluator.run("x*2"));
    EXPECT_TRUE(evaluator.run("   "));
    EXPECT_FALSE(evaluator.run("1/0"));
    EXPECT_FALSE(evaluator.run("ASIN(0.5i)"));
    EXPECT_EQ(out.str(), "\n10\n\nerror: Division By Zero Encountered!\n"
                         "error: You can not calculate the ASIN of a complex number in 'DEGREES' mode. You must change "
                         "to 'RADIANS' mode in the mathematical options dialog!\n");
    EXPECT_TRUE(err.str().empty());
}

TEST(LineEvaluator, EditorModeKeepsTheLineAndSendsErrorsAside) {
    CliOptions options;
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    std::ostringstream out, err;
    LineEvaluator evaluator(options, parser, out, err);
    evaluator.run("2+3");
    evaluator.run("y = 1");
    evaluator.run("2+", "notes.txt:3");
    evaluator.run("4*2 = 9 // old answer");
    EXPECT_EQ(out.str(), "2+3 = 5\ny = 1\n2+\n4*2 = 8 // old answer\n");
    EXPECT_EQ(err.str(), "notes.txt:3: error: Number or expression expected with operator!\n");
    EXPECT_EQ(evaluator.last_answer(), "8");

    // ":=" assigns only in the third calculation method.
    options.method = 2;
    std::ostringstream assigned;
    LineEvaluator(options, parser, assigned, err).run("z := 4; z+1");
    EXPECT_EQ(assigned.str(), "z := 4; z+1 = 5\n");
    options.method = 1;
    std::ostringstream refused;
    // Otherwise "= 4" reads as an old answer of "q :", which is removed, and "q :" fails.
    EXPECT_FALSE(LineEvaluator(options, parser, refused, err).run("q := 4"));
    EXPECT_EQ(refused.str(), "q :\n");
    EXPECT_FALSE(parser.is_variable("q"));
}

TEST(InteractiveSession, CommandsListTheStateAndRecallTheLastAnswer) {
    CliOptions options;
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    std::ostringstream out, err;
    LineEvaluator evaluator(options, parser, out, err);
    InteractiveSession session(evaluator, parser, out);
    std::string recall;
    const auto type = [&](const std::string& line) {
        out.str("");
        return session.handle(line, recall);
    };

    type(":vars");
    EXPECT_EQ(out.str(), "No variables yet.\n");
    type(":last");
    EXPECT_EQ(recall, "");
    EXPECT_NE(out.str().find("no answer yet"), std::string::npos);

    type("x = 3");
    type("f[t] = t^2");
    type("f[x]+1");
    EXPECT_EQ(out.str(), "f[x]+1 = 10\n");
    type(":vars");
    EXPECT_EQ(out.str(), "x = 3\n");
    type(":funcs");
    EXPECT_EQ(out.str(), "f[t] = t^2\n");
    type(":last");
    EXPECT_EQ(recall, "10");
    EXPECT_EQ(out.str(), "");
    type(":history");
    EXPECT_EQ(out.str(), "1  x = 3\n2  f[t] = t^2\n3  f[x]+1\n");
    type(":precise on");
    EXPECT_TRUE(parser.precise());
    EXPECT_EQ(out.str(), "Precise arithmetic is on.\n");
    type(":precise maybe");
    EXPECT_TRUE(parser.precise());
    EXPECT_EQ(out.str(), ":precise takes on or off.\n");
    type(":precise off");
    type(":precise");
    EXPECT_FALSE(parser.precise());
    EXPECT_EQ(out.str(), "Precise arithmetic is off.\n");
    type(":nonsense");
    EXPECT_NE(out.str().find("Unknown command :nonsense"), std::string::npos);
    EXPECT_TRUE(session.all_ok());

    type("1/0");
    EXPECT_NE(err.str().find("line 4: error: Division By Zero"), std::string::npos) << err.str();
    EXPECT_FALSE(session.all_ok());
    EXPECT_EQ(type("  :quit "), InteractiveSession::Next::quit);
}
