#pragma once
#include "desktop/root_finder_tool.h"

#include "gui/tools/tool_dialog.h"

#include <optional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;
class QFormLayout;
class QTableView;

namespace quorvex::gui {

class CoefficientModel;
class DocumentWindow;
class RootTableModel;

// The "Root Finder Utility": the real roots of any expression in a range ("Real Roots Only"),
// or all roots of a polynomial from its coefficients ("Complex Roots"); the roots with the
// function's value at each, copied, written as CSV or graphed. One per document; its inputs are
// kept with the document, and each mode keeps its own results.
class RootFinderDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit RootFinderDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~RootFinderDialog() override;

    QRadioButton* real_mode() const { return m_real_mode; }
    QRadioButton* complex_mode() const { return m_complex_mode; }
    QComboBox* expression() const { return m_expression; }
    QComboBox* variable() const { return m_variable; }
    QLineEdit* start() const { return m_start; }
    QLineEdit* end() const { return m_end; }
    QLineEdit* steps() const { return m_steps; }
    QSpinBox* precision() const { return m_precision; }
    QCheckBox* advanced() const { return m_advanced; }
    QTableView* coefficient_view() const { return m_coefficient_view; }
    QTableView* view() const { return m_view; }
    QLabel* summary() const { return m_summary; }
    // The coefficient of x^power as typed (complex mode).
    QString coefficient(int power) const;
    void set_coefficient(int power, const QString& text);
    // The results of the mode shown; none before its first run.
    const std::optional<desktop::RootTable>& table() const;
    bool busy() const override { return m_busy; }
    void take_function(const QString& function) override;
    void refresh_functions() override;

    // Finds the roots in the mode shown; false (after the message) when the run did not start.
    bool compute();
    // Graphs the function with notes at its roots (real mode).
    bool graph_answer();
    // The roots as text, a row a line, cells separated by `separator`, with the headings.
    QString table_text(QChar separator) const;
    bool export_csv(const QString& path, QString* error = nullptr);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    bool compute_real();
    bool compute_complex();
    void show_mode();
    void show_table();
    void load_inputs();
    void store_inputs();

    DocumentWindow& m_document;
    QRadioButton* m_real_mode;
    QRadioButton* m_complex_mode;
    QFormLayout* m_form = nullptr;
    QWidget* m_function_row = nullptr;
    QComboBox* m_expression;
    QComboBox* m_variable;
    QLineEdit* m_start;
    QLineEdit* m_end;
    QLineEdit* m_steps;
    QCheckBox* m_advanced;
    QTableView* m_coefficient_view;
    CoefficientModel* m_coefficients;
    QSpinBox* m_precision;
    QWidget* m_inputs;
    QLabel* m_summary;
    QLabel* m_method; // which method found the roots of a polynomial
    QTableView* m_view;
    RootTableModel* m_model;
    std::optional<desktop::RootTable> m_real_table;
    std::optional<desktop::RootTable> m_complex_table;
    bool m_busy = false;
};

} // namespace quorvex::gui
