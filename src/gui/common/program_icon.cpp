#include "program_icon.h"
#include "program_icon_svg.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace quorvex::gui {

QIcon program_icon() {
    // Drawn here rather than left to an icon plugin, which a machine may lack.
    QSvgRenderer picture(QByteArray::fromRawData(k_program_icon_svg, sizeof k_program_icon_svg - 1));
    QIcon icon;
    if (!picture.isValid()) return icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        picture.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace quorvex::gui
