// Points per second of a mapped expression (solve_equation) beside the evaluation of the same
// line (eval_exp) and beside the same expression written in doubles, in one run.
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

struct Expression {
    const char* text;
    double (*in_doubles)(double);
};

const Expression k_expressions[] = {
    {"SIN(x)*EXP(-x/10)+x^2", [](double x) { return std::sin(x) * std::exp(-x / 10) + x * x; }},
    {"x^3-2x+1", [](double x) { return x * x * x - 2 * x + 1; }},
    {"MEAN[{x,2x,3x}]", [](double x) { return (x + 2 * x + 3 * x) / 3; }},
};

std::unique_ptr<quorvex::engine::Parser> make_parser() {
    auto parser = std::make_unique<quorvex::engine::Parser>(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser->set_angle_type(1);
    parser->eval_exp("x = 0.5", true, false, false);
    return parser;
}

// Each iteration is one point: x steps through [0, 10).
void BM_SolveEquation(benchmark::State& state) {
    auto parser = make_parser();
    const int equation = parser->map_expression(k_expressions[state.range(0)].text);
    if (equation == 0) {
        state.SkipWithError(parser->GetLastError());
        return;
    }
    double x = 0;
    for (auto _ : state) {
        parser->set_var_value({x, 0}, "x");
        benchmark::DoNotOptimize(parser->solve_equation(equation, false, true));
        x = x >= 10 ? 0 : x + 0.001;
    }
    if (parser->IsAnError()) state.SkipWithError(parser->GetLastError());
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(k_expressions[state.range(0)].text);
}
BENCHMARK(BM_SolveEquation)->DenseRange(0, 2);

void BM_EvalExp(benchmark::State& state) {
    auto parser = make_parser();
    double x = 0;
    for (auto _ : state) {
        parser->set_var_value({x, 0}, "x");
        benchmark::DoNotOptimize(parser->eval_exp(k_expressions[state.range(0)].text, true, false, false));
        x = x >= 10 ? 0 : x + 0.001;
    }
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(k_expressions[state.range(0)].text);
}
BENCHMARK(BM_EvalExp)->DenseRange(0, 2);

void BM_Doubles(benchmark::State& state) {
    volatile double x = 0;
    const auto f = k_expressions[state.range(0)].in_doubles;
    for (auto _ : state) {
        benchmark::DoNotOptimize(f(x));
        x = x >= 10 ? 0 : x + 0.001;
    }
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(k_expressions[state.range(0)].text);
}
BENCHMARK(BM_Doubles)->DenseRange(0, 2);

} // namespace

BENCHMARK_MAIN();
