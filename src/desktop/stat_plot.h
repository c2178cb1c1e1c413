#pragma once
#include "functions/frequency.h"
#include "graph/data_points.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvex::engine {
class Host;
class Parser;
} // namespace quorvex::engine
namespace quorvex::document {
class Document;
}
namespace quorvex::store {
class IniFile;
}

namespace quorvex::desktop {

// How the classes of a frequency distribution are laid out; the numbers are those the document
// keeps.
enum class IntervalChoice {
    AutoEqualIntervals = 0,     // the square root of the count of equal-width classes
    AutoEqualProbabilities = 1, // classes of a normal fit, about equally full
    SetEqualIntervals = 2,      // a given count of equal-width classes
};

inline constexpr int k_fewest_intervals = 2;
inline constexpr int k_most_intervals = 99;

struct StatPlotChoice {
    IntervalChoice intervals = IntervalChoice::AutoEqualIntervals;
    int count = 10; // with SetEqualIntervals only
    bool pareto = false; // classes in order of their counts, fullest first
};

// One value as the values table shows it: the text evaluated and written at `precision` digits;
// empty for no text, a text that fails or a value that is not real.
std::string stat_value_text(engine::Parser& parser, const std::string* text, int precision);
// The values of a data set as the values table shows them, row by row: each X text evaluated and
// written at `precision` digits; a text that fails, or an empty slot, gives an empty row. The host
// is asked at each value whether to stop: `stopped` then says the rows are incomplete.
std::vector<std::string> stat_value_texts(engine::Parser& parser, const graph::StrDataPnts& data, int precision,
                                          engine::Host* host, bool* stopped = nullptr);

// The distribution of the values as shown (so what is binned is the value at the table's
// precision). None with `error` set when a row is empty, a value is not real, there are fewer
// than two values, or the choice can give no class.
std::optional<std::vector<functions::Frequency>> frequency_distribution(engine::Parser& parser,
                                                                        const std::vector<std::string>& shown,
                                                                        const StatPlotChoice& choice,
                                                                        std::string& error);

// A class as the distribution table shows it: "low to high", the low bound marked "+" from the
// second class on, as only the first class holds its low bound.
std::string interval_text(const functions::Frequency& frequency, int precision);
// The table as lines "interval<separator>count", with a heading line first.
std::string frequency_table_text(const std::vector<functions::Frequency>& frequencies, int precision,
                                 const std::string& separator);

// "Frequency Plot for <name>", the data set named or "Data Set".
std::string frequency_graph_name(const graph::StrDataPnts& data);
// Puts the distribution into the document's graph of that name (made when there is none: one
// shared X, no depth, a wide bottom margin for the interval captions) as its first data set: X
// the middle of each class, Y its count. Titles the user did not set are written for the chart.
// A new graph takes the user's default orientation and colours from `user_settings` when given.
// Returns the index of the graph in the document.
int graph_frequencies(document::Document& document, const graph::StrDataPnts& data,
                      const std::vector<functions::Frequency>& frequencies, bool pareto,
                      const std::string& unique_name, const store::IniFile* user_settings = nullptr);

// The values of a data file of single values, one to a line, as texts for a data set read as the
// data points dialog reads them (a header above the data skipped); none with `error` set when the
// file gives none. A file with y values is refused.
std::optional<graph::StrDataPnts> read_stat_values(engine::Parser& parser, const std::string& path,
                                                   std::string& error);

} // namespace quorvex::desktop
