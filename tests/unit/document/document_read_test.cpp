// Reading documents written by hand: every section lands where it belongs, with the format's
// quirks, and damaged files load what they can with their messages.
#include "document_test_support.h"

#include "graph/graph_limits.h"

#include <gtest/gtest.h>

#include <random>

using namespace document_test;
using quorvex::graph::GraphData;

namespace {

const GraphData& graph_named(const quorvex::document::Document& doc, const std::string& name) {
    for (const auto& graph : doc.Graphs)
        if (graph.Data.Name == name) return graph.Data;
    throw std::runtime_error("no graph " + name);
}

} // namespace

TEST(DocumentRead, TextEngineSettingsAndFont) {
    Editor e;
    ASSERT_TRUE(e.doc.Read(fixture("full.qvx")));
    EXPECT_TRUE(e.reporter.messages.empty()) << e.reporter.messages.front().text;
    const std::vector<std::string> lines{"a = 5", "b = a*2 = 10", "// a comment line", "",
                                         "f[x] = x^2+a", "[Notes] in the text are only text"};
    EXPECT_EQ(e.doc.Lines, lines);

    EXPECT_EQ(e.parser.variable_count(), 4);
    EXPECT_EQ(std::string(e.parser.get_var_str_value("b", 14, false)), "+10"); // the document's leading sign
    EXPECT_TRUE(e.parser.is_variable("c"));
    EXPECT_FALSE(e.parser.var_assigned("c"));
    EXPECT_TRUE(e.parser.var_incremented("t"));
    EXPECT_EQ(e.parser.get_var_numpoints("t"), 25);
    EXPECT_EQ(e.parser.get_var_value("t"), quorvex::engine::complex(2, 0));
    ASSERT_EQ(e.parser.function_count(), 2);
    EXPECT_EQ(e.parser.function_at(1)->full_name(), "g[x,y]");

    EXPECT_FLOAT_EQ(e.parser.answer_format().zero_precision, 1e-9f);
    EXPECT_EQ(e.parser.answer_format().precision, 10);
    EXPECT_EQ(e.parser.variable_format().precision, 8);
    EXPECT_EQ(e.parser.answer_format().format, 1);
    EXPECT_TRUE(e.parser.answer_format().dec_point);
    EXPECT_TRUE(e.parser.variable_format().lead_sign);
    EXPECT_EQ(e.parser.angle_type(), 1);

    EXPECT_EQ(e.doc.Font.FaceName, "Courier New");
    EXPECT_EQ(e.doc.Font.Weight, 400);
    EXPECT_EQ(e.doc.Font.PitchAndFamily, 49);
    EXPECT_EQ(e.doc.Font.Color, 0x800000u); // blue in the high byte
}

TEST(DocumentRead, ToolsAndMatrices) {
    Editor e;
    ASSERT_TRUE(e.doc.Read(fixture("full.qvx")));
    const auto& tools = e.doc.Tools;
    EXPECT_EQ(tools.Integration.IntType, 2);
    EXPECT_EQ(tools.Integration.IntXHiLimit, "PI");
    EXPECT_EQ(tools.Differentiation.DiffDispFirstDir, 0);
    EXPECT_EQ(tools.RootFinder.RootFinderPrecision, 9);
    EXPECT_EQ(tools.RootFinder.RootFinderXp[7], "-1.4142135623731");
    EXPECT_EQ(tools.RootFinder.RootFinderXp[99], "42");
    EXPECT_TRUE(tools.RootFinder.RootFinderXp[1].empty());
    // Saved as 20 under the root finder's key; the reader asks for its own key.
    EXPECT_EQ(tools.QuickCalc.QuickCalcPrecision, 14);
    EXPECT_EQ(tools.QuickGraph.QuickGraph2DGraphType, 13);
    EXPECT_EQ(tools.QuickGraph.Graph3D.Var2, "y");
    EXPECT_EQ(tools.QuickGraph.QuickGraph3DGraphType, "Surface");

    const auto& fit = tools.CurveFitting.DataSet;
    EXPECT_EQ(fit.Name, "measured");
    EXPECT_EQ(fit.Label, "Measured values");
    EXPECT_TRUE(fit.HasLineColor);
    EXPECT_EQ(fit.LineColor, 0x0000FFu);
    EXPECT_EQ(fit.LineWidth, 2);
    EXPECT_EQ(*fit.GetYDataPoint(1), "3.5");
    EXPECT_EQ(*fit.GetYDataPoint(2), "1E+308"); // a missing Y
    EXPECT_EQ(*fit.GetYDataPoint(3), "1E+308");
    EXPECT_EQ(*tools.StatPlotting.DataSet.GetYDataPoint(1), "2*40"); // the text, not its value
    EXPECT_EQ(tools.StatPlotting.DataSet.GetXDataPoint(0), nullptr);

    ASSERT_EQ(e.doc.Matrices.size(), 2u);
    EXPECT_EQ(e.doc.Matrices[0].Name(), "A");
    EXPECT_EQ(*e.doc.Matrices[0].GetStrValue(1, 0), "a*3");
    EXPECT_EQ(e.doc.Matrices[1].NumRows(), 3);
    EXPECT_EQ(e.doc.Matrices[1].NumCols(), 1);
    EXPECT_FALSE(e.doc.Matrices[1].GetStrValue(1, 0).has_value());
}

TEST(DocumentRead, GraphsOfEachKind) {
    Editor e;
    ASSERT_TRUE(e.doc.Read(fixture("full.qvx")));
    ASSERT_EQ(e.doc.Graphs.size(), 4u);

    const GraphData& parabola = graph_named(e.doc, "Parabola");
    EXPECT_EQ(parabola.GetGraphType(), 1);
    EXPECT_EQ(parabola.Type, 13);
    EXPECT_EQ(parabola.Depth, 30);
    EXPECT_EQ(parabola.MarginBottom2D, 80);
    EXPECT_EQ(parabola.YAxisLogarithmic, 1);
    EXPECT_FALSE(parabola.GraphTwoSolutions);
    EXPECT_TRUE(parabola.ApplyAllLineWidths);
    EXPECT_EQ(parabola.ShowGridLines, 0);
    EXPECT_EQ(parabola.Header, "A parabola");
    ASSERT_TRUE(parabola.XAxisVar);
    EXPECT_EQ(parabola.XAxisVar->num_points(), 41);
    ASSERT_EQ(parabola.Functions.size(), 1u);
    EXPECT_EQ(parabola.Functions[0].label(), "the parabola");
    EXPECT_EQ(e.doc.Graphs[0].StyleOf(0).LineColor, 0x00FF00u);
    EXPECT_EQ(e.doc.Graphs[0].StyleOf(0).LineWidth, 3);
    ASSERT_EQ(parabola.Notes.size(), 2u);
    EXPECT_EQ(parabola.Notes.front().Text, "Minimum\r\nat zero");
    EXPECT_TRUE(parabola.Notes.front().IsNote);
    EXPECT_EQ(parabola.Notes.back().Index, 1);
    EXPECT_FALSE(parabola.Notes.back().IsNote);

    const GraphData& surface = graph_named(e.doc, "Surface of g");
    EXPECT_EQ(surface.GetGraphType(), 2); // both axis variables
    EXPECT_EQ(surface.Type3D, 1011u);
    EXPECT_FLOAT_EQ(surface.XRotation, 45.5f);
    EXPECT_FLOAT_EQ(surface.Scale, 1.25f);
    EXPECT_EQ(surface.MeshBottomColor, 0x1E140Au);

    const GraphData& empty = graph_named(e.doc, "Graph3"); // an empty value names it after its key
    EXPECT_EQ(empty.GetGraphType(), 0);
    EXPECT_EQ(empty.Type, 1);

    const GraphData& cloud = graph_named(e.doc, "Cloud");
    EXPECT_EQ(cloud.GetGraphType(), 2); // Z data
    EXPECT_EQ(*cloud.DataSets.front().GetZDataPoint(), "3");
}

TEST(DocumentRead, WrongValuesAreReportedAndSkipped) {
    Editor e;
    ASSERT_TRUE(e.doc.Read(fixture("damaged_values.qvx")));
    EXPECT_EQ(e.doc.Lines, std::vector<std::string>{"2+2"});
    EXPECT_EQ(std::string(e.parser.get_var_str_value("ok", 14, false)), "3");
    EXPECT_TRUE(e.reporter.said("Variable 'broken' could not be loaded!"));
    EXPECT_TRUE(e.reporter.said("Function 'h[x]' could not be loaded!"));
    EXPECT_TRUE(e.parser.is_function("k"));
    EXPECT_EQ(e.parser.answer_format().precision, 14);
    EXPECT_FLOAT_EQ(e.parser.answer_format().zero_precision, 1e-12f);
    EXPECT_EQ(e.parser.angle_type(), 1);
    ASSERT_EQ(e.doc.Matrices.size(), 1u); // the count is bounded by the sections there are
    EXPECT_EQ(e.doc.Matrices[0].NumRows(), 10);

    ASSERT_EQ(e.doc.Graphs.size(), 1u);
    const GraphData& graph = e.doc.Graphs[0].Data;
    EXPECT_EQ(graph.Functions.size(), 2u);
    EXPECT_FALSE(graph.XAxisVar);
    EXPECT_TRUE(e.reporter.said("File data for the variables in graph \"Damaged\" could not be completely loaded, "
                                "your file may be corrupt!"));
    EXPECT_TRUE(e.reporter.said("File data for data set \"set\" (X Data Point #1) in graph \"Damaged\""));
    EXPECT_TRUE(e.reporter.said("File data for data set \"set\" (Y Data Point #2) in graph \"Damaged\""));
    EXPECT_TRUE(e.reporter.said("File data for data set 2 of graph \"Damaged\" does not have a name"));
    EXPECT_TRUE(e.reporter.said("File data for note 1 of graph \"Damaged\" does not have any x coordinate value"));
    EXPECT_TRUE(e.reporter.said("File data for note 2 of graph \"Damaged\" does not have any text"));
    // A tool's set with keys but no name is damage; a tool that saved no set is not.
    EXPECT_TRUE(e.reporter.said("File data for data set 1 of graph \"Curve Fitting Data\" does not have a name"));
    EXPECT_FALSE(e.reporter.said("graph \"Stat Plotting Data\""));
    ASSERT_EQ(graph.DataSets.size(), 1u);
    EXPECT_FALSE(graph.DataSets.front().GetXDataPoint(0));
    EXPECT_EQ(*graph.DataSets.front().GetYDataPoint(1), "1E+308");
    EXPECT_TRUE(graph.Notes.empty());
    EXPECT_EQ(graph.Type, 1);
    for (const Message& m : e.reporter.messages) EXPECT_FALSE(m.caption.empty());
}

TEST(DocumentRead, TruncatedAndGarbageFilesNeverBreakTheLoad) {
    const std::string full = file_bytes(fixture("full.qvx"));
    ASSERT_FALSE(full.empty());
    for (size_t cut = 0; cut < full.size(); cut += 97) {
        Editor e;
        EXPECT_TRUE(e.doc.ReadText(std::string_view(full).substr(0, cut))) << cut;
    }
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        std::string garbage(static_cast<size_t>(random() % 4000), '\0');
        for (char& c : garbage) c = static_cast<char>(random() % 256);
        // Some of the time, garbage inside a valid frame.
        if (round % 2) garbage = full.substr(0, full.size() / 2) + garbage + full.substr(full.size() / 2);
        Editor e;
        EXPECT_TRUE(e.doc.ReadText(garbage));
    }
    Editor missing;
    EXPECT_FALSE(missing.doc.Read(fixture("no such file.qvx")));
    EXPECT_TRUE(missing.reporter.said("Could Not Be Opened!"));
}

TEST(DocumentRead, ReplacesWhatTheEngineHeldAndCanBeCancelled) {
    Editor e;
    e.parser.eval_exp("old = 1", true, false, false);
    e.parser.eval_exp("f(x) = x", true, false, false);
    ASSERT_TRUE(e.doc.Read(fixture("setup_only.qvx")));
    EXPECT_EQ(e.parser.variable_count(), 0);
    // A file that declares nothing is read whole: nothing is left to save.
    EXPECT_TRUE(e.parser.vars_saved());
    EXPECT_TRUE(e.parser.funcs_saved());
    EXPECT_TRUE(e.doc.Lines.empty());
    EXPECT_TRUE(e.doc.Graphs.empty());

    struct Stop : quorvex::engine::Host {
        bool aborted() const override { return true; }
    } stop;
    e.doc.set_host(&stop);
    EXPECT_FALSE(e.doc.Read(fixture("full.qvx")));
}

TEST(DocumentRead, WhatTheFileHoldsIsLoadedAndWhatCouldNotBeKeptIsTold) {
    Editor e;
    ASSERT_TRUE(e.doc.ReadText("a+b\r\n"
                               "[DECLARED VARIABLES]\r\na=1\r\n"
                               "[DECLARED FUNCTIONS]\r\nf[x]=x+1\r\n"
                               "[DECLARED VARIABLES]\r\nb=2\r\nhuge=0 (0,1,3000000000,0)\r\n"
                               "[DECLARED FUNCTIONS]\r\ng[x]=2*x\r\n"
                               "[CURVE FITTING PARAMETERS]\r\nDataSet1=m\r\nmNumPts=10\r\nmPt0=0,1,\r\nmPt1=1,3,\r\n"
                               "[MATRIX PARAMETERS]\r\nNumberOfMatrices=1\r\n"
                               "[Matrix0]\r\nName=M\r\nNumRows=1000\r\nNumCols=3\r\nValue(0,0)=7\r\n"));
    // Repeated sections are read as one: the text ends at the first header.
    EXPECT_EQ(e.doc.Lines, std::vector<std::string>{"a+b"});
    EXPECT_EQ(std::string(e.parser.get_var_str_value("b", 14, false)), "2");
    EXPECT_TRUE(e.parser.is_function("g"));
    EXPECT_TRUE(e.reporter.said("The section [DECLARED VARIABLES] appears more than once"));
    EXPECT_TRUE(e.reporter.said("The section [DECLARED FUNCTIONS] appears more than once"));
    // A point count beyond 32 bits is refused, not cut.
    EXPECT_FALSE(e.parser.is_variable("huge") && e.parser.get_var_numpoints("huge") > 1);
    EXPECT_TRUE(e.reporter.said("Variable 'huge' could not be loaded!"));
    // No points are made up for a count the file does not hold.
    const auto& set = e.doc.Tools.CurveFitting.DataSet;
    EXPECT_EQ(set.GetMaxXYZPoint(), 1);
    EXPECT_TRUE(e.reporter.said("Data set \"m\" of graph \"Curve Fitting Data\" is saved with 10 points but the file "
                                "holds 2"));
    // A matrix larger than a matrix can be keeps its first 10 rows, and the user hears of it.
    ASSERT_EQ(e.doc.Matrices.size(), 1u);
    EXPECT_EQ(e.doc.Matrices[0].NumRows(), 10);
    EXPECT_EQ(e.doc.Matrices[0].NumCols(), 3);
    EXPECT_EQ(*e.doc.Matrices[0].GetStrValue(0, 0), "7");
    EXPECT_TRUE(e.reporter.said("Matrix ' M ' is saved as 1000 by 3"));
}

TEST(DocumentRead, OverlongTitlesNotesAndLabelsAreCutAndTold) {
    Editor e;
    const std::string long_text(5000, 'A');
    ASSERT_TRUE(e.doc.ReadText("[DECLARED FUNCTIONS]\r\nf[x]=x+1\r\n[GRAPHS]\r\nGraph1=G\r\n[Graph1]\r\nHeader=" +
                               long_text + "\r\nFooter=short\r\nYAxisTitle=" + long_text +
                               "\r\nXAxisVariable=x(0,1,11)\r\nFunction1=f[x]=x+1\r\nLabel1=" + long_text +
                               "\r\nNumNotes=1\r\nNoteText1=" + long_text + "||second line" +
                               "\r\nNoteXPoint1=10\r\nNoteYPoint1=10\r\nNoteIsNote1=1\r\n"));
    ASSERT_EQ(e.doc.Graphs.size(), 1u);
    const GraphData& graph = e.doc.Graphs[0].Data;
    EXPECT_EQ(graph.Header, long_text.substr(0, quorvex::graph::k_max_graph_text));
    EXPECT_EQ(graph.YAxisTitle.size(), quorvex::graph::k_max_graph_text);
    EXPECT_EQ(graph.Functions.at(0).label().size(), quorvex::graph::k_max_graph_text);
    ASSERT_EQ(graph.Notes.size(), 1u);
    EXPECT_EQ(graph.Notes.front().Text.size(), quorvex::graph::k_max_graph_text);
    EXPECT_EQ(graph.Footer, "short");
    EXPECT_TRUE(e.reporter.said("The header of the graph \"G\" had 5000 characters; a graph's titles, notes and "
                                "labels hold at most 1024"));
    EXPECT_TRUE(e.reporter.said("The Y axis title of the graph \"G\""));
    EXPECT_TRUE(e.reporter.said("The label of \"f[x]\" of the graph \"G\""));
    EXPECT_TRUE(e.reporter.said("The note 1 of the graph \"G\""));
    EXPECT_EQ(e.reporter.messages.size(), 4u);
}

TEST(DocumentRead, ADocumentJustReadHasNothingToSave) {
    // Plain text without sections, and files with only one kind of declaration: the engine's
    // state is what the file holds, whatever the engine held before.
    for (const char* text : {"1+2\r\nx*3\r\n", "y = 2\r\n[DECLARED VARIABLES]\r\ny=2\r\n",
                             "[DECLARED FUNCTIONS]\r\nh[x]=x/2\r\n"}) {
        Editor e;
        e.parser.eval_exp(std::string_view("old = 1"), true, true, false);
        e.parser.eval_exp(std::string_view("k[x] = x"), true, true, false);
        ASSERT_TRUE(e.doc.ReadText(text)) << text;
        EXPECT_TRUE(e.parser.vars_saved()) << text;
        EXPECT_TRUE(e.parser.funcs_saved()) << text;
    }
}

TEST(DocumentRead, AGraphWithTensOfThousandsOfDataSetsReadsThemAll) {
    // Each set bounds its point count by the keys of the section; that bound must not be found
    // by listing the whole section once per set, which made such a file take minutes.
    constexpr int k_sets = 20000;
    std::string text = "[SETUP]\r\n[GRAPHS]\r\nGraph1=Many\r\n[Graph1]\r\nNumDataSets=" + std::to_string(k_sets) + "\r\n";
    for (int n = 1; n <= k_sets; ++n) {
        const std::string name = "s" + std::to_string(n);
        text += "DataSet" + std::to_string(n) + "=" + name + "\r\n" + name + "NumPts=1\r\n" + name + "Pt0=" +
                std::to_string(n) + ",1,\r\n";
    }
    Editor e;
    ASSERT_TRUE(e.doc.ReadText(text));
    ASSERT_EQ(e.doc.Graphs.size(), 1u);
    const GraphData& many = e.doc.Graphs.front().Data;
    ASSERT_EQ(many.DataSets.size(), static_cast<size_t>(k_sets));
    EXPECT_EQ(*many.DataSets.back().GetXDataPoint(0), std::to_string(k_sets));
    EXPECT_TRUE(e.reporter.messages.empty());
}
