#include "graph_data.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvex::graph {

GraphData::GraphData(std::string name) : Name(std::move(name)) {}

GraphData& GraphData::operator=(const GraphData& other) {
    if (this != &other) {
        GraphData copy(other);
        *this = std::move(copy);
    }
    return *this;
}

void GraphData::SetName(const char* name) {
    if (name) Name = name;
}

void GraphData::SetDirectory(const char* directory) {
    if (directory) Directory = directory;
}

int GraphData::GetGraphType() const {
    if (DataSets.empty() && Functions.empty()) return 0;
    const bool z_in_data = std::any_of(DataSets.begin(), DataSets.end(),
                                       [](const StrDataPnts& set) { return set.ZPoint.has_value(); });
    if (z_in_data) return 2;
    return XAxisVar && ZAxisVar ? 2 : 1;
}

bool GraphData::IsGraphData() const {
    return !Functions.empty() || !DataSets.empty();
}

bool GraphData::DataCheck() const {
    return XAxisVar || ZAxisVar;
}

int GraphData::GetNumXAxisPoints() const {
    return XAxisVar ? static_cast<int>(XAxisVar->num_points()) : 0;
}

int GraphData::GetNumZAxisPoints() const {
    return ZAxisVar ? static_cast<int>(ZAxisVar->num_points()) : 0;
}

StrDataPnts* GraphData::GetDataSet(int index) {
    return const_cast<StrDataPnts*>(std::as_const(*this).GetDataSet(index));
}

const StrDataPnts* GraphData::GetDataSet(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= DataSets.size()) return nullptr;
    return &*std::next(DataSets.begin(), index);
}

void GraphData::SetDefault3DAttributes() {
    for (int position = 1; position <= k_type3d_positions; ++position)
        Set3DTypeBit(position, position <= type3d::Zone ? 1 : 0);
}

void GraphData::Clear() {
    ClearTitles();
    XAxisVar.reset();
    ZAxisVar.reset();
    CLXAxisVar.reset();
    CLZAxisVar.reset();
    Functions.clear();
    ComVars.clear();
    DataSets.clear();
    CurDataSet = -1;
    Notes.clear();
}

} // namespace quorvex::graph
