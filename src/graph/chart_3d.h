#pragma once
#include "graph_data.h"
#include "grid_3d.h"
#include "scene_3d.h"
#include "view_3d.h"

#include <string>
#include <vector>

namespace quorvex::graph {

// What drawing a 3-D graph asks of a chart. The graph window draws through the painter one; the
// build is tested against the recording one.
class Chart3D {
public:
    virtual ~Chart3D() = default;
    virtual void clear() = 0;
    virtual void set_grid(const Grid3D& grid) = 0;
    virtual void set_style(const Style3D& style) = 0;
    virtual void set_view(const View3D& view, const View3D& default_view) = 0;
    // A text at grid point (i, j); its index among the chart's texts.
    virtual int add_point_label(size_t i, size_t j, const std::string& text) = 0;
    // A note at a place in pixels of the chart; its index among the chart's texts.
    virtual int add_note(const std::string& text, int x, int y) = 0;
};

class RecordingChart3D : public Chart3D {
public:
    struct Text {
        std::string text;
        bool note = false;
        size_t i = 0, j = 0;
        int x = 0, y = 0;
    };
    void clear() override { *this = RecordingChart3D(); }
    void set_grid(const Grid3D& grid) override { this->grid = grid; }
    void set_style(const Style3D& style) override { this->style = style; }
    void set_view(const View3D& view, const View3D& default_view) override {
        this->view = view;
        this->default_view = default_view;
    }
    int add_point_label(size_t i, size_t j, const std::string& text) override {
        texts.push_back({text, false, i, j, 0, 0});
        return static_cast<int>(texts.size()) - 1;
    }
    int add_note(const std::string& text, int x, int y) override {
        texts.push_back({text, true, 0, 0, x, y});
        return static_cast<int>(texts.size()) - 1;
    }

    Grid3D grid;
    Style3D style;
    View3D view, default_view;
    std::vector<Text> texts;
};

// The forms, colours and titles of a graph as the 3-D picture draws them: the chart's Y axis
// carries the graph's Z variable, so the graph's Z title is written along it and its Y title
// (the value's) up the vertical axis.
Style3D style_of_graph(const GraphData& graph);
View3D view_of_graph(const GraphData& graph);
View3D default_view_of_graph(const GraphData& graph);
// Keeps a view the user turned to in the graph, so that it survives a rebuild and is saved.
void keep_view_in_graph(GraphData& graph, const View3D& view);
void keep_default_view_in_graph(GraphData& graph, const View3D& view);

// The text of a point label: " (x , y , z) " with the value in the middle as the graph names it
// (x, the value, then the Z variable's coordinate).
std::string point_label_3d(const std::string& x, const std::string& value, const std::string& z);

// Hands a computed grid and everything else the graph says to the chart: style, view, point
// labels (kept in the graph at their grid point) and notes. The grid is taken as a value: it may
// be the chart's own, which the chart clears first.
void build_3d(const GraphData& graph, Grid3D grid, Chart3D& chart);

} // namespace quorvex::graph
