#include "graph_data.h"

#include <algorithm>

namespace quorvex::graph {

namespace {

constexpr long k_fallback_points = 25;
// The range a common variable takes when no data set says otherwise.
constexpr double k_fallback_low = 1.0;
constexpr double k_fallback_high = 10.0;

// Stores a copy of `variable` (or none) with at least one point.
void store_copy(VariableCopy& slot, const Variable* variable, long fallback_points) {
    slot.reset();
    if (!variable) return;
    slot = VariableCopy(*variable);
    if (slot->num_points() < 1) slot->SetVarNumPoints(fallback_points);
}

bool all_functions_have(const std::vector<Function>& functions, const std::string& name) {
    return std::all_of(functions.begin(), functions.end(),
                       [&](const Function& function) { return function.IsFuncVariable(name); });
}

} // namespace

void GraphData::SetXAxisVar(const Variable* variable) {
    const StrDataPnts* first = GetDataSet(0);
    const int data_points = first ? first->GetNumXDataPoints() : 0;
    store_copy(XAxisVar, variable, data_points >= 2 ? data_points : k_fallback_points);
    if (!XTitleSet) SetDefaultXAxisTitle(false);
}

void GraphData::SetZAxisVar(const Variable* variable) {
    store_copy(ZAxisVar, variable, k_fallback_points);
    if (!ZTitleSet) SetDefaultZAxisTitle(false);
}

void GraphData::SetCLXAxisVar(const Variable* variable) {
    store_copy(CLXAxisVar, variable, k_fallback_points);
}

void GraphData::SetCLZAxisVar(const Variable* variable) {
    store_copy(CLZAxisVar, variable, k_fallback_points);
}

void GraphData::SetComVarList() {
    ComVars.clear();
    // A variable swept over a data set's X values by default: from its first X to its last.
    const StrDataPnts* first = GetDataSet(0);
    const bool range_from_data = first && first->GetNumXDataPoints() >= 2;
    const complex low = range_from_data ? complex(first->GetXValue(0), 0) : complex(k_fallback_low, 0);
    const complex high =
        range_from_data ? complex(first->GetXValue(first->GetLastXIndex()), 0) : complex(k_fallback_high, 0);
    const long points = range_from_data ? first->GetNumXDataPoints() : k_fallback_points;

    for (const Function& function : Functions)
        for (int n = 1; n <= function.num_variables(); ++n) {
            const std::string& name = function.GetFuncVariable(n);
            if (!FindComVar(name)) ComVars.emplace_back(name, low, high, points);
        }
    ComVars.remove_if(
        [this](const Variable& variable) { return !all_functions_have(Functions, variable.name()); });
}

void GraphData::DelUncommonVars() {
    if (XAxisVar && !FindComVar(XAxisVar->name())) XAxisVar.reset();
    if (ZAxisVar && !FindComVar(ZAxisVar->name())) ZAxisVar.reset();
}

const Variable* GraphData::FindComVar(const std::string& name) const {
    for (const Variable& variable : ComVars)
        if (variable.name() == name) return &variable;
    return nullptr;
}

bool GraphData::DataPointsEqual() const {
    if (DataSets.empty()) return true;
    const int expected = XAxisVar ? GetNumXAxisPoints() : DataSets.front().GetNumXDataPoints();
    return std::all_of(DataSets.begin(), DataSets.end(),
                       [expected](const StrDataPnts& set) { return set.GetNumXDataPoints() == expected; });
}

} // namespace quorvex::graph
