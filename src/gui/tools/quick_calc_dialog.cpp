#include "quick_calc_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/tools/table_csv.h"

#include "engine/parser.h"
#include "store/ini_file.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
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
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

#include <sstream>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Quick Calc Utility");

QString text_of(const std::string& text) { return QString::fromStdString(text); }

} // namespace

// The computed table for the view: the variable's values and the expression's, formatted at the
// dialog's precision as they are shown.
class QuickCalcModel : public QAbstractTableModel {
public:
    using Format = std::function<QString(const engine::complex&)>;
    QuickCalcModel(QObject* parent, Format format) : QAbstractTableModel(parent), m_format(std::move(format)) {}

    void show(const desktop::QuickCalcTable* table) {
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
        const desktop::QuickCalcRow& row = m_table->rows[static_cast<size_t>(index.row())];
        if (index.column() == 0) return m_format({row.x, 0});
        return row.failed ? QString::fromLatin1(desktop::k_error_cell) : m_format(row.value);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole || !m_table) return {};
        if (section == 0) return text_of(m_table->variable);
        return QStringLiteral("%1 (%2)").arg(text_of(m_table->expression), text_of(m_table->variable));
    }

private:
    Format m_format;
    const desktop::QuickCalcTable* m_table = nullptr;
};

QuickCalcDialog::QuickCalcDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent),
      m_document(document),
      m_expression(new QComboBox(this)),
      m_variable(new QComboBox(this)),
      m_start(new QLineEdit(this)),
      m_end(new QLineEdit(this)),
      m_points(new QLineEdit(this)),
      m_precision(new QSpinBox(this)),
      m_summary(new QLabel(this)),
      m_view(new QTableView(this)),
      m_model(new QuickCalcModel(this, [this](const engine::complex& value) {
          std::ostringstream out;
          engine::Variable::StreamVariable(value, out, m_precision->value());
          return text_of(out.str());
      })) {
    setObjectName(QStringLiteral("quickCalcDialog"));
    for (QComboBox* combo : {m_expression, m_variable}) {
        combo->setEditable(true);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(12);
    }
    m_expression->lineEdit()->setPlaceholderText(tr("a function of the document or an expression"));
    m_precision->setRange(1, 14);
    m_precision->setValue(
        m_document.services().settings ? m_document.services().settings->GetInt("OPTIONS", "QuickCalcPrecision", 6) : 6);

    auto* form = new QFormLayout;
    form->addRow(tr("&Expression:"), m_expression);
    form->addRow(tr("&Variable:"), m_variable);
    form->addRow(tr("&Start value:"), m_start);
    form->addRow(tr("E&nd value:"), m_end);
    form->addRow(tr("&Points:"), m_points);
    form->addRow(tr("P&recision:"), m_precision);

    auto* compute_button = new QPushButton(tr("&Compute"), this);
    compute_button->setDefault(true);
    auto* graph_button = new QPushButton(tr("&Graph"), this);
    auto* copy_button = new QPushButton(tr("C&opy"), this);
    auto* export_button = new QPushButton(tr("E&xport CSV..."), this);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {compute_button, graph_button, copy_button, export_button}) buttons->addWidget(button);
    buttons->addStretch(1);

    m_view->setModel(m_model);
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(m_summary);
    layout->addWidget(m_view, 1);
    layout->addWidget(close);

    connect(compute_button, &QPushButton::clicked, this, [this] { compute(); });
    connect(graph_button, &QPushButton::clicked, this, [this] { graph_answer(); });
    connect(copy_button, &QPushButton::clicked, this, [this] {
        QApplication::clipboard()->setText(table_text(QLatin1Char('\t')));
    });
    connect(export_button, &QPushButton::clicked, this,
            [this] { export_csv_with_dialog([this](const QString& path, QString* error) { return export_csv(path, error); }); });
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        m_model->reformat();
        write_option("QuickCalcPrecision", digits);
    });
    follow_function_variables(m_expression, m_variable);
    refresh_functions();
    load_inputs();
    resize(460, 560);
}

QuickCalcDialog::~QuickCalcDialog() = default;

void QuickCalcDialog::refresh_functions() {
    offer_functions(m_expression);
}

void QuickCalcDialog::load_inputs() {
    const document::QuickCalcParameters& kept = m_document.document().Tools.QuickCalc;
    m_expression->setEditText(text_of(kept.QuickCalcFunc));
    m_variable->setEditText(kept.QuickCalcVar.empty() ? QStringLiteral("x") : text_of(kept.QuickCalcVar));
    m_start->setText(kept.QuickCalcXo.empty() ? QStringLiteral("-10") : text_of(kept.QuickCalcXo));
    m_end->setText(kept.QuickCalcXn.empty() ? QStringLiteral("10") : text_of(kept.QuickCalcXn));
    m_points->setText(kept.QuickCalcIn.empty() ? QStringLiteral("21") : text_of(kept.QuickCalcIn));
}

void QuickCalcDialog::store_inputs() {
    document::QuickCalcParameters& kept = m_document.document().Tools.QuickCalc;
    const document::QuickCalcParameters before = kept;
    kept.QuickCalcFunc = m_expression->currentText().toStdString();
    kept.QuickCalcVar = m_variable->currentText().toStdString();
    kept.QuickCalcXo = m_start->text().toStdString();
    kept.QuickCalcXn = m_end->text().toStdString();
    kept.QuickCalcIn = m_points->text().toStdString();
    if (!(kept == before)) m_document.parser().set_vars_saved(false); // the document changed
}

void QuickCalcDialog::take_function(const QString& function) {
    m_expression->setEditText(function);
    m_variable->setFocus();
}

bool QuickCalcDialog::compute() {
    if (m_busy) return false;
    store_inputs();
    m_busy = true;
    m_model->show(nullptr);
    m_table.reset();
    desktop::ToolQuestions questions;
    const Services& services = m_document.services();
    questions.both_solutions = [this, &services](const std::string& text) {
        return ask_user(services, this, k_caption, text_of(text), QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
    };
    questions.go_on_after_error = [this, &services](const std::string& text) {
        return ask_user(services, this, k_caption, text_of(text), QMessageBox::Ok | QMessageBox::Cancel) != QMessageBox::Cancel;
    };
    std::string error;
    std::optional<desktop::QuickCalcTable> table;
    {
        ProgressHost host(this, k_caption);
        host.set_progress("Computing the function values", 0);
        table = desktop::quick_calc(m_document.parser(),
                                    m_expression->currentText().toStdString(),
                                    {m_variable->currentText().toStdString(), m_start->text().toStdString(),
                                     m_end->text().toStdString(), m_points->text().toStdString()},
                                    questions, &host, error);
    }
    m_busy = false;
    Q_EMIT m_document.variablesChanged(); // a variable made for the run is gone again
    if (!table) {
        m_summary->clear();
        tell(text_of(error));
        return false;
    }
    m_table = std::move(table);
    m_model->show(&*m_table);
    m_summary->setText(m_table->stopped ? tr("Stopped after %1 values.").arg(m_table->rows.size())
                                        : tr("%1 values.").arg(m_table->rows.size()));
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("QClick.wav"));
    return true;
}

QString QuickCalcDialog::value_text(double x) const {
    std::ostringstream out;
    engine::Variable::StreamVariable({x, 0}, out, 14);
    return text_of(out.str());
}

bool QuickCalcDialog::graph_answer() {
    if (!m_table || m_table->rows.empty()) {
        tell(tr("Compute the table first: the graph shows its values."));
        return false;
    }
    if (m_table->large_imaginary_found &&
        ask_user(m_document.services(), this, k_caption,
                 tr("Some values have imaginary parts larger than the zero threshold. Do you want to graph only the "
                    "real parts?"),
                 QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return false;
    const desktop::QuickCalcTable& table = *m_table;
    engine::Parser& parser = m_document.parser();
    document::DocumentGraph graph;
    graph::GraphData& data = graph.Data;
    data.SetUserDefaults(m_document.services().settings);
    data.Name = m_document.hub().GetUniqueGraphName("Graph of: " + table.expression);
    const int function = parser.find_function(table.expression.c_str());
    if (function >= 0 && parser.function_at(function)->num_variables() == 1 && !table.two_solutions) {
        // A function of the document is drawn by its own curve over the table's range.
        const engine::Function* declared = parser.function_at(function);
        data.Functions.emplace_back(declared->full_name(), declared->value());
        data.XAxisVar = graph::VariableCopy(engine::Variable(table.variable, {table.rows.front().x, 0},
                                                             {table.rows.back().x, 0}, static_cast<long>(table.rows.size())));
    } else {
        graph::StrDataPnts set;
        set.SetName(table.expression.c_str());
        for (size_t r = 0; r < table.rows.size(); ++r) {
            const desktop::QuickCalcRow& row = table.rows[r];
            set.PutXDataPoint(value_text(row.x).toStdString().c_str(), static_cast<int>(r));
            // A failed point is a hole in the curve.
            set.PutYDataPoint(row.failed ? "1.0E308" : value_text(row.value.real()).toStdString().c_str(),
                              static_cast<int>(r));
        }
        data.DataSets.push_back(std::move(set));
    }
    data.SetHeader(("Graph of: " + table.expression).c_str(), true);
    data.SetFooter(("Solutions for: " + table.expression).c_str(), true);
    data.SetXAxisTitle((" " + table.variable + " ").c_str(), true);
    data.SetYAxisTitle(table.expression.c_str(), true);
    m_document.document().Graphs.push_back(std::move(graph));
    parser.set_vars_saved(false);
    return m_document.show_graph(static_cast<int>(m_document.document().Graphs.size()) - 1);
}

QString QuickCalcDialog::table_text(QChar separator) const {
    if (!m_table) return {};
    QString text = m_model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString() + separator +
                   m_model->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString() + QLatin1Char('\n');
    for (int r = 0; r < m_model->rowCount(); ++r)
        text += m_model->data(m_model->index(r, 0), Qt::DisplayRole).toString() + separator +
                m_model->data(m_model->index(r, 1), Qt::DisplayRole).toString() + QLatin1Char('\n');
    return text;
}

bool QuickCalcDialog::export_csv(const QString& path, QString* error) {
    if (!m_table) {
        if (error) *error = tr("Compute the table first.");
        return false;
    }
    return write_table_csv(path, table_text(QLatin1Char('\t')), error);
}

} // namespace quorvex::gui
