#pragma once
#include "complex.h"

#include <optional>
#include <string>

namespace quorvex::engine {

// A data point as text: the x, y and z that a line of a points file gave, any of them empty.
struct StrPoint {
    std::string x, y, z;
};

// A data point as numbers: up to three coordinates, each present or not. Arithmetic works on the
// coordinates both points have; a coordinate missing on the left stays missing.
struct Point {
    std::optional<complex> x, y, z;

    Point& operator+=(const Point& other) { return combine(other, 1); }
    Point& operator-=(const Point& other) { return combine(other, -1); }
    // Adds 1 to the real and the imaginary part of each present coordinate.
    Point& operator++() { return step(1); }
    Point& operator--() { return step(-1); }
    friend Point operator+(Point a, const Point& b) { return a += b; }
    friend Point operator-(Point a, const Point& b) { return a -= b; }
    bool operator==(const Point&) const = default;

private:
    Point& combine(const Point& other, int sign) {
        std::optional<complex>* mine[] = {&x, &y, &z};
        const std::optional<complex>* theirs[] = {&other.x, &other.y, &other.z};
        for (int i = 0; i < 3; ++i)
            if (*mine[i] && *theirs[i]) **mine[i] += static_cast<double>(sign) * **theirs[i];
        return *this;
    }
    Point& step(int sign) {
        for (std::optional<complex>* coordinate : {&x, &y, &z})
            if (*coordinate) **coordinate += complex(sign, sign);
        return *this;
    }
};

} // namespace quorvex::engine
