#include "matrix_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"

#include "engine/parser.h"
#include "store/ini_file.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStringListModel>
#include <QTableView>
#include <QVBoxLayout>

#include <cstdlib>

namespace quorvex::gui {

using numerics::QvxMatrix;

namespace {

const QString k_caption = QStringLiteral("Matrix Utility");

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// The value of a cell that holds a plain number; none for an expression.
std::optional<long double> plain_number(const std::string& text) {
    if (text.empty()) return std::nullopt;
    char* end = nullptr;
    const long double value = std::strtold(text.c_str(), &end);
    if (end == text.c_str()) return std::nullopt;
    while (*end == ' ') ++end;
    return *end == '\0' ? std::optional<long double>(value) : std::nullopt;
}

} // namespace

// The cells of one matrix of the list for the grid: "R1".. by "C1".., its used size. A cell shows
// its number at the dialog's precision (or as a fraction) and edits as the text it holds, which
// may be any expression.
class MatrixCellModel : public QAbstractTableModel {
public:
    MatrixCellModel(QObject* parent, std::vector<QvxMatrix>& matrices, std::function<void()> changed)
        : QAbstractTableModel(parent), m_matrices(matrices), m_changed(std::move(changed)) {}

    void show(int index) {
        beginResetModel();
        m_index = index;
        endResetModel();
    }
    void set_format(int precision, bool fractions) {
        beginResetModel();
        m_precision = precision;
        m_fractions = fractions;
        endResetModel();
    }
    QvxMatrix* matrix() const {
        return m_index >= 0 && m_index < static_cast<int>(m_matrices.size()) ? &m_matrices[static_cast<size_t>(m_index)]
                                                                              : nullptr;
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !matrix() ? 0 : matrix()->NumRows();
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() || !matrix() ? 0 : matrix()->NumCols();
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
    }
    QVariant data(const QModelIndex& index, int role) const override {
        const QvxMatrix* shown = matrix();
        if (!shown || !index.isValid()) return {};
        const QvxMatrix::Cell& cell = shown->GetStrValue(index.row(), index.column());
        if (role == Qt::EditRole) return cell ? text_of(*cell) : QString();
        if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
        if (role != Qt::DisplayRole || !cell) return {};
        if (const std::optional<long double> value = plain_number(*cell))
            return text_of(desktop::matrix_value_text(*value, m_precision, m_fractions));
        return text_of(*cell);
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        QvxMatrix* edited = matrix();
        if (!edited || role != Qt::EditRole) return false;
        const QString text = value.toString().trimmed();
        edited->SetStrValue(index.row(), index.column(),
                            text.isEmpty() ? std::nullopt : std::optional<std::string>(text.toStdString()));
        Q_EMIT dataChanged(index, index);
        m_changed();
        return true;
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return (orientation == Qt::Horizontal ? QStringLiteral("C%1") : QStringLiteral("R%1")).arg(section + 1);
    }

private:
    std::vector<QvxMatrix>& m_matrices;
    std::function<void()> m_changed;
    int m_index = -1;
    int m_precision = 9;
    bool m_fractions = false;
};

MatrixDialog::MatrixDialog(DocumentWindow& document, QWidget* parent)
    : ToolDialog(document, k_caption, parent),
      m_document(document),
      m_list(new QListView(this)),
      m_names(new QStringListModel(this)),
      m_grid(new QTableView(this)),
      m_cells(new MatrixCellModel(this, document.document().Matrices,
                                  [&document] { document.parser().set_vars_saved(false); })),
      m_name(new QLineEdit(this)),
      m_rows(new QSpinBox(this)),
      m_columns(new QSpinBox(this)),
      m_math_mode(new QRadioButton(tr("Matrix Ma&th"), this)),
      m_solver_mode(new QRadioButton(QStringLiteral("&Linear Solver"), this)),
      m_modes(new QStackedWidget(this)),
      m_first(new QComboBox(this)),
      m_operation(new QComboBox(this)),
      m_second(new QComboBox(this)),
      m_scalar(new QLineEdit(this)),
      m_matrix_a(new QComboBox(this)),
      m_vector_b(new QComboBox(this)),
      m_answer(new QLineEdit(this)),
      m_precision(new QSpinBox(this)),
      m_fractions(new QCheckBox(QStringLiteral("&Fractional Format"), this)) {
    setObjectName(QStringLiteral("matrixDialog"));
    store::IniFile* settings = m_document.services().settings;
    m_precision->setRange(1, 14);
    m_precision->setValue(settings ? settings->GetInt("OPTIONS", "MatricesPrecision", 9) : 9);
    m_fractions->setChecked(settings && settings->GetInt("OPTIONS", "MatricesFractions", 0) != 0);
    m_cells->set_format(m_precision->value(), m_fractions->isChecked());
    for (QSpinBox* size : {m_rows, m_columns}) {
        size->setRange(1, QvxMatrix::MaxSize);
        size->setValue(3);
    }
    for (int i = 0; i < desktop::k_matrix_operation_count; ++i)
        m_operation->addItem(QString::fromLatin1(desktop::matrix_operation_caption(static_cast<desktop::MatrixOperation>(i))));
    m_answer->setReadOnly(true);

    // The list of matrices.
    auto* list_box = new QGroupBox(tr("Matrices"), this);
    m_list->setModel(m_names);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    auto* add = new QPushButton(tr("&New"), this);
    auto* remove = new QPushButton(tr("Remo&ve"), this);
    auto* copy_matrix = new QPushButton(tr("Copy Matri&x"), this);
    auto* list_layout = new QVBoxLayout(list_box);
    list_layout->addWidget(m_list, 1);
    auto* list_buttons = new QHBoxLayout;
    list_buttons->addWidget(add);
    list_buttons->addWidget(remove);
    list_layout->addLayout(list_buttons);
    list_layout->addWidget(copy_matrix);

    // The editor of the selected matrix.
    auto* editor_box = new QGroupBox(tr("Edit"), this);
    auto* size_form = new QFormLayout;
    size_form->addRow(tr("Na&me:"), m_name);
    auto* sizes = new QHBoxLayout;
    auto* rows_label = new QLabel(tr("&Rows:"), this);
    rows_label->setBuddy(m_rows);
    auto* columns_label = new QLabel(tr("Col&umns:"), this);
    columns_label->setBuddy(m_columns);
    sizes->addWidget(rows_label);
    sizes->addWidget(m_rows);
    sizes->addSpacing(12);
    sizes->addWidget(columns_label);
    sizes->addWidget(m_columns);
    sizes->addStretch(1);
    size_form->addRow(sizes);
    m_grid->setModel(m_cells);
    m_grid->horizontalHeader()->setDefaultSectionSize(fontMetrics().horizontalAdvance(QStringLiteral("-0.000000000")));
    m_grid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                  QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    auto* editor_layout = new QVBoxLayout(editor_box);
    editor_layout->addLayout(size_form);
    editor_layout->addWidget(m_grid, 1);

    // The operations.
    auto* math_page = new QWidget(this);
    auto* math_form = new QFormLayout(math_page);
    math_form->setContentsMargins(0, 0, 0, 0);
    math_form->addRow(tr("F&irst matrix:"), m_first);
    math_form->addRow(tr("O&peration:"), m_operation);
    math_form->addRow(tr("&Second matrix:"), m_second);
    math_form->addRow(tr("Scalar Valu&e:"), m_scalar);
    auto* solver_page = new QWidget(this);
    auto* solver_form = new QFormLayout(solver_page);
    solver_form->setContentsMargins(0, 0, 0, 0);
    solver_form->addRow(tr("Matrix &A:"), m_matrix_a);
    solver_form->addRow(tr("Vector &B:"), m_vector_b);
    m_modes->addWidget(math_page);
    m_modes->addWidget(solver_page);
    m_math_mode->setChecked(true);

    auto* compute_button = new QPushButton(tr("&Compute"), this);
    compute_button->setDefault(true);
    auto* copy_answer = new QPushButton(tr("Cop&y Answer"), this);
    auto* work_box = new QGroupBox(tr("Compute"), this);
    auto* work_layout = new QVBoxLayout(work_box);
    auto* mode_row = new QHBoxLayout;
    mode_row->addWidget(m_math_mode);
    mode_row->addWidget(m_solver_mode);
    mode_row->addStretch(1);
    work_layout->addLayout(mode_row);
    work_layout->addWidget(m_modes);
    auto* answer_form = new QFormLayout;
    answer_form->addRow(tr("Ans&wer:"), m_answer);
    answer_form->addRow(tr("Precisi&on:"), m_precision);
    answer_form->addRow(m_fractions);
    work_layout->addLayout(answer_form);
    auto* work_buttons = new QHBoxLayout;
    work_buttons->addWidget(compute_button);
    work_buttons->addWidget(copy_answer);
    work_buttons->addStretch(1);
    work_layout->addLayout(work_buttons);
    work_layout->addStretch(1);

    auto* columns = new QHBoxLayout;
    columns->addWidget(list_box, 2);
    columns->addWidget(editor_box, 5);
    columns->addWidget(work_box, 3);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(close);

    connect(add, &QPushButton::clicked, this, &MatrixDialog::add_matrix);
    connect(remove, &QPushButton::clicked, this, [this] { remove_matrix(); });
    connect(copy_matrix, &QPushButton::clicked, this, [this] {
        if (m_selected < 0) {
            tell(tr("Select a matrix to copy."));
            return;
        }
        QApplication::clipboard()->setText(matrix_text());
    });
    connect(copy_answer, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(m_answer->text()); });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { select(current.isValid() ? current.row() : -1); });
    connect(m_name, &QLineEdit::editingFinished, this, [this] {
        if (m_selected >= 0 && m_name->text() != text_of(matrices()[static_cast<size_t>(m_selected)].Name()))
            rename(m_name->text());
    });
    connect(m_rows, &QSpinBox::valueChanged, this, &MatrixDialog::resize_selected);
    connect(m_columns, &QSpinBox::valueChanged, this, &MatrixDialog::resize_selected);
    connect(m_solver_mode, &QRadioButton::toggled, this, [this](bool on) { m_modes->setCurrentIndex(on ? 1 : 0); });
    connect(m_operation, &QComboBox::currentIndexChanged, this, [this](int index) {
        const auto operation = static_cast<desktop::MatrixOperation>(index);
        m_second->setEnabled(desktop::takes_second_matrix(operation));
        m_scalar->setEnabled(operation == desktop::MatrixOperation::Scalar);
    });
    m_operation->setCurrentIndex(0);
    m_scalar->setEnabled(false);
    connect(compute_button, &QPushButton::clicked, this, [this] { compute(); });
    connect(m_precision, &QSpinBox::valueChanged, this, [this](int digits) {
        m_cells->set_format(digits, m_fractions->isChecked());
        if (store::IniFile* kept = m_document.services().settings) {
            kept->WriteString("OPTIONS", "MatricesPrecision", std::to_string(digits));
            kept->Save();
        }
    });
    connect(m_fractions, &QCheckBox::toggled, this, [this](bool on) {
        m_cells->set_format(m_precision->value(), on);
        if (store::IniFile* kept = m_document.services().settings) {
            kept->WriteString("OPTIONS", "MatricesFractions", on ? "1" : "0");
            kept->Save();
        }
        if (!on || m_selected < 0) return;
        const QvxMatrix& shown = matrices()[static_cast<size_t>(m_selected)];
        for (int i = 0; i < shown.NumRows(); ++i)
            for (int j = 0; j < shown.NumCols(); ++j) {
                bool fits = true;
                if (const QvxMatrix::Cell& cell = shown.GetStrValue(i, j))
                    if (const std::optional<long double> value = plain_number(*cell))
                        desktop::matrix_value_text(*value, m_precision->value(), true, &fits);
                if (!fits) {
                    tell(tr("Values with a fractional part below 0.0000000005 can not be shown as fractions: they "
                            "are shown as decimals."));
                    return;
                }
            }
    });
    refresh_list();
    select(matrices().empty() ? -1 : 0);
    resize(1000, 480);
}

MatrixDialog::~MatrixDialog() = default;

std::vector<QvxMatrix>& MatrixDialog::matrices() const { return m_document.document().Matrices; }

void MatrixDialog::showEvent(QShowEvent* event) {
    ToolDialog::showEvent(event);
    if (!m_advice_given) show_precision_advice();
}

void MatrixDialog::show_precision_advice() {
    m_advice_given = true;
    store::IniFile* settings = m_document.services().settings;
    if (settings && settings->GetInt("OPTIONS", "ShowMatrixPrecisionDialog", 1) == 0) return;
    const QString title = QStringLiteral("Matrix Utility Precision Warning");
    const QString text =
        tr("The matrix utility computes in decimal arithmetic at 14 significant digits. Inverses, determinants and "
           "solutions of nearly singular matrices can lose many of those digits: check such answers, for example by "
           "multiplying back, and show them at a lower precision.");
    if (QStringList* collected = m_document.services().collected_messages) {
        *collected << title + QStringLiteral(": ") + text;
        return;
    }
    auto* box = new QMessageBox(QMessageBox::Information, title, text, QMessageBox::Ok, this);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setCheckBox(new QCheckBox(QStringLiteral("Do not show this dialog again"), box));
    connect(box, &QMessageBox::finished, this, [this, box] {
        store::IniFile* kept = m_document.services().settings;
        if (kept && box->checkBox()->isChecked()) {
            kept->WriteString("OPTIONS", "ShowMatrixPrecisionDialog", "0");
            kept->Save();
        }
    });
    box->open();
}

void MatrixDialog::refresh_list() {
    QStringList names;
    for (const QvxMatrix& matrix : matrices()) names << text_of(matrix.Name());
    const QString first = m_first->currentText(), second = m_second->currentText();
    const QString a = m_matrix_a->currentText(), b = m_vector_b->currentText();
    m_names->setStringList(names);
    for (QComboBox* combo : {m_first, m_second, m_matrix_a}) {
        combo->clear();
        combo->addItems(names);
    }
    m_vector_b->clear();
    for (const QvxMatrix& matrix : matrices())
        if (matrix.NumCols() == 1) m_vector_b->addItem(text_of(matrix.Name()));
    // The choices stay where the names still are.
    m_first->setCurrentIndex(m_first->findText(first));
    m_second->setCurrentIndex(m_second->findText(second));
    m_matrix_a->setCurrentIndex(m_matrix_a->findText(a));
    m_vector_b->setCurrentIndex(m_vector_b->findText(b));
    if (m_selected >= 0 && m_selected < names.size()) m_list->setCurrentIndex(m_names->index(m_selected));
}

void MatrixDialog::select(int index) {
    if (index >= static_cast<int>(matrices().size())) index = -1;
    m_selected = index;
    m_cells->show(index);
    const bool any = index >= 0;
    m_name->setEnabled(any);
    m_rows->setEnabled(any);
    m_columns->setEnabled(any);
    if (!any) {
        m_name->clear();
        return;
    }
    const QvxMatrix& matrix = matrices()[static_cast<size_t>(index)];
    m_name->setText(text_of(matrix.Name()));
    for (QSpinBox* size : {m_rows, m_columns}) size->blockSignals(true);
    m_rows->setValue(matrix.NumRows());
    m_columns->setValue(matrix.NumCols());
    for (QSpinBox* size : {m_rows, m_columns}) size->blockSignals(false);
    if (m_list->currentIndex().row() != index) m_list->setCurrentIndex(m_names->index(index));
}

void MatrixDialog::add_matrix() {
    const bool vector = m_columns->value() == 1;
    matrices().emplace_back(desktop::default_matrix_name(matrices(), vector), m_rows->value(), m_columns->value());
    m_document.parser().set_vars_saved(false);
    refresh_list();
    select(static_cast<int>(matrices().size()) - 1);
    m_grid->setFocus();
    m_grid->setCurrentIndex(m_cells->index(0, 0));
}

bool MatrixDialog::remove_matrix() {
    if (m_selected < 0) {
        tell(tr("Select the matrix or vector to remove."));
        return false;
    }
    const QvxMatrix& matrix = matrices()[static_cast<size_t>(m_selected)];
    const QString question = (matrix.NumCols() == 1 ? tr("Remove the vector ' %1 '?") : tr("Remove the matrix ' %1 '?"))
                                 .arg(text_of(matrix.Name()));
    if (ask_user(m_document.services(), this, k_caption, question, QMessageBox::Yes | QMessageBox::No) !=
        QMessageBox::Yes)
        return false;
    matrices().erase(matrices().begin() + m_selected);
    m_document.parser().set_vars_saved(false);
    const int next = std::min(m_selected, static_cast<int>(matrices().size()) - 1);
    m_selected = -1;
    refresh_list();
    select(next);
    return true;
}

bool MatrixDialog::rename(const QString& name) {
    if (m_selected < 0) return false;
    QvxMatrix& matrix = matrices()[static_cast<size_t>(m_selected)];
    const std::string wanted = name.trimmed().toStdString();
    if (wanted.empty() || desktop::find_matrix(matrices(), wanted) >= 0) {
        tell(wanted.empty() ? tr("A matrix needs a name.")
                            : tr("The name ' %1 ' is in use: every matrix and vector needs a name of its own.")
                                  .arg(text_of(wanted)));
        m_name->setText(text_of(matrix.Name()));
        return false;
    }
    matrix.SetName(wanted);
    m_document.parser().set_vars_saved(false);
    refresh_list();
    return true;
}

void MatrixDialog::resize_selected() {
    if (m_selected < 0) return;
    QvxMatrix& matrix = matrices()[static_cast<size_t>(m_selected)];
    const bool was_vector = matrix.NumCols() == 1;
    matrix.SetSize(m_rows->value(), m_columns->value());
    const bool is_vector = matrix.NumCols() == 1;
    // A default name follows the shape: Matrix to Vector and back.
    if (was_vector != is_vector && desktop::is_default_matrix_name(matrix.Name())) {
        matrix.SetName(desktop::default_matrix_name(matrices(), is_vector));
        m_name->setText(text_of(matrix.Name()));
    }
    m_document.parser().set_vars_saved(false);
    m_cells->show(m_selected);
    refresh_list();
}

const QvxMatrix* MatrixDialog::chosen(const QComboBox* combo) const {
    const int index = desktop::find_matrix(matrices(), combo->currentText().toStdString());
    return index < 0 ? nullptr : &matrices()[static_cast<size_t>(index)];
}

void MatrixDialog::add_results(std::vector<QvxMatrix> results) {
    for (QvxMatrix& result : results) matrices().push_back(std::move(result));
    m_document.parser().set_vars_saved(false);
    refresh_list();
    select(static_cast<int>(matrices().size()) - 1);
}

bool MatrixDialog::compute() {
    if (matrices().empty()) {
        tell(tr("There are no matrices: add one with New and enter its values."));
        return false;
    }
    std::string error;
    engine::Parser& parser = m_document.parser();
    if (m_solver_mode->isChecked()) {
        const QvxMatrix* a = chosen(m_matrix_a);
        const QvxMatrix* b = chosen(m_vector_b);
        if (!a || !b) {
            tell(!a ? tr("Select Matrix A, the coefficients of the system.")
                    : tr("Select Vector B, the right-hand side of the system (a matrix of one column)."));
            return false;
        }
        std::optional<QvxMatrix> x = desktop::solve_linear_system(parser, matrices(), *a, *b, error);
        if (!x) {
            tell(text_of(error));
            return false;
        }
        m_answer->setText(text_of(x->Name()));
        add_results({std::move(*x)});
    } else {
        const auto operation = static_cast<desktop::MatrixOperation>(m_operation->currentIndex());
        const QvxMatrix* first = chosen(m_first);
        const QvxMatrix* second = desktop::takes_second_matrix(operation) ? chosen(m_second) : nullptr;
        if (!first) {
            tell(tr("Select the first matrix of the operation."));
            return false;
        }
        if (desktop::takes_second_matrix(operation) && !second) {
            tell(tr("Select the second matrix of the operation."));
            return false;
        }
        // The operands are copied: adding the results may move the list.
        const QvxMatrix a = *first;
        const std::optional<QvxMatrix> b = second ? std::optional<QvxMatrix>(*second) : std::nullopt;
        std::optional<desktop::MatrixAnswer> answer = desktop::run_matrix_operation(
            parser, matrices(), a, operation, b ? &*b : nullptr, m_scalar->text().toStdString(), error);
        if (!answer) {
            tell(text_of(error));
            return false;
        }
        if (answer->number) {
            m_answer->setText(text_of(answer->number_name) + QLatin1Char(' ') +
                              text_of(desktop::matrix_value_text(*answer->number, m_precision->value(),
                                                                 m_fractions->isChecked())));
        } else {
            m_answer->setText(text_of(answer->matrices.back().Name()));
            add_results(std::move(answer->matrices));
        }
    }
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("QClick.wav"));
    return true;
}

QString MatrixDialog::matrix_text() const {
    if (m_selected < 0) return {};
    std::string error;
    const std::optional<QvxMatrix> values =
        desktop::evaluate_matrix(m_document.parser(), matrices()[static_cast<size_t>(m_selected)], error);
    if (!values) return {};
    return text_of(desktop::matrix_clipboard_text(*values, m_precision->value(), m_fractions->isChecked()));
}

} // namespace quorvex::gui
