// The battery of reference integrals at accuracy 1e-12: the time of each integral (labelled by
// its expression and range) and of the whole battery in one run.
#include "integral_references.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <iterator>
#include <string>
#include <vector>

namespace {

using quorvex::engine::Parser;
using quorvex::testing::k_references;
using quorvex::testing::Reference;

constexpr long double k_accuracy = 1e-12L;

// A reference integral ready to run: its mapped equation and numeric limits.
struct Prepared {
    int equation = 0;
    long double low = 0, high = 0;
};

long double value_of(Parser& parser, const char* text) {
    quorvex::engine::complex value;
    parser.eval_exp(text, value, true, false, false);
    return value.real();
}

Prepared prepare(Parser& parser, const Reference& reference) {
    quorvex::engine::complex value;
    parser.eval_exp("x = 0.5", value, true, false, false);
    return {parser.map_expression(reference.expression), value_of(parser, reference.lower),
            value_of(parser, reference.upper)};
}

void BM_ReferenceIntegral(benchmark::State& state) {
    Parser parser(&quorvex::functions::builtin_functions());
    parser.set_angle_type(1);
    const Reference& reference = k_references[state.range(0)];
    const Prepared run = prepare(parser, reference);
    bool converged = false;
    for (auto _ : state) {
        const auto found = parser.integrate(run.equation, "x", run.low, run.high, k_accuracy, true);
        converged = found.converged;
        benchmark::DoNotOptimize(found.value);
    }
    state.SetLabel(std::string(reference.expression) + " over " + reference.lower + ".." + reference.upper +
                   (converged ? "" : " (not converged)"));
}
BENCHMARK(BM_ReferenceIntegral)->DenseRange(0, static_cast<int>(std::size(k_references)) - 1)->Unit(benchmark::kMillisecond);

void BM_WholeBattery(benchmark::State& state) {
    Parser parser(&quorvex::functions::builtin_functions());
    parser.set_angle_type(1);
    std::vector<Prepared> runs;
    for (const Reference& reference : k_references) runs.push_back(prepare(parser, reference));
    for (auto _ : state)
        for (const Prepared& run : runs)
            benchmark::DoNotOptimize(parser.integrate(run.equation, "x", run.low, run.high, k_accuracy, true).value);
    state.counters["integrals"] = static_cast<double>(runs.size());
}
BENCHMARK(BM_WholeBattery)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
