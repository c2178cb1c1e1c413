// Notes and labels: the "||" line-end form, the coordinates of a label text, and how the graph
// keeps its items' series and text-object indexes in step.
#include "graph/graph_data.h"

#include <gtest/gtest.h>

using namespace quorvex::graph;

TEST(GraphNote, LineEndsTravelAsDoubleBars) {
    GraphNote note("first||second||", 10, 20, 3, true);
    EXPECT_EQ(note.Text, "first\r\nsecond\r\n");
    EXPECT_EQ(note.GetIniNote(), "first||second||");
    EXPECT_TRUE(note.XStr.empty()); // a note is never read as coordinates
    note.SetNote(nullptr);
    EXPECT_EQ(note.Text, "first\r\nsecond\r\n");
    note.SetNote("|||");
    EXPECT_EQ(note.GetIniNote(), "|||");
}

TEST(GraphNote, LabelTextGivesTheCoordinates) {
    GraphNote label(" (1 , 2) ", 0, 4, -1, false);
    EXPECT_EQ(label.XStr, "1");
    EXPECT_EQ(label.YStr, "2");
    EXPECT_TRUE(label.SetValues("(max(1,2) , 2 , 3)"));
    EXPECT_EQ(label.XStr, "max(1,2)");
    EXPECT_EQ(label.ZStr, "3");

    // Anything else clears the coordinates and reads nothing.
    for (const char* bad : {"", " ", "(", "()", "(1,2)", "(1 , 2", "1 , 2)", "x (1 , 2)", "(1 , 2)  ",
                            static_cast<const char*>(nullptr)}) {
        label.SetValues("(7 , 8 , 9)");
        EXPECT_FALSE(label.SetValues(bad)) << (bad ? bad : "null");
        EXPECT_TRUE(label.XStr.empty() && label.YStr.empty() && label.ZStr.empty());
    }
    label.SetNote("(5 , 6)");
    label.SetIsNote(true);
    EXPECT_TRUE(label.XStr.empty());
    label.SetIsNote(false);
    EXPECT_EQ(label.XStr, "5");
}

TEST(GraphNotes, IndexesFollowTheWindowsTextObjects) {
    GraphData graph;
    graph.SetNote("a", 100, 50, -1, true);
    graph.SetNote("(1 , 1)", 100, 50, -1, false);
    graph.SetNote("b", 100, 50, -1, true);
    graph.ResetNoteIndexes();
    EXPECT_TRUE(graph.IsLabelIndex(1));
    EXPECT_FALSE(graph.IsNoteIndex(1));

    graph.SetNoteIndex(100, 50, true, 9); // both notes, not the label
    EXPECT_EQ(graph.Notes.back().Index, 9);
    EXPECT_EQ(std::next(graph.Notes.begin())->Index, 1);

    graph.ResetNoteIndexes();
    EXPECT_TRUE(graph.DeleteNote(1));
    EXPECT_EQ(graph.Notes.back().Index, 1); // moved down into the gap
    EXPECT_FALSE(graph.DeleteNote(42));
    EXPECT_EQ(graph.SetNote(GraphNote("c||d", 1, 2, 5, true)).GetIniNote(), "c||d");
    EXPECT_EQ(graph.GetNumNotes(), 3);
}

TEST(GraphNotes, LabelsMoveWithTheirSeries) {
    GraphData graph;
    graph.Functions.emplace_back("f[x]", "x");
    graph.Functions.emplace_back("g[x]", "2x");
    graph.SetNote("note", 0, 0, -1, true); // a note at pixel 0,0 is no label of series 0
    graph.SetNote("(1 , 1)", 0, 0, -1, false);
    graph.SetNote("(2 , 4)", 1, 1, -1, false);
    graph.SetNote("(3 , 9)", 2, 2, -1, false); // the first data set: series 2
    graph.SetNote("(4 , 5)", 3, 0, -1, false);
    EXPECT_EQ(graph.GetNumLabels(-1), 4);
    EXPECT_EQ(graph.GetNumLabels(0), 1);
    EXPECT_EQ(graph.GetNumLabels(1, 2), 2);
    EXPECT_EQ(graph.GetLabel(2, 2)->YStr, "9");
    EXPECT_EQ(graph.GetLabel(2, 1), nullptr);

    graph.RemoveLabelSet(0, false); // the first data set: series 2 goes, series 3 moves down
    EXPECT_EQ(graph.GetLabel(2, 0)->XStr, "4");
    graph.RemoveLabelSet(0, true); // the first function
    EXPECT_EQ(graph.GetNumLabels(-1), 2);
    EXPECT_EQ(graph.GetLabel(0, 1)->XStr, "2");
    EXPECT_EQ(graph.GetNumNotes(), 1);

    graph.IncrementLabelSets(1); // a new function takes series 0
    EXPECT_EQ(graph.GetLabel(1, 1)->XStr, "2");
    EXPECT_EQ(graph.GetLabel(1, 0)->XStr, "4"); // series 1 was not below the limit

    graph.FlushLabels();
    EXPECT_EQ(graph.GetNumLabels(-1), 0);
    EXPECT_EQ(graph.GetNumNotes(), 1);
    graph.SetNote("(1 , 1)", 0, 0, -1, false);
    graph.FlushNotes();
    EXPECT_EQ(graph.GetNumNotes(), 0);
    EXPECT_EQ(graph.GetNumLabels(-1), 1);
}

TEST(GraphNotes, LabelsFollowTheirSeriesWhenTheFunctionsChange) {
    GraphData graph;
    graph.Functions = {Function("f[x]", "x"), Function("g[x]", "2*x")}; // g is series 0, f series 1
    graph.DataSets.emplace_back();                                      // series 2
    graph.SetNote("(1 , 1)", 1, 0, -1, false);                          // on f
    graph.SetNote("(1 , 2)", 0, 0, -1, false);                          // on g
    graph.SetNote("(5 , 6)", 2, 3, -1, false);                          // on the data set
    graph.SetNote("note", 0, 0, -1, true);                              // pixels, not a series

    // A function added last takes series 0: every label moves up by one.
    graph.ReplaceFunctions({Function("f[x]", "x"), Function("g[x]", "2*x"), Function("h[x]", "3*x")});
    EXPECT_EQ(graph.GetLabel(2, 0)->YStr, "1");
    EXPECT_EQ(graph.GetLabel(1, 0)->YStr, "2");
    EXPECT_EQ(graph.GetLabel(3, 3)->YStr, "6");
    EXPECT_EQ(graph.GetNumLabels(0), 0);
    EXPECT_EQ(graph.Functions.size(), 3u);

    // The same list again (the sheet stores its pages often) moves nothing.
    graph.ReplaceFunctions(graph.Functions);
    EXPECT_EQ(graph.GetLabel(2, 0)->YStr, "1");
    EXPECT_EQ(graph.GetLabel(3, 3)->YStr, "6");

    // g removed: its label goes, f (now series 1) and the data set (2) move down.
    graph.ReplaceFunctions({Function("f[x]", "x"), Function("h[x]", "3*x")});
    EXPECT_EQ(graph.GetNumLabels(-1), 2);
    EXPECT_EQ(graph.GetLabel(1, 0)->YStr, "1");
    EXPECT_EQ(graph.GetLabel(2, 3)->YStr, "6");
    EXPECT_EQ(graph.GetNumNotes(), 1);
    EXPECT_EQ(graph.Notes.back().PosX, 0);
}

TEST(GraphNotes, LabelsFollowTheirDataSets) {
    GraphData graph;
    graph.Functions = {Function("f[x]", "x")}; // series 0
    for (const char* name : {"a", "b", "c"}) graph.DataSets.emplace_back().SetName(name); // series 1, 2, 3
    graph.SetNote("(0 , 1)", 0, 0, -1, false);
    graph.SetNote("(0 , 2)", 1, 0, -1, false);
    graph.SetNote("(0 , 3)", 2, 0, -1, false);
    graph.SetNote("(0 , 4)", 3, 0, -1, false);
    std::list<StrDataPnts> sets = graph.DataSets;
    sets.erase(std::next(sets.begin())); // b removed: its label goes, c's moves down
    graph.ReplaceDataSets(sets);
    EXPECT_EQ(graph.GetNumLabels(-1), 3);
    EXPECT_EQ(graph.GetLabel(0, 0)->YStr, "1");
    EXPECT_EQ(graph.GetLabel(1, 0)->YStr, "2");
    EXPECT_EQ(graph.GetLabel(2, 0)->YStr, "4");
    graph.ReplaceDataSets(graph.DataSets); // again: nothing moves
    EXPECT_EQ(graph.GetLabel(2, 0)->YStr, "4");
    EXPECT_EQ(graph.DataSets.size(), 2u);
}
