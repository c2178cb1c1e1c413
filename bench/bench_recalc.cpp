// Answers that stay current, offscreen: a 1,000-line document whose lines all depend on its first
// line (each reading it directly, or as a chain through the line above). Changing the first line
// (F4 on it) until the rest is marked stale, and "Recalculate Stale Lines" over the rest.
#include "gui/common/scratch_services.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/editor/recalculation.h"

#include <QApplication>
#include <QTest>
#include <QTextBlock>

#include <benchmark/benchmark.h>

using namespace quorvex;

namespace {

constexpr int k_lines = 1000;

struct ScratchSetup : gui::ScratchServices {
    ScratchSetup() : ScratchServices(QStringLiteral(QUORVEX_SOURCE_DATA_DIR)) {}
};

struct Sheet {
    ScratchSetup setup;
    gui::DocumentWindow window{setup.services, QStringLiteral("x")};
    gui::MathEditor* editor = window.editor();
    int value = 1;

    // `chain`: line i reads line i-1; otherwise every line reads the first.
    explicit Sheet(bool chain) {
        window.resize(900, 600);
        window.show();
        QStringList text{QStringLiteral("x0 = 1")};
        for (int i = 1; i < k_lines; ++i)
            text << (chain ? QStringLiteral("x%1 = x%2+1").arg(i).arg(i - 1) : QStringLiteral("x%1 = x0*%1").arg(i));
        editor->setPlainText(text.join(QLatin1Char('\n')));
        gui::recalculate_lines(*editor, gui::RecalcScope::Document);
        QApplication::processEvents();
    }
    // The first line given a new value and computed with F4, as a user changes it.
    void change_first_line() {
        const QTextBlock first = editor->document()->firstBlock();
        QTextCursor cursor(first);
        cursor.setPosition(first.position() + static_cast<int>(first.text().length()), QTextCursor::KeepAnchor);
        cursor.insertText(QStringLiteral("x0 = %1").arg(++value));
        editor->setTextCursor(cursor);
        QTest::keyClick(editor, Qt::Key_F4);
    }
};

void ChangeFirstLineMarksTheRest(benchmark::State& state) {
    Sheet sheet(state.range(0) != 0);
    for (auto _ : state) {
        sheet.change_first_line();
        if (sheet.editor->stale_count() != k_lines - 1) state.SkipWithError("not every line was marked");
        state.PauseTiming();
        gui::recalculate_lines(*sheet.editor, gui::RecalcScope::StaleLines);
        sheet.editor->viewport()->repaint();
        state.ResumeTiming();
    }
}
BENCHMARK(ChangeFirstLineMarksTheRest)->ArgName("chain")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void RecalculateStaleLines(benchmark::State& state) {
    Sheet sheet(state.range(0) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        sheet.change_first_line();
        state.ResumeTiming();
        const gui::RecalcResult result = gui::recalculate_lines(*sheet.editor, gui::RecalcScope::StaleLines);
        if (result.computed != k_lines - 1 || sheet.editor->stale_count() != 0) state.SkipWithError("not recalculated");
    }
}
BENCHMARK(RecalculateStaleLines)->ArgName("chain")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
