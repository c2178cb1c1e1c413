#pragma once
#include "engine/builtin_table.h"

#include <sstream>

namespace quorvex::functions {

// An entry reads its own parameters from the parser and returns the function's value.
using Entry = engine::complex (*)(engine::Parser& parser, std::ostringstream& out, int function);

// The built-in functions and constants of the language.
class BuiltinFunctions : public engine::BuiltinTable {
public:
    int function_index(std::string_view name) const override;
    const char* function_name(int index) const override;
    engine::complex call(int index, engine::Parser& parser, std::ostringstream& out) const override;
    bool run_instruction(int code, engine::Parser& parser, engine::MachineState& machine,
                         std::vector<long double>& data) const override;
    std::optional<long double> precise_value(int index, const std::vector<long double>& arguments) const override;
    int constant_index(std::string_view name) const override;
    const char* constant_name(int index) const override;
    long double constant_value(int index) const override;
};

// The one table every Parser of the program shares; it holds no state.
const BuiltinFunctions& builtin_functions();

// The entries, by family; each table row points at one of them.
Entry scalar_entry(int function);
Entry logic_entry(int function);
Entry list_entry(int function);
Entry distribution_entry(int function);
Entry deviate_entry(int function);
Entry capability_entry(int function);

} // namespace quorvex::functions
