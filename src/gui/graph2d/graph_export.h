#pragma once
#include <QSize>
#include <QString>

class QChart;

namespace quorvex::gui {

// Writes the chart as a picture of `size` pixels (at 96 dots per inch for PDF and SVG), the
// kind chosen by the file's extension: .png, .svg or .pdf. False with `error` set otherwise.
bool export_chart(QChart* chart, const QString& path, QSize size, QString* error = nullptr);

} // namespace quorvex::gui
