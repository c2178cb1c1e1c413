#pragma once
#include <string>

namespace quorvex::desktop {

// An exclusive lock on a file that the system lets go of the moment the holding process ends,
// however it ends (a crash or kill -9 included, and already while the dead process waits to be
// reaped). Whether a process that left files behind is still running is read from its lock,
// never from its process id, which a dead process keeps for a while and a new one may reuse.
class ProcessLock {
public:
    ProcessLock() = default;
    ~ProcessLock();
    ProcessLock(const ProcessLock&) = delete;
    ProcessLock& operator=(const ProcessLock&) = delete;
    ProcessLock(ProcessLock&& other) noexcept;
    ProcessLock& operator=(ProcessLock&& other) noexcept;

    // Takes the lock on `path` (made when missing) without waiting: false when another holder
    // has it or the file can not be opened.
    bool acquire(const std::string& path);
    // Lets the lock go and removes its file.
    void release();
    bool held() const { return m_fd >= 0; }
    const std::string& path() const { return m_path; }

    // True when some holder, this process included, has the lock on `path`.
    static bool is_held(const std::string& path);

private:
    int m_fd = -1;
    std::string m_path;
};

} // namespace quorvex::desktop
