// The curve fitter: a least-squares polynomial of degree 10 on 10,000 points (goal under 20 ms),
// the same through the tool's whole work (texts evaluated, the polynomial written, mapped and
// run at every point), and the Data Points dialog opening a file of 100,000 points (goal under
// 500 ms).
#include "gui/common/services.h"
#include "gui/tools/data_points_dialog.h"

#include "desktop/curve_fitter.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "numerics/polynomial_fit.h"
#include "store/atomic_write.h"

#include <QApplication>
#include <QDir>

#include <benchmark/benchmark.h>

#include <cmath>

using namespace quorvex;

namespace {

// A smooth curve with a small wobble, so that the fit has residuals.
long double sample(long double x) { return std::sin(3 * x) + 0.1L * std::cos(40 * x); }

void BM_FitDegree10On10000Points(benchmark::State& state) {
    std::vector<long double> x, y;
    for (int i = 0; i < 10000; ++i) x.push_back(i / 5000.0L - 1), y.push_back(sample(x.back()));
    std::string error;
    for (auto _ : state) {
        const auto fit = numerics::fit_polynomial(x, y, 11, error);
        benchmark::DoNotOptimize(fit->correlation);
    }
}
BENCHMARK(BM_FitDegree10On10000Points)->Unit(benchmark::kMillisecond);

void BM_CurveFitterDegree10On10000Points(benchmark::State& state) {
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    graph::StrDataPnts data;
    for (int i = 0; i < 10000; ++i) {
        const long double x = i / 5000.0L - 1;
        data.PutXDataPoint(std::to_string(static_cast<double>(x)).c_str(), i);
        data.PutYDataPoint(std::to_string(static_cast<double>(sample(x))).c_str(), i);
    }
    std::string error;
    for (auto _ : state) {
        const auto fit = desktop::fit_curve(parser, data, 11, 14, nullptr, error);
        benchmark::DoNotOptimize(fit->determination);
    }
}
BENCHMARK(BM_CurveFitterDegree10On10000Points)->Unit(benchmark::kMillisecond);

void BM_DataPointsDialogOpens100000PointFile(benchmark::State& state) {
    const std::string path = QDir::temp().filePath(QStringLiteral("quorvex_bench_points.dat")).toStdString();
    std::string text = "time volts\n";
    for (int i = 0; i < 100000; ++i) text += std::to_string(i * 0.01) + '\t' + std::to_string(std::sin(i * 0.01)) + '\n';
    store::write_file_atomically(path, text);
    engine::Parser parser(&functions::builtin_functions(), QUORVEX_DATA_DIR);
    gui::Services services;
    for (auto _ : state) {
        gui::DataPointsDialog dialog(parser, services, QStringLiteral("Curve Fitting Utility"), true, nullptr);
        dialog.load_file(QString::fromStdString(path));
        dialog.show();
        QApplication::processEvents();
        benchmark::DoNotOptimize(dialog.points().GetNumXYZPoints());
    }
    std::remove(path.c_str());
}
BENCHMARK(BM_DataPointsDialogOpens100000PointFile)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
