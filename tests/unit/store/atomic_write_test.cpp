// Saves never damage what stands at their path: links are followed, what is no regular file is
// refused, mode, owner and hard links are kept, and a killed save's leftovers are cleaned up.
#include "store/atomic_write.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using quorvex::store::can_save_to;
using quorvex::store::write_file_atomically;

namespace {

struct Folder {
    fs::path path = fs::path(testing::TempDir()) /
                    ("quorvex-save-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    Folder() {
        fs::remove_all(path);
        fs::create_directories(path);
    }
    ~Folder() {
        std::error_code ignored;
        fs::permissions(path, fs::perms::all, ignored);
        fs::remove_all(path, ignored);
    }
    std::string file(const std::string& name, const std::string& text) const {
        const std::string full = (path / name).string();
        std::ofstream(full, std::ios::binary) << text;
        return full;
    }
};

std::string bytes_of(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

size_t entries(const fs::path& folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

TEST(SafeSave, LinksAreFollowedAndEveryNameSeesTheNewContent) {
    const Folder folder;
    const std::string target = folder.file("target.txt", "old");
    fs::create_symlink("target.txt", folder.path / "link.txt");
    ASSERT_TRUE(write_file_atomically((folder.path / "link.txt").string(), "through the link"));
    EXPECT_TRUE(fs::is_symlink(folder.path / "link.txt"));
    EXPECT_EQ(bytes_of(target), "through the link");

    // A link to a file that does not exist yet creates that file and stays a link.
    fs::create_symlink("later.txt", folder.path / "dangling.txt");
    ASSERT_TRUE(write_file_atomically((folder.path / "dangling.txt").string(), "created"));
    EXPECT_TRUE(fs::is_symlink(folder.path / "dangling.txt"));
    EXPECT_EQ(bytes_of((folder.path / "later.txt").string()), "created");

    // Hard links: one file with two names, both see the save, and nothing else is left behind.
    fs::create_hard_link(target, folder.path / "second-name.txt");
    const size_t before = entries(folder.path);
    ASSERT_TRUE(write_file_atomically(target, "for both names"));
    EXPECT_EQ(bytes_of((folder.path / "second-name.txt").string()), "for both names");
    EXPECT_EQ(fs::hard_link_count(target), 2u);
    EXPECT_EQ(entries(folder.path), before);
}

TEST(SafeSave, WhatIsNoWritableRegularFileIsRefusedAndLeftAsItIs) {
    const Folder folder;
    const std::string pipe = (folder.path / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string error;
    EXPECT_FALSE(write_file_atomically(pipe, "x", &error));
    EXPECT_EQ(error, "\"" + pipe + "\" is a pipe, not a file that a save may replace.");
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_FALSE(write_file_atomically(folder.path.string(), "x", &error));
    EXPECT_NE(error.find("is a folder"), std::string::npos);
    EXPECT_FALSE(can_save_to("/dev/null", &error));
    EXPECT_EQ(error, "\"/dev/null\" is a device, not a file that a save may replace.");

    // Read-only means no write bit for the owner, whoever runs the save; the path is shown as given.
    const std::string locked = folder.file("Locked.QVX.txt", "keep me");
    fs::permissions(locked, fs::perms::owner_read | fs::perms::group_read);
    EXPECT_FALSE(write_file_atomically(locked, "x", &error));
    EXPECT_EQ(error, "The file " + locked + " is read only and can not be saved.");
    EXPECT_EQ(bytes_of(locked), "keep me");
    EXPECT_EQ(entries(folder.path), 2u); // no temporary file left
}

TEST(SafeSave, ModeAndOwnerAreKept) {
    const Folder folder;
    const std::string path = folder.file("shared.txt", "old");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    const bool root = geteuid() == 0;
    if (root) {
        ASSERT_EQ(::chown(path.c_str(), 4321, 4321), 0);
    }
    ASSERT_TRUE(write_file_atomically(path, "new"));
    struct stat info {};
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0604u);
    if (root) {
        EXPECT_EQ(info.st_uid, 4321u);
    }
    EXPECT_EQ(bytes_of(path), "new");
}

TEST(SafeSave, LeftoversOfAKilledSaveGoAtTheNextSaveButNotThoseInUse) {
    const Folder folder;
    const std::string stale = folder.file(".qvx-save-AbC123", std::string(1000, 'x'));
    const std::string held = folder.file(".qvx-save-Held12", "in use");
    const std::string fresh = folder.file(".qvx-save-Fresh1", "just begun");
    const std::string foreign = folder.file(".qvx-save-notours.bak", "someone else's");
    const auto old = fs::file_time_type::clock::now() - std::chrono::minutes(5);
    for (const std::string& path : {stale, held, foreign}) fs::last_write_time(path, old);
    const int lock = ::open(held.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);

    ASSERT_TRUE(write_file_atomically((folder.path / "doc.qvx").string(), "saved"));
    EXPECT_FALSE(fs::exists(stale));
    EXPECT_TRUE(fs::exists(held));
    EXPECT_TRUE(fs::exists(fresh));
    EXPECT_TRUE(fs::exists(foreign));
    ::close(lock);
}
