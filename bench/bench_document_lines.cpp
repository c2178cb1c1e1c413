// A document of 10,000 mixed lines processed as Enter processes each line of the editor:
// assignments, expressions with built-ins and user functions, old answers replaced, comments,
// several statements on a line, blank lines and failing lines.
#include "document/line_processor.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> mixed_lines(int count) {
    const char* const pattern[] = {
        "a{} = {}",
        "b = a{}*2+1",
        "SQRT(b)+SIN(30) // with a comment",
        "f{}[x] = x^2+{}",
        "f{}[b] = 99",
        "a{}; b; a{}+b",
        "",
        "// a note",
        "MEAN[{{1,2,3,{}}}]",
        "1/(a{}-a{})",
    };
    std::vector<std::string> lines;
    for (int i = 0; static_cast<int>(lines.size()) < count; ++i) {
        for (const char* text : pattern) {
            std::string line;
            for (const char* c = text; *c; ++c) {
                if (c[0] == '{' && c[1] == '}') {
                    line += std::to_string(i % 50);
                    ++c;
                } else if (c[0] == '{' && c[1] == '{') {
                    line += '{';
                    ++c;
                } else if (c[0] == '}' && c[1] == '}') {
                    line += '}';
                    ++c;
                } else {
                    line += *c;
                }
            }
            lines.push_back(line);
        }
    }
    lines.resize(static_cast<size_t>(count));
    return lines;
}

void BM_ProcessDocument(benchmark::State& state) {
    const std::vector<std::string> lines = mixed_lines(10'000);
    for (auto _ : state) {
        quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
        quorvex::document::LineProcessor processor(parser);
        size_t failed = 0;
        for (const std::string& line : lines) failed += processor.process(line).error ? 1 : 0;
        benchmark::DoNotOptimize(failed);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(lines.size()));
}
BENCHMARK(BM_ProcessDocument)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
