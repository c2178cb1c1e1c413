// The desktop program's logic without windows: recent files, the keys that compute, the command
// line.
#include "desktop/editor_keys.h"
#include "desktop/launch_options.h"
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
}
