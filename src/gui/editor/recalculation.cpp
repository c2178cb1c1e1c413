#include "recalculation.h"

#include "document_window.h"
#include "line_marks.h"
#include "math_editor.h"
#include "math_highlighter.h"

#include "document/app_settings.h"
#include "document/document.h"
#include "document/document_check.h"
#include "functions/builtin_functions.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"

#include <QCoreApplication>
#include <QTextBlock>
#include <QTextCursor>

namespace quorvex::gui {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("Recalculation", text); }

// Lines between progress reports: cheap enough to keep, frequent enough to show.
constexpr int k_report_every = 32;

// The engine of a check says nothing: what differs is the check's answer.
struct SilentReporter : engine::Reporter {
    void report(std::string_view, std::string_view, engine::MessageKind) override {}
};

} // namespace

RecalcResult recalculate_lines(MathEditor& editor, RecalcScope scope) {
    RecalcResult result;
    if (editor.recalculating()) return result;
    QTextDocument* text = editor.document();
    const int total = text->blockCount();
    const QString caption = scope == RecalcScope::StaleLines ? tr("Recalculate Stale Lines") : tr("Recalculate Document");
    ProgressHost host(&editor, caption);
    engine::Parser& parser = editor.processor().parser();
    engine::Host* const previous_host = parser.host();
    parser.set_host(&host); // a long line (an integral) stops with the run
    editor.set_recalculating(true);

    bool variables = false, functions = false;
    QString message;
    QTextCursor cursor(text);
    cursor.beginEditBlock();
    int index = 0;
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next(), ++index) {
        if (index % k_report_every == 0) {
            host.set_progress(tr("Line %1 of %2").arg(index + 1).arg(total).toStdString(), index * 100 / total);
            host.pump();
        }
        if (host.aborted()) {
            result.stopped = true;
            break;
        }
        if (scope == RecalcScope::StaleLines) {
            // Whether the line is stale now: lines above may have changed what it read.
            const LineMarks* marks = LineMarks::of(block);
            const document::LineRecord* record = marks ? marks->record_for(block.text()) : nullptr;
            if (!record || document::changed_reads(parser, *record).empty()) continue;
        }
        const int position = block.position();
        const document::LineOutcome outcome = editor.compute_block(cursor, block);
        block = text->findBlock(position);
        if (!outcome.computed) continue;
        ++result.computed;
        variables = variables || outcome.variables_changed;
        functions = functions || outcome.functions_changed;
        if (outcome.error) {
            result.error_line = index;
            message = QString::fromStdString(outcome.message);
            break;
        }
    }
    cursor.endEditBlock();
    parser.set_host(previous_host);
    editor.set_recalculating(false);
    editor.announce(variables, functions);
    editor.refresh_stale_marks();
    if (result.error_line >= 0) {
        const QTextBlock refused = text->findBlockByNumber(result.error_line);
        QTextCursor select(refused);
        select.setPosition(refused.position() + static_cast<int>(refused.text().length()), QTextCursor::KeepAnchor);
        editor.setTextCursor(select);
        editor.ensureCursorVisible();
        editor.show_line_error(message);
    }
    return result;
}

QString check_document(DocumentWindow& window) {
    std::string composed;
    if (!window.compose(composed)) return {};
    const Services& services = window.services();
    engine::Parser scratch(&functions::builtin_functions(), services.library_dir.toStdString() + "/",
                           services.data_dir.toStdString());
    SilentReporter silent;
    scratch.set_reporter(&silent);
    document::ApplyToNewParser(services.options, scratch);
    if (services.settings) document::ReadGlobalSettings(*services.settings, scratch);
    document::Document loaded(scratch, &silent);
    if (!loaded.ReadText(composed)) return {};

    MathEditor& editor = *window.editor();
    document::LineProcessor processor(scratch, editor.processor().settings());
    ProgressHost host(&window, tr("Check Document"));
    scratch.set_host(&host);
    const auto lines = loaded.Lines;
    const auto differing = document::check_answers(processor, lines, [&](size_t done) {
        if (done % k_report_every == 0) {
            host.set_progress(tr("Line %1 of %2").arg(done + 1).arg(lines.size()).toStdString(),
                              static_cast<int>(done * 100 / std::max<size_t>(lines.size(), 1)));
            host.pump();
        }
        return !host.aborted();
    });
    scratch.set_host(nullptr);

    // The marks of an earlier check go; each differing line gets its own.
    QTextDocument* text = editor.document();
    std::vector<QTextBlock> redraw;
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next())
        if (LineMarks* marks = LineMarks::of(block); marks && marks->differs_text) {
            marks->differs_text.reset();
            redraw.push_back(block);
        }
    for (const document::DifferingAnswer& line : differing) {
        const QTextBlock block = text->findBlockByNumber(static_cast<int>(line.line) - 1);
        if (!block.isValid()) continue;
        LineMarks& marks = LineMarks::make(block);
        marks.differs_text = block.text();
        marks.differs_answer = QString::fromStdString(line.now);
        redraw.push_back(block);
    }
    editor.highlighter()->refresh_blocks(redraw);
    const QString summary = host.aborted() ? tr("Check stopped") : QString::fromStdString(document::check_summary(differing.size()));
    Q_EMIT window.statusText(summary);
    return summary;
}

} // namespace quorvex::gui
