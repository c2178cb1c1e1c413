// What a user waits for when pressing Enter: the evaluation of one line.
#include "engine/parser.h"

#include <benchmark/benchmark.h>

namespace {

void BM_EvalArithmeticLine(benchmark::State& state) {
    quorvex::engine::Parser parser;
    for (auto _ : state) benchmark::DoNotOptimize(parser.eval_exp("(1.5+2.25)*3-4/7+2^10", true, true, false));
}
BENCHMARK(BM_EvalArithmeticLine);

void BM_EvalWithVariables(benchmark::State& state) {
    quorvex::engine::Parser parser;
    parser.eval_exp("alpha = 2.5", true, true, false);
    parser.eval_exp("beta = 4", true, true, false);
    for (auto _ : state) benchmark::DoNotOptimize(parser.eval_exp("alpha*beta+alpha/beta-1 < 20", true, true, false));
}
BENCHMARK(BM_EvalWithVariables);

void BM_EvalDoubleBaseline(benchmark::State& state) {
    // The same arithmetic in plain doubles, as the floor the engine is measured against.
    volatile double a = 1.5, b = 2.25, c = 3, d = 4, e = 7;
    for (auto _ : state) {
        double r = (a + b) * c - d / e + 1024.0;
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_EvalDoubleBaseline);

} // namespace

BENCHMARK_MAIN();
