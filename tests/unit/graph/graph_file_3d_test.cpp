// The 3-D graph's binding to its chart and its file: forms, colours, the chart's swapped Y and Z
// titles, labels at grid points, and a .g3d round trip that loses only its projection.
#include "graph/chart_3d.h"
#include "graph/graph_file_3d.h"

#include "store/atomic_write.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

using namespace quorvex::graph;
namespace fs = std::filesystem;

namespace {

GraphData sample_graph() {
    GraphData graph("Bowl");
    graph.Header = "A bowl";
    graph.Footer = "of x and z";
    graph.XAxisTitle = "x";
    graph.YAxisTitle = "f(x,z)";
    graph.ZAxisTitle = "z";
    graph.Type3D = 0;
    graph.Set3DTypeBit(type3d::Mesh, 1);
    graph.Set3DTypeBit(type3d::Hidden, 1);
    graph.Set3DTypeBit(type3d::Project, 1);
    graph.XRotation = 40.25f;
    graph.ZRotation = 200;
    graph.DefaultScale = 0.7f;
    graph.SurfaceTopColor = 0x0000FF;
    graph.MeshBottomColor = 0x00FF00;
    return graph;
}

Grid3D sample_grid() {
    Grid3D grid = Grid3D::regular(3, 2, -1, 0, 1, 0.5);
    for (size_t i = 0; i < 3; ++i)
        for (size_t j = 0; j < 2; ++j) grid.set(i, j, grid.x(i) * grid.x(i) + grid.y(j));
    grid.set(1, 1, k_grid_hole);
    return grid;
}

} // namespace

TEST(Chart3D, TheGraphsFormsColoursTitlesAndLabelsReachTheChart) {
    GraphData graph = sample_graph();
    graph.SetNote(point_label_3d("1", "1.5", "0.5").c_str(), 2, 1, -1, false);
    graph.SetNote("a note", 30, 40, -1, true);
    graph.SetNote(" (9 , 9 , 9) ", 7, 7, -1, false); // off the grid: not drawn
    RecordingChart3D chart;
    build_3d(graph, sample_grid(), chart);
    EXPECT_TRUE(chart.style.mesh);
    EXPECT_FALSE(chart.style.shade);
    EXPECT_TRUE(chart.style.hidden);
    EXPECT_TRUE(chart.style.project_floor && chart.style.project_ceiling);
    EXPECT_FALSE(chart.style.bars);
    EXPECT_EQ(chart.style.y_title, "z"); // the chart's Y axis carries the Z variable
    EXPECT_EQ(chart.style.z_title, "f(x,z)");
    EXPECT_EQ(chart.style.surface_top, 0x0000FFu);
    EXPECT_DOUBLE_EQ(chart.view.XRotation, 40.25);
    EXPECT_DOUBLE_EQ(chart.default_view.Scale, 0.7f);
    ASSERT_EQ(chart.texts.size(), 2u);
    EXPECT_EQ(chart.texts[0].text, " (1 , 1.5 , 0.5) ");
    EXPECT_EQ(chart.texts[0].i, 2u);
    EXPECT_EQ(chart.texts[0].j, 1u);
    EXPECT_TRUE(chart.texts[1].note);

    // Built again on the grid the chart already holds (a label added by a click): the surface
    // and its labels stay.
    graph.SetNote(point_label_3d("0", "0", "0").c_str(), 0, 0, -1, false);
    build_3d(graph, chart.grid, chart);
    EXPECT_EQ(chart.grid.nx(), sample_grid().nx());
    EXPECT_EQ(chart.texts.size(), 3u);

    View3D turned = chart.view;
    turned.ZRotation = 123.5;
    keep_view_in_graph(graph, turned);
    EXPECT_FLOAT_EQ(graph.ZRotation, 123.5f);
    EXPECT_FLOAT_EQ(graph.DefaultZRotation, 310); // the default stays
}

TEST(GraphFile3D, ARoundTripKeepsTheGridTitlesViewAndColoursButNotTheProjection) {
    const std::string path = (fs::temp_directory_path() / ("quorvex-g3d-" + std::to_string(::getpid()) + ".g3d")).string();
    const GraphData graph = sample_graph();
    std::string error;
    ASSERT_TRUE(write_graph_file_3d(path, sample_grid(), graph, &error)) << error;
    std::string text;
    ASSERT_TRUE(quorvex::store::read_whole_file(path, text));
    // The keys in their order, this file's spelling included.
    size_t at = 0;
    for (const char* key : {"Header=", "Footer=", "XAxisTitle=", "YAxisTitle=z", "ZAxisTitle=f(x,z)", "Mesh=1",
                            "Shade=0", "Contour=0", "Zone=0", "Hidden=1", "ProjectZMin=1", "ProjectZMax=2", "Surface=0",
                            "PerspectiveDepth=20.000", "XRotation=40.250", "Scale=1.000", "DefaultScale=0.700",
                            "BackgroundColor=", "GraphForegrondColor=", "MeshBottomColor=0,255,0", "SurfaceTopColor=255,0,0"}) {
        const size_t found = text.find(key, at);
        ASSERT_NE(found, std::string::npos) << key;
        at = found;
    }
    const auto read = read_graph_file_3d(path, &error);
    ASSERT_TRUE(read) << error;
    const Grid3D& grid = read->grid;
    ASSERT_EQ(grid.nx(), 3u);
    ASSERT_EQ(grid.ny(), 2u);
    EXPECT_TRUE(grid.is_regular());
    EXPECT_EQ(grid.y(1), 0.5);
    EXPECT_EQ(grid.value(2, 1), 1.5);
    EXPECT_TRUE(Grid3D::is_hole(grid.value(1, 1)));
    EXPECT_EQ(read->graph.Header, "A bowl");
    EXPECT_EQ(read->graph.ZAxisTitle, "z");
    EXPECT_EQ(read->graph.YAxisTitle, "f(x,z)");
    EXPECT_EQ(read->graph.Get3DTypeBit(type3d::Hidden), 1);
    EXPECT_EQ(read->graph.Get3DTypeBit(type3d::Project), 0); // not restored
    EXPECT_FLOAT_EQ(read->graph.XRotation, 40.25f);
    EXPECT_EQ(read->graph.MeshBottomColor, 0x00FF00u);

    // A missing view value reads as the initial one; a damaged grid is refused with a reason.
    std::string edited = text;
    edited.replace(edited.find("XRotation=40.250"), 16, "XRotation=fast");
    ASSERT_TRUE(quorvex::store::write_file_atomically(path, edited));
    EXPECT_FLOAT_EQ(read_graph_file_3d(path, &error)->graph.XRotation, 25);
    edited = text;
    edited.replace(edited.find("Z "), 2, "Q ");
    ASSERT_TRUE(quorvex::store::write_file_atomically(path, edited));
    EXPECT_FALSE(read_graph_file_3d(path, &error));
    EXPECT_NE(error.find("is damaged"), std::string::npos);
    ASSERT_TRUE(quorvex::store::write_file_atomically(path, "QUORVEX 3D GRAPH DATA 1\r\nRegular\r\nX 99999999\r\n"));
    EXPECT_FALSE(read_graph_file_3d(path, &error));
    fs::remove(path);
}
