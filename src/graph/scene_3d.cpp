#include "scene_3d.h"

#include "surface_3d.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace quorvex::graph {

namespace {

int channel(TColor c, int shift) { return static_cast<int>((c >> shift) & 0xFF); }

TColor rgb(double r, double g, double b) {
    const auto clamp = [](double v) { return static_cast<TColor>(std::clamp(static_cast<int>(std::lround(v)), 0, 255)); };
    return clamp(r) | (clamp(g) << 8) | (clamp(b) << 16);
}

TColor mix(TColor a, TColor b, double t) {
    t = std::clamp(t, 0.0, 1.0);
    return rgb(channel(a, 0) + t * (channel(b, 0) - channel(a, 0)), channel(a, 8) + t * (channel(b, 8) - channel(a, 8)),
               channel(a, 16) + t * (channel(b, 16) - channel(a, 16)));
}

TColor lit(TColor c, double light) {
    return rgb(channel(c, 0) * light, channel(c, 8) * light, channel(c, 16) * light);
}

std::string number_text(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", std::abs(value) < 1e-12 ? 0.0 : value);
    return text;
}

// Round values within [low, high], ends included, about `wanted` of them.
std::vector<double> axis_ticks(double low, double high, int wanted = 5) {
    std::vector<double> ticks;
    if (!(high > low)) return {low};
    const double rough = (high - low) / wanted;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    double step = power;
    for (double factor : {2.0, 5.0, 10.0})
        if (std::abs(std::log(factor * power / rough)) < std::abs(std::log(step / rough))) step = factor * power;
    for (double k = std::ceil(low / step - 1e-9); k * step <= high + step * 1e-9; ++k)
        ticks.push_back(std::abs(k) < 0.5 ? 0.0 : k * step);
    return ticks;
}

class Painter {
public:
    Painter(Scene3D& scene, const Projection3D& projection, double left, double top)
        : m_scene(scene), m_projection(projection), m_left(left), m_top(top) {}

    Primitive3D& add(Primitive3D::Kind kind) {
        m_scene.items.emplace_back();
        m_scene.items.back().kind = kind;
        return m_scene.items.back();
    }
    void point(Primitive3D& p, const Vec3& data) {
        const ScreenPoint s = m_projection.project(data);
        p.xy[2 * p.count] = s.x + m_left;
        p.xy[2 * p.count + 1] = s.y + m_top;
        ++p.count;
    }
    void polygon(const Vec3* points, size_t count, TColor fill, bool filled, TColor pen, bool outlined) {
        Primitive3D& p = add(Primitive3D::Kind::Polygon);
        for (size_t k = 0; k < count && k < 6; ++k) point(p, points[k]);
        p.fill = fill;
        p.fill_none = !filled;
        p.pen = pen;
        p.pen_none = !outlined;
    }
    void line(const Vec3& a, const Vec3& b, TColor pen) {
        Primitive3D& p = add(Primitive3D::Kind::Line);
        point(p, a);
        point(p, b);
        p.pen = pen;
    }
    // A line in pixels, as a tick mark is.
    void screen_line(double x1, double y1, double x2, double y2, TColor pen) {
        Primitive3D& p = add(Primitive3D::Kind::Line);
        p.xy[0] = x1;
        p.xy[1] = y1;
        p.xy[2] = x2;
        p.xy[3] = y2;
        p.count = 2;
        p.pen = pen;
    }
    void text(double x, double y, std::string text, std::uint8_t align, TColor color) {
        Primitive3D& p = add(Primitive3D::Kind::Text);
        p.fill_none = true;
        p.xy[0] = x;
        p.xy[1] = y;
        p.count = 1;
        p.align = align;
        p.pen = color;
        p.text = std::move(text);
    }
    void rectangle(double x, double y, double w, double h, TColor fill) {
        Primitive3D& p = add(Primitive3D::Kind::Polygon);
        const double corners[] = {x, y, x + w, y, x + w, y + h, x, y + h};
        std::copy(std::begin(corners), std::end(corners), p.xy.begin());
        p.count = 4;
        p.fill = fill;
        p.pen_none = true;
    }
    ScreenPoint screen(const Vec3& data) const {
        ScreenPoint s = m_projection.project(data);
        s.x += m_left;
        s.y += m_top;
        return s;
    }

private:
    Scene3D& m_scene;
    const Projection3D& m_projection;
    double m_left, m_top;
};

// What the legend says of a band: below the first level, between two, above the last.
std::string legend_text(size_t band, const std::vector<double>& levels) {
    if (band == 0) return "< " + number_text(levels.front());
    if (band == levels.size()) return "> " + number_text(levels.back());
    return number_text(levels[band - 1]) + " to " + number_text(levels[band]);
}

struct Layout {
    PlotArea plot{};
    double header = 0, footer = 0, legend = 0;
};

Layout layout_of(const Grid3D& grid, const Style3D& style, double width, double height, const TextMetrics& metrics,
                 const std::vector<double>& levels) {
    Layout layout;
    const double band = metrics.line_height * 1.6;
    if (!style.header.empty()) layout.header = band;
    if (!style.footer.empty()) layout.footer = band;
    if (style.zone && !levels.empty() && !grid.empty()) {
        size_t longest = 0;
        for (size_t band = 0; band <= levels.size(); ++band) longest = std::max(longest, legend_text(band, levels).size());
        layout.legend = std::min(width / 3, (static_cast<double>(longest) + 1) * metrics.char_width + 44);
    }
    layout.plot = {0, layout.header, std::max(1.0, width - layout.legend),
                   std::max(1.0, height - layout.header - layout.footer)};
    return layout;
}

std::vector<double> zone_levels(const Grid3D& grid) {
    const auto range = grid.value_range();
    return range ? contour_levels(range->first, range->second, 10) : std::vector<double>{};
}

// The light comes from over the viewer's left shoulder.
double lighting(const Projection3D& projection, const Triangle3D& t) {
    const Vec3 a = projection.normalized(t[0]), b = projection.normalized(t[1]), c = projection.normalized(t[2]);
    const Vec3 u{b.x - a.x, b.y - a.y, b.z - a.z}, v{c.x - a.x, c.y - a.y, c.z - a.z};
    Vec3 n{u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    if (!(length > 0)) return 1;
    const Vec3 eye = projection.eye();
    const double eye_length = std::sqrt(eye.x * eye.x + eye.y * eye.y + eye.z * eye.z);
    Vec3 light{eye.x / eye_length, eye.y / eye_length, eye.z / eye_length + 0.8};
    const double light_length = std::sqrt(light.x * light.x + light.y * light.y + light.z * light.z);
    const double facing = std::abs(n.x * light.x + n.y * light.y + n.z * light.z) / length / light_length;
    return 0.35 + 0.65 * facing;
}

void draw_box(Painter& painter, const Projection3D& projection, const Box3D& box, const Style3D& style) {
    // The walls at the back, far from the eye, and the floor.
    const auto far_x = [&] {
        const Vec3 low = projection.normalized({box.x_min, (box.y_min + box.y_max) / 2, 0});
        const Vec3 high = projection.normalized({box.x_max, (box.y_min + box.y_max) / 2, 0});
        return projection.floor_distance(low.x, low.y) > projection.floor_distance(high.x, high.y) ? box.x_min : box.x_max;
    }();
    const auto far_y = [&] {
        const Vec3 low = projection.normalized({(box.x_min + box.x_max) / 2, box.y_min, 0});
        const Vec3 high = projection.normalized({(box.x_min + box.x_max) / 2, box.y_max, 0});
        return projection.floor_distance(low.x, low.y) > projection.floor_distance(high.x, high.y) ? box.y_min : box.y_max;
    }();
    const TColor line = mix(style.data_area, style.foreground, 0.55);
    const TColor grid = mix(style.data_area, style.foreground, 0.2);
    const Vec3 floor[] = {{box.x_min, box.y_min, box.z_min}, {box.x_max, box.y_min, box.z_min},
                          {box.x_max, box.y_max, box.z_min}, {box.x_min, box.y_max, box.z_min}};
    const Vec3 x_wall[] = {{far_x, box.y_min, box.z_min}, {far_x, box.y_max, box.z_min},
                           {far_x, box.y_max, box.z_max}, {far_x, box.y_min, box.z_max}};
    const Vec3 y_wall[] = {{box.x_min, far_y, box.z_min}, {box.x_max, far_y, box.z_min},
                           {box.x_max, far_y, box.z_max}, {box.x_min, far_y, box.z_max}};
    for (const Vec3* wall : {floor, x_wall, y_wall}) painter.polygon(wall, 4, 0, false, line, true);
    if (!style.grid_lines) return;
    for (double x : axis_ticks(box.x_min, box.x_max)) {
        painter.line({x, box.y_min, box.z_min}, {x, box.y_max, box.z_min}, grid);
        painter.line({x, far_y, box.z_min}, {x, far_y, box.z_max}, grid);
    }
    for (double y : axis_ticks(box.y_min, box.y_max)) {
        painter.line({box.x_min, y, box.z_min}, {box.x_max, y, box.z_min}, grid);
        painter.line({far_x, y, box.z_min}, {far_x, y, box.z_max}, grid);
    }
    for (double z : axis_ticks(box.z_min, box.z_max)) {
        painter.line({far_x, box.y_min, z}, {far_x, box.y_max, z}, grid);
        painter.line({box.x_min, far_y, z}, {box.x_max, far_y, z}, grid);
    }
}

// The axes on the floor's edges nearest the eye and on its leftmost corner, with round numbers
// written outside the box and the titles beyond them.
void draw_axes(Painter& painter, const Projection3D& projection, const Box3D& box, const Style3D& style,
               const TextMetrics& metrics) {
    const auto nearer = [&](const Vec3& a, const Vec3& b) {
        const Vec3 na = projection.normalized(a), nb = projection.normalized(b);
        return projection.floor_distance(na.x, na.y) < projection.floor_distance(nb.x, nb.y);
    };
    const double mid_x = (box.x_min + box.x_max) / 2, mid_y = (box.y_min + box.y_max) / 2;
    const double near_y = nearer({mid_x, box.y_min, 0}, {mid_x, box.y_max, 0}) ? box.y_min : box.y_max;
    const double near_x = nearer({box.x_min, mid_y, 0}, {box.x_max, mid_y, 0}) ? box.x_min : box.x_max;
    const ScreenPoint centre = painter.screen({mid_x, mid_y, (box.z_min + box.z_max) / 2});
    const auto outward = [&](const ScreenPoint& at, double distance, double& x, double& y) {
        double dx = at.x - centre.x, dy = at.y - centre.y;
        const double length = std::hypot(dx, dy);
        if (length > 0) {
            dx /= length;
            dy /= length;
        }
        x = at.x + dx * distance;
        y = at.y + dy * distance;
        std::uint8_t align = 0;
        align |= dx > 0.35 ? Primitive3D::Left : dx < -0.35 ? Primitive3D::Right : Primitive3D::HCenter;
        align |= dy > 0.35 ? Primitive3D::Top : dy < -0.35 ? Primitive3D::Bottom : Primitive3D::VCenter;
        return align;
    };
    const auto axis = [&](const Vec3& from, const Vec3& to, const std::vector<double>& ticks, int along,
                          const std::string& title) {
        painter.line(from, to, style.foreground);
        // Every number of an axis moves the same way out of the box: away from its middle, so
        // that the numbers of two axes do not meet at their common corner.
        const Vec3 middle{(from.x + to.x) / 2, (from.y + to.y) / 2, (from.z + to.z) / 2};
        const ScreenPoint mid = painter.screen(middle);
        double out_x = 0, out_y = 0;
        const std::uint8_t align = outward(mid, 1, out_x, out_y);
        out_x -= mid.x;
        out_y -= mid.y;
        double widest = 0;
        for (size_t k = 0; k < ticks.size(); ++k) {
            Vec3 at = from;
            (along == 0 ? at.x : along == 1 ? at.y : at.z) = ticks[k];
            const ScreenPoint s = painter.screen(at);
            const double tick = metrics.char_width * 0.6;
            painter.screen_line(s.x, s.y, s.x + out_x * tick, s.y + out_y * tick, style.foreground);
            const std::string text = number_text(ticks[k]);
            painter.text(s.x + out_x * metrics.char_width, s.y + out_y * metrics.char_width, text, align, style.foreground);
            widest = std::max(widest, static_cast<double>(text.size()) * metrics.char_width);
        }
        if (title.empty()) return;
        const double distance = std::abs(out_x) > std::abs(out_y) ? widest + 2 * metrics.char_width
                                                                  : 2.2 * metrics.line_height;
        painter.text(mid.x + out_x * distance, mid.y + out_y * distance, title, align, style.foreground);
    };
    const double other_x = near_x == box.x_min ? box.x_max : box.x_min;
    const double other_y = near_y == box.y_min ? box.y_max : box.y_min;
    axis({box.x_min, near_y, box.z_min}, {box.x_max, near_y, box.z_min}, axis_ticks(box.x_min, box.x_max), 0, style.x_title);
    axis({near_x, box.y_min, box.z_min}, {near_x, box.y_max, box.z_min}, axis_ticks(box.y_min, box.y_max), 1, style.y_title);
    // The value axis stands on the corner drawn furthest left.
    Vec3 corner{near_x, other_y, box.z_min};
    double leftmost = painter.screen(corner).x;
    for (const Vec3& c : {Vec3{other_x, near_y, box.z_min}, Vec3{other_x, other_y, box.z_min}, Vec3{near_x, near_y, box.z_min}}) {
        if (painter.screen(c).x < leftmost) {
            leftmost = painter.screen(c).x;
            corner = c;
        }
    }
    axis(corner, {corner.x, corner.y, box.z_max}, axis_ticks(box.z_min, box.z_max), 2, style.z_title);
}

Vec3 on_plane(Vec3 p, double z) {
    p.z = z;
    return p;
}

void draw_projection(Painter& painter, const Grid3D& grid, const Style3D& style, const std::vector<double>& levels,
                     double plane) {
    const size_t bands = levels.size() + 1;
    for (size_t i = 0; i + 1 < grid.nx(); ++i) {
        for (size_t j = 0; j + 1 < grid.ny(); ++j) {
            if (style.zone) {
                for (const BandPolygon& piece : zone_polygons(grid, {i, j}, levels)) {
                    Vec3 flat[6];
                    const size_t n = std::min<size_t>(piece.points.size(), 6);
                    for (size_t k = 0; k < n; ++k) flat[k] = on_plane(piece.points[k], plane);
                    const TColor fill = zone_color(piece.band, bands);
                    painter.polygon(flat, n, fill, true, fill, true); // outlined in its colour: no seams
                }
            }
            if (style.contour || !style.zone)
                for (const Segment3D& s : contour_segments(grid, {i, j}, levels))
                    painter.line(on_plane(s.a, plane), on_plane(s.b, plane), style.foreground);
        }
    }
}

void draw_surface(Painter& painter, const Grid3D& grid, const Projection3D& projection, const Style3D& style,
                  const Box3D& box, const std::vector<double>& levels) {
    const size_t bands = levels.size() + 1;
    const double z_span = box.z_max - box.z_min;
    const auto height = [&](double z) { return z_span > 0 ? (z - box.z_min) / z_span : 0.5; };
    const bool opaque = style.shade || style.zone || style.hidden;
    std::vector<BandPolygon> pieces;
    std::vector<Segment3D> segments;
    for (const Cell& cell : painter_order(grid, projection)) {
        for (const auto& triangle : cell_triangles(grid, cell, projection)) {
            const double light = style.shade ? lighting(projection, triangle) : 1.0;
            const double mean = (triangle[0].z + triangle[1].z + triangle[2].z) / 3;
            if (style.zone) {
                pieces.clear();
                zone_pieces(triangle, levels, pieces);
                for (const BandPolygon& piece : pieces) {
                    const size_t n = std::min<size_t>(piece.points.size(), 6);
                    const TColor fill = lit(zone_color(piece.band, bands), light);
                    painter.polygon(piece.points.data(), n, fill, true, fill, true);
                }
            } else if (opaque) {
                const TColor fill = style.shade ? lit(mix(style.surface_bottom, style.surface_top, height(mean)), light)
                                                : style.data_area;
                painter.polygon(triangle.data(), 3, fill, true, fill, true);
            }
        }
        if (style.contour) {
            segments.clear();
            for (const auto& triangle : cell_triangles(grid, cell, projection)) contour_pieces(triangle, levels, segments);
            for (const Segment3D& s : segments) painter.line(s.a, s.b, style.foreground);
        }
        if (style.mesh || !opaque) {
            const std::vector<Vec3> corners = cell_corners(grid, cell);
            const double mean = (corners[0].z + corners[1].z + corners[2].z + corners[3].z) / 4;
            painter.polygon(corners.data(), 4, 0, false, mix(style.mesh_bottom, style.mesh_top, height(mean)), true);
        }
    }
}

void draw_bars(Painter& painter, const Grid3D& grid, const Projection3D& projection, const Style3D& style,
               const Box3D& box) {
    struct Bar {
        double distance;
        size_t i, j;
    };
    std::vector<Bar> bars;
    const auto half = [](const Grid3D& g, size_t k, bool along_x) {
        const size_t n = along_x ? g.nx() : g.ny();
        const auto at = [&](size_t m) { return along_x ? g.x(m) : g.y(m); };
        const double gap = n > 1 ? std::abs(at(std::min(k + 1, n - 1)) - at(k == n - 1 ? k - 1 : k)) : 1;
        return 0.4 * gap;
    };
    for (size_t i = 0; i < grid.nx(); ++i) {
        for (size_t j = 0; j < grid.ny(); ++j) {
            if (Grid3D::is_hole(grid.value(i, j))) continue;
            const Vec3 n = projection.normalized({grid.x(i), grid.y(j), 0});
            bars.push_back({projection.floor_distance(n.x, n.y), i, j});
        }
    }
    std::stable_sort(bars.begin(), bars.end(), [](const Bar& a, const Bar& b) { return a.distance > b.distance; });
    const double z_span = box.z_max - box.z_min;
    const Vec3 eye = projection.eye();
    for (const Bar& bar : bars) {
        const double hx = half(grid, bar.i, true), hy = half(grid, bar.j, false);
        // Bars at the grid's edges stop at the box.
        const double x0 = std::max(box.x_min, grid.x(bar.i) - hx), x1 = std::min(box.x_max, grid.x(bar.i) + hx);
        const double y0 = std::max(box.y_min, grid.y(bar.j) - hy), y1 = std::min(box.y_max, grid.y(bar.j) + hy);
        const double top = grid.value(bar.i, bar.j), bottom = box.z_min;
        const TColor color = mix(style.surface_bottom, style.surface_top, z_span > 0 ? (top - bottom) / z_span : 0.5);
        const TColor edge = mix(style.mesh_bottom, style.mesh_top, z_span > 0 ? (top - bottom) / z_span : 0.5);
        const Vec3 centre = projection.normalized({grid.x(bar.i), grid.y(bar.j), 0});
        // The two sides that face the eye, then the top (or the bottom, seen from below).
        const double side_x = eye.x > centre.x ? x1 : x0;
        const double side_y = eye.y > centre.y ? y1 : y0;
        const Vec3 face_x[] = {{side_x, y0, bottom}, {side_x, y1, bottom}, {side_x, y1, top}, {side_x, y0, top}};
        const Vec3 face_y[] = {{x0, side_y, bottom}, {x1, side_y, bottom}, {x1, side_y, top}, {x0, side_y, top}};
        const double cap = eye.z > projection.normalized({0, 0, top}).z ? top : bottom;
        const Vec3 face_top[] = {{x0, y0, cap}, {x1, y0, cap}, {x1, y1, cap}, {x0, y1, cap}};
        painter.polygon(face_x, 4, lit(color, 0.7), true, edge, style.mesh);
        painter.polygon(face_y, 4, lit(color, 0.85), true, edge, style.mesh);
        painter.polygon(face_top, 4, color, true, edge, style.mesh);
    }
}

} // namespace

TColor zone_color(size_t band, size_t bands) {
    // A hue from blue (240 degrees) down to red (0), full and bright.
    const double t = bands > 1 ? static_cast<double>(band) / static_cast<double>(bands - 1) : 0;
    const double hue = 240 * (1 - t);
    const double h = hue / 60;
    const double x = 1 - std::abs(std::fmod(h, 2.0) - 1);
    double r = 0, g = 0, b = 0;
    if (h < 1) r = 1, g = x;
    else if (h < 2) r = x, g = 1;
    else if (h < 3) g = 1, b = x;
    else b = 1, g = x;
    return rgb(r * 235 + 10, g * 235 + 10, b * 235 + 10);
}

Box3D box_of_grid(const Grid3D& grid) {
    Box3D box;
    if (grid.empty()) return box;
    const auto [x_low, x_high] = std::minmax({grid.x(0), grid.x(grid.nx() - 1)});
    const auto [y_low, y_high] = std::minmax({grid.y(0), grid.y(grid.ny() - 1)});
    box.x_min = x_low;
    box.x_max = x_high;
    box.y_min = y_low;
    box.y_max = y_high;
    for (size_t i = 0; i < grid.nx(); ++i) {
        box.x_min = std::min(box.x_min, grid.x(i));
        box.x_max = std::max(box.x_max, grid.x(i));
    }
    for (size_t j = 0; j < grid.ny(); ++j) {
        box.y_min = std::min(box.y_min, grid.y(j));
        box.y_max = std::max(box.y_max, grid.y(j));
    }
    const auto range = grid.value_range();
    box.z_min = range ? range->first : 0;
    box.z_max = range ? range->second : 1;
    if (!(box.z_max > box.z_min)) {
        const double pad = std::max(1.0, std::abs(box.z_min)) * 0.5;
        box.z_min -= pad;
        box.z_max += pad;
    }
    return box;
}

PlotArea plot_area_3d(const Grid3D& grid, const Style3D& style, double width, double height, const TextMetrics& metrics) {
    return layout_of(grid, style, width, height, metrics, zone_levels(grid)).plot;
}

Scene3D build_scene_3d(const Grid3D& grid, const Style3D& style, const View3D& view, double width, double height,
                       const TextMetrics& metrics, const std::vector<SceneText3D>& texts) {
    Scene3D scene;
    // Two triangles, a mesh outline and a little more a cell: no growing while it fills.
    scene.items.reserve(grid.nx() * grid.ny() * 4 + 512);
    const std::vector<double> levels = zone_levels(grid);
    const Layout layout = layout_of(grid, style, width, height, metrics, levels);
    scene.plot_left = layout.plot.left;
    scene.plot_top = layout.plot.top;
    scene.plot_width = layout.plot.width;
    scene.plot_height = layout.plot.height;

    const Box3D box = box_of_grid(grid);
    // Room for the axes' numbers and titles around the box.
    const double room = 4 * metrics.line_height;
    const Projection3D projection(view, box, std::max(1.0, layout.plot.width - room), std::max(1.0, layout.plot.height - room));
    Painter painter(scene, projection, layout.plot.left + room / 2, layout.plot.top + room / 2);

    painter.rectangle(0, 0, width, height, style.background);
    painter.rectangle(layout.plot.left, layout.plot.top, layout.plot.width, layout.plot.height, style.data_area);
    if (layout.header > 0) {
        painter.rectangle(0, 0, width, layout.header, style.header_background);
        painter.text(width / 2, layout.header / 2, style.header, Primitive3D::HCenter | Primitive3D::VCenter,
                     style.header_foreground);
    }
    if (layout.footer > 0) {
        painter.rectangle(0, height - layout.footer, width, layout.footer, style.footer_background);
        painter.text(width / 2, height - layout.footer / 2, style.footer, Primitive3D::HCenter | Primitive3D::VCenter,
                     style.footer_foreground);
    }
    if (grid.empty() || grid.nx() < 1 || grid.ny() < 1) return scene;

    draw_box(painter, projection, box, style);
    draw_axes(painter, projection, box, style, metrics);
    if (style.project_floor) draw_projection(painter, grid, style, levels, box.z_min);
    if (style.project_ceiling) draw_projection(painter, grid, style, levels, box.z_max);
    if (style.bars)
        draw_bars(painter, grid, projection, style, box);
    else
        draw_surface(painter, grid, projection, style, box, levels);

    // Labels sit beside their point, marked by a dot; notes where they were put.
    for (const SceneText3D& each : texts) {
        if (!each.note && (each.i >= grid.nx() || each.j >= grid.ny() || Grid3D::is_hole(grid.value(each.i, each.j))))
            continue;
        double x = each.x, y = each.y;
        if (!each.note) {
            const ScreenPoint at = painter.screen({grid.x(each.i), grid.y(each.j), grid.value(each.i, each.j)});
            const double r = 2.5;
            Primitive3D& dot = painter.add(Primitive3D::Kind::Polygon);
            const double corners[] = {at.x - r, at.y - r, at.x + r, at.y - r, at.x + r, at.y + r, at.x - r, at.y + r};
            std::copy(std::begin(corners), std::end(corners), dot.xy.begin());
            dot.count = 4;
            dot.fill = dot.pen = style.foreground;
            x = at.x + 2 * r;
            y = at.y - 2 * r;
        }
        painter.text(x, y, each.text, each.note ? Primitive3D::Left | Primitive3D::Top : Primitive3D::Left | Primitive3D::Bottom,
                     style.legend_foreground);
        Primitive3D& label = scene.items.back();
        label.fill_none = false;
        label.fill = style.legend_background;
    }
    // A point that could not be placed (a coordinate beyond what a double holds) is no part of
    // the picture: a painter handed NaN may never finish.
    std::erase_if(scene.items, [](const Primitive3D& item) {
        for (size_t k = 0; k < 2 * static_cast<size_t>(item.count); ++k)
            if (!std::isfinite(item.xy[k])) return true;
        return false;
    });
    if (layout.legend > 0) {
        const size_t bands = levels.size() + 1;
        const double left = width - layout.legend + 8;
        const double row = metrics.line_height * 1.2;
        const double top = layout.plot.top + std::max(8.0, (layout.plot.height - row * static_cast<double>(bands)) / 2);
        painter.rectangle(width - layout.legend, layout.plot.top, layout.legend, layout.plot.height, style.legend_background);
        for (size_t band = bands; band-- > 0;) {
            const double y = top + row * static_cast<double>(bands - 1 - band);
            const std::string text = legend_text(band, levels);
            painter.rectangle(left, y + 2, 18, row - 4, zone_color(band, bands));
            painter.text(left + 24, y + row / 2, text, Primitive3D::Left | Primitive3D::VCenter, style.legend_foreground);
            scene.legend.push_back({text, zone_color(band, bands)});
        }
    }
    return scene;
}

} // namespace quorvex::graph
