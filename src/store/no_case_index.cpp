#include "no_case_index.h"

#include <utility>

namespace quorvex::store {

namespace {

// A table, not a comparison: every lookup folds every character of its name, and a fuzzing
// build traces each comparison.
constexpr struct LowerTable {
    unsigned char to[256];
    constexpr LowerTable() : to{} {
        for (int c = 0; c < 256; ++c) to[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
} k_lower;

unsigned char fold(char c) { return k_lower.to[static_cast<unsigned char>(c)]; }

} // namespace

std::string lower_case(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(fold(c));
    return lower;
}

size_t NoCaseIndex::hash(std::string_view name) {
    size_t hash = 14695981039346656037ull; // FNV-1a
    for (const char c : name) hash = (hash ^ fold(c)) * 1099511628211ull;
    return hash;
}

bool NoCaseIndex::equal(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    unsigned difference = 0;
    for (size_t i = 0; i < a.size(); ++i) difference |= static_cast<unsigned>(fold(a[i]) ^ fold(b[i]));
    return difference == 0;
}

size_t NoCaseIndex::probe(std::string_view name, size_t hash) const {
    const size_t mask = m_slots.size() - 1;
    for (size_t i = hash & mask;; i = (i + 1) & mask) {
        const Slot& slot = m_slots[i];
        if (slot.position == npos || (slot.hash == hash && equal(slot.name, name))) return i;
    }
}

size_t NoCaseIndex::find(std::string_view name) const {
    if (m_count == 0) return npos;
    return m_slots[probe(name, hash(name))].position;
}

size_t NoCaseIndex::insert(std::string_view name, size_t position, bool* added) {
    if (2 * (m_count + 1) > m_slots.size()) grow();
    const size_t name_hash = hash(name);
    Slot& slot = m_slots[probe(name, name_hash)];
    const bool is_new = slot.position == npos;
    if (is_new) {
        slot.name.assign(name);
        slot.hash = name_hash;
        slot.position = position;
        ++m_count;
    }
    if (added) *added = is_new;
    return slot.position;
}

void NoCaseIndex::clear() {
    m_slots.clear();
    m_count = 0;
}

void NoCaseIndex::grow() {
    std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(m_slots.empty() ? 16 : 2 * m_slots.size()));
    const size_t mask = m_slots.size() - 1;
    for (Slot& slot : old) {
        if (slot.position == npos) continue;
        size_t i = slot.hash & mask;
        while (m_slots[i].position != npos) i = (i + 1) & mask;
        m_slots[i] = std::move(slot);
    }
}

} // namespace quorvex::store
