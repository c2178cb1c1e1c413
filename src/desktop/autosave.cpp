#include "autosave.h"

#include "store/atomic_write.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace quorvex::desktop {

namespace {

constexpr const char* k_document = ".qvx";
constexpr const char* k_origin = ".origin";
constexpr const char* k_lock = ".lock";
constexpr const char* k_slot_prefix = "document-";

} // namespace

AutosaveFolder::AutosaveFolder(std::string dir) : m_dir(std::move(dir)) {}

std::string AutosaveFolder::new_owner(long process_id, long long started_ms) {
    return std::to_string(process_id) + "_" + std::to_string(started_ms);
}

std::string AutosaveFolder::new_slot(const std::string& owner, int counter) {
    return k_slot_prefix + owner + "-" + std::to_string(counter);
}

std::string AutosaveFolder::owner_of(const std::string& slot) {
    // "document-OWNER-N"
    const size_t first = slot.find('-');
    const size_t last = slot.rfind('-');
    if (first == std::string::npos || last <= first) return {};
    return slot.substr(first + 1, last - first - 1);
}

std::string AutosaveFolder::lock_path(const std::string& owner) const {
    return (fs::path(m_dir) / (owner + k_lock)).string();
}

bool AutosaveFolder::claim(const std::string& owner, ProcessLock& lock) const {
    std::error_code ignored;
    fs::create_directories(m_dir, ignored);
    return lock.acquire(lock_path(owner));
}

std::vector<RecoverableDocument> AutosaveFolder::recoverable() const {
    std::vector<RecoverableDocument> found;
    for (RecoverableDocument& each : candidates()) {
        const std::string owner = owner_of(each.slot);
        if (owner.empty() || !ProcessLock::is_held(lock_path(owner))) found.push_back(std::move(each));
    }
    return found;
}

void AutosaveFolder::remove_stale_locks() const {
    std::vector<fs::path> locks;
    std::vector<std::string> owners_with_slots;
    std::error_code error;
    for (fs::directory_iterator it(m_dir, error), end; !error && it != end; it.increment(error)) {
        const fs::path file = it->path();
        if (file.extension() == k_lock)
            locks.push_back(file);
        else if (file.extension() == k_origin)
            owners_with_slots.push_back(owner_of(file.stem().string()));
    }
    for (const fs::path& lock : locks) {
        const std::string owner = lock.stem().string();
        if (std::find(owners_with_slots.begin(), owners_with_slots.end(), owner) != owners_with_slots.end()) continue;
        if (ProcessLock::is_held(lock.string())) continue;
        std::error_code ignored;
        fs::remove(lock, ignored);
    }
}

std::string AutosaveFolder::path_of(const std::string& slot, const char* extension) const {
    return (fs::path(m_dir) / (slot + extension)).string();
}

bool AutosaveFolder::write(const std::string& slot, const std::string& origin_path, const std::string& title,
                           const std::string& document_text, std::string* error) const {
    std::error_code ignored;
    fs::create_directories(m_dir, ignored);
    // The document first: an origin without its document is no slot, a document without its
    // origin is overwritten by the next autosave.
    return store::write_file_atomically(path_of(slot, k_document), document_text, error) &&
           store::write_file_atomically(path_of(slot, k_origin), origin_path + "\n" + title + "\n", error);
}

void AutosaveFolder::remove(const std::string& slot) const {
    std::error_code ignored;
    fs::remove(path_of(slot, k_origin), ignored);
    fs::remove(path_of(slot, k_document), ignored);
}

std::vector<RecoverableDocument> AutosaveFolder::candidates() const {
    std::vector<std::pair<fs::file_time_type, RecoverableDocument>> found;
    std::error_code error;
    for (fs::directory_iterator it(m_dir, error), end; !error && it != end; it.increment(error)) {
        const fs::path origin_file = it->path();
        if (origin_file.extension() != k_origin) continue;
        const std::string slot = origin_file.stem().string();
        RecoverableDocument document{slot, path_of(slot, k_document), {}, {}};
        std::string origin;
        std::error_code missing;
        const auto saved_at = fs::last_write_time(document.autosave_path, missing);
        if (missing || !store::read_whole_file(origin_file.string(), origin)) continue;
        const size_t end_of_path = origin.find('\n');
        document.origin_path = origin.substr(0, end_of_path);
        if (end_of_path != std::string::npos) {
            document.title = origin.substr(end_of_path + 1);
            while (!document.title.empty() && document.title.back() == '\n') document.title.pop_back();
        }
        if (!document.origin_path.empty()) {
            std::error_code gone;
            const auto file_time = fs::last_write_time(document.origin_path, gone);
            if (!gone && file_time >= saved_at) continue; // the file holds all of it
        }
        found.emplace_back(saved_at, std::move(document));
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<RecoverableDocument> documents;
    for (auto& [time, document] : found) documents.push_back(std::move(document));
    return documents;
}

} // namespace quorvex::desktop
