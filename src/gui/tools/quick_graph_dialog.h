#pragma once
#include "desktop/quick_graph.h"
#include "gui/tools/tool_dialog.h"

#include <optional>
#include <string>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace quorvex::gui {

class DocumentWindow;

// The inputs of a quick graph page: the function and two variables, each with its range.
struct QuickGraphFields {
    QComboBox* function = nullptr;
    QComboBox* variable = nullptr;
    QLineEdit *start = nullptr, *end = nullptr, *points = nullptr;
    QComboBox* variable2 = nullptr;
    QLineEdit *start2 = nullptr, *end2 = nullptr, *points2 = nullptr;
};

// The "Quick Graph Utility": an expression drawn with the fewest inputs. The 2-D page draws it
// over one variable, or as a family of curves over a second one that plays as a simulation in
// the graph window; the 3-D page draws a surface over two variables. A new run of the same
// function updates the graph the page made last. One per document; inputs kept with it.
class QuickGraphDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit QuickGraphDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~QuickGraphDialog() override;

    bool busy() const override;
    QString busy_message() const override;
    void refresh_functions() override;
    void take_function(const QString& function) override;

    QTabWidget* pages() const { return m_pages; }
    const QuickGraphFields& fields_2d() const { return m_2d; }
    const QuickGraphFields& fields_3d() const { return m_3d; }
    QComboBox* graph_type() const { return m_type; }
    QListWidget* errors() const { return m_errors; }
    // The document's graph the 2-D or 3-D page made last; empty before.
    const std::string& graph_2d_name() const { return m_graph_2d; }
    const std::string& graph_3d_name() const { return m_graph_3d; }

    // Computes and draws the page's graph; false (after the message) when nothing was drawn.
    bool graph_2d();
    bool graph_3d();
    // Starts the family of curves of the 2-D page playing, or stops it; false (after the
    // message) when there is no family to play.
    bool toggle_simulation();
    void slower();
    void faster();

private:
    QWidget* make_page(QuickGraphFields& fields, bool surface);
    void fill_variables(QuickGraphFields& fields);
    void load_inputs();
    void store_inputs();
    std::optional<desktop::QuickGraphFamily> compute(const QuickGraphFields& fields, bool family_required);
    // The document graph of that name, or -1.
    int graph_index(const std::string& name) const;
    void show_errors(const desktop::QuickGraphFamily& family);
    void update_simulation_buttons();

    DocumentWindow& m_document;
    QTabWidget* m_pages;
    QuickGraphFields m_2d, m_3d;
    QComboBox* m_type;
    QCheckBox *m_mesh, *m_shade, *m_contour, *m_zone;
    QPushButton *m_simulate, *m_slower, *m_faster;
    QListWidget* m_errors;
    std::string m_graph_2d, m_graph_3d;
    std::string m_expression_2d, m_expression_3d; // the expressions of the pages' graphs
    bool m_busy = false;
};

} // namespace quorvex::gui
