#pragma once
#include <QCoreApplication>
#include <QFont>
#include <QString>

class QPagedPaintDevice;
class QTextDocument;

namespace quorvex::gui {

// Prints a document's text on paper or into a PDF at the size the user sees it: the editor's
// font, sized in screen pixels, is taken at the same size in points (16 pixels on a 96 dpi screen
// print as 12 points), where the printer's resolution would otherwise shrink it to a speck. Long
// lines wrap, and each page has a header with the document's name and the page's number.
class DocumentPrinter {
    Q_DECLARE_TR_FUNCTIONS(DocumentPrinter)

public:
    DocumentPrinter(const QTextDocument& text, const QFont& screen_font, qreal screen_dpi, QString title);

    // The font the text is laid out with on paper.
    const QFont& print_font() const { return m_font; }
    // Prints every page; the number of pages printed, 0 when the device can not be painted on.
    int print(QPagedPaintDevice& device) const;

private:
    const QTextDocument& m_text;
    QFont m_font;
    QString m_title;
};

} // namespace quorvex::gui
