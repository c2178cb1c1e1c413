#pragma once
#include <QSize>
#include <QString>

#include <functional>

class QChart;
class QPainter;

namespace quorvex::gui {

// Writes the chart as a picture of `size` pixels (at 96 dots per inch for PDF and SVG), the
// kind chosen by the file's extension: .png, .svg or .pdf. False with `error` set otherwise.
bool export_chart(QChart* chart, const QString& path, QSize size, QString* error = nullptr);
// The same for any picture that `paint` draws at `size`; `title` names an SVG drawing.
bool export_painting(const QString& path, QSize size, const std::function<void(QPainter&)>& paint,
                     const QString& title, QString* error = nullptr);

} // namespace quorvex::gui
