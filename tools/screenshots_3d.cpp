// The 3-D graph's forms for the screenshot renderer: one picture of each on a sample surface.
#include "screenshots_3d.h"

#include "gui/graph3d/graph3d_view.h"

#include <QApplication>

#include <cmath>
#include <cstdio>

namespace quorvex::gui {

namespace {

// A ripple with a dip, and a hole where it is undefined at the centre.
graph::Grid3D sample_surface() {
    constexpr size_t n = 41;
    graph::Grid3D grid = graph::Grid3D::regular(n, n, -6, -6, 0.3, 0.3);
    for (size_t i = 0; i < n; ++i) {
        for (size_t j = 0; j < n; ++j) {
            const double r = std::hypot(grid.x(i), grid.y(j));
            if (r < 1e-9) continue;
            grid.set(i, j, std::sin(r) / r * 4 + 0.05 * grid.x(i));
        }
    }
    return grid;
}

} // namespace

bool shoot_3d(const QString& out, const QString& suffix) {
    struct Form {
        const char* name;
        bool mesh, shade, contour, zone, hidden, project, bars;
    };
    const Form forms[] = {{"mesh", true, false, false, false, false, false, false},
                          {"shaded", true, true, false, false, false, false, false},
                          {"contour", false, false, true, false, true, false, false},
                          {"zones", true, true, true, true, false, false, false},
                          {"hidden", true, false, false, false, true, false, false},
                          {"projected", true, true, true, true, false, true, false},
                          {"bar", true, false, false, false, false, false, true}};
    bool ok = true;
    for (const Form& form : forms) {
        Graph3DView view;
        graph::Style3D style;
        style.mesh = form.mesh;
        style.shade = form.shade;
        style.contour = form.contour;
        style.zone = form.zone;
        style.hidden = form.hidden;
        style.project_floor = style.project_ceiling = form.project;
        style.bars = form.bars;
        style.header = "SIN(r)/r";
        style.footer = std::string("3-D ") + form.name;
        style.x_title = "x";
        style.y_title = "y";
        style.z_title = "f(x,y)";
        view.set_style(style);
        graph::Grid3D grid = sample_surface();
        if (form.bars) {
            graph::Grid3D coarse = graph::Grid3D::regular(9, 9, -6, -6, 1.5, 1.5);
            for (size_t i = 0; i < 9; ++i)
                for (size_t j = 0; j < 9; ++j) coarse.set(i, j, grid.value(i * 5, j * 5));
            grid = coarse;
        }
        if (!form.bars) view.add_point_label(27, 20, graph::point_label_3d("2.1", "0.84", "0"));
        view.set_grid(grid);
        view.resize(800, 600);
        view.show();
        view.repaint();
        QApplication::processEvents();
        const QString path = out + QStringLiteral("/graph3d-") + QLatin1String(form.name) + suffix + QStringLiteral(".png");
        const bool saved = view.grab().save(path);
        std::printf("%s %s\n", saved ? "wrote" : "FAILED", qPrintable(path));
        ok = saved && ok;
    }
    return ok;
}

} // namespace quorvex::gui
