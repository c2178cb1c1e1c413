#include "function_solver_dialog.h"

#include "desktop/editor_keys.h"
#include "desktop/solver_run.h"
#include "engine/parser.h"
#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "store/ini_file.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>
#include <fstream>

namespace quorvex::gui {

namespace {

const QString k_caption = QString::fromLatin1(desktop::solver_text::caption);
const QString k_load_filter = QStringLiteral(
    "Text Files (MS-DOS) (*.txt);;Text (Tab Delimited) (*.txt);;CSV (MS-DOS) (*.csv);;CSV (Comma Delimited) "
    "(*.csv);;Formatted Text (Space Delimited) (*.prn);;All Files (*)");
const QString k_save_filter = QStringLiteral(
    "Text (Tab Delimited) (*.txt);;CSV (Comma Delimited) (*.csv);;Formatted Text (Space Delimited) (*.prn)");

QString text_of(const std::string& text) { return QString::fromStdString(text); }

} // namespace

FunctionSolverDialog::FunctionSolverDialog(DocumentWindow& document, QWidget* parent)
    : QDialog(parent), m_document(document), m_prototype(new QLabel(this)), m_description(new QLabel(this)),
      m_set_type(new QRadioButton(tr("&Set type"), this)), m_list_type(new QRadioButton(tr("&List type"), this)),
      m_list_box(new QGroupBox(tr("List"), this)), m_entry_label(new QLabel(m_list_box)),
      m_entry(new QLineEdit(m_list_box)), m_values(new QStringListModel(this)), m_list(new QListView(m_list_box)),
      m_fixed_box(new QGroupBox(tr("Parameters"), this)), m_fixed(new QFormLayout), m_precision(new QSpinBox(this)),
      m_call(new QLineEdit(this)), m_solution(new QLineEdit(this)), m_solve(new QPushButton(tr("S&olve"), this)) {
    setWindowTitle(k_caption);
    setObjectName(QStringLiteral("functionSolver"));
    m_prototype->setTextFormat(Qt::PlainText);
    m_description->setTextFormat(Qt::PlainText);
    m_prototype->setWordWrap(true);
    m_prototype->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_description->setWordWrap(true);
    m_description->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = m_prototype->font();
    bold.setBold(true);
    m_prototype->setFont(bold);

    // The list: an entry with Add, the values, and what can be done with them.
    m_entry_label->setBuddy(m_entry);
    m_entry->installEventFilter(this);
    m_list->setModel(m_values);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* add = new QPushButton(tr("&Add"), m_list_box);
    auto* remove = new QPushButton(tr("&Delete"), m_list_box);
    auto* clear = new QPushButton(tr("Clea&r"), m_list_box);
    auto* load = new QPushButton(tr("Loa&d..."), m_list_box);
    auto* save = new QPushButton(tr("Sa&ve..."), m_list_box);
    auto* entry_row = new QHBoxLayout;
    entry_row->addWidget(m_entry_label);
    entry_row->addWidget(m_entry, 1);
    entry_row->addWidget(add);
    auto* list_buttons = new QVBoxLayout;
    for (QPushButton* button : {remove, clear, load, save}) list_buttons->addWidget(button);
    list_buttons->addStretch();
    auto* list_row = new QHBoxLayout;
    list_row->addWidget(m_list, 1);
    list_row->addLayout(list_buttons);
    auto* list_layout = new QVBoxLayout(m_list_box);
    list_layout->addLayout(entry_row);
    list_layout->addLayout(list_row);

    for (QLineEdit*& field : m_fields) {
        field = new QLineEdit(m_fixed_box);
        field->installEventFilter(this);
        m_fixed->addRow(QStringLiteral("?"), field);
    }
    m_fixed_box->setLayout(m_fixed);
    // The fields never take the height the list could use.
    m_fixed_box->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);

    // Digits of the solution, 1 to 14, six until the user picks others.
    m_precision->setRange(1, 14);
    store::IniFile* settings = document.services().settings;
    m_precision->setValue(settings ? settings->GetInt("OPTIONS", "SolverPrecision", 6) : 6);
    m_call->setReadOnly(true);
    m_solution->setReadOnly(true);
    m_solution->setObjectName(QStringLiteral("solution"));
    auto* precision_row = new QHBoxLayout;
    precision_row->addWidget(m_precision);
    precision_row->addStretch();
    auto* results = new QFormLayout;
    auto* precision_label = new QLabel(tr("&Precision:"), this);
    precision_label->setBuddy(m_precision);
    results->addRow(precision_label, precision_row);
    results->addRow(tr("Function:"), m_call);
    results->addRow(tr("Solution:"), m_solution);

    auto* copy_function = new QPushButton(tr("Copy &Function"), this);
    auto* copy_solution = new QPushButton(tr("&Copy Solution"), this);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    m_solve->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_solve);
    buttons->addWidget(copy_function);
    buttons->addWidget(copy_solution);
    buttons->addStretch();
    buttons->addWidget(close);

    auto* forms = new QHBoxLayout;
    forms->addWidget(m_set_type);
    forms->addWidget(m_list_type);
    forms->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_prototype);
    layout->addWidget(m_description);
    layout->addLayout(forms);
    layout->addWidget(m_list_box, 1);
    layout->addWidget(m_fixed_box);
    layout->addLayout(results);
    layout->addLayout(buttons);

    connect(m_list_type, &QRadioButton::toggled, this, &FunctionSolverDialog::set_list_form);
    connect(add, &QPushButton::clicked, this, [this] {
        if (add_list_value(m_entry->text())) m_entry->clear();
        m_entry->setFocus();
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        QModelIndexList rows = m_list->selectionModel()->selectedRows();
        std::sort(rows.begin(), rows.end(), [](const QModelIndex& a, const QModelIndex& b) { return a.row() > b.row(); });
        for (const QModelIndex& row : rows) m_values->removeRow(row.row());
        m_list_modified = m_list_modified || !rows.isEmpty();
    });
    connect(clear, &QPushButton::clicked, this, [this] {
        m_list_modified = m_list_modified || m_values->rowCount() > 0;
        m_values->setStringList({});
    });
    connect(load, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Load Data Points"), m_document.services().data_dir,
                                                          k_load_filter);
        if (!path.isEmpty()) load_list(path);
    });
    connect(save, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, tr("Save Data Points"), m_document.services().data_dir,
                                                          k_save_filter);
        if (!path.isEmpty()) save_list(path);
    });
    connect(m_solve, &QPushButton::clicked, this, &FunctionSolverDialog::solve);
    connect(copy_function, &QPushButton::clicked, this, [this] { copy_to_editor(call()); });
    connect(copy_solution, &QPushButton::clicked, this, [this] {
        if (solution().isEmpty()) return message(QString::fromLatin1(desktop::solver_text::no_solution));
        copy_to_editor(solution());
    });
    connect(close, &QDialogButtonBox::rejected, this, &FunctionSolverDialog::reject);
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        if (store::IniFile* ini = m_document.services().settings)
            ini->WriteString("OPTIONS", "SolverPrecision", std::to_string(digits));
    });
    resize(520, sizeHint().height());
}

bool FunctionSolverDialog::configure(const QString& prototype, const QString& description) {
    if (m_list_modified && !offer_to_save_list()) return false;
    m_prototype->setText(prototype);
    m_description->setText(description);
    m_description->setVisible(!description.isEmpty());
    m_solution->clear();
    m_call->clear();
    m_values->setStringList({});
    m_list_modified = false;
    for (QLineEdit* field : m_fields) field->clear(); // values of another function mean nothing here
    m_entry->clear();
    std::string error;
    m_form = desktop::read_prototype(prototype.toStdString(), error);
    build_form();
    if (!m_form) m_solution->setText(text_of(error));
    return m_form.has_value();
}

void FunctionSolverDialog::build_form() {
    const bool usable = m_form.has_value();
    const bool both = usable && m_form->list_alternative;
    m_set_type->setEnabled(both);
    m_list_type->setEnabled(both);
    m_solve->setEnabled(usable);
    set_list_form(usable && m_form->list);
}

void FunctionSolverDialog::set_list_form(bool list) {
    m_list_form = m_form && (m_form->list || (list && m_form->list_alternative));
    const std::vector<std::string> none;
    const std::vector<std::string>& names = !m_form ? none : m_list_form ? m_form->list_parameters : m_form->parameters;
    m_list_box->setVisible(m_list_form);
    if (m_form && m_list_form) {
        m_entry_label->setText(text_of(m_form->list_caption) + QStringLiteral(":"));
        m_list_box->setTitle(m_form->list_caption == "Number" ? tr("List of numbers") : tr("List of conditions"));
    }
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const bool shown = i < names.size();
        if (shown) static_cast<QLabel*>(m_fixed->labelForField(m_fields[i]))->setText(text_of(names[i]) + QLatin1Char(':'));
        m_fixed->setRowVisible(static_cast<int>(i), shown);
    }
    m_fixed_box->setVisible(!names.empty());
    const QSignalBlocker quiet(m_list_type);
    m_list_type->setChecked(m_list_form);
    m_set_type->setChecked(!m_list_form);
    m_call->clear();
    m_solution->clear();
    // The dialog fits its form: short for a few fields, taller with a list.
    m_fixed->activate(); // the rows just hidden must leave the box's size before the dialog's
    m_fixed_box->updateGeometry();
    layout()->activate();
    resize(std::max(width(), 520), sizeHint().height());
    // Typing starts where the first value goes.
    if (m_list_form) m_entry->setFocus();
    else if (!names.empty()) m_fields[0]->setFocus();
}

QStringList FunctionSolverDialog::list_values() const { return m_values->stringList(); }

bool FunctionSolverDialog::add_list_value(const QString& text) {
    const QString value = text.trimmed();
    if (value.isEmpty() || !m_form) return false;
    const bool numeric = m_form->list_caption != "Logical Expression";
    const std::string problem = check(value, numeric);
    if (!problem.empty()) {
        message(text_of(problem));
        return false;
    }
    const int row = m_values->rowCount();
    m_values->insertRow(row);
    m_values->setData(m_values->index(row), value);
    m_list->scrollTo(m_values->index(row));
    m_list_modified = true;
    return true;
}

bool FunctionSolverDialog::load_list(const QString& path) {
    bool replace = false;
    if (m_values->rowCount() > 0) {
        const int answer = ask(QString::fromLatin1(desktop::solver_text::add_or_replace));
        if (answer == QMessageBox::Cancel) return false;
        replace = answer == QMessageBox::No;
    }
    MessageReporter reporter(this, m_document.services().collected_messages);
    engine::Parser& parser = m_document.parser();
    engine::Reporter* kept = parser.reporter();
    parser.set_reporter(&reporter);
    std::vector<std::string> read;
    const bool ok = desktop::read_solver_list(parser, path.toStdString(), read);
    parser.set_reporter(kept);
    // The list is replaced only by a file that could be read.
    if (!ok) return false;
    QStringList values = replace ? QStringList() : m_values->stringList();
    for (const std::string& value : read) values << text_of(value);
    m_values->setStringList(values);
    m_list_modified = true;
    return true;
}

bool FunctionSolverDialog::save_list(const QString& path) {
    std::vector<std::string> values;
    for (const QString& value : m_values->stringList()) values.push_back(value.toStdString());
    std::ofstream out(path.toStdString(), std::ios::binary);
    out << desktop::list_file_text(values, path.toStdString());
    out.close();
    if (!out) {
        message(tr("The file \"%1\" could not be written. Check that its folder exists and can be written to.").arg(path));
        return false;
    }
    m_list_modified = false;
    return true;
}

bool FunctionSolverDialog::check_fixed_values(QStringList& values) {
    const std::vector<std::string>& names = m_list_form ? m_form->list_parameters : m_form->parameters;
    for (size_t i = 0; i < names.size(); ++i) values << m_fields[i]->text().trimmed();
    for (qsizetype i = 0; i < values.size(); ++i) {
        if (values[i].isEmpty()) continue;
        const std::string problem = check(values[i], m_list_form);
        if (!problem.empty()) {
            message(QString::fromLatin1(desktop::solver_text::value_in_error) + QStringLiteral("\n\n") +
                    text_of(names[static_cast<size_t>(i)]) + QStringLiteral(": ") + text_of(problem));
            m_fields[static_cast<size_t>(i)]->setFocus();
            return false;
        }
    }
    return true;
}

std::string FunctionSolverDialog::check(const QString& value, bool numeric) {
    engine::Parser& parser = m_document.parser();
    const std::string problem = desktop::check_solver_value(parser, value.toStdString(), numeric);
    // A value such as "x=5" declares what it names: the lists show it.
    if (parser.var_changed()) Q_EMIT m_document.variablesChanged();
    return problem;
}

QString FunctionSolverDialog::prototype() const { return m_prototype->text(); }

bool FunctionSolverDialog::may_close() { return !m_list_modified || offer_to_save_list(); }

QString FunctionSolverDialog::call() const {
    if (!m_form) return {};
    std::vector<std::string> list, fixed;
    for (const QString& value : m_values->stringList()) list.push_back(value.toStdString());
    const size_t count = (m_list_form ? m_form->list_parameters : m_form->parameters).size();
    for (size_t i = 0; i < count; ++i) fixed.push_back(m_fields[i]->text().trimmed().toStdString());
    return text_of(desktop::compose_call(*m_form, m_list_form, list, fixed));
}

bool FunctionSolverDialog::solve() {
    if (!m_form) return false;
    QStringList fixed;
    if (!check_fixed_values(fixed)) return false;
    // A function without parameters is solved as it is; otherwise every value is needed.
    const bool list_empty = m_list_form && m_values->rowCount() == 0;
    const bool fields_empty = !fixed.isEmpty() && fixed.join(QString()).isEmpty();
    if (fields_empty && !m_list_form && m_form->parameters_optional) fixed.clear(); // "RAND[]"
    else if (list_empty || (!m_list_form && fields_empty)) {
        message(QString::fromLatin1(desktop::solver_text::nothing_to_solve));
        return false;
    }
    if (fixed.contains(QString())) {
        message(QString::fromLatin1(desktop::solver_text::missing_value));
        return false;
    }
    m_call->setText(call());
    std::string answer;
    engine::Parser& parser = m_document.parser();
    const bool ok = desktop::solve_call(parser, m_call->text().toStdString(), m_precision->value(), answer);
    if (parser.var_changed()) Q_EMIT m_document.variablesChanged();
    SoundPlayer* sounds = m_document.services().sounds;
    if (!ok) {
        m_solution->clear();
        if (sounds) sounds->play(QStringLiteral("Error.wav"));
        message(text_of(answer));
        return false;
    }
    m_solution->setText(text_of(answer));
    if (sounds) sounds->play(QStringLiteral("Command.wav"));
    return true;
}

QString FunctionSolverDialog::solution() const { return m_solution->text().trimmed(); }

void FunctionSolverDialog::set_precision(int digits) { m_precision->setValue(digits); }

void FunctionSolverDialog::accept_field(QLineEdit* field, bool then_solve) {
    if (field == m_entry) {
        const bool empty = m_entry->text().trimmed().isEmpty();
        if (add_list_value(m_entry->text())) m_entry->clear();
        else if (!empty) return; // refused, and said why: nothing is solved without it
        else if (!then_solve) focusNextChild();
    } else {
        const QString value = field->text().trimmed();
        const std::string problem = value.isEmpty() ? std::string()
                                                    : check(value, m_list_form);
        if (!problem.empty()) return message(text_of(problem));
        if (!then_solve) focusNextChild();
    }
    if (then_solve) solve();
}

bool FunctionSolverDialog::takes_condition_field(const QLineEdit* field) const {
    const std::vector<std::string>& names = m_list_form ? m_form->list_parameters : m_form->parameters;
    for (size_t i = 0; i < names.size() && i < m_fields.size(); ++i)
        if (m_fields[i] == field) return desktop::takes_condition(names[i]);
    return false;
}

bool FunctionSolverDialog::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (!field || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool shift = key->modifiers() & Qt::ShiftModifier;
    switch (key->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        accept_field(field, shift || key->key() == Qt::Key_Backtab);
        return true;
    case Qt::Key_Equal: {
        // Conditions need '=' ("==", ">="); elsewhere it solves, except after ':', '!', '>', '<'.
        const bool conditions = m_form && (field == m_entry ? m_form->list_caption == "Logical Expression"
                                                             : takes_condition_field(field));
        const int caret = field->cursorPosition();
        const char before = caret > 0 ? field->text().at(caret - 1).toLatin1() : '\0';
        if (conditions || !desktop::decide_key(desktop::EditorKey::Equals, 2, before).compute) break;
        accept_field(field, true);
        return true;
    }
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void FunctionSolverDialog::reject() {
    if (m_list_modified && !offer_to_save_list()) return;
    if (store::IniFile* ini = m_document.services().settings) ini->Save();
    QDialog::reject();
}

bool FunctionSolverDialog::offer_to_save_list() {
    const int answer = ask(QString::fromLatin1(desktop::solver_text::save_list));
    if (answer == QMessageBox::Cancel) return false;
    if (answer == QMessageBox::Yes) {
        const QString path = QFileDialog::getSaveFileName(this, tr("Save Data Points"), m_document.services().data_dir,
                                                          k_save_filter);
        if (path.isEmpty() || !save_list(path)) return false;
    }
    m_list_modified = false;
    return true;
}

void FunctionSolverDialog::copy_to_editor(const QString& text) {
    if (!text.isEmpty()) m_document.insert_into_editor(text);
}

void FunctionSolverDialog::message(const QString& text) {
    MessageReporter reporter(this, m_document.services().collected_messages);
    reporter.report(text.toStdString(), desktop::solver_text::caption, engine::MessageKind::Warning);
}

int FunctionSolverDialog::ask(const QString& text) {
    return ask_user(m_document.services(), this, k_caption, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
}

} // namespace quorvex::gui
