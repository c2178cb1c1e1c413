// Autosave slots: what the next start offers back, and what it leaves alone.
#include "desktop/autosave.h"
#include "store/atomic_write.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;
using quorvex::desktop::AutosaveFolder;

namespace {

struct Folder : ::testing::Test {
    fs::path dir = fs::temp_directory_path() / ("quorvex-autosave-" + std::to_string(::getpid()));
    void SetUp() override { fs::remove_all(dir); }
    void TearDown() override { fs::remove_all(dir); }
};

auto nothing_runs = [](long) { return false; };

} // namespace

TEST_F(Folder, OffersSlotsNewerThanTheirFileAndForgetsRemovedOnes) {
    AutosaveFolder folder((dir / "autosave").string());
    const fs::path saved_file = dir / "kept.qvx";
    const fs::path stale_file = dir / "stale.qvx";
    fs::create_directories(dir);
    ASSERT_TRUE(quorvex::store::write_file_atomically(saved_file.string(), "x = 1\r\n"));
    ASSERT_TRUE(quorvex::store::write_file_atomically(stale_file.string(), "x = 1\r\n"));

    const std::string untitled = AutosaveFolder::new_slot(4242, 1);
    const std::string stale = AutosaveFolder::new_slot(4242, 2);
    const std::string kept = AutosaveFolder::new_slot(4242, 3);
    const std::string gone = AutosaveFolder::new_slot(4242, 4);
    EXPECT_EQ(AutosaveFolder::process_of(stale), 4242);
    ASSERT_TRUE(folder.write(untitled, "", "Untitled 1", "a = 2\r\n"));
    ASSERT_TRUE(folder.write(stale, stale_file.string(), "stale.qvx", "x = 2\r\n"));
    ASSERT_TRUE(folder.write(kept, saved_file.string(), "kept.qvx", "x = 1\r\n"));
    ASSERT_TRUE(folder.write(gone, (dir / "deleted.qvx").string(), "deleted.qvx", "y = 3\r\n"));
    const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(stale_file, past);
    // The file of `kept` was saved after its autosave: nothing is lost there.
    fs::last_write_time(saved_file, fs::file_time_type::clock::now() + std::chrono::hours(1));

    auto offered = folder.recoverable(nothing_runs);
    ASSERT_EQ(offered.size(), 3u);
    std::vector<std::string> slots;
    for (const auto& each : offered) slots.push_back(each.slot);
    std::sort(slots.begin(), slots.end());
    EXPECT_EQ(slots, (std::vector<std::string>{untitled, stale, gone}));
    for (const auto& each : offered) {
        if (each.slot != untitled) continue;
        EXPECT_EQ(each.origin_path, "");
        EXPECT_EQ(each.title, "Untitled 1");
        std::string text;
        ASSERT_TRUE(quorvex::store::read_whole_file(each.autosave_path, text));
        EXPECT_EQ(text, "a = 2\r\n");
    }

    // A slot of a program still running is its own business.
    EXPECT_TRUE(folder.recoverable([](long pid) { return pid == 4242; }).empty());

    folder.remove(untitled);
    folder.remove(stale);
    folder.remove(gone);
    EXPECT_TRUE(folder.recoverable(nothing_runs).empty());
    // A folder that does not exist offers nothing.
    EXPECT_TRUE(AutosaveFolder((dir / "none").string()).recoverable(nothing_runs).empty());
}
