// The 3-D graph's forms for the screenshot renderer: a ripple with a hole at its centre, drawn by
// the graph window as a user would see it in each form.
#include "screenshots_3d.h"

#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_window.h"

#include <QApplication>
#include <QTest>

#include <cstdio>

namespace quorvex::gui {

bool shoot_3d(QWidget& frame, DocumentWindow& window, const QString& out, const QString& suffix) {
    QTest::keyClicks(window.editor(), QStringLiteral("ripple(x, y) = 4*SIN(SQRT(x^2+y^2)*57.3)/SQRT(x^2+y^2) + x/20"));
    QTest::keyClick(window.editor(), Qt::Key_Return);
    if (!window.add_surface_graph("ripple[x,y]", "x", -6, 6, 41, "y", -6, 6, 41)) {
        std::printf("FAILED the surface of ripple[x,y]\n");
        return false;
    }
    auto& graph = window.document().Graphs.back().Data;
    const int index = static_cast<int>(window.document().Graphs.size()) - 1;
    struct Form {
        const char* name;
        unsigned long type3d; // the forms' digits: mesh, shade, contour, zone, hidden, project, bar
    };
    const Form forms[] = {{"mesh", 1},       {"shaded", 11},     {"contour", 10100}, {"zones", 1111},
                          {"hidden", 10001}, {"projected", 101111}, {"bar", 1000011}};
    bool ok = true;
    for (const Form& form : forms) {
        graph.Type3D = form.type3d;
        if (form.type3d >= 1000000) {
            // Bars need room: a coarser grid.
            graph.XAxisVar->SetVarNumPoints(13);
            graph.ZAxisVar->SetVarNumPoints(13);
        }
        window.graph_window()->draw(index);
        frame.repaint();
        QApplication::processEvents();
        const QString path = out + QStringLiteral("/graph3d-") + QLatin1String(form.name) + suffix + QStringLiteral(".png");
        const bool saved = frame.grab().save(path);
        std::printf("%s %s\n", saved ? "wrote" : "FAILED", qPrintable(path));
        ok = saved && ok;
    }
    return ok;
}

} // namespace quorvex::gui
