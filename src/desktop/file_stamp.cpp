#include "file_stamp.h"

#include <fstream>

namespace quorvex::desktop {

FileStamp FileStamp::of(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    FileStamp stamp;
    if (!in) return stamp;
    stamp.exists = true;
    // FNV-1a over the bytes, read in blocks.
    std::uint64_t hash = 14695981039346656037ull;
    char block[1 << 16];
    while (in) {
        in.read(block, sizeof block);
        const std::streamsize count = in.gcount();
        for (std::streamsize i = 0; i < count; ++i) {
            hash ^= static_cast<unsigned char>(block[i]);
            hash *= 1099511628211ull;
        }
        stamp.size += static_cast<std::uintmax_t>(count);
    }
    stamp.hash = hash;
    return stamp;
}

} // namespace quorvex::desktop
