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
      m_z_variable(new QLineEdit(this)),
      m_z_low(new QDoubleSpinBox(this)),
      m_z_high(new QDoubleSpinBox(this)),
      m_z_points(new QSpinBox(this)) {
    setWindowTitle(tr("New Graph of a Function"));
    setObjectName(QStringLiteral("newGraphDialog"));
    for (int i = 0; i < parser.function_count(); ++i)
        if (const char* name = parser.get_func_name(i)) m_function->addItem(QString::fromUtf8(name));
    for (QDoubleSpinBox* end : {m_low, m_high, m_z_low, m_z_high}) {
        end->setRange(-1e12, 1e12);
        end->setDecimals(6);
    }
    m_low->setValue(-10);
    m_high->setValue(10);
    m_z_low->setValue(-10);
    m_z_high->setValue(10);
    m_points->setRange(2, 1000000);
    m_points->setValue(201);
    m_z_points->setRange(2, 1000);
    m_z_points->setValue(31);
    for (QSpinBox* points : {m_points, m_z_points}) points->setGroupSeparatorShown(true);
    m_z_variable->setPlaceholderText(tr("none: a 2-D graph"));

    auto* form = new QFormLayout;
    form->addRow(tr("&Function:"), m_function);
    form->addRow(tr("&Variable:"), m_variable);
    form->addRow(tr("&From:"), m_low);
    form->addRow(tr("&To:"), m_high);
    form->addRow(tr("&Points:"), m_points);
    form->addRow(tr("&Z variable (a surface):"), m_z_variable);
    form->addRow(tr("F&rom:"), m_z_low);
    form->addRow(tr("T&o:"), m_z_high);
    form->addRow(tr("Poi&nts:"), m_z_points);
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
    // The function's first parameter is the usual axis.
    const int index = m_parser.find_function(m_function->currentText().toStdString().c_str());
    const engine::Function* function = index >= 0 ? m_parser.function_at(index) : nullptr;
    m_variable->setText(function && function->num_variables() > 0
                            ? QString::fromStdString(function->GetFuncVariable(1))
                            : QStringLiteral("x"));
    // A function of two variables is a surface over them; the X range then takes fewer points.
    const bool two = function && function->num_variables() > 1;
    m_z_variable->setText(two ? QString::fromStdString(function->GetFuncVariable(2)) : QString());
    if (two && m_points->value() > 1000) m_points->setValue(31);
    if (!two && m_points->value() == 31) m_points->setValue(201);
}

bool NewGraphDialog::has_functions() const { return m_function->count() > 0; }
std::string NewGraphDialog::function() const { return m_function->currentText().toStdString(); }
std::string NewGraphDialog::variable() const { return m_variable->text().trimmed().toStdString(); }
double NewGraphDialog::low() const { return m_low->value(); }
double NewGraphDialog::high() const { return m_high->value(); }
long NewGraphDialog::points() const { return m_points->value(); }
std::string NewGraphDialog::z_variable() const { return m_z_variable->text().trimmed().toStdString(); }
double NewGraphDialog::z_low() const { return m_z_low->value(); }
double NewGraphDialog::z_high() const { return m_z_high->value(); }
long NewGraphDialog::z_points() const { return m_z_points->value(); }

} // namespace quorvex::gui
