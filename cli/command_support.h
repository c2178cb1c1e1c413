#pragma once
// What the commands share: their context, their two kinds of failure, reading expression
// arguments, writing numbers as answers, and the variable and equation of a mapped run.
#include "cli_options.h"

#include "engine/parser.h"

#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::cli {

class CommandHost;

struct CommandContext {
    const CliOptions& options;
    engine::Parser& parser;
    std::ostream& out;
    std::ostream& err;
    CommandHost* host = nullptr; // Ctrl+C and the progress line, when the command runs for a user
};

// Status of a command stopped by Ctrl+C, as a shell reports a process ended by it.
constexpr int k_stopped_status = 130;
// Whether the user asked the command to stop; then its progress line is removed and
// "stopped" with `what` was done is said on standard error.
bool stop_requested(CommandContext& context, const std::string& what);
// `done` of `total` steps, for the progress line.
void show_progress(CommandContext& context, long done, long total);

// Thrown by a command and caught where it was started: `status` 2 for bad usage or input (the
// message is followed by the command's synopsis), 1 for a calculation that failed.
struct CommandFailure {
    int status;
    std::string message;
};

[[noreturn]] void usage_failure(std::string message);
[[noreturn]] void calculation_failure(std::string message);

// The command's arguments; any other count is a usage failure.
const std::vector<std::string>& arguments(const CommandContext& context, size_t minimum, size_t maximum);
// The options of another command are a usage failure rather than silently ignored.
void refuse_options(const CommandContext& context, bool accuracy, bool order_or_step);

// An argument evaluated by the Parser; `what` names it in the messages ("LOW").
engine::complex evaluate(CommandContext& context, const std::string& text, std::string_view what);
// When `text` evaluated to 0 only because its value lies below the zero tolerance (answers
// smaller than it count as 0): the words that say so, to follow a refusal of the 0. Else empty.
std::string zeroed_by_tolerance(CommandContext& context, const std::string& text);
// The same, refusing an imaginary part.
long double evaluate_real(CommandContext& context, const std::string& text, std::string_view what);
// A whole number from `minimum` to `maximum`.
long evaluate_count(CommandContext& context, const std::string& text, std::string_view what, long minimum,
                    long maximum);
// A limit may not use the variable it limits: it would take the variable's value before the run.
void refuse_variable_in(CommandContext& context, const std::string& text, std::string_view what,
                        const std::string& variable);

// The number as an answer of an evaluated line shows it, in the answer format of the Parser.
std::string format_answer(CommandContext& context, engine::complex value);
std::string format_answer(CommandContext& context, long double value);
// The Parser's last error on one line.
std::string last_error(engine::Parser& parser);

// `count` points from `low` to `high`, both included, spread evenly in decimal arithmetic so that
// a grid through 0 meets 0 exactly; one point is `low`. Each point is made when it is asked for,
// so a run of millions of points starts at once and holds none of them.
class EvenPoints {
public:
    EvenPoints(long double low, long double high, long count);
    long count() const { return m_count; }
    long double at(long i);
    // The same point through the decimal type, as `at` computed it before it had a faster path.
    long double decimal_at(long i);

private:
    engine::Mathematics m_math;
    long double m_low, m_high, m_width = 0;
    long m_count;
    bool m_fast = false;     // whether the points are stepped on doubles by the integer path
    double m_fast_width = 0; // the width as that path holds it

};

// The variable of a run: made (as 0) when it does not exist and removed afterwards, else its value
// is put back afterwards. A name that is no variable name is a usage failure.
class RunVariable {
public:
    RunVariable(CommandContext& context, const std::string& name);
    ~RunVariable();
    RunVariable(const RunVariable&) = delete;
    RunVariable& operator=(const RunVariable&) = delete;

    const char* name() const { return m_name.c_str(); }
    void set(long double value);

private:
    engine::Parser& m_parser;
    std::string m_name;
    bool m_made = false;
    engine::complex m_saved;
};

// An expression mapped to an equation, which is deleted with this object. The mapping evaluates
// the expression once, with the variable at the first of `at` where that succeeds, so that a point
// where it is undefined (1/x at 0) does not stop the run. Failing everywhere is an input failure.
class MappedEquation {
public:
    MappedEquation(CommandContext& context, const std::string& expression, RunVariable& variable,
                   std::initializer_list<long double> at);
    ~MappedEquation();
    MappedEquation(const MappedEquation&) = delete;
    MappedEquation& operator=(const MappedEquation&) = delete;

    int number() const { return m_number; }
    // Whether the mapping took an even root (x^0.5), whose negative branch holds roots too.
    bool took_even_root() const { return m_even_root; }

private:
    engine::Parser& m_parser;
    int m_number = 0;
    bool m_even_root = false;
};

// The command families.
int run_map(CommandContext& context);
int run_integrate(CommandContext& context);
int run_derive(CommandContext& context);
int run_roots(CommandContext& context);
int run_polyroots(CommandContext& context);
int run_fit(CommandContext& context);
int run_matrix(CommandContext& context);
int run_freq(CommandContext& context);

} // namespace quorvex::cli
