#pragma once
#include "graph_data.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {

// How much text one title, note or label of a graph may hold, in characters. The chart lays a
// title out by trying shorter and shorter forms of it until one fits, which costs memory with the
// square of its length (a 100,000-character header asks for gigabytes); texts are cut to this
// length wherever they enter a graph. A default title (all the function names) always fits.
inline constexpr size_t k_max_graph_text = 1024;
static_assert(GraphData::k_title_buffer_size <= k_max_graph_text);

// The length of `text` in characters (UTF-8 code points, as the chart counts them).
size_t graph_text_length(const std::string& text);
// Cuts `text` to k_max_graph_text characters, never inside a character; true when it cut.
bool cut_graph_text(std::string& text);
// `text` cut to k_max_graph_text characters: what is handed to a chart.
std::string bounded_graph_text(std::string text);
// What the user is told when a text of `length` characters was cut: "The header of the graph
// "G" had 20000 characters; ...".
std::string graph_text_cut_message(const std::string& what, const std::string& graph, size_t length);

// Cuts every title, note and label of `graph` (and the legend texts of its functions and data
// sets) to k_max_graph_text characters. One message for each text cut.
std::vector<std::string> cut_graph_texts(GraphData& graph);

// The work of one graph: each function at each point of its axis variables, and each data
// point. Past k_large_graph_work the user is asked first (it takes seconds); past
// k_max_graph_work the graph is refused, as it would take minutes and gigabytes.
inline constexpr size_t k_large_graph_work = 1'000'000;
inline constexpr size_t k_max_graph_work = 10'000'000;
size_t graph_work(const GraphData& graph);
std::string graph_work_refusal(size_t work);
std::string graph_work_question(size_t work);

// Every bar and every pie slice is an item of its own for the chart, whose layout of them grows
// faster than their number (100,000 bars take minutes): bar-like graphs are bounded apart.
inline constexpr size_t k_max_bars = 4'000;
inline constexpr size_t k_max_slices = 1'000;
// Why a graph of `type` with `series` series of `points` points can not be drawn as bars or
// slices; none when it can (or is no bar-like type).
std::optional<std::string> too_many_bars(int type, size_t series, size_t points);
// The same for a 2-D graph before it is computed: its series, and its longest sweep or data set.
std::optional<std::string> too_many_bars(const GraphData& graph);

} // namespace quorvex::graph
