#pragma once
#include "chart_data.h"
#include "view_2d.h"

#include <string>
#include <vector>

namespace quorvex::graph {

// The colours of a 2-D chart's parts (0x00BBGGRR), a background and a foreground each: the
// whole chart (its border), the graph (the axes and their numbers and titles, on a frame around the
// plot area), the data area (the plot area and its grid lines), the header's and the footer's box
// and text, and the legend's box and text.
struct ChartColors {
    store::TColor background = 0xFFFFFF, foreground = 0;
    store::TColor graph_background = 0xFFFFFF, graph_foreground = 0;
    store::TColor data_area_background = 0xFFFFFF, data_area_foreground = 0;
    store::TColor header_background = 0xFFFFFF, header = 0;
    store::TColor footer_background = 0xFFFFFF, footer = 0;
    store::TColor legend_background = 0xFFFFFF, legend_foreground = 0;
};

// What drawing a 2-D graph asks of a chart. The graph window draws through the Qt Charts one;
// the sweep and the build are tested against the recording one.
class Chart2D {
public:
    virtual ~Chart2D() = default;
    // Drops data, texts and settings.
    virtual void clear() = 0;
    // The kind of chart to draw (a graph type as the chart draws it: plot, bar, pie, ...).
    virtual void set_type(int type) = 0;
    // The order in which the legend lists the series (and the chart draws them), given before
    // the data; without it the series' own order.
    virtual void set_legend_order(std::vector<size_t> order) = 0;
    virtual void set_data(const ChartData& data) = 0;
    virtual void set_series_style(size_t series, const SeriesStyle& style) = 0;
    virtual void set_titles(const std::string& header, const std::string& footer, const std::string& x_title,
                            const std::string& y_title) = 0;
    virtual void set_colors(const ChartColors& colors) = 0;
    virtual void set_bounds(const ChartBounds& bounds) = 0;
    virtual void set_logarithmic(bool x, bool y) = 0;
    virtual void set_grid(bool on) = 0;
    // Texts in place of the numbers of the X axis, one per point (a histogram's intervals), turned
    // by `angle` degrees; an empty list gives the numbers back.
    virtual void set_value_labels(const std::vector<std::string>& labels, double angle) = 0;
    // What each side's margin differs from the chart's own layout by, in pixels.
    virtual void set_margins(const Margins2D& change) = 0;
    // A text at a point of a series; its index among the chart's texts.
    virtual int add_point_label(size_t series, size_t point, const std::string& text) = 0;
    // A note at a place in pixels of the chart; its index among the chart's texts.
    virtual int add_note(const std::string& text, int x, int y) = 0;
};

// A chart that only remembers what it was told: for tests and for builds without a display.
class RecordingChart : public Chart2D {
public:
    struct Text {
        std::string text;
        bool note = false;
        size_t series = 0, point = 0; // a label's place
        int x = 0, y = 0;             // a note's place
    };

    void clear() override { *this = RecordingChart(); }
    void set_type(int type) override { this->type = type; }
    void set_legend_order(std::vector<size_t> order) override { legend_order = std::move(order); }
    void set_data(const ChartData& data) override { this->data = data; }
    void set_series_style(size_t series, const SeriesStyle& style) override {
        if (styles.size() <= series) styles.resize(series + 1);
        styles[series] = style;
    }
    void set_titles(const std::string& header, const std::string& footer, const std::string& x_title,
                    const std::string& y_title) override {
        titles = {header, footer, x_title, y_title};
    }
    void set_colors(const ChartColors& colors) override { this->colors = colors; }
    void set_bounds(const ChartBounds& bounds) override { this->bounds = bounds; }
    void set_logarithmic(bool x, bool y) override { log_x = x, log_y = y; }
    void set_grid(bool on) override { grid = on; }
    void set_value_labels(const std::vector<std::string>& labels, double angle) override {
        value_labels = labels;
        label_angle = angle;
    }
    void set_margins(const Margins2D& change) override { margins = change; }
    int add_point_label(size_t series, size_t point, const std::string& text) override {
        texts.push_back({text, false, series, point, 0, 0});
        return static_cast<int>(texts.size()) - 1;
    }
    int add_note(const std::string& text, int x, int y) override {
        texts.push_back({text, true, 0, 0, x, y});
        return static_cast<int>(texts.size()) - 1;
    }

    int type = 0;
    std::vector<size_t> legend_order;
    ChartData data{1, 0, 0};
    std::vector<SeriesStyle> styles;
    std::vector<std::string> titles;
    ChartColors colors;
    std::optional<ChartBounds> bounds;
    bool log_x = false, log_y = false, grid = false;
    std::vector<std::string> value_labels;
    double label_angle = 0;
    Margins2D margins;
    std::vector<Text> texts;
};

} // namespace quorvex::graph
