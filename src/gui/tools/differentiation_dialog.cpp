#include "differentiation_dialog.h"

#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_window.h"
#include "gui/tools/table_csv.h"

#include "engine/function.h"
#include "engine/parser.h"
#include "engine/variable.h"
#include "store/ini_file.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <sstream>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Differentiation Utility");
constexpr int k_column_width = 100;

QString text_of(const std::string& text) {
    return QString::fromStdString(text);
}

QString number_text(double value, int digits) {
    std::ostringstream out;
    engine::Variable::StreamVariable({value, 0}, out, digits);
    return text_of(out.str());
}

} // namespace

// The table for the view: the variable's values, then each column that is both checked and
// computed, in the order of the check boxes, at the dialog's precision.
class DifferentiationModel : public QAbstractTableModel {
public:
    DifferentiationModel(QObject* parent, std::function<int()> digits)
        : QAbstractTableModel(parent), m_digits(std::move(digits)) {}

    void show(const desktop::DifferentiationTable* table, const desktop::DifferentiationColumns& checked) {
        beginResetModel();
        m_table = table;
        m_shown.clear();
        if (table)
            for (int column = 0; column < desktop::k_differentiation_columns; ++column)
                if (checked[static_cast<size_t>(column)] && table->filled(column)) m_shown.push_back(column);
        endResetModel();
    }
    void reformat() {
        if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
    // The table's column behind a view column after the first; -1 for the variable's.
    int table_column(int section) const {
        return section >= 1 && section <= static_cast<int>(m_shown.size())
                   ? m_shown[static_cast<size_t>(section - 1)]
                   : -1;
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !m_table ? 0 : static_cast<int>(m_table->x.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !m_table ? 0 : 1 + static_cast<int>(m_shown.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!m_table || index.row() >= rowCount() || index.column() >= columnCount()) return {};
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        if (role != Qt::DisplayRole) return {};
        const auto row = static_cast<size_t>(index.row());
        const int column = table_column(index.column());
        const double value =
            column < 0 ? m_table->x[row] : m_table->columns[static_cast<size_t>(column)][row];
        return number_text(value, m_digits());
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole || !m_table) return {};
        const int column = table_column(section);
        return text_of(column < 0 ? m_table->variable : desktop::differentiation_heading(*m_table, column));
    }

private:
    std::function<int()> m_digits;
    const desktop::DifferentiationTable* m_table = nullptr;
    std::vector<int> m_shown;
};

DifferentiationDialog::DifferentiationDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent), m_document(document), m_expression(new QComboBox(this)),
      m_variable(new QComboBox(this)), m_start(new QLineEdit(this)), m_end(new QLineEdit(this)),
      m_steps(new QLineEdit(this)), m_precision(new QSpinBox(this)), m_summary(new QLabel(this)),
      m_view(new QTableView(this)),
      m_model(new DifferentiationModel(this, [this] { return m_precision->value(); })) {
    setObjectName(QStringLiteral("differentiationDialog"));
    for (QComboBox* combo : {m_expression, m_variable}) {
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(12);
    }
    m_expression->lineEdit()->setPlaceholderText(tr("a function of the document or an expression"));
    m_start->setPlaceholderText(tr("Start Value"));
    m_end->setPlaceholderText(tr("End Value"));
    m_steps->setPlaceholderText(tr("1 for the derivatives at the start value"));
    m_precision->setRange(1, 14);
    m_precision->setValue(m_document.services().settings ? m_document.services().settings->GetInt(
                                                               "OPTIONS", "DifferentiationPrecision", 6)
                                                         : 6);

    // The check boxes' own texts; the three derivatives share one mnemonic, which moves between them.
    const char* const boxes[] = {"&f (x)", "f &'(x)", "f '&'(x)", "f ''&'(x)"};
    auto* columns = new QHBoxLayout;
    for (int column = 0; column < desktop::k_differentiation_columns; ++column) {
        QCheckBox*& box = m_boxes[static_cast<size_t>(column)];
        box = new QCheckBox(QString::fromLatin1(boxes[column]), this);
        box->setChecked(true);
        columns->addWidget(box);
        connect(box, &QCheckBox::toggled, this, [this] { column_toggled(); });
    }
    columns->addStretch(1);

    auto* form = new QFormLayout;
    form->addRow(tr("F(x) F&unction:"), m_expression);
    form->addRow(tr("&Variable:"), m_variable);
    form->addRow(tr("Xo  &Start Value:"), m_start);
    form->addRow(tr("Xn  &End Value:"), m_end);
    form->addRow(tr("n  S&teps:"), m_steps);
    auto* columns_label = new QLabel(tr("Co&lumns:"), this);
    columns_label->setBuddy(m_boxes[0]);
    form->addRow(columns_label, columns);
    auto* digits = new QHBoxLayout;
    digits->addWidget(m_precision);
    digits->addStretch(1);
    auto* precision_label = new QLabel(tr("P&recision:"), this);
    precision_label->setBuddy(m_precision);
    form->addRow(precision_label, digits);

    auto* run_button = new QPushButton(tr("&Differentiate"), this);
    run_button->setDefault(true);
    auto* graph_button = new QPushButton(tr("&Graph"), this);
    auto* copy_button = new QPushButton(tr("C&opy"), this);
    auto* export_button = new QPushButton(tr("Export &CSV..."), this);
    auto* insert_button = new QPushButton(tr("&Insert Ans."), this);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {run_button, graph_button, copy_button, export_button, insert_button})
        buttons->addWidget(button);
    buttons->addStretch(1);

    m_view->setModel(m_model);
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_view->horizontalHeader()->setDefaultSectionSize(k_column_width);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(m_summary);
    layout->addWidget(m_view, 1);
    layout->addWidget(close);

    connect(run_button, &QPushButton::clicked, this, [this] { differentiate(); });
    connect(graph_button, &QPushButton::clicked, this, [this] { graph_answer(); });
    connect(copy_button, &QPushButton::clicked, this,
            [this] { QApplication::clipboard()->setText(table_text(QLatin1Char('\t'))); });
    connect(export_button, &QPushButton::clicked, this,
            [this] { export_csv_with_dialog([this](const QString& path, QString* error) { return export_csv(path, error); }); });
    connect(insert_button, &QPushButton::clicked, this, [this] { insert_answer(); });
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        m_model->reformat();
        write_option("DifferentiationPrecision", digits);
    });
    follow_function_variables(m_expression, m_variable);
    refresh_functions();
    load_inputs();
    // Every edit is kept with the document at once, so a save keeps what the window shows.
    for (QComboBox* combo : {m_expression, m_variable})
        connect(combo, &QComboBox::editTextChanged, this, [this] { store_inputs(); });
    for (QLineEdit* field : {m_start, m_end, m_steps})
        connect(field, &QLineEdit::textChanged, this, [this] { store_inputs(); });
    resize(560, 600);
}

DifferentiationDialog::~DifferentiationDialog() = default;

void DifferentiationDialog::refresh_functions() {
    offer_functions(m_expression);
}

void DifferentiationDialog::load_inputs() {
    const document::DifferentiationParameters& kept = m_document.document().Tools.Differentiation;
    m_expression->setEditText(text_of(kept.DiffFunc));
    m_variable->setEditText(kept.DiffVar.empty() ? QStringLiteral("x") : text_of(kept.DiffVar));
    m_start->setText(text_of(kept.DiffXo));
    m_end->setText(text_of(kept.DiffXn));
    m_steps->setText(text_of(kept.DiffIn));
    const int shown[] = {kept.DiffDispFunc, kept.DiffDispFirstDir, kept.DiffDispSecondDir,
                         kept.DiffDispThirdDir};
    for (int column = 0; column < desktop::k_differentiation_columns; ++column) {
        QCheckBox* box = m_boxes[static_cast<size_t>(column)];
        box->blockSignals(true);
        box->setChecked(shown[column] != 0);
        box->blockSignals(false);
    }
}

void DifferentiationDialog::store_inputs() {
    document::DifferentiationParameters& kept = m_document.document().Tools.Differentiation;
    const document::DifferentiationParameters before = kept;
    kept.DiffFunc = m_expression->currentText().toStdString();
    kept.DiffVar = m_variable->currentText().toStdString();
    kept.DiffXo = m_start->text().toStdString();
    kept.DiffXn = m_end->text().toStdString();
    kept.DiffIn = m_steps->text().toStdString();
    kept.DiffPrecision = m_precision->value();
    const desktop::DifferentiationColumns shown = checked();
    kept.DiffDispFunc = shown[0];
    kept.DiffDispFirstDir = shown[1];
    kept.DiffDispSecondDir = shown[2];
    kept.DiffDispThirdDir = shown[3];
    if (!(kept == before)) m_document.parser().set_vars_saved(false); // the document changed
}

desktop::DifferentiationColumns DifferentiationDialog::checked() const {
    desktop::DifferentiationColumns shown{};
    for (size_t column = 0; column < shown.size(); ++column)
        shown[column] = m_boxes[column]->isChecked();
    return shown;
}

void DifferentiationDialog::take_function(const QString& function) {
    m_expression->setEditText(function);
    m_variable->setFocus();
}

bool DifferentiationDialog::differentiate() {
    if (m_busy) return false;
    store_inputs();
    m_table.reset();
    m_model->show(nullptr, checked());
    std::string error;
    std::optional<desktop::DifferentiationTable> table = desktop::differentiation_table(
        m_document.parser(), m_expression->currentText().toStdString(),
        {m_variable->currentText().toStdString(), m_start->text().toStdString(), m_end->text().toStdString(),
         m_steps->text().toStdString()},
        error);
    if (!table) {
        m_summary->clear();
        tell(text_of(error));
        return false;
    }
    m_table = std::move(table);
    return fill(checked());
}

bool DifferentiationDialog::fill(const desktop::DifferentiationColumns& wanted) {
    m_busy = true;
    std::string error;
    bool filled = false;
    {
        ProgressHost host(this, k_caption);
        filled = desktop::fill_differentiation(
            m_document.parser(), *m_table, wanted, &host,
            [&host](const std::string& text, int percent) { host.set_progress(text, percent); }, error);
    }
    m_busy = false;
    Q_EMIT m_document.variablesChanged(); // a variable made for the run is gone again
    show_table();
    if (!filled) {
        tell(text_of(error));
        return false;
    }
    if (m_document.services().sounds)
        m_document.services().sounds->play(m_table->stopped ? QStringLiteral("Delete.wav")
                                                            : QStringLiteral("QClick.wav"));
    // A graph of this table that is showing follows it.
    if (m_document.graph_shown()) {
        const int shown = m_document.graph_window()->current_graph();
        const auto& graphs = m_document.document().Graphs;
        if (shown >= 0 && shown < static_cast<int>(graphs.size()) &&
            graphs[static_cast<size_t>(shown)].Data.Name == graph_name().toStdString())
            graph_answer();
    }
    return true;
}

void DifferentiationDialog::show_table() {
    m_model->show(m_table ? &*m_table : nullptr, checked());
    if (!m_table) {
        m_summary->clear();
        return;
    }
    const int points = static_cast<int>(m_table->x.size());
    m_summary->setText(m_table->stopped
                           ? tr("Stopped: %1 points, the columns finished before the stop.").arg(points)
                       : points == 1 ? tr("The derivatives at %1 = %2.")
                                           .arg(text_of(m_table->variable), number_text(m_table->x[0], 14))
                                     : tr("%1 points.").arg(points));
}

void DifferentiationDialog::column_toggled() {
    store_inputs();
    if (m_busy || !m_table) return;
    // A column turned on after a run is computed alone; the others are only shown again.
    const desktop::DifferentiationColumns wanted = checked();
    bool missing = false;
    for (int column = 0; column < desktop::k_differentiation_columns; ++column)
        missing = missing || (wanted[static_cast<size_t>(column)] && !m_table->filled(column));
    if (missing)
        fill(wanted);
    else
        show_table();
}

QString DifferentiationDialog::graph_name() const {
    return m_table ? QStringLiteral("Differentials of %1").arg(text_of(m_table->expression)) : QString();
}

bool DifferentiationDialog::graph_answer() {
    if (!m_table || m_model->columnCount() < 2) {
        tell(tr("Differentiate first: the graph shows the table's columns."));
        return false;
    }
    const std::string name = graph_name().toStdString();
    document::DocumentGraph graph;
    graph::GraphData& data = graph.Data;
    data.SetUserDefaults(m_document.services().settings);
    data.Name = name;
    QStringList titles;
    for (int section = 1; section < m_model->columnCount(); ++section) {
        const QString heading = m_model->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        titles << heading;
        const auto& values = m_table->columns[static_cast<size_t>(m_model->table_column(section))];
        graph::StrDataPnts set;
        set.SetName(heading.toStdString().c_str());
        set.SetLabel(heading.toStdString().c_str());
        for (size_t r = 0; r < m_table->x.size(); ++r) {
            set.PutXDataPoint(number_text(m_table->x[r], 14).toStdString().c_str(), static_cast<int>(r));
            set.PutYDataPoint(number_text(values[r], 14).toStdString().c_str(), static_cast<int>(r));
        }
        data.DataSets.push_back(std::move(set));
    }
    data.SetHeader("Differentiation Plot", true);
    data.SetFooter(name.c_str(), true);
    data.SetXAxisTitle(m_table->variable.c_str(), true);
    data.SetYAxisTitle(titles.join(QStringLiteral(" , ")).toStdString().c_str(), true);
    // One graph per expression: a second graph of the same table replaces the first.
    auto& graphs = m_document.document().Graphs;
    const auto same =
        std::find_if(graphs.begin(), graphs.end(), [&](const auto& g) { return g.Data.Name == name; });
    int index = static_cast<int>(same - graphs.begin());
    if (same == graphs.end())
        graphs.push_back(std::move(graph));
    else
        *same = std::move(graph);
    m_document.parser().set_vars_saved(false);
    return m_document.show_graph(index);
}

QString DifferentiationDialog::table_text(QChar separator) const {
    if (!m_table) return {};
    QString text;
    for (int section = 0; section < m_model->columnCount(); ++section)
        text += (section ? QString(separator) : QString()) +
                m_model->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
    text += QLatin1Char('\n');
    for (int r = 0; r < m_model->rowCount(); ++r) {
        for (int c = 0; c < m_model->columnCount(); ++c)
            text += (c ? QString(separator) : QString()) +
                    m_model->data(m_model->index(r, c), Qt::DisplayRole).toString();
        text += QLatin1Char('\n');
    }
    return text;
}

bool DifferentiationDialog::export_csv(const QString& path, QString* error) {
    if (!m_table) {
        if (error) *error = tr("Differentiate first.");
        return false;
    }
    return write_table_csv(path, table_text(QLatin1Char('\t')), error);
}

bool DifferentiationDialog::insert_answer() {
    if (!m_table) {
        tell(tr("Differentiate first: the table is what is inserted."));
        return false;
    }
    m_document.insert_into_editor(table_text(QLatin1Char('\t')));
    return true;
}

} // namespace quorvex::gui
