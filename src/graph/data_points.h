#pragma once
#include "engine/complex.h"
#include "store/ini_file.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace quorvex::graph {

using engine::complex;
using store::TColor;

// A data set: X and Y coordinates by point index and one optional Z for the whole set. A slot may
// be empty (a point being typed in has its X before its Y), so the arrays hold optional values
// and an index past the end reads as an empty slot.
template <class T>
class DataPointSet {
public:
    using Slots = std::vector<std::optional<T>>;

    int LineWidth = 1;
    TColor LineColor = 0;
    bool HasLineColor = false;
    std::string Name;
    std::string Label;
    std::optional<T> ZPoint;
    Slots XPoints;
    Slots YPoints;

    // A null text changes nothing.
    void SetName(const char* name) {
        if (name) Name = name;
    }
    void SetLabel(const char* label) {
        if (label) Label = label;
    }

    // Null for a negative index, an index past the end or an empty slot.
    const T* GetXDataPoint(int index) const { return slot(XPoints, index); }
    const T* GetYDataPoint(int index) const { return slot(YPoints, index); }
    const T* GetZDataPoint() const { return ZPoint ? &*ZPoint : nullptr; }

    // Stores a value at `index`, growing the array with empty slots as needed; no value empties
    // the slot. False for a negative index.
    bool PutXDataPoint(std::optional<T> value, int index) { return put(XPoints, std::move(value), index); }
    bool PutYDataPoint(std::optional<T> value, int index) { return put(YPoints, std::move(value), index); }
    void PutZDataPoint(std::optional<T> value) { ZPoint = std::move(value); }

    // Inserts ahead of `index`, moving later points up by one; an index past the end leaves
    // empty slots in between. False for a negative index.
    bool InsertXDataPoint(std::optional<T> value, int index) {
        return insert(XPoints, std::move(value), index);
    }
    bool InsertYDataPoint(std::optional<T> value, int index) {
        return insert(YPoints, std::move(value), index);
    }

    // Removes the slot, moving later points down by one. False when there is no such slot.
    bool DeleteXDataPoint(int index) { return erase(XPoints, index); }
    bool DeleteYDataPoint(int index) { return erase(YPoints, index); }
    // Removes the point from both arrays; false when neither had the slot.
    bool DeleteDataPoint(int index) {
        const bool x = DeleteXDataPoint(index);
        const bool y = DeleteYDataPoint(index);
        return x || y;
    }
    void DeleteZDataPoint() { ZPoint.reset(); }

    // Drops the points whose X and Y are both empty, keeping the pairs of the rest together, and
    // the empty slots at the end of each array.
    void CompactArrays() {
        Slots x, y;
        const size_t size = std::max(XPoints.size(), YPoints.size());
        for (size_t i = 0; i < size; ++i) {
            const bool has_x = i < XPoints.size() && XPoints[i];
            const bool has_y = i < YPoints.size() && YPoints[i];
            if (!has_x && !has_y) continue;
            x.push_back(has_x ? XPoints[i] : std::nullopt);
            y.push_back(has_y ? YPoints[i] : std::nullopt);
        }
        XPoints = std::move(x);
        YPoints = std::move(y);
        trim(XPoints);
        trim(YPoints);
    }

    // The number of values present, empty slots not counted.
    int GetNumXDataPoints() const { return count(XPoints); }
    int GetNumYDataPoints() const { return count(YPoints); }
    // The highest index of a present X value, -1 when there is none.
    int GetLastXIndex() const { return last_index(XPoints); }
    int GetLastYIndex() const { return last_index(YPoints); }

    // The largest of the last used X index, the last used Y index, and 0 with a Z value or -1
    // without one.
    int GetMaxXYZPoint() const { return std::max({GetLastXIndex(), GetLastYIndex(), ZPoint ? 0 : -1}); }
    // The larger of the two counts of present values.
    int GetNumXYZPoints() const { return std::max(GetNumXDataPoints(), GetNumYDataPoints()); }

private:
    static const T* slot(const Slots& slots, int index) {
        if (index < 0 || static_cast<size_t>(index) >= slots.size() || !slots[static_cast<size_t>(index)])
            return nullptr;
        return &*slots[static_cast<size_t>(index)];
    }
    static bool put(Slots& slots, std::optional<T> value, int index) {
        if (index < 0) return false;
        const auto at = static_cast<size_t>(index);
        if (at >= slots.size()) {
            if (!value) return true; // already empty
            slots.resize(at + 1);
        }
        slots[at] = std::move(value);
        trim(slots);
        return true;
    }
    static bool insert(Slots& slots, std::optional<T> value, int index) {
        if (index < 0) return false;
        const auto at = static_cast<size_t>(index);
        if (at > slots.size()) slots.resize(at);
        slots.insert(slots.begin() + index, std::move(value));
        trim(slots);
        return true;
    }
    static bool erase(Slots& slots, int index) {
        if (index < 0 || static_cast<size_t>(index) >= slots.size()) return false;
        slots.erase(slots.begin() + index);
        trim(slots);
        return true;
    }
    // Empty slots at the end carry nothing, so they are not kept.
    static void trim(Slots& slots) {
        while (!slots.empty() && !slots.back())
            slots.pop_back();
    }
    static int count(const Slots& slots) {
        return static_cast<int>(
            std::count_if(slots.begin(), slots.end(), [](const auto& s) { return s.has_value(); }));
    }
    static int last_index(const Slots& slots) {
        for (size_t i = slots.size(); i > 0; --i)
            if (slots[i - 1]) return static_cast<int>(i - 1);
        return -1;
    }
};

// A data set as the user typed it: each coordinate is an expression, evaluated only when the
// graph is built.
class StrDataPnts : public DataPointSet<std::string> {
public:
    using DataPointSet::InsertXDataPoint;
    using DataPointSet::InsertYDataPoint;
    using DataPointSet::PutXDataPoint;
    using DataPointSet::PutYDataPoint;
    using DataPointSet::PutZDataPoint;

    // A null text empties the slot.
    bool PutXDataPoint(const char* text, int index) { return PutXDataPoint(as_slot(text), index); }
    bool PutYDataPoint(const char* text, int index) { return PutYDataPoint(as_slot(text), index); }
    void PutZDataPoint(const char* text) { PutZDataPoint(as_slot(text)); }
    // A null text inserts an empty slot.
    bool InsertXDataPoint(const char* text, int index) { return InsertXDataPoint(as_slot(text), index); }
    bool InsertYDataPoint(const char* text, int index) { return InsertYDataPoint(as_slot(text), index); }

    // The X text at `index` read as a plain number (leading digits, as a C conversion reads
    // them); 0 for an empty slot or a text that does not begin with a number.
    double GetXValue(int index) const;

private:
    static std::optional<std::string> as_slot(const char* text) {
        return text ? std::optional<std::string>(text) : std::nullopt;
    }
};

// A data set of computed numbers: one curve of a simulation, one chart series.
class DataPnts : public DataPointSet<complex> {};

} // namespace quorvex::graph
