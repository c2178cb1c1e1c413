#include "document_check.h"

namespace quorvex::document {

std::vector<DifferingAnswer> check_answers(LineProcessor& processor, const std::vector<std::string>& lines,
                                           const std::function<bool(size_t done)>& progress) {
    std::vector<DifferingAnswer> differing;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (progress && !progress(i)) break;
        const LineOutcome outcome = processor.process(lines[i]);
        if (!outcome.held_answer) continue;
        std::string now;
        if (outcome.error)
            now = "error: " + outcome.message;
        else if (outcome.answer.empty())
            now = "no answer";
        else if (outcome.answer == outcome.old_answer)
            continue;
        else
            now = outcome.answer;
        differing.push_back({i + 1, outcome.old_answer, std::move(now)});
    }
    return differing;
}

std::string check_summary(size_t differing) {
    if (differing == 0) return "All answers agree";
    return std::to_string(differing) + (differing == 1 ? " answer differs" : " answers differ");
}

} // namespace quorvex::document
