#pragma once
#include <QDialog>

class QComboBox;
class QFileSystemWatcher;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItemModel;
class QTableView;

namespace quorvex::gui {

class DocumentWindow;
class FunctionSolverDialog;

// The "Function Library" (F8): built-in functions, constants, the system library, the user
// library and the document's functions in one list with categories. The search field filters as
// it is typed, on names and descriptions; the selection shows its prototype and description and
// can be inserted into the editor (or handed to the tool that opened the browser). The user
// library opens in the desktop's text editor and is read again when it changes on disk.
class LibraryDialog : public QDialog {
    Q_OBJECT

public:
    explicit LibraryDialog(DocumentWindow& document, QWidget* parent = nullptr);

    QLineEdit* search() const { return m_search; }
    QTableView* view() const { return m_view; }
    // Rows shown now, and the name of a shown row.
    int shown() const;
    QString name_at(int row) const;
    // Reads every name again (after the user library changed).
    void reload();
    // Inserts the selected function into the editor, or hands it to `take` when that is set.
    bool insert_selection();
    std::function<void(const QString& name)> take;
    // Opens the function solver beside the browser on the selected function (constants have
    // none); it follows the selection while it is open.
    FunctionSolverDialog* open_solver();
    // Selects the row of `name` in the list, the search and category cleared when they hide it.
    bool select_name(const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show_details();
    // After the list is filtered: a row is current whenever one is shown.
    void select_first_if_none();

    DocumentWindow& m_document;
    QStandardItemModel* m_model;
    QSortFilterProxyModel* m_filter;
    QLineEdit* m_search;
    QComboBox* m_category;
    QTableView* m_view;
    QLabel* m_details;
    QPushButton* m_solve;
    QFileSystemWatcher* m_watcher;
};

} // namespace quorvex::gui
