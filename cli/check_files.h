#pragma once
#include "cli_options.h"

#include "engine/parser.h"
#include "engine/reporter.h"

#include <ostream>
#include <string>

namespace quorvex::cli {

// --check: computes the lines of FILE (a .qvx document loaded with its settings, variables and
// functions, or a text of lines) as Enter would, changes nothing, and prints each line whose
// stored answer differs from the answer computed now as "FILE:LINE: stored ANSWER, now ANSWER".
// Returns 0 when every answer agrees, 1 when any differs, 2 when the file can not be read.
int check_file(const CliOptions& options, engine::Parser& parser, engine::Reporter& reporter, const std::string& path,
               std::ostream& out, std::ostream& err);

} // namespace quorvex::cli
