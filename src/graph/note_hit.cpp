#include "note_hit.h"

#include <cstdlib>

namespace quorvex::graph {

GraphNote* note_near(GraphData& graph, int x, int y, int reach) {
    GraphNote* nearest = nullptr;
    long best = 0;
    for (GraphNote& note : graph.Notes) {
        if (!note.IsNote) continue;
        const int dx = std::abs(note.PosX - x), dy = std::abs(note.PosY - y);
        if (dx > reach || dy > reach) continue;
        const long distance = static_cast<long>(dx) * dx + static_cast<long>(dy) * dy;
        if (!nearest || distance < best) nearest = &note, best = distance;
    }
    return nearest;
}

} // namespace quorvex::graph
