#pragma once
#include "cli_options.h"

#include "engine/parser.h"

#include <ostream>
#include <string_view>

namespace quorvex::cli {

// Whether the name is one of the commands: map, integrate, derive, roots, polyroots, fit, matrix, freq.
bool is_command(std::string_view name);

// Runs the -e lines quietly (their errors go to `err`), then the command the options name, on a
// Parser set up as for evaluating lines. Returns the exit status: 0 done, 1 a line or the
// calculation failed, 2 a usage or input error; the reason goes to `err`.
int run_command(const CliOptions& options, engine::Parser& parser, std::ostream& out, std::ostream& err);

} // namespace quorvex::cli
