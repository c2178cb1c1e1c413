#pragma once
#include <string>
#include <vector>

namespace quorvex::store {
class IniFile;
}

namespace quorvex::desktop {

// The documents opened last, newest first, at most ten, kept in Quorvex.ini under
// [Recent File List] as File1 to File10.
class RecentFiles {
public:
    static constexpr size_t k_limit = 10;

    explicit RecentFiles(store::IniFile& ini);

    const std::vector<std::string>& files() const { return m_files; }
    // Puts `path` first, dropping an older entry of the same path and the eleventh.
    void add(const std::string& path);
    // Drops `path` (a file that could not be opened any more).
    void remove(const std::string& path);
    // Writes the list into the ini text; the caller saves the file.
    void store() const;

private:
    store::IniFile& m_ini;
    std::vector<std::string> m_files;
};

} // namespace quorvex::desktop
