// Classifiers that tell what a piece of expression text is.
#include "mathematics.h"

#include <cctype>
#include <cstring>

namespace quorvex::engine {

namespace {

const char* skip_blank_and_sign(const char* text) {
    while (std::isspace(static_cast<unsigned char>(*text))) ++text;
    if (*text == '+' || *text == '-') ++text;
    return text;
}

bool is_digit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

} // namespace

bool Mathematics::is_delim(char c) {
    return (c != '\0' && std::strchr("!+-<>/*%^=()[]{},;:#$@&?~`'\"|\\\t\r ", c) != nullptr) || c == '\0';
}

bool Mathematics::is_number(const char* text) {
    if (!text) return false;
    text = skip_blank_and_sign(text);
    bool further_sign = false;
    for (; *text; ++text) {
        char c = *text;
        if (std::isdigit(static_cast<unsigned char>(c)) || c == '.') continue;
        if (c == 'i') return text[1] == '\0';
        if (!is_delim(c)) return false;
        if (c == '+' || c == '-') further_sign = true;
    }
    // A sign inside the text makes sense only for a complex literal such as 1+2i.
    return !further_sign;
}

bool Mathematics::is_integer(const char* text) {
    if (!text) return false;
    text = skip_blank_and_sign(text);
    bool digits = false;
    for (; *text && !is_delim(*text); ++text) {
        if (!is_digit(*text)) return false;
        digits = true;
    }
    return digits;
}

bool Mathematics::is_real(const char* text) {
    if (!text) return false;
    text = skip_blank_and_sign(text);
    bool digits = false;
    for (const char* p = text; *p; ++p) {
        const char c = *p;
        const bool after_exponent = p > text && (p[-1] == 'e' || p[-1] == 'E');
        if (is_digit(c)) digits = true;
        else if (c == '.' || ((c == 'e' || c == 'E') && digits) || ((c == '+' || c == '-') && after_exponent))
            continue;
        else if (is_delim(c)) break;
        else return false;
    }
    return digits;
}

} // namespace quorvex::engine
