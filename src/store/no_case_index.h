#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvex::store {

// Positions of names, looked up ignoring ASCII case; the first position given for a name stays.
// One open-addressing table: a profile section indexes every key it holds, and a node per key
// (as a standard hash map makes) cost more than the lookups themselves.
class NoCaseIndex {
public:
    static constexpr size_t npos = static_cast<size_t>(-1);

    // The position of `name`, or npos.
    size_t find(std::string_view name) const;
    // Adds `name` at `position` unless the name is there; returns the position the name has, and
    // in `added` whether it is the one given.
    size_t insert(std::string_view name, size_t position, bool* added = nullptr);
    void clear();
    size_t size() const { return m_count; }

    static size_t hash(std::string_view name);
    static bool equal(std::string_view a, std::string_view b);

private:
    struct Slot {
        std::string name;
        size_t hash = 0;
        size_t position = npos; // npos: free
    };
    size_t probe(std::string_view name, size_t hash) const; // the slot of `name`, or the free one
    void grow();

    std::vector<Slot> m_slots; // a power of two in size, at most half full
    size_t m_count = 0;
};

std::string lower_case(std::string_view text);

} // namespace quorvex::store
