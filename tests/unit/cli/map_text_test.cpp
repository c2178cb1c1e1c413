// The short paths of the map command against the engine's own: the text of a number against the
// answer stream, and the points of a run against the decimal type's arithmetic. Both must agree
// to the byte and to the bit, or the command's output would change.
#include "answer_text.h"
#include "command_support.h"
#include "parser_setup.h"
#include "point_reading.h"

#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

using namespace quorvex::cli;

namespace {

struct CommandRun {
    CliOptions options;
    quorvex::engine::Parser parser{&quorvex::functions::builtin_functions()};
    std::ostringstream out, err;
    CommandContext context{options, parser, out, err};

    explicit CommandRun(CliOptions settings) : options(std::move(settings)) { apply_answer_options(parser, options); }
};

// Values of every kind an answer takes: random magnitudes and digits, results of 15-digit
// rounding, and the edges of the formats and of the zero tolerance.
std::vector<double> sample_values() {
    std::vector<double> values = {0.0,     -0.0,    1.0,     -1.0,     0.1,     1e-5,    -1e-5,     1e-4,
                                  9.99999999999999e-5, 1e15,  1e16,    1e21,    -1e21,    1e22,    123456789012345.0,
                                  999999999999999.0, 999999999999999.5, 0.5,   2.5,      1e-12,   -1e-12,
                                  1.0000000000001e-12, 9.999999999999e-13, 1e-13, DBL_MAX,  -DBL_MAX, DBL_MIN,
                                  DBL_TRUE_MIN, 1e300, 1e-300, 0.30000000000000004, 100.0,  99.99999999999999};
    std::mt19937_64 random(20261125);
    std::uniform_int_distribution<int> exponent(-40, 40);
    std::uniform_int_distribution<long long> digits(100000000000000LL, 999999999999999LL);
    std::uniform_real_distribution<double> unit(-1, 1);
    for (int i = 0; i < 20000; ++i) {
        // Any bits at all, then values with at most 15 significant digits, as results hold.
        double bits_value = 0;
        const std::uint64_t bits = random();
        std::memcpy(&bits_value, &bits, sizeof bits_value);
        if (std::isfinite(bits_value)) values.push_back(bits_value);
        char text[40];
        std::snprintf(text, sizeof text, "%s%llde%d", i % 2 ? "-" : "", digits(random), exponent(random) - 14);
        values.push_back(std::strtod(text, nullptr));
        values.push_back(unit(random) * std::pow(10.0, exponent(random)));
    }
    return values;
}

void expect_same_text(CliOptions options, bool short_path_expected) {
    CommandRun setup(std::move(options));
    AnswerText answer(setup.context);
    int short_ones = 0;
    for (const double value : sample_values()) {
        std::string line;
        if (!answer.append(line, value)) continue;
        ++short_ones;
        ASSERT_EQ(line, format_answer(setup.context, value)) << "value " << std::hexfloat << value;
        line.clear();
        ASSERT_TRUE(answer.append(line, quorvex::engine::complex(value, 0)));
        ASSERT_EQ(line, format_answer(setup.context, quorvex::engine::complex(value, 0)));
    }
    if (short_path_expected)
        EXPECT_GT(short_ones, 50000); // the short path is taken, not left to the stream every time
    else
        EXPECT_EQ(short_ones, 0);
}

CliOptions with_precision(int digits) {
    CliOptions options;
    options.precision = digits;
    return options;
}

} // namespace

TEST(AnswerText, SameTextAsTheAnswerStreamAtTheDefaults) { expect_same_text(CliOptions{}, true); }

TEST(AnswerText, SameTextAtOtherPrecisions) {
    for (const int digits : {1, 2, 6, 10, 14, 15, 16, 17}) expect_same_text(with_precision(digits), true);
}

TEST(AnswerText, SameTextAtOtherZeroTolerances) {
    for (const float tolerance : {0.0f, 1e-5f, 1e-30f, 0.5f}) {
        CliOptions options;
        options.zero_tolerance = tolerance;
        expect_same_text(options, true);
    }
}

TEST(AnswerText, OtherFormatsTakeTheAnswerStream) {
    CliOptions scientific;
    scientific.format = 1;
    expect_same_text(scientific, false);
    CliOptions fractions;
    fractions.fraction = true;
    expect_same_text(fractions, false);
}

TEST(AnswerText, ComplexValuesTakeTheAnswerStream) {
    CommandRun setup(CliOptions{});
    AnswerText answer(setup.context);
    std::string line;
    EXPECT_FALSE(answer.append(line, quorvex::engine::complex(1, 2)));
    EXPECT_FALSE(answer.append(line, std::numeric_limits<double>::infinity()));
    EXPECT_TRUE(line.empty());
}

TEST(PointReading, ReadsTheTextAsTheDecimalPathDoes) {
    // Random 15-digit texts: the long double of the text, from its nearest double. About one in
    // two thousand narrows to the other neighbour, so a reading that returned the nearest double
    // itself fails here.
    std::mt19937_64 random(7);
    std::uniform_int_distribution<long long> digits(1, 999999999999999LL);
    std::uniform_int_distribution<int> exponent(-40, 40);
    int twice_rounded = 0;
    for (int i = 0; i < 300000; ++i) {
        char text[40];
        std::snprintf(text, sizeof text, "%s%llde%d", i % 3 ? "" : "-", digits(random), exponent(random));
        const double nearest = std::strtod(text, nullptr);
        const long double expected = std::strtold(text, nullptr);
        if (static_cast<double>(expected) != nearest) ++twice_rounded;
        if (const auto read = read_as_engine(nearest)) {
            ASSERT_EQ(*read, expected) << text;
        }
    }
    EXPECT_GT(twice_rounded, 0);
    EXPECT_EQ(read_as_engine(0.0), 0.0L);
    EXPECT_FALSE(read_as_engine(DBL_TRUE_MIN));
}

TEST(EvenPoints, SamePointsAsTheDecimalType) {
    struct Range {
        long double low, high;
        long count;
    };
    std::vector<Range> ranges = {{0, 100, 1000000}, {-1, 1, 100001}, {0, 1, 3},     {1e-5L, 2e-5L, 9999},
                                 {-1e15L, 1e15L, 77777}, {1e21L, 3e21L, 5000}, {0.1L, 0.7L, 123457},
                                 {5, 5, 10},         {3, -7, 1001},     {-2.5L, -1e-9L, 4099}};
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> unit(-1, 1);
    std::uniform_int_distribution<int> exponent(-12, 12);
    std::uniform_int_distribution<long> count(2, 50000);
    for (int i = 0; i < 40; ++i) {
        const double low = unit(random) * std::pow(10.0, exponent(random));
        ranges.push_back({low, low + std::fabs(unit(random)) * std::pow(10.0, exponent(random)), count(random)});
    }
    for (const Range& range : ranges) {
        EvenPoints points(range.low, range.high, range.count);
        EvenPoints reference(range.low, range.high, range.count);
        // Every point of the smaller runs, a stride through the larger ones.
        const long stride = range.count > 20000 ? 13 : 1;
        for (long i = 0; i < range.count; i += stride)
            ASSERT_EQ(points.at(i), reference.decimal_at(i)) << "point " << i << " of " << range.count << " from "
                                                              << range.low << " to " << range.high;
    }
}
