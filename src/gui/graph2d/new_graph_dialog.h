#pragma once
#include <QDialog>

#include <optional>
#include <string>

class QComboBox;
class QFormLayout;
class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

// Asks for a graph of one of the document's functions: which function, the variable swept, its
// range and the number of points; for a function of two variables a second variable along the
// depth as well, for a surface.
class NewGraphDialog : public QDialog {
    Q_OBJECT

public:
    NewGraphDialog(engine::Parser& parser, QWidget* parent = nullptr);

    std::string function() const;
    std::string variable() const;
    double low() const;
    double high() const;
    long points() const;
    bool has_functions() const;
    // The function chosen has a second variable: the graph is a surface over both.
    bool is_surface() const;
    std::string depth_variable() const;
    double depth_low() const;
    double depth_high() const;
    long depth_points() const;

private:
    void take_variable_of_function();

    engine::Parser& m_parser;
    QComboBox* m_function;
    QLineEdit* m_variable;
    QDoubleSpinBox* m_low;
    QDoubleSpinBox* m_high;
    QSpinBox* m_points;
    QLineEdit* m_depth_variable;
    QDoubleSpinBox* m_depth_low;
    QDoubleSpinBox* m_depth_high;
    QSpinBox* m_depth_points;
    QFormLayout* m_form;
    std::optional<bool> m_surface; // the kind of graph the fields are set for
};

} // namespace quorvex::gui
