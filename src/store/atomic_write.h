#pragma once
#include <string>
#include <string_view>

namespace quorvex::store {

// Replaces the file at `path` by `bytes` as one step: the bytes go to a temporary file in the
// same folder, reach the disk, and the temporary file is renamed over the target. Whatever
// happens on the way (a full disk, a killed process), the target holds either its old content or
// the new one, never a mixture. A symbolic link is followed and its target saved; a folder, a
// device, a pipe or a read-only file (no owner write bit) is refused; an existing file keeps its
// mode and, where the process may, its owner; a file with several hard links is rewritten in
// place once the complete copy is on disk, so that all its names see the new content. Temporary
// files that an earlier, killed save left in the folder are removed. False with `error` set (in
// the program's words) on failure; the temporary file is then removed.
bool write_file_atomically(const std::string& path, std::string_view bytes, std::string* error = nullptr);

// The checks of write_file_atomically alone, for a caller that wants to refuse a target before
// it composes what it would write.
bool can_save_to(const std::string& path, std::string* error = nullptr);

// The whole file, or false when it can not be opened or is not a regular file.
bool read_whole_file(const std::string& path, std::string& bytes);

} // namespace quorvex::store
