#pragma once
#include "desktop/integration_tool.h"

#include "gui/tools/tool_dialog.h"

#include <array>
#include <optional>

class QButtonGroup;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSlider;
class QSpinBox;
class QWidget;

namespace quorvex::gui {

class DocumentWindow;

// The "Integration Utility": the single, double or triple integral of an expression or of a
// function of the document, its inner limits free to use the outer variables. One per document;
// its inputs are kept with the document.
class IntegrationDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit IntegrationDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~IntegrationDialog() override;

    QComboBox* expression() const { return m_expression; }
    // The button of 1, 2 or 3 nested integrals.
    QRadioButton* order_button(int order) const { return m_orders[static_cast<size_t>(order - 1)]; }
    int order() const;
    // The parameter and limits of axis 0 (X), 1 (Y) or 2 (Z).
    QComboBox* parameter(int axis) const { return m_parameters[static_cast<size_t>(axis)]; }
    QLineEdit* lower(int axis) const { return m_lowers[static_cast<size_t>(axis)]; }
    QLineEdit* upper(int axis) const { return m_uppers[static_cast<size_t>(axis)]; }
    QSlider* accuracy() const { return m_accuracy; }
    QSpinBox* precision() const { return m_precision; }
    QLineEdit* answer() const { return m_answer; }
    // Shown when the answer is only the best estimate the methods reached.
    QLabel* warning() const { return m_warning; }
    // The answer of the last run; none before it, after a refused or stopped run or an edit.
    const std::optional<desktop::IntegrationAnswer>& result() const { return m_result; }
    bool busy() const override { return m_busy; }
    void take_function(const QString& function) override;
    void refresh_functions() override;

    // Integrates; false (after the message, with the offending field focused) when the input can
    // not run or the expression fails, and false after a stop.
    bool integrate();
    // The answer as shown, to the clipboard.
    void copy_answer();

private:
    void load_inputs();
    void store_inputs();
    void input_edited();
    void show_order();
    void show_answer();
    QWidget* field_of(const desktop::IntegrationFailure& failure) const;

    DocumentWindow& m_document;
    QComboBox* m_expression;
    std::array<QRadioButton*, 3> m_orders;
    QButtonGroup* m_order_group;
    std::array<QComboBox*, 3> m_parameters;
    std::array<QLineEdit*, 3> m_lowers;
    std::array<QLineEdit*, 3> m_uppers;
    std::array<QLabel*, 3> m_parameter_labels;
    QSlider* m_accuracy;
    QSpinBox* m_precision;
    QLineEdit* m_answer;
    QLabel* m_warning;
    QWidget* m_inputs;
    std::optional<desktop::IntegrationAnswer> m_result;
    bool m_busy = false;
    bool m_loading = false;
};

} // namespace quorvex::gui
