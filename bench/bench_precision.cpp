// The cost of the arithmetic mode: one line evaluated as the editor does on Enter, and one point of
// the mapper's hot loop (solve_equation), for each mode in one run, so that the modes are compared
// as ratios measured side by side. A new mode is one row of k_modes; its benchmarks then appear
// with the mode's name in the label.
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

struct ArithmeticMode {
    const char* name;
    void (*apply)(quorvex::engine::Parser&);
};

const ArithmeticMode k_modes[] = {
    {"default", [](quorvex::engine::Parser&) {}},
    {"precise", [](quorvex::engine::Parser& parser) { parser.set_precise(true); }},
};
constexpr int k_mode_count = static_cast<int>(sizeof k_modes / sizeof k_modes[0]);

// Lines of the kinds users type: plain arithmetic with a power, a chain with built-ins, and a line
// reading variables.
const char* const k_lines[] = {
    "(1.5+2.25)*3-4/7+2^10",
    "1/3*3+SQRT(2)*EXP(1.5)-LN(7.25)/3",
    "alpha*beta+alpha/beta-SIN(alpha)^2",
};
constexpr int k_line_count = static_cast<int>(sizeof k_lines / sizeof k_lines[0]);

// Mapped expressions: arithmetic only, and arithmetic with kernels.
const char* const k_mapped[] = {
    "x^3-2x+1/x",
    "SIN(x)*EXP(-x/10)+x^2",
};
constexpr int k_mapped_count = static_cast<int>(sizeof k_mapped / sizeof k_mapped[0]);

std::unique_ptr<quorvex::engine::Parser> make_parser(const ArithmeticMode& mode) {
    auto parser = std::make_unique<quorvex::engine::Parser>(&quorvex::functions::builtin_functions());
    parser->set_angle_type(1);
    mode.apply(*parser);
    parser->eval_exp("alpha = 2.5", true, false, false);
    parser->eval_exp("beta = 4.125", true, false, false);
    parser->eval_exp("x = 0.5", true, false, false);
    return parser;
}

// range(0): the mode, range(1): the line.
void BM_EvaluateLine(benchmark::State& state) {
    const ArithmeticMode& mode = k_modes[state.range(0)];
    const char* line = k_lines[state.range(1)];
    auto parser = make_parser(mode);
    for (auto _ : state) benchmark::DoNotOptimize(parser->eval_exp(line, true, true, false));
    if (parser->IsAnError()) state.SkipWithError(parser->GetLastError());
    state.SetLabel(std::string(mode.name) + ": " + line);
}
BENCHMARK(BM_EvaluateLine)->ArgsProduct({benchmark::CreateDenseRange(0, k_mode_count - 1, 1),
                                         benchmark::CreateDenseRange(0, k_line_count - 1, 1)});

// Each iteration is one point of a sweep: x steps through (0, 10].
void BM_MappedPoint(benchmark::State& state) {
    const ArithmeticMode& mode = k_modes[state.range(0)];
    const char* text = k_mapped[state.range(1)];
    auto parser = make_parser(mode);
    const int equation = parser->map_expression(text);
    if (equation == 0) {
        state.SkipWithError(parser->GetLastError());
        return;
    }
    double x = 0.001;
    for (auto _ : state) {
        parser->set_var_value({x, 0}, "x");
        benchmark::DoNotOptimize(parser->solve_equation(equation, false, true));
        x = x >= 10 ? 0.001 : x + 0.001;
    }
    if (parser->IsAnError()) state.SkipWithError(parser->GetLastError());
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(std::string(mode.name) + ": " + text);
}
BENCHMARK(BM_MappedPoint)->ArgsProduct({benchmark::CreateDenseRange(0, k_mode_count - 1, 1),
                                        benchmark::CreateDenseRange(0, k_mapped_count - 1, 1)});

} // namespace

BENCHMARK_MAIN();
