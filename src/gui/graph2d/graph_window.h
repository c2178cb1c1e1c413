#pragma once
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "graph/graph_data.h"

namespace quorvex::graph {
class GraphNote;
} // namespace quorvex::graph

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QStackedWidget;

namespace quorvex::gui {

class DocumentWindow;
class Graph3DView;
class GraphView;
class QtChart2D;
class SimulationPlayer;

// A document's graph window: the list of the document's graphs, the drawn graph (zoom, pan,
// coordinates under the pointer), the errors met while computing it, and export to a picture.
class GraphWindow : public QWidget {
    Q_OBJECT

public:
    explicit GraphWindow(DocumentWindow& document, QWidget* parent = nullptr);
    ~GraphWindow() override;

    // Fills the list from the document's graphs, keeping the current one when it is still there.
    void refresh_list();
    // Computes and draws graph `index` of the document; false (with its messages in the error
    // list) when nothing could be drawn.
    bool draw(int index);
    int current_graph() const;
    // A graph is being computed (the window pumps events meanwhile): another build is refused.
    bool building() const { return m_building; }
    GraphView* view() const { return m_view; }
    // The 3-D picture, shown in the 2-D view's place while a 3-D graph is drawn.
    Graph3DView* view_3d() const { return m_view3d; }
    bool showing_3d() const;
    QtChart2D& chart() { return *m_chart; }
    QStringList errors() const;
    // The family of curves drawn last played as a simulation: its curves in turn in the first
    // one's place until stopped; false with `why` set when the graph drawn is no family of curves.
    bool start_simulation(QString* why = nullptr);
    // Stops a simulation and draws the whole family again.
    void stop_simulation();
    SimulationPlayer& simulation() const { return *m_player; }
    // Asks for a file and writes the drawn graph to it.
    void export_with_dialog();
    // Writes the graph drawn last as a graph file (.g2d); false with the reason in `error`.
    bool save_graph_file(const QString& path, QString* error = nullptr);
    // Shows a graph file instead of a graph of the document; false with the reason in `error`.
    bool open_graph_file(const QString& path, QString* error = nullptr);
    // The graph file shown, empty while a graph of the document is.
    const QString& graph_file() const { return m_file; }
    // A click near a drawn point labels it with its coordinates, or takes its label away.
    void toggle_label_near(QPointF at);
    // A click in the 2-D chart (its coordinates): places the note armed; else a note within 20
    // pixels is offered for deletion (or moving); else the nearest point's label is toggled.
    void click_at(QPointF at);
    // Point labels are added by clicks while this is on (it is at first); off, a click only takes
    // a label away.
    void set_point_labels(bool on) { m_label_mode = on; }
    bool point_labels() const { return m_label_mode; }
    // Takes every note, or every note and point label, off the graph drawn.
    void remove_all_notes();
    void remove_all_texts();
    // The note text the next click places (a moved note's), empty when none is armed.
    const QString& pending_note() const { return m_pending_note; }
    // An editor over the header or the footer of the 2-D graph drawn, with its text: Enter or
    // leaving it keeps the text in the graph, Escape drops it. False where no graph is drawn.
    bool edit_title(bool footer);
    QLineEdit* title_editor() const { return m_title_editor; }
    // A graph file shown is not the document's: the setup can not change it. True, after saying
    // so, while one is shown.
    bool refuse_setup();
    // Whether a 2-D graph of the document is drawn.
    bool showing_2d() const;
    // Whether a 2-D graph file (.g2d) is shown: the view and margin commands act on it and write
    // what they change to the file.
    bool showing_2d_file() const { return m_file_2d.has_value() && !showing_3d(); }
    // The next click in the graph places a note of this text; false (after the message) for a
    // text a note can not hold.
    bool arm_note(const QString& text);
    void insert_note_with_dialog();
    // Switches grid lines or a logarithmic axis of the graph drawn last, and draws it again.
    void toggle_grid();
    void toggle_logarithmic(bool x_axis);
    void save_file_with_dialog();
    void open_file_with_dialog();
    // The view commands: back to the graph's default orientation; the present one kept as the
    // default of this graph (and, for a surface, of new graphs); the surface smoothed (halfway to
    // its neighbours). A 2-D chart can not show depth, inclination or rotation: the graph keeps them.
    void set_default_orientation();
    void save_default_orientation();
    void smooth_surface();
    // The margin commands: on a 2-D graph 25 pixels more or less on every side, the default
    // margins back, the present ones kept as the defaults. A surface's scale it instead: a larger
    // margin, a smaller picture, by a tenth each; back to the default scale; the present kept.
    void change_margin(bool larger);
    void increase_margin() { change_margin(true); }
    void decrease_margin() { change_margin(false); }
    void set_default_margin();
    void save_default_margin();
    // The graph as it is shown, as a picture on the clipboard.
    void copy_to_clipboard();
    // The graph as it is shown, on a printer's page (with a preview when asked).
    void print(bool preview);

    // Tests choose the export file here instead of a dialog.
    std::function<QString(const QString& suggestion)> choose_export_path;

Q_SIGNALS:
    void pointerMoved(const QString& coordinates);

private:
    bool draw_3d(int index);
    // The graph of the document drawn last, null when none (or a graph file) is shown.
    graph::GraphData* drawn_graph();
    // What the 2-D view and margin commands change: the drawn graph of the document, or the
    // attributes of the 2-D graph file shown; null when neither is shown.
    graph::GraphData* graph_of_2d_view();
    // After a view or margin command changed graph_of_2d_view(): the document is marked changed,
    // or the graph file shown is written again.
    void keep_2d_view_change();
    // Says a message under the graph window's caption (collected in tests).
    void tell(const QString& text);
    // After a build with errors: the box that points to the error list, and the status line.
    void tell_errors(const std::string& name);
    // The caption of the document's window while this graph is shown.
    void set_caption(const std::string& name);
    void commit_title();
    // Asks whether to delete (or move) a note; the graph is drawn again when it changed.
    void ask_remove_note(graph::GraphNote& note);
    // Puts the note the user armed at (x, y) of the picture shown; false when none was armed.
    bool place_pending_note(int x, int y);
    // Adds a point label at a place (series and point, or a grid point) of the graph drawn, with
    // the text `label` makes, or takes away the label there; false when no graph is drawn.
    using NumberText = std::function<std::string(double)>;
    bool toggle_label(size_t place_x, size_t place_y, const std::function<std::string(const NumberText&)>& label);
    // A click on a surface's grid point labels it with its coordinates, or takes its label away.
    void toggle_label_3d(size_t i, size_t j, double x, double z);
    bool open_graph_file_3d(const QString& path, QString* error);
    // The window's state while a graph file is shown: its path, and what reading it reported.
    void show_graph_file(const QString& path, const std::vector<std::string>& messages);
    QWidget* shown_picture() const;

    DocumentWindow& m_document;
    QComboBox* m_graphs;
    QStackedWidget* m_pages;
    GraphView* m_view;
    Graph3DView* m_view3d;
    std::unique_ptr<QtChart2D> m_chart;
    QListWidget* m_errors;
    QLabel* m_status;
    QString m_file;
    std::optional<graph::GraphData> m_file_2d; // the attributes of the 2-D graph file shown
    SimulationPlayer* m_player;
    QString m_pending_note; // placed by the next click
    int m_drawn = -1; // the document's graph drawn last
    bool m_label_mode = true;
    bool m_building = false;
    QLineEdit* m_title_editor = nullptr;
    bool m_editing_footer = false;
};

} // namespace quorvex::gui
