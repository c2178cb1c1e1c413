// The 3-D surface's geometry without a painter: where the view puts points, the order that hides
// what lies behind, contour lines and zones by level, holes, picking and smoothing.
#include "graph/surface_3d.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>

using namespace quorvex::graph;

namespace {

Grid3D surface(size_t n, double low, double high, const std::function<double(double, double)>& f) {
    const double step = (high - low) / static_cast<double>(n - 1);
    Grid3D grid = Grid3D::regular(n, n, low, low, step, step);
    for (size_t i = 0; i < n; ++i)
        for (size_t j = 0; j < n; ++j) grid.set(i, j, f(grid.x(i), grid.y(j)));
    return grid;
}

Box3D box_of(const Grid3D& grid) {
    const auto range = grid.value_range();
    return {grid.x(0), grid.x(grid.nx() - 1), grid.y(0), grid.y(grid.ny() - 1), range->first, range->second};
}

double signed_area(const std::vector<Vec3>& polygon) {
    double twice = 0;
    for (size_t k = 0; k < polygon.size(); ++k) {
        const Vec3& a = polygon[k];
        const Vec3& b = polygon[(k + 1) % polygon.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2;
}

} // namespace

TEST(Surface3D, TheDefaultViewShowsABowlsRimAboveItsCentreAndKeepsThePictureInside) {
    const Grid3D bowl = surface(21, -2, 2, [](double x, double y) { return x * x + y * y; });
    const Projection3D projection(View3D{}, box_of(bowl), 800, 600);
    const ScreenPoint centre = projection.project({0, 0, 0});
    for (double corner_x : {-2.0, 2.0}) {
        for (double corner_y : {-2.0, 2.0}) {
            const ScreenPoint rim = projection.project({corner_x, corner_y, 8});
            EXPECT_LT(rim.y, centre.y); // higher on the screen
            const ScreenPoint floor = projection.project({corner_x, corner_y, 0});
            EXPECT_GT(floor.y, rim.y);
            for (const ScreenPoint& p : {rim, floor}) {
                EXPECT_GT(p.x, 0);
                EXPECT_LT(p.x, 800);
                EXPECT_GT(p.y, 0);
                EXPECT_LT(p.y, 600);
            }
        }
    }
    // A larger scale magnifies about the middle; a shift moves the picture.
    View3D bigger;
    bigger.Scale = 2;
    const ScreenPoint far = Projection3D(bigger, box_of(bowl), 800, 600).project({2, 2, 8});
    const ScreenPoint near = projection.project({2, 2, 8});
    EXPECT_NEAR(far.x - 400, 2 * (near.x - 400), 1e-9);
    View3D shifted;
    shifted.XTranslate = 10;
    EXPECT_NEAR(Projection3D(shifted, box_of(bowl), 800, 600).project({2, 2, 8}).x, near.x + 80, 1e-9);
}

TEST(Surface3D, InPainterOrderTheCellDrawnLastOnAPixelIsTheNearestThereAtEveryRotation) {
    const Grid3D hills = surface(14, -3, 3, [](double x, double y) { return std::sin(x) * std::cos(y) * 2 + 0.3 * x; });
    for (const auto& [depth, elevation] : {std::pair{20.0, 25.0}, std::pair{1e6, 60.0}, std::pair{0.0, -20.0}}) {
        for (double turn = 0; turn < 360; turn += 35) {
            View3D view;
            view.XRotation = elevation;
            view.ZRotation = turn;
            view.PerspectiveDepth = depth;
            const Projection3D projection(view, box_of(hills), 160, 120);
            // Each pixel remembers the depth of the last triangle drawn over it and the nearest.
            std::map<std::pair<int, int>, std::pair<double, double>> pixels;
            size_t checked = 0, wrong = 0;
            for (const Cell& cell : painter_order(hills, projection)) {
                for (const auto& triangle : cell_triangles(hills, cell, projection)) {
                    ScreenPoint p[3];
                    for (int k = 0; k < 3; ++k) p[k] = projection.project(triangle[k]);
                    const double area = (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y);
                    if (std::abs(area) < 1e-9) continue;
                    for (int y = 0; y < 120; ++y) {
                        for (int x = 0; x < 160; ++x) {
                            const double px = x + 0.5, py = y + 0.5;
                            const double b1 = ((px - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (py - p[0].y)) / area;
                            const double b2 = ((p[1].x - p[0].x) * (py - p[0].y) - (px - p[0].x) * (p[1].y - p[0].y)) / area;
                            const double b0 = 1 - b1 - b2;
                            // Away from the edges, where neighbours meet and either may win.
                            if (b0 < 0.02 || b1 < 0.02 || b2 < 0.02) continue;
                            const double depth = b0 * p[0].depth + b1 * p[1].depth + b2 * p[2].depth;
                            auto [it, fresh] = pixels.try_emplace({x, y}, depth, depth);
                            it->second.first = depth;
                            if (!fresh) it->second.second = std::min(it->second.second, depth);
                        }
                    }
                }
            }
            for (const auto& [pixel, depths] : pixels) {
                ++checked;
                if (depths.first > depths.second + 1e-3) ++wrong;
            }
            ASSERT_GT(checked, 1000u);
            EXPECT_EQ(wrong, 0u) << "elevation " << elevation << ", turn " << turn;
        }
    }
}

TEST(Surface3D, ContoursOfAParaboloidLieOnItsCirclesAtRoundLevels) {
    EXPECT_EQ(contour_levels(0, 1, 10).size(), 9u);
    EXPECT_DOUBLE_EQ(contour_levels(0, 1, 10)[4], 0.5);
    const std::vector<double> wide = contour_levels(-3.2, 7.9, 10);
    EXPECT_EQ(wide.front(), -3);
    EXPECT_EQ(wide.back(), 7);
    EXPECT_EQ(contour_levels(0, 1000, 4), (std::vector<double>{200, 400, 600, 800}));
    EXPECT_TRUE(contour_levels(2, 2).empty());

    const Grid3D bowl = surface(41, -2, 2, [](double x, double y) { return x * x + y * y; });
    const std::vector<double> levels = contour_levels(0, 8, 8);
    ASSERT_EQ(levels.size(), 7u); // 1 to 7
    std::vector<double> length(levels.size(), 0);
    for (size_t i = 0; i + 1 < bowl.nx(); ++i) {
        for (size_t j = 0; j + 1 < bowl.ny(); ++j) {
            for (const Segment3D& s : contour_segments(bowl, {i, j}, levels)) {
                const double radius = std::sqrt(levels[s.level]);
                EXPECT_NEAR(std::hypot(s.a.x, s.a.y), radius, 0.01);
                EXPECT_NEAR(std::hypot(s.b.x, s.b.y), radius, 0.01);
                EXPECT_EQ(s.a.z, levels[s.level]);
                length[s.level] += std::hypot(s.a.x - s.b.x, s.a.y - s.b.y);
            }
        }
    }
    // Circles inside the square are whole: 2 pi r long.
    for (size_t l = 0; l < 4; ++l) EXPECT_NEAR(length[l], 2 * M_PI * std::sqrt(levels[l]), 0.02) << l;
}

TEST(Surface3D, ZonesCutEachCellIntoBandsThatCoverItExactly) {
    const Grid3D slope = surface(6, 0, 5, [](double x, double y) { return x + 0.5 * y; });
    const std::vector<double> levels{1, 2.5, 4};
    for (size_t i = 0; i + 1 < slope.nx(); ++i) {
        for (size_t j = 0; j + 1 < slope.ny(); ++j) {
            double area = 0;
            for (const BandPolygon& piece : zone_polygons(slope, {i, j}, levels)) {
                const double low = piece.band == 0 ? -1e9 : levels[piece.band - 1];
                const double high = piece.band == levels.size() ? 1e9 : levels[piece.band];
                for (const Vec3& p : piece.points) {
                    EXPECT_GE(p.z, low - 1e-12);
                    EXPECT_LE(p.z, high + 1e-12);
                    EXPECT_NEAR(p.z, p.x + 0.5 * p.y, 1e-12); // on the plane
                }
                area += std::abs(signed_area(piece.points));
            }
            EXPECT_NEAR(area, 1.0, 1e-12) << i << "," << j;
        }
    }
    EXPECT_EQ(band_of(0.5, levels), 0u);
    EXPECT_EQ(band_of(3, levels), 2u);
    EXPECT_EQ(band_of(9, levels), 3u);
}

TEST(Surface3D, AHoleOpensTheCellsAroundItAndPickingFindsTheGridPointShown) {
    Grid3D dome = surface(9, -1, 1, [](double x, double y) { return 2 - x * x - y * y; });
    const Projection3D projection(View3D{}, box_of(dome), 640, 480);
    EXPECT_EQ(painter_order(dome, projection).size(), 64u);
    // Grid points on the side that faces the eye (it looks from +x, -y), clicked a little inside
    // the cell that follows each.
    for (size_t i = 4; i <= 6; ++i) {
        for (size_t j = 2; j <= 4; ++j) {
            const ScreenPoint shown = projection.project({dome.x(i), dome.y(j), dome.value(i, j)});
            double cx = 0, cy = 0;
            for (const Vec3& corner : cell_corners(dome, {i, j})) {
                cx += projection.project(corner).x / 4;
                cy += projection.project(corner).y / 4;
            }
            const auto picked = pick_grid_point(dome, projection, shown.x + 0.2 * (cx - shown.x), shown.y + 0.2 * (cy - shown.y));
            ASSERT_TRUE(picked) << i << "," << j;
            EXPECT_EQ(picked->i, i);
            EXPECT_EQ(picked->j, j);
            EXPECT_EQ(picked->point.z, dome.value(i, j));
        }
    }
    EXPECT_FALSE(pick_grid_point(dome, projection, 2, 2)); // the corner of the picture is empty

    dome.set(4, 4, k_grid_hole);
    const auto order = painter_order(dome, projection);
    EXPECT_EQ(order.size(), 60u);
    for (const Cell& cell : order) EXPECT_FALSE(cell.i >= 3 && cell.i <= 4 && cell.j >= 3 && cell.j <= 4);
    EXPECT_TRUE(contour_segments(dome, {3, 3}, {1.5}).empty());
    EXPECT_TRUE(zone_polygons(dome, {4, 3}, {1.5}).empty());
    const ScreenPoint hole = projection.project({dome.x(4), dome.y(4), 2});
    const auto near_hole = pick_grid_point(dome, projection, hole.x, hole.y);
    EXPECT_TRUE(!near_hole || !(near_hole->i == 4 && near_hole->j == 4));
}

TEST(Surface3D, SmoothingPullsASpikeTowardsItsNeighboursAndLeavesHolesAlone) {
    Grid3D grid = Grid3D::regular(3, 3, 0, 0, 1, 1);
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 3; ++j) grid.set(i, j, 0);
    grid.set(1, 1, 8);
    grid.set(0, 0, k_grid_hole);
    Grid3D unchanged = grid;
    unchanged.smooth(0);
    EXPECT_EQ(unchanged.value(1, 1), 8);
    grid.smooth(0.5);
    EXPECT_DOUBLE_EQ(grid.value(1, 1), 4);   // halfway to its neighbours' mean 0
    EXPECT_DOUBLE_EQ(grid.value(0, 1), 2); // its neighbours 8 and 0, the hole left out: halfway from 0 to 4
    EXPECT_DOUBLE_EQ(grid.value(2, 2), 0); // the spike is no neighbour of this corner
    EXPECT_TRUE(Grid3D::is_hole(grid.value(0, 0)));
    EXPECT_EQ(grid.value_range()->second, 4);
    EXPECT_FALSE(Grid3D::regular(2, 2, 0, 0, 1, 1).value_range());
}
