#pragma once
#include <QSize>
#include <QString>

namespace quorvex::gui {

class Graph3DView;

// Writes what `view` shows as a picture of `size` pixels, drawn afresh at that size: .png, .svg
// or .pdf by the file's extension. False with `error` set otherwise.
bool export_view_3d(const Graph3DView& view, const QString& path, QSize size, QString* error = nullptr);

} // namespace quorvex::gui
