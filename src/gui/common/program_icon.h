#pragma once
#include <QIcon>

namespace quorvex::gui {

// The program's own icon (the one the desktop entry installs), drawn at the usual sizes.
QIcon program_icon();

} // namespace quorvex::gui
