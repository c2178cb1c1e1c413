#include "graph_data.h"

#include <algorithm>
#include <iterator>

namespace quorvex::graph {

namespace {

bool is_label(const GraphNote& item) {
    return !item.IsNote;
}

} // namespace

GraphNote& GraphData::SetNote(const char* text, int x, int y, int index, bool is_note) {
    return Notes.emplace_back(text, x, y, index, is_note);
}

GraphNote& GraphData::SetNote(const GraphNote& note) {
    GraphNote& added = Notes.emplace_back(note);
    added.SetNote(note.Text.c_str());
    return added;
}

void GraphData::SetNoteIndex(int x, int y, bool is_note, int index) {
    for (GraphNote& item : Notes)
        if (item.IsNote == is_note && item.PosX == x && item.PosY == y) item.Index = index;
}

bool GraphData::IsNoteIndex(int index) const {
    return std::any_of(Notes.begin(), Notes.end(),
                       [index](const GraphNote& item) { return item.IsNote && item.Index == index; });
}

bool GraphData::IsLabelIndex(int index) const {
    return std::any_of(Notes.begin(), Notes.end(),
                       [index](const GraphNote& item) { return is_label(item) && item.Index == index; });
}

bool GraphData::DeleteNote(int index) {
    const auto found = std::find_if(Notes.begin(), Notes.end(),
                                    [index](const GraphNote& item) { return item.Index == index; });
    const bool removed = found != Notes.end();
    if (removed) Notes.erase(found);
    DecrementNoteIndexes(index);
    return removed;
}

void GraphData::ResetNoteIndexes() {
    int index = 0;
    for (GraphNote& item : Notes)
        item.Index = index++;
}

void GraphData::DecrementNoteIndexes(int index) {
    for (GraphNote& item : Notes)
        if (item.Index > index) --item.Index;
}

int GraphData::GetNumNotes() const {
    return static_cast<int>(
        std::count_if(Notes.begin(), Notes.end(), [](const GraphNote& item) { return item.IsNote; }));
}

int GraphData::GetNumLabels(int set) const {
    return static_cast<int>(std::count_if(Notes.begin(), Notes.end(), [set](const GraphNote& item) {
        return is_label(item) && (set == -1 || item.PosX == set);
    }));
}

int GraphData::GetNumLabels(int first_set, int last_set) const {
    return static_cast<int>(std::count_if(Notes.begin(), Notes.end(), [=](const GraphNote& item) {
        return is_label(item) && item.PosX >= first_set && item.PosX <= last_set;
    }));
}

GraphNote* GraphData::GetLabel(int set, int point) {
    for (GraphNote& item : Notes)
        if (is_label(item) && item.PosX == set && item.PosY == point) return &item;
    return nullptr;
}

void GraphData::IncrementLabelSets(int limit) {
    for (GraphNote& item : Notes)
        if (is_label(item) && item.PosX < limit) ++item.PosX;
}

void GraphData::ReplaceFunctions(std::vector<Function> functions) {
    const int old_count = static_cast<int>(Functions.size());
    const int new_count = static_cast<int>(functions.size());
    // The series a label's function or data set has in the new list; -1 when it is gone.
    const auto new_series = [&](int series) {
        if (series >= old_count) return series - old_count + new_count;
        const std::string& name = Functions[static_cast<size_t>(old_count - 1 - series)].full_name();
        const auto kept = std::find_if(functions.begin(), functions.end(),
                                       [&](const Function& function) { return function.full_name() == name; });
        if (kept == functions.end()) return -1;
        return new_count - 1 - static_cast<int>(kept - functions.begin());
    };
    for (auto item = Notes.begin(); item != Notes.end();) {
        if (is_label(*item) && item->PosX >= 0) {
            const int series = new_series(item->PosX);
            if (series < 0) {
                item = Notes.erase(item);
                continue;
            }
            item->PosX = series;
        }
        ++item;
    }
    Functions = std::move(functions);
}

void GraphData::ReplaceDataSets(std::list<StrDataPnts> sets) {
    const int functions = static_cast<int>(Functions.size());
    std::vector<int> new_series; // by the old set's index; -1 when it is gone
    for (const StrDataPnts& old : DataSets) {
        const auto kept = std::find_if(sets.begin(), sets.end(), [&](const StrDataPnts& set) { return set.Name == old.Name; });
        new_series.push_back(kept == sets.end() ? -1 : functions + static_cast<int>(std::distance(sets.begin(), kept)));
    }
    Notes.remove_if([&](const GraphNote& item) {
        const int set = item.PosX - functions;
        return is_label(item) && set >= 0 && set < static_cast<int>(new_series.size()) &&
               new_series[static_cast<size_t>(set)] < 0;
    });
    for (GraphNote& item : Notes) {
        const int set = item.PosX - functions;
        if (is_label(item) && set >= 0 && set < static_cast<int>(new_series.size()))
            item.PosX = new_series[static_cast<size_t>(set)];
    }
    DataSets = std::move(sets);
    if (CurDataSet >= static_cast<int>(DataSets.size())) CurDataSet = -1;
}

void GraphData::RemoveLabelSet(int index, bool is_function) {
    const int series = is_function ? index : index + static_cast<int>(Functions.size());
    Notes.remove_if([series](const GraphNote& item) { return is_label(item) && item.PosX == series; });
    for (GraphNote& item : Notes)
        if (is_label(item) && item.PosX > series) --item.PosX;
}

void GraphData::FlushNotes() {
    Notes.remove_if([](const GraphNote& item) { return item.IsNote; });
}

void GraphData::FlushLabels() {
    Notes.remove_if(is_label);
}

} // namespace quorvex::graph
