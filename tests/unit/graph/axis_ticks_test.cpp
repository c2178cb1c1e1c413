// The numbers on a linear axis: round values written as the user expects them, zero as zero,
// however the range falls.
#include "graph/axis_ticks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using namespace quorvex::graph;

namespace {

std::vector<std::string> labels_of(const std::vector<AxisTick>& ticks) {
    std::vector<std::string> labels;
    for (const AxisTick& tick : ticks) labels.push_back(tick.label);
    return labels;
}

using Labels = std::vector<std::string>;

} // namespace

TEST(AxisTicks, ZeroAndTheRoundValuesAroundItCarryNoBinaryNoise) {
    // Stepping 0.1 from -0.3 by sums lands on 2.8e-17, not on zero.
    EXPECT_EQ(labels_of(linear_ticks(-0.33, 0.33)), (Labels{"-0.3", "-0.2", "-0.1", "0", "0.1", "0.2", "0.3"}));
    // Every range of a graph around zero, by small shifts: the tick at zero is zero, every label reads as
    // its value does with a few digits, and the values are the labels' own.
    for (int shift = 0; shift < 400; ++shift) {
        const double from = -1.1 - 0.0137 * shift, to = 0.7 + 0.0071 * shift;
        const std::vector<AxisTick> ticks = linear_ticks(from, to);
        ASSERT_GE(ticks.size(), 4u) << from << " " << to;
        ASSERT_LE(ticks.size(), 12u) << from << " " << to;
        bool zero = false;
        for (const AxisTick& tick : ticks) {
            EXPECT_GE(tick.value, from);
            EXPECT_LE(tick.value, to);
            EXPECT_EQ(tick.label.find('e'), std::string::npos) << tick.label;
            EXPECT_EQ(std::strtod(tick.label.c_str(), nullptr), tick.value) << tick.label;
            if (tick.label == "0") {
                zero = true;
                EXPECT_EQ(tick.value, 0.0);
            }
        }
        EXPECT_TRUE(zero) << from << " " << to;
        // Evenly spaced.
        for (size_t i = 2; i < ticks.size(); ++i)
            EXPECT_NEAR(ticks[i].value - ticks[i - 1].value, ticks[1].value - ticks[0].value, 1e-12);
    }
}

TEST(AxisTicks, StepsAreOneTwoOrFiveAndLabelsStayShortAtEveryScale) {
    EXPECT_EQ(labels_of(linear_ticks(0, 10)), (Labels{"0", "2", "4", "6", "8", "10"}));
    EXPECT_EQ(labels_of(linear_ticks(-11, 11)), (Labels{"-10", "-5", "0", "5", "10"}));
    EXPECT_EQ(labels_of(linear_ticks(0.5, 3.2)), (Labels{"0.5", "1", "1.5", "2", "2.5", "3"}));
    EXPECT_EQ(labels_of(linear_ticks(1000, 2000)), (Labels{"1000", "1200", "1400", "1600", "1800", "2000"}));
    // Ends a hair beside a multiple keep it.
    EXPECT_EQ(labels_of(linear_ticks(0.30000000000000004, 0.8999999999999999)),
              (Labels{"0.3", "0.4", "0.5", "0.6", "0.7", "0.8", "0.9"}));
    // Large and small values in short scientific form, as %g writes them.
    EXPECT_EQ(labels_of(linear_ticks(0, 3e6)), (Labels{"0", "5e+05", "1e+06", "1.5e+06", "2e+06", "2.5e+06", "3e+06"}));
    EXPECT_EQ(labels_of(linear_ticks(-3e-7, 3e-7)), (Labels{"-3e-07", "-2e-07", "-1e-07", "0", "1e-07", "2e-07", "3e-07"}));
    EXPECT_EQ(labels_of(linear_ticks(0.00012, 0.00022)).front(), "0.00012");
    // Far from zero the step still shows: 1e9 + 0.5 is not written 1e+09.
    const std::vector<AxisTick> far = linear_ticks(1e9, 1e9 + 3);
    ASSERT_FALSE(far.empty());
    EXPECT_EQ(far[1].label, "1.0000000005e+09");
    EXPECT_EQ(far[1].value, 1e9 + 0.5);
    // Nothing to number.
    EXPECT_TRUE(linear_ticks(1, 1).empty());
    EXPECT_TRUE(linear_ticks(2, 1).empty());
    EXPECT_TRUE(linear_ticks(0, INFINITY).empty());
    EXPECT_TRUE(linear_ticks(-1e308, 1e308).empty());
}
