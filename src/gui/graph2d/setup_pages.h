#pragma once
#include "document/document.h"
#include "graph/data_columns.h"

#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QListWidget;
class QSpinBox;
class QTableWidget;

namespace quorvex::store {
class IniFile;
}

namespace quorvex::gui {

class ColorButton;
struct Services;

// One page of the graph setup: it shows a graph's part in its controls (`load`) and writes the
// controls back into the graph (`store`). The pages hold no graph of their own.
class SetupPage : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
    virtual void load(const document::DocumentGraph& graph) = 0;
    virtual void store(document::DocumentGraph& graph) = 0;
    // Where the page's messages and questions go.
    void set_services(const Services* services) { m_services = services; }

protected:
    void tell(const std::string& text);
    // Yes or No; a third answer for Cancel as well when `cancel`. The QMessageBox button chosen.
    int ask(const std::string& text, bool cancel = false);

private:
    const Services* m_services = nullptr;
};

// The functions to graph, chosen from those the document defines.
class FunctionsPage : public SetupPage {
    Q_OBJECT
public:
    FunctionsPage(engine::Parser& parser, QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    QListWidget* chosen() const { return m_chosen; }
    QListWidget* defined() const { return m_defined; }
    // Adds the function selected in the defined list, or removes the one selected in the chosen
    // list; false (after the message) when refused.
    bool add_selected();
    bool remove_selected();
    // Opens a function to be edited, offered when it shares no variable with those graphed.
    std::function<void(const QString& function)> edit_function;

private:
    engine::Parser& m_parser;
    QListWidget* m_defined;
    QListWidget* m_chosen;
};

// The variables the functions share: which is the X axis, and its range; and which, if any, is
// the Z axis that makes the graph a surface.
class VariablesPage : public SetupPage {
    Q_OBJECT
public:
    explicit VariablesPage(QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    QComboBox* axis() const { return m_axis; }
    QDoubleSpinBox* low() const { return m_low; }
    QDoubleSpinBox* high() const { return m_high; }
    QSpinBox* points() const { return m_points; }
    // The first entry is none: a 2-D graph.
    QComboBox* z_axis() const { return m_z_axis; }
    QDoubleSpinBox* z_low() const { return m_z_low; }
    QDoubleSpinBox* z_high() const { return m_z_high; }
    QSpinBox* z_points() const { return m_z_points; }

private:
    QComboBox* m_axis;
    QDoubleSpinBox* m_low;
    QDoubleSpinBox* m_high;
    QSpinBox* m_points;
    QComboBox* m_z_axis;
    QDoubleSpinBox* m_z_low;
    QDoubleSpinBox* m_z_high;
    QSpinBox* m_z_points;
};

// The graph's data sets: each a name and rows of X and Y expressions. Enter and Tab move from X
// to Y and on to the next point's X, adding a row past the last.
class DataPage : public SetupPage {
    Q_OBJECT
public:
    explicit DataPage(engine::Parser& parser, QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    QTableWidget* table() const { return m_table; }
    QComboBox* sets() const { return m_sets; }
    // A new empty set; false (after the message) for an empty name or one a set has.
    bool add_set(const QString& name);
    // Removes the set shown after asking; false when there is none or the answer is No.
    bool remove_set();
    // Reads the points of a data file into the set shown (asking whether to add them to its
    // points) or into a new set named after the file; false (after the message) when nothing was
    // read.
    bool load_file(const QString& path);
    // Which column of a file with several holds Y (from 2); 0 cancels. A box unless replaced.
    std::function<int(int columns)> choose_column;
    // The Z value of the set shown, which makes the graph 3-dimensional (a set lies at one Z), and
    // the box that shows it.
    QLineEdit* z_value() const { return m_z; }
    QCheckBox* show_z() const { return m_show_z; }
    // Gives the set shown the Z value `text` (none when empty): refused while functions are
    // graphed; the first Z of a graph is asked about. False, with the field put back, when refused.
    bool set_z(const QString& text);
    // The cell after the current one, X then Y then the next point, with a row added past the last.
    void move_to_next_cell();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show_set(int index);
    void keep_shown_set();
    std::vector<std::string> set_names() const;
    bool has_z() const;
    // `base`, or `base #1`, `base #2`, ... the first no set has.
    std::string unique_set_name(const std::string& base) const;
    void add_loaded_set(graph::StrDataPnts set, const std::string& name);
    // The points of a file of x, y and z lines: into the set shown, or as a set for each Z value.
    bool load_3d(const std::string& path, const graph::DataColumns& table);
    engine::Parser& m_parser;
    std::vector<graph::StrDataPnts> m_data;
    int m_shown = -1;
    bool m_functions = false; // functions are graphed: the graph can not be 3-dimensional data
    QComboBox* m_sets;
    QTableWidget* m_table;
    QCheckBox* m_show_z;
    QLineEdit* m_z;
};

// Header, footer and axis titles.
class LabelsPage : public SetupPage {
    Q_OBJECT
public:
    explicit LabelsPage(QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    QLineEdit* header() const { return m_header; }
    QLineEdit* footer() const { return m_footer; }

private:
    QLineEdit *m_header, *m_footer, *m_x, *m_y, *m_z;
    document::DocumentGraph m_shown; // the graph as loaded, or with the default titles once asked for
    bool m_defaults_asked = false;
};

// The kind of 2-D graph, and the forms of a 3-D one.
class TypesPage : public SetupPage {
    Q_OBJECT
public:
    explicit TypesPage(QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    QButtonGroup* types() const { return m_types; }
    // Mesh, shade, contour, zone, hidden lines and projection, in the order of their digits.
    const std::vector<QCheckBox*>& flags_3d() const { return m_flags_3d; }
    // Surface (0) or bars (1).
    QButtonGroup* form_3d() const { return m_form_3d; }

private:
    QButtonGroup* m_types;
    std::vector<QCheckBox*> m_flags_3d;
    QButtonGroup* m_form_3d;
    QCheckBox* m_log_x;
    QCheckBox* m_log_y;
    QCheckBox* m_grid;
};

// Line width and colour of each series.
class StylesPage : public SetupPage {
    Q_OBJECT
public:
    StylesPage(store::IniFile* settings, QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    QTableWidget* table() const { return m_table; }
    QSpinBox* width_for_all() const { return m_width_for_all; }
    // Gives every series the width of `width_for_all`.
    void apply_to_all();

private:
    store::IniFile* m_settings;
    QTableWidget* m_table;
    QSpinBox* m_width_for_all;
    bool m_applied_to_all = false;
};

// The sixteen colours of the chart's parts.
class ColorsPage : public SetupPage {
    Q_OBJECT
public:
    ColorsPage(const Services& services, QWidget* parent = nullptr);
    void load(const document::DocumentGraph& graph) override;
    void store(document::DocumentGraph& graph) override;
    const std::vector<ColorButton*>& buttons() const { return m_buttons; }
    // The colours shown become the user's default graph colours, after asking; false for No or
    // a failed write.
    bool save_defaults();
    // The user's default graph colours replace those shown, after asking; false for No.
    bool load_defaults();

private:
    const Services& m_services;
    std::vector<ColorButton*> m_buttons;
};

} // namespace quorvex::gui
