#pragma once
#include <QCompleter>

class QStandardItemModel;

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

// Offers built-in, library and document function names while a name is typed: each row shows
// the name with its prototype beside it, and carries the prototype (and a library's
// description) as its tooltip and the text that taking it inserts (a function's name with its
// opening bracket).
class NameCompleter : public QCompleter {
    Q_OBJECT

public:
    // The text a row inserts, under this role of the name's column.
    static constexpr int InsertRole = Qt::UserRole + 1;

    NameCompleter(engine::Parser& parser, QObject* parent = nullptr);

    // Reads the document's functions again (after a line declared one).
    void refresh_document_functions();
    // The names of document and library functions, for the colouring.
    QStringList function_names() const;
    // The width the popup needs for the names and prototypes now offered.
    int popup_width() const;

private:
    void add_document_rows();

    engine::Parser& m_parser;
    QStandardItemModel* m_model;
    int m_fixed_rows = 0; // built-ins, constants and libraries come first and stay
};

} // namespace quorvex::gui
