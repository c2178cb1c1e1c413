// Columns of a data file or a pasted block: separators, line labels, a header above the data,
// the choice of columns and the text a data set is saved as.
#include "graph/data_columns.h"

#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace quorvex::graph;

namespace {

using Rows = std::vector<std::vector<std::string>>;

} // namespace

TEST(DataColumns, BlanksCommasAndTabsSeparateAndLineLabelsAreSkipped) {
    const DataColumns table = split_data_columns("1 2\r\n3,4\n\n5\t, 6\n1) 2.5\n2)\t3.5 f(2)\n", is_plain_number);
    EXPECT_EQ(table.rows, (Rows{{"1", "2"}, {"3", "4"}, {"5", "6"}, {"2.5"}, {"3.5", "f(2)"}}));
    EXPECT_EQ(table.columns, 2);
    EXPECT_EQ(table.header_lines, 0);
}

TEST(DataColumns, AHeaderAboveTheDataIsSkippedButExpressionsAreData) {
    const DataColumns pasted = split_data_columns("time\tvolts\n0\t1.5\n0.5\t-2E-3\n", is_plain_number);
    EXPECT_EQ(pasted.header_lines, 1);
    EXPECT_EQ(pasted.rows, (Rows{{"0", "1.5"}, {"0.5", "-2E-3"}}));
    // The engine's check keeps "2*PI" as data and skips words, without declaring them as
    // variables; with nothing accepted nothing is skipped.
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    parser.set_auto_declare(true);
    const DataColumns typed = split_data_columns("x y\n2*PI 1\n3 4\n", data_value_check(parser));
    EXPECT_EQ(typed.rows, (Rows{{"2*PI", "1"}, {"3", "4"}}));
    EXPECT_FALSE(parser.is_variable("x"));
    EXPECT_TRUE(parser.auto_declare());
    const DataColumns words = split_data_columns("a b\nc d\n", is_plain_number);
    EXPECT_EQ(words.header_lines, 0);
    EXPECT_EQ(words.rows.size(), 2u);
}

TEST(DataColumns, APublishedSetReadsAsItsDataLines) {
    std::string text, error;
    ASSERT_TRUE(read_data_text(std::string(QUORVEX_FIXTURES) + "nist/Norris.dat", text, error)) << error;
    const DataColumns table = split_data_columns(text, is_plain_number);
    ASSERT_EQ(table.rows.size(), 36u); // the file's 36 observations
    EXPECT_EQ(table.columns, 2);
    // Its columns are y then x.
    const StrDataPnts points = points_from_columns(table, 2, 1);
    EXPECT_EQ(*points.GetXDataPoint(0), "0.2");
    EXPECT_EQ(*points.GetYDataPoint(0), "0.1");
    EXPECT_EQ(points.GetNumXYZPoints(), 36);

    EXPECT_FALSE(read_data_text("/nonexistent/points.dat", text, error));
    EXPECT_EQ(error, "Data File ' /nonexistent/points.dat ' Could Not Be Located!");
}

TEST(DataColumns, ChosenColumnsBecomePointsAndASavedSetReadsBackTheSame) {
    const DataColumns table = split_data_columns("1 10 100\n2 20\n3 30 300\n", is_plain_number);
    const StrDataPnts third = points_from_columns(table, 1, 3);
    EXPECT_EQ(*third.GetYDataPoint(0), "100");
    EXPECT_EQ(third.GetYDataPoint(1), nullptr); // the short row has no third value
    EXPECT_EQ(*third.GetYDataPoint(2), "300");
    const StrDataPnts single = points_from_columns(table, 2, 0);
    EXPECT_EQ(single.GetNumXDataPoints(), 3);
    EXPECT_EQ(single.GetNumYDataPoints(), 0);

    StrDataPnts typed;
    typed.PutXDataPoint("2*PI", 0);
    typed.PutYDataPoint("sqrt(2)", 0);
    typed.PutXDataPoint("-1", 1);
    typed.PutYDataPoint("4", 1);
    const std::string saved = data_points_text(typed, true);
    EXPECT_EQ(saved, "2*PI , sqrt(2)\n-1 , 4\n");
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions());
    const StrDataPnts back = points_from_columns(split_data_columns(saved, data_value_check(parser)), 1, 2);
    EXPECT_EQ(back.XPoints, typed.XPoints);
    EXPECT_EQ(back.YPoints, typed.YPoints);
}
