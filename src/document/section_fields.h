#pragma once
#include "section_writer.h"

#include "store/ini_file.h"

#include <cstddef>
#include <string>

namespace quorvex::document {

// One saved key of a section and the member of a record it holds: a text or a whole number.
// A section's keys are written in the order of their table, so one table serves the writer and
// the reader; a number missing from the file reads as the member's default.
template <class Record>
struct SectionField {
    const char* key;
    std::string Record::*text = nullptr;
    int Record::*number = nullptr;
};
template <class Record>
constexpr SectionField<Record> text(const char* key, std::string Record::*member) {
    return {key, member, nullptr};
}
template <class Record>
constexpr SectionField<Record> number(const char* key, int Record::*member) {
    return {key, nullptr, member};
}

template <class Record, size_t N>
void put_fields(SectionWriter& out, const Record& record, const SectionField<Record> (&fields)[N]) {
    for (const SectionField<Record>& field : fields) {
        if (field.text)
            out.Put(field.key, record.*field.text);
        else
            out.PutInt(field.key, record.*field.number);
    }
}

template <class Record, size_t N>
void get_fields(const store::IniFile& ini, const char* section, Record& record, const SectionField<Record> (&fields)[N]) {
    const Record defaults{};
    for (const SectionField<Record>& field : fields) {
        if (field.text)
            record.*field.text = ini.GetString(section, field.key);
        else
            record.*field.number = ini.GetInt(section, field.key, defaults.*field.number);
    }
}

} // namespace quorvex::document
