#pragma once
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace quorvex::graph {

// What the 2-D and 3-D graph files share: numbers written in full ("-" for a hole), the first
// line of a title, and the reading of a file that must begin with its format's name.

std::string first_line(const std::string& text);
std::string file_number(double value, bool hole);
// Reads `count` numbers ("-" reads as the hole `hole`); false at the first that is no number.
bool read_file_numbers(std::istringstream& in, size_t count, double hole, std::vector<double>& out);
// The whole file when its first line is `magic`; none with `error` set otherwise.
std::optional<std::string> read_graph_text(const std::string& path, const char* magic, const std::string& kind,
                                           std::string* error);

} // namespace quorvex::graph
