#pragma once
#include "graph/hilo_bars.h"

#include <QColor>
#include <QGraphicsItem>

#include <functional>

namespace quorvex::gui {

// The bars of a HiLo, HiLo Open Close or Candle chart, which Qt Charts can not draw on the axes
// the graph has: one item over the chart that maps the bars through the plot area and the axes'
// ranges as they are when it paints. Candles are a line from low to high behind a body from open
// to close, hollow where the price rose.
class HiLoItem : public QGraphicsItem {
public:
    // `frame` tells where the plot area is and what its axes show at the moment.
    HiLoItem(std::vector<graph::HiLoBar> bars, bool candles, std::function<graph::PlotFrame()> frame,
             QGraphicsItem* parent);

    // The bars' colour and width, and the inside of a hollow candle.
    void set_pen(const QColor& color, double width, const QColor& hollow);
    bool candles() const { return m_candles; }
    // To be called when the plot area or an axis range changed.
    void frame_changed();

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    std::vector<graph::HiLoBar> m_bars;
    bool m_candles;
    QColor m_hollow = Qt::white;
    std::function<graph::PlotFrame()> m_frame;
    QRectF m_bounds; // the plot area when last told
    QColor m_color = Qt::black;
    double m_width = 1;
};

} // namespace quorvex::gui
