#pragma once
#include <string>

namespace quorvex::store {

// The text of a new user function library: how to write categories and functions, an example
// kept out of use by ';', and where the functions of the user go.
std::string new_user_library_text();

// Creates QuorvexUser.lib in `dir` (and `dir` itself) when the file is not there yet. True when
// the file exists afterwards; false with `error` set otherwise.
bool ensure_user_library(const std::string& dir, std::string* error = nullptr);

} // namespace quorvex::store
