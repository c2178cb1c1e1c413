#pragma once
#include <QString>

namespace quorvex::gui {

class DocumentWindow;
class MathEditor;

enum class RecalcScope {
    StaleLines, // the stale lines and whatever becomes stale on the way
    Document,   // every line from the top
};

struct RecalcResult {
    int computed = 0;     // lines computed
    int error_line = -1;  // the line (from 0) that was refused, where the run stopped
    bool stopped = false; // Stop was pressed
};

// Recomputes lines of the editor in document order as Enter would, as one undo step, with
// progress and Stop once it takes a while. The run ends at the first refused line, which is
// selected and whose message shows as Enter shows it.
RecalcResult recalculate_lines(MathEditor& editor, RecalcScope scope);

// Computes every line of the window's document again on an engine of its own, loaded as the
// document would be after a save, and marks each line whose stored answer differs from the
// answer computed now. Nothing of the document changes. Returns the summary for the status
// line ("3 answers differ"), also sent as the window's status text.
QString check_document(DocumentWindow& window);

} // namespace quorvex::gui
