#pragma once
#include <utility>
#include <vector>

namespace quorvex::engine {

// Reordering of the variable and function tables: nothing happens for equal or invalid indices.
template <typename Entry>
void switch_entries(std::vector<Entry>& table, int first, int second) {
    const int size = static_cast<int>(table.size());
    if (first == second || first < 0 || second < 0 || first >= size || second >= size) return;
    std::swap(table[static_cast<size_t>(first)], table[static_cast<size_t>(second)]);
}

// Takes the entry out at `from` and puts it back at `to`; the entries between close up.
template <typename Entry>
void move_entry(std::vector<Entry>& table, int from, int to) {
    const int size = static_cast<int>(table.size());
    if (from == to || from < 0 || to < 0 || from >= size || to >= size) return;
    Entry moving = std::move(table[static_cast<size_t>(from)]);
    table.erase(table.begin() + from);
    table.insert(table.begin() + to, std::move(moving));
}

} // namespace quorvex::engine
