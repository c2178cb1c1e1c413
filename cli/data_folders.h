#pragma once
#include <string>

namespace quorvex::cli {

// The user's data folder: $XDG_DATA_HOME/Quorvex, else ~/.local/share/Quorvex; empty when
// neither variable is set.
std::string default_data_dir();

// The folder of the system function library: the installed one when it holds Quorvex.lib,
// else the `data` folder of the source tree the program was built from.
std::string default_library_dir();

} // namespace quorvex::cli
