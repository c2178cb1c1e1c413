// The desktop program's logic without windows: recent files, the keys that compute, the command
// line.
#include "desktop/editor_keys.h"
#include "desktop/launch_options.h"
#include "desktop/line_colouring.h"
#include "desktop/manager_checks.h"
#include "desktop/name_catalog.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "desktop/recent_files.h"
#include "store/ini_file.h"

#include <gtest/gtest.h>

using namespace quorvex::desktop;

TEST(RecentFiles, KeepsTenNewestFirstWithoutRepeatsAndReadsBackFromTheSettings) {
    quorvex::store::IniFile ini("");
    ini.SetText("[Recent File List]\r\nFile1=/a.qvx\r\nFile2=/b.qvx\r\nFile3=/A.qvx\r\nFile4=/a.qvx\r\n");
    RecentFiles recent(ini);
    EXPECT_EQ(recent.files(), (std::vector<std::string>{"/a.qvx", "/b.qvx", "/A.qvx"})); // paths keep their case
    recent.add("/b.qvx");
    EXPECT_EQ(recent.files().front(), "/b.qvx");
    EXPECT_EQ(recent.files().size(), 3u);
    for (int i = 0; i < 12; ++i) recent.add("/n" + std::to_string(i) + ".qvx");
    ASSERT_EQ(recent.files().size(), RecentFiles::k_limit);
    EXPECT_EQ(recent.files().front(), "/n11.qvx");
    EXPECT_EQ(recent.files().back(), "/n2.qvx");
    recent.remove("/n5.qvx");
    recent.store();

    RecentFiles again(ini);
    EXPECT_EQ(again.files(), recent.files());
    EXPECT_EQ(ini.GetString("Recent File List", "File10"), ""); // the freed place is not left stale
}

TEST(EditorKeys, EachCalculationMethodComputesOnItsOwnKeys) {
    // Method 0: only Shift+Enter computes, and its new line is swallowed.
    EXPECT_FALSE(decide_key(EditorKey::Enter, 0, 'x').compute);
    EXPECT_TRUE(decide_key(EditorKey::Enter, 0, 'x').type);
    EXPECT_TRUE(decide_key(EditorKey::ShiftEnter, 0, 'x').compute);
    EXPECT_FALSE(decide_key(EditorKey::ShiftEnter, 0, 'x').type);
    // Method 1: Enter computes and still makes the new line; '=' is typed.
    EXPECT_TRUE(decide_key(EditorKey::Enter, 1, 'x').compute);
    EXPECT_TRUE(decide_key(EditorKey::Enter, 1, 'x').type);
    EXPECT_FALSE(decide_key(EditorKey::Equals, 1, 'x').compute);
    // Method 2: '=' computes instead of being typed, except after : ! > <.
    EXPECT_TRUE(decide_key(EditorKey::Equals, 2, '3').compute);
    EXPECT_FALSE(decide_key(EditorKey::Equals, 2, '3').type);
    EXPECT_TRUE(decide_key(EditorKey::Equals, 2, 0).compute);
    for (const char c : {':', '!', '>', '<'}) {
        EXPECT_FALSE(decide_key(EditorKey::Equals, 2, c).compute) << c;
        EXPECT_TRUE(decide_key(EditorKey::Equals, 2, c).type) << c;
    }
    // F4 computes in every method and keeps the caret on the line.
    for (int method = 0; method <= 2; ++method) {
        EXPECT_TRUE(decide_key(EditorKey::F4, method, 'x').compute);
        EXPECT_TRUE(decide_key(EditorKey::F4, method, 'x').stay);
    }
}

TEST(EditorKeys, AnAnsweredLineAboveOthersIsComputedInPlace) {
    EXPECT_EQ(after_compute(true, false, false), AfterCompute::NextLine);
    EXPECT_EQ(after_compute(true, true, false), AfterCompute::StayOnLine);
    // The last line, and a line answered for the first time, get their new line.
    EXPECT_EQ(after_compute(true, false, true), AfterCompute::NewLine);
    EXPECT_EQ(after_compute(false, false, false), AfterCompute::NewLine);
    EXPECT_EQ(after_compute(false, true, false), AfterCompute::NewLine);
}

TEST(LaunchOptions, ReadsAFileTheDataFolderAndRefusesWhatItCanNotUse) {
    std::string error;
    auto options = parse_launch_options({"--data-dir", "/tmp/q", "work.qvx", "--new-instance"}, error);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->file, "work.qvx");
    EXPECT_EQ(options->data_dir, "/tmp/q");
    EXPECT_TRUE(options->new_instance);
    options = parse_launch_options({"--data-dir=/d", "--", "-odd name.qvx"}, error);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->data_dir, "/d");
    EXPECT_EQ(options->file, "-odd name.qvx");

    EXPECT_FALSE(parse_launch_options({"--data-dir"}, error));
    EXPECT_EQ(error, "--data-dir needs a folder");
    EXPECT_FALSE(parse_launch_options({"--data-dir="}, error));
    EXPECT_FALSE(parse_launch_options({"--frobnicate"}, error));
    EXPECT_EQ(error, "unknown option --frobnicate");
    EXPECT_FALSE(parse_launch_options({"a.qvx", "b.qvx"}, error));

    options = parse_launch_options({"--export-graph", "Parabola", "out.svg", "doc.qvx", "--size", "1200x800"}, error);
    ASSERT_TRUE(options);
    EXPECT_EQ(options->export_graph, "Parabola");
    EXPECT_EQ(options->export_path, "out.svg");
    EXPECT_EQ(options->file, "doc.qvx");
    EXPECT_EQ(options->export_width, 1200);
    EXPECT_EQ(options->export_height, 800);
    EXPECT_FALSE(parse_launch_options({"--export-graph", "1", "out.png"}, error)); // no document
    EXPECT_FALSE(parse_launch_options({"--export-graph", "1"}, error));
    for (const char* bad : {"800", "800x", "x600", "10x10", "800x600x2", "800y600"})
        EXPECT_FALSE(parse_launch_options({"--size", bad, "--export-graph", "1", "o.png", "d.qvx"}, error)) << bad;
}

TEST(LineColouring, ColoursNumbersNamesByKindAnswersAndComments) {
    const NameKinds kinds{[](std::string_view name) { return name == "SIN" || name == "PI"; },
                          [](std::string_view name) { return name == "f"; }};
    const std::string line = "f(2.5e-3) + SIN(PI*x) = 0.75 // note";
    const auto spans = colour_line(line, kinds, answer_position(line));
    const std::vector<ColourSpan> expected{
        {0, 1, SpanKind::UserFunction}, {2, 6, SpanKind::Number},  {12, 3, SpanKind::BuiltinName},
        {16, 2, SpanKind::BuiltinName}, {19, 1, SpanKind::Name},   {24, 4, SpanKind::Answer},
        {29, 7, SpanKind::Comment}};
    EXPECT_EQ(spans, expected);
    // Without a recognised answer the text behind '=' is coloured as code; '2i' is one number.
    EXPECT_EQ(colour_line("z = 2i", kinds, std::string_view::npos),
              (std::vector<ColourSpan>{{0, 1, SpanKind::Name}, {4, 2, SpanKind::Number}}));
    // A comment from column 0 takes the whole line; a name with digits is one name.
    EXPECT_EQ(colour_line("// x = 1", kinds, answer_position("// x = 1")),
              (std::vector<ColourSpan>{{0, 8, SpanKind::Comment}}));
    EXPECT_EQ(colour_line("x2+1", kinds, std::string_view::npos),
              (std::vector<ColourSpan>{{0, 2, SpanKind::Name}, {3, 1, SpanKind::Number}}));
    EXPECT_EQ(answer_position("no answer"), std::string_view::npos);
}

TEST(NameCatalog, OffersBuiltinsConstantsLibraryAndDocumentFunctions) {
    quorvex::engine::Parser parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR);
    parser.set_library_dirs(QUORVEX_DATA_DIR, "");
    parser.eval_exp(std::string_view("area[w, h] = w*h"), true, true, false);
    const auto entries = catalog_names(parser);
    const auto find = [&](const std::string& name) {
        for (const auto& entry : entries)
            if (entry.name == name) return &entry;
        return static_cast<const CatalogEntry*>(nullptr);
    };
    ASSERT_TRUE(find("SIN"));
    EXPECT_EQ(find("SIN")->kind, NameKind::BuiltinFunction);
    EXPECT_EQ(find("SQRT")->prototype, "SQRT[z]"); // from builtins.txt
    EXPECT_NE(find("SQRT")->description.find("Square root"), std::string::npos);
    ASSERT_TRUE(find("PI"));
    EXPECT_EQ(find("PI")->kind, NameKind::Constant);
    ASSERT_TRUE(find("COT"));
    EXPECT_EQ(find("COT")->prototype, "COT[X]");
    EXPECT_EQ(find("COT")->category, "TRIGONOMETRIC");
    EXPECT_NE(find("COT")->description.find("Cotangent"), std::string::npos);
    ASSERT_TRUE(find("area"));
    EXPECT_EQ(find("area")->kind, NameKind::UserFunction);
    EXPECT_NE(find("area")->prototype.find("w*h"), std::string::npos);

    // Taking a name while typing: functions come with their opening bracket, constants bare.
    EXPECT_EQ(completion_text(*find("SIN")), "SIN[");
    EXPECT_EQ(completion_text(*find("COT")), "COT[");
    EXPECT_EQ(completion_text(*find("PI")), "PI");
    EXPECT_EQ(completion_text(*find("area")), "area[");
}

TEST(ManagerChecks, NamesAndValuesAreRefusedWithTheFirstFailure) {
    EXPECT_EQ(variable_name_problem("2x a"), "The first character of a variable can not be a number!"); // first
    EXPECT_EQ(variable_name_problem("  my var"), "No spaces are allowed in the variables name!");
    EXPECT_EQ(variable_name_problem("a+b"), "'+' is not a legitimate character for a variable's name!");
    EXPECT_FALSE(variable_name_problem("  rate_2"));
    EXPECT_EQ(variable_value_problem("1 000"), "No spaces are allowed between digits in the variables value!");
    EXPECT_EQ(variable_value_problem("3;4"), "';' is not a legitimate character for mathematical expression or value!");
    EXPECT_FALSE(variable_value_problem(" 2*PI,4*PI,10")); // ranges and expressions pass, without blanks
    EXPECT_EQ(function_name_problem("9f[x]"), "The first character of a function can not be a number!");
    EXPECT_NE(function_name_problem("f")->find("could not be found! These brackets"), std::string::npos);
    EXPECT_NE(function_name_problem("f[x")->find("A bracket of type"), std::string::npos);
    EXPECT_EQ(function_name_problem("f]x["), "The function name is invalid!");
    EXPECT_FALSE(function_name_problem("area [w, h]"));
}
