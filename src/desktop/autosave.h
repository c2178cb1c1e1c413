#pragma once
#include <string>
#include <vector>

namespace quorvex::desktop {

// A document found in the autosave folder that holds more than its file: the program stopped
// without saving it (a crash, a kill, a power cut) after the last autosave.
struct RecoverableDocument {
    std::string slot;          // the slot's name in the folder
    std::string autosave_path; // the autosaved document
    std::string origin_path;   // the file it belongs to; empty for a document never saved
    std::string title;         // what its window was called
};

// The folder where open documents with unsaved changes are copied every few minutes. Each open
// document has a slot: SLOT.qvx holds the document as a save would write it, SLOT.origin the path
// of its file and its title. A slot is removed when the document is saved or closed, so a slot
// that remains after the program ends marks work that would otherwise be lost.
class AutosaveFolder {
public:
    explicit AutosaveFolder(std::string dir);

    const std::string& dir() const { return m_dir; }
    // A slot name no other running copy of the program uses: the process id and a counter.
    static std::string new_slot(long process_id, int counter);

    // Replaces the slot's content; false with `error` set when the folder or file can not be
    // written.
    bool write(const std::string& slot, const std::string& origin_path, const std::string& title,
               const std::string& document_text, std::string* error = nullptr) const;
    void remove(const std::string& slot) const;

    // The slots worth offering back, oldest first: those of processes no longer running whose
    // autosave is newer than their file (or whose file is gone, or that never had one).
    // `is_running(pid)` tells whether a process id is alive.
    template <typename IsRunning> std::vector<RecoverableDocument> recoverable(IsRunning is_running) const {
        std::vector<RecoverableDocument> found;
        for (RecoverableDocument& each : candidates())
            if (!is_running(process_of(each.slot))) found.push_back(std::move(each));
        return found;
    }

    static long process_of(const std::string& slot);

private:
    std::vector<RecoverableDocument> candidates() const;
    std::string path_of(const std::string& slot, const char* extension) const;

    std::string m_dir;
};

} // namespace quorvex::desktop
