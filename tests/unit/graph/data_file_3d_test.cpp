// A data file of x, y and z lines read as the data sets of a 3-dimensional graph.
#include "graph/data_file_3d.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

namespace {

bool any_value(const std::string&) { return true; }

} // namespace

TEST(DataFile3D, RowsGroupByTheirZValue) {
    const DataColumns table = split_data_columns("0 1 2\n1 3 2.0\n0 5 4\n2 9\n1 6 4\n", any_value);
    const ZSets found = sets_by_z(table);
    ASSERT_EQ(found.sets.size(), 2u);
    EXPECT_EQ(*found.sets[0].GetZDataPoint(), "2"); // "2.0" is the same Z and joins the first set
    EXPECT_EQ(found.sets[0].GetNumXDataPoints(), 2);
    EXPECT_EQ(*found.sets[0].GetYDataPoint(1), "3");
    EXPECT_EQ(*found.sets[1].GetZDataPoint(), "4");
    EXPECT_EQ(*found.sets[1].GetXDataPoint(1), "1");
    EXPECT_EQ(found.rows_without_z, 1);
    EXPECT_EQ(found.first_row_without_z, 4);

    EXPECT_TRUE(same_z(" 1e1", "10"));
    EXPECT_FALSE(same_z("pi", "3.14159"));
    EXPECT_TRUE(same_z("pi ", "pi"));
    EXPECT_EQ(set_at_z(found.sets, "4.00"), 1);
    EXPECT_EQ(set_at_z(found.sets, "3"), -1);
}

TEST(DataFile3D, PointsAppendAfterTheLastPoint) {
    StrDataPnts set;
    set.PutZDataPoint(std::string("1")); // a Z alone holds no point: the first added is point 1
    StrDataPnts added;
    added.PutXDataPoint("0", 0);
    added.PutYDataPoint("7", 0);
    added.PutXDataPoint("1", 1);
    append_points(set, added);
    EXPECT_EQ(*set.GetXDataPoint(0), "0");
    append_points(set, added);
    EXPECT_EQ(*set.GetYDataPoint(2), "7");
    EXPECT_EQ(*set.GetXDataPoint(3), "1");
    EXPECT_EQ(set.GetYDataPoint(3), nullptr);
}
