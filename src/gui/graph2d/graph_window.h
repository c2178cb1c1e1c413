#pragma once
#include <QWidget>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
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
    // The next click in the graph places a note of this text; false (after the message) for a
    // text a note can not hold.
    bool arm_note(const QString& text);
    void insert_note_with_dialog();
    // Switches grid lines or a logarithmic axis of the graph drawn last, and draws it again.
    void toggle_grid();
    void toggle_logarithmic(bool x_axis);
    void save_file_with_dialog();
    void open_file_with_dialog();
    // The 3-D view commands: back to the graph's default orientation; the present one kept as the
    // default of this graph and of new graphs; the surface smoothed (halfway to its neighbours).
    void set_default_orientation();
    void save_default_orientation();
    void smooth_surface();
    // A surface's margin commands scale it: a larger margin, a smaller picture, by a tenth each;
    // back to the graph's default scale; the present scale kept as the default.
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
    SimulationPlayer* m_player;
    QString m_pending_note; // placed by the next click
    int m_drawn = -1; // the document's graph drawn last
};

} // namespace quorvex::gui
