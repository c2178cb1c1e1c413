// The stat plot's logic against the engine: the values shown at the table's precision, class
// counts of known data counted by hand, the interval captions, the graph it builds in a document
// and the reading of a file of values.
#include "desktop/stat_plot.h"

#include "document/document.h"
#include "engine/host.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "graph/graph_types.h"
#include "store/ini_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <numeric>

using namespace quorvex;
using namespace quorvex::desktop;

namespace {

struct StatPlot : ::testing::Test {
    engine::Parser parser{&functions::builtin_functions(), QUORVEX_DATA_DIR};
    std::string error;

    static graph::StrDataPnts data_of(const std::vector<std::string>& texts, const char* name = "Sample") {
        graph::StrDataPnts data;
        data.SetName(name);
        for (size_t i = 0; i < texts.size(); ++i)
            if (!texts[i].empty()) data.PutXDataPoint(texts[i], static_cast<int>(i));
        return data;
    }
    std::vector<int> counts(const std::vector<std::string>& shown, StatPlotChoice choice) {
        error.clear();
        const auto frequencies = frequency_distribution(parser, shown, choice, error);
        if (!frequencies) return {};
        std::vector<int> result;
        for (const functions::Frequency& f : *frequencies) result.push_back(f.count);
        return result;
    }
};

struct StopAfter : engine::Host {
    explicit StopAfter(int values) : left(values) {}
    bool aborted() const override { return left <= 0; }
    void pump() override { --left; }
    int left;
};

} // namespace

TEST_F(StatPlot, ValuesAreShownAtThePrecisionAndBinnedAsShown) {
    // Expressions evaluate; a failing text or an empty slot is an empty row.
    const auto shown = stat_value_texts(parser, data_of({"2*3", "1/0", "", "0.999"}), 2, nullptr);
    EXPECT_EQ(shown, (std::vector<std::string>{"6", "", "", "1"}));
    // The empty rows are named by number.
    EXPECT_TRUE(counts(shown, {IntervalChoice::SetEqualIntervals, 2, false}).empty());
    EXPECT_EQ(error, "Data point 2 has no value, please correct this before continuing.");
    // What is binned is 1 as shown, not 0.999: the first class starts at 1.
    const auto frequencies =
        frequency_distribution(parser, {"6", "1", "3.5"}, {IntervalChoice::SetEqualIntervals, 2, false}, error);
    ASSERT_TRUE(frequencies) << error;
    EXPECT_EQ(interval_text(frequencies->front(), 14), "1 to 3.5");
    EXPECT_EQ(interval_text(frequencies->back(), 14), "3.5+ to 6");

    StopAfter stop(3); // asked before each value: the third asking stops
    bool stopped = false;
    EXPECT_EQ(stat_value_texts(parser, data_of({"1", "2", "3", "4"}), 6, &stop, &stopped).size(), 2u);
    EXPECT_TRUE(stopped);
}

TEST_F(StatPlot, KnownDataGiveKnownClassCounts) {
    std::vector<std::string> one_to_ten;
    for (int i = 1; i <= 10; ++i) one_to_ten.push_back(std::to_string(i));
    // Three classes of width 3 from 1 to 10: [1,4], (4,7], (7,10].
    EXPECT_EQ(counts(one_to_ten, {IntervalChoice::SetEqualIntervals, 3, false}), (std::vector<int>{4, 3, 3}));
    // Ten values give the square root of 10, truncated: three classes again.
    EXPECT_EQ(counts(one_to_ten, {IntervalChoice::AutoEqualIntervals, 0, false}), (std::vector<int>{4, 3, 3}));
    // Five classes of width 1.8: [1,2.8], (2.8,4.6], (4.6,6.4], (6.4,8.2], (8.2,10].
    EXPECT_EQ(counts(one_to_ten, {IntervalChoice::SetEqualIntervals, 5, false}), (std::vector<int>{2, 2, 2, 2, 2}));
    // Pareto order: fullest first.
    const std::vector<std::string> skewed{"1", "9", "9.5", "10", "8", "2"};
    EXPECT_EQ(counts(skewed, {IntervalChoice::SetEqualIntervals, 3, false}), (std::vector<int>{2, 0, 4}));
    EXPECT_EQ(counts(skewed, {IntervalChoice::SetEqualIntervals, 3, true}), (std::vector<int>{4, 2, 0}));
    // Two values and 99 classes: the ends are full, the rest empty.
    const auto many = counts({"0", "1"}, {IntervalChoice::SetEqualIntervals, 99, false});
    ASSERT_EQ(many.size(), 99u);
    EXPECT_EQ(many.front(), 1);
    EXPECT_EQ(many.back(), 1);
    EXPECT_EQ(std::accumulate(many.begin(), many.end(), 0), 2);
}

TEST_F(StatPlot, InputsThatGiveNoDistributionAreRefusedWithTheReason) {
    EXPECT_TRUE(counts({"1"}, {}).empty());
    EXPECT_NE(error.find("At least two"), std::string::npos);
    EXPECT_TRUE(counts({"1", "2"}, {IntervalChoice::SetEqualIntervals, 100, false}).empty());
    EXPECT_NE(error.find("from 2 to 99"), std::string::npos);
    // A normal fit needs five points a class.
    EXPECT_TRUE(counts({"1", "2", "3", "4"}, {IntervalChoice::AutoEqualProbabilities, 0, false}).empty());
    EXPECT_NE(error.find("at least 5"), std::string::npos);
    EXPECT_TRUE(counts({"1", "sqrt(-4)"}, {}).empty());
    EXPECT_NE(error.find("Data point 2"), std::string::npos);
    EXPECT_NE(error.find("real numbers"), std::string::npos);
}

TEST_F(StatPlot, TheGraphIsMadeOnceAndTakesEachNewDistribution) {
    document::Document document(parser);
    const graph::StrDataPnts data = data_of({"1", "2", "2", "3"}, "Heights");
    auto frequencies = frequency_distribution(parser, {"1", "2", "2", "3"}, {IntervalChoice::SetEqualIntervals, 2, false}, error);
    ASSERT_TRUE(frequencies) << error;
    const int index = graph_frequencies(document, data, *frequencies, false, frequency_graph_name(data));
    ASSERT_EQ(index, 0);
    graph::GraphData& graph = document.Graphs[0].Data;
    EXPECT_EQ(graph.Name, "Frequency Plot for Heights");
    EXPECT_EQ(graph.Type, graph::graph_type::Hystogram);
    EXPECT_EQ(graph.MarginBottom2D, 150);
    EXPECT_EQ(graph.Footer, "Hystogram for Heights");
    EXPECT_EQ(graph.XAxisTitle, "Frequency Intervals for Heights");
    ASSERT_EQ(graph.DataSets.size(), 1u);
    const graph::StrDataPnts& set = graph.DataSets.front();
    EXPECT_EQ(set.Label, "Freq. Dist");
    // Classes [1,2] and (2,3]: middles 1.5 and 2.5, counts 3 and 1.
    EXPECT_EQ(*set.GetXDataPoint(0), "1.5");
    EXPECT_EQ(*set.GetXDataPoint(1), "2.5");
    EXPECT_EQ(*set.GetYDataPoint(0), "3");
    EXPECT_EQ(*set.GetYDataPoint(1), "1");

    // A footer the user wrote stays; the same data reuse the graph, now as a Pareto chart.
    graph.SetFooter("My footer", true);
    frequencies = frequency_distribution(parser, {"1", "3", "3"}, {IntervalChoice::SetEqualIntervals, 2, true}, error);
    ASSERT_TRUE(frequencies);
    EXPECT_EQ(graph_frequencies(document, data, *frequencies, true, "unused"), 0);
    EXPECT_EQ(document.Graphs.size(), 1u);
    EXPECT_EQ(graph.Type, graph::graph_type::Pareto);
    EXPECT_EQ(graph.Footer, "My footer");
    EXPECT_EQ(*graph.DataSets.front().GetYDataPoint(0), "2");
}

TEST_F(StatPlot, ANewGraphTakesTheUsersDefaultOrientationAndColours) {
    store::IniFile settings("unused.ini");
    settings.SetText("[Graph Default Orientation]\r\nDepth2D=35\r\nInclination2D=40\r\n"
                     "[Graph Default Colors]\r\nBackground=10,20,30\r\n");
    document::Document document(parser);
    const graph::StrDataPnts data = data_of({"1", "2", "2", "3"});
    const auto frequencies = frequency_distribution(parser, {"1", "2", "2", "3"}, {}, error);
    ASSERT_TRUE(frequencies) << error;
    graph::GraphData& graph = document.Graphs[static_cast<size_t>(
        graph_frequencies(document, data, *frequencies, false, frequency_graph_name(data), &settings))].Data;
    EXPECT_EQ(graph.Depth, 35);
    EXPECT_EQ(graph.BackgroundColor, 0x1E140Au); // r,g,b kept as 0x00BBGGRR
    // The bars stand flat whatever the user's inclination.
    EXPECT_EQ(graph.Inclination, 0);
    EXPECT_EQ(graph.DefaultInclination, 0);
    // A graph that exists keeps the colours it has.
    graph.BackgroundColor = 0x123456;
    graph_frequencies(document, data, *frequencies, true, "unused", &settings);
    EXPECT_EQ(document.Graphs.size(), 1u);
    EXPECT_EQ(graph.BackgroundColor, 0x123456u);
}

TEST_F(StatPlot, AFileOfSingleValuesIsReadAndOneWithPairsRefused) {
    const auto folder = std::filesystem::temp_directory_path() / "quorvex_stat_plot_test";
    std::filesystem::create_directories(folder);
    const auto values = folder / "weights.txt";
    std::ofstream(values) << "Weight\n1) 2.5\n2) 2*3\n\n7\n"; // a header line above the values
    const auto data = read_stat_values(parser, values.string(), error);
    ASSERT_TRUE(data) << error;
    EXPECT_EQ(data->Name, "weights");
    ASSERT_EQ(data->GetNumXDataPoints(), 3);
    EXPECT_EQ(*data->GetXDataPoint(1), "2*3"); // kept as typed, evaluated when shown
    EXPECT_EQ(stat_value_texts(parser, *data, 6, nullptr), (std::vector<std::string>{"2.5", "6", "7"}));

    const auto pairs = folder / "pairs.txt";
    std::ofstream(pairs) << "1\n3 4\n";
    EXPECT_FALSE(read_stat_values(parser, pairs.string(), error));
    EXPECT_NE(error.find("at point number 2. There were y value coordinates found."), std::string::npos);
    EXPECT_FALSE(read_stat_values(parser, (folder / "missing.txt").string(), error));
    EXPECT_NE(error.find("missing.txt"), std::string::npos);
    std::filesystem::remove_all(folder);
}
