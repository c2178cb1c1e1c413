#pragma once
#include "graph/data_points.h"

#include <QAbstractTableModel>
#include <QDialog>

#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QScrollBar;
class QTableView;

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

struct Services;

// A data set as a table for an item view: a row a point, X and (for x-y data) Y, each the text
// the user typed; a last empty row takes a new point.
class DataPointsModel : public QAbstractTableModel {
public:
    DataPointsModel(QObject* parent, graph::StrDataPnts& points, bool with_y);
    // The set changed behind the model's back (loaded, pasted, cleared).
    void reload();
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    graph::StrDataPnts& m_points;
    bool m_with_y;
};

// "Data Points": edits a working copy of a data set. Five rows of X and Y boxes ("Pt 1" ...)
// with a scroll bar over a list of any length, and beside them the whole set as a grid;
// coordinates stay the expressions typed until they are used. Points are inserted, deleted,
// cleared, loaded from and saved to data files, or pasted as columns from another program.
class DataPointsDialog : public QDialog {
    Q_OBJECT

public:
    static constexpr int k_rows = 5;

    DataPointsDialog(engine::Parser& parser, const Services& services, QString owner_caption, bool with_y,
                     QWidget* parent);

    // The file types offered where data files are opened and saved.
    static QString file_filter();

    void set_points(const graph::StrDataPnts& points);
    const graph::StrDataPnts& points() const { return m_points; }

    // Which column of a file with several holds Y (from 2); 0 cancels. A box unless replaced.
    std::function<int(int columns)> choose_column;

    // Adds the points of a data file (asking first when there are points already); false with
    // the message told when nothing was read.
    bool load_file(const QString& path);
    bool save_file(const QString& path);
    // Adds a block of columns copied from another program (tab-, comma- or blank-separated, a
    // header row skipped).
    bool paste_text(const QString& text);
    void insert_point();
    void delete_point();
    void clear_points();
    void show_first();
    void show_last();
    // The first point shown in the five rows.
    int top_index() const { return m_top; }
    QLineEdit* x_box(int row) const { return m_x[static_cast<size_t>(row)]; }
    QLineEdit* y_box(int row) const { return m_y[static_cast<size_t>(row)]; }
    QLabel* count_label() const { return m_count; }
    QTableView* grid() const { return m_grid; }
    // Checks every point; false (after the message) when one lacks a coordinate.
    bool check_points();

    void accept() override;
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show_rows();
    // Stores the box's text in the set; false (after the message) when it is no real number.
    bool commit_box(QLineEdit* box);
    void scroll_to(int top);
    int focused_row() const;
    void tell(const QString& text);
    int ask(const QString& text, int buttons);
    void changed();

    engine::Parser& m_parser;
    const Services& m_services;
    QString m_owner_caption;
    bool m_with_y;
    graph::StrDataPnts m_points;
    int m_top = 0;
    int m_focus_row = -1;
    bool m_showing = false;
    std::array<QLabel*, k_rows> m_labels{};
    std::array<QLineEdit*, k_rows> m_x{};
    std::array<QLineEdit*, k_rows> m_y{};
    QScrollBar* m_scroll;
    QLabel* m_count;
    QTableView* m_grid;
    DataPointsModel* m_model;
};

} // namespace quorvex::gui
