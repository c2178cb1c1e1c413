#pragma once
#include <QDialog>

class QLineEdit;
class QListView;

namespace quorvex::gui {

class DocumentWindow;

// The variables manager (F6) and the function manager (F7): a name, a value, and Add, Edit and
// Delete, every change through the document's hub and so through the engine. The typed name and
// value are checked first, with the managers' own messages.
class ManagerDialog : public QDialog {
    Q_OBJECT

public:
    enum class Kind { Variables, Functions };
    ManagerDialog(DocumentWindow& document, Kind kind, QWidget* parent = nullptr);

    QLineEdit* name() const { return m_name; }
    QLineEdit* value() const { return m_value; }
    bool add();
    bool edit();
    bool remove();

private:
    bool refuse(const std::string& message);
    // The engine's index of the name typed, or -1.
    int index_of_name() const;
    void show_selected();

    DocumentWindow& m_document;
    Kind m_kind;
    QListView* m_list;
    QLineEdit* m_name;
    QLineEdit* m_value;
};

} // namespace quorvex::gui
