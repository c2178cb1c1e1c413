// Autosave slots: what the next start offers back, and what it leaves alone.
#include "desktop/autosave.h"
#include "store/atomic_write.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;
using quorvex::desktop::AutosaveFolder;
using quorvex::desktop::ProcessLock;

namespace {

struct Folder : ::testing::Test {
    fs::path dir = fs::temp_directory_path() / ("quorvex-autosave-" + std::to_string(::getpid()));
    void SetUp() override { fs::remove_all(dir); }
    void TearDown() override { fs::remove_all(dir); }
};

} // namespace

TEST_F(Folder, OffersSlotsNewerThanTheirFileAndForgetsRemovedOnes) {
    AutosaveFolder folder((dir / "autosave").string());
    const fs::path saved_file = dir / "kept.qvx";
    const fs::path stale_file = dir / "stale.qvx";
    fs::create_directories(dir);
    ASSERT_TRUE(quorvex::store::write_file_atomically(saved_file.string(), "x = 1\r\n"));
    ASSERT_TRUE(quorvex::store::write_file_atomically(stale_file.string(), "x = 1\r\n"));

    const std::string owner = AutosaveFolder::new_owner(4242, 1700000000000);
    const std::string untitled = AutosaveFolder::new_slot(owner, 1);
    const std::string stale = AutosaveFolder::new_slot(owner, 2);
    const std::string kept = AutosaveFolder::new_slot(owner, 3);
    const std::string gone = AutosaveFolder::new_slot(owner, 4);
    EXPECT_EQ(AutosaveFolder::owner_of(stale), owner);
    ASSERT_TRUE(folder.write(untitled, "", "Untitled 1", "a = 2\r\n"));
    ASSERT_TRUE(folder.write(stale, stale_file.string(), "stale.qvx", "x = 2\r\n"));
    ASSERT_TRUE(folder.write(kept, saved_file.string(), "kept.qvx", "x = 1\r\n"));
    ASSERT_TRUE(folder.write(gone, (dir / "deleted.qvx").string(), "deleted.qvx", "y = 3\r\n"));
    const auto past = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(stale_file, past);
    // The file of `kept` was saved after its autosave: nothing is lost there.
    fs::last_write_time(saved_file, fs::file_time_type::clock::now() + std::chrono::hours(1));

    auto offered = folder.recoverable();
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

    // A slot of a program still running, which holds its lock, is its own business.
    ProcessLock running;
    ASSERT_TRUE(folder.claim(owner, running));
    EXPECT_TRUE(folder.recoverable().empty());
    running.release();
    EXPECT_EQ(folder.recoverable().size(), 3u);

    folder.remove(untitled);
    folder.remove(stale);
    folder.remove(gone);
    EXPECT_TRUE(folder.recoverable().empty());
    // A folder that does not exist offers nothing.
    EXPECT_TRUE(AutosaveFolder((dir / "none").string()).recoverable().empty());
}

TEST_F(Folder, AKilledProgramsSlotsAreOfferedAtOnceThoughItsProcessStillShows) {
    AutosaveFolder folder((dir / "autosave").string());
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // The other program: it claims its slots, autosaves, and waits to be killed.
        const std::string owner = AutosaveFolder::new_owner(::getpid(), 1);
        ProcessLock lock;
        const bool ok = folder.claim(owner, lock) && folder.write(AutosaveFolder::new_slot(owner, 1), "", "Untitled 1", "w = 1\r\n");
        const char answer = ok ? 'y' : 'n';
        (void)!::write(ready[1], &answer, 1);
        for (;;) ::pause();
    }
    char answer = 0;
    ASSERT_EQ(::read(ready[0], &answer, 1), 1);
    ASSERT_EQ(answer, 'y');
    EXPECT_TRUE(folder.recoverable().empty()); // still running: its lock is held

    ::kill(child, SIGKILL);
    // Dead but not reaped: its process id still answers, as it did for a few seconds after a kill.
    siginfo_t info{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
    EXPECT_EQ(::kill(child, 0), 0);
    const auto offered = folder.recoverable();
    ASSERT_EQ(offered.size(), 1u);
    EXPECT_EQ(offered[0].title, "Untitled 1");

    ::waitpid(child, nullptr, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    // Once its slots are dealt with, the dead program's lock file goes too; a live one stays.
    folder.remove(offered[0].slot);
    ProcessLock mine;
    ASSERT_TRUE(folder.claim("mine", mine));
    folder.remove_stale_locks();
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(folder.dir())) left.push_back(entry.path().filename().string());
    EXPECT_EQ(left, std::vector<std::string>{"mine.lock"});
}

TEST(ProcessLockTest, OneHolderAtATimeAndTheFileGoesWithTheLock) {
    const std::string path = (fs::temp_directory_path() / ("quorvex-lock-" + std::to_string(::getpid()))).string();
    ProcessLock first;
    ASSERT_TRUE(first.acquire(path));
    EXPECT_TRUE(ProcessLock::is_held(path));
    EXPECT_TRUE(ProcessLock::is_held(path)); // a probe neither takes nor drops the lock
    ProcessLock second;
    EXPECT_FALSE(second.acquire(path));
    ProcessLock moved = std::move(first);
    EXPECT_TRUE(moved.held());
    moved.release();
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(ProcessLock::is_held(path));
    EXPECT_TRUE(second.acquire(path));
    EXPECT_FALSE(ProcessLock().acquire("/nonexistent-folder/quorvex.lock"));
}
