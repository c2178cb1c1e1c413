// Saving: the sections in their order and forms, round trips that change nothing, the warning
// for text that would end the text early, and saves that fail without harming the old file.
#include "document_test_support.h"

#include <gtest/gtest.h>

#include <unistd.h>

using namespace document_test;

namespace {

std::string compose(quorvex::document::Document& doc) {
    std::string text;
    EXPECT_TRUE(doc.Compose(text));
    return text;
}

// The names of the sections of a text, in order.
std::vector<std::string> section_order(const std::string& text) {
    std::vector<std::string> names;
    for (const std::string& line : quorvex::document::split_lines(text))
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') names.push_back(line);
    return names;
}

} // namespace

TEST(DocumentWrite, RoundTripsKeepModelAndBytes) {
    Editor first;
    ASSERT_TRUE(first.doc.Read(fixture("full.qvx")));
    const std::string once = compose(first.doc);
    Editor second;
    ASSERT_TRUE(second.doc.ReadText(once));
    const std::string twice = compose(second.doc);
    EXPECT_EQ(once, twice);

    EXPECT_EQ(second.doc.Lines, first.doc.Lines);
    EXPECT_EQ(second.doc.Font, first.doc.Font);
    EXPECT_EQ(second.doc.Tools.RootFinder, first.doc.Tools.RootFinder);
    EXPECT_EQ(second.doc.Tools.QuickGraph, first.doc.Tools.QuickGraph);
    EXPECT_EQ(second.doc.Tools.CurveFitting.DataSet.YPoints, first.doc.Tools.CurveFitting.DataSet.YPoints);
    EXPECT_EQ(second.parser.variable_count(), first.parser.variable_count());
    EXPECT_EQ(second.parser.angle_type(), 1);
    ASSERT_EQ(second.doc.Graphs.size(), first.doc.Graphs.size());
    for (size_t i = 0; i < first.doc.Graphs.size(); ++i) {
        const auto& a = first.doc.Graphs[i];
        const auto& b = second.doc.Graphs[i];
        EXPECT_EQ(a.Data.Name, b.Data.Name);
        EXPECT_EQ(a.Data.GetGraphType(), b.Data.GetGraphType());
        EXPECT_EQ(a.Data.Functions.size(), b.Data.Functions.size());
        EXPECT_EQ(a.Data.DataSets.size(), b.Data.DataSets.size());
        EXPECT_EQ(a.Data.Notes.size(), b.Data.Notes.size());
        EXPECT_EQ(a.FunctionStyles, b.FunctionStyles);
    }
    EXPECT_TRUE(second.reporter.messages.empty());
}

TEST(DocumentWrite, SectionsFormsAndQuirks) {
    Editor e;
    ASSERT_TRUE(e.doc.Read(fixture("full.qvx")));
    e.doc.Tools.QuickCalc.QuickCalcPrecision = 20;
    const std::string text = compose(e.doc);
    const std::vector<std::string> order{
        "[DECLARED VARIABLES]", "[DECLARED FUNCTIONS]", "[SETUP]", "[FONT]", "[INTEGRATION PARAMETERS]",
        "[DIFFERENTIATION PARAMETERS]", "[ROOT FINDER PARAMETERS]", "[QUICK CALC PARAMETERS]",
        "[CURVE FITTING PARAMETERS]", "[STAT PLOTTING PARAMETERS]", "[QUICK GRAPH PARAMETERS]",
        "[MATRIX PARAMETERS]", "[Matrix0]", "[Matrix1]", "[GRAPHS]", "[Graph1]", "[Graph2]", "[Graph3]",
        "[Graph4]"};
    EXPECT_EQ(section_order(text), order);
    EXPECT_NE(text.find("\r\nAnsZeroPrecision=1.0e-09\r\n"), std::string::npos);
    EXPECT_NE(text.find("[QUICK CALC PARAMETERS]\r\nQuickCalcFunc=COS(x)\r\nQuickCalcVar=x\r\nQuickCalcXo=0\r\n"
                        "QuickCalcXn=90\r\nQuickCalcIn=15\r\nRootFinderPrecision=20\r\n"),
              std::string::npos);
    EXPECT_NE(text.find("RootFinderXp99=42\r\n[QUICK CALC"), std::string::npos);
    EXPECT_NE(text.find("measuredPt2=2,1E+308,\r\n"), std::string::npos);
    EXPECT_NE(text.find("XAxisVariable=x(-2,2,41)\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\nt=+2\r\n"), std::string::npos); // present value only, as the engine shows it
    EXPECT_NE(text.find("Scale=1.250\r\n"), std::string::npos);
    EXPECT_NE(text.find("NoteText1=Minimum||at zero\r\n"), std::string::npos);
    EXPECT_NE(text.find("Value(1,0)=a*3\r\n"), std::string::npos);
    EXPECT_EQ(text.find("Value(1,0)=\r\n"), std::string::npos);
    // Graph3 has nothing to draw: no type, no 2-D or 3-D block. Graph2 is 3-D: its colours only.
    const std::string graph3 = text.substr(text.find("[Graph3]"), text.find("[Graph4]") - text.find("[Graph3]"));
    EXPECT_EQ(graph3.find("Type="), std::string::npos);
    EXPECT_EQ(graph3.find("Depth="), std::string::npos);
    const std::string graph2 = text.substr(text.find("[Graph2]"), text.find("[Graph3]") - text.find("[Graph2]"));
    EXPECT_NE(graph2.find("Type=1011\r\n"), std::string::npos);
    EXPECT_NE(graph2.find("MeshBottomColor=10,20,30\r\n"), std::string::npos);
    EXPECT_EQ(graph2.find("DataAreaForegroundColor"), std::string::npos);
    EXPECT_NE(text.find("ShowGridLines=0\r\nDataAreaForegroundColor=0,0,0\r\n"), std::string::npos);

    Editor reread;
    ASSERT_TRUE(reread.doc.ReadText(text));
    EXPECT_EQ(reread.doc.Tools.QuickCalc.QuickCalcPrecision, 14);
}

TEST(DocumentWrite, EmptyDocumentAndSetsSharingAName) {
    Editor e;
    std::string text = compose(e.doc);
    EXPECT_EQ(text.rfind("[SETUP]\r\nAnsZeroPrecision=1.0e-12\r\n", 0), 0u);
    EXPECT_EQ(quorvex::document::start_of_declarations(text), 0u);
    EXPECT_EQ(text.find("[GRAPHS]"), std::string::npos);
    EXPECT_EQ(text.find("[MATRIX PARAMETERS]"), std::string::npos);

    // Point keys are named by the set: the second set's points replace the first's.
    quorvex::document::DocumentGraph graph;
    graph.Data.Name = "twins";
    for (const char* y : {"1", "2"}) {
        quorvex::graph::StrDataPnts set;
        set.Name = "same";
        set.PutXDataPoint("0", 0);
        set.PutYDataPoint(y, 0);
        graph.Data.DataSets.push_back(set);
    }
    e.doc.Graphs.push_back(graph);
    text = compose(e.doc);
    EXPECT_NE(text.find("samePt0=0,2,\r\n"), std::string::npos);
    EXPECT_EQ(text.find("samePt0=0,1,"), std::string::npos);
}

TEST(DocumentWrite, TextLineEqualToAHeaderIsWarnedAbout) {
    TempDir dir;
    Editor e;
    e.doc.Lines = {"1+1", "[DECLARED VARIABLES]", "after the header"};
    ASSERT_TRUE(e.doc.Write(dir.file("cut.qvx")));
    ASSERT_EQ(e.reporter.messages.size(), 1u);
    EXPECT_NE(e.reporter.messages[0].text.find("\"[DECLARED VARIABLES]\" (line 2)"), std::string::npos);
    Editor back;
    ASSERT_TRUE(back.doc.Read(dir.file("cut.qvx")));
    EXPECT_EQ(back.doc.Lines, std::vector<std::string>{"1+1"});

    // With variables saved, only a declaration header ends the text.
    Editor kept;
    kept.parser.eval_exp("v = 3", true, false, false);
    kept.doc.Lines = {"[SETUP]", "[DECLARED FUNCTIONS]", "more"};
    ASSERT_TRUE(kept.doc.Write(dir.file("kept.qvx")));
    ASSERT_EQ(kept.reporter.messages.size(), 1u);
    EXPECT_NE(kept.reporter.messages[0].text.find("[DECLARED FUNCTIONS]"), std::string::npos);

    Editor fine;
    // The last header of a kind counts, so a [SETUP] of the text stands ahead of the real one.
    fine.doc.Lines = {"[SETUP]", "[setup]", " [SETUP]", "[FONT]", "Name=x"};
    ASSERT_TRUE(fine.doc.Write(dir.file("fine.qvx")));
    EXPECT_TRUE(fine.reporter.messages.empty());
    Editor fine_back;
    ASSERT_TRUE(fine_back.doc.Read(dir.file("fine.qvx")));
    EXPECT_EQ(fine_back.doc.Lines, fine.doc.Lines);
    EXPECT_EQ(fine_back.doc.Font, fine.doc.Font);
}

namespace {

// A document saved once as "old text" whose editor now holds "new text": what a failed save must
// leave on disk is `old`.
struct SavedOnce {
    TempDir dir;
    const std::string path = dir.file("doc.qvx");
    Editor e;
    std::string old;

    SavedOnce() {
        e.doc.Lines = {"old text"};
        EXPECT_TRUE(e.doc.Write(path));
        old = file_bytes(path);
        e.doc.Lines = {"new text"};
    }
};

} // namespace

TEST(DocumentWrite, FailedOrCancelledSaveLeavesTheOldFileWhole) {
    SavedOnce saved;
    auto& [dir, path, e, old] = saved;

    struct Stop : quorvex::engine::Host {
        bool aborted() const override { return true; }
    } stop;
    e.doc.set_host(&stop);
    EXPECT_FALSE(e.doc.Write(path));
    EXPECT_EQ(file_bytes(path), old);
    e.doc.set_host(nullptr);

    EXPECT_FALSE(e.doc.Write(dir.file("missing folder/doc.qvx")));
    EXPECT_TRUE(e.reporter.said("File was not saved!"));
    EXPECT_FALSE(e.doc.LastError().empty());

    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    e.reporter.messages.clear();
    EXPECT_FALSE(e.doc.Write(path));
    ASSERT_EQ(e.reporter.messages.size(), 1u);
    EXPECT_EQ(e.reporter.messages[0].text, "The file " + path + " is read only and can not be saved.");
    EXPECT_EQ(file_bytes(path), old);
}

TEST(DocumentWrite, SaveIntoAReadOnlyFolderLeavesTheOldFileWhole) {
    if (geteuid() == 0) GTEST_SKIP() << "the superuser writes into read-only folders";
    SavedOnce saved;
    auto& [dir, path, e, old] = saved;
    std::filesystem::permissions(dir.path, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_FALSE(e.doc.Write(path));
    EXPECT_TRUE(e.reporter.said("File was not saved!"));
    EXPECT_EQ(file_bytes(path), old);
}

// Found by fuzzing: a name or value that holds a line break or ends in blanks is written as it
// reads back, a declared name holding a lone CR loads as the blank it will be saved as, and a
// graph list line "=" (no key, so no section) is no graph, so that a saved document reads back to
// itself.
TEST(DocumentWrite, SavedDocumentsReadBackToThemselves) {
    for (const char* name : {"document_value_with_cr.qvx", "document_graph_without_key.qvx",
                             "document_cr_in_variable_name.qvx"}) {
        SCOPED_TRACE(name);
        Editor first;
        first.doc.Read(std::string(QUORVEX_FIXTURES) + "fuzz/" + name);
        std::string once, twice, thrice;
        ASSERT_TRUE(first.doc.Compose(once));
        Editor second;
        second.doc.ReadText(once);
        second.doc.Compose(twice);
        Editor third;
        third.doc.ReadText(twice);
        third.doc.Compose(thrice);
        EXPECT_EQ(thrice, twice);
        EXPECT_EQ(twice.find("\r\r"), std::string::npos);
    }
}

TEST(DocumentWrite, PreciseArithmeticIsTheDocumentsOwnChoiceElseTheProgramsOption) {
    const auto setup_key = [](const std::string& text) {
        const size_t setup = text.find("[SETUP]");
        const size_t key = text.find("PreciseArithmetic=");
        return key == std::string::npos || key < setup ? std::string() : text.substr(key, 19);
    };
    Editor e;
    e.doc.set_program_precise(true);
    ASSERT_TRUE(e.doc.ReadText("1/3*3\r\n[SETUP]\r\nAngleType=1\r\n"));
    EXPECT_FALSE(e.doc.precise_choice());
    EXPECT_TRUE(e.parser.precise()); // no key: the program's option
    EXPECT_EQ(setup_key(compose(e.doc)), "");

    e.doc.set_precise_choice(false);
    EXPECT_FALSE(e.parser.precise());
    e.doc.set_program_precise(true); // the program's option does not override the document's
    EXPECT_FALSE(e.parser.precise());
    const std::string saved = compose(e.doc);
    EXPECT_EQ(setup_key(saved), "PreciseArithmetic=0");

    Editor other;
    other.doc.set_program_precise(true);
    ASSERT_TRUE(other.doc.ReadText(saved));
    EXPECT_EQ(other.doc.precise_choice(), std::optional<bool>(false));
    EXPECT_FALSE(other.parser.precise());
    EXPECT_EQ(compose(other.doc), saved);
    // The same engine reads a document without a choice: back to the program's option.
    ASSERT_TRUE(other.doc.ReadText("2\r\n"));
    EXPECT_FALSE(other.doc.precise_choice());
    EXPECT_TRUE(other.parser.precise());

    Editor third; // the program's option off, set on the engine before the document was made
    ASSERT_TRUE(third.doc.ReadText("1\r\n[SETUP]\r\nPreciseArithmetic=1\r\n"));
    EXPECT_TRUE(third.parser.precise());
    EXPECT_EQ(setup_key(compose(third.doc)), "PreciseArithmetic=1");
    third.doc.set_precise_choice(std::nullopt);
    EXPECT_FALSE(third.parser.precise());
    EXPECT_EQ(setup_key(compose(third.doc)), "");
}
