#pragma once
#include <QString>

namespace quorvex::gui {

// Writes graph3d-FORM SUFFIX.png into `out` for each form of a 3-D graph; false when one failed.
bool shoot_3d(const QString& out, const QString& suffix);

} // namespace quorvex::gui
