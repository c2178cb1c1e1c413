// The bounds of one graph: how much text a title holds.
#include "graph/graph_limits.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

TEST(GraphLimits, TextsAreCutByCharactersNeverInsideOne) {
    std::string text;
    for (size_t i = 0; i < k_max_graph_text + 5; ++i) text += "\xC3\xA9"; // é, two bytes each
    const std::string whole = text;
    ASSERT_TRUE(cut_graph_text(text));
    EXPECT_EQ(graph_text_length(text), k_max_graph_text);
    EXPECT_EQ(text, whole.substr(0, 2 * k_max_graph_text)); // the last character is whole
    EXPECT_FALSE(cut_graph_text(text));                     // at the bound nothing more goes

    // A graph's texts each with their own message; a short one is left alone.
    GraphData graph("G");
    graph.Header = std::string(k_max_graph_text + 1, 'h');
    graph.Footer = "footer";
    graph.Notes.emplace_back(std::string(2000, 'n').c_str(), 1, 2, -1, true);
    const std::vector<std::string> messages = cut_graph_texts(graph);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0], "The header of the graph \"G\" had 1025 characters; a graph's titles, notes and labels "
                           "hold at most 1024, so the rest was left out.");
    EXPECT_EQ(graph.Footer, "footer");
    EXPECT_EQ(graph.Notes.front().Text.size(), k_max_graph_text);
    EXPECT_TRUE(graph.Notes.front().IsNote);
}
