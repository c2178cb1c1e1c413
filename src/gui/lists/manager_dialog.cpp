#include "manager_dialog.h"

#include "engine_models.h"

#include "desktop/manager_checks.h"
#include "engine/function.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/editor/document_window.h"
#include "store/ini_file.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QHeaderView>
#include <QTableView>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

std::string trimmed(const QLineEdit* field) { return field->text().trimmed().toStdString(); }

} // namespace

ManagerDialog::ManagerDialog(DocumentWindow& document, Kind kind, QWidget* parent)
    : QDialog(parent), m_document(document), m_kind(kind), m_list(new QTableView(this)), m_name(new QLineEdit(this)),
      m_value(new QLineEdit(this)), m_instructions(new QLabel(this)),
      m_show_instructions(new QCheckBox(tr("Show &instructions"), this)) {
    const bool variables = kind == Kind::Variables;
    setWindowTitle(variables ? QStringLiteral("Variables Manager") : QStringLiteral("Function Manager"));
    setObjectName(variables ? QStringLiteral("variablesManager") : QStringLiteral("functionManager"));
    auto* model = new EngineListModel(document.parser(), kind, this);
    m_list->setModel(model);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_list->horizontalHeader()->setStretchLastSection(true);
    m_list->horizontalHeader()->resizeSection(0, 160);
    m_list->setAlternatingRowColors(true);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &ManagerDialog::show_selected);
    connect(&document, variables ? &DocumentWindow::variablesChanged : &DocumentWindow::functionsChanged, model,
            &EngineListModel::refresh);

    m_name->setPlaceholderText(variables ? tr("name, such as rate") : tr("name with parameters, such as area[w,h]"));
    m_value->setPlaceholderText(variables ? tr("value, or low,high,points") : tr("expression, such as w*h"));
    auto* add_button = new QPushButton(tr("&Add"), this);
    auto* edit_button = new QPushButton(tr("&Edit"), this);
    auto* delete_button = new QPushButton(tr("&Delete"), this);
    auto* search_button = new QPushButton(tr("&Search"), this);
    auto* copy_button = new QPushButton(tr("&Copy to Editor"), this);
    search_button->setToolTip(tr("Select the name typed, or the first that begins with it"));
    copy_button->setToolTip(variables ? tr("Put \"name = value\" at the editor's caret")
                                      : tr("Put the definition at the editor's caret"));
    connect(add_button, &QPushButton::clicked, this, &ManagerDialog::add);
    connect(edit_button, &QPushButton::clicked, this, &ManagerDialog::edit);
    connect(delete_button, &QPushButton::clicked, this, &ManagerDialog::remove);
    connect(search_button, &QPushButton::clicked, this, &ManagerDialog::search);
    connect(copy_button, &QPushButton::clicked, this, &ManagerDialog::copy_to_editor);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {add_button, edit_button, delete_button, search_button, copy_button})
        buttons->addWidget(button);
    auto* form = new QFormLayout;
    form->addRow(tr("&Name:"), m_name);
    form->addRow(variables ? tr("&Value:") : tr("&Definition:"), m_value);
    m_instructions->setWordWrap(true);
    m_instructions->setText(
        variables ? tr("Type a name and a value, such as 0.05 or an expression, and press Add; or pick a variable, "
                       "change its value and press Edit. A range is typed as low,high,points.")
                  : tr("Type a name with its parameters, such as area[w,h], and a definition, such as w*h, and press "
                       "Add; or pick a function, change its definition and press Edit."));
    const char* key = variables ? "VariMgrInstructions" : "FuncMgrInstructions";
    store::IniFile* settings = document.services().settings;
    set_instructions(!settings || settings->GetInt("OPTIONS", key, 1) != 0);
    connect(m_show_instructions, &QCheckBox::toggled, this, [this, key](bool shown) {
        set_instructions(shown);
        if (store::IniFile* ini = m_document.services().settings) {
            ini->WriteString("OPTIONS", key, shown ? "1" : "0");
            ini->Save();
        }
    });
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_show_instructions);
    bottom->addWidget(close, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_instructions);
    layout->addWidget(m_list, 1);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addLayout(bottom);
    resize(520, 440);
}

void ManagerDialog::set_instructions(bool shown) {
    m_instructions->setVisible(shown);
    const QSignalBlocker quiet(m_show_instructions);
    m_show_instructions->setChecked(shown);
}

bool ManagerDialog::select(const QString& name) {
    const QAbstractItemModel* model = m_list->model();
    // The whole name first (a function's without its parameters too), then its beginning.
    const auto bare = [](const QString& text) { return text.left(text.indexOf(QLatin1Char('['))).trimmed(); };
    const QString wanted = name.trimmed();
    int found = -1;
    for (int row = 0; row < model->rowCount() && found < 0; ++row) {
        const QString each = model->index(row, 0).data().toString();
        if (each.compare(wanted, Qt::CaseInsensitive) == 0 || bare(each).compare(bare(wanted), Qt::CaseInsensitive) == 0)
            found = row;
    }
    for (int row = 0; row < model->rowCount() && found < 0; ++row)
        if (model->index(row, 0).data().toString().startsWith(wanted, Qt::CaseInsensitive)) found = row;
    if (found < 0) return false;
    m_list->setCurrentIndex(model->index(found, 0));
    m_list->scrollTo(m_list->currentIndex());
    return true;
}

bool ManagerDialog::search() {
    const QString name = m_name->text().trimmed();
    if (name.isEmpty())
        return refuse(m_kind == Kind::Variables ? "Type the name, or its beginning, of the variable to find."
                                                : "Type the name, or its beginning, of the function to find.");
    if (select(name)) return true;
    return refuse("'" + name.toStdString() + (m_kind == Kind::Variables ? "' is not a defined variable!"
                                                                        : "' is not a defined function!"));
}

bool ManagerDialog::copy_to_editor() {
    const QModelIndex current = m_list->currentIndex();
    if (!current.isValid())
        return refuse(m_kind == Kind::Variables ? "Select the variable to copy into the Math Editor."
                                                : "Select the function to copy into the Math Editor.");
    const QAbstractItemModel* model = m_list->model();
    const QString text = model->index(current.row(), 0).data().toString() + QStringLiteral(" = ") +
                         model->index(current.row(), 1).data().toString();
    m_document.insert_into_editor(text);
    return true;
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
    // The one before takes the selection, so that a run of deletions can go on from there.
    const QAbstractItemModel* model = m_list->model();
    if (model->rowCount() > 0) m_list->setCurrentIndex(model->index(std::max(0, index - 1), 0));
    return true;
}

} // namespace quorvex::gui
