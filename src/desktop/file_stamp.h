#pragma once
#include <cstdint>
#include <string>

namespace quorvex::desktop {

// What a document's file held when the program last read or wrote it, to tell whether another
// program changed or removed it since. Content counts, not times: a file touched or rewritten
// with the same bytes is no change worth a question.
struct FileStamp {
    bool exists = false;
    std::uintmax_t size = 0;
    std::uint64_t hash = 0;

    static FileStamp of(const std::string& path);
    bool operator==(const FileStamp& other) const = default;
};

} // namespace quorvex::desktop
