#pragma once
#include "document/document.h"
#include "functions/builtin_functions.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace document_test {

struct Message {
    std::string text, caption;
};

class RecordingReporter : public quorvex::engine::Reporter {
public:
    void report(std::string_view text, std::string_view caption, quorvex::engine::MessageKind) override {
        messages.push_back({std::string(text), std::string(caption)});
    }
    bool said(const std::string& part) const {
        for (const Message& m : messages)
            if (m.text.find(part) != std::string::npos) return true;
        return false;
    }
    std::vector<Message> messages;
};

// A document with its own engine, as an editor window has.
struct Editor {
    Editor() : parser(&quorvex::functions::builtin_functions(), QUORVEX_DATA_DIR), doc(parser, &reporter) {}
    quorvex::engine::Parser parser;
    RecordingReporter reporter;
    quorvex::document::Document doc;
};

inline std::string fixture(const std::string& name) {
    return std::string(QUORVEX_FIXTURES) + "documents/" + name;
}

inline std::string file_bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// A fresh folder under the system's temporary folder, removed with the object.
struct TempDir {
    TempDir() {
        path = std::filesystem::temp_directory_path() /
               ("quorvex_doc_" + std::to_string(reinterpret_cast<uintptr_t>(this)) + "_" +
                std::to_string(std::rand()));
        std::filesystem::create_directories(path);
    }
    ~TempDir() {
        std::error_code error;
        std::filesystem::permissions(path, std::filesystem::perms::owner_all, error);
        std::filesystem::remove_all(path, error);
    }
    std::string file(const std::string& name) const { return (path / name).string(); }
    std::filesystem::path path;
};

} // namespace document_test
