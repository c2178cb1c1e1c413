#include "new_graph_dialog.h"

#include "engine/parser.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace quorvex::gui {

NewGraphDialog::NewGraphDialog(engine::Parser& parser, QWidget* parent)
    : QDialog(parent),
      m_parser(parser),
      m_function(new QComboBox(this)),
      m_variable(new QLineEdit(this)),
      m_low(new QDoubleSpinBox(this)),
      m_high(new QDoubleSpinBox(this)),
      m_points(new QSpinBox(this)),
      m_depth_variable(new QLineEdit(this)),
      m_depth_low(new QDoubleSpinBox(this)),
      m_depth_high(new QDoubleSpinBox(this)),
      m_depth_points(new QSpinBox(this)),
      m_form(new QFormLayout) {
    setWindowTitle(tr("New Graph of a Function"));
    setObjectName(QStringLiteral("newGraphDialog"));
    for (int i = 0; i < parser.function_count(); ++i)
        if (const char* name = parser.get_func_name(i)) m_function->addItem(QString::fromUtf8(name));
    for (QDoubleSpinBox* end : {m_low, m_high, m_depth_low, m_depth_high}) {
        end->setRange(-1e12, 1e12);
        end->setDecimals(6);
    }
    for (QSpinBox* points : {m_points, m_depth_points}) {
        points->setRange(2, 1000000);
        points->setGroupSeparatorShown(true);
    }
    m_low->setValue(-10);
    m_high->setValue(10);
    m_points->setValue(201);
    m_depth_low->setValue(-10);
    m_depth_high->setValue(10);
    m_depth_points->setValue(31);

    QFormLayout* form = m_form;
    form->addRow(tr("&Function:"), m_function);
    form->addRow(tr("&Variable:"), m_variable);
    form->addRow(tr("&From:"), m_low);
    form->addRow(tr("&To:"), m_high);
    form->addRow(tr("&Points:"), m_points);
    form->addRow(tr("&Second variable:"), m_depth_variable);
    form->addRow(tr("Fro&m:"), m_depth_low);
    form->addRow(tr("T&o:"), m_depth_high);
    form->addRow(tr("Poi&nts:"), m_depth_points);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    if (!has_functions()) {
        auto* hint = new QLabel(tr("Declare a function in the editor first, for example  f(x) = x^2"), this);
        hint->setWordWrap(true);
        layout->addWidget(hint);
        buttons->button(QDialogButtonBox::Ok)->setEnabled(false);
    }
    layout->addLayout(form);
    layout->addWidget(buttons);
    connect(m_function, &QComboBox::currentIndexChanged, this, &NewGraphDialog::take_variable_of_function);
    take_variable_of_function();
}

void NewGraphDialog::take_variable_of_function() {
    // The function's first parameter is the usual axis, its second the depth of a surface.
    const int index = m_parser.find_function(m_function->currentText().toStdString().c_str());
    const engine::Function* function = index >= 0 ? m_parser.function_at(index) : nullptr;
    const int variables = function ? function->num_variables() : 0;
    m_variable->setText(variables > 0 ? QString::fromStdString(function->GetFuncVariable(1)) : QStringLiteral("x"));
    const bool surface = variables >= 2;
    if (surface) m_depth_variable->setText(QString::fromStdString(function->GetFuncVariable(2)));
    // A surface's points are the two counts multiplied: a curve's 201 would make 40401 cells.
    if (!m_surface || *m_surface != surface) m_points->setValue(surface ? 31 : 201);
    m_surface = surface;
    for (QWidget* field : {static_cast<QWidget*>(m_depth_variable), static_cast<QWidget*>(m_depth_low),
                           static_cast<QWidget*>(m_depth_high), static_cast<QWidget*>(m_depth_points)}) {
        field->setEnabled(surface);
        m_form->setRowVisible(field, surface);
    }
    adjustSize();
}

bool NewGraphDialog::has_functions() const { return m_function->count() > 0; }
std::string NewGraphDialog::function() const { return m_function->currentText().toStdString(); }
std::string NewGraphDialog::variable() const { return m_variable->text().trimmed().toStdString(); }
double NewGraphDialog::low() const { return m_low->value(); }
double NewGraphDialog::high() const { return m_high->value(); }
long NewGraphDialog::points() const { return m_points->value(); }
bool NewGraphDialog::is_surface() const { return m_surface.value_or(false); }
std::string NewGraphDialog::depth_variable() const { return m_depth_variable->text().trimmed().toStdString(); }
double NewGraphDialog::depth_low() const { return m_depth_low->value(); }
double NewGraphDialog::depth_high() const { return m_depth_high->value(); }
long NewGraphDialog::depth_points() const { return m_depth_points->value(); }

} // namespace quorvex::gui
