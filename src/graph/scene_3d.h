#pragma once
#include "grid_3d.h"
#include "view_3d.h"

#include "store/ini_file.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quorvex::graph {

using store::TColor;

// What a 3-D picture shows and in which colours (0x00BBGGRR), read from a graph by the caller.
struct Style3D {
    bool mesh = true, shade = true, contour = true, zone = true, hidden = false;
    bool project_floor = false, project_ceiling = false, bars = false;
    bool grid_lines = true;
    TColor background = 0x808040, foreground = 0, data_area = 0xFFFFFF;
    TColor header_background = 0, header_foreground = 0xFFFFFF;
    TColor footer_background = 0, footer_foreground = 0xFFFFFF;
    TColor legend_background = 0xFFFFFF, legend_foreground = 0;
    TColor mesh_bottom = 0, mesh_top = 0, surface_bottom = 0, surface_top = 0xFFFFFF;
    std::string header, footer;
    // The chart's axes: X, its Y (the graph's Z variable) and its Z (the value).
    std::string x_title, y_title, z_title;
};

// The size of text as the painter will draw it, so that the scene leaves room for it.
struct TextMetrics {
    double line_height = 16;
    double char_width = 7;
};

// One thing to draw, in pixels. A polygon is filled (unless `fill_none`) and outlined (unless
// `pen_none`); a line is a segment from the first point to the second; a text is written at the
// first point with its alignment, in `pen`, on a framed box of `fill` unless `fill_none`.
struct Primitive3D {
    enum class Kind : std::uint8_t { Polygon, Line, Text };
    enum Align : std::uint8_t { Left = 1, Right = 2, HCenter = 4, Top = 8, Bottom = 16, VCenter = 32 };
    Kind kind = Kind::Polygon;
    // Texts are plain unless they carry a box.
    std::uint8_t count = 0; // points used
    std::uint8_t align = Left | Top;
    bool fill_none = false, pen_none = false;
    std::array<double, 12> xy{}; // up to six points
    TColor fill = 0, pen = 0;
    std::string text;

    double x(size_t k) const { return xy[2 * k]; }
    double y(size_t k) const { return xy[2 * k + 1]; }
};

// A level of the zones' legend: the band below `level` in the first entry, above the last level
// in the last.
struct LegendEntry {
    std::string text;
    TColor color = 0;
};

// A point label at a grid point, or a note at a place in pixels of the picture.
struct SceneText3D {
    std::string text;
    bool note = false;
    size_t i = 0, j = 0;
    double x = 0, y = 0;
};

struct Scene3D {
    std::vector<Primitive3D> items; // in drawing order
    std::vector<LegendEntry> legend;
    double plot_left = 0, plot_top = 0, plot_width = 0, plot_height = 0; // where the box is drawn
};

// The colour of zone band `band` of `bands`, from blue at the bottom to red at the top.
TColor zone_color(size_t band, size_t bands);

// The picture of a grid: the box with its walls, grid lines and axes, the projections, the
// surface (or the bars) in an order that hides what lies behind, the contours, the zones with
// their legend, the header and footer. Nothing is drawn of an empty grid but the frame.
Scene3D build_scene_3d(const Grid3D& grid, const Style3D& style, const View3D& view, double width, double height,
                       const TextMetrics& metrics = {}, const std::vector<SceneText3D>& texts = {});

// The plot area of a picture of that size, the same rectangle the scene fits the box into.
struct PlotArea {
    double left, top, width, height;
};
PlotArea plot_area_3d(const Grid3D& grid, const Style3D& style, double width, double height,
                      const TextMetrics& metrics = {});

// The box a grid is drawn in: its coordinates and the range of its values (a flat surface gets a
// little height).
Box3D box_of_grid(const Grid3D& grid);

} // namespace quorvex::graph
