#pragma once
#include "statistics.h"

#include <string>

namespace quorvex::functions::statistics {

// The Wilks-Shapiro test of normality at alpha 1, 2, 5 or 10 percent: 1 when the data pass
// (W above the critical value), 0 when they do not. The coefficients and critical values come
// from the table files wstableA1 and wstableA2 in `tables_dir`, one line "n) v1, v2, ..." per n
// from 3 to 99. Sorts the list. Refusals go through the parser's statistics layer.
long double wsnormtest(DataList& x, int alpha, const std::string& tables_dir, engine::Parser& parser);

} // namespace quorvex::functions::statistics
