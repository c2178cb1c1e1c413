#include "curve_fitter_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/tools/data_points_dialog.h"
#include "gui/tools/table_csv.h"

#include "desktop/document_hub.h"
#include "engine/parser.h"
#include "engine/variable.h"
#include "store/ini_file.h"

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

#include <sstream>

namespace quorvex::gui {

namespace {

const QString k_caption = QStringLiteral("Curve Fitting Utility");
// Longer polynomials do not fit in one value of the document's file.
constexpr int k_longest_saved_polynomial = 4096;

QString text_of(const std::string& text) { return QString::fromStdString(text); }
QString fit_text(const char* text, const QString& first = {}, const QString& second = {}) {
    return text_of(desktop::fit_message(text, first.toStdString(), second.toStdString()));
}

// "Outlier Removal Threshold": 2 or 3 standard deviations; 0 when cancelled.
int ask_sigma(QWidget* parent) {
    QDialog dialog(parent);
    dialog.setWindowTitle(QStringLiteral("Outlier Removal Threshold"));
    auto* text = new QLabel(QObject::tr("Choose the number of standard deviations beyond which you would like to "
                                        "remove the potential outlying data points."),
                            &dialog);
    text->setWordWrap(true);
    auto* two = new QRadioButton(QStringLiteral("&2 Sigma"), &dialog);
    auto* three = new QRadioButton(QStringLiteral("&3 Sigma"), &dialog);
    two->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(text);
    layout->addWidget(two);
    layout->addWidget(three);
    layout->addWidget(buttons);
    if (dialog.exec() != QDialog::Accepted) return 0;
    return three->isChecked() ? 3 : 2;
}

} // namespace

// The fit's table for the view: x, y, F(x) and F(x)-y at the dialog's precision.
class CurveFitModel : public QAbstractTableModel {
public:
    using Format = std::function<QString(long double)>;
    CurveFitModel(QObject* parent, Format format) : QAbstractTableModel(parent), m_format(std::move(format)) {}

    void show(const desktop::CurveFit* fit) {
        beginResetModel();
        m_fit = fit;
        endResetModel();
    }
    void reformat() {
        if (rowCount() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 3));
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !m_fit ? 0 : static_cast<int>(m_fit->rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 4; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!m_fit || role != Qt::DisplayRole || index.row() >= rowCount()) return {};
        const desktop::CurveFitRow& row = m_fit->rows[static_cast<size_t>(index.row())];
        const long double values[] = {row.x, row.y, row.fitted, row.difference};
        return m_format(values[index.column()]);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole) return {};
        if (orientation == Qt::Vertical) return section + 1;
        static const char* const names[] = {"x", "y", "F(x)", "F(x)-y"};
        return QString::fromLatin1(names[section]);
    }

private:
    Format m_format;
    const desktop::CurveFit* m_fit = nullptr;
};

CurveFitterDialog::CurveFitterDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent),
      m_document(document),
      m_coefficients(new QSpinBox(this)),
      m_linear(new QCheckBox(tr("&Linear Regression"), this)),
      m_precision(new QSpinBox(this)),
      m_smooth(new QCheckBox(tr("S&mooth Graph"), this)),
      m_polynomial(new QLineEdit(this)),
      m_correlation(new QLineEdit(this)),
      m_determination(new QLineEdit(this)),
      m_solution(new QLabel(this)),
      m_view(new QTableView(this)),
      m_model(new CurveFitModel(this, [this](long double value) { return number_text(value); })),
      m_data_dialog(new DataPointsDialog(document.parser(), document.services(), k_caption, true, this)) {
    setObjectName(QStringLiteral("curveFitterDialog"));
    m_coefficients->setRange(2, 99);
    m_precision->setRange(1, 14);
    for (QLineEdit* field : {m_polynomial, m_correlation, m_determination}) field->setReadOnly(true);

    auto* coefficients = new QHBoxLayout;
    coefficients->addWidget(m_coefficients);
    coefficients->addWidget(m_linear);
    coefficients->addStretch(1);
    auto* precision = new QHBoxLayout;
    precision->addWidget(m_precision);
    precision->addWidget(m_smooth);
    precision->addStretch(1);
    auto* form = new QFormLayout;
    // A row whose field is a layout names its label's buddy itself.
    auto* coefficients_label = new QLabel(tr("&Number of coefficients:"), this);
    coefficients_label->setBuddy(m_coefficients);
    auto* precision_label = new QLabel(tr("P&recision:"), this);
    precision_label->setBuddy(m_precision);
    form->addRow(coefficients_label, coefficients);
    form->addRow(precision_label, precision);
    form->addRow(tr("F(x) = &Best Fit Polynomial:"), m_polynomial);
    form->addRow(tr("Correlation Coe&fficient:"), m_correlation);
    form->addRow(tr("Coefficient of De&termination:"), m_determination);

    auto* data_button = new QPushButton(tr("&Data Points..."), this);
    auto* load_button = new QPushButton(tr("Lo&ad Data File..."), this);
    auto* save_button = new QPushButton(tr("Sa&ve Data File..."), this);
    auto* clear_button = new QPushButton(tr("Cl&ear"), this);
    auto* compute_button = new QPushButton(tr("&Compute"), this);
    compute_button->setDefault(true);
    auto* outliers_button = new QPushButton(tr("Remove O&utliers..."), this);
    auto* define_button = new QPushButton(tr("Def&ine Function"), this);
    auto* graph_button = new QPushButton(tr("&Graph"), this);
    auto* copy_button = new QPushButton(tr("C&opy"), this);
    auto* export_button = new QPushButton(tr("E&xport CSV..."), this);
    auto* buttons = new QGridLayout;
    const QPushButton* order[] = {compute_button, outliers_button, define_button, graph_button, copy_button,
                                  data_button,    load_button,     save_button,   export_button, clear_button};
    for (int i = 0; i < 10; ++i) buttons->addWidget(const_cast<QPushButton*>(order[i]), i / 5, i % 5);

    m_view->setModel(m_model);
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_view->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(m_solution);
    layout->addWidget(m_view, 1);
    layout->addWidget(close);

    connect(m_coefficients, &QSpinBox::valueChanged, this, [this](int count) {
        m_linear->setChecked(count == 2);
        m_coefficients_changed = true;
        if (!m_loading) store_inputs();
    });
    connect(m_smooth, &QCheckBox::toggled, this, [this] {
        if (!m_loading) store_inputs();
    });
    connect(m_linear, &QCheckBox::toggled, this, [this](bool on) {
        if (on) m_coefficients->setValue(2);
        else if (m_coefficients->value() == 2) m_coefficients->setValue(3);
    });
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        m_model->reformat();
        if (m_fit) show_fit();
        if (!m_loading) store_inputs();
        if (store::IniFile* settings = m_document.services().settings) {
            settings->WriteString("OPTIONS", "CurveFittingPrecision", std::to_string(digits));
            settings->Save();
        }
    });
    connect(compute_button, &QPushButton::clicked, this, [this] { compute(); });
    connect(outliers_button, &QPushButton::clicked, this, [this] { remove_outliers(); });
    connect(define_button, &QPushButton::clicked, this, [this] { define_function(); });
    connect(graph_button, &QPushButton::clicked, this, [this] { graph_answer(); });
    connect(copy_button, &QPushButton::clicked, this, [this] { copy_answer(); });
    connect(data_button, &QPushButton::clicked, this, [this] { edit_data(); });
    connect(clear_button, &QPushButton::clicked, this, [this] { clear(); });
    connect(load_button, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Open Data Point File"), QString(), DataPointsDialog::file_filter());
        if (!path.isEmpty()) load_data_file(path);
    });
    connect(save_button, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, tr("Save Data Point File"), QString(), DataPointsDialog::file_filter());
        if (!path.isEmpty()) save_data_file(path);
    });
    connect(export_button, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, tr("Export CSV"), QString(), tr("CSV files (*.csv)"));
        QString error;
        if (!path.isEmpty() && !export_csv(path, &error)) tell(error);
    });
    choose_sigma = [this] { return ask_sigma(this); };
    load_inputs();
    resize(620, 600);
}

CurveFitterDialog::~CurveFitterDialog() = default;

QString CurveFitterDialog::number_text(long double value) const {
    std::ostringstream out;
    engine::Variable::StreamVariable({static_cast<double>(value), 0}, out, m_precision->value());
    return text_of(out.str());
}

void CurveFitterDialog::load_inputs() {
    const document::CurveFittingParameters& kept = m_document.document().Tools.CurveFitting;
    m_loading = true;
    m_coefficients->setValue(std::clamp(kept.CurveFittingNumCoefficients, 2, 99));
    m_linear->setChecked(m_coefficients->value() == 2);
    const int precision = m_document.services().settings
                              ? m_document.services().settings->GetInt("OPTIONS", "CurveFittingPrecision",
                                                                        kept.CurveFittingPrecision)
                              : kept.CurveFittingPrecision;
    m_precision->setValue(std::clamp(precision, 1, 14));
    m_smooth->setChecked(kept.CurveFittingSmoothGraph != 0);
    m_polynomial->setText(text_of(kept.CurveFittingPolynomial));
    m_correlation->setText(text_of(kept.CurveFittingCorrCoeff));
    m_data = kept.DataSet;
    m_coefficients_changed = false;
    m_loading = false;
    m_solution->setText(m_data.GetNumXYZPoints() > 0 ? tr("%1 data points.").arg(m_data.GetNumXYZPoints())
                                                     : tr("Enter the data points, paste or load them from a file."));
}

void CurveFitterDialog::store_inputs() {
    document::CurveFittingParameters& kept = m_document.document().Tools.CurveFitting;
    kept.CurveFittingNumCoefficients = m_coefficients->value();
    kept.CurveFittingPrecision = m_precision->value();
    kept.CurveFittingSmoothGraph = m_smooth->isChecked() ? 1 : 0;
    const QString polynomial = m_polynomial->text();
    kept.CurveFittingPolynomial = polynomial.size() <= k_longest_saved_polynomial ? polynomial.toStdString() : "";
    kept.CurveFittingCorrCoeff = m_correlation->text().toStdString();
    kept.DataSet = m_data;
    // A data set is kept with the document only under a name.
    if (kept.DataSet.Name.empty() && kept.DataSet.GetNumXYZPoints() > 0) kept.DataSet.Name = "2dDataSet";
    m_document.parser().set_vars_saved(false);
}

void CurveFitterDialog::set_data(const graph::StrDataPnts& data) {
    m_data = data;
    // A set is known by a name: the file's, or this one for points typed or pasted.
    if (m_data.Name.empty() && m_data.GetNumXYZPoints() > 0) m_data.Name = "2dDataSet";
    m_outliers_removed = false;
    clear_results();
    m_solution->setText(tr("%1 data points.").arg(m_data.GetNumXYZPoints()));
    store_inputs();
}

void CurveFitterDialog::edit_data() {
    m_data_dialog->set_points(m_data);
    if (m_data_dialog->exec() == QDialog::Accepted) set_data(m_data_dialog->points());
}

bool CurveFitterDialog::load_data_file(const QString& path) {
    m_data_dialog->set_points(m_data);
    if (!m_data_dialog->load_file(path)) return false;
    set_data(m_data_dialog->points());
    m_source = QFileInfo(path).fileName();
    return true;
}

bool CurveFitterDialog::save_data_file(const QString& path) {
    m_data_dialog->set_points(m_data);
    return m_data_dialog->save_file(path);
}

void CurveFitterDialog::clear_results() {
    m_fit.reset();
    m_model->show(nullptr);
    m_polynomial->clear();
    m_correlation->clear();
    m_determination->clear();
}

void CurveFitterDialog::show_fit() {
    m_correlation->setText(number_text(m_fit->correlation));
    m_determination->setText(number_text(m_fit->determination));
}

bool CurveFitterDialog::compute() {
    if (m_busy) return false;
    m_busy = true;
    std::string error;
    std::optional<desktop::CurveFit> fit;
    {
        ProgressHost host(this, k_caption);
        host.set_progress("Computing polynomial and evaluating at data points...", 0);
        fit = desktop::fit_curve(m_document.parser(), m_data, m_coefficients->value(), m_precision->value(), &host,
                                 error);
    }
    m_busy = false;
    Q_EMIT m_document.variablesChanged(); // x is back as it was
    if (!fit) {
        if (error.empty()) m_solution->setText(text_of(desktop::fit_texts::too_few));
        else tell(text_of(error));
        return false;
    }
    if (fit->stopped) {
        m_solution->setText(tr("Stopped: no fit."));
        return false;
    }
    clear_results();
    m_fit = std::move(fit);
    m_polynomial->setText(text_of(m_fit->polynomial));
    m_polynomial->setCursorPosition(0);
    show_fit();
    m_model->show(&*m_fit);
    const int count = static_cast<int>(m_fit->rows.size());
    m_solution->setText(m_source.isEmpty() ? QStringLiteral("Solution - Based on %1 points").arg(count)
                                           : QStringLiteral("Solution - Based on %1 points from %2").arg(count).arg(m_source));
    m_coefficients_changed = false;
    m_outliers_removed = false;
    store_inputs();
    if (m_fit->zero_terms) tell(text_of(desktop::fit_texts::zero_terms));
    if (m_fit->polynomial.size() > static_cast<size_t>(k_longest_saved_polynomial))
        tell(text_of(desktop::fit_texts::too_long));
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("QClick.wav"));
    return true;
}

bool CurveFitterDialog::remove_outliers() {
    if (m_outliers_removed) {
        tell(text_of(desktop::fit_texts::already_removed));
        return false;
    }
    if (!m_fit || static_cast<int>(m_fit->rows.size()) != m_data.GetNumXYZPoints()) {
        tell(text_of(desktop::fit_texts::no_fit));
        return false;
    }
    const int sigma = choose_sigma();
    if (sigma != 2 && sigma != 3) return false;
    const std::vector<int> found = desktop::outlier_points(m_fit->rows, sigma);
    const bool few = m_fit->rows.size() < 30;
    const Services& services = m_document.services();
    if (found.empty()) {
        tell(fit_text(few ? desktop::fit_texts::no_outliers_few : desktop::fit_texts::no_outliers,
                      QString::number(sigma)));
        return false;
    }
    const int answer = ask_user(services, this, k_caption,
                                fit_text(few ? desktop::fit_texts::remove_outliers_few : desktop::fit_texts::remove_outliers,
                                         QString::number(found.size()), QString::number(sigma)),
                                QMessageBox::Ok | QMessageBox::Cancel);
    if (answer != QMessageBox::Ok && answer != QMessageBox::Yes) return false; // Yes: a scripted answer
    graph::StrDataPnts data = m_data;
    if (desktop::remove_points(data, found) != static_cast<int>(found.size())) {
        tell(text_of(desktop::fit_texts::outliers_changed));
        return false;
    }
    set_data(data);
    m_outliers_removed = true;
    tell(text_of(desktop::fit_texts::compute_again));
    return true;
}

bool CurveFitterDialog::define_function() {
    const std::string polynomial = m_polynomial->text().toStdString();
    if (polynomial.empty()) {
        tell(text_of(desktop::fit_texts::no_polynomial));
        return false;
    }
    document::CurveFittingParameters& kept = m_document.document().Tools.CurveFitting;
    engine::Parser& parser = m_document.parser();
    std::string name = desktop::free_polynomial_name(parser);
    if (!kept.CurveFittingFuncName.empty() && parser.find_function(kept.CurveFittingFuncName.c_str()) >= 0) {
        const int answer = ask_user(m_document.services(), this, k_caption,
                                    fit_text(desktop::fit_texts::redefine, text_of(kept.CurveFittingFuncName)),
                                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        if (answer == QMessageBox::Cancel) return false;
        if (answer == QMessageBox::Yes) name = kept.CurveFittingFuncName;
    }
    std::string error;
    if (!desktop::define_polynomial(parser, name, polynomial, error)) {
        tell(text_of(error));
        return false;
    }
    kept.CurveFittingFuncName = name;
    parser.set_vars_saved(false);
    Q_EMIT m_document.functionsChanged();
    tell(fit_text(desktop::fit_texts::defined, text_of(name)));
    return true;
}

bool CurveFitterDialog::graph_answer() {
    if (m_coefficients_changed && m_fit &&
        ask_user(m_document.services(), this, k_caption, text_of(desktop::fit_texts::recompute),
                 QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes)
        compute();
    if (!m_fit || m_fit->rows.empty()) {
        tell(text_of(desktop::fit_texts::no_fit));
        return false;
    }
    const std::vector<long double> x = desktop::graph_x(m_fit->rows, m_smooth->isChecked());
    std::string error;
    std::optional<std::vector<long double>> y;
    m_busy = true;
    {
        ProgressHost host(this, k_caption);
        host.set_progress("Evaluating polynomial and evaluating at extended data points...", 0);
        y = desktop::polynomial_values(m_document.parser(), m_fit->polynomial, x, &host, error);
    }
    m_busy = false;
    if (!y) {
        if (!error.empty()) tell(text_of(error));
        return false;
    }
    const std::string name = m_data.Name.empty() ? "2d Data Set" : m_data.Name;
    document::DocumentGraph graph;
    graph::GraphData& data = graph.Data;
    data.SetUserDefaults(m_document.services().settings);
    data.Name = m_document.hub().GetUniqueGraphName("Best Fit Polynomial for: " + name);
    graph::StrDataPnts points = m_data;
    points.SetName(name.c_str());
    data.DataSets.push_back(std::move(points));
    graph::StrDataPnts curve;
    curve.SetName("Polynomial");
    for (size_t i = 0; i < x.size(); ++i) {
        curve.PutXDataPoint(number_text(x[i]).toStdString().c_str(), static_cast<int>(i));
        std::ostringstream out;
        engine::Variable::StreamVariable({static_cast<double>((*y)[i]), 0}, out, 14);
        curve.PutYDataPoint(out.str().c_str(), static_cast<int>(i));
    }
    data.DataSets.push_back(std::move(curve));
    data.SetHeader(("Best Fit Polynomial for: " + name).c_str(), true);
    data.SetFooter((name + " vs. Polynomial").c_str(), true);
    data.SetYAxisTitle((name + " vs. Polynomial").c_str(), true);
    data.SetXAxisTitle("x", true);
    m_document.document().Graphs.push_back(std::move(graph));
    m_document.parser().set_vars_saved(false);
    return m_document.show_graph(static_cast<int>(m_document.document().Graphs.size()) - 1);
}

QString CurveFitterDialog::table_text(QChar separator) const {
    if (!m_fit) return {};
    QString text;
    for (int c = 0; c < 4; ++c)
        text += m_model->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString() + (c < 3 ? separator : QChar('\n'));
    for (int r = 0; r < m_model->rowCount(); ++r)
        for (int c = 0; c < 4; ++c)
            text += m_model->data(m_model->index(r, c), Qt::DisplayRole).toString() + (c < 3 ? separator : QChar('\n'));
    return text;
}

void CurveFitterDialog::copy_answer() {
    if (!m_fit) {
        tell(text_of(desktop::fit_texts::no_fit));
        return;
    }
    QString text = QStringLiteral("F(x) = ") + text_of(m_fit->polynomial) + QLatin1Char('\n');
    if (ask_user(m_document.services(), this, k_caption, text_of(desktop::fit_texts::copy_table),
                 QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes)
        for (int r = 0; r < m_model->rowCount(); ++r) {
            const auto cell = [&](int c) { return m_model->data(m_model->index(r, c), Qt::DisplayRole).toString(); };
            text += QStringLiteral("   x = %1   y = %2   F(x) = %3   F(x)-y = %4\n")
                        .arg(cell(0), cell(1), cell(2), cell(3));
        }
    QApplication::clipboard()->setText(text);
    m_document.insert_into_editor(text);
}

void CurveFitterDialog::clear() {
    if (ask_user(m_document.services(), this, k_caption, text_of(desktop::fit_texts::clear),
                 QMessageBox::Yes | QMessageBox::No) != QMessageBox::Yes)
        return;
    m_source.clear();
    set_data({});
    m_solution->clear();
}

bool CurveFitterDialog::export_csv(const QString& path, QString* error) {
    if (!m_fit) {
        if (error) *error = text_of(desktop::fit_texts::no_fit);
        return false;
    }
    return write_table_csv(path, table_text(QLatin1Char('\t')), error);
}

} // namespace quorvex::gui
