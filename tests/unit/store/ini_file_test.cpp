// The profile calls on the in-memory text: lookups ignoring case, edits in place, text kept.
#include "store/atomic_write.h"
#include "store/ini_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace fs = std::filesystem;
using quorvex::store::IniFile;
using quorvex::store::TColor;

namespace {

fs::path scratch_dir() {
    const fs::path dir = fs::temp_directory_path() / ("quorvex-ini-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    return dir;
}

std::unique_ptr<IniFile> from_text(const std::string& text) {
    auto file = std::make_unique<IniFile>("");
    file->SetText(text);
    return file;
}

} // namespace

TEST(IniFile, LooksUpSectionsAndKeysIgnoringCaseAndReadsValues) {
    IniFile file("");
    file.SetText("free text = not a key\n[Options]\r\n Width = 12 \r\nangle=-3rad\nname=\n[options]\nwidth=99\n");
    EXPECT_EQ(file.GetString("OPTIONS", "width"), "12"); // the first section and key of a name win
    EXPECT_EQ(file.GetString("options", "missing", "fallback"), "fallback");
    EXPECT_EQ(file.GetString("nowhere", "width", "x"), "x");
    EXPECT_EQ(file.GetString("Options", "name", "x"), "");
    EXPECT_EQ(file.GetInt("Options", "WIDTH", 5), 12);
    EXPECT_EQ(file.GetInt("Options", "angle", 5), -3);
    EXPECT_EQ(file.GetInt("Options", "name", 5), 0);
    EXPECT_EQ(file.GetInt("Options", "missing", 5), 5);
    EXPECT_EQ(file.GetKeyNames("OPTIONS"), (std::vector<std::string>{"Width", "angle", "name"}));
    EXPECT_EQ(file.GetSectionNames(), (std::vector<std::string>{"Options", "options"}));
    // Counted without a list: keys of one name in any case once, lines without '=' not at all.
    file.SetText("[S]\nA=1\na=2\nno key here\nB=\n[Empty]\n");
    EXPECT_EQ(file.CountKeys("s"), 2u);
    EXPECT_EQ(file.CountKeys("Empty"), 0u);
    EXPECT_EQ(file.CountKeys("nowhere"), 0u);
    file.WriteString("S", "C", "3");
    file.WriteString("S", "b", "4");
    EXPECT_EQ(file.CountKeys("S"), 3u);
    EXPECT_EQ(file.CountKeys("S"), file.GetKeyNames("S").size() - 1); // the two A lines listed apart
}

TEST(IniFile, WritesInPlaceAppendsNewSectionsAndKeepsEveryOtherByte) {
    const std::string original = "Editor text\nwith [brackets] and a = sign\n\n[A]\r\nx=1\r\n\r\n[B]\ny=2";
    const auto owned = from_text(original);
    IniFile& file = *owned;
    EXPECT_EQ(file.Text(), original); // nothing changed, nothing moves

    ASSERT_TRUE(file.WriteString("a", "X", "10"));
    ASSERT_TRUE(file.WriteString("A", "z", "3"));    // a new key follows the last line that is not blank
    ASSERT_TRUE(file.WriteString("C", "w", "4"));    // a new section goes at the end, on its own line
    ASSERT_TRUE(file.WriteString("B", "k=v", "5"));  // '=' in a key becomes '|'
    EXPECT_EQ(file.Text(), "Editor text\nwith [brackets] and a = sign\n\n[A]\r\nX=10\r\nz=3\r\n\r\n[B]\ny=2\r\n"
                           "k|v=5\r\n[C]\r\nw=4\r\n");
    EXPECT_EQ(file.GetString("b", "k=v"), "5");
    EXPECT_EQ(file.GetKeyNames("B"), (std::vector<std::string>{"y", "k|v"}));

    EXPECT_TRUE(file.DeleteKey("A", "x"));
    EXPECT_FALSE(file.DeleteKey("A", "x"));
    EXPECT_TRUE(file.DeleteSection("c"));
    EXPECT_EQ(file.GetString("C", "w", "gone"), "gone");
    EXPECT_FALSE(file.WriteString("A", "", "1"));
    // A line end in a value can not split the line.
    ASSERT_TRUE(file.WriteString("A", "note", "one\r\ntwo"));
    EXPECT_EQ(file.GetString("A", "note"), "one  two");
}

TEST(IniFile, ReadsColoursAndPointsAsTheirTextsSay) {
    const auto owned = from_text("[G]\nc1=255,128,0\nc2=12,34\nc3=300,-1,1\np1=1, x+1 ,\np2=,,z\np3=a\np4= , \n");
    IniFile& file = *owned;
    TColor colour = 0;
    EXPECT_TRUE(file.GetColor("G", "c1", 7, colour));
    EXPECT_EQ(colour, 0x0080FFu);
    EXPECT_FALSE(file.GetColor("G", "c2", 7, colour));
    EXPECT_EQ(colour, 7u);
    EXPECT_TRUE(file.GetColor("G", "c3", 7, colour));
    EXPECT_EQ(colour, 0x01FF2Cu); // each part keeps its low byte
    EXPECT_FALSE(file.GetColor("G", "none", 9, colour));
    EXPECT_EQ(colour, 9u);

    std::string x, y, z;
    EXPECT_TRUE(file.GetPoint("G", "p1", x, y, z));
    EXPECT_EQ(x, "1");
    EXPECT_EQ(y, "x+1 ");
    EXPECT_EQ(z, "");
    EXPECT_TRUE(file.GetPoint("G", "p2", x, y, z));
    EXPECT_EQ(x + "|" + y + "|" + z, "||z");
    EXPECT_TRUE(file.GetPoint("G", "p3", x, y, z));
    EXPECT_EQ(x + "|" + y + "|" + z, "a||");
    EXPECT_FALSE(file.GetPoint("G", "p4", x, y, z));
    EXPECT_FALSE(file.GetPoint("G", "none", x, y, z));
}

TEST(IniFile, SavesOnceThroughATemporaryFileAndReadsItBack) {
    const fs::path dir = scratch_dir();
    const fs::path path = dir / "settings.ini";
    fs::remove(path);
    {
        IniFile file(path.string());
        EXPECT_FALSE(file.Exists());
        file.WriteString("OPTIONS", "Precision", "14");
        file.WriteString("OPTIONS", "Angle", "1");
        ASSERT_TRUE(file.Save());
        EXPECT_FALSE(file.Modified());
    }
    std::string bytes;
    ASSERT_TRUE(quorvex::store::read_whole_file(path.string(), bytes));
    EXPECT_EQ(bytes, "[OPTIONS]\r\nPrecision=14\r\nAngle=1\r\n");
    IniFile again(path.string());
    EXPECT_TRUE(again.Exists());
    EXPECT_EQ(again.GetInt("options", "angle", 0), 1);
    for (const auto& entry : fs::directory_iterator(dir)) // no temporary file is left behind
        EXPECT_EQ(entry.path().filename(), "settings.ini");

    // A save that can not happen leaves the old file whole and says why.
    IniFile lost((dir / "no-such-folder" / "x.ini").string());
    lost.WriteString("S", "k", "v");
    std::string error;
    EXPECT_FALSE(lost.Save(&error));
    EXPECT_NE(error.find("could not be written"), std::string::npos);
    fs::remove_all(dir);
}
