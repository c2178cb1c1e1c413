// Loading and saving a large document: 1,000 lines of text, 200 variables, 50 functions and 10
// graphs, each with a function and a data set; the argument is the number of points per graph.
#include "document/document.h"
#include "functions/builtin_functions.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace {

using quorvex::document::Document;
using quorvex::engine::Parser;

void fill(Parser& parser, Document& doc, int points_per_graph) {
    for (int i = 0; i < 1000; ++i) doc.Lines.push_back("v" + std::to_string(i % 200) + "*2+SIN(30) // line " +
                                                       std::to_string(i));
    for (int i = 0; i < 200; ++i) parser.eval_exp(("v" + std::to_string(i) + "=" + std::to_string(i) + ".25").c_str(),
                                                  true, false, false);
    for (int i = 0; i < 50; ++i)
        parser.eval_exp(("f" + std::to_string(i) + "[x]=x^2+v" + std::to_string(i)).c_str(), true, false, false);
    for (int g = 0; g < 10; ++g) {
        quorvex::document::DocumentGraph graph;
        graph.Data.Name = "Graph " + std::to_string(g);
        graph.Data.Functions.emplace_back("f" + std::to_string(g) + "[x]", "x^2+v" + std::to_string(g));
        quorvex::graph::StrDataPnts set;
        set.Name = "set" + std::to_string(g);
        for (int p = 0; p < points_per_graph; ++p) {
            set.PutXDataPoint(std::to_string(p * 0.5).c_str(), p);
            set.PutYDataPoint(std::to_string(p * 1.25 - 3).c_str(), p);
        }
        graph.Data.DataSets.push_back(std::move(set));
        doc.Graphs.push_back(std::move(graph));
    }
}

std::string bench_path(const char* name) {
    return (std::filesystem::temp_directory_path() / name).string();
}

void BM_SaveDocument(benchmark::State& state) {
    Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    Document doc(parser);
    fill(parser, doc, static_cast<int>(state.range(0)));
    const std::string path = bench_path("quorvex_bench_save.qvx");
    for (auto _ : state) benchmark::DoNotOptimize(doc.Write(path));
    std::filesystem::remove(path);
}
BENCHMARK(BM_SaveDocument)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

void BM_LoadDocument(benchmark::State& state) {
    const std::string path = bench_path("quorvex_bench_load.qvx");
    {
        Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
        Document doc(parser);
        fill(parser, doc, static_cast<int>(state.range(0)));
        doc.Write(path);
    }
    Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    Document doc(parser);
    for (auto _ : state) benchmark::DoNotOptimize(doc.Read(path));
    std::filesystem::remove(path);
}
BENCHMARK(BM_LoadDocument)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
