#pragma once
#include "cli_options.h"

#include "engine/parser.h"

namespace quorvex::cli {

// Gives the Parser the angle unit, the answer format and the arithmetic that the options ask for.
void apply_answer_options(engine::Parser& parser, const CliOptions& options);

} // namespace quorvex::cli
