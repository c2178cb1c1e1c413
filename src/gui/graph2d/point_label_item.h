#pragma once
#include <QFont>
#include <QGraphicsItem>
#include <QString>

namespace quorvex::gui {

// A point label as the chart draws it: the coordinates in a light box beside their point, joined
// to it by a short line. The item stands at the point; the box is placed around it.
class PointLabelItem : public QGraphicsItem {
public:
    PointLabelItem(const QString& text, QGraphicsItem* parent);

    QSizeF box_size() const { return m_box.size(); }
    // Moves the box so that its top left corner is `corner`, relative to the point.
    void set_box_at(QPointF corner);
    // The box in the item's coordinates.
    QRectF box() const { return m_box; }

    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    QString m_text;
    QFont m_font;
    QRectF m_box;
};

} // namespace quorvex::gui
