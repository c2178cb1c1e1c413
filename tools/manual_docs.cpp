// Writes the manual as HTML files, the same pages the help window shows, for `make docs`.
// Usage: quorvex-docs MANUAL_DIR BUILTINS_TXT OUTPUT_DIR
#include "desktop/manual.h"
#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "store/atomic_write.h"

#include <cstdio>
#include <filesystem>
#include <string>

using namespace quorvex;

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s MANUAL_DIR BUILTINS_TXT OUTPUT_DIR\n", argv[0]);
        return 2;
    }
    const std::filesystem::path manual_dir = argv[1], output = argv[3];
    std::string builtins;
    if (!store::read_whole_file(argv[2], builtins)) {
        std::fprintf(stderr, "%s: can not read %s\n", argv[0], argv[2]);
        return 1;
    }
    std::error_code error;
    std::filesystem::create_directories(output, error);
    const auto fragment = [&](const std::string& file) {
        std::string text;
        store::read_whole_file((manual_dir / file).string(), text);
        return text;
    };
    // A new document's settings; the statistics tables stand beside builtins.txt.
    engine::Parser parser(&functions::builtin_functions(), std::filesystem::path(argv[2]).parent_path().string() + "/");
    const desktop::Manual manual(fragment, desktop::read_builtin_texts(builtins), parser);
    for (const std::string& file : manual.files()) {
        const std::string path = (output / file).string();
        if (!store::write_file_atomically(path, manual.page(file))) {
            std::fprintf(stderr, "%s: can not write %s\n", argv[0], path.c_str());
            return 1;
        }
    }
    std::printf("%zu pages in %s\n", manual.files().size(), output.string().c_str());
    return 0;
}
