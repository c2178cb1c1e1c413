#pragma once
#include <span>

namespace quorvex::engine {

// The message tables of the four error layers and the mapper. A code is an index into its table;
// rows that nothing raises any more stay so that the numbering never moves.
std::span<const char* const> parser_messages();
std::span<const char* const> mathlib_messages();
std::span<const char* const> mapper_messages();
std::span<const char* const> mathematics_messages();
std::span<const char* const> statistics_messages();
std::span<const char* const> deviates_messages();

// Rows of the mathematical-library table raised by name.
inline constexpr int k_mathlib_integer_too_large = 59;
inline constexpr int k_mathlib_percentile_range = 60;

} // namespace quorvex::engine
