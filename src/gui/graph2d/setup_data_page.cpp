// The data page of the graph setup: the graph's data sets, typed, loaded from data files, added
// and removed by name.
#include "setup_pages.h"

#include "engine/parser.h"
#include "graph/data_columns.h"
#include "graph/data_file_3d.h"
#include "graph/setup_checks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace quorvex::gui {

namespace {

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// Enter in a cell being edited keeps the text and goes on to the next cell, as Tab does.
class NextCellDelegate : public QStyledItemDelegate {
public:
    NextCellDelegate(DataPage* page, QObject* parent) : QStyledItemDelegate(parent), m_page(page) {}

protected:
    bool eventFilter(QObject* editor, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab) {
                auto* widget = qobject_cast<QWidget*>(editor);
                Q_EMIT commitData(widget);
                Q_EMIT closeEditor(widget, QAbstractItemDelegate::NoHint);
                m_page->move_to_next_cell();
                return true;
            }
        }
        return QStyledItemDelegate::eventFilter(editor, event);
    }

private:
    DataPage* m_page;
};

} // namespace

DataPage::DataPage(engine::Parser& parser, QWidget* parent)
    : SetupPage(parent), m_parser(parser), m_sets(new QComboBox(this)), m_table(new QTableWidget(this)),
      m_show_z(new QCheckBox(tr("Show &Z"), this)), m_z(new QLineEdit(this)) {
    m_table->setColumnCount(2);
    m_table->setHorizontalHeaderLabels({QStringLiteral("X"), QStringLiteral("Y")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->setItemDelegate(new NextCellDelegate(this, m_table));
    m_table->installEventFilter(this);
    auto* add_set = new QPushButton(tr("New &Set..."), this);
    auto* remove_set = new QPushButton(tr("Remove S&et"), this);
    auto* load = new QPushButton(tr("&Load File..."), this);
    auto* add_row = new QPushButton(tr("Add &Point"), this);
    for (QPushButton* button : {add_set, remove_set, load, add_row}) button->setAutoDefault(false);
    auto* sets_label = new QLabel(tr("Data se&t:"), this);
    sets_label->setBuddy(m_sets);
    auto* row = new QHBoxLayout;
    row->addWidget(sets_label);
    row->addWidget(m_sets, 1);
    row->addWidget(add_set);
    row->addWidget(remove_set);
    // A set of a 3-dimensional graph lies at one Z value, shown beside the set it belongs to.
    auto* z_label = new QLabel(tr("Z &value of the set:"), this);
    z_label->setBuddy(m_z);
    m_z->setPlaceholderText(tr("none: a 2-dimensional set"));
    auto* z_row = new QHBoxLayout;
    z_row->addWidget(m_show_z);
    z_row->addWidget(z_label);
    z_row->addWidget(m_z, 1);
    const auto show_z = [this, z_label](bool on) {
        z_label->setVisible(on);
        m_z->setVisible(on);
    };
    connect(m_show_z, &QCheckBox::toggled, this, show_z);
    show_z(false);
    connect(m_z, &QLineEdit::editingFinished, this, [this] { set_z(m_z->text()); });
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(load);
    bottom->addStretch();
    bottom->addWidget(add_row);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addLayout(z_row);
    layout->addWidget(m_table, 1);
    layout->addLayout(bottom);
    connect(m_sets, &QComboBox::currentIndexChanged, this, [this](int index) {
        keep_shown_set();
        show_set(index);
    });
    connect(add_set, &QPushButton::clicked, this, [this] {
        bool ok = false;
        const QString name = QInputDialog::getText(this, tr("New Data Set"), tr("Name of the data set:"),
                                                   QLineEdit::Normal, QString(), &ok);
        if (ok) this->add_set(name);
    });
    connect(remove_set, &QPushButton::clicked, this, &DataPage::remove_set);
    connect(load, &QPushButton::clicked, this, [this] {
        const QString path = QFileDialog::getOpenFileName(this, tr("Open Data Point File"), QString(),
                                                          tr("Data files (*.dat *.txt *.csv);;All files (*)"));
        if (!path.isEmpty()) load_file(path);
    });
    connect(add_row, &QPushButton::clicked, this, [this] {
        if (m_shown >= 0) m_table->setRowCount(m_table->rowCount() + 1);
    });
    choose_column = [this](int columns) {
        bool ok = false;
        const int column = QInputDialog::getInt(this, QStringLiteral("Select Column Number"),
                                                tr("The file has %1 columns; X is the first. Which column holds Y?")
                                                    .arg(columns),
                                                2, 2, columns, 1, &ok);
        return ok ? column : 0;
    };
}

std::vector<std::string> DataPage::set_names() const {
    std::vector<std::string> names;
    for (const graph::StrDataPnts& set : m_data) names.push_back(set.Name);
    return names;
}

bool DataPage::add_set(const QString& name) {
    const std::string wanted = name.trimmed().toStdString();
    if (const std::optional<graph::SetupProblem> refused = graph::check_new_set_name(set_names(), wanted)) {
        tell(refused->message);
        return false;
    }
    keep_shown_set();
    graph::StrDataPnts set;
    set.SetName(wanted.c_str());
    m_data.push_back(set);
    m_sets->addItem(text_of(wanted));
    m_sets->setCurrentIndex(m_sets->count() - 1);
    m_table->setRowCount(5);
    return true;
}

bool DataPage::remove_set() {
    if (m_shown < 0 || m_shown >= static_cast<int>(m_data.size())) return false;
    if (ask("Are you sure that you want to remove the data set ' " + m_data[static_cast<size_t>(m_shown)].Name +
            " ' and all its points?") != QMessageBox::Yes)
        return false;
    m_data.erase(m_data.begin() + m_shown);
    m_shown = -1;
    m_sets->removeItem(m_sets->currentIndex());
    return true;
}

bool DataPage::load_file(const QString& path) {
    std::string text, error;
    if (!graph::read_data_text(path.toStdString(), text, error)) {
        tell(error);
        return false;
    }
    const graph::DataColumns table = graph::split_data_columns(text, graph::data_value_check(m_parser));
    if (table.rows.empty()) {
        tell("No data points were found in the ' " + path.toStdString() + " ' data file.");
        return false;
    }
    if (table.columns < 2) {
        tell("Invalid data found in the ' " + path.toStdString() +
             " ' data file at point number 1. There was no y value found for the data point.  Please verify that "
             "there is x-y data values in this file and the file format is correct.");
        return false;
    }
    const std::string file = path.toStdString();
    bool own_set = false; // 2-dimensional points in a 3-dimensional graph make a set of their own
    if (table.columns == 3) {
        const std::string question =
            has_z() ? std::string()
                    : "The file ' " + file + " ' has three values on each line. Do you want to read them as "
                      "3-dimensional data points (x , y , z), a data set for each Z value? (No reads X and a Y column.)";
        const int answer = question.empty() ? QMessageBox::Yes : ask(question, true);
        if (answer == QMessageBox::Cancel) return false;
        if (answer == QMessageBox::Yes) {
            if (m_functions) {
                tell("You can not graph both equations and data points in 3-dimensions: remove the functions from "
                     "the graph before you load the 3-dimensional data points of ' " + file + " '.");
                return false;
            }
            return load_3d(file, table);
        }
    } else if (has_z()) {
        if (ask("The file ' " + file + " ' holds 2-dimensional data points (x , y), but the data sets of this "
                "graph are 3-dimensional. Do you want to load them as a data set of their own, to be given a Z "
                "value?") != QMessageBox::Yes)
            return false;
        own_set = true;
    }
    const int y_column = table.columns > 2 ? choose_column(table.columns) : 2;
    if (y_column < 2) return false;
    const graph::StrDataPnts loaded = graph::points_from_columns(table, 1, y_column);

    keep_shown_set();
    if (!own_set && m_shown >= 0 && m_shown < static_cast<int>(m_data.size())) {
        graph::StrDataPnts& shown = m_data[static_cast<size_t>(m_shown)];
        int answer = QMessageBox::Yes; // an empty set takes the points without a question
        if (shown.GetNumXYZPoints() > 0)
            answer = ask("The data set ' " + shown.Name + " ' has data points already. Do you want to add the points "
                         "of the file to them? (No loads them as a new data set.)",
                         true);
        if (answer == QMessageBox::Cancel) return false;
        if (answer == QMessageBox::Yes) {
            graph::append_points(shown, loaded);
            show_set(m_shown);
            return true;
        }
    }
    // A new set, named after the file, and apart from the sets there are.
    std::string base = QFileInfo(path).completeBaseName().toStdString();
    add_loaded_set(loaded, unique_set_name(base.empty() ? "2dDataSet" : base));
    return true;
}

bool DataPage::load_3d(const std::string& path, const graph::DataColumns& table) {
    graph::ZSets found = graph::sets_by_z(table);
    if (found.sets.empty()) {
        tell("No data points with a Z value were found in the ' " + path + " ' data file.");
        return false;
    }
    if (found.rows_without_z > 0 &&
        ask("The Z values of the ' " + path + " ' data file are not all there: " + std::to_string(found.rows_without_z) +
            " of its points have none, the first is point " + std::to_string(found.first_row_without_z) +
            ". Do you want to load the points that have a Z value and leave the others out?") != QMessageBox::Yes)
        return false;
    keep_shown_set();
    if (m_shown >= 0 && m_shown < static_cast<int>(m_data.size()) &&
        m_data[static_cast<size_t>(m_shown)].GetNumXYZPoints() > 0) {
        graph::StrDataPnts& shown = m_data[static_cast<size_t>(m_shown)];
        const int answer = ask("The data set ' " + shown.Name + " ' has data points already. Do you want to add the "
                               "points of the file to them? (No loads them as new data sets.)",
                               true);
        if (answer == QMessageBox::Cancel) return false;
        if (answer == QMessageBox::Yes && found.sets.size() > 1) {
            // A set lies at one Z value: the file's points can only go into sets of their own.
            if (ask("The points of the ' " + path + " ' data file lie at " + std::to_string(found.sets.size()) +
                    " different Z values, but the data set ' " + shown.Name + " ' lies at one. Do you want to load "
                    "them as " + std::to_string(found.sets.size()) + " new data sets instead?") != QMessageBox::Yes)
                return false;
        } else if (answer == QMessageBox::Yes) {
            const std::string& z = *found.sets.front().GetZDataPoint();
            if (const std::string* own = shown.GetZDataPoint(); own && !graph::same_z(*own, z)) {
                const int take = ask("The points of the file lie at Z = " + z + ", but the data set ' " + shown.Name +
                                         " ' lies at Z = " + *own + ". Do you want the data set to take the file's Z "
                                         "value? (No keeps " + *own + ".)",
                                     true);
                if (take == QMessageBox::Cancel) return false;
                if (take == QMessageBox::Yes) shown.PutZDataPoint(z);
            } else if (!own) {
                shown.PutZDataPoint(z);
            }
            graph::append_points(shown, found.sets.front());
            m_show_z->setChecked(true);
            show_set(m_shown);
            return true;
        }
    }
    // A set for each Z value, unless a set lies at that Z already and takes the points.
    const std::string base = QFileInfo(QString::fromStdString(path)).completeBaseName().toStdString();
    for (graph::StrDataPnts& set : found.sets) {
        const std::string z = *set.GetZDataPoint();
        if (const int at = graph::set_at_z(m_data, z); at >= 0) {
            graph::StrDataPnts& there = m_data[static_cast<size_t>(at)];
            const int answer = ask("The data set ' " + there.Name + " ' lies at Z = " + z + " already. Do you want "
                                   "to add the file's points at that Z value to it? (No loads them as a data set of "
                                   "their own.)",
                                   true);
            if (answer == QMessageBox::Cancel) return false;
            if (answer == QMessageBox::Yes) {
                graph::append_points(there, set);
                if (at == m_shown) show_set(m_shown); // the table is what a change of set keeps
                continue;
            }
        }
        add_loaded_set(std::move(set), unique_set_name((base.empty() ? std::string("3dDataSet") : base) + " z=" + z));
    }
    m_show_z->setChecked(true);
    show_set(m_sets->currentIndex());
    return true;
}

bool DataPage::has_z() const {
    return std::any_of(m_data.begin(), m_data.end(), [](const graph::StrDataPnts& set) { return set.ZPoint.has_value(); });
}

std::string DataPage::unique_set_name(const std::string& base) const {
    std::string name = base;
    const std::vector<std::string> names = set_names();
    for (int n = 1; std::find(names.begin(), names.end(), name) != names.end(); ++n)
        name = base + " #" + std::to_string(n);
    return name;
}

void DataPage::add_loaded_set(graph::StrDataPnts set, const std::string& name) {
    set.SetName(name.c_str());
    m_data.push_back(std::move(set));
    m_sets->addItem(text_of(name));
    m_sets->setCurrentIndex(m_sets->count() - 1);
}

bool DataPage::set_z(const QString& text) {
    if (m_shown < 0 || m_shown >= static_cast<int>(m_data.size())) return false;
    const QSignalBlocker quiet(m_z); // a question taking the focus finishes the editing once more
    graph::StrDataPnts& set = m_data[static_cast<size_t>(m_shown)];
    const std::string wanted = text.trimmed().toStdString();
    const auto put_back = [&] { m_z->setText(set.ZPoint ? text_of(*set.ZPoint) : QString()); };
    if (wanted.empty()) {
        set.PutZDataPoint(std::nullopt);
        return true;
    }
    if (set.ZPoint && *set.ZPoint == wanted) return true;
    if (m_functions) {
        tell("You can not graph both equations and data points in 3-dimensions: a Z value makes the data "
             "3-dimensional. Remove the functions from the graph first.");
        put_back();
        return false;
    }
    if (!has_z() && ask("A Z value makes this graph 3-dimensional: each data set then lies at a Z value of its "
                        "own, and all share their X values. Do you want to give the data set ' " + set.Name +
                        " ' the Z value " + wanted + "?") != QMessageBox::Yes) {
        put_back();
        return false;
    }
    set.PutZDataPoint(wanted);
    m_z->setText(text_of(wanted));
    return true;
}

void DataPage::move_to_next_cell() {
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid() || m_shown < 0) return;
    int row = current.row(), column = current.column() + 1;
    if (column >= m_table->columnCount()) {
        column = 0;
        ++row;
    }
    if (row >= m_table->rowCount()) m_table->setRowCount(row + 1);
    m_table->setCurrentCell(row, column);
    m_table->edit(m_table->currentIndex()); // ready for the value, as a spreadsheet is
}

bool DataPage::eventFilter(QObject* watched, QEvent* event) {
    // Enter on a cell not being edited moves on too, rather than reaching the sheet's default
    // button.
    if (watched == m_table && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) { // an open editor has the keys itself
            move_to_next_cell();
            return true;
        }
    }
    return SetupPage::eventFilter(watched, event);
}

void DataPage::show_set(int index) {
    m_shown = index;
    m_table->clearContents();
    if (index < 0 || index >= static_cast<int>(m_data.size())) {
        m_table->setRowCount(0);
        m_z->clear();
        m_z->setEnabled(false);
        return;
    }
    const graph::StrDataPnts& set = m_data[static_cast<size_t>(index)];
    m_z->setEnabled(true);
    m_z->setText(set.ZPoint ? text_of(*set.ZPoint) : QString());
    const int rows = static_cast<int>(std::max(set.XPoints.size(), set.YPoints.size()));
    m_table->setRowCount(std::max(rows, 5));
    for (int r = 0; r < rows; ++r) {
        if (const std::string* x = set.GetXDataPoint(r)) m_table->setItem(r, 0, new QTableWidgetItem(text_of(*x)));
        if (const std::string* y = set.GetYDataPoint(r)) m_table->setItem(r, 1, new QTableWidgetItem(text_of(*y)));
    }
}

void DataPage::keep_shown_set() {
    if (m_shown < 0 || m_shown >= static_cast<int>(m_data.size())) return;
    graph::StrDataPnts& set = m_data[static_cast<size_t>(m_shown)];
    set.XPoints.clear();
    set.YPoints.clear();
    // Rows left empty at the end are no points.
    int last = -1;
    for (int r = 0; r < m_table->rowCount(); ++r)
        for (int c = 0; c < 2; ++c)
            if (m_table->item(r, c) && !m_table->item(r, c)->text().trimmed().isEmpty()) last = r;
    for (int r = 0; r <= last; ++r) {
        const auto cell = [&](int c) -> std::optional<std::string> {
            const QTableWidgetItem* item = m_table->item(r, c);
            if (!item || item->text().trimmed().isEmpty()) return std::nullopt;
            return item->text().trimmed().toStdString();
        };
        set.PutXDataPoint(cell(0), r);
        set.PutYDataPoint(cell(1), r);
    }
}

void DataPage::load(const document::DocumentGraph& graph) {
    m_data.assign(graph.Data.DataSets.begin(), graph.Data.DataSets.end());
    m_shown = -1;
    m_functions = !graph.Data.Functions.empty();
    if (has_z()) m_show_z->setChecked(true);
    const QSignalBlocker quiet(m_sets);
    m_sets->clear();
    for (const graph::StrDataPnts& set : m_data) m_sets->addItem(text_of(set.Name));
    show_set(m_data.empty() ? -1 : 0);
}

void DataPage::store(document::DocumentGraph& graph) {
    keep_shown_set();
    graph.Data.ReplaceDataSets({m_data.begin(), m_data.end()}); // point labels follow their sets
}

} // namespace quorvex::gui
