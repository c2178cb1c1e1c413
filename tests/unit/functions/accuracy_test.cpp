// How often the shown answer is the true value correctly rounded to 14 significant digits.
//
// The references (tests/fixtures/accuracy, made once by tools/make_accuracy_references.py with
// mpmath) hold random chained expressions and every real built-in over its domain, each with its
// true value to 50 digits and that value rounded to 14 digits, halves away from zero, and the
// answers the documentation quotes with the manual's example of each built-in. Every one is
// evaluated at the default precision and counted as correctly rounded, one unit off in the last
// digit, further off, or failed; the figures and the worst answers are printed, and the share of
// correctly rounded answers must not fall below the floor each arithmetic mode reached when it
// was last measured.
//
// A new arithmetic mode is measured by adding one row to k_modes.
// QUORVEX_ACCURACY_WORST=N lists the N worst answers of each set instead of the default 8, e.g.
//   QUORVEX_ACCURACY_WORST=50 functions_tests --gtest_filter='Modes/Accuracy*'
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

using quorvex::engine::Parser;

namespace {

struct ArithmeticMode {
    const char* name;
    void (*apply)(Parser&);
    // The lowest share of correctly rounded answers accepted, per reference set: what the mode
    // reached when it was measured, cut to a tenth of a percent.
    double chained_floor;
    double functions_floor;
    double examples_floor;
};

const ArithmeticMode k_modes[] = {
    {"default", [](Parser&) {}, 0.632, 0.965, 0.961},
    {"precise", [](Parser& parser) { parser.set_precise(true); }, 0.999, 0.999, 0.999},
};

struct Reference {
    bool radians = true;
    std::string expression;
    std::string true_value; // 50 significant digits
    std::string rounded;    // 14 significant digits
};

std::vector<Reference> read_references(const std::string& file) {
    std::vector<Reference> rows;
    std::ifstream in(std::string(QUORVEX_FIXTURES) + "accuracy/" + file);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        Reference r;
        std::string angle;
        std::getline(fields, angle, '\t');
        std::getline(fields, r.expression, '\t');
        std::getline(fields, r.true_value, '\t');
        std::getline(fields, r.rounded, '\t');
        r.radians = angle == "rad";
        rows.push_back(r);
    }
    return rows;
}

// A real number of at most 14 significant digits as mantissa * 10^(exponent - 13), the mantissa
// from 1e13 up to 1e14 (signed), or 0 with exponent 0.
struct Digits14 {
    long long mantissa = 0;
    int exponent = 0;
};

// Reads an answer or a rounded reference: "-0.0016807907799716", "1.23456789e+14", "3". Anything
// else (a complex answer, an error's empty text, more than 14 digits) gives nothing.
std::optional<Digits14> read_digits(const std::string& text) {
    size_t i = 0;
    const bool negative = i < text.size() && text[i] == '-';
    if (negative) ++i;
    std::string digits;
    int point = -1;
    for (; i < text.size() && (std::isdigit(static_cast<unsigned char>(text[i])) || text[i] == '.'); ++i) {
        if (text[i] == '.') {
            if (point >= 0) return std::nullopt;
            point = static_cast<int>(digits.size());
        } else {
            digits += text[i];
        }
    }
    if (digits.empty()) return std::nullopt;
    int scale = 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        char* end = nullptr;
        scale = static_cast<int>(std::strtol(text.c_str() + i + 1, &end, 10));
        i = static_cast<size_t>(end - text.c_str());
    }
    if (i != text.size()) return std::nullopt;
    if (point < 0) point = static_cast<int>(digits.size());
    const size_t first = digits.find_first_not_of('0');
    if (first == std::string::npos) return Digits14{};
    // The value is 0.<digits from first> * 10^(point - first + scale).
    std::string significant = digits.substr(first);
    significant.erase(significant.find_last_not_of('0') + 1);
    if (significant.size() > 14) return std::nullopt;
    Digits14 d;
    d.exponent = point - static_cast<int>(first) + scale - 1;
    d.mantissa = std::stoll(significant + std::string(14 - significant.size(), '0'));
    if (negative) d.mantissa = -d.mantissa;
    return d;
}

// The distance of an answer from the rounded reference in units of the reference's last digit.
long double units_apart(const Digits14& answer, const Digits14& reference) {
    if (answer.mantissa == 0 || reference.mantissa == 0)
        return answer.mantissa == reference.mantissa ? 0 : 1e30L;
    const int shift = answer.exponent - reference.exponent;
    if (std::abs(shift) > 2) return 1e30L;
    return std::fabs(static_cast<long double>(answer.mantissa) * std::pow(10.0L, shift) -
                     static_cast<long double>(reference.mantissa));
}

struct Outcome {
    const Reference* reference;
    std::string answer;
    long double error_units; // (answer - true value) in units of the last digit, or a failure
};

struct Tally {
    size_t total = 0, correct = 0, one_unit = 0, further = 0, failed = 0;
    std::vector<Outcome> worst;

    double share(size_t n) const { return total ? static_cast<double>(n) / static_cast<double>(total) : 0; }
};

Tally measure(const ArithmeticMode& mode, const std::vector<Reference>& references) {
    // The system library too: the examples use its functions.
    Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    mode.apply(parser);
    Tally tally;
    for (const Reference& r : references) {
        parser.set_angle_type(r.radians ? 1 : 0);
        const std::string answer = parser.eval_exp(r.expression.c_str(), true, false, false);
        const auto expected = read_digits(r.rounded);
        const auto shown = parser.IsAnError() ? std::nullopt : read_digits(answer);
        ++tally.total;
        if (!expected) ADD_FAILURE() << "unreadable reference " << r.rounded << " of " << r.expression;
        if (!expected || !shown) {
            ++tally.failed;
            tally.worst.push_back({&r, parser.IsAnError() ? std::string(parser.GetLastError()) : answer, 1e30L});
            continue;
        }
        const long double apart = units_apart(*shown, *expected);
        if (apart == 0) ++tally.correct;
        else if (apart <= 1) ++tally.one_unit;
        else ++tally.further;
        if (apart != 0) {
            const long double unit = std::pow(10.0L, expected->exponent - 13);
            const long double error = (std::strtold(answer.c_str(), nullptr) - std::strtold(r.true_value.c_str(), nullptr)) / unit;
            tally.worst.push_back({&r, answer, std::fabs(error)});
        }
    }
    std::sort(tally.worst.begin(), tally.worst.end(),
              [](const Outcome& a, const Outcome& b) { return a.error_units > b.error_units; });
    return tally;
}

size_t listed_by_default() {
    const char* env = std::getenv("QUORVEX_ACCURACY_WORST");
    return env ? static_cast<size_t>(std::atoi(env)) : size_t{8};
}

void report(const char* mode, const char* set, const Tally& t, size_t listed) {
    listed = std::min(listed, t.worst.size());
    std::cout << std::fixed << std::setprecision(2) << "[" << mode << "] " << set << ": " << t.total
              << " answers, " << 100 * t.share(t.correct) << " % correctly rounded, " << 100 * t.share(t.one_unit)
              << " % one unit off in the last digit, " << 100 * t.share(t.further) << " % further off, "
              << 100 * t.share(t.failed) << " % failed\n";
    for (size_t i = 0; i < listed; ++i) {
        const Outcome& o = t.worst[i];
        std::cout << "  " << (o.error_units >= 1e29L ? std::string("failed") : std::to_string(static_cast<double>(o.error_units)) + " units")
                  << "  " << (o.reference->radians ? "" : "(degrees) ") << o.reference->expression << " = " << o.answer
                  << ", true " << o.reference->rounded << "\n";
    }
}

void PrintTo(const ArithmeticMode& mode, std::ostream* out) { *out << mode.name; }

class Accuracy : public testing::TestWithParam<ArithmeticMode> {};

TEST_P(Accuracy, RandomChainedExpressions) {
    const auto references = read_references("chained.txt");
    ASSERT_GE(references.size(), 2000u);
    const Tally t = measure(GetParam(), references);
    report(GetParam().name, "chained expressions", t, listed_by_default());
    EXPECT_GE(t.share(t.correct), GetParam().chained_floor);
}

TEST_P(Accuracy, EveryRealBuiltinOverItsDomain) {
    const auto references = read_references("functions.txt");
    ASSERT_GE(references.size(), 4000u);
    const Tally t = measure(GetParam(), references);
    report(GetParam().name, "built-in functions", t, listed_by_default());
    EXPECT_GE(t.share(t.correct), GetParam().functions_floor);
}

// The answers quoted in the documentation and the example of each built-in in the manual: every
// one that is not correctly rounded is listed, as the README's table of them shows.
TEST_P(Accuracy, DocumentedExamples) {
    const auto references = read_references("examples.txt");
    ASSERT_GE(references.size(), 100u);
    const Tally t = measure(GetParam(), references);
    report(GetParam().name, "documented examples", t, t.worst.size());
    EXPECT_GE(t.share(t.correct), GetParam().examples_floor);
}

INSTANTIATE_TEST_SUITE_P(Modes, Accuracy, testing::ValuesIn(k_modes),
                         [](const testing::TestParamInfo<ArithmeticMode>& info) { return std::string(info.param.name); });

// The counting itself: answers in each of the engine's forms against rounded references.
TEST(AccuracyCounting, AnswersAreReadInEachFormAndCountedInUnitsOfTheLastDigit) {
    auto apart = [](const char* answer, const char* reference) {
        return units_apart(*read_digits(answer), *read_digits(reference));
    };
    EXPECT_EQ(apart("3", "3.0000000000000e+0"), 0);
    EXPECT_EQ(apart("-0.0016807907799716", "-1.6807907799716e-3"), 0);
    EXPECT_EQ(apart("1.23456789e+14", "1.2345678900000e+14"), 0);
    EXPECT_EQ(apart("2.9999999999999", "3.0000000000000e+0"), 1);
    // Across a power of ten the nearer shorter answer is less than one unit away.
    EXPECT_LT(apart("0.99999999999999", "1.0000000000000e+0"), 1);
    EXPECT_GT(apart("7.3890560989304", "7.3890560989307e+0"), 1);
    EXPECT_GT(apart("-2", "2.0000000000000e+0"), 1);
    EXPECT_GT(apart("0", "1.0000000000000e-9"), 1);
    EXPECT_FALSE(read_digits("0+2i"));
    EXPECT_FALSE(read_digits(""));
    EXPECT_FALSE(read_digits("1.234567890123456"));
}

} // namespace
