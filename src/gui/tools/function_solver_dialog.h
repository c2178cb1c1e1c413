#pragma once
#include "desktop/solver_form.h"

#include <QDialog>
#include <QStringList>

#include <array>
#include <optional>

class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QStringListModel;

namespace quorvex::gui {

class DocumentWindow;

// The "Function Solver": evaluates one function of the library by a form built from its
// prototype. A fixed form has a field per parameter; a list form takes any number of values
// (numbers, or conditions), typed one by one or loaded from a data file, and the parameters that
// follow the list. The call is composed as text and evaluated by the document's engine; the
// dialog keeps nothing but the values typed into it.
class FunctionSolverDialog : public QDialog {
    Q_OBJECT

public:
    explicit FunctionSolverDialog(DocumentWindow& document, QWidget* parent = nullptr);

    // Builds the form for a function. An unsaved list is offered for saving first (false when the
    // user cancels); a constant or a function of too many parameters is refused with its message
    // in the solution field (false).
    bool configure(const QString& prototype, const QString& description);

    // The list form, when the function has one beside its fixed form.
    void set_list_form(bool list);
    bool list_form() const { return m_list_form; }

    // The field of fixed parameter `index` as the form shows it now (the list form's parameters
    // after the list in list form).
    QSpinBox* precision() const { return m_precision; }
    QLineEdit* parameter_field(int index) const { return m_fields[static_cast<size_t>(index)]; }
    QLineEdit* list_entry() const { return m_entry; }
    QStringList list_values() const;

    // Adds a value to the list after checking it; false, after the message, when it is refused.
    bool add_list_value(const QString& text);
    // Reads a data file into the list, asking whether to add or replace when the list holds data.
    bool load_list(const QString& path);
    // Writes the list to a data file, separated as its extension says.
    bool save_list(const QString& path);

    // The call of the values entered now, and its evaluation into the solution field.
    QString call() const;
    bool solve();
    QString solution() const;

    void set_precision(int digits);
    // The prototype the form was built from, and whether its list has changed since it was saved.
    QString prototype() const;
    bool list_modified() const { return m_list_modified; }
    // Offers an unsaved list for saving; false when the user cancels (the document stays open).
    bool may_close();

protected:
    // Tab and Return in a field accept its value (Shift with them: accept and solve); '=' solves
    // when the field does not take conditions.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override;

private:
    void build_form();
    void accept_field(QLineEdit* field, bool then_solve);
    std::string check(const QString& value, bool numeric);
    bool takes_condition_field(const QLineEdit* field) const;
    bool check_fixed_values(QStringList& values);
    bool offer_to_save_list();
    void copy_to_editor(const QString& text);
    void message(const QString& text);
    int ask(const QString& text);

    DocumentWindow& m_document;
    std::optional<desktop::SolverForm> m_form;
    bool m_list_form = false;
    bool m_list_modified = false;
    QLabel* m_prototype;
    QLabel* m_description;
    QRadioButton* m_set_type;
    QRadioButton* m_list_type;
    QGroupBox* m_list_box;
    QLabel* m_entry_label;
    QLineEdit* m_entry;
    QStringListModel* m_values;
    QListView* m_list;
    QGroupBox* m_fixed_box;
    QFormLayout* m_fixed;
    std::array<QLineEdit*, desktop::k_max_solver_parameters> m_fields{};
    QSpinBox* m_precision;
    QLineEdit* m_call;
    QLineEdit* m_solution;
    QPushButton* m_solve;
};

} // namespace quorvex::gui
