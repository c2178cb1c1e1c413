#pragma once
#include <cstdint>

namespace quorvex::engine {

// A rational pair for the fraction display of answers.
struct Fraction {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;

    friend Fraction operator+(const Fraction& a, const Fraction& b) {
        if (a.denominator == b.denominator) return {a.numerator + b.numerator, a.denominator};
        return {a.numerator * b.denominator + b.numerator * a.denominator, a.denominator * b.denominator};
    }
    friend bool operator==(const Fraction& a, const Fraction& b) {
        return a.numerator == b.numerator && a.denominator == b.denominator;
    }
};

} // namespace quorvex::engine
