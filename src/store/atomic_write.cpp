#include "atomic_write.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvex::store {

namespace {

constexpr const char* k_temporary_prefix = ".qvx-save-";
// A temporary file of ours that nobody holds and that is older than this was left by a save
// that died; a younger one may belong to a save that is just starting.
constexpr time_t k_stale_seconds = 10;
constexpr int k_max_link_hops = 40;

bool fail(std::string* error, const std::string& text) {
    if (error) *error = text + " (" + std::strerror(errno) + ")";
    return false;
}

bool refuse(std::string* error, const std::string& text) {
    if (error) *error = text;
    return false;
}

std::string folder_of(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The file a save must change: symbolic links are followed to the file they name (existing or
// not yet), so that the link stays a link and its target gets the new content.
bool follow_links(const std::string& path, std::string& target, std::string* error) {
    target = path;
    for (int hop = 0; hop < k_max_link_hops; ++hop) {
        struct stat info {};
        if (::lstat(target.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return true;
        std::string link(PATH_MAX, '\0');
        const ssize_t length = ::readlink(target.c_str(), link.data(), link.size());
        if (length < 0) return fail(error, "The link \"" + path + "\" could not be read");
        link.resize(static_cast<size_t>(length));
        target = !link.empty() && link[0] == '/' ? link : folder_of(target) + "/" + link;
    }
    return refuse(error, "The link \"" + path + "\" leads through too many links to a file.");
}

const char* kind_of(mode_t mode) {
    if (S_ISDIR(mode)) return "a folder";
    if (S_ISFIFO(mode)) return "a pipe";
    if (S_ISSOCK(mode)) return "a socket";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "a device";
    return "not a regular file";
}

// Our own temporary files that a killed save left behind in `folder`. A save holds a lock on
// its temporary file while it lives, so a file nobody holds is no longer in use.
void remove_stale_temporaries(const std::string& folder) {
    DIR* dir = ::opendir(folder.c_str());
    if (!dir) return;
    const size_t prefix = std::strlen(k_temporary_prefix);
    const time_t now = std::time(nullptr);
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        if (name.size() != prefix + 6 || name.compare(0, prefix, k_temporary_prefix) != 0) continue;
        const std::string path = folder + "/" + name;
        struct stat info {};
        if (::lstat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode) || now - info.st_mtime < k_stale_seconds)
            continue;
        const int fd = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
        if (fd < 0) continue;
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
        ::close(fd);
    }
    ::closedir(dir);
}

bool write_all(int fd, std::string_view bytes) {
    const char* data = bytes.data();
    size_t left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, left);
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        data += written;
        left -= static_cast<size_t>(written);
    }
    return true;
}

// Closes `fd` and removes the temporary file, keeping errno for the message.
void discard(int fd, const std::string& temporary) {
    const int saved = errno;
    if (fd >= 0) ::close(fd);
    ::unlink(temporary.c_str());
    errno = saved;
}

// A file with several names is changed where it is, so that every name sees the new content;
// the complete temporary copy already on disk is the fallback if writing in place fails.
bool write_in_place(const std::string& target, const std::string& temporary, std::string_view bytes,
                    std::string* error) {
    const int fd = ::open(target.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    const bool written = fd >= 0 && write_all(fd, bytes) && ::fsync(fd) == 0;
    const int saved = errno;
    if (fd >= 0) ::close(fd);
    if (written) {
        ::unlink(temporary.c_str());
        return true;
    }
    // The name is given the new content on its own, which parts it from its other names, rather
    // than left half written.
    errno = saved;
    if (::rename(temporary.c_str(), target.c_str()) == 0)
        return fail(error, "The file \"" + target + "\" has other names (hard links) and could not be written "
                           "where it is; it was saved under this name alone");
    discard(-1, temporary);
    return fail(error, "The file \"" + target + "\" could not be written");
}

// The checks of a save's target: where a save of `path` goes, and what stands there now.
bool examine_target(const std::string& path, std::string& target, struct stat& existing, bool& exists,
                    std::string* error) {
    if (!follow_links(path, target, error)) return false;
    exists = ::stat(target.c_str(), &existing) == 0;
    if (!exists && errno != ENOENT) return fail(error, "The file \"" + path + "\" could not be examined");
    if (exists && !S_ISREG(existing.st_mode))
        return refuse(error, "\"" + path + "\" is " + kind_of(existing.st_mode) +
                                 ", not a file that a save may replace.");
    if (exists && (existing.st_mode & S_IWUSR) == 0)
        return refuse(error, "The file " + path + " is read only and can not be saved.");
    return true;
}

} // namespace

bool can_save_to(const std::string& path, std::string* error) {
    std::string target;
    struct stat existing {};
    bool exists = false;
    return examine_target(path, target, existing, exists, error);
}

bool write_file_atomically(const std::string& path, std::string_view bytes, std::string* error) {
    std::string target;
    struct stat existing {};
    bool exists = false;
    if (!examine_target(path, target, existing, exists, error)) return false;

    const std::string folder = folder_of(target);
    remove_stale_temporaries(folder);
    std::string temporary = folder + "/" + k_temporary_prefix + "XXXXXX";
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) return fail(error, "The file \"" + path + "\" could not be written");
    ::flock(fd, LOCK_EX); // marks the file as in use for other saves' clean-up

    if (exists) {
        // Only a privileged process may give a file away; others keep their own ownership. The
        // mode comes after, as a change of owner may clear some of its bits.
        if (::fchown(fd, existing.st_uid, existing.st_gid) != 0) errno = 0;
        ::fchmod(fd, existing.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }
    if (!write_all(fd, bytes) || ::fsync(fd) != 0) {
        discard(fd, temporary);
        return fail(error, "The file \"" + path + "\" could not be written");
    }
    if (exists && existing.st_nlink > 1) {
        const bool done = write_in_place(target, temporary, bytes, error);
        ::close(fd);
        return done;
    }
    if (::rename(temporary.c_str(), target.c_str()) != 0) {
        discard(fd, temporary);
        return fail(error, "The file \"" + path + "\" could not be replaced");
    }
    ::close(fd);
    return true;
}

bool read_whole_file(const std::string& path, std::string& bytes) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return false;
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::ostringstream content;
    content << in.rdbuf();
    bytes = std::move(content).str();
    return true;
}

} // namespace quorvex::store
