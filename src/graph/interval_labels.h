#pragma once
#include "chart_data.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {

// Half the width of a histogram's bars, from the X values of `series`: half the gap between its
// first two X values, made smaller where a later X lies closer to the first. None with fewer than
// two X values.
std::optional<double> histogram_half_width(const ChartData& data, size_t series);

// The interval each bar of a histogram or Pareto chart stands for, per point of `series`:
// "low to high", X less and more the half width, each number written by `number`. An empty text
// where the point's X or Y is a hole, and for every point without a half width.
std::vector<std::string> interval_labels(const ChartData& data, size_t series,
                                         const std::function<std::string(double)>& number);

// The labels of the X axis of a histogram or Pareto chart: each data set's intervals in turn, a
// later set's text replacing an earlier one at the same point. `first_set` is the first series
// that is a data set (the functions come before).
std::vector<std::string> histogram_axis_labels(const ChartData& data, size_t first_set,
                                               const std::function<std::string(double)>& number);

// The text of a point label on a histogram, " (low to high , y) ", or on a Pareto chart, which
// shows the Y value alone: " (y) ".
std::string histogram_point_label(bool pareto, const std::string& interval, const std::string& y);
// The Y value such a label shows, as written; none for a text of another form.
std::optional<std::string> histogram_label_value(bool pareto, const std::string& label);

// A Pareto chart places its bars by their index: X becomes 0, 1, 2, ... in every series.
void number_points_by_index(ChartData& data);

} // namespace quorvex::graph
