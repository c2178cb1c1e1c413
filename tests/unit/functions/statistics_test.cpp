#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "functions/frequency.h"
#include "functions/statistics.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace quorvex::functions;
using namespace quorvex::functions::statistics;

TEST(Statistics, OrderStatisticsSortTheCallersList) {
    DataList x = {4, 1, 3, 2};
    EXPECT_EQ(median(x), 2.5L);
    EXPECT_EQ(x, (DataList{1, 2, 3, 4}));
    DataList ties = {2, 1, 2, 3};
    EXPECT_EQ(rank(ties, 2), 2.5L);
    EXPECT_EQ(rank(ties, 7), 0.0L);
    DataList four = {1, 2, 3, 4};
    EXPECT_EQ(percentile(four, 50), 2.5L);
    EXPECT_EQ(percentile(four, 0), 1.0L);
    EXPECT_EQ(percentile(four, 100), 4.0L);
}

TEST(Statistics, SpreadSwitchesFromSampleToPopulationAt31Points) {
    DataList thirty, thirty_one;
    for (int i = 0; i < 30; ++i) thirty.push_back(i % 2 == 0 ? 1 : 3);
    thirty_one = thirty;
    thirty_one.push_back(2);
    EXPECT_EQ(spread(thirty), std::sqrt(svariance(thirty)));
    EXPECT_EQ(spread(thirty_one), std::sqrt(pvariance(thirty_one)));
    // The short-term spread uses whole groups of three only: the fourth point is dropped.
    EXPECT_EQ(avgsumrangepairs(DataList{1, 2, 4, 100}), 3.0L);
    EXPECT_EQ(avgsumrangepairs(DataList{1, 5}), 4.0L);
    EXPECT_EQ(avgsumrangepairs(DataList{1}), 0.0L);
    EXPECT_NEAR(static_cast<double>(skew(DataList{1, 2, 3})), 0.0, 1e-15);
}

TEST(Statistics, FrequencyClassesCoverEveryPointOnce) {
    DataList x;
    for (int i = 1; i <= 25; ++i) x.push_back(i);
    const auto root = buildFreqDist(x, false, ClassScheme::SquareRoot);
    ASSERT_TRUE(root);
    ASSERT_EQ(root->size(), 5u);
    int total = 0;
    for (const Frequency& f : *root) total += f.count;
    EXPECT_EQ(total, 25);
    EXPECT_EQ(root->front().count, 5); // the first class takes its lower bound as well
    EXPECT_EQ(root->back().upper, 25.0L);

    const auto given = buildFreqDist(x, true, ClassScheme::Given, 2);
    ASSERT_TRUE(given);
    EXPECT_GE((*given)[0].count, (*given)[1].count);
    // The normal fit takes its bounds at whole-number probabilities: all points land in the last.
    const auto fit = buildFreqDist(x, false, ClassScheme::NormalFit);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit->size(), 4u);
    EXPECT_EQ(fit->back().count, 25);
    DataList few = {1, 2, 3, 4};
    EXPECT_FALSE(buildFreqDist(few, false, ClassScheme::NormalFit));
    EXPECT_EQ(getMaxFreqNum({{1, 0, 1, true}, {3, 1, 2, false}, {3, 2, 3, false}}), 1u);
}

TEST(Statistics, OutliersCombinatoricsAndBeta) {
    DataList x = {10, 10, 10, 10, 10, 10, 10, 10, 10, 50};
    EXPECT_EQ(GetOutLiers(x, 2, false), 1);
    EXPECT_EQ(x.size(), 10u);
    EXPECT_EQ(GetOutLiers(x, 2, true), 1);
    EXPECT_EQ(x.size(), 9u);
    EXPECT_EQ(binoco(5, 2), 10.0L);
    EXPECT_EQ(permutate(5, 2), 20.0L);
    EXPECT_EQ(factorial(5.9), 120.0L);
    EXPECT_NEAR(static_cast<double>(factorial(25)), 1.5511210043330986e25, 1e12);
    EXPECT_NEAR(static_cast<double>(beta(2, 3)), 1.0 / 12, 1e-15);
    EXPECT_EQ(beta(0, 3), 0.0L);
}

TEST(Statistics, ListFunctionsReadDataFiles) {
    quorvex::engine::Parser parser(&builtin_functions());
    const std::string dir = QUORVEX_FIXTURES "data/";
    EXPECT_STREQ(parser.eval_exp(("MEAN[{" + dir + "grid.txt}]").c_str(), true, false, false), "3.5");
    EXPECT_STREQ(parser.eval_exp(("2*MEAN[{" + dir + "expressions.txt}]").c_str(), true, false, false), "10");
    EXPECT_STREQ(parser.eval_exp(("RANK[{" + dir + "labelled.txt}, 3.5]").c_str(), true, false, false), "2");
    parser.eval_exp(("MEAN[{" + dir + "missing.txt}]").c_str(), true, false, false);
    EXPECT_EQ(std::string(parser.GetLastError()), "Data File ' " + dir + "missing.txt ' Could Not Be Located!");
    parser.eval_exp("MEAN[{nothing.txt}]", true, false, false);
    EXPECT_STREQ(parser.GetLastError(), "Data File ' nothing.txt ' Could Not Be Located!");
}
