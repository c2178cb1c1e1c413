#include "decimal_text.h"

#include <cstdlib>

namespace quorvex::number {

namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Beyond this the value is outside the decimal range (about 1e+-67108864) whatever its digits;
// the reader clamps the exponent here and Decimal::from_text saturates what lies beyond.
constexpr long k_exponent_limit = 100000000;

} // namespace

std::string canonical_decimal(std::string_view text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
    std::string out;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        if (text[i] == '-') out += '-';
        ++i;
    }
    std::string digits;
    bool point = false;
    for (; i < text.size(); ++i) {
        if (is_digit(text[i])) {
            digits += text[i];
        } else if (text[i] == '.' && !point) {
            point = true;
            digits += '.';
        } else {
            break;
        }
    }
    if (digits.find_first_of("0123456789") == std::string::npos) return "0";
    if (digits.front() == '.') digits.insert(digits.begin(), '0');
    if (digits.back() == '.') digits.pop_back();
    out += digits;

    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        size_t j = i + 1;
        bool negative = false;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) negative = text[j++] == '-';
        long exponent = 0;
        bool any = false;
        for (; j < text.size() && is_digit(text[j]); ++j) {
            any = true;
            if (exponent < k_exponent_limit) exponent = exponent * 10 + (text[j] - '0');
        }
        if (any) {
            if (exponent > k_exponent_limit) exponent = k_exponent_limit;
            out += negative ? "e-" : "e+";
            out += std::to_string(exponent);
        }
    }
    return out;
}

std::string round_scientific(std::string_view exact, int places) {
    size_t i = 0;
    const bool negative = !exact.empty() && exact[0] == '-';
    if (negative || (!exact.empty() && exact[0] == '+')) ++i;
    std::string digits;
    for (; i < exact.size() && exact[i] != 'e' && exact[i] != 'E'; ++i)
        if (is_digit(exact[i])) digits += exact[i];
    long exponent = i < exact.size() ? std::strtol(std::string(exact.substr(i + 1)).c_str(), nullptr, 10) : 0;

    const size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) {
        std::string zero = "0";
        if (places > 0) zero += "." + std::string(static_cast<size_t>(places), '0');
        return zero + "E+0";
    }
    // Leading zeros (never written by Boost for a non-zero value, but cheap to allow) shift the
    // exponent of the first significant digit.
    exponent -= static_cast<long>(first);
    digits.erase(0, first);

    if (places >= 0) {
        const size_t keep = static_cast<size_t>(places) + 1;
        if (digits.size() > keep) {
            const bool round_up = digits[keep] >= '5';
            digits.resize(keep);
            if (round_up) {
                size_t k = keep;
                while (k > 0 && digits[k - 1] == '9') digits[--k] = '0';
                if (k == 0) {
                    digits.insert(digits.begin(), '1');
                    digits.pop_back();
                    ++exponent;
                } else {
                    ++digits[k - 1];
                }
            }
        } else {
            digits.append(keep - digits.size(), '0');
        }
    } else {
        const size_t last = digits.find_last_not_of('0');
        digits.resize(last + 1);
    }

    std::string out = negative ? "-" : "";
    out += digits[0];
    if (digits.size() > 1) out += "." + digits.substr(1);
    out += exponent < 0 ? "E-" : "E+";
    out += std::to_string(exponent < 0 ? -exponent : exponent);
    return out;
}

} // namespace quorvex::number
