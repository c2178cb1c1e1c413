#include "root_finder_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/lists/manager_dialog.h"
#include "gui/tools/table_csv.h"

#include "engine/function.h"
#include "engine/parser.h"
#include "graph/graph_data.h"
#include "store/ini_file.h"

#include <QAbstractItemDelegate>
#include <QAbstractTableModel>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Root Finder Utility");
constexpr int k_powers = document::RootFinderParameters::NumPoints;
constexpr int k_basic_powers = 6; // x^5 down to x^0 without "Advanced"
constexpr int k_column_width = 250;

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

// The polynomial's coefficients, one row a power from the highest down; the texts are edited here.
class CoefficientModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    std::array<std::string, k_powers> by_power;

    static int power_of(int row) { return k_powers - 1 - row; }
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : k_powers; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
        return index.column() == 1 ? flags | Qt::ItemIsEditable : flags;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
        const int power = power_of(index.row());
        if (index.column() == 1) return text_of(by_power[static_cast<size_t>(power)]);
        return power == 0 ? QStringLiteral("x^0 (constant)") : QStringLiteral("x^%1").arg(power);
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (!index.isValid() || index.column() != 1 || role != Qt::EditRole) return false;
        by_power[static_cast<size_t>(power_of(index.row()))] = value.toString().toStdString();
        Q_EMIT dataChanged(index, index);
        return true;
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return section == 0 ? QObject::tr("Power") : QObject::tr("Coefficient");
    }
    void reset(const std::array<std::string, k_powers>& texts) {
        beginResetModel();
        by_power = texts;
        endResetModel();
    }
};

// The roots found and the function's value at each, at the dialog's precision.
class RootTableModel : public QAbstractTableModel {
public:
    RootTableModel(QObject* parent, const QSpinBox* precision)
        : QAbstractTableModel(parent), m_precision(precision) {}

    void show(const desktop::RootTable* table) {
        beginResetModel();
        m_table = table;
        endResetModel();
    }
    void reformat() {
        if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 1));
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !m_table ? 0 : static_cast<int>(m_table->rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!m_table || role != Qt::DisplayRole || index.row() >= rowCount()) return {};
        const desktop::RootRow& row = m_table->rows[static_cast<size_t>(index.row())];
        if (index.column() == 1 && row.value_failed) return QStringLiteral("*****Error*****");
        return text_of(desktop::root_text(index.column() == 0 ? row.root : row.value, m_precision->value()));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole || !m_table) return {};
        if (section == 0) return text_of(m_table->variable);
        return QStringLiteral("%1 (%2)").arg(text_of(m_table->expression), text_of(m_table->variable));
    }

private:
    const QSpinBox* m_precision;
    const desktop::RootTable* m_table = nullptr;
};

RootFinderDialog::RootFinderDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent), m_document(document),
      m_real_mode(new QRadioButton(tr("&Real Roots Only"), this)),
      m_complex_mode(new QRadioButton(tr("Co&mplex Roots"), this)), m_expression(new QComboBox(this)),
      m_variable(new QComboBox(this)), m_start(new QLineEdit(this)), m_end(new QLineEdit(this)),
      m_steps(new QLineEdit(this)), m_advanced(new QCheckBox(tr("A&dvanced"), this)),
      m_coefficient_view(new QTableView(this)), m_coefficients(new CoefficientModel(this)),
      m_precision(new QSpinBox(this)), m_inputs(new QWidget(this)), m_summary(new QLabel(this)),
      m_method(new QLabel(this)), m_view(new QTableView(this)),
      m_model(new RootTableModel(this, m_precision)) {
    setObjectName(QStringLiteral("rootFinderDialog"));
    store::IniFile* settings = m_document.services().settings;
    const auto option = [settings](const char* key, int fallback) {
        return settings ? settings->GetInt("OPTIONS", key, fallback) : fallback;
    };

    auto* modes = new QButtonGroup(this);
    modes->addButton(m_real_mode);
    modes->addButton(m_complex_mode);
    auto* mode_row = new QHBoxLayout;
    mode_row->addWidget(m_real_mode);
    mode_row->addWidget(m_complex_mode);
    mode_row->addStretch(1);

    for (QComboBox* combo : {m_expression, m_variable}) {
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(12);
    }
    m_expression->lineEdit()->setPlaceholderText(tr("a function of the document or an expression"));

    // One form for both modes: the rows of the other mode are hidden, so the fields line up.
    auto* function_row = new QWidget(m_inputs);
    auto* function_layout = new QHBoxLayout(function_row);
    function_layout->setContentsMargins(0, 0, 0, 0);
    function_layout->addWidget(m_expression, 1);
    function_layout->addWidget(new QLabel(QStringLiteral("= 0"), function_row));
    auto* function_label = new QLabel(tr("&F(X):"), m_inputs);
    function_label->setBuddy(m_expression);

    m_coefficient_view->setModel(m_coefficients);
    m_coefficient_view->verticalHeader()->hide();
    m_coefficient_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_coefficient_view->horizontalHeader()->setStretchLastSection(true);
    m_coefficient_view->setEditTriggers(QAbstractItemView::AllEditTriggers);
    m_coefficient_view->setToolTip(
        tr("The coefficient of each power of the variable, each an expression; blanks "
           "below the highest power given count 0."));
    auto* polynomial_label = new QLabel(tr("&F(X) ="), m_inputs);
    polynomial_label->setBuddy(m_coefficient_view);

    m_precision->setRange(1, 14);
    m_precision->setValue(option("RootFinderPrecision", 6));

    m_form = new QFormLayout;
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->addRow(function_label, function_row);
    m_form->addRow(polynomial_label, m_coefficient_view);
    m_form->addRow(QString(), m_advanced);
    m_form->addRow(tr("&Variable:"), m_variable);
    m_form->addRow(tr("X&o  Start Value:"), m_start);
    m_form->addRow(tr("X&n  End Value:"), m_end);
    m_form->addRow(tr("n  &Steps:"), m_steps);
    m_form->addRow(tr("&Precision:"), m_precision);
    m_function_row = function_row;

    auto* inputs_layout = new QVBoxLayout(m_inputs);
    inputs_layout->setContentsMargins(0, 0, 0, 0);
    inputs_layout->addLayout(mode_row);
    inputs_layout->addLayout(m_form);

    auto* compute_button = new QPushButton(tr("&Compute"), this);
    compute_button->setDefault(true);
    auto* graph_button = new QPushButton(tr("&Graph"), this);
    auto* copy_button = new QPushButton(tr("Cop&y"), this);
    auto* export_button = new QPushButton(tr("E&xport CSV..."), this);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {compute_button, graph_button, copy_button, export_button})
        buttons->addWidget(button);
    buttons->addStretch(1);

    m_view->setModel(m_model);
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_view->horizontalHeader()->setDefaultSectionSize(k_column_width);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_summary->setBuddy(m_view);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_inputs);
    layout->addLayout(buttons);
    auto* summary_row = new QHBoxLayout;
    summary_row->addWidget(m_summary, 1);
    summary_row->addWidget(m_method);
    layout->addLayout(summary_row);
    layout->addWidget(m_view, 1);
    layout->addWidget(close);

    // The remembered mode and form, set before the changes are written back.
    m_advanced->setChecked(option("MathToolsAdvanced", 0) != 0);
    (option("RootFinderRealRoots", 1) != 0 ? m_real_mode : m_complex_mode)->setChecked(true);

    connect(compute_button, &QPushButton::clicked, this, [this] { compute(); });
    connect(graph_button, &QPushButton::clicked, this, [this] { graph_answer(); });
    connect(copy_button, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(table_text(QLatin1Char('\t'))); });
    connect(export_button, &QPushButton::clicked, this,
            [this] { export_csv_with_dialog([this](const QString& path, QString* error) { return export_csv(path, error); }); });
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        m_model->reformat();
        write_option("RootFinderPrecision", digits);
    });
    connect(modes, &QButtonGroup::buttonToggled, this, [this](QAbstractButton*, bool checked) {
        if (!checked) return;
        write_option("RootFinderRealRoots", m_real_mode->isChecked() ? 1 : 0);
        show_mode();
    });
    connect(m_advanced, &QCheckBox::toggled, this, [this](bool on) {
        write_option("MathToolsAdvanced", on ? 1 : 0);
        show_mode();
    });
    follow_function_variables(m_expression, m_variable);

    refresh_functions();
    load_inputs();
    show_mode();
    resize(560, 600);
}

RootFinderDialog::~RootFinderDialog() = default;

const std::optional<desktop::RootTable>& RootFinderDialog::table() const {
    return m_real_mode->isChecked() ? m_real_table : m_complex_table;
}

QString RootFinderDialog::coefficient(int power) const {
    return text_of(m_coefficients->by_power.at(static_cast<size_t>(power)));
}

void RootFinderDialog::set_coefficient(int power, const QString& text) {
    m_coefficients->setData(m_coefficients->index(k_powers - 1 - power, 1), text, Qt::EditRole);
    show_mode();
}

void RootFinderDialog::refresh_functions() {
    offer_functions(m_expression);
}

void RootFinderDialog::show_mode() {
    const bool real = m_real_mode->isChecked();
    for (QWidget* field : {m_function_row, static_cast<QWidget*>(m_start), static_cast<QWidget*>(m_end),
                           static_cast<QWidget*>(m_steps)})
        m_form->setRowVisible(field, real);
    m_form->setRowVisible(m_coefficient_view, !real);
    m_form->setRowVisible(m_advanced, !real);
    // Powers above x^5 show with "Advanced", and always when one of them is given.
    for (int row = 0; row < k_powers; ++row) {
        const int power = CoefficientModel::power_of(row);
        const bool given = !m_coefficients->by_power[static_cast<size_t>(power)].empty();
        m_coefficient_view->setRowHidden(row, power >= k_basic_powers && !m_advanced->isChecked() && !given);
    }
    // The basic powers fit without scrolling; more scroll in a taller list.
    const int rows = m_advanced->isChecked() ? 12 : k_basic_powers;
    m_coefficient_view->setFixedHeight(m_coefficient_view->horizontalHeader()->sizeHint().height() +
                                       rows * m_coefficient_view->verticalHeader()->defaultSectionSize() +
                                       2 * m_coefficient_view->frameWidth());
    if (!m_advanced->isChecked()) m_coefficient_view->scrollToBottom();
    show_table();
}

void RootFinderDialog::show_table() {
    const std::optional<desktop::RootTable>& shown = table();
    m_model->show(shown ? &*shown : nullptr);
    m_method->clear();
    if (!shown) {
        m_summary->setText(tr("Solution - %1 roots found").arg(0));
        return;
    }
    QString text = tr("Solution - %1 roots found").arg(shown->rows.size());
    if (shown->stopped) text += tr(" (stopped)");
    m_summary->setText(text);
    if (!real_mode()->isChecked())
        m_method->setText(shown->laguerre ? tr("complex coefficients: Laguerre's method")
                                          : tr("real coefficients: the Jenkins-Traub method"));
}

void RootFinderDialog::load_inputs() {
    const document::RootFinderParameters& kept = m_document.document().Tools.RootFinder;
    m_expression->setEditText(text_of(kept.RootFinderFunc));
    m_variable->setEditText(kept.RootFinderVar.empty() ? QStringLiteral("x") : text_of(kept.RootFinderVar));
    m_start->setText(kept.RootFinderXo.empty() ? QStringLiteral("-10") : text_of(kept.RootFinderXo));
    m_end->setText(kept.RootFinderXn.empty() ? QStringLiteral("10") : text_of(kept.RootFinderXn));
    m_steps->setText(kept.RootFinderIn.empty() ? QStringLiteral("1001") : text_of(kept.RootFinderIn));
    m_coefficients->reset(kept.RootFinderXp);
}

void RootFinderDialog::store_inputs() {
    document::RootFinderParameters& kept = m_document.document().Tools.RootFinder;
    const document::RootFinderParameters before = kept;
    kept.RootFinderFunc = m_expression->currentText().toStdString();
    kept.RootFinderVar = m_variable->currentText().toStdString();
    kept.RootFinderXo = m_start->text().toStdString();
    kept.RootFinderXn = m_end->text().toStdString();
    kept.RootFinderIn = m_steps->text().toStdString();
    kept.RootFinderPrecision = m_precision->value();
    kept.RootFinderXp = m_coefficients->by_power;
    if (!(kept == before)) m_document.parser().set_vars_saved(false); // the document changed
}

void RootFinderDialog::take_function(const QString& function) {
    m_real_mode->setChecked(true);
    m_expression->setEditText(function);
    m_variable->setFocus();
}

void RootFinderDialog::closeEvent(QCloseEvent* event) {
    if (m_busy) {
        tell(busy_message());
        event->ignore();
        return;
    }
    ToolDialog::closeEvent(event);
}

bool RootFinderDialog::compute() {
    if (m_busy) return false;
    // A coefficient still being typed (Compute by its mnemonic leaves the editor open) counts.
    if (QWidget* typing = QApplication::focusWidget(); typing && m_coefficient_view->isAncestorOf(typing))
        Q_EMIT m_coefficient_view->itemDelegate()->commitData(typing);
    store_inputs();
    return m_real_mode->isChecked() ? compute_real() : compute_complex();
}

bool RootFinderDialog::compute_real() {
    m_real_table.reset();
    show_table();
    const Services& services = m_document.services();
    std::optional<ProgressHost> host;
    desktop::RootFinderQuestions questions;
    questions.few_steps = [this, &services](const std::string& text) {
        return ask_user(services, this, k_caption, text_of(text), QMessageBox::Yes | QMessageBox::No) ==
               QMessageBox::Yes;
    };
    questions.progress = [&host](const std::string& text, int percent) {
        if (host) host->set_progress(text, percent);
    };
    desktop::RootFinderRefusal refusal;
    std::optional<desktop::RootTable> found;
    m_busy = true;
    m_inputs->setEnabled(false); // neither the mode nor the inputs change during a run
    {
        host.emplace(this, k_caption);
        found =
            desktop::find_real_roots(m_document.parser(), m_expression->currentText().toStdString(),
                                     {m_variable->currentText().toStdString(), m_start->text().toStdString(),
                                      m_end->text().toStdString(), m_steps->text().toStdString()},
                                     m_precision->value(), questions, &*host, refusal);
        host.reset();
    }
    m_inputs->setEnabled(true);
    m_busy = false;
    Q_EMIT m_document.variablesChanged(); // a variable made for the run is gone again
    if (!found) {
        if (refusal.declined) return false;
        if (!refusal.unknown_name.empty()) {
            const QString name = text_of(refusal.unknown_name);
            if (services.sounds) services.sounds->play(QStringLiteral("Error.wav"));
            if (ask_user(
                    services, this, k_caption,
                    tr("' %1 ' can not be identified as a variable or a constant!  Press OK to define it in "
                       "the variable editor, or Cancel.")
                        .arg(name),
                    QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok) {
                // The manager with the name typed in, ready for its value.
                ManagerDialog* editor = m_document.open_manager(true);
                editor->name()->setText(name);
                editor->value()->setFocus();
            }
            return false;
        }
        tell(text_of(refusal.message), text_of(refusal.caption));
        return false;
    }
    m_real_table = std::move(found);
    show_table();
    if (!m_real_table->failure.empty()) {
        tell(text_of(m_real_table->failure));
        return false;
    }
    if (services.sounds) services.sounds->play(QStringLiteral("QClick.wav"));
    return true;
}

bool RootFinderDialog::compute_complex() {
    m_complex_table.reset();
    show_table();
    desktop::RootFinderRefusal refusal;
    std::optional<desktop::RootTable> found =
        desktop::find_complex_roots(m_document.parser(), m_coefficients->by_power,
                                    m_variable->currentText().toStdString(), m_precision->value(), refusal);
    if (!found) {
        if (refusal.coefficient_power >= 0) {
            // The cell to correct is the one selected.
            const QModelIndex cell = m_coefficients->index(k_powers - 1 - refusal.coefficient_power, 1);
            m_coefficient_view->setRowHidden(cell.row(), false);
            m_coefficient_view->setCurrentIndex(cell);
            m_coefficient_view->scrollTo(cell);
        }
        tell(text_of(refusal.message), text_of(refusal.caption));
        return false;
    }
    m_complex_table = std::move(found);
    show_table();
    if (!m_complex_table->failure.empty()) {
        tell(text_of(m_complex_table->failure));
        return false;
    }
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("QClick.wav"));
    return true;
}

bool RootFinderDialog::graph_answer() {
    if (m_busy) return false;
    if (!m_real_mode->isChecked()) {
        tell(tr("The plot shows a function and its real roots: find them in \"Real Roots Only\" first."));
        return false;
    }
    if (!m_real_table) {
        tell(tr("Find the real roots first: the plot shows the function and its roots."));
        return false;
    }
    document::DocumentGraph graph;
    std::string error;
    bool made = false;
    m_busy = true;
    m_inputs->setEnabled(false);
    {
        ProgressHost host(this, k_caption);
        host.set_progress("Computing the function values", 0);
        made = desktop::root_plot(m_document.parser(), *m_real_table, &host, graph.Data, error);
    }
    m_inputs->setEnabled(true);
    m_busy = false;
    Q_EMIT m_document.variablesChanged();
    if (!made) {
        tell(text_of(error));
        return false;
    }
    graph.Data.SetUserDefaults(m_document.services().settings);
    graph.Data.Name = m_document.hub().GetUniqueGraphName(graph.Data.Name);
    m_document.document().Graphs.push_back(std::move(graph));
    m_document.parser().set_vars_saved(false);
    return m_document.show_graph(static_cast<int>(m_document.document().Graphs.size()) - 1);
}

QString RootFinderDialog::table_text(QChar separator) const {
    if (!table()) return {};
    QString text = m_model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString() + separator +
                   m_model->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString() + QLatin1Char('\n');
    for (int r = 0; r < m_model->rowCount(); ++r)
        text += m_model->data(m_model->index(r, 0), Qt::DisplayRole).toString() + separator +
                m_model->data(m_model->index(r, 1), Qt::DisplayRole).toString() + QLatin1Char('\n');
    return text;
}

bool RootFinderDialog::export_csv(const QString& path, QString* error) {
    if (!table()) {
        if (error) *error = tr("Find the roots first.");
        return false;
    }
    return write_table_csv(path, table_text(QLatin1Char('\t')), error);
}

} // namespace quorvex::gui
