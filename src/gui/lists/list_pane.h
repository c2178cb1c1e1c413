#pragma once
#include "engine_models.h"

#include <QWidget>

class QTableView;

namespace quorvex::gui {

class DocumentWindow;

// A document's variables (F11) or functions (F12) as a list beside the editor. Delete removes the
// selection through the document's hub (asking only for a single item, and always where something
// uses it), Enter or a double click puts the name at the editor's caret. The context menu also
// clears the whole list after a question, opens the manager (and, for a function, the solver) on
// the selection, prints the list, and reaches the options that shape it.
class ListPane : public QWidget {
    Q_OBJECT

public:
    using Kind = EngineListModel::Kind;
    ListPane(DocumentWindow& document, Kind kind, QWidget* parent = nullptr);

    QTableView* view() const { return m_view; }
    void refresh();
    // Deletes the selected rows; the number deleted.
    int delete_selection();
    bool clear_all();
    void insert_selection_into_editor();
    // The selected row's name, empty without a selection.
    QString selected_name() const;
    // The list as a printable page: a title and a table of names and values.
    QString printable_html() const;

protected:
    void keyPressEvent(class QKeyEvent* event) override;

private:
    void show_menu(const QPoint& at);
    void print();

    DocumentWindow& m_document;
    Kind m_kind;
    EngineListModel* m_model;
    QTableView* m_view;
};

} // namespace quorvex::gui
