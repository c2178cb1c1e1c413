// The 3-D sweep against the engine: a function over two variables, holes with their messages,
// Stop, and data sets as an irregular grid; the engine's variables are left as they were.
#include "graph/sweep_3d.h"

#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"

#include <gtest/gtest.h>

using namespace quorvex;
using namespace quorvex::graph;

namespace {

struct Sweep3D : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    GraphData graph{"g"};

    void declare(const char* line) {
        parser.eval_exp(line, true, false, false);
        ASSERT_FALSE(parser.IsAnError()) << line;
    }
    void ranges(double x_low, double x_high, long x_points, double z_low, double z_high, long z_points) {
        graph.XAxisVar = VariableCopy(engine::Variable("x", {x_low, 0}, {x_high, 0}, x_points));
        graph.ZAxisVar = VariableCopy(engine::Variable("y", {z_low, 0}, {z_high, 0}, z_points));
    }
};

// Stops after a number of cells, as a user's Stop does.
struct StopAfter : engine::Host {
    explicit StopAfter(int cells) : left(cells) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

} // namespace

TEST_F(Sweep3D, AFunctionOfTwoVariablesFillsTheGridAndAFailingCellIsAHole) {
    declare("x = 7");
    declare("f[x, y] = 1/x + y^2");
    graph.Functions.emplace_back("f[x,y]", "1/x + y^2");
    ranges(-1, 1, 5, 0, 2, 3);
    SweepReport report;
    const auto grid = sweep_3d(parser, graph, report);
    ASSERT_TRUE(grid);
    ASSERT_EQ(grid->nx(), 5u);
    ASSERT_EQ(grid->ny(), 3u);
    EXPECT_EQ(grid->x(1), -0.5);
    EXPECT_EQ(grid->y(2), 2);
    EXPECT_DOUBLE_EQ(grid->value(4, 1), 2);    // 1/1 + 1
    EXPECT_DOUBLE_EQ(grid->value(1, 2), 2);    // 1/-0.5 + 4
    for (size_t j = 0; j < 3; ++j) EXPECT_TRUE(Grid3D::is_hole(grid->value(2, j)));
    ASSERT_EQ(report.errors.size(), 3u);
    EXPECT_EQ(report.errors[0].rfind("An error occured at x = 0 and y = 0 : ", 0), 0u) << report.errors[0];
    EXPECT_EQ(parser.get_var_value("x").real(), 7); // the user's x is back
    EXPECT_FALSE(parser.is_variable("y"));           // made for the sweep and gone again
    EXPECT_EQ(parser.equation_count(), 0);
}

TEST_F(Sweep3D, StopEndsTheSweepAtOnceAndLeavesTheEngineAsItWas) {
    declare("x = 3");
    declare("y = 4");
    declare("g[x, y] = x*y");
    graph.Functions.emplace_back("g[x,y]", "x*y");
    ranges(0, 1, 1000, 0, 1, 1000);
    SweepReport report;
    StopAfter stop(50);
    EXPECT_FALSE(sweep_3d(parser, graph, report, &stop));
    EXPECT_TRUE(report.cancelled);
    EXPECT_LE(stop.left, 0);
    EXPECT_GE(stop.left, -1); // not a cell more than it had to
    EXPECT_EQ(parser.get_var_value("x").real(), 3);
    EXPECT_EQ(parser.get_var_value("y").real(), 4);
    EXPECT_EQ(parser.equation_count(), 0);

    graph.Functions.front() = engine::Function("nothing[x,y]", "x");
    EXPECT_FALSE(sweep_3d(parser, graph, report));
    EXPECT_NE(report.errors.back().find("could not be found"), std::string::npos);
}

TEST_F(Sweep3D, DataSetsMakeAnIrregularGridOneLinePerSet) {
    for (const char* z : {"0.5", "2*1"}) {
        StrDataPnts set;
        set.Name = z;
        set.PutZDataPoint(std::string(z));
        for (int p = 0; p < 3; ++p) {
            set.PutXDataPoint(std::to_string(p * p).c_str(), p);
            set.PutYDataPoint((std::to_string(p) + "+" + z).c_str(), p);
        }
        graph.DataSets.push_back(set);
    }
    SweepReport report;
    const auto grid = sweep_3d(parser, graph, report);
    ASSERT_TRUE(grid);
    EXPECT_FALSE(grid->is_regular());
    ASSERT_EQ(grid->nx(), 3u);
    ASSERT_EQ(grid->ny(), 2u);
    EXPECT_EQ(grid->x(2), 4);
    EXPECT_EQ(grid->y(1), 2);
    EXPECT_DOUBLE_EQ(grid->value(2, 0), 2.5);
    EXPECT_DOUBLE_EQ(grid->value(1, 1), 3);
}

TEST_F(Sweep3D, ALabelsValueIsComputedAfreshAndTooLargeASurfaceIsRefused) {
    declare("k = 10");
    declare("h[x, y] = x*k + y");
    graph.Functions.emplace_back("h[x,y]", "x*k + y");
    ranges(0, 1, 3, 0, 1, 3);
    EXPECT_EQ(value_at_3d(parser, graph, 0.5, 0.25), 5.25);
    EXPECT_FALSE(parser.IsAnError());
    declare("r[x, y] = 1/(x - y)");
    graph.Functions.front() = engine::Function("r[x,y]", "1/(x - y)");
    EXPECT_FALSE(value_at_3d(parser, graph, 2, 2));
    EXPECT_FALSE(parser.IsAnError());

    ranges(0, 1, 2000, 0, 1, 1000);
    SweepReport report;
    EXPECT_FALSE(sweep_3d(parser, graph, report));
    ASSERT_EQ(report.errors.size(), 1u);
    EXPECT_NE(report.errors[0].find("a surface holds at most 1000000"), std::string::npos);
    EXPECT_EQ(parser.equation_count(), 0);
}

TEST_F(Sweep3D, DataSetsRefuseAGridBeyondTheSurfaceLimit) {
    // A long first set beside many one-point sets: few points in the file, a vast grid.
    StrDataPnts first;
    first.Name = "a";
    first.PutZDataPoint(std::string("0"));
    for (int p = 0; p < 2000; ++p) first.PutXDataPoint(std::to_string(p).c_str(), p);
    graph.DataSets.push_back(first);
    for (int s = 1; s <= 600; ++s) {
        StrDataPnts set;
        set.Name = "s" + std::to_string(s);
        set.PutZDataPoint(std::to_string(s));
        set.PutXDataPoint("0", 0);
        set.PutYDataPoint("1", 0);
        graph.DataSets.push_back(set);
    }
    SweepReport report;
    EXPECT_FALSE(sweep_3d(parser, graph, report));
    ASSERT_EQ(report.errors.size(), 1u);
    EXPECT_NE(report.errors[0].find("The surface asks for 1202000 points"), std::string::npos) << report.errors[0];

    graph.DataSets.resize(400); // 2000 by 400 is drawn
    report = {};
    EXPECT_TRUE(sweep_3d(parser, graph, report));
    EXPECT_TRUE(report.errors.empty());
}

TEST_F(Sweep3D, DataPointsWithoutAPlaceAreLeftOutOfTheGrid) {
    // The first set's third X is missing and one set has no Z: neither becomes a coordinate of
    // 1e308 (a hole value drawn as a place stretched the picture to nothing, or to NaN).
    const auto add_set = [this](const char* name, const char* z, std::vector<const char*> xs, std::vector<const char*> ys) {
        StrDataPnts set;
        set.Name = name;
        if (z) set.PutZDataPoint(std::string(z));
        for (size_t p = 0; p < xs.size(); ++p)
            if (xs[p]) set.PutXDataPoint(xs[p], static_cast<int>(p));
        for (size_t p = 0; p < ys.size(); ++p) set.PutYDataPoint(ys[p], static_cast<int>(p));
        graph.DataSets.push_back(set);
    };
    add_set("s", "0", {"1", "2", nullptr, "4"}, {"2", "3", "1E+308", "5"});
    add_set("lost", nullptr, {"1", "2", "3", "4"}, {"9", "9", "9", "9"});
    add_set("t", "1/0", {"1"}, {"7"});
    add_set("u", "2", {"1"}, {"2", "3", "1", "6"});
    SweepReport report;
    const auto grid = sweep_3d(parser, graph, report);
    ASSERT_TRUE(grid);
    ASSERT_EQ(grid->nx(), 3u);
    ASSERT_EQ(grid->ny(), 2u);
    EXPECT_EQ(grid->x(2), 4);
    EXPECT_EQ(grid->y(1), 2);
    EXPECT_DOUBLE_EQ(grid->value(2, 0), 5);
    EXPECT_DOUBLE_EQ(grid->value(2, 1), 6);
}

TEST_F(Sweep3D, TheMiddleOfASymmetricRangeIsZeroNotTheWalksNoise) {
    // Thirty steps of 2/3 from -10 reach 0 only within binary noise; as on a curve, a value within
    // the zero precision is 0, so that a label there reads (0 , ...).
    declare("m[x, y] = x*x + y*y");
    graph.Functions.emplace_back("m[x,y]", "x*x + y*y");
    ranges(-10, 10, 31, -10, 10, 31);
    SweepReport report;
    const auto grid = sweep_3d(parser, graph, report);
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->x(15), 0);
    EXPECT_EQ(grid->y(15), 0);
    EXPECT_EQ(grid->value(15, 15), 0);
    EXPECT_NEAR(grid->x(16), 2.0 / 3, 1e-12);
}
