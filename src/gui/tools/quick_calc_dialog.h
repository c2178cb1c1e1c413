#pragma once
#include "desktop/quick_calc.h"

#include "gui/tools/tool_dialog.h"

#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTableView;

namespace quorvex::gui {

class DocumentWindow;
class QuickCalcModel;

// The "Quick Calc Utility": the table of an expression over a range of one variable, complex
// values as they come, graphed on request, copied or written as CSV. One per document; its inputs
// are kept with the document.
class QuickCalcDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit QuickCalcDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~QuickCalcDialog() override;

    QComboBox* expression() const { return m_expression; }
    QComboBox* variable() const { return m_variable; }
    QLineEdit* start() const { return m_start; }
    QLineEdit* end() const { return m_end; }
    QLineEdit* points() const { return m_points; }
    QSpinBox* precision() const { return m_precision; }
    QTableView* view() const { return m_view; }
    // The table computed last; none before the first run or after a refused one.
    const std::optional<desktop::QuickCalcTable>& table() const { return m_table; }
    bool busy() const override { return m_busy; }
    void take_function(const QString& function) override;

    // Offers the document's functions again (they change as the user works).
    void refresh_functions() override;
    // Computes the table; false (after the message) when the input can not run.
    bool compute();
    // Graphs the table: a function of the document by its own curve, else the table's points.
    bool graph_answer();
    // The table as text, a row a line, its columns separated by `separator`, with the headings.
    QString table_text(QChar separator) const;
    bool export_csv(const QString& path, QString* error = nullptr);

private:
    void load_inputs();
    void store_inputs();
    QString value_text(double x) const;

    DocumentWindow& m_document;
    QComboBox* m_expression;
    QComboBox* m_variable;
    QLineEdit* m_start;
    QLineEdit* m_end;
    QLineEdit* m_points;
    QSpinBox* m_precision;
    QLabel* m_summary;
    QTableView* m_view;
    QuickCalcModel* m_model;
    std::optional<desktop::QuickCalcTable> m_table;
    bool m_busy = false;
};

} // namespace quorvex::gui
