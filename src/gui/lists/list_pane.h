#pragma once
#include <QWidget>

class QTableView;

namespace quorvex::gui {

class DocumentWindow;
class EngineListModel;

// A document's variables (F11) or functions (F12) as a list beside the editor. Delete removes the
// selection through the document's hub (asking only for a single item, and always where something
// uses it), Enter or a double click puts the name at the editor's caret, and the context menu
// also clears the whole list after a question.
class ListPane : public QWidget {
    Q_OBJECT

public:
    enum class Kind { Variables, Functions };
    ListPane(DocumentWindow& document, Kind kind, QWidget* parent = nullptr);

    QTableView* view() const { return m_view; }
    void refresh();
    // Deletes the selected rows; the number deleted.
    int delete_selection();
    bool clear_all();
    void insert_selection_into_editor();

protected:
    void keyPressEvent(class QKeyEvent* event) override;

private:
    DocumentWindow& m_document;
    Kind m_kind;
    EngineListModel* m_model;
    QTableView* m_view;
};

} // namespace quorvex::gui
