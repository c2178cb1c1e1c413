// Time per point of `quorvex-cli map` (the stepped variable, the mapped expression and the two
// numbers of each row written out) beside the bare mapped expression at the same points, in one
// run: the difference is what the command adds to the engine.
#include "cli_options.h"
#include "commands.h"
#include "parser_setup.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

namespace {

const char* const k_expressions[] = {"SIN(x)*EXP(-x/10)+x^2", "x"};
constexpr long k_points = 100000;

// Counts the output and keeps none of it: the rows of a run would otherwise fill memory.
class Discard : public std::streambuf {
protected:
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
};

std::unique_ptr<quorvex::engine::Parser> make_parser() {
    return std::make_unique<quorvex::engine::Parser>(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
}

// Each iteration is a whole run of k_points points over 0..100 in radians.
void BM_MapCommand(benchmark::State& state) {
    const std::string points = std::to_string(k_points);
    std::vector<const char*> args = {"quorvex-cli", "--angle", "rad", "map", k_expressions[state.range(0)],
                                     "x",           "0",       "100", points.c_str()};
    std::string error;
    const auto options = quorvex::cli::parse_options(static_cast<int>(args.size()), const_cast<char**>(args.data()), error);
    if (!options) {
        state.SkipWithError(error.c_str());
        return;
    }
    auto parser = make_parser();
    quorvex::cli::apply_answer_options(*parser, *options);
    Discard discard;
    std::ostream out(&discard), err(&discard);
    for (auto _ : state)
        if (quorvex::cli::run_command(*options, *parser, out, err) != 0) state.SkipWithError("map failed");
    state.SetItemsProcessed(state.iterations() * k_points);
    state.SetLabel(k_expressions[state.range(0)]);
}
BENCHMARK(BM_MapCommand)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

// The same points, stepped in doubles, through the mapped expression alone.
void BM_BareExpression(benchmark::State& state) {
    auto parser = make_parser();
    parser->set_angle_type(1);
    parser->eval_exp("x = 0", true, false, false);
    const int equation = parser->map_expression(k_expressions[state.range(0)]);
    if (equation == 0) {
        state.SkipWithError(parser->GetLastError());
        return;
    }
    const double width = 100.0 / (k_points - 1);
    for (auto _ : state)
        for (long i = 0; i < k_points; ++i) {
            parser->set_var_value({static_cast<double>(i) * width, 0}, "x");
            benchmark::DoNotOptimize(parser->solve_equation(equation, false, true));
        }
    state.SetItemsProcessed(state.iterations() * k_points);
    state.SetLabel(k_expressions[state.range(0)]);
}
BENCHMARK(BM_BareExpression)->DenseRange(0, 1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
