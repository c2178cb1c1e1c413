#include "root_scan.h"

#include "engine/parser.h"

#include <algorithm>
#include <cmath>

namespace quorvex::engine {

namespace {

std::string last_error(Parser& parser) {
    const char* message = parser.GetLastError();
    std::string text = message && *message ? message : "evaluation failed";
    parser.ClearLastError();
    return text;
}

// The negative square roots for the length of a pass, and the positive ones however it ends.
class NegativeBranch {
public:
    NegativeBranch(Parser& parser, bool on) : m_parser(parser) { m_parser.set_neg_sqrt(on); }
    ~NegativeBranch() { m_parser.set_neg_sqrt(false); }
    NegativeBranch(const NegativeBranch&) = delete;
    NegativeBranch& operator=(const NegativeBranch&) = delete;

private:
    Parser& m_parser;
};

} // namespace

RootScanResult scan_roots(Parser& parser, int equation, const std::string& variable, long points,
                          bool both_branches, const RootScanCalls& calls) {
    RootScanResult result;
    const long intervals = points - 1;
    const auto fail = [&](long double x) {
        result.end = RootScanEnd::failed;
        result.failed_at = x;
        result.error = last_error(parser);
    };
    // One pass over the grid; false when the scan ends with it.
    const auto pass = [&](bool negative) {
        const NegativeBranch branch(parser, negative);
        long double left = calls.point(0);
        for (long i = 0; i < intervals; ++i) {
            if (calls.going_on && !calls.going_on(i, intervals, negative)) {
                result.end = RootScanEnd::stopped;
                return false;
            }
            const long double right = calls.point(i + 1);
            long double root = 0;
            const bool has_root = parser.Root(equation, variable.c_str(), left, right, k_root_scan_accuracy,
                                              k_root_scan_iterations, root, true);
            if (parser.IsAnError()) {
                fail(left);
                return false;
            }
            left = right;
            if (!has_root) continue;
            std::string text = calls.text(root);
            const auto same = [&](const ScannedRoot& known) { return known.text == text; };
            if (std::any_of(result.roots.begin(), result.roots.end(), same)) continue;
            calls.set_variable(root);
            const complex value = parser.solve_equation(equation, false, true);
            if (parser.IsAnError()) {
                fail(root);
                return false;
            }
            if (std::fabs(value.imag()) >= k_root_scan_imaginary) continue;
            result.roots.push_back({root, std::move(text), value});
            if (calls.found) calls.found(result.roots.back());
        }
        return true;
    };
    if (points < 2) return result;
    if (pass(false) && both_branches) pass(true);
    return result;
}

} // namespace quorvex::engine
