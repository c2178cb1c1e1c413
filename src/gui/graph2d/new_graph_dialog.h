#pragma once
#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

// Asks for a graph of one of the document's functions: which function, the variable swept, its
// range and the number of points; for a function of two or more variables also a second, Z
// variable, which makes the graph a surface (left empty: a 2-D graph).
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
    // Empty for a 2-D graph.
    std::string z_variable() const;
    double z_low() const;
    double z_high() const;
    long z_points() const;

private:
    void take_variable_of_function();

    engine::Parser& m_parser;
    QComboBox* m_function;
    QLineEdit* m_variable;
    QDoubleSpinBox* m_low;
    QDoubleSpinBox* m_high;
    QSpinBox* m_points;
    QLineEdit* m_z_variable;
    QDoubleSpinBox* m_z_low;
    QDoubleSpinBox* m_z_high;
    QSpinBox* m_z_points;
};

} // namespace quorvex::gui
