#include "check_files.h"

#include "document_files.h"
#include "line_reader.h"

#include "document/document.h"
#include "document/document_check.h"

#include <fstream>
#include <iostream>
#include <vector>

namespace quorvex::cli {

namespace {

// The lines of a text file; false, after saying why, when it can not be read whole.
bool read_text_lines(const std::string& path, std::vector<std::string>& lines, std::ostream& err) {
    std::ifstream file;
    if (path != "-") file.open(path, std::ios::binary);
    if (path != "-" && !file) {
        err << "quorvex-cli: cannot open " << path << '\n';
        return false;
    }
    LineReader reader(path == "-" ? std::cin : file);
    std::string line;
    for (;;) {
        const auto read = reader.next(line);
        if (read == LineReader::Read::end) return true;
        if (read != LineReader::Read::line) {
            err << path << ":" << reader.number() << ": error: " << too_long_message(reader, read) << '\n';
            return false;
        }
        lines.push_back(line);
    }
}

} // namespace

int check_file(const CliOptions& options, engine::Parser& parser, engine::Reporter& reporter, const std::string& path,
               std::ostream& out, std::ostream& err) {
    std::vector<std::string> lines;
    document::Document doc(parser, &reporter);
    if (is_document_path(path)) {
        if (!doc.Read(path)) {
            err << "quorvex-cli: cannot read the document " << path << '\n';
            return 2;
        }
        lines = doc.Lines;
    } else if (!read_text_lines(path, lines, err)) {
        return 2;
    }
    document::LineSettings settings;
    settings.calculation_method = options.method;
    settings.as_fraction = options.fraction;
    document::LineProcessor processor(parser, settings);
    const auto differing = document::check_answers(processor, lines);
    for (const document::DifferingAnswer& line : differing)
        out << path << ":" << line.line << ": stored " << line.stored << ", now " << line.now << '\n';
    out.flush();
    return differing.empty() ? 0 : 1;
}

} // namespace quorvex::cli
