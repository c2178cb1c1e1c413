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
// range and the number of points.
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

private:
    void take_variable_of_function();

    engine::Parser& m_parser;
    QComboBox* m_function;
    QLineEdit* m_variable;
    QDoubleSpinBox* m_low;
    QDoubleSpinBox* m_high;
    QSpinBox* m_points;
};

} // namespace quorvex::gui
