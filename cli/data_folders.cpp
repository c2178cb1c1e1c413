#include "data_folders.h"

#include <cstdlib>
#include <sys/stat.h>

namespace quorvex::cli {

namespace {

bool is_file(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

} // namespace

std::string default_data_dir() {
    const char* xdg = std::getenv("XDG_DATA_HOME");
    if (xdg && *xdg == '/') return std::string(xdg) + "/Quorvex";
    const char* home = std::getenv("HOME");
    if (home && *home) return std::string(home) + "/.local/share/Quorvex";
    return {};
}

std::string default_library_dir() {
    const std::string installed = QUORVEX_INSTALLED_LIBRARY_DIR;
    if (is_file(installed + "/Quorvex.lib")) return installed;
    return QUORVEX_DATA_DIR;
}

} // namespace quorvex::cli
