#include "process_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace quorvex::desktop {

namespace {

// flock() rather than fcntl() locks: a flock belongs to the open file, so probing a lock from
// the process that holds it neither takes nor drops it. O_CLOEXEC keeps a started program from
// inheriting it.
int open_lock_file(const std::string& path) {
    int fd = -1;
    do {
        fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    } while (fd < 0 && errno == EINTR);
    return fd;
}

bool try_lock(int fd) {
    int result = -1;
    do {
        result = ::flock(fd, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

} // namespace

ProcessLock::~ProcessLock() { release(); }

ProcessLock::ProcessLock(ProcessLock&& other) noexcept
    : m_fd(std::exchange(other.m_fd, -1)), m_path(std::move(other.m_path)) {}

ProcessLock& ProcessLock::operator=(ProcessLock&& other) noexcept {
    if (this != &other) {
        release();
        m_fd = std::exchange(other.m_fd, -1);
        m_path = std::move(other.m_path);
    }
    return *this;
}

namespace {

// Whether `fd` is still the file at `path`: a holder removes its file as it lets go, so a lock
// taken on a file already removed is no lock at all.
bool still_linked(int fd, const std::string& path) {
    struct stat open_file {};
    struct stat named_file {};
    return ::fstat(fd, &open_file) == 0 && ::stat(path.c_str(), &named_file) == 0 &&
           open_file.st_dev == named_file.st_dev && open_file.st_ino == named_file.st_ino;
}

} // namespace

bool ProcessLock::acquire(const std::string& path) {
    release();
    for (int attempt = 0; attempt < 8; ++attempt) {
        const int fd = open_lock_file(path);
        if (fd < 0) return false;
        if (!try_lock(fd)) {
            ::close(fd);
            return false;
        }
        if (still_linked(fd, path)) {
            m_fd = fd;
            m_path = path;
            return true;
        }
        ::close(fd); // the file went between open and lock: take the new one
    }
    return false;
}

void ProcessLock::release() {
    if (m_fd < 0) return;
    // Removed while still held, so that no other process locks a file that is about to go.
    ::unlink(m_path.c_str());
    ::close(m_fd);
    m_fd = -1;
    m_path.clear();
}

bool ProcessLock::is_held(const std::string& path) {
    int fd = -1;
    do {
        fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) return false; // no file, no holder
    const bool free = try_lock(fd);
    ::close(fd); // closing lets a probe's own lock go at once
    return !free;
}

} // namespace quorvex::desktop
