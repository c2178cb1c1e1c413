#include "graph_window.h"

#include "batch_export.h"
#include "graph_view.h"
#include "qt_chart_2d.h"
#include "simulation_player.h"

#include "graph/build_2d.h"
#include "graph/graph_file_3d.h"
#include "graph/sweep_3d.h"
#include "gui/graph3d/graph3d_view.h"
#include "graph/graph_file.h"
#include "graph/graph_limits.h"
#include "graph/graph_types.h"
#include "graph/view_2d.h"
#include "desktop/document_hub.h"
#include "gui/common/sound_player.h"
#include "gui/common/message_reporter.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "store/ini_file.h"
#include "gui/editor/document_window.h"

#include <QScopeGuard>
#include <QAbstractSeries>
#include <QChart>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <cmath>
#include <sstream>

namespace quorvex::gui {

GraphWindow::GraphWindow(DocumentWindow& document, QWidget* parent)
    : QWidget(parent),
      m_document(document),
      m_graphs(new QComboBox(this)),
      m_pages(new QStackedWidget(this)),
      m_view(new GraphView(this)),
      m_view3d(new Graph3DView(this)),
      m_chart(std::make_unique<QtChart2D>(m_view)),
      m_errors(new QListWidget(this)),
      m_status(new QLabel(this)),
      m_player(new SimulationPlayer(*m_chart, this)) {
    setObjectName(QStringLiteral("graphWindow"));
    connect(m_player, &SimulationPlayer::frameShown, this,
            [this](const QString& label) { m_status->setText(tr("Simulating: %1  (Esc stops)").arg(label)); });
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this, [this] { stop_simulation(); });
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    // Only while playing: otherwise Escape belongs to the build's progress dialog, a child here.
    escape->setEnabled(false);
    connect(m_player, &SimulationPlayer::runningChanged, escape, &QShortcut::setEnabled);
    m_graphs->setObjectName(QStringLiteral("graphList"));
    m_graphs->setMinimumContentsLength(16);
    auto* draw_button = new QPushButton(tr("&Draw"), this);
    auto* whole = new QPushButton(tr("&Whole Graph"), this);
    auto* export_button = new QPushButton(tr("E&xport..."), this);
    auto* copy_button = new QPushButton(tr("&Copy"), this);
    auto* print_button = new QPushButton(tr("&Print..."), this);
    auto* label = new QLabel(tr("&Graph:"), this);
    label->setBuddy(m_graphs);
    auto* bar = new QHBoxLayout;
    bar->addWidget(label);
    bar->addWidget(m_graphs, 1);
    bar->addWidget(draw_button);
    bar->addWidget(whole);
    bar->addWidget(export_button);
    bar->addWidget(copy_button);
    bar->addWidget(print_button);

    m_errors->setObjectName(QStringLiteral("graphErrors"));
    m_errors->setToolTip(tr("Graph Errors"));
    m_errors->setVisible(false);
    m_errors->setMaximumHeight(fontMetrics().height() * 6); // a few lines; the graph keeps the room
    m_pages->addWidget(m_view);
    m_pages->addWidget(m_view3d);
    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(m_pages);
    split->addWidget(m_errors);
    split->setStretchFactor(0, 4);
    split->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(bar);
    layout->addWidget(split, 1);
    layout->addWidget(m_status);

    connect(draw_button, &QPushButton::clicked, this, [this] { draw(current_graph()); });
    connect(m_graphs, qOverload<int>(&QComboBox::activated), this, [this](int index) { draw(index); });
    connect(whole, &QPushButton::clicked, this, [this] {
        if (showing_3d())
            m_view3d->reset_view();
        else
            m_view->reset_zoom();
    });
    connect(export_button, &QPushButton::clicked, this, &GraphWindow::export_with_dialog);
    connect(copy_button, &QPushButton::clicked, this, &GraphWindow::copy_to_clipboard);
    connect(print_button, &QPushButton::clicked, this, [this] { print(false); });
    connect(m_view, &GraphView::pointerMoved, this, [this](QPointF value, bool inside) {
        const QString text = inside ? QStringLiteral("x = %1   y = %2").arg(value.x(), 0, 'g', 8).arg(value.y(), 0, 'g', 8)
                                    : QString();
        m_status->setText(text);
        Q_EMIT pointerMoved(text);
    });
    connect(m_view, &GraphView::clicked, this, &GraphWindow::click_at);
    // A double click on the header or the footer edits it in place; anywhere else it opens the
    // graph's setup (Home and the Whole Graph button show the whole graph).
    connect(m_view, &GraphView::doubleClicked, this, [this](QPointF at) {
        const QtChart2D::Region region = m_chart->region_at(at);
        if ((region == QtChart2D::Region::Header || region == QtChart2D::Region::Footer) &&
            edit_title(region == QtChart2D::Region::Footer))
            return;
        Q_EMIT m_document.frameCommand(QStringLiteral("graphSetup"));
    });
    connect(m_view3d, &Graph3DView::pointerText, this, [this](const QString& text) {
        m_status->setText(text);
        Q_EMIT pointerMoved(text);
    });
    connect(m_view3d, &Graph3DView::doubleClicked, this,
            [this] { Q_EMIT m_document.frameCommand(QStringLiteral("graphSetup")); });
    connect(m_view3d, &Graph3DView::clicked, this, [this](const QPoint& at) { place_pending_note(at.x(), at.y()); });
    connect(m_view3d, &Graph3DView::pointPicked, this, [this](const graph::GridPick& pick) {
        if (m_pending_note.isEmpty()) toggle_label_3d(pick.i, pick.j, pick.point.x, pick.point.y);
    });
    // The user's turn is the graph's: it survives a rebuild and is saved with the document.
    connect(m_view3d, &Graph3DView::viewChanged, this, [this](const graph::View3D& view) {
        auto& graphs = m_document.document().Graphs;
        if (m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return;
        graph::keep_view_in_graph(graphs[static_cast<size_t>(m_drawn)].Data, view);
        m_document.parser().set_vars_saved(false);
    });
    refresh_list();
}

GraphWindow::~GraphWindow() = default;

graph::GraphData* GraphWindow::drawn_graph() {
    auto& graphs = m_document.document().Graphs;
    if (m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return nullptr;
    return &graphs[static_cast<size_t>(m_drawn)].Data;
}

bool GraphWindow::showing_2d() const { return !showing_3d() && m_drawn >= 0; }

graph::GraphData* GraphWindow::graph_of_2d_view() {
    if (showing_2d()) return drawn_graph();
    return showing_2d_file() ? &*m_file_2d : nullptr;
}

void GraphWindow::keep_2d_view_change() {
    if (!showing_2d_file()) {
        m_document.parser().set_vars_saved(false);
        return;
    }
    std::string why;
    if (!graph::write_graph_file(m_file.toStdString(), m_chart->data(), *m_file_2d, &why))
        m_status->setText(tr("The graph file could not be written: %1").arg(QString::fromStdString(why)));
}

void GraphWindow::tell(const QString& text) {
    if (QStringList* collected = m_document.services().collected_messages)
        *collected << tr("Graphing Utility: ") + text;
    else
        QMessageBox::information(this, tr("Graphing Utility"), text);
}

void GraphWindow::tell_errors(const std::string& name) {
    const QString text = tr("Errors occured while calculating the data for the graph \"%1\", see the \"Graph "
                            "Errors\" list for details.")
                             .arg(QString::fromStdString(name));
    m_status->setText(text);
    tell(text);
}

void GraphWindow::set_caption(const std::string& name) {
    // The document's caption without its modified mark, and the graph's name, in capitals.
    QString editor = m_document.caption();
    editor.remove(QStringLiteral("[*]"));
    setWindowTitle(QStringLiteral("%1 : %2").arg(editor, QString::fromStdString(name)).toUpper());
    m_document.update_caption();
}

bool GraphWindow::refuse_setup() {
    if (m_file.isEmpty()) return false;
    tell(tr("The graph shown was opened from the graph file \"%1\", which holds numbers and no functions: the graph "
            "setup can not change it. Choose a graph of the document to set it up.")
             .arg(m_file));
    return true;
}

bool GraphWindow::showing_3d() const { return m_pages->currentWidget() == m_view3d; }

QWidget* GraphWindow::shown_picture() const { return m_pages->currentWidget(); }

int GraphWindow::current_graph() const { return m_graphs->currentIndex(); }

void GraphWindow::refresh_list() {
    const QString kept = m_graphs->currentText();
    m_graphs->clear();
    for (const document::DocumentGraph& graph : m_document.document().Graphs)
        m_graphs->addItem(QString::fromStdString(graph.Data.Name.empty() ? "(unnamed)" : graph.Data.Name));
    const int again = m_graphs->findText(kept);
    if (again >= 0) m_graphs->setCurrentIndex(again);
    if (m_graphs->count() == 0)
        m_status->setText(tr("This document has no graphs yet: Graph > New Graph of a Function makes one."));
}

QStringList GraphWindow::errors() const {
    QStringList all;
    for (int i = 0; i < m_errors->count(); ++i) all << m_errors->item(i)->text();
    return all;
}

bool GraphWindow::draw(int index) {
    auto& graphs = m_document.document().Graphs;
    if (index < 0 || index >= static_cast<int>(graphs.size()) || m_building) return false;
    // The setup is disabled while the graph is built: events are pumped, and a change to the
    // graph's data in the middle of the sweep would pull it from under the build.
    m_building = true;
    Q_EMIT m_document.graphBuilding(true);
    const auto built = qScopeGuard([this] {
        m_building = false;
        Q_EMIT m_document.graphBuilding(false);
    });
    m_player->stop();
    m_file.clear();
    m_file_2d.reset();
    m_drawn = -1;
    document::DocumentGraph& graph = graphs[static_cast<size_t>(index)];
    m_graphs->setCurrentIndex(index);
    if (graph.Data.GetGraphType() == 2) return draw_3d(index);
    m_pages->setCurrentWidget(m_view);
    std::vector<graph::SeriesLook> looks;
    for (size_t f = 0; f < graph.Data.Functions.size(); ++f) {
        const document::FunctionStyle& style = graph.StyleOf(f);
        looks.push_back({style.LineColor, style.LineWidth});
    }
    if (SoundPlayer* sounds = m_document.services().sounds) sounds->play(QStringLiteral("QClick.wav"));
    delete m_title_editor;
    m_title_editor = nullptr;
    ProgressHost host(this, tr("Building Graph: %1").arg(QString::fromStdString(graph.Data.Name)));
    host.set_progress("Computing Data Values, Please Wait!", 0);
    graph::SweepReport report;
    MessageReporter reporter(this, m_document.services().collected_messages);
    // A data set's text that fails sounds the error and goes to the list, through the hub.
    desktop::DocumentHub& hub = m_document.hub();
    hub.set_graph_error([&report](std::string_view message) { report.errors.emplace_back(message); });
    const graph::DataValue data_value = [&hub](const std::string& text, engine::complex& value) {
        return hub.ComputeValue(text, value);
    };
    const bool drawn =
        graph::build_2d(m_document.parser(), graph.Data, looks, *m_chart, report, &reporter, &host, data_value);
    hub.set_graph_error({});
    if (drawn && !report.cancelled) host.set_progress("Generating Graph!", 100);
    m_errors->clear();
    for (const std::string& error : report.errors) m_errors->addItem(QString::fromStdString(error));
    m_errors->setVisible(!report.errors.empty());
    m_view->reset_zoom();
    m_view->viewport()->update();
    if (report.cancelled) {
        m_status->setText(tr("Stopped."));
        return false;
    }
    if (!drawn) {
        if (SoundPlayer* sounds = m_document.services().sounds; sounds && !report.errors.empty())
            sounds->play(QStringLiteral("Error.wav"));
        m_status->setText(tr("The graph \"%1\" could not be created; see the errors below.")
                              .arg(QString::fromStdString(graph.Data.Name)));
        return false;
    }
    m_drawn = index;
    set_caption(graph.Data.Name);
    m_status->clear();
    if (!report.errors.empty()) tell_errors(graph.Data.Name);
    return true;
}

bool GraphWindow::start_simulation(QString* why) {
    if (m_drawn < 0 || showing_3d() || !m_file.isEmpty()) {
        if (why) *why = tr("To run a graphic simulation, you must first build a graph with a family of curves.");
        return false;
    }
    return m_player->start(why);
}

void GraphWindow::stop_simulation() {
    if (!m_player->running()) return;
    m_player->stop();
    draw(m_drawn);
}

bool GraphWindow::draw_3d(int index) {
    document::DocumentGraph& graph = m_document.document().Graphs[static_cast<size_t>(index)];
    ProgressHost host(this, tr("Building Graph: %1").arg(QString::fromStdString(graph.Data.Name)));
    graph::SweepReport report;
    const bool drawn = graph::compute_3d(m_document.parser(), graph.Data, *m_view3d, report, &host);
    if (graph.Data.XAxisVar && graph.Data.ZAxisVar)
        m_view3d->set_axis_names(QString::fromStdString(graph.Data.XAxisVar->name()),
                                 QString::fromStdString(graph.Data.ZAxisVar->name()));
    m_errors->clear();
    for (const std::string& error : report.errors) m_errors->addItem(QString::fromStdString(error));
    m_errors->setVisible(!report.errors.empty());
    m_pages->setCurrentWidget(m_view3d);
    if (report.cancelled) {
        m_view3d->clear();
        m_status->setText(tr("Stopped."));
        return false;
    }
    if (!drawn) {
        m_view3d->clear();
        m_status->setText(tr("The graph \"%1\" could not be created; see the errors below.")
                              .arg(QString::fromStdString(graph.Data.Name)));
        return false;
    }
    m_drawn = index;
    set_caption(graph.Data.Name);
    m_status->setText(tr("Drag to turn the graph, Shift+drag for depth, the wheel to scale, Home for the default view."));
    if (!report.errors.empty()) tell_errors(graph.Data.Name);
    return true;
}

void GraphWindow::toggle_grid() {
    auto& graphs = m_document.document().Graphs;
    if (m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return;
    int& grid = graphs[static_cast<size_t>(m_drawn)].Data.ShowGridLines;
    grid = grid ? 0 : 1;
    m_document.parser().set_vars_saved(false);
    draw(m_drawn);
}

void GraphWindow::toggle_logarithmic(bool x_axis) {
    auto& graphs = m_document.document().Graphs;
    if (m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return;
    graph::GraphData& shown = graphs[static_cast<size_t>(m_drawn)].Data;
    int& flag = x_axis ? shown.XAxisLogarithmic : shown.YAxisLogarithmic;
    flag = flag ? 0 : 1;
    m_document.parser().set_vars_saved(false);
    draw(m_drawn); // a type or a range that can not have it says so and draws it linear
}

bool GraphWindow::save_graph_file(const QString& path, QString* error) {
    const auto& graphs = m_document.document().Graphs;
    if (m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) {
        if (error) *error = tr("Draw a graph first: a graph file holds the numbers drawn.");
        return false;
    }
    std::string why;
    const graph::GraphData& shown = graphs[static_cast<size_t>(m_drawn)].Data;
    const bool written = showing_3d() ? graph::write_graph_file_3d(path.toStdString(), m_view3d->grid(), shown, &why)
                                      : graph::write_graph_file(path.toStdString(), m_chart->data(), shown, &why);
    if (!written) {
        if (error) *error = QString::fromStdString(why);
        return false;
    }
    return true;
}

void GraphWindow::show_graph_file(const QString& path, const std::vector<std::string>& messages) {
    m_errors->clear();
    for (const std::string& message : messages) m_errors->addItem(QString::fromStdString(message));
    m_errors->setVisible(!messages.empty());
    m_file = QFileInfo(path).absoluteFilePath();
    m_file_2d.reset();
    m_drawn = -1; // a file is no graph of the document
    setWindowTitle(m_file);
    m_document.update_caption();
    m_status->setText(tr("Graph file %1").arg(m_file));
}

bool GraphWindow::open_graph_file_3d(const QString& path, QString* error) {
    std::string why;
    std::optional<graph::GraphFile3D> file =
        graph::read_graph_file_3d(path.toStdString(), &why, m_document.services().settings);
    if (!file) {
        if (error) *error = QString::fromStdString(why);
        return false;
    }
    graph::build_3d(file->graph, file->grid, *m_view3d);
    m_pages->setCurrentWidget(m_view3d);
    show_graph_file(path, file->messages);
    return true;
}

bool GraphWindow::open_graph_file(const QString& path, QString* error) {
    m_player->stop();
    if (QFileInfo(path).suffix().compare(QStringLiteral("g3d"), Qt::CaseInsensitive) == 0)
        return open_graph_file_3d(path, error);
    std::string why;
    std::optional<graph::GraphFile2D> file = graph::read_graph_file(path.toStdString(), &why, m_document.services().settings);
    if (!file) {
        if (error) *error = QString::fromStdString(why);
        return false;
    }
    // The file's numbers as they were drawn, in the file's own colours and titles.
    graph::GraphData& shown = file->graph;
    m_chart->clear();
    const graph::GraphTypeInfo* info = graph::find_graph_type(shown.Type);
    m_chart->set_type(info ? info->drawn_as : graph::graph_type::Plot);
    m_chart->set_data(file->data);
    for (size_t s = 0; s < file->data.series(); ++s)
        m_chart->set_series_style(s, graph::series_style(static_cast<int>(s), shown.Type, std::nullopt, 1,
                                                         shown.DataAreaBackgroundColor));
    m_chart->set_titles(shown.Header, shown.Footer, shown.XAxisTitle, shown.YAxisTitle);
    m_chart->set_colors(graph::chart_colors_of(shown));
    m_chart->set_margins(graph::margin_change(shown));
    if (const auto bounds = graph::shown_bounds(file->data, shown.Type)) m_chart->set_bounds(*bounds);
    m_chart->set_grid(true);
    m_pages->setCurrentWidget(m_view);
    m_view->reset_zoom();
    show_graph_file(path, file->messages);
    m_file_2d = std::move(shown);
    return true;
}

void GraphWindow::save_file_with_dialog() {
    const QString base = m_graphs->currentText().isEmpty() ? QStringLiteral("graph") : m_graphs->currentText();
    const QString suggestion = (m_document.file_path().isEmpty() ? QDir::homePath()
                                                                  : QFileInfo(m_document.file_path()).absolutePath()) +
                               QLatin1Char('/') + base + (showing_3d() ? QStringLiteral(".g3d") : QStringLiteral(".g2d"));
    QString path = choose_export_path
                       ? choose_export_path(suggestion)
                       : QFileDialog::getSaveFileName(this, tr("Save Graph File"), suggestion,
                                                      showing_3d() ? tr("Graph Files (*.g3d)") : tr("Graph Files (*.g2d)"));
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += showing_3d() ? QStringLiteral(".g3d") : QStringLiteral(".g2d");
    QString error;
    if (!save_graph_file(path, &error)) QMessageBox::warning(this, tr("Save Graph File"), error);
}

void GraphWindow::open_file_with_dialog() {
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Graph File"), QDir::homePath(),
                                                      tr("Graph Files (*.g2d *.g3d);;All Files (*)"));
    if (path.isEmpty()) return;
    QString error;
    if (!open_graph_file(path, &error)) QMessageBox::warning(this, tr("Open Graph File"), error);
}

void GraphWindow::set_default_orientation() {
    if (graph::GraphData* shown = graph_of_2d_view()) {
        graph::set_default_orientation_2d(*shown);
        keep_2d_view_change();
        return;
    }
    if (!showing_3d()) return;
    m_view3d->reset_view(); // the graph keeps it through viewChanged
}

void GraphWindow::save_default_orientation() {
    if (graph::GraphData* shown = graph_of_2d_view()) {
        graph::save_default_orientation_2d(*shown);
        keep_2d_view_change();
        tell(tr("The present depth, inclination and rotation are now the default orientation of this graph."));
        return;
    }
    auto& graphs = m_document.document().Graphs;
    if (!showing_3d() || m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return;
    const graph::View3D view = m_view3d->view();
    graph::keep_default_view_in_graph(graphs[static_cast<size_t>(m_drawn)].Data, view);
    m_view3d->set_view(view, view);
    m_document.parser().set_vars_saved(false);
    // New graphs start from it too: the settings keep whole degrees.
    if (store::IniFile* settings = m_document.services().settings) {
        const char* section = "Graph Default Orientation";
        settings->WriteString(section, "PerspectiveDepth", std::to_string(std::lround(view.PerspectiveDepth)));
        settings->WriteString(section, "XRotation3D", std::to_string(std::lround(view.XRotation)));
        settings->WriteString(section, "YRotation3D", std::to_string(std::lround(view.YRotation)));
        settings->WriteString(section, "ZRotation3D", std::to_string(std::lround(view.ZRotation)));
        settings->Save();
    }
    const QString text = tr("The present orientation is now the default of this graph and of new 3-D graphs.");
    if (QStringList* collected = m_document.services().collected_messages)
        *collected << tr("Graphing Utility: ") + text;
    else
        QMessageBox::information(this, tr("Graphing Utility"), text);
}

void GraphWindow::change_margin(bool larger) {
    if (graph::GraphData* shown = graph_of_2d_view()) {
        graph::change_margins(*shown, larger ? graph::k_margin_step : -graph::k_margin_step);
        m_chart->set_margins(graph::margin_change(*shown));
        keep_2d_view_change();
        return;
    }
    if (showing_3d()) m_view3d->change_scale(larger ? 0.1 : -0.1); // the graph keeps it through viewChanged
}

void GraphWindow::set_default_margin() {
    if (graph::GraphData* shown = graph_of_2d_view()) {
        graph::set_default_margins(*shown);
        m_chart->set_margins(graph::margin_change(*shown));
        keep_2d_view_change();
        return;
    }
    auto& graphs = m_document.document().Graphs;
    if (!showing_3d() || m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return;
    graph::View3D view = m_view3d->view();
    view.Scale = graphs[static_cast<size_t>(m_drawn)].Data.DefaultScale;
    m_view3d->set_view(view);
    graph::keep_view_in_graph(graphs[static_cast<size_t>(m_drawn)].Data, view);
    m_document.parser().set_vars_saved(false);
}

void GraphWindow::save_default_margin() {
    if (graph::GraphData* shown = graph_of_2d_view()) {
        graph::save_default_margins(*shown);
        keep_2d_view_change();
        tell(tr("The present margins are now the default margins of this graph."));
        return;
    }
    auto& graphs = m_document.document().Graphs;
    if (!showing_3d() || m_drawn < 0 || m_drawn >= static_cast<int>(graphs.size())) return;
    graph::GraphData& shown = graphs[static_cast<size_t>(m_drawn)].Data;
    shown.DefaultScale = static_cast<float>(m_view3d->view().Scale);
    m_view3d->set_view(m_view3d->view(), graph::default_view_of_graph(shown)); // Home keeps it too
    m_document.parser().set_vars_saved(false);
    const QString text = tr("The present scale is now the default of this graph.");
    if (QStringList* collected = m_document.services().collected_messages)
        *collected << tr("Graphing Utility: ") + text;
    else
        QMessageBox::information(this, tr("Graphing Utility"), text);
}

void GraphWindow::smooth_surface() {
    if (!showing_3d() || m_view3d->grid().empty()) return;
    graph::Grid3D smoothed = m_view3d->grid();
    smoothed.smooth(0.5);
    m_view3d->set_grid(smoothed);
    m_status->setText(tr("Smoothed; Draw computes the surface again."));
}

void GraphWindow::copy_to_clipboard() {
    QGuiApplication::clipboard()->setImage(shown_picture()->grab().toImage());
    m_status->setText(tr("The graph is on the clipboard."));
}

void GraphWindow::print(bool preview) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    const auto paint = [this](QPrinter* target) {
        const QPixmap picture = shown_picture()->grab();
        QPainter painter(target);
        const QRect page = painter.viewport();
        QSize size = picture.size();
        size.scale(page.size(), Qt::KeepAspectRatio);
        painter.setViewport(page.x(), page.y(), size.width(), size.height());
        painter.setWindow(picture.rect());
        painter.drawPixmap(0, 0, picture);
    };
    if (preview) {
        QPrintPreviewDialog dialog(&printer, this);
        connect(&dialog, &QPrintPreviewDialog::paintRequested, this, paint);
        dialog.exec();
        return;
    }
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) paint(&printer);
}

void GraphWindow::export_with_dialog() {
    if (current_graph() < 0) return;
    const QString base = m_graphs->currentText().isEmpty() ? QStringLiteral("graph") : m_graphs->currentText();
    const QString suggestion = (m_document.file_path().isEmpty() ? QDir::homePath()
                                                                  : QFileInfo(m_document.file_path()).absolutePath()) +
                               QLatin1Char('/') + base + QStringLiteral(".png");
    QSize size = shown_picture()->size();
    QString path;
    if (choose_export_path) {
        path = choose_export_path(suggestion);
    } else {
        path = QFileDialog::getSaveFileName(this, tr("Export Graph"), suggestion,
                                            tr("PNG picture (*.png);;SVG drawing (*.svg);;PDF (*.pdf)"));
        if (path.isEmpty()) return;
        // The picture's size: the window's by default.
        QDialog ask(this);
        ask.setWindowTitle(tr("Export Graph"));
        auto* width = new QSpinBox(&ask);
        auto* height = new QSpinBox(&ask);
        for (QSpinBox* side : {width, height}) {
            side->setRange(16, 20000);
            side->setSuffix(tr(" pixels"));
        }
        width->setValue(size.width());
        height->setValue(size.height());
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &ask);
        connect(buttons, &QDialogButtonBox::accepted, &ask, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, &ask, &QDialog::reject);
        auto* form = new QFormLayout(&ask);
        form->addRow(tr("&Width:"), width);
        form->addRow(tr("&Height:"), height);
        form->addRow(buttons);
        if (ask.exec() != QDialog::Accepted) return;
        size = QSize(width->value(), height->value());
    }
    if (path.isEmpty()) return;
    // Drawn afresh at that size: the picture is the graph, not the window's zoom.
    QStringList messages;
    auto& graph = m_document.document().Graphs[static_cast<size_t>(current_graph())];
    if (!draw_graph_picture(m_document.parser(), graph, path, size, messages))
        QMessageBox::warning(this, tr("Export Graph"), messages.join(QLatin1Char('\n')));
}

} // namespace quorvex::gui
