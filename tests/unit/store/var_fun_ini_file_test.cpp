// The raw scans: where declarations begin, section sizes, and function listings of libraries.
#include "store/atomic_write.h"
#include "store/user_library.h"
#include "store/var_fun_ini_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace fs = std::filesystem;
using quorvex::store::VarFunIniFile;

namespace {

// A file object over a text, with the name of a file that need not exist.
struct Scanned {
    explicit Scanned(const std::string& text) : file("memory.qvx") { file.SetText(text); }
    VarFunIniFile file;
};

} // namespace

TEST(VarFunIniFile, FindsWhereTheDeclarationsBeginInCharactersOfText) {
    Scanned document("line one\r\nx = 5\r\n[DECLARED VARIABLES]\r\nx=5\r\n[DECLARED FUNCTIONS]\r\nf[x]=x^2\r\n"
                     "[SETUP]\r\nAngle=0\r\n");
    EXPECT_TRUE(document.file.FindVariableFlag());
    EXPECT_EQ(document.file.GetStartOfDecs(), 15); // "line one\nx = 5\n"
    EXPECT_EQ(document.file.SizeOfFile(), 94);
    EXPECT_EQ(document.file.SizeOfAsciiFile(), 94 - 8);
    EXPECT_EQ(document.file.SizeOfVarSection(), 64 - 37 - 18);
    EXPECT_EQ(document.file.SizeOfFunSection(), 0); // functions behind variables with a SETUP: none
    EXPECT_EQ(document.file.GetNumVariables(), 1);

    // Headers must match whole lines, case and blanks included; SETUP counts only alone.
    Scanned near_misses("ab\r\n[declared variables]\r\n[DECLARED VARIABLES] \r\n[DECLARED FUNCTIONS]\r\n");
    EXPECT_FALSE(near_misses.file.FindVariableFlag());
    EXPECT_EQ(near_misses.file.GetStartOfDecs(), 2 + 1 + 20 + 1 + 21 + 1);
    Scanned setup_only("text\r\n[SETUP]\r\nAngle=1\r\n");
    EXPECT_EQ(setup_only.file.GetStartOfDecs(), 5);
    Scanned plain("just\r\ntext");
    EXPECT_EQ(plain.file.GetStartOfDecs(), 9);
    Scanned line_feeds("ab\n[DECLARED FUNCTIONS]\nf[x]=x\n");
    EXPECT_EQ(line_feeds.file.GetStartOfDecs(), 3);
    EXPECT_EQ(line_feeds.file.GetNumFunctions(), 1);

    // Functions ahead of variables and no SETUP: each section runs to the next header or the end.
    Scanned reversed("[DECLARED FUNCTIONS]\r\nf[x]=x\r\n[DECLARED VARIABLES]\r\n");
    EXPECT_EQ(reversed.file.SizeOfFunSection(), 50 - 20 - 18);
    EXPECT_EQ(reversed.file.SizeOfVarSection(), 52 - 50);
}

TEST(VarFunIniFile, CountsAnEmptyVariableSectionAsOneAndAnEmptyFunctionSectionAsNone) {
    Scanned empty("[DECLARED VARIABLES]\r\n[DECLARED FUNCTIONS]\r\n");
    EXPECT_EQ(empty.file.GetNumVariables(), 1);
    EXPECT_EQ(empty.file.GetNumFunctions(), 0);
    Scanned none("free text only\r\n");
    EXPECT_EQ(none.file.GetNumVariables(), 0);
}

TEST(VarFunIniFile, ListsLibraryFunctionsByTheListingRules) {
    Scanned library(";[COMMENTED]\r\n[GEOMETRY]\r\nAREA[W,H]=(W)*(H)\r\nAREA=Area\r\nNOBRACKETS=1\r\n"
                    "DESC[X]=a [b] = c\r\n\r\nLATE[X]=X\r\n[MORE]\r\nAREA2[R]=R\r\n");
    VarFunIniFile& file = library.file;
    EXPECT_EQ(file.GetFunctionCatagories(), (std::vector<std::string>{"GEOMETRY", "MORE"}));
    EXPECT_EQ(file.SizeOfFunctionCatagories(), 9 + 5 + 1);
    EXPECT_FALSE(file.IsFunctionCatagory("geometry"));

    std::vector<std::string> names;
    EXPECT_TRUE(file.GetFunctionNames(names, "GEOMETRY")); // a blank line ends the listing
    EXPECT_EQ(names, (std::vector<std::string>{"AREA[W,H]", "DESC[X]"}));
    EXPECT_EQ(file.SizeOfFunctionNames(), 10 + 8 + 1);
    EXPECT_FALSE(file.GetFunctionNames(names, "NOPE"));
    EXPECT_TRUE(names.empty());

    // GEOMETRY stays current. Values are found to the end of the file, listed or not.
    std::string value;
    EXPECT_TRUE(file.GetFunctionValue("LATE[X]", value));
    EXPECT_EQ(value, "X");
    EXPECT_TRUE(file.GetFunctionValue("AREA2[R]", value));
    EXPECT_TRUE(file.GetFunctionValue("AREA", value));
    EXPECT_EQ(value, "Area");
    EXPECT_FALSE(file.GetFunctionValue("area", value)); // keys compare exactly here
    EXPECT_TRUE(file.IsFunction("area"));
    EXPECT_TRUE(file.IsFunction("AREA[W,H]"));
    EXPECT_FALSE(file.IsFunction("LATE"));
    EXPECT_FALSE(file.IsFunction("AREA2"));
    EXPECT_TRUE(file.IsFunction("AREA2", "MORE"));
    std::string full;
    EXPECT_TRUE(file.GetFuncFullName("area", full, "GEOMETRY"));
    EXPECT_EQ(full, "AREA[W,H]");

    EXPECT_EQ(file.SizeOfLongestLine(), 17 + 2);
    EXPECT_EQ(file.SizeOfLongestFuncName(), 10);
    // The second value (9 characters) is read within the length of the first (7).
    EXPECT_EQ(file.SizeOfLongestFuncValue(), 8);
}

TEST(VarFunIniFile, ReportsAFileThatCanNotBeReadAndRescansAChangedText) {
    std::vector<std::string> said;
    auto sink = [&](const std::string& text, const std::string& caption) { said.push_back(caption + ": " + text); };
    VarFunIniFile missing("/nonexistent/x.qvx", {}, {}, sink);
    EXPECT_FALSE(missing.FindVariableFlag());
    EXPECT_EQ(missing.SizeOfFile(), 0);
    ASSERT_EQ(said.size(), 2u);
    EXPECT_EQ(said[0], "File Access: File \" /nonexistent/x.qvx \" Could Not Be Opened!");
    VarFunIniFile unnamed("", {}, {}, sink);
    EXPECT_EQ(said.back(), "File Access: File Name Not Provided, File Could Not Be Opened!");

    Scanned changing("[DECLARED VARIABLES]\r\nx=1\r\n");
    EXPECT_FALSE(changing.file.FindSetupFlag());
    changing.file.WriteString("SETUP", "Angle", "1");
    EXPECT_TRUE(changing.file.FindSetupFlag());
}

TEST(UserLibrary, IsMadeOnceWithItsExampleOutOfUse) {
    const std::string text = quorvex::store::new_user_library_text();
    EXPECT_EQ(text.rfind("\r\n******************** INSTRUCTIONS", 0), 0u);
    EXPECT_NE(text.find(";[FINANCIAL]\r\n\r\n;CPOUND[P,I,N]=P(POW[1+I,N])\r\n"), std::string::npos);
    EXPECT_EQ(text.find('\n') , 1u);
    EXPECT_EQ(text.substr(text.size() - 4), "\r\n\r\n");
    Scanned fresh(text);
    EXPECT_TRUE(fresh.file.GetFunctionCatagories().empty()); // the example is commented out

    const fs::path dir = fs::temp_directory_path() / ("quorvex-user-" + std::to_string(::getpid())) / "a" / "b";
    ASSERT_TRUE(quorvex::store::ensure_user_library(dir.string()));
    std::string bytes;
    ASSERT_TRUE(quorvex::store::read_whole_file((dir / "QuorvexUser.lib").string(), bytes));
    EXPECT_EQ(bytes, text);
    // An existing library is the user's: it is never written over.
    ASSERT_TRUE(quorvex::store::write_file_atomically((dir / "QuorvexUser.lib").string(), "[MINE]\r\n"));
    ASSERT_TRUE(quorvex::store::ensure_user_library(dir.string()));
    ASSERT_TRUE(quorvex::store::read_whole_file((dir / "QuorvexUser.lib").string(), bytes));
    EXPECT_EQ(bytes, "[MINE]\r\n");
    fs::remove_all(dir.parent_path().parent_path());
}

// Found by fuzzing: a library whose value holds a lone CR inside its line. Reading keeps the CR;
// writing the value back turns it into a blank, so that the written line stays one line, and
// every other key keeps its value.
TEST(VarFunIniFile, ALoneCarriageReturnInAValueIsWrittenAsABlank) {
    std::ifstream in(QUORVEX_FIXTURES "fuzz/ini_lone_carriage_return.lib", std::ios::binary);
    ASSERT_TRUE(in);
    const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    Scanned scanned(text);
    int lone = 0;
    for (const std::string& section : scanned.file.GetSectionNames()) {
        for (const std::string& key : scanned.file.GetKeyNames(section)) {
            std::string value = scanned.file.GetString(section, key);
            scanned.file.WriteString(section, key, value);
            if (value.find('\r') != std::string::npos) {
                ++lone;
                std::replace(value.begin(), value.end(), '\r', ' ');
            }
            EXPECT_EQ(scanned.file.GetString(section, key), value) << section << " " << key;
        }
    }
    EXPECT_EQ(lone, 1);
}

// Found by fuzzing too: a key that holds a lone CR is written as the key with a blank, and is
// found under that name afterwards.
TEST(VarFunIniFile, AKeyWithALoneCarriageReturnIsFoundAfterItIsWritten) {
    Scanned scanned("[S]\r\nk\rx=1\r\nother=2\r\n");
    scanned.file.WriteString("S", "k\rx", "1");
    EXPECT_EQ(scanned.file.GetString("S", "k x"), "1");
    EXPECT_EQ(scanned.file.GetString("S", "other"), "2");
    EXPECT_EQ(scanned.file.GetKeyNames("S"), (std::vector<std::string>{"k x", "other"}));
    EXPECT_EQ(scanned.file.Text(), "[S]\r\nk x=1\r\nother=2\r\n");
}
