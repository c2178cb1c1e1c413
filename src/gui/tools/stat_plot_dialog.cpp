#include "stat_plot_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/tools/data_points_dialog.h"
#include "gui/tools/table_csv.h"

#include "engine/parser.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSaveFile>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Statistical Plotting");

QString text_of(const std::string& text) { return QString::fromStdString(text); }

} // namespace

// The data set's values as the table shows them: each at the dialog's precision (empty where
// its text fails), the text as typed in the tool tip. The values are edited in the data points
// dialog.
class StatValuesModel : public QAbstractTableModel {
public:
    StatValuesModel(QObject* parent, const graph::StrDataPnts& data) : QAbstractTableModel(parent), m_data(data) {}

    // The values as shown, evaluated again (after a change of the data or the precision).
    void refresh(std::vector<std::string> shown) {
        beginResetModel();
        m_shown = std::move(shown);
        endResetModel();
    }
    const std::vector<std::string>& shown() const { return m_shown; }
    int values() const { return m_data.GetLastXIndex() + 1; }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (index.row() >= rowCount()) return {};
        if (role == Qt::ToolTipRole) {
            const std::string* text = m_data.GetXDataPoint(index.row());
            return text ? text_of(*text) : QString();
        }
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        return role == Qt::DisplayRole ? text_of(m_shown[static_cast<size_t>(index.row())]) : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole) return {};
        if (orientation == Qt::Vertical) return section + 1;
        return QObject::tr("Values");
    }

private:
    const graph::StrDataPnts& m_data;
    std::vector<std::string> m_shown;
};

// The distribution for the view: "Interval" and "Frequency".
class FrequencyModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    void show(const std::vector<functions::Frequency>* frequencies, int precision) {
        beginResetModel();
        m_frequencies = frequencies;
        m_precision = precision;
        endResetModel();
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !m_frequencies ? 0 : static_cast<int>(m_frequencies->size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!m_frequencies || index.row() >= rowCount()) return {};
        const functions::Frequency& f = (*m_frequencies)[static_cast<size_t>(index.row())];
        if (role == Qt::TextAlignmentRole && index.column() == 1)
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        if (role != Qt::DisplayRole) return {};
        return index.column() == 0 ? text_of(desktop::interval_text(f, m_precision)) : QString::number(f.count);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return section == 0 ? QStringLiteral("Interval") : QStringLiteral("Frequency");
    }

private:
    const std::vector<functions::Frequency>* m_frequencies = nullptr;
    int m_precision = 14;
};

StatPlotDialog::StatPlotDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent),
      m_document(document),
      m_name(new QLineEdit(this)),
      m_values_view(new QTableView(this)),
      m_values(new StatValuesModel(this, document.document().Tools.StatPlotting.DataSet)),
      m_data_dialog(new DataPointsDialog(document.parser(), document.services(), k_caption, false, this)),
      m_distribution_view(new QTableView(this)),
      m_frequencies(new FrequencyModel(this)),
      m_hystogram(new QRadioButton(QStringLiteral("&Hystogram"), this)),
      m_pareto(new QRadioButton(QStringLiteral("&Pareto"), this)),
      m_equal_intervals(new QRadioButton(QStringLiteral("Auto Set &Equal Intervals"), this)),
      m_equal_probabilities(new QRadioButton(QStringLiteral("Auto Set Equal Pro&babilities"), this)),
      m_set_intervals(new QRadioButton(QStringLiteral("E&xplicitly Set Equal Intervals"), this)),
      m_count(new QSpinBox(this)),
      m_auto_compute(new QCheckBox(QStringLiteral("Auto Co&mpute"), this)),
      m_auto_graph(new QCheckBox(QStringLiteral("A&uto Graph"), this)),
      m_precision(new QSpinBox(this)),
      m_summary(new QLabel(this)) {
    setObjectName(QStringLiteral("statPlotDialog"));
    m_count->setRange(desktop::k_fewest_intervals, desktop::k_most_intervals);
    m_precision->setRange(1, 14);
    m_name->setPlaceholderText(QStringLiteral("Data Set"));

    // The values: their name, the table, and the ways to fill it (typed in the data points dialog,
    // loaded, pasted).
    auto* data_box = new QGroupBox(tr("Data"), this);
    auto* name_row = new QFormLayout;
    name_row->addRow(tr("N&ame:"), m_name);
    m_values_view->setModel(m_values);
    m_values_view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_values_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_values_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* edit = new QPushButton(tr("A&dd/Edit..."), this);
    auto* paste = new QPushButton(tr("Pas&te Column"), this);
    auto* load = new QPushButton(tr("&Load Data..."), this);
    auto* save = new QPushButton(tr("Sa&ve Data..."), this);
    auto* clear = new QPushButton(tr("Clea&r"), this);
    auto* data_buttons = new QGridLayout;
    data_buttons->addWidget(edit, 0, 0);
    data_buttons->addWidget(paste, 0, 1);
    data_buttons->addWidget(load, 1, 0);
    data_buttons->addWidget(save, 1, 1);
    data_buttons->addWidget(clear, 2, 0);
    auto* data_layout = new QVBoxLayout(data_box);
    data_layout->addLayout(name_row);
    data_layout->addWidget(m_values_view, 1);
    data_layout->addLayout(data_buttons);

    // The choices.
    auto* type_box = new QGroupBox(tr("Type"), this);
    auto* type_layout = new QHBoxLayout(type_box);
    type_layout->addWidget(m_hystogram);
    type_layout->addWidget(m_pareto);
    type_layout->addStretch(1);
    auto* types = new QButtonGroup(this);
    types->addButton(m_hystogram);
    types->addButton(m_pareto);

    auto* interval_box = new QGroupBox(tr("Intervals"), this);
    auto* interval_layout = new QGridLayout(interval_box);
    interval_layout->addWidget(m_equal_intervals, 0, 0, 1, 2);
    interval_layout->addWidget(m_equal_probabilities, 1, 0, 1, 2);
    interval_layout->addWidget(m_set_intervals, 2, 0, 1, 2);
    auto* count_label = new QLabel(tr("&Number of Intervals:"), this);
    count_label->setBuddy(m_count);
    interval_layout->addWidget(count_label, 3, 0);
    interval_layout->addWidget(m_count, 3, 1);
    interval_layout->setColumnStretch(1, 1);
    auto* kinds = new QButtonGroup(this);
    kinds->addButton(m_equal_intervals);
    kinds->addButton(m_equal_probabilities);
    kinds->addButton(m_set_intervals);

    auto* options = new QFormLayout;
    options->addRow(m_auto_compute);
    options->addRow(m_auto_graph);
    options->addRow(tr("Pre&cision:"), m_precision);

    auto* compute_button = new QPushButton(tr("C&ompute"), this);
    compute_button->setDefault(true);
    auto* graph_button = new QPushButton(tr("&Graph"), this);
    auto* copy_button = new QPushButton(tr("Cop&y"), this);
    auto* export_button = new QPushButton(tr("Export C&SV..."), this);
    auto* buttons = new QGridLayout;
    buttons->addWidget(compute_button, 0, 0);
    buttons->addWidget(graph_button, 0, 1);
    buttons->addWidget(copy_button, 1, 0);
    buttons->addWidget(export_button, 1, 1);

    auto* choices = new QVBoxLayout;
    choices->addWidget(type_box);
    choices->addWidget(interval_box);
    choices->addLayout(options);
    choices->addLayout(buttons);
    choices->addStretch(1);

    m_distribution_view->setModel(m_frequencies);
    m_distribution_view->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_distribution_view->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_distribution_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_distribution_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_summary->setWordWrap(true);
    auto* solution = new QVBoxLayout;
    solution->addWidget(m_summary);
    solution->addWidget(m_distribution_view, 1);

    auto* columns = new QHBoxLayout;
    columns->addWidget(data_box, 3);
    columns->addLayout(choices, 3);
    columns->addLayout(solution, 4);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(close);

    connect(edit, &QPushButton::clicked, this, &StatPlotDialog::edit_data);
    connect(m_values_view, &QAbstractItemView::activated, this, &StatPlotDialog::edit_data);
    connect(paste, &QPushButton::clicked, this, &StatPlotDialog::paste_column);
    connect(clear, &QPushButton::clicked, this, &StatPlotDialog::clear_data);
    connect(load, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Open Data Point File"), QString(),
                                                          DataPointsDialog::file_filter());
        if (!path.isEmpty()) load_data(path);
    });
    connect(save, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save Data Point File"), QString(),
                                                          DataPointsDialog::file_filter());
        if (!path.isEmpty()) save_data(path);
    });
    connect(compute_button, &QPushButton::clicked, this, [this] { compute(); });
    connect(graph_button, &QPushButton::clicked, this, [this] { graph_answer(); });
    connect(copy_button, &QPushButton::clicked, this, [this] {
        const bool with_values =
            ask_user(m_document.services(), this, k_caption,
                     QStringLiteral("Would you like to insert the raw data into the Math Editor as well as the "
                                    "Intervals and Frequencies?"),
                     QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
        const QString text = copy_text(with_values);
        QApplication::clipboard()->setText(text);
        m_document.editor()->insertPlainText(text);
    });
    connect(export_button, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, tr("Export CSV"), QString(), tr("CSV files (*.csv)"));
        QString error;
        if (!path.isEmpty() && !export_csv(path, &error)) tell(error);
    });
    connect(m_values, &QAbstractItemModel::modelReset, this, [this] { show_summary(); });
    connect(m_name, &QLineEdit::editingFinished, this, [this] { store_inputs(); });
    connect(types, &QButtonGroup::buttonToggled, this, [this](QAbstractButton*, bool on) {
        if (on) choice_changed(true);
    });
    connect(kinds, &QButtonGroup::buttonToggled, this, [this](QAbstractButton*, bool on) {
        if (on) choice_changed(false);
    });
    connect(m_count, &QSpinBox::valueChanged, this, [this] { choice_changed(false); });
    connect(m_auto_compute, &QCheckBox::toggled, this, [this] { choice_changed(false); });
    connect(m_auto_graph, &QCheckBox::toggled, this, [this] { store_inputs(); });
    connect(m_precision, &QSpinBox::valueChanged, this, [this] {
        store_inputs();
        values_changed();
        if (m_distribution) m_frequencies->show(&*m_distribution, m_precision->value());
    });
    load_inputs();
    values_changed();
    resize(940, 560);
}

StatPlotDialog::~StatPlotDialog() {
    // The dialog hides its views after this body, and they ask their models once more: the
    // distribution is gone by then.
    m_frequencies->show(nullptr, m_precision->value());
}

void StatPlotDialog::load_inputs() {
    m_loading = true;
    const document::StatPlottingParameters& kept = m_document.document().Tools.StatPlotting;
    m_name->setText(text_of(kept.DataSet.Name));
    (kept.StatPlottingHystogramPlot != 0 ? m_hystogram : m_pareto)->setChecked(true);
    switch (kept.StatPlottingSetIntervals) {
    case 1: m_equal_probabilities->setChecked(true); break;
    case 2: m_set_intervals->setChecked(true); break;
    default: m_equal_intervals->setChecked(true); break;
    }
    m_count->setValue(kept.StatPlottingNumIntervals);
    m_auto_compute->setChecked(kept.StatPlottingAutoCompute != 0);
    m_auto_graph->setChecked(kept.StatPlottingAutoGraph != 0);
    m_precision->setValue(kept.StatPlottingPrecision);
    m_loading = false;
}

void StatPlotDialog::store_inputs() {
    if (m_loading) return;
    document::StatPlottingParameters& kept = m_document.document().Tools.StatPlotting;
    const auto fields = [&kept] {
        return std::make_tuple(kept.StatPlottingPrecision, kept.StatPlottingNumIntervals, kept.StatPlottingSetIntervals,
                               kept.StatPlottingHystogramPlot, kept.StatPlottingAutoCompute,
                               kept.StatPlottingAutoGraph, kept.DataSet.Name);
    };
    const auto before = fields();
    kept.StatPlottingPrecision = m_precision->value();
    kept.StatPlottingNumIntervals = m_count->value();
    kept.StatPlottingSetIntervals = static_cast<int>(choice().intervals);
    kept.StatPlottingHystogramPlot = m_pareto->isChecked() ? 0 : 1;
    kept.StatPlottingAutoCompute = m_auto_compute->isChecked() ? 1 : 0;
    kept.StatPlottingAutoGraph = m_auto_graph->isChecked() ? 1 : 0;
    // The document keeps a data set only with a name.
    std::string name = m_name->text().trimmed().toStdString();
    if (name.empty() && kept.DataSet.GetLastXIndex() >= 0) name = "Data Set";
    kept.DataSet.Name = name;
    if (fields() != before) m_document.parser().set_vars_saved(false); // the document changed
}

desktop::StatPlotChoice StatPlotDialog::choice() const {
    desktop::StatPlotChoice choice;
    choice.intervals = m_set_intervals->isChecked()         ? desktop::IntervalChoice::SetEqualIntervals
                       : m_equal_probabilities->isChecked() ? desktop::IntervalChoice::AutoEqualProbabilities
                                                            : desktop::IntervalChoice::AutoEqualIntervals;
    choice.count = m_count->value();
    choice.pareto = m_pareto->isChecked();
    return choice;
}

void StatPlotDialog::choice_changed(bool recompute_always) {
    if (m_loading) return;
    store_inputs();
    m_count->setEnabled(m_set_intervals->isChecked());
    if ((recompute_always || m_auto_compute->isChecked()) && m_values->values() >= 2) compute();
}

void StatPlotDialog::values_changed() {
    m_count->setEnabled(m_set_intervals->isChecked());
    const graph::StrDataPnts& data = m_document.document().Tools.StatPlotting.DataSet;
    std::vector<std::string> shown;
    {
        ProgressHost host(this, k_caption);
        host.set_progress("Computing Data Values...", 0);
        shown = desktop::stat_value_texts(m_document.parser(), data, m_precision->value(), &host);
    }
    m_values->refresh(std::move(shown));
}

void StatPlotDialog::show_summary() {
    const int points = m_values->values();
    m_summary->setText(m_source.isEmpty()
                           ? QStringLiteral("Solution - Based on %1 points").arg(points)
                           : QStringLiteral("Solution - Based on %1 points from %2").arg(points).arg(m_source));
}

void StatPlotDialog::set_values(const graph::StrDataPnts& values) {
    graph::StrDataPnts& data = m_document.document().Tools.StatPlotting.DataSet;
    const std::string name = data.Name;
    data = values;
    // A set named in this window keeps its name; a loaded file names a set that has none.
    if (!m_name->text().trimmed().isEmpty() || data.Name.empty()) data.Name = name;
    else m_name->setText(text_of(data.Name));
    store_inputs();
    m_document.parser().set_vars_saved(false);
    values_changed();
}

void StatPlotDialog::add_values(const std::vector<std::string>& texts) {
    graph::StrDataPnts data = m_document.document().Tools.StatPlotting.DataSet;
    int next = data.GetLastXIndex() + 1;
    for (const std::string& text : texts) data.PutXDataPoint(text, next++);
    set_values(data);
}

void StatPlotDialog::edit_data() {
    m_data_dialog->set_points(m_document.document().Tools.StatPlotting.DataSet);
    if (m_data_dialog->exec() == QDialog::Accepted) set_values(m_data_dialog->points());
}

void StatPlotDialog::paste_column() {
    m_data_dialog->set_points(m_document.document().Tools.StatPlotting.DataSet);
    if (m_data_dialog->paste_text(QApplication::clipboard()->text())) set_values(m_data_dialog->points());
}

bool StatPlotDialog::load_data(const QString& path) {
    m_data_dialog->set_points(m_document.document().Tools.StatPlotting.DataSet);
    if (!m_data_dialog->load_file(path)) return false;
    m_name->clear(); // the file names the set
    set_values(m_data_dialog->points());
    m_source = QFileInfo(path).fileName();
    show_summary();
    return true;
}

bool StatPlotDialog::save_data(const QString& path) {
    m_data_dialog->set_points(m_document.document().Tools.StatPlotting.DataSet);
    return m_data_dialog->save_file(path);
}

void StatPlotDialog::clear_data() {
    m_document.document().Tools.StatPlotting.DataSet = graph::StrDataPnts();
    m_name->clear();
    m_source.clear();
    m_frequencies->show(nullptr, m_precision->value()); // before the rows it shows go
    m_distribution.reset();
    m_document.parser().set_vars_saved(false);
    values_changed();
}

bool StatPlotDialog::compute() {
    if (m_busy) return false;
    store_inputs();
    m_busy = true;
    m_frequencies->show(nullptr, m_precision->value()); // before the rows it shows go
    m_distribution.reset();
    std::string error;
    // What is binned is each value as the table shows it.
    auto distribution = desktop::frequency_distribution(m_document.parser(), m_values->shown(), choice(), error);
    m_busy = false;
    if (!distribution) {
        tell(text_of(error));
        return false;
    }
    m_distribution = std::move(distribution);
    m_frequencies->show(&*m_distribution, m_precision->value());
    show_summary();
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("QClick.wav"));
    if (m_auto_graph->isChecked()) graph_answer();
    return true;
}

bool StatPlotDialog::graph_answer() {
    if (!m_distribution) {
        tell(tr("Compute the distribution first: the graph shows its intervals."));
        return false;
    }
    document::Document& document = m_document.document();
    const graph::StrDataPnts& data = document.Tools.StatPlotting.DataSet;
    const std::string name = desktop::frequency_graph_name(data);
    const int index = desktop::graph_frequencies(document, data, *m_distribution, m_pareto->isChecked(),
                                                 m_document.hub().GetUniqueGraphName(name),
                                                 m_document.services().settings);
    m_document.parser().set_vars_saved(false);
    return m_document.show_graph(index);
}

QString StatPlotDialog::table_text(QChar separator) const {
    if (!m_distribution) return {};
    return text_of(desktop::frequency_table_text(*m_distribution, m_precision->value(), std::string(1, separator.toLatin1())));
}

bool StatPlotDialog::export_csv(const QString& path, QString* error) {
    if (!m_distribution) {
        if (error) *error = tr("Compute the distribution first.");
        return false;
    }
    return write_table_csv(path, table_text(QLatin1Char('\t')), error);
}

QString StatPlotDialog::copy_text(bool with_values) const {
    QString text;
    if (with_values)
        for (const std::string& value : m_values->shown()) text += text_of(value) + QLatin1Char('\n');
    if (m_distribution)
        for (const functions::Frequency& f : *m_distribution)
            text += text_of(desktop::interval_text(f, m_precision->value())) + QStringLiteral("    ") +
                    QString::number(f.count) + QLatin1Char('\n');
    return text;
}

} // namespace quorvex::gui
