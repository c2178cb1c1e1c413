#pragma once
#include <QString>

namespace quorvex::gui {

// Writes a tool's table, given as lines of tab-separated cells, as a CSV file: cells joined by
// commas, a cell holding a comma or a quote quoted, CR LF line ends. False with `error` set when
// the file can not be written.
bool export_table_csv(const QString& tab_separated, const QString& path, QString* error);

} // namespace quorvex::gui
