// Reading data lists from plain text files.
#include "parser.h"

#include "evaluation_aborted.h"
#include "text_format.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace quorvex::engine {

namespace {

constexpr size_t k_max_points = 32767;
constexpr size_t k_max_token = 511;
constexpr std::uintmax_t k_max_file_bytes = 32u * 1024u * 1024u;
// Data files whose points read further data files: deeper chains than this are refused long
// before they could exhaust the stack.
constexpr size_t k_max_data_file_depth = 32;
constexpr size_t k_cached_data_files = 16;

bool is_separator(char c) { return c == ' ' || c == ',' || c == '\r' || c == '\n' || c == '\t'; }
bool is_line_end(char c) { return c == '\r' || c == '\n'; }

// "12)" numbers a line and is no data.
bool is_label(const std::string& token) {
    return !token.empty() && token.back() == ')' && token.find('(') == std::string::npos;
}

// Why `name` can not be read as a data file, in the words of the file messages; empty when it can.
// Only a regular file is data: a device or a pipe could be read for ever.
std::string unreadable_reason(const char* name, bool* missing = nullptr) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(name, error);
    if (missing) *missing = !fs::exists(status);
    if (!fs::exists(status)) return format_text("Data File ' %s ' Could Not Be Located!", name);
    if (fs::is_directory(status)) return format_text("Data File ' %s ' Is A Folder, Not A File Of Data!", name);
    if (!fs::is_regular_file(status))
        return format_text("Data File ' %s ' Is A Device Or A Pipe, Not A File Of Data!", name);
    if (!std::ifstream(name, std::ios::binary))
        return format_text("Data File ' %s ' Could Not Be Opened, Reading It Is Not Permitted!", name);
    return {};
}

} // namespace

std::optional<Parser::DataFileStamp> Parser::data_file_stamp(const char* name) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(name, error);
    if (error) return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(name, error);
    if (error) return std::nullopt;
    return DataFileStamp{time, size};
}

bool Parser::report_file_error(const std::string& message, int function, int code, const char* file) {
    if (function >= 0) {
        mathlib_exception(code, function, file);
        return false;
    }
    m_error_flag = true;
    m_last_error = message;
    if (!m_silent && m_reporter) m_reporter->report(message, "Load Data Point File", MessageKind::Warning);
    return false;
}

bool Parser::read_data_text(const char* name, int function, std::string& text, size_t& pos) {
    std::error_code error;
    bool missing = false;
    if (const std::string reason = unreadable_reason(name, &missing); !reason.empty())
        return report_file_error(reason, missing ? function : -1, 15, name);
    std::ifstream in(name, std::ios::binary);
    // Even the longest file of points, 32766 tokens of 511 characters, is far below this.
    if (std::filesystem::file_size(name, error) > k_max_file_bytes)
        return report_file_error(
            format_text("Too Many Data Points Found In The ' %s ' Data File, Limit Is 32767 Points!", name), function, 17,
            name);
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    pos = 0;
    while (pos < text.size() && (text[pos] == ' ' || is_line_end(text[pos]))) ++pos;
    if (pos >= text.size())
        return report_file_error(format_text("No Data Found In The ' %s ' Data File!", name), function, 16, name);
    return true;
}

int Parser::get_file_data(std::vector<std::string>& list, const char* file, int function) {
    const char* name = file ? file : "";
    std::string text;
    size_t pos = 0;
    if (!read_data_text(name, function, text, pos)) return 0;
    size_t count = 0, line_tokens = 0;
    int columns = -1;
    bool rectangular = true;
    const auto end_line = [&] {
        if (line_tokens == 0) return;
        if (columns < 0) columns = static_cast<int>(line_tokens);
        else if (static_cast<int>(line_tokens) != columns) rectangular = false;
        line_tokens = 0;
    };
    while (pos < text.size()) {
        const size_t start = pos;
        while (pos < text.size() && !is_separator(text[pos]) && text[pos] != '\0') ++pos;
        const std::string token = text.substr(start, pos - start);
        // A token ended by anything but a separator, or too long to be a number, is no data.
        if ((pos < text.size() && text[pos] == '\0') || token.size() > k_max_token) {
            report_file_error(format_text("Invalid Data Found In The ' %s ' Data File At Point Number %d!", name,
                                          static_cast<int>(count + 1)),
                              function, 18, name);
            return 0;
        }
        if (!token.empty() && !is_label(token)) {
            if (++count > k_max_points) {
                report_file_error(format_text("Too Many Data Points Found In The ' %s ' Data File, Limit Is 32767 "
                                              "Points!",
                                              name),
                                  function, 17, name);
                return 0;
            }
            list.push_back(token);
            ++line_tokens;
        }
        // A blank before the line end hides it: that line counts together with the next one.
        if (pos < text.size() && is_line_end(text[pos])) end_line();
        while (pos < text.size() && is_separator(text[pos])) ++pos;
    }
    end_line();
    record_instruction(11, {}, name);
    record_instruction(197);
    if (count == 0) {
        report_file_error(format_text("No Data Found In The ' %s ' Data File!", name), function, 16, name);
        return 0;
    }
    return rectangular ? columns : 1;
}

bool Parser::get_file_data(std::vector<long double>& list, const char* file, int function) {
    list.clear();
    const char* name = file ? file : "";
    // The same file reached through other names (links, "./", "..") is still the same file.
    std::error_code error;
    std::string identity = std::filesystem::weakly_canonical(name, error).string();
    if (error || identity.empty()) identity = name;
    const auto refuse_chain = [&](const std::string& message) {
        m_data_chain_refused = true;
        return report_file_error(message, -1, 0, name);
    };
    if (std::find(m_data_file_chain.begin(), m_data_file_chain.end(), identity) != m_data_file_chain.end())
        return refuse_chain(format_text("The data file ' %s ' reads itself through its own data points, directly or "
                                        "through other data files!",
                                        name));
    if (m_data_file_chain.size() >= k_max_data_file_depth)
        return refuse_chain(format_text("Data files that read other data files are nested more than %d deep at ' %s '!",
                                        static_cast<int>(k_max_data_file_depth), name));
    // A file of plain numbers read before and unchanged since gives the same values: a mapped
    // run reads it at every point, and a line may name it again and again.
    const std::optional<DataFileStamp> stamp = data_file_stamp(name);
    if (const auto cached = m_data_file_cache.find(identity);
        stamp && cached != m_data_file_cache.end() && cached->second.stamp == *stamp) {
        list = cached->second.values;
        return !list.empty();
    }
    std::vector<std::string> tokens;
    if (get_file_data(tokens, file, -1) == 0) return false;
    (void)function; // the numeric reader speaks as a loading dialog, whoever calls it
    // Each point is an expression of its own: numbers and built-in functions, but no variable
    // of the document.
    Parser reader(m_builtins, m_system_dir);
    reader.share_libraries(*this);
    reader.m_data_file_chain = m_data_file_chain;
    reader.m_data_file_chain.push_back(identity);
    for (size_t i = 0; i < tokens.size(); ++i) {
        complex value;
        reader.eval_exp(tokens[i], value, true, false, false);
        std::string message;
        // A refused chain is told as it is, not wrapped once for every file of the chain.
        if (reader.IsAnError() && reader.m_data_chain_refused) {
            list.clear();
            return refuse_chain(reader.GetLastError() ? reader.GetLastError() : "");
        }
        if (reader.IsAnError())
            message = format_text("The Following Error Occured While Loading Data Point %d In File %s : %s",
                                  static_cast<int>(i), file, reader.GetLastError() ? reader.GetLastError() : "");
        else if (value.imag() != 0)
            message = format_text("An Imaginary Number Was Found In Data Point %d In File %s", static_cast<int>(i), file);
        if (!message.empty()) {
            list.clear();
            return report_file_error(message, -1, 0, file);
        }
        list.push_back(value.real());
    }
    // Only numbers are kept: a point that calls a function may read another file, or a random
    // deviate, whose value need not come back the same.
    const bool plain_numbers = std::all_of(tokens.begin(), tokens.end(), [](const std::string& token) {
        return token.find_first_not_of("0123456789.eE+- ") == std::string::npos;
    });
    if (stamp && plain_numbers && !list.empty()) {
        if (m_data_file_cache.size() >= k_cached_data_files) m_data_file_cache.clear();
        m_data_file_cache[identity] = {*stamp, list};
    }
    return !list.empty();
}

bool Parser::rem_data_column(std::vector<std::string>& list, int columns, int column) {
    if (columns <= 0 || column <= 0 || column > columns) return false;
    std::vector<std::string> kept;
    for (size_t i = 0; i < list.size(); ++i)
        if (static_cast<int>(i % static_cast<size_t>(columns)) != column - 1) kept.push_back(list[i]);
    const bool removed = kept.size() != list.size();
    list.swap(kept);
    return removed;
}

} // namespace quorvex::engine

namespace quorvex::engine {

bool Parser::get_file_points(std::vector<StrPoint>& list, const char* file, int function, bool& abort, bool quiet,
                             bool single) {
    (void)function; // points are read by dialogs, which speak for themselves
    const char* name = file ? file : "";
    if (const std::string reason = unreadable_reason(name); !reason.empty())
        return report_file_error(reason, -1, 0, name);
    std::ifstream in(name, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // One value to a point reads commas as part of nothing: they end no token.
    const auto separates = [single](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || (!single && c == ','); };

    int violations = 0;
    size_t tokens = 0;
    // A bad line: the first gets a specific message, the second a general one.
    const auto complain = [&](bool missing_y) -> bool {
        ++violations;
        std::string message;
        const int point = static_cast<int>((tokens + 1) / 2);
        if (violations == 1)
            message = missing_y ? format_text("Invalid data found in the ' %s ' data file at point number %d. There was no "
                                              "y value found for the data point.  Please verify that there is x-y data "
                                              "values in this file and the file format is correct.",
                                              name, point)
                                : format_text("Invalid data found in the ' %s ' data file at point number %d. There were "
                                              "y value coordinates found.  Only single data values are valid, please "
                                              "remove the y data values in this file.",
                                              name, point);
        else if (violations == 2)
            message = missing_y ? format_text("It appears there are multiple data points in the ' %s ' which are missing "
                                              "the y coordinate values.  Please verify that there is x-y data values in "
                                              "this file and the file format is correct.",
                                              name)
                                : format_text("It appears there are y coordinate values found in the ' %s ' which are "
                                              "invalid.  Please remove the y data values in this file and verify that "
                                              "the file format is correct.",
                                              name);
        if (message.empty()) return true;
        m_error_flag = true;
        m_last_error = message;
        if ((!m_silent || !quiet) && m_reporter && !m_reporter->ask(message, "Load Data Point File")) abort = true;
        return !abort;
    };

    size_t pos = 0;
    while (pos < text.size()) {
        // One line: its tokens fill x, y and z; further ones are counted and dropped.
        StrPoint point;
        int on_line = 0;
        while (pos < text.size() && text[pos] != '\n' && text[pos] != '\r') {
            while (pos < text.size() && separates(text[pos]) && text[pos] != '\n' && text[pos] != '\r') ++pos;
            const size_t start = pos;
            while (pos < text.size() && !separates(text[pos])) ++pos;
            const std::string token = text.substr(start, pos - start);
            if (token.empty() || is_label(token)) continue;
            if (token.size() > k_max_token || token.find('\0') != std::string::npos)
                return report_file_error(format_text("Invalid data found in the ' %s ' data file at point number %d!", name,
                                                     static_cast<int>((tokens + 2) / 2)),
                                         -1, 0, name);
            if (++tokens > k_max_points)
                return report_file_error(format_text("Too many data points found in the ' %s ' data file, limit is 32767 "
                                                     "points!",
                                                     name),
                                         -1, 0, name);
            std::string* slots[] = {&point.x, &point.y, &point.z};
            if (on_line < 3) *slots[on_line] = token;
            ++on_line;
        }
        while (pos < text.size() && (text[pos] == '\n' || text[pos] == '\r')) ++pos;
        if (on_line == 0) continue;
        const bool bad = single ? on_line > 1 : on_line < 2;
        if (bad && !complain(!single)) return false; // the user chose to stop
        list.push_back(point);
    }
    record_instruction(11, {}, name);
    record_instruction(197);
    return !list.empty();
}

} // namespace quorvex::engine

namespace quorvex::engine {

bool Parser::get_file_points(std::vector<Point>& list, const char* file, int function) {
    const char* name = file ? file : "";
    std::string text;
    size_t pos = 0;
    if (!read_data_text(name, function, text, pos)) return false;
    size_t count = 0;
    while (pos < text.size()) {
        // One line: up to three numbers make its point; more are read and dropped.
        Point point;
        int on_line = 0;
        while (pos < text.size() && !is_line_end(text[pos])) {
            while (pos < text.size() && is_separator(text[pos]) && !is_line_end(text[pos])) ++pos;
            const size_t start = pos;
            while (pos < text.size() && !is_separator(text[pos])) ++pos;
            const std::string token = text.substr(start, pos - start);
            if (token.empty() || is_label(token)) continue;
            char* end = nullptr;
            const double value = token.size() <= k_max_token ? std::strtod(token.c_str(), &end) : 0;
            if (!end || *end != '\0' || !std::isfinite(value))
                return report_file_error(format_text("Invalid Data Found In The ' %s ' Data File At Point Number %d!", name,
                                                     static_cast<int>(count + 1)),
                                         function, 18, name);
            std::optional<complex>* slots[] = {&point.x, &point.y, &point.z};
            if (on_line < 3) *slots[on_line] = complex(value, 0);
            ++on_line;
        }
        while (pos < text.size() && is_line_end(text[pos])) ++pos;
        if (on_line == 0) continue;
        if (++count > k_max_points)
            return report_file_error(
                format_text("Too Many Data Points Found In The ' %s ' Data File, Limit Is 32767 Points!", name), function,
                17, name);
        list.push_back(point);
    }
    return !list.empty();
}

} // namespace quorvex::engine
