// 3-D surfaces offscreen: a 100 x 100 surface swept and drawn shaded with hidden lines, a redraw
// while the view turns, and a 300 x 300 surface; the sweep alone is the baseline of the same run.
#include "gui/graph3d/scene_painter.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "graph/scene_3d.h"
#include "graph/sweep_3d.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <benchmark/benchmark.h>

using namespace quorvex;

namespace {

graph::GraphData surface_graph(engine::Parser& parser, long points) {
    parser.eval_exp("w[x, y] = SIN(x*90)*COS(y*90) + x/4", true, false, false);
    graph::GraphData graph("bench");
    graph.Functions.emplace_back("w[x,y]", "SIN(x*90)*COS(y*90) + x/4");
    graph.XAxisVar = graph::VariableCopy(engine::Variable("x", {-2, 0}, {2, 0}, points));
    graph.ZAxisVar = graph::VariableCopy(engine::Variable("y", {-2, 0}, {2, 0}, points));
    graph.Type3D = 11111; // mesh, shade, contour, zone, hidden lines
    return graph;
}

graph::Style3D shaded_hidden() {
    graph::Style3D style;
    style.zone = style.contour = false;
    style.hidden = style.shade = style.mesh = true;
    style.header = "w[x,y]";
    return style;
}

void draw(const graph::Grid3D& grid, const graph::Style3D& style, const graph::View3D& view, QImage& image, bool fast) {
    QPainter painter(&image);
    const graph::Scene3D scene =
        graph::build_scene_3d(grid, style, view, image.width(), image.height(), gui::text_metrics(painter.font()));
    gui::paint_scene_3d(painter, scene, fast);
}

void BM_Sweep100x100_Baseline(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const graph::GraphData graph = surface_graph(parser, 100);
    for (auto _ : state) {
        graph::SweepReport report;
        benchmark::DoNotOptimize(graph::sweep_3d(parser, graph, report));
    }
}
BENCHMARK(BM_Sweep100x100_Baseline)->Unit(benchmark::kMillisecond);

void sweep_and_draw(benchmark::State& state, long points) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const graph::GraphData graph = surface_graph(parser, points);
    QImage image(800, 600, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        graph::SweepReport report;
        const auto grid = graph::sweep_3d(parser, graph, report);
        draw(*grid, shaded_hidden(), graph::View3D{}, image, false);
    }
}

void BM_Surface100x100_SweptAndDrawn(benchmark::State& state) { sweep_and_draw(state, 100); }
BENCHMARK(BM_Surface100x100_SweptAndDrawn)->Unit(benchmark::kMillisecond);

void BM_Surface300x300_SweptAndDrawn(benchmark::State& state) { sweep_and_draw(state, 300); }
BENCHMARK(BM_Surface300x300_SweptAndDrawn)->Unit(benchmark::kMillisecond);

// What a drag repaints: the scene at a new rotation, drawn without antialiasing.
void BM_Redraw100x100_WhileTurning(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const graph::GraphData graph = surface_graph(parser, 100);
    graph::SweepReport report;
    const auto grid = graph::sweep_3d(parser, graph, report);
    QImage image(800, 600, QImage::Format_ARGB32_Premultiplied);
    graph::View3D view;
    for (auto _ : state) {
        view.ZRotation = std::fmod(view.ZRotation + 3, 360.0);
        draw(*grid, shaded_hidden(), view, image, true);
    }
}
BENCHMARK(BM_Redraw100x100_WhileTurning)->Unit(benchmark::kMillisecond);

// The scene alone, without painting: what the renderer spends before the painter.
void BM_Scene100x100_Built(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    const graph::GraphData graph = surface_graph(parser, 100);
    graph::SweepReport report;
    const auto grid = graph::sweep_3d(parser, graph, report);
    graph::View3D view;
    for (auto _ : state) {
        view.ZRotation = std::fmod(view.ZRotation + 3, 360.0);
        benchmark::DoNotOptimize(graph::build_scene_3d(*grid, shaded_hidden(), view, 800, 600));
    }
}
BENCHMARK(BM_Scene100x100_Built)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
