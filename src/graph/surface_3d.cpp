#include "surface_3d.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quorvex::graph {

namespace {

bool cell_drawn(const Grid3D& grid, Cell c) {
    return !Grid3D::is_hole(grid.value(c.i, c.j)) && !Grid3D::is_hole(grid.value(c.i + 1, c.j)) &&
           !Grid3D::is_hole(grid.value(c.i + 1, c.j + 1)) && !Grid3D::is_hole(grid.value(c.i, c.j + 1));
}

Vec3 grid_point(const Grid3D& grid, size_t i, size_t j) { return {grid.x(i), grid.y(j), grid.value(i, j)}; }

// The two triangles of a cell, split on the diagonal from (i, j) to (i+1, j+1).
std::array<Triangle3D, 2> triangles(const Grid3D& grid, Cell c) {
    const Vec3 p00 = grid_point(grid, c.i, c.j), p10 = grid_point(grid, c.i + 1, c.j);
    const Vec3 p11 = grid_point(grid, c.i + 1, c.j + 1), p01 = grid_point(grid, c.i, c.j + 1);
    return {{{p00, p10, p11}, {p00, p11, p01}}};
}

Vec3 between(const Vec3& a, const Vec3& b, double level) {
    const double t = (level - a.z) / (b.z - a.z);
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), level};
}

// Keeps the part of a convex polygon on one side of a level: above it when `keep_above`.
std::vector<Vec3> clip(const std::vector<Vec3>& polygon, double level, bool keep_above) {
    std::vector<Vec3> out;
    const auto inside = [&](const Vec3& p) { return keep_above ? p.z >= level : p.z <= level; };
    for (size_t k = 0; k < polygon.size(); ++k) {
        const Vec3& a = polygon[k];
        const Vec3& b = polygon[(k + 1) % polygon.size()];
        if (inside(a)) out.push_back(a);
        if (inside(a) != inside(b)) out.push_back(between(a, b, level));
    }
    return out;
}

bool inside_polygon(const std::vector<ScreenPoint>& polygon, double x, double y) {
    bool inside = false;
    for (size_t a = 0, b = polygon.size() - 1; a < polygon.size(); b = a++) {
        const ScreenPoint& p = polygon[a];
        const ScreenPoint& q = polygon[b];
        if ((p.y > y) != (q.y > y) && x < (q.x - p.x) * (y - p.y) / (q.y - p.y) + p.x) inside = !inside;
    }
    return inside;
}

} // namespace

std::vector<Cell> painter_order(const Grid3D& grid, const Projection3D& projection) {
    std::vector<std::pair<double, Cell>> keyed;
    if (grid.nx() < 2 || grid.ny() < 2) return {};
    keyed.reserve((grid.nx() - 1) * (grid.ny() - 1));
    for (size_t i = 0; i + 1 < grid.nx(); ++i) {
        for (size_t j = 0; j + 1 < grid.ny(); ++j) {
            const Cell cell{i, j};
            if (!cell_drawn(grid, cell)) continue;
            const Vec3 centre = projection.normalized({(grid.x(i) + grid.x(i + 1)) / 2, (grid.y(j) + grid.y(j + 1)) / 2, 0});
            keyed.emplace_back(projection.floor_distance(centre.x, centre.y), cell);
        }
    }
    // Over a floor, a line of sight meets the cells in the order of their distance from the
    // eye's foot, so the farthest go first.
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<Cell> order;
    order.reserve(keyed.size());
    for (const auto& each : keyed) order.push_back(each.second);
    return order;
}

std::vector<double> contour_levels(double low, double high, int wanted) {
    std::vector<double> levels;
    if (!(high > low) || wanted < 1 || !std::isfinite(high - low)) return levels;
    const double rough = (high - low) / wanted;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    // The round step nearest to the rough one, by ratio.
    double step = power;
    for (double factor : {2.0, 5.0, 10.0})
        if (std::abs(std::log(factor * power / rough)) < std::abs(std::log(step / rough))) step = factor * power;
    for (double k = std::floor(low / step) + 1; k * step < high; ++k) {
        // Round values stay round: a level near zero is zero.
        const double level = std::abs(k) < 0.5 ? 0.0 : k * step;
        if (level > low) levels.push_back(level);
        if (levels.size() > static_cast<size_t>(wanted) * 3) break;
    }
    return levels;
}

void contour_pieces(const Triangle3D& triangle, const std::vector<double>& levels, std::vector<Segment3D>& out) {
    const double low = std::min({triangle[0].z, triangle[1].z, triangle[2].z});
    const double high = std::max({triangle[0].z, triangle[1].z, triangle[2].z});
    const auto first = std::upper_bound(levels.begin(), levels.end(), low);
    for (auto at = first; at != levels.end() && *at < high; ++at) {
        const double level = *at;
        Vec3 crossing[2];
        int found = 0;
        for (size_t k = 0; k < 3 && found < 2; ++k) {
            const Vec3& a = triangle[k];
            const Vec3& b = triangle[(k + 1) % 3];
            if ((a.z < level) != (b.z < level)) crossing[found++] = between(a, b, level);
        }
        if (found == 2) out.push_back({crossing[0], crossing[1], static_cast<size_t>(at - levels.begin())});
    }
}

std::vector<Segment3D> contour_segments(const Grid3D& grid, Cell cell, const std::vector<double>& levels) {
    std::vector<Segment3D> segments;
    if (!cell_drawn(grid, cell)) return segments;
    for (const auto& triangle : triangles(grid, cell)) contour_pieces(triangle, levels, segments);
    return segments;
}

size_t band_of(double value, const std::vector<double>& levels) {
    return static_cast<size_t>(std::upper_bound(levels.begin(), levels.end(), value) - levels.begin());
}

void zone_pieces(const Triangle3D& triangle, const std::vector<double>& levels, std::vector<BandPolygon>& out) {
    const std::vector<Vec3> whole(triangle.begin(), triangle.end());
    const double low = std::min({triangle[0].z, triangle[1].z, triangle[2].z});
    const double high = std::max({triangle[0].z, triangle[1].z, triangle[2].z});
    const size_t first = band_of(low, levels);
    const size_t last = band_of(high, levels);
    if (first == last) {
        out.push_back({whole, first});
        return;
    }
    for (size_t band = first; band <= last; ++band) {
        std::vector<Vec3> piece = whole;
        if (band > 0) piece = clip(piece, levels[band - 1], true);
        if (band < levels.size() && piece.size() >= 3) piece = clip(piece, levels[band], false);
        if (piece.size() >= 3) out.push_back({std::move(piece), band});
    }
}

std::vector<BandPolygon> zone_polygons(const Grid3D& grid, Cell cell, const std::vector<double>& levels) {
    std::vector<BandPolygon> pieces;
    if (!cell_drawn(grid, cell)) return pieces;
    for (const auto& triangle : triangles(grid, cell)) zone_pieces(triangle, levels, pieces);
    return pieces;
}

std::vector<Vec3> cell_corners(const Grid3D& grid, Cell c) {
    return {grid_point(grid, c.i, c.j), grid_point(grid, c.i + 1, c.j), grid_point(grid, c.i + 1, c.j + 1),
            grid_point(grid, c.i, c.j + 1)};
}

std::array<Triangle3D, 2> cell_triangles(const Grid3D& grid, Cell cell, const Projection3D& projection) {
    auto pair = triangles(grid, cell);
    const auto distance = [&projection](const Triangle3D& t) {
        const Vec3 centre = projection.normalized({(t[0].x + t[1].x + t[2].x) / 3, (t[0].y + t[1].y + t[2].y) / 3, 0});
        return projection.floor_distance(centre.x, centre.y);
    };
    if (distance(pair[1]) > distance(pair[0])) std::swap(pair[0], pair[1]);
    return pair;
}

std::optional<GridPick> pick_grid_point(const Grid3D& grid, const Projection3D& projection, double x, double y) {
    const std::vector<Cell> order = painter_order(grid, projection);
    // The nearest cell under the pixel is the one drawn last.
    for (auto cell = order.rbegin(); cell != order.rend(); ++cell) {
        std::vector<ScreenPoint> corners;
        for (const Vec3& corner : cell_corners(grid, *cell)) corners.push_back(projection.project(corner));
        if (!inside_polygon(corners, x, y)) continue;
        const size_t is[] = {cell->i, cell->i + 1, cell->i + 1, cell->i};
        const size_t js[] = {cell->j, cell->j, cell->j + 1, cell->j + 1};
        size_t nearest = 0;
        double best = -1;
        for (size_t k = 0; k < 4; ++k) {
            const double d = std::hypot(corners[k].x - x, corners[k].y - y);
            if (best < 0 || d < best) {
                best = d;
                nearest = k;
            }
        }
        return GridPick{is[nearest], js[nearest], grid_point(grid, is[nearest], js[nearest])};
    }
    return std::nullopt;
}

} // namespace quorvex::graph
