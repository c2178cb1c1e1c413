// The desktop editor, offscreen: opening and showing a 1,000-line document, Enter on a line, and a
// keystroke in a 10,000-line document (colouring redoes only the changed line).
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/qt_chart_2d.h"
#include "gui/library/library_dialog.h"
#include "gui/lists/list_pane.h"
#include "functions/builtin_functions.h"
#include "graph/build_2d.h"

#include <QApplication>
#include <QChart>
#include <QChartView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include <benchmark/benchmark.h>

using namespace quorvex;

namespace {

struct Setup : gui::ScratchServices {
    Setup() : ScratchServices(QStringLiteral(QUORVEX_SOURCE_DATA_DIR)) {}
    QString filePath(const QString& name) const { return file_path(name); }
};

// A worksheet of `lines` lines: assignments, functions, calls, notes.
std::string worksheet(int lines) {
    std::string text;
    for (int i = 0; i < lines; ++i) {
        switch (i % 4) {
        case 0: text += "v" + std::to_string(i) + " = " + std::to_string(i) + ".5"; break;
        case 1: text += "f" + std::to_string(i) + "(x) = x^2 + v" + std::to_string(i - 1); break;
        case 2: text += "f" + std::to_string(i - 1) + "(3) = 9.5 // a call"; break;
        default: text += "SIN(30) + 0.1 + 0.2 = 0.8"; break;
        }
        text += "\r\n";
    }
    return text;
}

void OpenAndShow1000Lines(benchmark::State& state) {
    Setup setup;
    const QString path = setup.filePath(QStringLiteral("thousand.qvx"));
    {
        engine::Parser parser;
        document::Document document(parser);
        document.ReadText(worksheet(1000));
        document.Write(path.toStdString());
    }
    for (auto _ : state) {
        gui::DocumentWindow window(setup.services, QStringLiteral("x"));
        window.resize(900, 600);
        window.show();
        if (!window.load(path)) state.SkipWithError("load failed");
        window.repaint(); // shown: laid out and painted once
        benchmark::DoNotOptimize(window.editor()->document()->blockCount());
    }
}
BENCHMARK(OpenAndShow1000Lines)->Unit(benchmark::kMillisecond);

void EnterOnALine(benchmark::State& state) {
    Setup setup;
    gui::DocumentWindow window(setup.services, QStringLiteral("x"));
    window.show();
    gui::MathEditor* editor = window.editor();
    QTest::keyClicks(editor, QStringLiteral("r = 2.5"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClicks(editor, QStringLiteral("area(x) = PI*x^2"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTest::keyClicks(editor, QStringLiteral("area(r) + SQRT(2)/3"));
    for (auto _ : state) {
        // F4 recomputes the line in place: the old answer is found and replaced each time.
        QTest::keyClick(editor, Qt::Key_F4);
    }
    if (!editor->textCursor().block().text().contains(QLatin1Char('='))) state.SkipWithError("no answer");
}
BENCHMARK(EnterOnALine)->Unit(benchmark::kMicrosecond);

void KeystrokeIn10000Lines(benchmark::State& state) {
    Setup setup;
    gui::DocumentWindow window(setup.services, QStringLiteral("x"));
    window.resize(900, 600);
    window.show();
    QString text;
    const std::string sheet = worksheet(10000);
    text = QString::fromStdString(sheet).remove(QLatin1Char('\r'));
    window.editor()->setPlainText(text);
    QTextCursor middle(window.editor()->document()->findBlockByNumber(5000));
    window.editor()->setTextCursor(middle);
    window.editor()->centerCursor();
    QApplication::processEvents();
    int i = 0;
    for (auto _ : state) {
        // A digit, then its removal: the document stays the same size.
        QTest::keyClick(window.editor(), (i++ % 2) ? Qt::Key_Backspace : Qt::Key_7);
        window.editor()->viewport()->repaint();
    }
}
BENCHMARK(KeystrokeIn10000Lines)->Unit(benchmark::kMicrosecond);

// A graph of SIN(x)*x over `points` points with its engine and a shown (offscreen) chart.
struct WaveGraph {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_SOURCE_DATA_DIR "/"};
    graph::GraphData graph{"wave"};
    QChartView view;
    gui::QtChart2D chart{&view};
    explicit WaveGraph(long points) {
        parser.eval_exp("wave[x] = SIN(x)*x", true, false, false);
        graph.Functions.emplace_back("wave[x]", "SIN(x)*x");
        graph.XAxisVar =
            graph::VariableCopy(engine::Variable("x", engine::complex(-720, 0), engine::complex(720, 0), points));
        view.resize(900, 600);
        view.show();
    }
    bool draw() {
        graph::SweepReport report;
        const bool drawn = graph::build_2d(parser, graph, {}, chart, report);
        view.viewport()->repaint();
        return drawn;
    }
};

void SweepAndDraw(benchmark::State& state) {
    Setup setup;
    WaveGraph wave(state.range(0));
    for (auto _ : state)
        if (!wave.draw()) state.SkipWithError("not drawn");
}
BENCHMARK(SweepAndDraw)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

// One step of panning and one of zooming a drawn 10,000-point graph, each repainted.
void PanAndZoom10000(benchmark::State& state) {
    Setup setup;
    WaveGraph wave(10000);
    wave.draw();
    int i = 0;
    for (auto _ : state) {
        if (i++ % 2) {
            wave.chart.chart()->scroll(15, 0);
        } else {
            wave.chart.chart()->zoom(i % 4 == 0 ? 1.1 : 1 / 1.1);
        }
        wave.view.viewport()->repaint();
    }
}
BENCHMARK(PanAndZoom10000)->Unit(benchmark::kMillisecond);

// Scrolling a page of the variable list of a document with 10,000 variables, repainted.
void ScrollVariables10000(benchmark::State& state) {
    Setup setup;
    gui::DocumentWindow window(setup.services, QStringLiteral("x"));
    window.resize(900, 600);
    window.show();
    for (int i = 0; i < 10000; ++i)
        window.parser().eval_exp(("v" + std::to_string(i) + " = " + std::to_string(i) + ".25").c_str(), true, false, false);
    window.toggle_list(true);
    QTableView* view = window.variable_list()->view();
    QScrollBar* bar = view->verticalScrollBar();
    QApplication::processEvents();
    if (!view->isVisible() || bar->maximum() <= 0) state.SkipWithError("the list is not shown");
    int step = 0;
    for (auto _ : state) {
        bar->setValue((step++ * 25) % bar->maximum());
        view->viewport()->repaint();
    }
}
BENCHMARK(ScrollVariables10000)->Unit(benchmark::kMicrosecond);

// One keystroke in the function library's search: the whole list filtered again and repainted.
void LibrarySearchKeystroke(benchmark::State& state) {
    Setup setup;
    gui::DocumentWindow window(setup.services, QStringLiteral("x"));
    gui::LibraryDialog library(window);
    library.show();
    const QString typed = QStringLiteral("circle");
    int i = 0;
    for (auto _ : state) {
        library.search()->setText(typed.left(i++ % typed.size() + 1));
        benchmark::DoNotOptimize(library.shown());
        library.view()->viewport()->repaint();
    }
}
BENCHMARK(LibrarySearchKeystroke)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
