#include "atomic_write.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvex::store {

namespace {

bool fail(std::string* error, const std::string& text) {
    if (error) *error = text + " (" + std::strerror(errno) + ")";
    return false;
}

std::string folder_of(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

} // namespace

bool write_file_atomically(const std::string& path, std::string_view bytes, std::string* error) {
    std::string temporary = folder_of(path) + "/.qvx-save-XXXXXX";
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) return fail(error, "The file \"" + path + "\" could not be written");

    struct stat existing {};
    if (::stat(path.c_str(), &existing) == 0) {
        ::fchmod(fd, existing.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }

    const char* data = bytes.data();
    size_t left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, left);
        if (written < 0) {
            if (errno == EINTR) continue;
            const int saved = errno;
            ::close(fd);
            ::unlink(temporary.c_str());
            errno = saved;
            return fail(error, "The file \"" + path + "\" could not be written");
        }
        data += written;
        left -= static_cast<size_t>(written);
    }
    if (::fsync(fd) != 0 || ::close(fd) != 0) {
        const int saved = errno;
        ::unlink(temporary.c_str());
        errno = saved;
        return fail(error, "The file \"" + path + "\" could not be written");
    }
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        const int saved = errno;
        ::unlink(temporary.c_str());
        errno = saved;
        return fail(error, "The file \"" + path + "\" could not be replaced");
    }
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
