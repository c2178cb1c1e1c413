#pragma once
#include <QString>

namespace quorvex::gui {

// Writes a tool's table, given as lines of tab-separated cells, as a CSV file (cells holding a
// comma or a quote are quoted, lines end in CR LF); false with `error` set when it can not be written.
bool write_table_csv(const QString& path, const QString& tab_separated, QString* error = nullptr);

} // namespace quorvex::gui
