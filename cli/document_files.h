#pragma once
#include "cli_options.h"

#include "engine/parser.h"
#include "engine/reporter.h"

#include <ostream>
#include <string>

namespace quorvex::cli {

// Whether a path names a document (.qvx, any case) rather than a text of lines.
bool is_document_path(const std::string& path);

// Loads a document into the Parser, processes every line of its text as the editor does (errors
// to `err` as "PATH:LINE: error: MESSAGE"), then prints the document, or saves it back
// (--in-place) or to --output. Returns the exit status: 0, 1 when a line failed, 2 when the file
// could not be read or saved.
int process_document(const CliOptions& options, engine::Parser& parser, engine::Reporter& reporter,
                     const std::string& path, std::ostream& out, std::ostream& err);

// Prints a readable summary of a document without computing anything: its text, variables,
// functions, number formats, graphs with their functions and data sets, matrices and the math
// tools' parameters. Returns 0, or 2 when the file could not be read.
int dump_document(engine::Parser& parser, engine::Reporter& reporter, const std::string& path, std::ostream& out,
                  std::ostream& err);

} // namespace quorvex::cli
