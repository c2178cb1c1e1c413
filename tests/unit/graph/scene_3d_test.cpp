// The 3-D picture as a list of things to draw: titles and legend, zones coloured by value, holes
// left open, the forms' pieces.
#include "graph/scene_3d.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace quorvex::graph;

namespace {

Grid3D plane(size_t n, double value) {
    Grid3D grid = Grid3D::regular(n, n, 0, 0, 1, 1);
    for (size_t i = 0; i < n; ++i)
        for (size_t j = 0; j < n; ++j) grid.set(i, j, value + 0.001 * static_cast<double>(i));
    return grid;
}

bool covers(const Primitive3D& p, double x, double y) {
    bool inside = false;
    for (size_t a = 0, b = p.count - 1; a < p.count; b = a++)
        if ((p.y(a) > y) != (p.y(b) > y) && x < (p.x(b) - p.x(a)) * (y - p.y(a)) / (p.y(b) - p.y(a)) + p.x(a))
            inside = !inside;
    return inside;
}

} // namespace

TEST(Scene3D, TitlesLegendAndZonesColouredByValue) {
    Style3D style;
    style.header = "Bowl";
    style.footer = "made by hand";
    style.x_title = "x";
    Grid3D slope = Grid3D::regular(5, 5, 0, 0, 1, 1);
    for (size_t i = 0; i < 5; ++i)
        for (size_t j = 0; j < 5; ++j) slope.set(i, j, static_cast<double>(i));
    const Scene3D scene = build_scene_3d(slope, style, View3D{}, 800, 600);
    std::vector<std::string> texts;
    for (const Primitive3D& p : scene.items)
        if (p.kind == Primitive3D::Kind::Text) texts.push_back(p.text);
    for (const char* wanted : {"Bowl", "made by hand", "x", "0", "4"})
        EXPECT_NE(std::find(texts.begin(), texts.end(), wanted), texts.end()) << wanted;
    // Levels 0.5 .. 3.5 make eight bands, the highest listed first.
    ASSERT_EQ(scene.legend.size(), 8u);
    EXPECT_EQ(scene.legend.front().text, "> 3.5");
    EXPECT_EQ(scene.legend.back().text, "< 0.5");
    EXPECT_EQ(scene.legend[1].text, "3 to 3.5");
    EXPECT_EQ(scene.legend.back().color, zone_color(0, 8));
    EXPECT_NE(zone_color(0, 8), zone_color(7, 8));

    // A flat surface at one value is one zone's colour all over.
    Style3D zones_only;
    zones_only.mesh = zones_only.shade = zones_only.contour = false;
    zones_only.grid_lines = false;
    Grid3D flat = plane(6, 1.25);
    flat.set(0, 0, 0); // a lower corner, so the levels span the surface
    flat.set(5, 5, 2);
    const Scene3D coloured = build_scene_3d(flat, zones_only, View3D{}, 640, 480);
    const std::vector<double> levels{0.2, 0.4, 0.6, 0.8, 1.0, 1.2, 1.4, 1.6, 1.8};
    const TColor expected = zone_color(6, levels.size() + 1); // 1.2 to 1.4
    size_t seen = 0;
    for (const Primitive3D& p : coloured.items)
        if (p.kind == Primitive3D::Kind::Polygon && !p.fill_none && p.fill == expected) ++seen;
    EXPECT_GT(seen, 30u); // most of the 50 triangles lie at 1.25
}

TEST(Scene3D, AHoleIsLeftOpenAndEachFormDrawsItsPieces) {
    Style3D style;
    style.header.clear();
    Grid3D grid = plane(5, 0);
    grid.set(2, 2, k_grid_hole);
    View3D top; // straight down: through the hole there is only the data area
    top.XRotation = 90;
    top.ZRotation = 0;
    const Scene3D scene = build_scene_3d(grid, style, top, 600, 600);
    const Box3D box = box_of_grid(grid);
    EXPECT_EQ(box.x_max, 4);
    // The surface's filled pieces lie around the hole, the middle of what they cover, none over it.
    const auto surface_begin = std::find_if(scene.items.begin() + 2, scene.items.end(), [](const Primitive3D& p) {
        return p.kind == Primitive3D::Kind::Polygon && !p.fill_none;
    });
    double min_x = 1e9, max_x = -1e9, min_y = 1e9, max_y = -1e9;
    for (auto p = surface_begin; p != scene.items.end(); ++p) {
        if (p->kind != Primitive3D::Kind::Polygon || p->fill_none) continue;
        for (size_t k = 0; k < p->count; ++k) {
            min_x = std::min(min_x, p->x(k));
            max_x = std::max(max_x, p->x(k));
            min_y = std::min(min_y, p->y(k));
            max_y = std::max(max_y, p->y(k));
        }
    }
    ASSERT_LT(min_x, max_x);
    const double hole_x = (min_x + max_x) / 2;
    const double hole_y = (min_y + max_y) / 2;
    for (auto p = surface_begin; p != scene.items.end(); ++p) {
        if (p->kind == Primitive3D::Kind::Polygon && !p->fill_none) {
            EXPECT_FALSE(covers(*p, hole_x, hole_y));
        }
    }

    // Bars: three faces a point, none at the hole; a mesh alone fills nothing of the surface.
    const auto filled_count = [](const Scene3D& picture) {
        return std::count_if(picture.items.begin(), picture.items.end(), [](const Primitive3D& p) {
            return p.kind == Primitive3D::Kind::Polygon && !p.fill_none;
        });
    };
    Style3D bars = style;
    bars.bars = true;
    bars.zone = false;
    EXPECT_EQ(filled_count(build_scene_3d(grid, bars, View3D{}, 600, 600)), 2 + 3 * 24); // and the two rectangles
    Style3D mesh = style;
    mesh.shade = mesh.zone = mesh.contour = false;
    EXPECT_EQ(filled_count(build_scene_3d(grid, mesh, View3D{}, 600, 600)), 2);
}

TEST(Scene3D, ARangeAcrossMostOfTheDoublesIsStillDrawnWithFinitePoints) {
    // X from -9e307 to 9e307: its width is beyond a double, and NaN points made the painter
    // hang. Every form and label is placed, in finite pixels, inside the picture.
    Grid3D grid = Grid3D::irregular({-9e307, 0, 9e307}, {0, 1e307, 1.7e308});
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 3; ++j) grid.set(i, j, static_cast<double>(i + j) * 8e307 - 1.5e308);
    for (const bool bars : {false, true}) {
        Style3D style;
        style.bars = bars;
        style.project_floor = style.project_ceiling = true;
        const Scene3D scene = build_scene_3d(grid, style, View3D{}, 600, 400, {}, {{"label", false, 2, 1, 0, 0}});
        size_t filled = 0;
        for (const Primitive3D& item : scene.items) {
            for (size_t k = 0; k < item.count; ++k) {
                ASSERT_TRUE(std::isfinite(item.x(k)) && std::isfinite(item.y(k)));
                EXPECT_GT(item.x(k), -1) << item.text;
                EXPECT_LT(item.x(k), 601) << item.text;
            }
            if (item.kind == Primitive3D::Kind::Polygon && !item.fill_none) ++filled;
        }
        EXPECT_GT(filled, 8u); // the surface or its bars, not only the frame
    }
}
