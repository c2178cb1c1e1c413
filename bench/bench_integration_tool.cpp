// What a user of the integration tool waits for: a double integral of a smooth function to six
// digits (the slider at 40 asks for 1e-6), from the typed input to the answer, beside the single
// integral of the same kind measured in the same run as the baseline.
#include "desktop/integration_tool.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr int k_six_digits = 40;

std::unique_ptr<quorvex::engine::Parser> make_parser() {
    auto parser =
        std::make_unique<quorvex::engine::Parser>(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser->set_angle_type(1); // radians
    return parser;
}

void run(benchmark::State& state, const quorvex::desktop::IntegrationInput& input) {
    const auto parser = make_parser();
    for (auto _ : state) {
        quorvex::desktop::IntegrationFailure failure;
        const auto answer = quorvex::desktop::integrate_expression(*parser, input, nullptr, failure);
        if (!answer || !answer->converged) {
            state.SkipWithError(answer ? "not converged" : failure.message.c_str());
            break;
        }
        benchmark::DoNotOptimize(answer->value);
    }
}

void BM_DoubleExpOfProduct(benchmark::State& state) {
    run(state, {2, "EXP(-x*y)", {{{"x", "0", "1"}, {"y", "0", "1"}}}, k_six_digits});
}

void BM_DoubleSinCos(benchmark::State& state) {
    run(state, {2, "SIN(x)*COS(y)", {{{"x", "0", "1"}, {"y", "0", "1"}}}, k_six_digits});
}

// The inner range following the outer variable: the quarter disc.
void BM_DoubleInnerLimitFollowsOuter(benchmark::State& state) {
    run(state, {2, "x^2 + y^2", {{{"x", "0", "SQRT(1-y^2)"}, {"y", "0", "1"}}}, k_six_digits});
}

void BM_SingleBaseline(benchmark::State& state) {
    run(state, {1, "EXP(-x*0.5)", {{{"x", "0", "1"}}}, k_six_digits});
}

} // namespace

BENCHMARK(BM_SingleBaseline)->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);
BENCHMARK(BM_DoubleExpOfProduct)->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);
BENCHMARK(BM_DoubleSinCos)->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);
BENCHMARK(BM_DoubleInnerLimitFollowsOuter)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

BENCHMARK_MAIN();
