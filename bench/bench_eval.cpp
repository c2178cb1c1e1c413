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

// The same lines with the names they read and write kept, as the editor keeps them for each line
// it computes, against the same lines without: arg 1 tracks, arg 0 does not.
void BM_EvalTrackingNames(benchmark::State& state) {
    quorvex::engine::Parser parser;
    parser.eval_exp("alpha = 2.5", true, true, false);
    parser.eval_exp("beta = 4", true, true, false);
    parser.eval_exp("f(x) = x^2+alpha", true, true, false);
    parser.eval_exp("g(x,y) = f(x)*y-beta", true, true, false);
    const bool track = state.range(0) != 0;
    const char* lines[] = {"alpha*beta+alpha/beta-1 < 20", "g(alpha,3)+f(beta)", "(1.5+2.25)*3-4/7+2^10"};
    const char* line = lines[state.range(1)];
    for (auto _ : state) {
        quorvex::engine::NameUse use;
        if (track) parser.track_names(&use);
        benchmark::DoNotOptimize(parser.eval_exp(line, true, true, false));
        parser.track_names(nullptr);
        benchmark::DoNotOptimize(use.read.size());
    }
}
BENCHMARK(BM_EvalTrackingNames)->ArgNames({"track", "line"})->ArgsProduct({{0, 1}, {0, 1, 2}});

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
