#pragma once
#include "complex.h"
#include "mapped_machine.h"

#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

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

    // Runs one recorded step of a built-in in a mapped run, on the operands of the machine and,
    // for the list forms, on the active data list. False for a code that is no built-in's.
    virtual bool run_instruction(int code, Parser& parser, MachineState& machine, std::vector<long double>& data) const {
        (void)code, (void)parser, (void)machine, (void)data;
        return false;
    }

    // Precise arithmetic: the function's value from real parameters held wider than a double (as
    // they were read, list points included), computed without rounding the result to a double;
    // nothing where the table has no such kernel or the parameters do not fit it. The caller
    // keeps the ordinary result unless this one agrees with it.
    virtual std::optional<long double> precise_value(int index, const std::vector<long double>& arguments) const {
        (void)index, (void)arguments;
        return std::nullopt;
    }

    // Constant names match exactly; -1 for an unknown name.
    virtual int constant_index(std::string_view name) const = 0;
    // An empty string outside the table.
    virtual const char* constant_name(int index) const = 0;
    virtual long double constant_value(int index) const = 0;
};

} // namespace quorvex::engine
