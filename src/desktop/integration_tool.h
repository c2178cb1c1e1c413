#pragma once
#include <array>
#include <optional>
#include <string>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine

namespace quorvex::desktop {

// One integral of a single, double or triple one: its variable and its limits as typed.
struct IntegrationAxis {
    std::string parameter, lower, upper;
};

// What the integration tool is asked: the axes from the innermost (X) out; the limits of an inner
// axis may use the variables of the axes outside it.
struct IntegrationInput {
    int order = 1;          // 1, 2 or 3 nested integrals
    std::string expression; // empty integrates 1: a length, an area or a volume
    std::array<IntegrationAxis, 3> axes;
    int accuracy_position = 20; // the Speed/Accuracy slider, 0 to 100
};

// The input that a refused run points the user to.
enum class IntegrationField { expression, parameter, lower, upper };

struct IntegrationFailure {
    std::string message;
    IntegrationField field = IntegrationField::expression;
    int axis = 0; // 0 for X, 1 for Y, 2 for Z
};

struct IntegrationAnswer {
    double value = 0;
    double error = 0;       // the method's estimate of its error
    bool converged = false; // false: `value` is the best estimate, short of the accuracy asked for
    bool stopped = false;   // the user stopped the run: no value
};

// The relative accuracy a slider position asks for: 0.01, a tenth of that for every ten steps.
long double integration_tolerance(int position);

// A share done, for the gauge, once the outer integral has been sampled at `points` points. The
// number of points an integral takes is not known ahead: the share grows with the stages of the
// first rule, whose points double at each stage.
int integration_percent(long points);

// The text that tells that an integral did not meet the accuracy asked for.
std::string integration_not_converged_text();

// Checks the input, integrates and leaves the document's variables as they were, also after a
// stop through `host`. None, with `failure` set to what the user is told and where, when the
// input can not run or the expression fails inside the range.
std::optional<IntegrationAnswer> integrate_expression(engine::Parser& parser, const IntegrationInput& input,
                                                      engine::Host* host, IntegrationFailure& failure);

} // namespace quorvex::desktop
