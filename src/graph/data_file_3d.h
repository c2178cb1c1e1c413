#pragma once
#include "graph/data_columns.h"

#include <string>
#include <vector>

namespace quorvex::graph {

// The points of a data file of "x , y , z" lines as the data sets of a 3-dimensional graph, where
// a set is a line of points at one Z value.
struct ZSets {
    std::vector<StrDataPnts> sets; // each with its Z; no names
    int rows_without_z = 0;        // rows of fewer than three values, left out
    int first_row_without_z = -1;  // the first of them, counted from 1; -1 none
};

// One set for each Z value of `table`, in the order the values first come, holding the rows of
// that Z in the file's order.
ZSets sets_by_z(const DataColumns& table);

// Whether two Z texts give one Z: the same number when both are written out in full ("2" and
// "2.0"), otherwise the same text.
bool same_z(const std::string& a, const std::string& b);

// The set of `sets` whose Z is `z`; -1 none.
int set_at_z(const std::vector<StrDataPnts>& sets, const std::string& z);

// Appends the points of `added` after the last point of `set`.
void append_points(StrDataPnts& set, const StrDataPnts& added);

} // namespace quorvex::graph
