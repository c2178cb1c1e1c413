#include "commands.h"

#include "command_host.h"
#include "command_support.h"
#include "line_evaluator.h"

#include <unistd.h>

#include <array>
#include <iostream>
#include <sstream>

namespace quorvex::cli {

namespace {

struct Command {
    std::string_view name;
    std::string_view synopsis;
    int (*run)(CommandContext&);
};

constexpr std::array<Command, 8> k_commands{{
    {"map", "map EXPR VAR LOW HIGH POINTS", run_map},
    {"integrate", "integrate EXPR VAR LOW HIGH [--accuracy A]", run_integrate},
    {"derive", "derive EXPR VAR X [--order 1|2|3] [--step H]", run_derive},
    {"roots", "roots EXPR VAR LOW HIGH STEPS", run_roots},
    {"polyroots", "polyroots C_n ... C_0", run_polyroots},
    {"fit", "fit FILE [--degree N] [--columns X,Y]", run_fit},
    {"matrix", "matrix det|inv|rank|trace|transpose|adjugate|cofactor|lu|add|sub|mul|solve|scale A [B]",
     run_matrix},
    {"freq", "freq FILE [--intervals N]", run_freq},
}};

const Command* find_command(std::string_view name) {
    for (const Command& command : k_commands)
        if (command.name == name) return &command;
    return nullptr;
}

} // namespace

bool is_command(std::string_view name) {
    return find_command(name) != nullptr;
}

int run_command(const CliOptions& options, engine::Parser& parser, std::ostream& out, std::ostream& err) {
    const Command* command = find_command(options.command);
    if (!command) {
        err << "quorvex-cli: unknown command " << options.command << '\n';
        return 2;
    }

    // The lines that prepare the command show nothing but their errors; one failing stops the
    // command, whose result would not mean what was asked.
    CliOptions line_options = options;
    line_options.answers = false;
    std::ostringstream discarded;
    LineEvaluator evaluator(line_options, parser, discarded, err);
    for (const std::string& line : options.eval_lines)
        if (!evaluator.run(line)) return 1;

    // Ctrl+C stops the command where it stands; a terminal on standard error shows its progress.
    CommandHost host(err, "quorvex-cli " + std::string(command->name), &err == &std::cerr && ::isatty(STDERR_FILENO));
    engine::Host* const previous_host = parser.host();
    parser.set_host(&host);
    struct HostBack {
        engine::Parser& parser;
        engine::Host* host;
        ~HostBack() { parser.set_host(host); }
    } host_back{parser, previous_host};
    CommandContext context{options, parser, out, err, &host};
    try {
        const int status = command->run(context);
        host.finish();
        out.flush();
        return status;
    } catch (const CommandFailure& failure) {
        host.finish();
        out.flush();
        if (failure.status == 2)
            err << "quorvex-cli: " << command->name << ": " << failure.message << "\nUsage: quorvex-cli "
                << command->synopsis << '\n';
        else
            err << "error: " << failure.message << '\n';
        return failure.status;
    }
}

} // namespace quorvex::cli
