// The math tools offscreen: a quick calc table of 1,000 rows, a family of 50 curves of 1,000
// points computed for a quick graph, and one frame of its simulation (the curve swapped in and the
// chart painted), which must stay well under a thirtieth of a second.
#include "gui/graph2d/qt_chart_2d.h"

#include "desktop/quick_calc.h"
#include "desktop/quick_graph.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "graph/graph_types.h"
#include "graph/simulation.h"

#include <QApplication>
#include <QChartView>
#include <QPixmap>

#include <benchmark/benchmark.h>

using namespace quorvex;

namespace {


void BM_QuickCalc1000Rows(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_angle_type(1);
    std::string error;
    for (auto _ : state) {
        const auto table = desktop::quick_calc(parser, "SIN(x)*EXP(-x/10)+x^2", {"x", "0", "100", "1000"}, {},
                                               nullptr, error);
        benchmark::DoNotOptimize(table->rows.size());
    }
}
BENCHMARK(BM_QuickCalc1000Rows)->Unit(benchmark::kMillisecond);

desktop::QuickGraphFamily family_of_50(engine::Parser& parser) {
    std::string error;
    return *desktop::quick_graph_values(parser, "SIN(x-k)*EXP(-x/20)", {"x", "0", "50", "1000"}, {"k", "0", "6", "50"},
                                        {}, nullptr, error);
}

void BM_QuickGraphFamily50x1000(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_angle_type(1);
    for (auto _ : state) benchmark::DoNotOptimize(family_of_50(parser).curves.size());
}
BENCHMARK(BM_QuickGraphFamily50x1000)->Unit(benchmark::kMillisecond);

void BM_SimulationFrame50x1000(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_angle_type(1);
    const desktop::QuickGraphFamily family = family_of_50(parser);
    graph::ChartData data(1, family.curves.size(), family.x.size());
    for (size_t c = 0; c < family.curves.size(); ++c)
        for (size_t p = 0; p < family.x.size(); ++p) {
            data.set_x(c, p, family.x[p]);
            data.set_y(c, p, family.curves[c].y[p]);
        }
    QChartView view;
    view.resize(900, 600);
    view.show();
    gui::QtChart2D chart(&view);
    chart.set_type(graph::graph_type::Line);
    chart.set_data(data);
    chart.set_bounds(*graph::data_extent(data));
    graph::Simulation play(chart.data());
    for (auto _ : state) {
        const graph::Simulation::Frame& frame = play.advance();
        chart.show_frame(frame.x, frame.y, frame.label);
        // The chart lays the curve out in the event loop; grabbing paints the whole view then.
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(view.grab());
    }
    state.counters["frames_per_s"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_SimulationFrame50x1000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
