#pragma once
#include "document/line_dependencies.h"

#include <QString>
#include <QTextBlock>
#include <QTextBlockUserData>

#include <memory>
#include <optional>
#include <vector>

namespace quorvex::gui {

// What the editor knows of one line beyond its text, kept with the line's block so that it moves
// with the line as lines are inserted, moved or deleted (a line that undo brings back has none).
// Each mark holds the text it was made for: once the line's text changes it no longer applies.
struct LineMarks : QTextBlockUserData {
    // The line the engine refused, as it read then.
    std::optional<QString> error_text;
    // How the line's last answers were computed, newest first: when undo brings an older text
    // back, the record made with it applies again, and with it what has changed since.
    std::vector<std::unique_ptr<document::LineRecord>> records;
    static constexpr size_t k_records_kept = 8;
    // Whether the answer shown is out of date, as last found for the record `judged`.
    document::Staleness staleness;
    const document::LineRecord* judged = nullptr;
    // The answer a document check computed for this line when it differs from the stored one.
    std::optional<QString> differs_text; // the line as it read at the check
    QString differs_answer;

    // The block's marks, null when it has none.
    static LineMarks* of(const QTextBlock& block) { return dynamic_cast<LineMarks*>(block.userData()); }
    // The block's marks, made when it has none.
    static LineMarks& make(QTextBlock block) {
        if (LineMarks* marks = of(block)) return *marks;
        auto* marks = new LineMarks;
        block.setUserData(marks);
        return *marks;
    }

    bool has_error(const QString& text) const { return error_text && *error_text == text; }
    // The record of the line as it reads now, null when none was made for this text.
    const document::LineRecord* record_for(const QString& text) const {
        const std::string line = text.toStdString();
        for (const auto& record : records)
            if (record->text == line) return record.get();
        return nullptr;
    }
    // Keeps the record of the line just computed as the newest.
    void keep(document::LineRecord record) {
        std::erase_if(records, [&](const auto& kept) { return kept->text == record.text; });
        records.insert(records.begin(), std::make_unique<document::LineRecord>(std::move(record)));
        if (records.size() > k_records_kept) records.pop_back();
    }
    bool is_stale(const QString& text) const {
        const document::LineRecord* record = record_for(text);
        return staleness.stale && record && record == judged;
    }
    bool differs(const QString& text) const { return differs_text && *differs_text == text; }
};

} // namespace quorvex::gui
