#include "manager_dialog.h"

#include "engine_models.h"

#include "desktop/manager_checks.h"
#include "engine/function.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/editor/document_window.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

std::string trimmed(const QLineEdit* field) { return field->text().trimmed().toStdString(); }

} // namespace

ManagerDialog::ManagerDialog(DocumentWindow& document, Kind kind, QWidget* parent)
    : QDialog(parent), m_document(document), m_kind(kind), m_list(new QListView(this)), m_name(new QLineEdit(this)),
      m_value(new QLineEdit(this)) {
    const bool variables = kind == Kind::Variables;
    setWindowTitle(variables ? QStringLiteral("Variables Manager") : QStringLiteral("Function Manager"));
    setObjectName(variables ? QStringLiteral("variablesManager") : QStringLiteral("functionManager"));
    auto* model = new EngineListModel(document.parser(),
                                      variables ? EngineListModel::Kind::Variables : EngineListModel::Kind::Functions, this);
    m_list->setModel(model);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &ManagerDialog::show_selected);
    connect(&document, variables ? &DocumentWindow::variablesChanged : &DocumentWindow::functionsChanged, model,
            &EngineListModel::refresh);

    m_name->setPlaceholderText(variables ? tr("name, such as rate") : tr("name with parameters, such as area[w,h]"));
    m_value->setPlaceholderText(variables ? tr("value, or low,high,points") : tr("expression, such as w*h"));
    auto* add_button = new QPushButton(tr("&Add"), this);
    auto* edit_button = new QPushButton(tr("&Edit"), this);
    auto* delete_button = new QPushButton(tr("&Delete"), this);
    connect(add_button, &QPushButton::clicked, this, &ManagerDialog::add);
    connect(edit_button, &QPushButton::clicked, this, &ManagerDialog::edit);
    connect(delete_button, &QPushButton::clicked, this, &ManagerDialog::remove);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {add_button, edit_button, delete_button}) buttons->addWidget(button);
    auto* form = new QFormLayout;
    form->addRow(tr("&Name:"), m_name);
    form->addRow(variables ? tr("&Value:") : tr("&Definition:"), m_value);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(close);
    resize(460, 420);
}

void ManagerDialog::show_selected() {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid()) return;
    const QAbstractItemModel* model = m_list->model();
    m_name->setText(model->index(current.row(), 0).data().toString());
    m_value->setText(model->index(current.row(), 1).data().toString());
}

bool ManagerDialog::refuse(const std::string& message) {
    MessageReporter reporter(this, m_document.services().collected_messages);
    reporter.report(message, m_kind == Kind::Variables ? "Variables Manager" : "Function Manager",
                    engine::MessageKind::Warning);
    return false;
}

int ManagerDialog::index_of_name() const {
    const std::string name = trimmed(m_name);
    return m_kind == Kind::Variables ? m_document.parser().find_variable(name.c_str())
                                     : m_document.parser().find_function(name.c_str());
}

bool ManagerDialog::add() {
    const std::string name = trimmed(m_name), value = trimmed(m_value);
    const bool variables = m_kind == Kind::Variables;
    if (name.empty())
        return refuse(variables ? "You must enter a valid variable name!" : "You must enter a valid function name!");
    if (value.empty())
        return refuse(variables ? "You have not entered a value for the variable!"
                                : "You have not entered a definition for the function!");
    if (const auto problem = variables ? desktop::variable_name_problem(name) : desktop::function_name_problem(name))
        return refuse(*problem);
    if (index_of_name() >= 0) return refuse("'" + name + "' is defined already: use Edit to change it.");
    if (variables) {
        if (const auto problem = desktop::variable_value_problem(value.substr(0, value.find('\n')))) return refuse(*problem);
        return m_document.hub().AddEditVariable(name, value) || refuse("'" + name + "' could not be added!");
    }
    return m_document.hub().AddEditFunction(name, value) || refuse("'" + name + "' could not be added!");
}

bool ManagerDialog::edit() {
    const std::string name = trimmed(m_name), value = trimmed(m_value);
    const bool variables = m_kind == Kind::Variables;
    if (name.empty())
        return refuse(variables ? "You must enter a valid variable name!" : "You must enter a valid function name!");
    if (const auto problem = variables ? desktop::variable_name_problem(name) : desktop::function_name_problem(name))
        return refuse(*problem);
    const int index = index_of_name();
    if (index < 0) return refuse("'" + name + (variables ? "' is not a defined variable!" : "' is not a defined function!"));
    engine::Parser& parser = m_document.parser();
    if (variables && parser.is_var_locked(name.c_str()))
        return refuse("Variable \"" + name + "\" has been temporarily locked by another process and can not be edited.");
    if (value.empty()) return refuse("You have not entered a value for '" + name + "'!");
    const std::string before = variables ? m_list->model()->index(index, 1).data().toString().toStdString()
                                         : parser.function_at(index)->value();
    if (before == value) return refuse("You have not changed the value of '" + name + "'!");
    if (variables) {
        if (const auto problem = desktop::variable_value_problem(value)) return refuse(*problem);
        return m_document.hub().AddEditVariable(name, value) || refuse("'" + name + "' could not be edited!");
    }
    return m_document.hub().AddEditFunction(name, value) || refuse("'" + name + "' could not be edited!");
}

bool ManagerDialog::remove() {
    const std::string name = trimmed(m_name);
    const bool variables = m_kind == Kind::Variables;
    const int index = index_of_name();
    if (index < 0) return refuse("'" + name + (variables ? "' is not a defined variable!" : "' is not a defined function!"));
    const bool deleted = variables ? m_document.hub().DeleteVariable(index, true, true)
                                   : m_document.hub().DeleteFunction(index, true, true);
    if (!deleted) return false;
    m_name->clear();
    m_value->clear();
    return true;
}

} // namespace quorvex::gui
