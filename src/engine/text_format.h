#pragma once
#include <cstdio>
#include <string>

namespace quorvex::engine {

// printf-style formatting into a std::string, for the message tables whose rows carry %s and %c.
// Only the program's own tables are ever used as formats; user text travels as arguments.
template <typename... Args>
std::string format_text(const char* format, Args... args) {
    int size = std::snprintf(nullptr, 0, format, args...);
    if (size <= 0) return {};
    std::string text(static_cast<size_t>(size) + 1, '\0');
    std::snprintf(text.data(), text.size(), format, args...);
    text.resize(static_cast<size_t>(size));
    return text;
}

} // namespace quorvex::engine
