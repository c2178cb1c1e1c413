#include "editor_keys.h"

namespace quorvex::desktop {

KeyDecision decide_key(EditorKey key, int calculation_method, char before_caret) {
    switch (key) {
    case EditorKey::F4:
        return {true, false, true};
    case EditorKey::Enter:
        return {calculation_method != 0, true, false};
    case EditorKey::ShiftEnter:
        // With method 0 the new line of this key press is swallowed: the line is computed in place.
        return calculation_method == 0 ? KeyDecision{true, false, false} : KeyDecision{true, true, false};
    case EditorKey::Equals: {
        const bool compound = before_caret == ':' || before_caret == '!' || before_caret == '>' || before_caret == '<';
        if (calculation_method == 2 && !compound) return {true, false, false};
        return {false, true, false};
    }
    }
    return {};
}

AfterCompute after_compute(bool recalculated, bool error, bool last_line) {
    if (!recalculated || last_line) return AfterCompute::NewLine;
    return error ? AfterCompute::StayOnLine : AfterCompute::NextLine;
}

} // namespace quorvex::desktop
