#pragma once
#include "graph/chart_2d.h"
#include "graph/decimate.h"
#include "graph/nearest_point.h"
#include "graph/plot_frame.h"

#include <QColor>
#include <QObject>
#include <QMargins>
#include <QMetaObject>
#include <QPointer>

#include <memory>

class QChart;
class QChartView;
class QGraphicsItem;
class QGraphicsRectItem;
class QGraphicsSimpleTextItem;
class QGraphicsTextItem;

namespace quorvex::gui {

class HiLoItem;
class PointLabelItem;

// The 2-D chart on Qt Charts: a graph's series as line, scatter, area, bar, pie or polar series
// of the view's chart. A hole splits a line into pieces, so the curve shows a gap there. Lines
// hold only the points that make a difference at the shown range and size (per-pixel
// decimation), taken again from all the data whenever the range or the size changes.
class QtChart2D : public graph::Chart2D {
public:
    explicit QtChart2D(QChartView* view);
    ~QtChart2D() override;
    QtChart2D(const QtChart2D&) = delete;
    QtChart2D& operator=(const QtChart2D&) = delete;

    void clear() override;
    void set_type(int type) override;
    void set_legend_order(std::vector<size_t> order) override;
    void set_data(const graph::ChartData& data) override;
    void set_series_style(size_t series, const graph::SeriesStyle& style) override;
    void set_titles(const std::string& header, const std::string& footer, const std::string& x_title,
                    const std::string& y_title) override;
    void set_colors(const graph::ChartColors& colors) override;
    void set_bounds(const graph::ChartBounds& bounds) override;
    void set_logarithmic(bool x, bool y) override;
    void set_grid(bool on) override;
    void set_value_labels(const std::vector<std::string>& labels, double angle) override;
    void set_margins(const graph::Margins2D& change) override;
    int add_point_label(size_t series, size_t point, const std::string& text) override;
    int add_note(const std::string& text, int x, int y) override;

    // One frame of a simulation: the first series shows these points under this label and every
    // other series is hidden, the axes staying as they are. Nothing on a bar or pie chart.
    void show_frame(const std::vector<double>& x, const std::vector<double>& y, const std::string& label);

    QChart* chart() const;
    // The numbers drawn last.
    const graph::ChartData& data() const { return m_data; }
    // The point of the data drawn nearest to `at` (a place in the chart), if one is less than
    // `reach` pixels away.
    std::optional<graph::NearPoint> point_near(QPointF at, double reach) const;
    // The range shown before any zoom, for a reset.
    const std::optional<graph::ChartBounds>& bounds() const { return m_bounds; }
    // A text of the chart by the index add_point_label or add_note gave; null for none.
    QGraphicsItem* text_item(int index) const;

    // What lies at a place of the chart: the plot area, the header (the band above it) or the
    // footer (the band under the legend).
    enum class Region { Data, Header, Footer, Other };
    Region region_at(QPointF at) const;
    // Where the header or the footer stands (or would stand), for an editor over it.
    QRectF title_rect(Region which) const;
    // The bars of a HiLo chart as drawn; null on any other chart.
    HiLoItem* hilo_item() const { return m_hilo; }
    // The labels under the X axis of a bar chart, as shown.
    QStringList category_labels() const;

private:
    bool is_bar_type() const;
    bool is_area_type() const;
    // What the chart shows now, in pixels, and the points of a series that draw it there.
    graph::PixelWindow pixel_window() const;
    std::vector<graph::PlotPoint> drawn_points(size_t series) const;
    // Decimates the lines again from all the data, for the range shown now.
    void decimate_again();
    void decimate_again(size_t series);
    // The angle of a whole circle on a polar chart, 0 on any other.
    double polar_turn() const;
    void make_chart();
    void build_series();
    std::vector<size_t> series_order() const;
    // Keeps the footer centred under the legend as the chart's size changes, and the boxes of the
    // header, the footer and the graph's frame behind their parts.
    void place_footer();
    void apply_margins();
    // The header as the chart lays it out; null while it has none.
    QGraphicsTextItem* title_item() const;
    // The plot area and what its axes show now; false for a chart the frame can not describe
    // (a polar or bar chart).
    bool plot_frame(graph::PlotFrame& frame) const;
    bool is_hilo_type() const;
    void apply_style(size_t series);
    void update_axes();
    // Puts every point label beside its point as the chart shows it now: after a zoom, a pan, a
    // new size or a new layout the labels follow their points; a point out of sight hides its label.
    void place_labels();

    QChartView* m_view;
    int m_type = 1;
    graph::ChartData m_data{1, 0, 0};
    std::vector<graph::SeriesStyle> m_styles;
    std::vector<size_t> m_order;
    std::optional<graph::ChartBounds> m_bounds;
    bool m_log_x = false, m_log_y = false, m_grid = true;
    std::string m_x_title, m_y_title;
    graph::ChartColors m_colors;
    std::vector<QGraphicsItem*> m_texts;
    QGraphicsSimpleTextItem* m_footer = nullptr;
    QGraphicsRectItem* m_footer_box = nullptr;
    QGraphicsRectItem* m_header_box = nullptr;
    QGraphicsRectItem* m_graph_frame = nullptr; // behind the axes and their numbers
    HiLoItem* m_hilo = nullptr;
    std::vector<std::string> m_value_labels;
    double m_label_angle = 0;
    graph::Margins2D m_margin_change;
    QMarginsF m_margins; // the chart's own, before room is made for the footer
    struct Label {
        PointLabelItem* item;
        size_t series, point;
    };
    std::vector<Label> m_labels;
    std::vector<QMetaObject::Connection> m_watches; // the chart's and axes' changes that move the labels
    std::vector<std::vector<QObject*>> m_items; // per series: its pieces, or its bar set
    std::vector<std::vector<QObject*>> m_fills; // per series of an area: its pieces of fill
    std::unique_ptr<graph::PointFinder> m_finder; // over m_data
    QObject m_guard; // the receiver of the chart's signals: none arrives once this chart is gone
};

} // namespace quorvex::gui
