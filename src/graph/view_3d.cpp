#include "view_3d.h"

#include <algorithm>
#include <cmath>

namespace quorvex::graph {

namespace {

constexpr double k_pi = 3.14159265358979323846;
double radians(double degrees) { return degrees * k_pi / 180.0; }

// Maps [low, high] onto [-half, half]; a range without width sits in the middle. Halved first,
// so that a range across most of the doubles (-9e307 to 9e307) has a width and not infinity.
double fit(double value, double low, double high, double half) {
    const double width = high / 2 - low / 2;
    if (!(width > 0)) return 0;
    return (2 * (value / 2 - low / 2) / width - 1) * half;
}

} // namespace

Projection3D::Projection3D(const View3D& view, const Box3D& box, double width, double height) : m_box(box) {
    m_cos_z = std::cos(radians(view.ZRotation));
    m_sin_z = std::sin(radians(view.ZRotation));
    m_cos_x = std::cos(radians(view.XRotation));
    m_sin_x = std::sin(radians(view.XRotation));
    m_cos_y = std::cos(radians(view.YRotation));
    m_sin_y = std::sin(radians(view.YRotation));
    // The eye stays outside the box's sphere for every depth.
    const double radius = std::sqrt(2 + k_height * k_height);
    m_eye_distance = radius + 0.5 + std::max(0.0, view.PerspectiveDepth) / 2;
    // The box's sphere, as wide as the eye sees it, fits the smaller side with a little room: the
    // picture keeps its size while it turns.
    const double enlarged = radius * m_eye_distance / std::sqrt(m_eye_distance * m_eye_distance - radius * radius);
    const double scale = view.Scale > 0 ? view.Scale : 1;
    m_pixels = scale * 0.92 * std::min(width, height) / 2 / enlarged;
    m_cx = width / 2 + view.XTranslate / 100 * width;
    m_cy = height / 2 - view.YTranslate / 100 * height;
    // The eye sits on the line of sight at the eye distance in front of the centre.
    const double behind = -m_eye_distance * m_cos_x; // along the floor, towards the viewer
    m_eye = {behind * m_sin_z, behind * m_cos_z, m_eye_distance * m_sin_x};
}

Vec3 Projection3D::normalized(const Vec3& data) const {
    return {fit(data.x, m_box.x_min, m_box.x_max, 1), fit(data.y, m_box.y_min, m_box.y_max, 1),
            fit(data.z, m_box.z_min, m_box.z_max, k_height)};
}

ScreenPoint Projection3D::project(const Vec3& data) const { return project_normalized(normalized(data)); }

ScreenPoint Projection3D::project_normalized(const Vec3& n) const {
    // The floor turns about the vertical, then the eye rises above it, then the picture turns
    // about the line of sight.
    const double across = n.x * m_cos_z - n.y * m_sin_z;
    const double away = n.x * m_sin_z + n.y * m_cos_z;
    const double up = n.z * m_cos_x + away * m_sin_x;
    const double depth = away * m_cos_x - n.z * m_sin_x;
    const double right = across * m_cos_y - up * m_sin_y;
    const double rise = across * m_sin_y + up * m_cos_y;
    const double perspective = m_eye_distance / (m_eye_distance + depth);
    return {m_cx + m_pixels * right * perspective, m_cy - m_pixels * rise * perspective, depth};
}

double Projection3D::floor_distance(double u, double v) const {
    return std::hypot(u - m_eye.x, v - m_eye.y);
}

} // namespace quorvex::graph
