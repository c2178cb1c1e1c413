#include "qt_chart_2d.h"

#include "graph/axis_ticks.h"
#include "graph/decimate.h"
#include "hilo_item.h"
#include "point_label_item.h"

#include "graph/graph_types.h"
#include "graph/plot_frame.h"
#include "gui/common/color_picker.h"

#include <QAreaSeries>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QCategoryAxis>
#include <QChart>
#include <QChartView>
#include <QGraphicsRectItem>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QLegend>
#include <QLegendMarker>
#include <QLineSeries>
#include <QLogValueAxis>
#include <QPieSeries>
#include <QPolarChart>
#include <QStackedBarSeries>
#include <QValueAxis>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quorvex::gui {

namespace {

using graph::ChartData;
namespace type = graph::graph_type;

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// The pieces of a series between its holes: each a run of drawable points. Decimation keeps every
// hole and every run, so a series has the same pieces at every zoom. On a polar chart (`turn`, the
// angle of a whole circle, above 0) a curve that passes the angle 0 goes on in a piece of its own:
// a line from the end of the turn back to its start would cross the picture.
std::vector<QList<QPointF>> pieces_of(const std::vector<graph::PlotPoint>& points, double turn = 0) {
    std::vector<QList<QPointF>> pieces(1);
    for (const graph::PlotPoint& point : points) {
        if (point.is_hole()) {
            if (!pieces.back().isEmpty()) pieces.emplace_back();
            continue;
        }
        if (turn > 0 && !pieces.back().isEmpty() && std::abs(point.x - pieces.back().back().x()) > turn / 2)
            pieces.emplace_back();
        pieces.back().append(QPointF(point.x, point.y));
    }
    if (pieces.back().isEmpty()) pieces.pop_back();
    return pieces;
}

// The series that holds a piece's points: a line, or the upper edge of an area.
QXYSeries* points_of(QObject* item) {
    if (auto* area = qobject_cast<QAreaSeries*>(item)) return area->upperSeries();
    return qobject_cast<QXYSeries*>(item);
}

// Hands each piece to its series, only when changed: the chart lays a series out again on every
// change.
void replace_points(const std::vector<QObject*>& items, const std::vector<QList<QPointF>>& pieces) {
    for (size_t i = 0; i < items.size() && i < pieces.size(); ++i)
        if (QXYSeries* points = points_of(items[i]); points && points->points() != pieces[i]) points->replace(pieces[i]);
}

// Numbers a linear axis with round ticks inside [from, to], each tick a category boundary with its
// label on it. The ticks and labels are our own: Qt's dynamic ticks add the step up from the first
// tick and print the sum, which reads -1.38778e-17 where 0 belongs.
void number_axis(QCategoryAxis* axis, double from, double to) {
    for (const QString& label : axis->categoriesLabels()) axis->remove(label);
    const std::vector<graph::AxisTick> ticks = graph::linear_ticks(from, to);
    if (ticks.empty()) return;
    // The first boundary lies before the first tick, outside the range, so the first tick has a line.
    const double step = ticks.size() > 1 ? ticks[1].value - ticks[0].value : to - from;
    axis->setStartValue(ticks.front().value - step);
    for (const graph::AxisTick& tick : ticks) axis->append(QString::fromStdString(tick.label), tick.value);
}

// A short number for a bar's category or a slice's name.
QString short_number(double value) { return QString::number(value, 'g', 6); }

// The chart's fixed fonts: the header larger than the footer and the legend; notes as large as the
// header, point labels as the footer.
QFont chart_font(int points) { return QFont(QStringLiteral("Arial"), points, QFont::Bold); }

// A box behind a part of the chart: over the chart's background, under everything it holds.
QGraphicsRectItem* backing_box(QGraphicsItem* chart) {
    auto* box = new QGraphicsRectItem(chart);
    box->setPen(Qt::NoPen);
    box->setZValue(-0.5);
    box->setVisible(false);
    return box;
}

} // namespace

QtChart2D::QtChart2D(QChartView* view) : m_view(view) { make_chart(); }

QtChart2D::~QtChart2D() {
    for (const QMetaObject::Connection& watch : m_watches) QObject::disconnect(watch);
}

QChart* QtChart2D::chart() const { return m_view->chart(); }

bool QtChart2D::is_area_type() const { return m_type == type::Area || m_type == type::RadarFilled; }

bool QtChart2D::is_hilo_type() const {
    return m_type == type::HiLo || m_type == type::HiLoOpenClose || m_type == type::Candle;
}

bool QtChart2D::is_bar_type() const {
    return m_type == type::Bar || m_type == type::StackingBar || m_type == type::Hystogram || m_type == type::Pareto;
}

void QtChart2D::make_chart() {
    const bool polar = m_type == type::Polar || m_type == type::Radar || m_type == type::RadarFilled;
    QChart* old = m_view->chart();
    QChart* chart = polar ? new QPolarChart : new QChart;
    chart->setAnimationOptions(QChart::NoAnimation);
    chart->legend()->setAlignment(Qt::AlignBottom);
    chart->setTitleFont(chart_font(14));
    chart->legend()->setFont(chart_font(12));
    m_view->setChart(chart);
    m_hilo = nullptr; // went with the old chart
    m_graph_frame = backing_box(chart);
    m_header_box = backing_box(chart);
    m_footer_box = backing_box(chart);
    // A larger plot area (a resized window, a picture exported larger) has more columns to fill.
    QObject::connect(chart, &QChart::plotAreaChanged, &m_guard, [this] { decimate_again(); });
    m_texts.clear();
    m_labels.clear();
    for (const QMetaObject::Connection& watch : m_watches) QObject::disconnect(watch);
    m_watches.clear();
    m_watches.push_back(QObject::connect(chart, &QChart::plotAreaChanged, chart, [this] { place_labels(); }));
    // The chart has one title, drawn at the top: the footer is a text of its own at the bottom.
    m_footer = new QGraphicsSimpleTextItem(chart);
    m_footer->setFont(chart_font(12));
    m_footer->setVisible(false);
    m_margins = chart->margins();
    m_watches.push_back(QObject::connect(chart, &QGraphicsWidget::geometryChanged, chart, [this] { place_footer(); }));
    if (old && old != chart) delete old;
}

void QtChart2D::clear() {
    m_finder.reset();
    m_data = ChartData(1, 0, 0);
    m_styles.clear();
    m_items.clear();
    m_fills.clear();
    m_bounds.reset();
    m_order.clear();
    m_log_x = m_log_y = false;
    m_value_labels.clear();
    m_label_angle = 0;
    m_margin_change = {};
    // A chart of its own for each build: nothing of the last graph's axes or texts stays behind.
    make_chart();
}

void QtChart2D::set_type(int graph_type) {
    const bool was_polar = qobject_cast<QPolarChart*>(chart()) != nullptr;
    m_type = graph_type;
    const bool polar = m_type == type::Polar || m_type == type::Radar || m_type == type::RadarFilled;
    if (polar != was_polar) make_chart();
}

void QtChart2D::set_legend_order(std::vector<size_t> order) { m_order = std::move(order); }

std::vector<size_t> QtChart2D::series_order() const {
    std::vector<size_t> order = m_order;
    if (order.size() != m_data.series() ||
        std::any_of(order.begin(), order.end(), [this](size_t s) { return s >= m_data.series(); })) {
        order.resize(m_data.series());
        std::iota(order.begin(), order.end(), size_t(0));
    }
    return order;
}

void QtChart2D::set_data(const ChartData& data) {
    m_data = data;
    m_finder = std::make_unique<graph::PointFinder>(m_data);
    m_styles.assign(data.series(), graph::SeriesStyle{});
    build_series();
}

void QtChart2D::build_series() {
    QChart* view_chart = chart();
    view_chart->removeAllSeries();
    m_items.assign(m_data.series(), {});
    m_fills.assign(m_data.series(), {});
    delete m_hilo;
    m_hilo = nullptr;
    view_chart->legend()->setVisible(true);
    if (is_hilo_type()) {
        // Series 0 the high values, 1 the low ones, 2 the opening and 3 the closing ones: one bar
        // (or candle) per point, drawn by our own item.
        m_hilo = new HiLoItem(
            graph::hilo_bars(m_data, m_type != type::HiLo), m_type == type::Candle,
            [this] {
                graph::PlotFrame frame;
                plot_frame(frame);
                return frame;
            },
            view_chart);
        // The values as unseen lines give the axes their series, clicks their points and the
        // legend its entries: one per series by its label, in the bars' colour (apply_style).
        for (size_t s = 0; s < m_data.series(); ++s) {
            auto* line = new QLineSeries;
            for (size_t p = 0; p < m_data.points(s); ++p)
                if (!ChartData::is_hole(m_data.x(s, p)) && !ChartData::is_hole(m_data.y(s, p)))
                    line->append(m_data.x(s, p), m_data.y(s, p));
            line->setPen(Qt::NoPen);
            line->setName(text_of(m_data.label(s)));
            view_chart->addSeries(line);
        }
        for (size_t s = 0; s < m_data.series(); ++s) apply_style(s);
        return;
    }
    if (m_type == type::Pie) {
        // A pie of the first series: one slice per point, named by its X.
        auto* pie = new QPieSeries;
        if (m_data.series() > 0)
            for (size_t p = 0; p < m_data.points(); ++p) {
                const double y = m_data.y(0, p);
                if (ChartData::is_hole(y) || y <= 0) continue;
                const double x = m_data.x(0, p);
                pie->append(ChartData::is_hole(x) ? QString::number(p + 1) : short_number(x), y);
            }
        // Beyond twenty slices names and legend would only cover each other.
        pie->setLabelsVisible(pie->count() <= 20);
        view_chart->addSeries(pie);
        view_chart->legend()->setVisible(pie->count() <= 20);
        return;
    }
    if (is_bar_type()) {
        QAbstractBarSeries* bars = m_type == type::StackingBar ? static_cast<QAbstractBarSeries*>(new QStackedBarSeries)
                                                               : new QBarSeries;
        for (size_t s : series_order()) {
            auto* set = new QBarSet(text_of(m_data.label(s)));
            for (size_t p = 0; p < m_data.points(); ++p) {
                const double y = m_data.y(s, p);
                *set << (ChartData::is_hole(y) ? 0.0 : y);
            }
            bars->append(set);
            m_items[s].push_back(set);
        }
        view_chart->addSeries(bars);
        return;
    }
    for (size_t s : series_order()) {
        bool first = true;
        const auto add = [&](QAbstractSeries* added, std::vector<QObject*>& to) {
            to.push_back(added);
            added->setName(text_of(m_data.label(s)));
            view_chart->addSeries(added);
            // One legend entry per series, not per piece: its fill's, for an area.
            if (!first)
                for (QLegendMarker* marker : view_chart->legend()->markers(added)) marker->setVisible(false);
            first = false;
        };
        // An area is a fill with its line drawn over it: the line shows every column's extremes, so
        // the fill's edge can run smoothly inside them.
        const std::vector<QList<QPointF>> lines = pieces_of(drawn_points(s), polar_turn());
        if (is_area_type()) {
            const std::vector<QList<QPointF>> fills = pieces_of(graph::decimate_area_fill(m_data, s, pixel_window()));
            for (const QList<QPointF>& piece : fills) {
                // The area does not own the line it fills under: the line is made its child.
                auto* area = new QAreaSeries;
                auto* upper = new QLineSeries(area);
                upper->append(piece);
                area->setUpperSeries(upper);
                add(area, m_fills[s]);
            }
            for (const QList<QPointF>& piece : lines) {
                auto* line = new QLineSeries;
                if (fills != lines) line->append(piece);
                add(line, m_items[s]);
            }
        } else {
            for (const QList<QPointF>& piece : lines) {
                auto* line = new QLineSeries;
                line->append(piece);
                add(line, m_items[s]);
            }
        }
    }
    for (size_t s = 0; s < m_data.series(); ++s) apply_style(s);
}

graph::PixelWindow QtChart2D::pixel_window() const {
    graph::PixelWindow window;
    const std::optional<graph::ChartBounds> whole = m_bounds ? m_bounds : graph::data_extent(m_data);
    if (whole) window = {whole->x_min, whole->x_max, whole->y_min, whole->y_max, 1, 1, m_log_x, m_log_y};
    // The axes' ranges as the user zoomed or panned them.
    const auto range_of = [this](Qt::Orientation orientation, double& from, double& to) {
        const QList<QAbstractAxis*> axes = chart()->axes(orientation);
        if (axes.isEmpty()) return;
        if (auto* linear = qobject_cast<QValueAxis*>(axes.first())) from = linear->min(), to = linear->max();
        else if (auto* log = qobject_cast<QLogValueAxis*>(axes.first())) from = log->min(), to = log->max();
    };
    if (qobject_cast<QPolarChart*>(chart())) {
        // Angle and radius are no pixel columns: a fine division of the angle keeps the picture.
        window.columns = window.rows = 4096;
        return window;
    }
    range_of(Qt::Horizontal, window.x_from, window.x_to);
    range_of(Qt::Vertical, window.y_from, window.y_to);
    // Twice the pixels of the plot area (or of the view, before the chart is laid out), so that
    // smoothed edges fall where they did.
    const QSizeF area = chart()->plotArea().size().expandedTo(m_view->size());
    const qreal ratio = m_view->devicePixelRatioF();
    window.columns = static_cast<size_t>(std::max(1.0, 2 * ratio * area.width()));
    window.rows = static_cast<size_t>(std::max(1.0, 2 * ratio * area.height()));
    return window;
}

std::vector<graph::PlotPoint> QtChart2D::drawn_points(size_t series) const {
    const bool points_alone = !is_area_type() && series < m_styles.size() && m_styles[series].line_pattern == 1;
    return points_alone ? graph::decimate_points(m_data, series, pixel_window())
                        : graph::decimate_line(m_data, series, pixel_window());
}

std::optional<graph::NearPoint> QtChart2D::point_near(QPointF at, double reach) const {
    if (chart()->series().isEmpty() || m_type == type::Pie) return std::nullopt;
    if (m_finder && !is_bar_type() && !qobject_cast<QPolarChart*>(chart())) {
        const graph::PixelWindow shown = pixel_window();
        const QRectF area = chart()->plotArea();
        const graph::PlotMapping mapping{shown.x_from, shown.x_to, shown.y_from, shown.y_to,
                                         area.width(), area.height(), m_log_x, m_log_y};
        return m_finder->nearest(mapping, at.x() - area.left(), at.y() - area.top(), reach);
    }
    // Bars and polar charts place points their own way: the chart maps each.
    QAbstractSeries* axes_of = chart()->series().first();
    std::optional<graph::NearPoint> best;
    for (size_t s = 0; s < m_data.series(); ++s)
        for (size_t p = 0; p < m_data.points(s); ++p) {
            const double x = m_data.x(s, p), y = m_data.y(s, p);
            if (ChartData::is_hole(x) || ChartData::is_hole(y)) continue;
            // A bar stands at its place among the categories, whatever its X.
            const QPointF place = chart()->mapToPosition(QPointF(is_bar_type() ? static_cast<double>(p) : x, y), axes_of);
            const double distance = std::hypot(place.x() - at.x(), place.y() - at.y());
            if (distance < (best ? best->distance : reach)) best = graph::NearPoint{s, p, distance};
        }
    return best;
}

void QtChart2D::decimate_again() {
    if (m_type == type::Pie || is_bar_type() || is_hilo_type()) return;
    for (size_t s = 0; s < m_items.size(); ++s) decimate_again(s);
}

double QtChart2D::polar_turn() const {
    // The graph sets a polar chart's angles to one whole turn.
    if (m_type != type::Polar || !m_bounds) return 0;
    return m_bounds->x_max - m_bounds->x_min;
}

void QtChart2D::decimate_again(size_t series) {
    if (m_type == type::Pie || is_bar_type() || is_hilo_type() || series >= m_items.size()) return;
    const std::vector<QList<QPointF>> lines = pieces_of(drawn_points(series), polar_turn());
    if (series < m_fills.size() && !m_fills[series].empty()) {
        const std::vector<QList<QPointF>> fills = pieces_of(graph::decimate_area_fill(m_data, series, pixel_window()));
        replace_points(m_fills[series], fills);
        // Where the fill's edge is the line itself, the fill's outline draws it alone, as it always
        // did (a second stroke would darken its smoothed edges).
        replace_points(m_items[series], fills != lines ? lines : std::vector<QList<QPointF>>(lines.size()));
        return;
    }
    replace_points(m_items[series], lines);
}

void QtChart2D::show_frame(const std::vector<double>& x, const std::vector<double>& y, const std::string& label) {
    if (m_type == type::Pie || is_bar_type() || is_hilo_type() || m_items.empty() || m_data.series() == 0) return;
    QChart* view_chart = chart();
    for (size_t s = 1; s < m_items.size(); ++s) {
        std::vector<QObject*> items = m_items[s];
        if (s < m_fills.size()) items.insert(items.end(), m_fills[s].begin(), m_fills[s].end());
        for (QObject* item : items)
            if (auto* series = qobject_cast<QAbstractSeries*>(item); series && series->isVisible()) {
                series->hide();
                for (QLegendMarker* marker : view_chart->legend()->markers(series)) marker->setVisible(false);
            }
    }
    // An area's fill stays with the curve it was made for: the frames play as lines.
    if (!m_fills.empty())
        for (QObject* item : m_fills[0])
            if (auto* series = qobject_cast<QAbstractSeries*>(item)) series->hide();
    const size_t points = std::min({x.size(), y.size(), m_data.points(0)});
    for (size_t p = 0; p < points; ++p) {
        m_data.set_x(0, p, x[p]);
        m_data.set_y(0, p, y[p]);
    }
    m_data.set_label(0, label);
    std::vector<QList<QPointF>> lines = pieces_of(drawn_points(0), polar_turn());
    // A frame may have more pieces than the first curve had (its holes fall elsewhere): more lines,
    // on the same axes and in the same style; fewer, and the extra lines stay empty.
    while (m_items[0].size() < lines.size()) {
        auto* line = new QLineSeries;
        view_chart->addSeries(line);
        for (QAbstractAxis* axis : view_chart->axes()) line->attachAxis(axis);
        for (QLegendMarker* marker : view_chart->legend()->markers(line)) marker->setVisible(false);
        m_items[0].push_back(line);
        apply_style(0);
    }
    lines.resize(m_items[0].size());
    replace_points(m_items[0], lines);
    if (auto* first = qobject_cast<QAbstractSeries*>(m_items[0].front())) first->setName(text_of(label));
}

void QtChart2D::apply_style(size_t series) {
    const graph::SeriesStyle& style = m_styles[series];
    const QColor color = to_qcolor(style.color);
    QPen pen(color);
    pen.setWidthF(style.line_width);
    pen.setCosmetic(true);
    if (series == 0 && m_hilo) {
        m_hilo->set_pen(color, std::max(1, style.line_width), to_qcolor(m_colors.data_area_background));
        // Every series is a part of the one bar: each legend entry shows the bar's colour.
        for (QLegendMarker* marker : chart()->legend()->markers()) {
            marker->setBrush(color);
            marker->setPen(QPen(color));
        }
    }
    std::vector<QObject*> items = m_items[series];
    if (series < m_fills.size()) items.insert(items.end(), m_fills[series].begin(), m_fills[series].end());
    for (QObject* item : items) {
        if (auto* set = qobject_cast<QBarSet*>(item)) {
            set->setColor(color);
            set->setBorderColor(color);
        } else if (auto* area = qobject_cast<QAreaSeries*>(item)) {
            QColor fill = color;
            fill.setAlpha(110);
            area->setBrush(fill);
            area->setPen(pen);
        } else if (auto* line = qobject_cast<QLineSeries*>(item)) {
            // Line pattern 1 is points alone (a scatter graph); point symbol 1 is a line alone. A
            // plot marks its points while they are few enough to tell apart.
            const bool points_only = style.line_pattern == 1 && !is_area_type();
            line->setPen(points_only ? QPen(Qt::NoPen) : pen);
            line->setColor(color);
            line->setPointsVisible(!is_area_type() && style.point_symbol != 1 && (points_only || m_data.points() <= 200));
            line->setMarkerSize(points_only ? style.point_size : std::max(4, style.point_size - 2));
        }
    }
}

void QtChart2D::set_series_style(size_t series, const graph::SeriesStyle& style) {
    if (series >= m_styles.size() || series >= m_items.size()) return;
    const bool points_alone = style.line_pattern == 1, was = m_styles[series].line_pattern == 1;
    m_styles[series] = style;
    apply_style(series);
    if (points_alone != was) decimate_again(series); // points alone are kept per pixel, not per column
}

void QtChart2D::set_titles(const std::string& header, const std::string& footer, const std::string& x_title,
                           const std::string& y_title) {
    chart()->setTitle(text_of(header));
    m_footer->setText(text_of(footer));
    m_footer->setVisible(!footer.empty());
    apply_margins();
    m_x_title = x_title;
    m_y_title = y_title;
    update_axes();
}

void QtChart2D::apply_margins() {
    QMarginsF margins(std::max(0.0, m_margins.left() + m_margin_change.left),
                      std::max(0.0, m_margins.top() + m_margin_change.top),
                      std::max(0.0, m_margins.right() + m_margin_change.right),
                      std::max(0.0, m_margins.bottom() + m_margin_change.bottom));
    if (m_footer->isVisible()) margins.setBottom(margins.bottom() + m_footer->boundingRect().height() + 6);
    chart()->setMargins(margins.toMargins());
    place_footer();
}

void QtChart2D::set_margins(const graph::Margins2D& change) {
    m_margin_change = change;
    apply_margins();
}

QGraphicsTextItem* QtChart2D::title_item() const {
    for (QGraphicsItem* item : chart()->childItems())
        if (auto* title = dynamic_cast<QGraphicsTextItem*>(item); title && title->isVisible()) return title;
    return nullptr;
}

QRectF QtChart2D::title_rect(Region which) const {
    const QRectF whole = chart()->rect();
    const QString text = which == Region::Header ? chart()->title() : m_footer->text();
    const QFontMetricsF metrics(which == Region::Header ? chart()->titleFont() : m_footer->font());
    const double width = std::min(whole.width(), std::max(160.0, metrics.horizontalAdvance(text) + 24));
    const double height = metrics.height() * std::max<qsizetype>(1, text.count(QLatin1Char('\n')) + 1) + 6;
    const double left = whole.left() + (whole.width() - width) / 2;
    if (which == Region::Header) {
        // Where the chart laid its title out, when it has one.
        if (QGraphicsTextItem* title = title_item(); title && !text.isEmpty()) {
            const QRectF drawn = title->mapRectToParent(title->boundingRect());
            return QRectF(left, drawn.top(), width, drawn.height());
        }
        return QRectF(left, whole.top() + chart()->margins().top(), width, height);
    }
    const double bottom = whole.bottom() - std::max(0.0, m_margins.bottom() + m_margin_change.bottom) + 3;
    return QRectF(left, bottom - height, width, height);
}

QtChart2D::Region QtChart2D::region_at(QPointF at) const {
    const QRectF area = chart()->plotArea();
    if (area.contains(at)) return Region::Data;
    if (title_rect(Region::Header).contains(at) || (at.y() < area.top() && at.y() < title_rect(Region::Header).bottom()))
        return Region::Header;
    const QLegend* legend = chart()->legend();
    const double legend_bottom = legend->isVisible() ? legend->geometry().bottom() : area.bottom();
    if (title_rect(Region::Footer).contains(at) || at.y() > std::max(legend_bottom, area.bottom())) return Region::Footer;
    return Region::Other;
}

void QtChart2D::place_footer() {
    if (!m_footer) return;
    const QRectF whole = chart()->rect();
    if (m_footer->isVisible()) {
        const QRectF text = m_footer->boundingRect();
        const QRectF box = title_rect(Region::Footer);
        m_footer->setPos(whole.left() + (whole.width() - text.width()) / 2, box.top() + (box.height() - text.height()) / 2);
    }
    m_footer_box->setRect(title_rect(Region::Footer));
    m_footer_box->setVisible(m_footer->isVisible());
    m_header_box->setRect(title_rect(Region::Header));
    m_header_box->setVisible(!chart()->title().isEmpty());
    // The chart puts its title as low as its background: over the box here.
    if (QGraphicsTextItem* title = title_item()) title->setZValue(m_header_box->zValue() + 0.25);
    // The graph's frame holds the plot area with the axes' numbers and titles: from the margins
    // at the sides, from under the header to over the legend.
    const QRectF area = chart()->plotArea();
    const QMarginsF margins = chart()->margins();
    const double top = m_header_box->isVisible() ? m_header_box->rect().bottom() + 4 : whole.top() + margins.top();
    const QLegend* legend = chart()->legend();
    double bottom = whole.bottom() - margins.bottom();
    if (legend->isVisible() && legend->geometry().top() > area.bottom()) bottom = legend->geometry().top() - 2;
    m_graph_frame->setRect(QRectF(whole.left() + margins.left(), top, whole.width() - margins.left() - margins.right(),
                                  bottom - top));
    m_graph_frame->setVisible(m_type != type::Pie && area.isValid());
}

void QtChart2D::set_colors(const graph::ChartColors& colors) {
    m_colors = colors;
    chart()->setBackgroundBrush(to_qcolor(colors.background));
    chart()->setBackgroundPen(QPen(to_qcolor(colors.foreground), 1));
    chart()->setPlotAreaBackgroundBrush(to_qcolor(colors.data_area_background));
    chart()->setPlotAreaBackgroundVisible(true);
    m_graph_frame->setBrush(to_qcolor(colors.graph_background));
    m_header_box->setBrush(to_qcolor(colors.header_background));
    chart()->setTitleBrush(to_qcolor(colors.header));
    m_footer_box->setBrush(to_qcolor(colors.footer_background));
    m_footer->setBrush(to_qcolor(colors.footer));
    QLegend* legend = chart()->legend();
    legend->setBackgroundVisible(true);
    legend->setBrush(to_qcolor(colors.legend_background));
    legend->setPen(QPen(to_qcolor(colors.legend_foreground), 1));
    legend->setLabelColor(to_qcolor(colors.legend_foreground));
    update_axes();
    for (size_t s = 0; s < m_styles.size() && s < m_items.size(); ++s) apply_style(s);
}

void QtChart2D::set_value_labels(const std::vector<std::string>& labels, double angle) {
    m_value_labels = labels;
    m_label_angle = angle;
    update_axes();
}

QStringList QtChart2D::category_labels() const {
    if (auto* categories = qobject_cast<QBarCategoryAxis*>(chart()->axes(Qt::Horizontal).value(0)))
        return categories->categories();
    return {};
}

void QtChart2D::set_bounds(const graph::ChartBounds& bounds) {
    const double turn = polar_turn();
    m_bounds = bounds;
    // A polar curve is cut where it passes the angle 0, which the turn tells.
    if (polar_turn() != turn) build_series();
    update_axes();
}

void QtChart2D::set_logarithmic(bool x, bool y) {
    m_log_x = x;
    m_log_y = y;
    update_axes();
}

void QtChart2D::set_grid(bool on) {
    m_grid = on;
    for (QAbstractAxis* axis : chart()->axes()) {
        axis->setGridLineVisible(on);
        axis->setMinorGridLineVisible(on);
    }
}

bool QtChart2D::plot_frame(graph::PlotFrame& frame) const {
    QChart* view_chart = chart();
    const QRectF area = view_chart->plotArea();
    frame.left = area.left(), frame.top = area.top(), frame.width = area.width(), frame.height = area.height();
    const auto range_of = [](QAbstractAxis* axis, double& low, double& high, bool& log) {
        if (auto* linear = qobject_cast<QValueAxis*>(axis)) {
            low = linear->min(), high = linear->max(), log = false;
            return true;
        }
        if (auto* decades = qobject_cast<QLogValueAxis*>(axis)) {
            low = decades->min(), high = decades->max(), log = true;
            return true;
        }
        return false;
    };
    return qobject_cast<QPolarChart*>(view_chart) == nullptr &&
           range_of(view_chart->axes(Qt::Horizontal).value(0), frame.shown.x_min, frame.shown.x_max, frame.log_x) &&
           range_of(view_chart->axes(Qt::Vertical).value(0), frame.shown.y_min, frame.shown.y_max, frame.log_y);
}

void QtChart2D::update_axes() {
    QChart* view_chart = chart();
    for (QAbstractAxis* axis : view_chart->axes()) {
        view_chart->removeAxis(axis);
        delete axis;
    }
    if (m_type == type::Pie || view_chart->series().isEmpty()) return;
    const QColor ink = to_qcolor(m_colors.graph_foreground);
    const QColor grid = to_qcolor(m_colors.data_area_foreground);
    const auto value_axis = [&](bool log, double low, double high, const std::string& title) -> QAbstractAxis* {
        QAbstractAxis* axis = nullptr;
        if (log) {
            auto* log_axis = new QLogValueAxis;
            log_axis->setBase(10);
            log_axis->setLabelFormat(QStringLiteral("%g"));
            // Ticks stand on powers of ten only: the range runs from decade to decade.
            if (low > 0 && high >= low)
                log_axis->setRange(std::pow(10.0, std::floor(std::log10(low))),
                                   std::pow(10.0, std::max(std::ceil(std::log10(high)), std::floor(std::log10(low)) + 1)));
            log_axis->setMinorTickCount(8);
            m_watches.push_back(QObject::connect(log_axis, &QLogValueAxis::rangeChanged, log_axis, [this] { place_labels(); }));
            axis = log_axis;
        } else {
            auto* linear = new QCategoryAxis;
            linear->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
            if (high > low) {
                // The graph's own range, with ticks on round numbers inside it, also as the user
                // zooms and pans.
                QObject::connect(linear, &QValueAxis::rangeChanged, linear,
                                 [linear](qreal from, qreal to) { number_axis(linear, from, to); });
                linear->setRange(low, high);
                number_axis(linear, low, high);
            }
            m_watches.push_back(QObject::connect(linear, &QValueAxis::rangeChanged, linear, [this] { place_labels(); }));
            axis = linear;
        }
        axis->setTitleText(text_of(title));
        axis->setLabelsColor(ink);
        axis->setTitleBrush(ink);
        axis->setLinePenColor(ink);
        axis->setGridLineColor(grid);
        QColor minor = grid;
        minor.setAlpha(80);
        axis->setMinorGridLineColor(minor);
        axis->setGridLineVisible(m_grid);
        axis->setMinorGridLineVisible(m_grid);
        return axis;
    };
    const graph::ChartBounds b = m_bounds.value_or(graph::ChartBounds{0, 1, 0, 1});
    QAbstractAxis* x_axis = nullptr;
    if (is_bar_type()) {
        auto* categories = new QBarCategoryAxis;
        for (size_t p = 0; p < m_data.points(); ++p) {
            // A histogram's bar reads the interval it counts.
            if (p < m_value_labels.size() && !m_value_labels[p].empty()) {
                categories->append(text_of(m_value_labels[p]));
                continue;
            }
            const double x = m_data.series() ? m_data.x(0, p) : graph::k_chart_hole;
            categories->append(ChartData::is_hole(x) ? QString::number(p + 1) : short_number(x));
        }
        categories->setLabelsAngle(-static_cast<int>(std::lround(m_label_angle)));
        categories->setLinePenColor(ink);
        categories->setLabelsVisible(m_data.points() <= 40); // more would only be an ellipsis each
        categories->setTitleText(text_of(m_x_title));
        categories->setLabelsColor(ink);
        categories->setTitleBrush(ink);
        x_axis = categories;
    } else {
        x_axis = value_axis(m_log_x, b.x_min, b.x_max, m_x_title);
    }
    QAbstractAxis* y_axis = value_axis(m_log_y && !is_bar_type(), b.y_min, b.y_max, m_y_title);
    if (auto* polar = qobject_cast<QPolarChart*>(view_chart)) {
        polar->addAxis(x_axis, QPolarChart::PolarOrientationAngular);
        polar->addAxis(y_axis, QPolarChart::PolarOrientationRadial);
    } else {
        view_chart->addAxis(x_axis, Qt::AlignBottom);
        view_chart->addAxis(y_axis, Qt::AlignLeft);
    }
    for (QAbstractSeries* series : view_chart->series()) {
        series->attachAxis(x_axis);
        series->attachAxis(y_axis);
    }
    // A zoom or a pan draws the new range again from all the data.
    for (QAbstractAxis* axis : {x_axis, y_axis}) {
        if (auto* linear = qobject_cast<QValueAxis*>(axis))
            QObject::connect(linear, &QValueAxis::rangeChanged, &m_guard, [this] { decimate_again(); });
        else if (auto* log = qobject_cast<QLogValueAxis*>(axis))
            QObject::connect(log, &QLogValueAxis::rangeChanged, &m_guard, [this] { decimate_again(); });
    }
    decimate_again();
    place_labels();
}

int QtChart2D::add_point_label(size_t series, size_t point, const std::string& text) {
    if (series >= m_data.series() || point >= m_data.points()) return -1;
    const double x = m_data.x(series, point), y = m_data.y(series, point);
    if (ChartData::is_hole(x) || ChartData::is_hole(y) || chart()->series().isEmpty()) return -1;
    auto* item = new PointLabelItem(text_of(text).trimmed(), chart());
    m_labels.push_back({item, series, point});
    m_texts.push_back(item);
    place_labels();
    return static_cast<int>(m_texts.size()) - 1;
}

QGraphicsItem* QtChart2D::text_item(int index) const {
    return index >= 0 && index < static_cast<int>(m_texts.size()) ? m_texts[static_cast<size_t>(index)] : nullptr;
}

void QtChart2D::place_labels() {
    if (m_hilo) m_hilo->frame_changed();
    place_footer();
    if (m_labels.empty()) return;
    QChart* view_chart = chart();
    graph::PlotFrame frame;
    // Cartesian value axes are mapped here; bars (whose X is the point's place among the
    // categories) and polar charts are left to the chart's own mapping.
    const bool own_mapping = plot_frame(frame);
    for (const Label& label : m_labels) {
        const double x = m_data.x(label.series, label.point), y = m_data.y(label.series, label.point);
        std::optional<graph::Pixel> at;
        if (own_mapping) {
            at = graph::to_pixel(frame, x, y);
        } else if (!view_chart->series().isEmpty()) {
            const QPointF place = view_chart->mapToPosition(QPointF(is_bar_type() ? static_cast<double>(label.point) : x, y),
                                                            view_chart->series().first());
            at = graph::Pixel{place.x(), place.y()};
        }
        const bool shown = at && graph::inside(frame, *at);
        label.item->setVisible(shown);
        if (!shown) continue;
        label.item->setPos(at->x, at->y);
        const QSizeF size = label.item->box_size();
        const graph::Pixel corner = graph::place_point_label(frame, *at, size.width(), size.height());
        label.item->set_box_at(QPointF(corner.x - at->x, corner.y - at->y));
    }
}

int QtChart2D::add_note(const std::string& text, int x, int y) {
    // Black on light yellow in a framed box, as point labels are.
    auto* box = new QGraphicsRectItem(chart());
    auto* item = new QGraphicsSimpleTextItem(text_of(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")), box);
    item->setFont(chart_font(14));
    item->setBrush(QColor(0, 0, 0));
    item->setPos(4, 2);
    box->setRect(item->boundingRect().adjusted(0, 0, 8, 4));
    box->setBrush(to_qcolor(0x80FFFF));
    box->setPen(QPen(QColor(64, 64, 64), 1));
    box->setZValue(10);
    box->setPos(x, y);
    m_texts.push_back(item);
    return static_cast<int>(m_texts.size()) - 1;
}

} // namespace quorvex::gui
