#include "data_file_3d.h"

#include <algorithm>
#include <cstdlib>

namespace quorvex::graph {

namespace {

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

bool same_z(const std::string& a, const std::string& b) {
    const std::string left = trimmed(a), right = trimmed(b);
    if (is_plain_number(left) && is_plain_number(right))
        return std::strtod(left.c_str(), nullptr) == std::strtod(right.c_str(), nullptr);
    return left == right;
}

int set_at_z(const std::vector<StrDataPnts>& sets, const std::string& z) {
    for (size_t i = 0; i < sets.size(); ++i)
        if (const std::string* own = sets[i].GetZDataPoint(); own && same_z(*own, z)) return static_cast<int>(i);
    return -1;
}

ZSets sets_by_z(const DataColumns& table) {
    ZSets found;
    for (size_t r = 0; r < table.rows.size(); ++r) {
        const std::vector<std::string>& row = table.rows[r];
        if (row.size() < 3) {
            if (found.rows_without_z++ == 0) found.first_row_without_z = static_cast<int>(r + 1);
            continue;
        }
        int at = set_at_z(found.sets, row[2]);
        if (at < 0) {
            at = static_cast<int>(found.sets.size());
            found.sets.emplace_back().PutZDataPoint(row[2]);
        }
        StrDataPnts& set = found.sets[static_cast<size_t>(at)];
        set.XPoints.emplace_back(row[0]);
        set.YPoints.emplace_back(row[1]);
    }
    return found;
}

void append_points(StrDataPnts& set, const StrDataPnts& added) {
    const int start = std::max(set.GetLastXIndex(), set.GetLastYIndex()) + 1; // a Z alone is no point
    const size_t count = std::max(added.XPoints.size(), added.YPoints.size());
    for (size_t i = 0; i < count; ++i) {
        const auto at = static_cast<int>(i);
        if (const std::string* x = added.GetXDataPoint(at)) set.PutXDataPoint(x->c_str(), start + at);
        if (const std::string* y = added.GetYDataPoint(at)) set.PutYDataPoint(y->c_str(), start + at);
    }
}

} // namespace quorvex::graph
