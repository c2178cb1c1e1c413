#pragma once
#include "process_lock.h"

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
// that remains after the program ends marks work that would otherwise be lost. Each running
// program owns its slots under a name of its own and holds OWNER.lock while it runs: slots whose
// owner holds no lock are left over.
class AutosaveFolder {
public:
    explicit AutosaveFolder(std::string dir);

    const std::string& dir() const { return m_dir; }
    // An owner name no other copy of the program uses, now or later: the process id and the
    // start time (a process id alone comes back for another process).
    static std::string new_owner(long process_id, long long started_ms);
    // The slot name of an owner's `counter`th document.
    static std::string new_slot(const std::string& owner, int counter);
    static std::string owner_of(const std::string& slot);
    std::string lock_path(const std::string& owner) const;
    // Takes the owner's lock (making the folder); false when the folder can not be written.
    bool claim(const std::string& owner, ProcessLock& lock) const;

    // Replaces the slot's content; false with `error` set when the folder or file can not be
    // written.
    bool write(const std::string& slot, const std::string& origin_path, const std::string& title,
               const std::string& document_text, std::string* error = nullptr) const;
    void remove(const std::string& slot) const;

    // The slots worth offering back, oldest first: those whose owner holds no lock (it ended,
    // however) and whose autosave is newer than their file (or whose file is gone, or that never
    // had one).
    std::vector<RecoverableDocument> recoverable() const;
    // Removes the lock files that nobody holds and no slot needs.
    void remove_stale_locks() const;

private:
    std::vector<RecoverableDocument> candidates() const;
    std::string path_of(const std::string& slot, const char* extension) const;

    std::string m_dir;
};

} // namespace quorvex::desktop
