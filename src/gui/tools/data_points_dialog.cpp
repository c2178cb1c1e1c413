#include "data_points_dialog.h"

#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"

#include "engine/parser.h"
#include "graph/data_columns.h"
#include "store/atomic_write.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include <cmath>

namespace quorvex::gui {

namespace {

QString text_of(const std::string& text) { return QString::fromStdString(text); }

} // namespace

DataPointsModel::DataPointsModel(QObject* parent, graph::StrDataPnts& points, bool with_y)
    : QAbstractTableModel(parent), m_points(points), m_with_y(with_y) {}

void DataPointsModel::reload() {
    beginResetModel();
    endResetModel();
}

int DataPointsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_points.GetMaxXYZPoint() + 2;
}

int DataPointsModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : (m_with_y ? 2 : 1); }

QVariant DataPointsModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
    const std::string* text =
        index.column() == 0 ? m_points.GetXDataPoint(index.row()) : m_points.GetYDataPoint(index.row());
    return text ? text_of(*text) : QString();
}

bool DataPointsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid()) return false;
    const QString text = value.toString().trimmed();
    const std::string typed = text.toStdString();
    const int rows = rowCount();
    if (index.column() == 0)
        m_points.PutXDataPoint(text.isEmpty() ? nullptr : typed.c_str(), index.row());
    else
        m_points.PutYDataPoint(text.isEmpty() ? nullptr : typed.c_str(), index.row());
    if (rowCount() != rows) {
        reload(); // a point added or the last one emptied
    } else {
        Q_EMIT dataChanged(index, index);
    }
    return true;
}

Qt::ItemFlags DataPointsModel::flags(const QModelIndex& index) const {
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

QVariant DataPointsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    return section == 0 ? QStringLiteral("X Values") : QStringLiteral("Y Values");
}

DataPointsDialog::DataPointsDialog(engine::Parser& parser, const Services& services, QString owner_caption,
                                   bool with_y, QWidget* parent)
    : QDialog(parent),
      m_parser(parser),
      m_services(services),
      m_owner_caption(std::move(owner_caption)),
      m_with_y(with_y),
      m_scroll(new QScrollBar(Qt::Vertical, this)),
      m_count(new QLabel(this)),
      m_grid(new QTableView(this)),
      m_model(new DataPointsModel(this, m_points, with_y)) {
    setObjectName(QStringLiteral("dataPointsDialog"));
    setWindowTitle(QStringLiteral("Data Points"));

    auto* rows = new QGridLayout;
    rows->addWidget(new QLabel(tr("X Values"), this), 0, 1);
    if (m_with_y) rows->addWidget(new QLabel(tr("Y Values"), this), 0, 2);
    for (int r = 0; r < k_rows; ++r) {
        const auto at = static_cast<size_t>(r);
        m_labels[at] = new QLabel(this);
        m_x[at] = new QLineEdit(this);
        m_y[at] = new QLineEdit(this);
        rows->addWidget(m_labels[at], r + 1, 0);
        rows->addWidget(m_x[at], r + 1, 1);
        if (m_with_y) rows->addWidget(m_y[at], r + 1, 2);
        else m_y[at]->hide();
        for (QLineEdit* box : {m_x[at], m_y[at]}) {
            box->installEventFilter(this);
            connect(box, &QLineEdit::editingFinished, this, [this, box] { commit_box(box); });
        }
    }
    m_labels[0]->setText(tr("Pt 1")); // sized before the first show
    rows->addWidget(m_scroll, 1, 3, k_rows, 1);
    rows->setColumnStretch(1, 1);
    rows->setColumnStretch(2, 1);
    connect(m_scroll, &QScrollBar::valueChanged, this, [this](int top) {
        if (!m_showing) scroll_to(top);
    });

    auto* first = new QPushButton(tr("&First"), this);
    auto* last = new QPushButton(tr("&Last"), this);
    auto* insert = new QPushButton(tr("&Insert Point"), this);
    auto* remove = new QPushButton(tr("&Delete Point"), this);
    auto* clear = new QPushButton(tr("Clear &Points"), this);
    auto* load = new QPushButton(tr("L&oad..."), this);
    auto* save = new QPushButton(tr("&Save..."), this);
    auto* paste = new QPushButton(tr("P&aste Columns"), this);
    for (QPushButton* button : {first, last, insert, remove, clear, load, save, paste}) button->setAutoDefault(false);
    auto* moves = new QHBoxLayout;
    for (QPushButton* button : {first, last, insert, remove, clear}) moves->addWidget(button);
    auto* files = new QHBoxLayout;
    for (QPushButton* button : {load, save, paste}) files->addWidget(button);
    files->addStretch(1);
    files->addWidget(m_count);

    m_grid->setModel(m_model);
    m_grid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    auto* grid_box = new QGroupBox(tr("All &points"), this);
    auto* grid_layout = new QVBoxLayout(grid_box);
    grid_layout->addWidget(m_grid);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* left = new QVBoxLayout;
    left->addLayout(rows);
    left->addLayout(moves);
    left->addLayout(files);
    left->addStretch(1);
    auto* body = new QHBoxLayout;
    body->addLayout(left, 3);
    body->addWidget(grid_box, 2);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addWidget(buttons);

    connect(first, &QPushButton::clicked, this, &DataPointsDialog::show_first);
    connect(last, &QPushButton::clicked, this, &DataPointsDialog::show_last);
    connect(insert, &QPushButton::clicked, this, &DataPointsDialog::insert_point);
    connect(remove, &QPushButton::clicked, this, &DataPointsDialog::delete_point);
    connect(clear, &QPushButton::clicked, this, &DataPointsDialog::clear_points);
    connect(load, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Open Data Point File"), QString(), file_filter());
        if (!path.isEmpty()) load_file(path);
    });
    connect(save, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getSaveFileName(this, tr("Save Data Point File"), QString(), file_filter());
        if (!path.isEmpty()) save_file(path);
    });
    connect(paste, &QPushButton::clicked, this, [this] { paste_text(QApplication::clipboard()->text()); });
    // An edit in the grid shows in the five rows too.
    connect(m_model, &QAbstractItemModel::dataChanged, this, [this] { show_rows(); });
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] { show_rows(); });

    choose_column = [this](int columns) {
        bool ok = false;
        const int column = QInputDialog::getInt(this, QStringLiteral("Select Column Number"),
                                                tr("The file has %1 columns; X is the first. Which column holds Y?")
                                                    .arg(columns),
                                                2, 2, columns, 1, &ok);
        return ok ? column : 0;
    };
    show_rows();
    resize(760, 380);
}

QString DataPointsDialog::file_filter() { return QStringLiteral("Data files (*.dat *.txt *.csv);;All files (*)"); }

void DataPointsDialog::set_points(const graph::StrDataPnts& points) {
    m_points = points;
    m_top = 0;
    m_model->reload();
}

void DataPointsDialog::tell(const QString& text) {
    if (m_services.sounds) m_services.sounds->play(QStringLiteral("Error.wav"));
    if (m_services.collected_messages)
        *m_services.collected_messages << m_owner_caption + QStringLiteral(": ") + text;
    else
        QMessageBox::warning(this, m_owner_caption, text);
}

int DataPointsDialog::ask(const QString& text, int buttons) {
    return ask_user(m_services, this, m_owner_caption, text, buttons);
}

void DataPointsDialog::changed() { m_model->reload(); }

void DataPointsDialog::show_rows() {
    m_showing = true;
    const int shown_end = m_points.GetMaxXYZPoint() + 2; // one empty row for a new point
    m_scroll->setRange(0, std::max(0, shown_end - k_rows));
    m_scroll->setPageStep(k_rows);
    m_scroll->setValue(m_top);
    for (int r = 0; r < k_rows; ++r) {
        const auto at = static_cast<size_t>(r);
        const int point = m_top + r;
        m_labels[at]->setText(tr("Pt %1").arg(point + 1));
        const std::string* x = m_points.GetXDataPoint(point);
        const std::string* y = m_points.GetYDataPoint(point);
        m_x[at]->setText(x ? text_of(*x) : QString());
        m_y[at]->setText(y ? text_of(*y) : QString());
    }
    m_count->setText(QStringLiteral("Number Of Points : %1").arg(m_points.GetNumXYZPoints()));
    m_showing = false;
}

bool DataPointsDialog::commit_box(QLineEdit* box) {
    if (m_showing) return true;
    const auto row = static_cast<int>(std::find(m_x.begin(), m_x.end(), box) - m_x.begin());
    const bool is_x = row < k_rows;
    const int r = is_x ? row : static_cast<int>(std::find(m_y.begin(), m_y.end(), box) - m_y.begin());
    const int point = m_top + r;
    const QString text = box->text().trimmed();
    const std::string* before = is_x ? m_points.GetXDataPoint(point) : m_points.GetYDataPoint(point);
    if ((before ? text_of(*before) : QString()) == text) return true;
    if (!text.isEmpty()) {
        // A coordinate is checked when it is committed and kept as the text typed.
        engine::complex value;
        m_parser.ClearLastError();
        m_parser.eval_exp(text.toStdString().c_str(), value, true, false, false);
        const bool failed = m_parser.IsAnError() || std::abs(value.imag()) > 1e-14;
        m_parser.ClearLastError();
        if (failed) {
            tell(QStringLiteral("The data point coordinate values must be real numbers!"));
            box->setFocus();
            box->selectAll();
            return false;
        }
    }
    const std::string typed = text.toStdString();
    const char* slot = text.isEmpty() ? nullptr : typed.c_str();
    if (is_x) m_points.PutXDataPoint(slot, point);
    else m_points.PutYDataPoint(slot, point);
    changed();
    return true;
}

int DataPointsDialog::focused_row() const {
    for (int r = 0; r < k_rows; ++r)
        if (m_x[static_cast<size_t>(r)]->hasFocus() || m_y[static_cast<size_t>(r)]->hasFocus()) return r;
    return m_focus_row;
}

void DataPointsDialog::scroll_to(int top) {
    for (int r = 0; r < k_rows; ++r)
        for (QLineEdit* box : {m_x[static_cast<size_t>(r)], m_y[static_cast<size_t>(r)]})
            if (box->hasFocus()) commit_box(box);
    m_top = std::clamp(top, 0, std::max(0, m_points.GetMaxXYZPoint() + 2 - k_rows));
    show_rows();
}

bool DataPointsDialog::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (box && event->type() == QEvent::FocusIn) m_focus_row = focused_row();
    if (!box || event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool is_x = std::find(m_x.begin(), m_x.end(), box) != m_x.end();
    const int row = static_cast<int>(is_x ? std::find(m_x.begin(), m_x.end(), box) - m_x.begin()
                                          : std::find(m_y.begin(), m_y.end(), box) - m_y.begin());
    m_focus_row = row;
    const auto focus = [this](int r, bool x) {
        QLineEdit* target = (x || !m_with_y ? m_x : m_y)[static_cast<size_t>(r)];
        target->setFocus();
        target->selectAll();
    };
    // Enter commits the box and goes down a row, as a table does; OK stays with its button.
    if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
        const int step = key == Qt::Key_Up ? -1 : 1;
        if (!commit_box(box)) return true; // the focus stays until the value is mended
        if (row + step >= 0 && row + step < k_rows) focus(row + step, is_x);
        else scroll_to(m_top + step); // at the edge the rows move, the focus stays
        return true;
    }
    if (m_with_y && key == Qt::Key_Right && box->cursorPosition() == box->text().size()) {
        if (is_x) focus(row, false);
        else if (row + 1 < k_rows) focus(row + 1, true);
        else commit_box(box), scroll_to(m_top + 1), focus(row, true);
        return true;
    }
    if (m_with_y && key == Qt::Key_Left && box->cursorPosition() == 0 && !is_x) {
        focus(row, true);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void DataPointsDialog::show_first() { scroll_to(0); }
void DataPointsDialog::show_last() { scroll_to(m_points.GetMaxXYZPoint() + 2 - k_rows); }

void DataPointsDialog::insert_point() {
    const int row = focused_row();
    if (row < 0) {
        tell(tr("Place the cursor in the row where the new point goes, then insert it."));
        return;
    }
    const int point = m_top + row;
    m_points.InsertXDataPoint(static_cast<const char*>(nullptr), point);
    if (m_points.GetMaxXYZPoint() >= point) m_points.InsertYDataPoint(static_cast<const char*>(nullptr), point);
    changed();
}

void DataPointsDialog::delete_point() {
    const int row = focused_row();
    if (row < 0) return;
    m_points.DeleteDataPoint(m_top + row);
    changed();
}

void DataPointsDialog::clear_points() {
    const QString name = m_points.Name.empty() ? tr("this") : QStringLiteral("' %1 '").arg(text_of(m_points.Name));
    if (ask(tr("Do you want to clear all the points of the %1 data set?").arg(name), QMessageBox::Yes | QMessageBox::No) !=
        QMessageBox::Yes)
        return;
    m_points.XPoints.clear();
    m_points.YPoints.clear();
    m_top = 0;
    changed();
}

bool DataPointsDialog::paste_text(const QString& text) {
    const graph::DataColumns table =
        graph::split_data_columns(text.toStdString(), graph::data_value_check(m_parser));
    if (table.rows.empty() || (m_with_y && table.columns < 2)) {
        tell(m_with_y ? tr("The clipboard holds no columns of x-y data points.")
                      : tr("The clipboard holds no data points."));
        return false;
    }
    graph::StrDataPnts pasted = graph::points_from_columns(table, 1, m_with_y ? 2 : 0);
    const int start = m_points.GetMaxXYZPoint() + 1;
    for (size_t i = 0; i < pasted.XPoints.size() || i < pasted.YPoints.size(); ++i) {
        const auto at = static_cast<int>(i);
        if (const std::string* x = pasted.GetXDataPoint(at)) m_points.PutXDataPoint(x->c_str(), start + at);
        if (const std::string* y = pasted.GetYDataPoint(at)) m_points.PutYDataPoint(y->c_str(), start + at);
    }
    changed();
    return true;
}

bool DataPointsDialog::load_file(const QString& path) {
    std::string text, error;
    if (!graph::read_data_text(path.toStdString(), text, error)) {
        tell(text_of(error));
        return false;
    }
    const graph::DataColumns table = graph::split_data_columns(text, graph::data_value_check(m_parser));
    if (table.rows.empty()) {
        tell(tr("No data points were found in the ' %1 ' data file.").arg(path));
        return false;
    }
    // Single values take one value to a line: a second one is a y value they can not use.
    std::optional<graph::StrDataPnts> single;
    if (!m_with_y) {
        std::string why;
        single = graph::single_values(table, path.toStdString(), why);
        if (!single) {
            tell(text_of(why));
            return false;
        }
    }
    int y_column = m_with_y ? 2 : 0;
    if (m_with_y && table.columns < 2) {
        tell(tr("Invalid data found in the ' %1 ' data file at point number 1. There was no y value found for the "
                "data point.  Please verify that there is x-y data values in this file and the file format is "
                "correct.")
                 .arg(path));
        return false;
    }
    if (m_with_y && table.columns > 2) {
        y_column = choose_column(table.columns);
        if (y_column < 2) return false;
    }
    bool replace = true;
    if (m_points.GetNumXYZPoints() > 0) {
        const int answer = ask(tr("There are data points already. Do you want to add the points of the file to them? "
                                  "(No replaces them.)"),
                               QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        if (answer == QMessageBox::Cancel) return false;
        replace = answer != QMessageBox::Yes;
    }
    graph::StrDataPnts loaded = single ? std::move(*single) : graph::points_from_columns(table, 1, y_column);
    if (replace) {
        const std::string name = QFileInfo(path).completeBaseName().toStdString();
        loaded.Name = name.empty() ? "2dDataSet" : name;
        set_points(loaded);
        return true;
    }
    if (m_points.Name.empty()) m_points.Name = QFileInfo(path).completeBaseName().toStdString();
    const int start = m_points.GetMaxXYZPoint() + 1;
    m_points.XPoints.resize(static_cast<size_t>(start));
    m_points.XPoints.insert(m_points.XPoints.end(), loaded.XPoints.begin(), loaded.XPoints.end());
    if (m_with_y) {
        m_points.YPoints.resize(static_cast<size_t>(start));
        m_points.YPoints.insert(m_points.YPoints.end(), loaded.YPoints.begin(), loaded.YPoints.end());
    }
    changed();
    return true;
}

bool DataPointsDialog::save_file(const QString& path) {
    if (m_points.GetNumXYZPoints() == 0) {
        tell(tr("There are no data points to save."));
        return false;
    }
    std::string error;
    if (!store::write_file_atomically(path.toStdString(), graph::data_points_text(m_points, m_with_y), &error)) {
        tell(text_of(error));
        return false;
    }
    return true;
}

bool DataPointsDialog::check_points() {
    const QString set = text_of(m_points.Name.empty() ? std::string("2dDataSet") : m_points.Name);
    for (int i = 0; i <= m_points.GetMaxXYZPoint(); ++i) {
        const bool x = m_points.GetXDataPoint(i) != nullptr;
        const bool y = !m_with_y || m_points.GetYDataPoint(i) != nullptr;
        if (x && y) continue;
        const QString which = !x && !y && m_with_y ? tr("has no X or Y value") : !x ? tr("has no X value") : tr("has no Y value");
        tell(tr("Point %1 of the ' %2 ' data set %3.").arg(i + 1).arg(set, which));
        scroll_to(i);
        return false;
    }
    return true;
}

void DataPointsDialog::reject() {
    // Cancel drops what the boxes hold: the box that loses its focus as the dialog goes is not
    // checked.
    m_showing = true;
    QDialog::reject();
    m_showing = false;
}

void DataPointsDialog::accept() {
    // A box holding no real number keeps the dialog open, its focus there, until it is mended.
    for (int r = 0; r < k_rows; ++r)
        for (QLineEdit* box : {m_x[static_cast<size_t>(r)], m_y[static_cast<size_t>(r)]})
            if (box->hasFocus() && !commit_box(box)) return;
    if (check_points()) QDialog::accept();
}

} // namespace quorvex::gui
