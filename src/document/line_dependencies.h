#pragma once
#include "engine/name_use.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::document {

// What a computed line depended on: each name it read with the state the name had when its
// answer was made, the names it wrote, and the line as computing left it (once the user edits
// the line, the record no longer speaks for it). Names are kept as engine::NameUse keeps them:
// functions as "f[]".
struct LineRecord {
    std::map<std::string, std::string> read; // name -> its state when the line was computed
    std::set<std::string> written;
    std::string text;
};

// A name's state as the engine holds it now: a variable's value and range, a function's
// definition, a constant's value; empty for a name that does not exist. Two states are equal
// exactly when the name still means what it meant.
std::string name_state(engine::Parser& parser, const std::string& key);

// The record of a line just computed with `use` tracked.
LineRecord make_record(engine::Parser& parser, const engine::NameUse& use, std::string text);

// Whether a line's shown answer is out of date, and the names whose change made it so (keys as
// in LineRecord, the names first changed rather than the lines in between).
struct Staleness {
    bool stale = false;
    std::set<std::string> changed;
    bool operator==(const Staleness&) const = default;
};

// The names of `record` whose state differs now; empty when the answer still holds.
std::set<std::string> changed_reads(engine::Parser& parser, const LineRecord& record);

// Which lines are stale, for lines in document order (null: a line with no record, as a comment,
// a line never computed, or one edited since). A line is stale when a name it read has changed
// since, or when it reads a name that a stale line above it writes: recomputing that line will
// change it again. States are looked up once per name.
std::vector<Staleness> find_stale(engine::Parser& parser, const std::vector<const LineRecord*>& lines);

// The names of `changed` as a user reads them, for a tooltip: "r", "r and f", "a, b and f".
std::string changed_names_text(const std::set<std::string>& changed);

} // namespace quorvex::document
