// A line that calls library functions, with the system library and a user library loaded, beside
// the same line with the bodies written out: the difference is the cost of the library lookup and
// the expansion.
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

namespace {

// About 40 tokens: three calls of the system library and one of the user library's.
constexpr const char* k_calls = "HERON[3,4,5]+CPOUND[1000,0.05,10]*2-DIST2D[0,0,3,4]/7+SUMN[10]*3+1";
constexpr const char* k_written_out =
    "(SQRT[((3)+(4)+(5))*(-(3)+(4)+(5))*((3)-(4)+(5))*((3)+(4)-(5))]/4)+((1000)*POW[1+(0.05),10])*2-"
    "(SQRT[((3)-(0))^2+((4)-(0))^2])/7+((10)*((10)+1)/2)*3+1";

void BM_LineWithLibraryCalls(benchmark::State& state) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_library_dirs(QUORVEX_DATA_DIR, QUORVEX_USER_LIBRARY_DIR);
    for (auto _ : state) benchmark::DoNotOptimize(parser.eval_exp(k_calls, true, true, false));
}
BENCHMARK(BM_LineWithLibraryCalls);

void BM_SameLineWrittenOut(benchmark::State& state) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_library_dirs(QUORVEX_DATA_DIR, QUORVEX_USER_LIBRARY_DIR);
    for (auto _ : state) benchmark::DoNotOptimize(parser.eval_exp(k_written_out, true, true, false));
}
BENCHMARK(BM_SameLineWrittenOut);

void BM_FirstLineOfANewParser(benchmark::State& state) {
    // Reading both library files and the first lookups: what a new document pays once.
    for (auto _ : state) {
        quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
        parser.set_library_dirs(QUORVEX_DATA_DIR, QUORVEX_USER_LIBRARY_DIR);
        benchmark::DoNotOptimize(parser.eval_exp(k_calls, true, true, false));
    }
}
BENCHMARK(BM_FirstLineOfANewParser);

} // namespace

BENCHMARK_MAIN();
