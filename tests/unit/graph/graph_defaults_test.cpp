// The user's default colours and orientation, read from and written to a settings text in memory.
#include "graph/graph_colors.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;
using quorvex::store::IniFile;

namespace {

std::unique_ptr<IniFile> settings(const std::string& text) {
    auto ini = std::make_unique<IniFile>("");
    ini->SetText(text);
    return ini;
}

} // namespace

TEST(GraphDefaults, ColoursComeFromTheSettingsOrTheirBuiltInValues) {
    auto ini = settings("[Graph Default Colors]\r\nBackground=255,0,0\r\ngraphforegrond=1,2,3\r\n"
                        "MeshTop=12,34\r\nDataAreaBackground=300,-1,16\r\n");
    GraphData graph;
    graph.MeshTopColor = 0x654321;
    graph.SetDefaultColors(*ini);
    EXPECT_EQ(graph.BackgroundColor, 0x0000FFu);
    EXPECT_EQ(graph.GraphForegrondColor, 0x030201u);
    EXPECT_EQ(graph.MeshTopColor, 0u);                   // too few parts: the built-in value
    EXPECT_EQ(graph.DataAreaBackgroundColor, 0x10FF2Cu); // each part masked to a byte

    graph.LegendForegroundColor = 0xABCDEF;
    auto out = settings("");
    ASSERT_TRUE(graph.SaveDefaultColors(*out));
    EXPECT_EQ(out->GetString("Graph Default Colors", "LegendForeground"), "239,205,171");
    GraphData other;
    other.SetDefaultColors(*out);
    for (const GraphColorEntry& entry : graph_colors()) {
        EXPECT_EQ(other.*entry.member, graph.*entry.member) << entry.ini_key;
        EXPECT_EQ(std::string(entry.document_key), std::string(entry.ini_key) + "Color");
    }
}

TEST(GraphDefaults, OrientationSetsCurrentAndDefaultValues) {
    auto ini = settings("[Graph Default Orientation]\r\nDepth2D=5\r\nRotation=-7\r\nZRotation3D=90\r\n");
    GraphData graph;
    graph.Inclination = 44;
    graph.SetDefaultOrientation(*ini);
    EXPECT_EQ(graph.DefaultDepth, 5);
    EXPECT_EQ(graph.Rotation, -7);
    EXPECT_EQ(graph.Inclination, 15);
    EXPECT_FLOAT_EQ(graph.DefaultZRotation, 90);
    EXPECT_FLOAT_EQ(graph.YRotation, 0); // the settings' fallback, unlike a new graph's 0.34
}
