#pragma once
#include "desktop/differentiation_tool.h"

#include "gui/tools/tool_dialog.h"

#include <array>
#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTableView;

namespace quorvex::gui {

class DocumentWindow;
class DifferentiationModel;

// The "Differentiation Utility": a function and its first, second and third derivatives over a
// range of its variable (or at one point), the columns chosen by check boxes, graphed, copied,
// written as CSV or into the math editor on request. One per document; its inputs are kept with
// the document.
class DifferentiationDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit DifferentiationDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~DifferentiationDialog() override;

    QComboBox* expression() const { return m_expression; }
    QComboBox* variable() const { return m_variable; }
    QLineEdit* start() const { return m_start; }
    QLineEdit* end() const { return m_end; }
    QLineEdit* steps() const { return m_steps; }
    QCheckBox* column_box(int column) const { return m_boxes[static_cast<size_t>(column)]; }
    QSpinBox* precision() const { return m_precision; }
    QTableView* view() const { return m_view; }
    // The table computed last; none before the first run or after a refused one.
    const std::optional<desktop::DifferentiationTable>& table() const { return m_table; }
    bool busy() const override { return m_busy; }
    void take_function(const QString& function) override;
    void refresh_functions() override;

    // Lays out a new table from the inputs and computes the checked columns; false (after the
    // message) when the input can not run or a point fails.
    bool differentiate();
    // Graphs the shown columns, one data set each, as "Differentials of" the expression.
    bool graph_answer();
    // The shown table as text, a row a line, its cells separated by `separator`, with the headings.
    QString table_text(QChar separator) const;
    bool export_csv(const QString& path, QString* error = nullptr);
    // Writes the table into the math editor at its caret.
    bool insert_answer();

private:
    void load_inputs();
    void store_inputs();
    desktop::DifferentiationColumns checked() const;
    // Computes the checked columns the table lacks; false after the message when a point fails.
    bool fill(const desktop::DifferentiationColumns& wanted);
    void column_toggled();
    void show_table();
    QString graph_name() const;

    DocumentWindow& m_document;
    QComboBox* m_expression;
    QComboBox* m_variable;
    QLineEdit* m_start;
    QLineEdit* m_end;
    QLineEdit* m_steps;
    std::array<QCheckBox*, desktop::k_differentiation_columns> m_boxes{};
    QSpinBox* m_precision;
    QLabel* m_summary;
    QTableView* m_view;
    DifferentiationModel* m_model;
    std::optional<desktop::DifferentiationTable> m_table;
    bool m_busy = false;
};

} // namespace quorvex::gui
