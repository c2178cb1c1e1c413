// The cost of exactness: every operator and kernel passes through decimal text. Each decimal
// round trip stands beside the same operation on plain doubles, measured in the same run.
#include "number/complex_decimal.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

using namespace quorvex::number;

namespace {

volatile double g_a = 1.2345678901234, g_b = 0.98765432109876;

template <typename Operation>
void decimal14_round_trip(benchmark::State& state, Operation operation) {
    for (auto _ : state) {
        const double result = operation(Decimal14::lift(g_a), Decimal14::lift(g_b)).to_double();
        benchmark::DoNotOptimize(result);
    }
}

void BM_Add_Decimal(benchmark::State& s) { decimal14_round_trip(s, [](auto a, auto b) { return a + b; }); }
void BM_Multiply_Decimal(benchmark::State& s) { decimal14_round_trip(s, [](auto a, auto b) { return a * b; }); }
void BM_Divide_Decimal(benchmark::State& s) { decimal14_round_trip(s, [](auto a, auto b) { return a / b; }); }

void BM_Add_Double(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(g_a + g_b);
}
void BM_Multiply_Double(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(g_a * g_b);
}
void BM_Divide_Double(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(g_a / g_b);
}

void BM_Sin21_Decimal(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(sin(Decimal21::lift(g_a)).to_double());
}
void BM_Exp21_Decimal(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(exp(Decimal21::lift(g_a)).to_double());
}
void BM_Pow21_Decimal(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(pow(Decimal21::lift(g_a), Decimal21::lift(g_b)).to_double());
}
void BM_Sin_Double(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(std::sin(g_a));
}
void BM_Exp_Double(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(std::exp(g_a));
}
void BM_Pow_Double(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(std::pow(g_a, g_b));
}

// Text in and text out alone: the floor under every operation above, beside the plain C way
// of passing a double through 14 significant digits of text.
void BM_TextRoundTrip14(benchmark::State& s) {
    for (auto _ : s) benchmark::DoNotOptimize(Decimal14::lift(g_a).to_double());
}
void BM_TextRoundTrip14_Printf(benchmark::State& s) {
    char text[32];
    for (auto _ : s) {
        std::snprintf(text, sizeof text, "%.14g", g_a);
        benchmark::DoNotOptimize(std::strtod(text, nullptr));
    }
}

} // namespace

BENCHMARK(BM_Add_Decimal);
BENCHMARK(BM_Add_Double);
BENCHMARK(BM_Multiply_Decimal);
BENCHMARK(BM_Multiply_Double);
BENCHMARK(BM_Divide_Decimal);
BENCHMARK(BM_Divide_Double);
BENCHMARK(BM_Sin21_Decimal);
BENCHMARK(BM_Sin_Double);
BENCHMARK(BM_Exp21_Decimal);
BENCHMARK(BM_Exp_Double);
BENCHMARK(BM_Pow21_Decimal);
BENCHMARK(BM_Pow_Double);
BENCHMARK(BM_TextRoundTrip14);
BENCHMARK(BM_TextRoundTrip14_Printf);

BENCHMARK_MAIN();
