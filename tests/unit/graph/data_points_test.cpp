// Data sets: slots that may be empty, and edits that keep the X and Y of a point together.
#include "graph/data_points.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

TEST(DataPoints, SlotsMayBeEmptyAndReadAsNull) {
    StrDataPnts set;
    EXPECT_EQ(set.GetMaxXYZPoint(), -1);
    set.PutZDataPoint("4");
    EXPECT_EQ(set.GetMaxXYZPoint(), 0); // an empty set with a Z value
    set.DeleteZDataPoint();

    set.PutXDataPoint("1", 0);
    set.PutXDataPoint("sqrt(2)", 3);
    set.PutYDataPoint("5", 1);
    EXPECT_EQ(set.GetXDataPoint(1), nullptr); // a hole
    EXPECT_EQ(set.GetXDataPoint(4), nullptr); // past the end
    EXPECT_EQ(set.GetXDataPoint(-1), nullptr);
    EXPECT_FALSE(set.PutXDataPoint("1", -1));
    EXPECT_EQ(set.GetNumXYZPoints(), 2);
    EXPECT_EQ(set.GetMaxXYZPoint(), 3);
    set.PutXDataPoint(nullptr, 3); // a null text empties the slot
    EXPECT_EQ(set.GetMaxXYZPoint(), 1);
    EXPECT_DOUBLE_EQ(set.GetXValue(1), 0.0);
}

TEST(DataPoints, EditsShiftLaterPointsAndCompactingDropsEmptyOnes) {
    StrDataPnts set;
    for (int i = 0; i < 3; ++i) {
        set.PutXDataPoint(std::to_string(i).c_str(), i);
        set.PutYDataPoint(std::to_string(10 * i).c_str(), i);
    }
    set.InsertXDataPoint("x", 1);
    EXPECT_EQ(*set.GetXDataPoint(3), "2");
    set.DeleteXDataPoint(1);
    EXPECT_TRUE(set.DeleteDataPoint(0));
    EXPECT_EQ(*set.GetXDataPoint(0), "1");
    EXPECT_EQ(*set.GetYDataPoint(0), "10");
    EXPECT_FALSE(set.DeleteDataPoint(5));
    EXPECT_FALSE(set.InsertYDataPoint("y", -2));

    DataPnts numbers;
    numbers.PutXDataPoint(complex(1, 0), 0);
    numbers.PutXDataPoint(complex(3, 0), 2); // point 1 is empty in both arrays
    numbers.PutYDataPoint(complex(4, 0), 3); // point 3 has a Y but no X
    numbers.CompactArrays();
    EXPECT_EQ(numbers.GetMaxXYZPoint(), 2);
    EXPECT_EQ(*numbers.GetXDataPoint(1), complex(3, 0));
    EXPECT_EQ(*numbers.GetYDataPoint(2), complex(4, 0));
}
