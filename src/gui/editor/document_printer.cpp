#include "document_printer.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextDocument>

#include <memory>

namespace quorvex::gui {

DocumentPrinter::DocumentPrinter(const QTextDocument& text, const QFont& screen_font, qreal screen_dpi, QString title)
    : m_text(text), m_font(screen_font), m_title(std::move(title)) {
    // Points are what a printer keeps to: the same points as on the screen, at any resolution.
    if (screen_font.pixelSize() > 0 && screen_dpi > 0) m_font.setPointSizeF(screen_font.pixelSize() * 72.0 / screen_dpi);
}

int DocumentPrinter::print(QPagedPaintDevice& device) const {
    QPainter painter;
    if (!painter.begin(&device)) return 0;
    // A copy laid out for the device, in pages of the room below the header.
    std::unique_ptr<QTextDocument> paper(m_text.clone());
    paper->documentLayout()->setPaintDevice(&device);
    paper->setDefaultFont(m_font);
    paper->setDocumentMargin(0);
    QTextOption wrapping = paper->defaultTextOption();
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    paper->setDefaultTextOption(wrapping);

    QFont header_font = QGuiApplication::font();
    header_font.setPointSizeF(m_font.pointSizeF() * 0.75);
    header_font = QFont(header_font, &device);
    const QFontMetricsF header(header_font, &device);
    const qreal width = device.width();
    const qreal header_height = header.lineSpacing() * 2; // the name and number, a rule, a gap
    const QSizeF body(width, device.height() - header_height);
    paper->setPageSize(body);
    const int pages = paper->pageCount();

    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black); // ink on paper, whatever the screen's theme
    for (int page = 0; page < pages; ++page) {
        if (page > 0 && !device.newPage()) return page;
        painter.setPen(Qt::black);
        painter.setFont(header_font);
        const QRectF line(0, 0, width, header.lineSpacing());
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, m_title);
        painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, tr("Page %1 of %2").arg(page + 1).arg(pages));
        const qreal rule = header.lineSpacing() * 1.25;
        painter.drawLine(QPointF(0, rule), QPointF(width, rule));

        painter.save();
        painter.translate(0, header_height - page * body.height());
        context.clip = QRectF(0, page * body.height(), width, body.height());
        painter.setClipRect(context.clip);
        paper->documentLayout()->draw(&painter, context);
        painter.restore();
    }
    return pages;
}

} // namespace quorvex::gui
