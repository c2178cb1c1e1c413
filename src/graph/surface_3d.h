#pragma once
#include "grid_3d.h"
#include "view_3d.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace quorvex::graph {

// The geometry of a surface over a grid, in data coordinates: which cells are drawn and in what
// order, contour lines and zones by level, and which grid point lies under a pixel. A cell is the
// quadrilateral between grid points (i, j) and (i+1, j+1); it is drawn as two triangles split on
// that diagonal, which is what contours and zones follow. A cell with a hole at a corner is left
// open.

struct Cell {
    size_t i = 0, j = 0;
};

// The cells that are drawn, farthest from the eye first: drawn in this order, nearer cells cover
// the ones behind them at every rotation.
std::vector<Cell> painter_order(const Grid3D& grid, const Projection3D& projection);

// Round levels strictly between `low` and `high`, about `wanted` of them, on a step of 1, 2 or 5
// times a power of ten.
std::vector<double> contour_levels(double low, double high, int wanted = 10);

struct Segment3D {
    Vec3 a, b;
    size_t level = 0; // index into the levels
};
// Where the levels cross a cell; each triangle gives at most one segment per level.
std::vector<Segment3D> contour_segments(const Grid3D& grid, Cell cell, const std::vector<double>& levels);

// A piece of a cell between two neighbouring levels. Band 0 lies below the first level, band
// levels.size() above the last.
struct BandPolygon {
    std::vector<Vec3> points;
    size_t band = 0;
};
std::vector<BandPolygon> zone_polygons(const Grid3D& grid, Cell cell, const std::vector<double>& levels);
// The same for one triangle, to be drawn with it.
using Triangle3D = std::array<Vec3, 3>;
void contour_pieces(const Triangle3D& triangle, const std::vector<double>& levels, std::vector<Segment3D>& out);
void zone_pieces(const Triangle3D& triangle, const std::vector<double>& levels, std::vector<BandPolygon>& out);

// The band a value belongs to.
size_t band_of(double value, const std::vector<double>& levels);

// The corners of a cell in data coordinates, in drawing order.
std::vector<Vec3> cell_corners(const Grid3D& grid, Cell cell);
// The cell's two triangles, the farther first: a cell seen at a slant may fold over its diagonal.
std::array<Triangle3D, 2> cell_triangles(const Grid3D& grid, Cell cell, const Projection3D& projection);

// The grid point shown nearest to a pixel on the surface in front: none when the pixel misses
// the surface.
struct GridPick {
    size_t i = 0, j = 0;
    Vec3 point;
};
std::optional<GridPick> pick_grid_point(const Grid3D& grid, const Projection3D& projection, double x, double y);

} // namespace quorvex::graph
