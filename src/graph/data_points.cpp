#include "data_points.h"

#include <cstdlib>

namespace quorvex::graph {

double StrDataPnts::GetXValue(int index) const {
    const std::string* text = GetXDataPoint(index);
    return text ? std::strtod(text->c_str(), nullptr) : 0.0;
}

} // namespace quorvex::graph
