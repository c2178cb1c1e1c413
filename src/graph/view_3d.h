#pragma once
#include <cstddef>
#include <optional>
#include <vector>

namespace quorvex::graph {

// How a 3-D graph is looked at: the eye's distance (a larger depth flattens the perspective), its
// elevation over the floor (XRotation), a turn of the picture about the line of sight
// (YRotation), the turn of the floor about the vertical axis (ZRotation), a shift of the picture
// in percent of its width and height, and a magnification. Angles in degrees.
struct View3D {
    double PerspectiveDepth = 20, XRotation = 25, YRotation = 0.34, ZRotation = 310;
    double XTranslate = 0, YTranslate = 0, Scale = 1;
};

struct Vec3 {
    double x = 0, y = 0, z = 0;
};

// A projected point: pixels from the picture's top left, and the distance from the eye along the
// line of sight (larger is farther).
struct ScreenPoint {
    double x = 0, y = 0, depth = 0;
};

// The extent of what is drawn, in data units: the chart's X, its Y (the graph's Z variable) and
// its Z (the value).
struct Box3D {
    double x_min = 0, x_max = 1, y_min = 0, y_max = 1, z_min = 0, z_max = 1;
};

// Data coordinates to pixels for a view, a box and a picture size. The box is fitted into a cube
// of half-width 1 (the value axis a little lower) that the view turns and the eye looks at.
class Projection3D {
public:
    static constexpr double k_height = 0.75; // the value axis against the floor's half-width

    Projection3D(const View3D& view, const Box3D& box, double width, double height);

    // The box's corner at (u, v, w) in [-1, 1] x [-1, 1] x [-k_height, k_height].
    Vec3 normalized(const Vec3& data) const;
    ScreenPoint project(const Vec3& data) const;
    ScreenPoint project_normalized(const Vec3& n) const;
    // How far a point of the floor at normalized (u, v) lies from the eye's place over the floor;
    // the surface is drawn from the largest to the smallest, so that nearer cells cover farther
    // ones whatever the rotation.
    double floor_distance(double u, double v) const;
    // The eye in normalized coordinates.
    Vec3 eye() const { return m_eye; }
    const Box3D& box() const { return m_box; }

private:
    Box3D m_box;
    double m_cos_z, m_sin_z, m_cos_x, m_sin_x, m_cos_y, m_sin_y;
    double m_eye_distance, m_pixels, m_cx, m_cy;
    Vec3 m_eye;
};

} // namespace quorvex::graph
