// Graph files: the drawn numbers and the attributes come back as they were written; a file that
// is none, or a damaged one, is refused with a message.
#include "graph/graph_file.h"
#include "graph/graph_limits.h"

#include "store/atomic_write.h"
#include "store/ini_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

using namespace quorvex::graph;
namespace fs = std::filesystem;

TEST(GraphFile, ReadsBackItsNumbersHolesTitlesAndColours) {
    const fs::path dir = fs::temp_directory_path() / ("quorvex-g2d-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string path = (dir / "wave.g2d").string();

    ChartData data(2, 2, 3);
    const double xs[] = {-1, 0, 1};
    for (size_t p = 0; p < 3; ++p) {
        data.set_x(0, p, xs[p]);
        data.set_y(0, p, xs[p] * xs[p] + 0.1);
        data.set_x(1, p, xs[p]);
    }
    data.set_y(1, 0, 1.0 / 3.0);
    data.set_label(0, "the square");
    GraphData graph("Wave");
    graph.Header = "First line\r\nsecond line";
    graph.XAxisTitle = "x";
    graph.Type = 13;
    graph.Depth = 33;
    graph.GraphForegrondColor = 0x123456;
    std::string error;
    ASSERT_TRUE(write_graph_file(path, data, graph, &error)) << error;

    const auto file = read_graph_file(path, &error);
    ASSERT_TRUE(file) << error;
    ASSERT_EQ(file->data.series(), 2u);
    ASSERT_EQ(file->data.points(), 3u);
    EXPECT_EQ(file->data.y(0, 0), 1.1);
    EXPECT_EQ(file->data.y(1, 0), 1.0 / 3.0); // every bit of a double
    EXPECT_TRUE(ChartData::is_hole(file->data.y(1, 2)));
    EXPECT_EQ(file->data.label(0), "the square");
    EXPECT_EQ(file->graph.Name, "Wave");
    EXPECT_EQ(file->graph.Header, "First line"); // one line of a header is kept
    EXPECT_EQ(file->graph.XAxisTitle, "x");
    EXPECT_EQ(file->graph.Type, 13);
    EXPECT_EQ(file->graph.Depth, 33);
    EXPECT_EQ(file->graph.GraphForegrondColor, 0x123456u);
    std::string text;
    ASSERT_TRUE(quorvex::store::read_whole_file(path, text));
    EXPECT_NE(text.find("GraphForegroundColor=86,52,18"), std::string::npos); // spelled in full here

    // Not a graph file, and a damaged one.
    ASSERT_TRUE(quorvex::store::write_file_atomically((dir / "notes.g2d").string(), "a = 1\r\n"));
    EXPECT_FALSE(read_graph_file((dir / "notes.g2d").string(), &error));
    EXPECT_NE(error.find("is no Quorvex graph file"), std::string::npos);
    text.replace(text.find("X -1"), 4, "X oops");
    ASSERT_TRUE(quorvex::store::write_file_atomically((dir / "bad.g2d").string(), text));
    EXPECT_FALSE(read_graph_file((dir / "bad.g2d").string(), &error));
    EXPECT_NE(error.find("damaged"), std::string::npos);
    EXPECT_FALSE(read_graph_file((dir / "missing.g2d").string(), &error));
    fs::remove_all(dir);
}

TEST(GraphFile, OverlongTitlesAndLabelsAreCutWithAMessage) {
    const fs::path dir = fs::temp_directory_path() / ("quorvex-g2d-long-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string path = (dir / "long.g2d").string();
    ChartData data(2, 1, 2);
    data.set_label(0, std::string(3000, 'L'));
    GraphData graph("Long");
    graph.Header = std::string(100000, 'H');
    graph.XAxisTitle = "x";
    std::string error;
    ASSERT_TRUE(write_graph_file(path, data, graph, &error)) << error;
    const auto file = read_graph_file(path, &error);
    ASSERT_TRUE(file) << error;
    EXPECT_EQ(file->graph.Header.size(), k_max_graph_text);
    EXPECT_EQ(file->data.label(0).size(), k_max_graph_text);
    EXPECT_EQ(file->graph.XAxisTitle, "x");
    ASSERT_EQ(file->messages.size(), 2u);
    EXPECT_NE(file->messages[0].find("The header of the graph \"Long\" had 100000 characters"), std::string::npos)
        << file->messages[0];
    fs::remove_all(dir);
}

TEST(GraphFile, AColourTheFileLacksIsTheUsersDefault) {
    const fs::path dir = fs::temp_directory_path() / ("quorvex-g2d-colors-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const std::string path = (dir / "plain.g2d").string();
    GraphData graph("Plain");
    graph.LegendBackgroundColor = 0x00FF00;
    std::string error;
    ASSERT_TRUE(write_graph_file(path, ChartData(2, 1, 2), graph, &error)) << error;
    std::string text;
    ASSERT_TRUE(quorvex::store::read_whole_file(path, text));
    // An older file without its header colours.
    for (const char* key : {"HeaderBackgroundColor=", "HeaderForegroundColor="}) {
        const size_t at = text.find(key);
        ASSERT_NE(at, std::string::npos);
        text.erase(at, text.find('\n', at) + 1 - at);
    }
    ASSERT_TRUE(quorvex::store::write_file_atomically(path, text));
    quorvex::store::IniFile settings("");
    settings.SetText("[Graph Default Colors]\r\nHeaderBackground=1,2,3\r\nLegendBackground=9,9,9\r\n");
    const auto file = read_graph_file(path, &error, &settings);
    ASSERT_TRUE(file) << error;
    EXPECT_EQ(file->graph.HeaderBackgroundColor, 0x030201u);
    EXPECT_EQ(file->graph.HeaderForegroundColor, GraphData("new").HeaderForegroundColor);
    EXPECT_EQ(file->graph.LegendBackgroundColor, 0x00FF00u); // the file's own colour wins
    fs::remove_all(dir);
}
