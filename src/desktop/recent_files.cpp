#include "recent_files.h"

#include "store/ini_file.h"

#include <algorithm>

namespace quorvex::desktop {

namespace {

constexpr const char* k_section = "Recent File List";

std::string key_of(size_t index) { return "File" + std::to_string(index + 1); }

} // namespace

RecentFiles::RecentFiles(store::IniFile& ini) : m_ini(ini) {
    for (size_t i = 0; i < k_limit; ++i) {
        const std::string path = ini.GetString(k_section, key_of(i));
        if (!path.empty() && std::find(m_files.begin(), m_files.end(), path) == m_files.end()) m_files.push_back(path);
    }
}

void RecentFiles::add(const std::string& path) {
    if (path.empty()) return;
    remove(path);
    m_files.insert(m_files.begin(), path);
    if (m_files.size() > k_limit) m_files.resize(k_limit);
}

void RecentFiles::remove(const std::string& path) {
    m_files.erase(std::remove(m_files.begin(), m_files.end(), path), m_files.end());
}

void RecentFiles::store() const {
    for (size_t i = 0; i < k_limit; ++i) {
        if (i < m_files.size())
            m_ini.WriteString(k_section, key_of(i), m_files[i]);
        else
            m_ini.DeleteKey(k_section, key_of(i));
    }
}

} // namespace quorvex::desktop
