#pragma once
#include "desktop/matrix_tool.h"

#include "gui/tools/tool_dialog.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListView;
class QRadioButton;
class QSpinBox;
class QStackedWidget;
class QStringListModel;
class QTableView;

namespace quorvex::gui {

class DocumentWindow;
class MatrixCellModel;

// The "Matrix Utility": named matrices and vectors of the document, edited in a grid whose cells
// are expressions; matrix arithmetic on them (each result a new matrix of the list, or a number
// in the answer) and a linear solver. The matrices are kept with the document; precision and
// the fraction form with the program's settings.
class MatrixDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit MatrixDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~MatrixDialog() override;

    QListView* list() const { return m_list; }
    QTableView* grid() const { return m_grid; }
    QLineEdit* name() const { return m_name; }
    QSpinBox* rows() const { return m_rows; }
    QSpinBox* columns() const { return m_columns; }
    QRadioButton* matrix_math() const { return m_math_mode; }
    QRadioButton* linear_solver() const { return m_solver_mode; }
    QComboBox* first() const { return m_first; }
    QComboBox* operation() const { return m_operation; }
    QComboBox* second() const { return m_second; }
    QLineEdit* scalar() const { return m_scalar; }
    QComboBox* matrix_a() const { return m_matrix_a; }
    QComboBox* vector_b() const { return m_vector_b; }
    QLineEdit* answer() const { return m_answer; }
    QSpinBox* precision() const { return m_precision; }
    QCheckBox* fractions() const { return m_fractions; }

    bool busy() const override { return false; } // every operation ends within the click
    void take_function(const QString&) override {}

    // Adds an empty matrix of the size the editor shows, under the lowest free default name, and
    // selects it.
    void add_matrix();
    // Removes the selected matrix after the question; false when none is selected or No.
    bool remove_matrix();
    // Selects the matrix of that index for the editor; -1 selects none.
    void select(int index);
    int selected() const { return m_selected; }
    // Renames the selected matrix; false (after the message) for a name in use or none.
    bool rename(const QString& name);
    // Runs the chosen operation or the linear solver; false (after the message) when refused.
    bool compute();
    // The selected matrix's values, a line per row, for the clipboard.
    QString matrix_text() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    std::vector<numerics::QvxMatrix>& matrices() const;
    void refresh_list();
    void resize_selected();
    void show_precision_advice();
    void add_results(std::vector<numerics::QvxMatrix> results);
    const numerics::QvxMatrix* chosen(const QComboBox* combo) const;

    DocumentWindow& m_document;
    QListView* m_list;
    QStringListModel* m_names;
    QTableView* m_grid;
    MatrixCellModel* m_cells;
    QLineEdit* m_name;
    QSpinBox* m_rows;
    QSpinBox* m_columns;
    QRadioButton* m_math_mode;
    QRadioButton* m_solver_mode;
    QStackedWidget* m_modes;
    QComboBox* m_first;
    QComboBox* m_operation;
    QComboBox* m_second;
    QLineEdit* m_scalar;
    QComboBox* m_matrix_a;
    QComboBox* m_vector_b;
    QLineEdit* m_answer;
    QSpinBox* m_precision;
    QCheckBox* m_fractions;
    int m_selected = -1;
    bool m_advice_given = false;
};

} // namespace quorvex::gui
