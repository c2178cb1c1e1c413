#include "chart_3d.h"

namespace quorvex::graph {

Style3D style_of_graph(const GraphData& graph) {
    Style3D style;
    style.mesh = graph.Get3DTypeBit(type3d::Mesh) != 0;
    style.shade = graph.Get3DTypeBit(type3d::Shade) != 0;
    style.contour = graph.Get3DTypeBit(type3d::Contour) != 0;
    style.zone = graph.Get3DTypeBit(type3d::Zone) != 0;
    style.hidden = graph.Get3DTypeBit(type3d::Hidden) != 0;
    style.project_floor = style.project_ceiling = graph.Get3DTypeBit(type3d::Project) != 0;
    style.bars = graph.Get3DTypeBit(type3d::Surface) != 0;
    style.grid_lines = graph.ShowGridLines != 0;
    style.background = graph.BackgroundColor;
    style.foreground = graph.ForegroundColor;
    style.data_area = graph.DataAreaBackgroundColor;
    style.header_background = graph.HeaderBackgroundColor;
    style.header_foreground = graph.HeaderForegroundColor;
    style.footer_background = graph.FooterBackgroundColor;
    style.footer_foreground = graph.FooterForegroundColor;
    style.legend_background = graph.LegendBackgroundColor;
    style.legend_foreground = graph.LegendForegroundColor;
    style.mesh_bottom = graph.MeshBottomColor;
    style.mesh_top = graph.MeshTopColor;
    style.surface_bottom = graph.SurfaceBottomColor;
    style.surface_top = graph.SurfaceTopColor;
    style.header = graph.Header;
    style.footer = graph.Footer;
    style.x_title = graph.XAxisTitle;
    style.y_title = graph.ZAxisTitle;
    style.z_title = graph.YAxisTitle;
    return style;
}

View3D view_of_graph(const GraphData& graph) {
    return {graph.PerspectiveDepth, graph.XRotation, graph.YRotation, graph.ZRotation,
            graph.XTranslate,       graph.YTranslate, graph.Scale};
}

View3D default_view_of_graph(const GraphData& graph) {
    return {graph.DefaultPerspectiveDepth, graph.DefaultXRotation, graph.DefaultYRotation, graph.DefaultZRotation,
            graph.DefaultXTranslate,       graph.DefaultYTranslate, graph.DefaultScale};
}

namespace {

// Where a graph keeps a view: its current values or its defaults.
struct ViewMembers {
    float GraphData::*depth, GraphData::*x, GraphData::*y, GraphData::*z, GraphData::*shift_x, GraphData::*shift_y,
        GraphData::*scale;
};
constexpr ViewMembers k_current{&GraphData::PerspectiveDepth, &GraphData::XRotation,  &GraphData::YRotation,
                                &GraphData::ZRotation,        &GraphData::XTranslate, &GraphData::YTranslate,
                                &GraphData::Scale};
constexpr ViewMembers k_default{&GraphData::DefaultPerspectiveDepth, &GraphData::DefaultXRotation,
                                &GraphData::DefaultYRotation,        &GraphData::DefaultZRotation,
                                &GraphData::DefaultXTranslate,       &GraphData::DefaultYTranslate,
                                &GraphData::DefaultScale};

void keep(GraphData& graph, const View3D& view, const ViewMembers& at) {
    graph.*at.depth = static_cast<float>(view.PerspectiveDepth);
    graph.*at.x = static_cast<float>(view.XRotation);
    graph.*at.y = static_cast<float>(view.YRotation);
    graph.*at.z = static_cast<float>(view.ZRotation);
    graph.*at.shift_x = static_cast<float>(view.XTranslate);
    graph.*at.shift_y = static_cast<float>(view.YTranslate);
    graph.*at.scale = static_cast<float>(view.Scale);
}

} // namespace

void keep_view_in_graph(GraphData& graph, const View3D& view) { keep(graph, view, k_current); }

void keep_default_view_in_graph(GraphData& graph, const View3D& view) { keep(graph, view, k_default); }

std::string point_label_3d(const std::string& x, const std::string& value, const std::string& z) {
    return " (" + x + " , " + value + " , " + z + ") ";
}

void build_3d(const GraphData& graph, Grid3D grid, Chart3D& chart) {
    chart.clear();
    chart.set_grid(grid);
    chart.set_style(style_of_graph(graph));
    chart.set_view(view_of_graph(graph), default_view_of_graph(graph));
    for (const GraphNote& note : graph.Notes) {
        if (note.IsNote) {
            chart.add_note(note.Text, note.PosX, note.PosY);
        } else if (note.PosX >= 0 && note.PosY >= 0 && static_cast<size_t>(note.PosX) < grid.nx() &&
                   static_cast<size_t>(note.PosY) < grid.ny()) {
            // A label's place is its grid point: X line, then Z line.
            chart.add_point_label(static_cast<size_t>(note.PosX), static_cast<size_t>(note.PosY), note.Text);
        }
    }
}

} // namespace quorvex::graph
