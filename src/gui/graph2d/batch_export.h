#pragma once
#include "desktop/launch_options.h"

#include <QSize>
#include <QString>
#include <QStringList>

namespace quorvex::engine {
class Parser;
}
namespace quorvex::document {
struct DocumentGraph;
}

namespace quorvex::gui {

// Draws `graph` afresh at `size` into the picture file `path` (.png, .svg, .pdf), in a chart of
// its own that is never shown; false with the reasons in `messages`.
bool draw_graph_picture(engine::Parser& parser, document::DocumentGraph& graph, const QString& path, QSize size,
                        QStringList& messages);

// Draws a document's graph into a picture file without showing anything: `quorvex
// --export-graph`. The graph is named as in the document's list of graphs, or by its number
// there (from 1). Returns the exit status (0 drawn, 1 not); what went wrong is in `messages`.
int export_document_graph(const desktop::LaunchOptions& options, const QString& library_dir, const QString& data_dir,
                          QStringList& messages);

} // namespace quorvex::gui
