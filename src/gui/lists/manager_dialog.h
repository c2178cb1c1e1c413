#pragma once
#include "engine_models.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTableView;

namespace quorvex::gui {

class DocumentWindow;

// The variables manager (F6) and the function manager (F7): a name, a value, and Add, Edit,
// Delete, Search and Copy, every change through the document's hub and so through the engine. The
// typed name and value are checked first, with the managers' own messages. A short instruction
// text can be hidden, and stays as the user left it (VariMgrInstructions, FuncMgrInstructions).
class ManagerDialog : public QDialog {
    Q_OBJECT

public:
    using Kind = EngineListModel::Kind;
    ManagerDialog(DocumentWindow& document, Kind kind, QWidget* parent = nullptr);

    QLineEdit* name() const { return m_name; }
    QLineEdit* value() const { return m_value; }
    bool add();
    bool edit();
    bool remove();
    // Selects the name typed (or `name`), whole or by its beginning, and shows its value; false,
    // after a message, when there is none.
    bool search();
    bool select(const QString& name);
    // Puts the selected definition ("rate = 0.05", "area[w,h] = w*h") at the editor's caret.
    bool copy_to_editor();
    void set_instructions(bool shown);

private:
    bool refuse(const std::string& message);
    // The engine's index of the name typed, or -1.
    int index_of_name() const;
    void show_selected();

    DocumentWindow& m_document;
    Kind m_kind;
    QTableView* m_list;
    QLineEdit* m_name;
    QLineEdit* m_value;
    QLabel* m_instructions;
    QCheckBox* m_show_instructions;
};

} // namespace quorvex::gui
