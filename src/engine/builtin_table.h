#pragma once
#include "complex.h"

#include <sstream>
#include <string_view>

namespace quorvex::engine {

class Parser;

// The built-in functions and constants, as the evaluator sees them. The table itself lives in
// the layer above the engine; a Parser is handed one, so the engine does not depend on it.
// A function's row index is its identity: messages name it and the mapper records it.
class BuiltinTable {
public:
    virtual ~BuiltinTable() = default;

    // Function names match without regard to case; -1 for an unknown name.
    virtual int function_index(std::string_view name) const = 0;
    // Null outside the table.
    virtual const char* function_name(int index) const = 0;
    // Runs the entry with the token on the first token behind "["; returns the value and leaves
    // the token behind the last parameter.
    virtual complex call(int index, Parser& parser, std::ostringstream& out) const = 0;

    // Constant names match exactly; -1 for an unknown name.
    virtual int constant_index(std::string_view name) const = 0;
    // An empty string outside the table.
    virtual const char* constant_name(int index) const = 0;
    virtual long double constant_value(int index) const = 0;
};

} // namespace quorvex::engine
