#include "document_window.h"

#include "math_editor.h"

#include "gui/graph2d/graph_window.h"
#include "gui/lists/list_pane.h"

#include "functions/builtin_functions.h"
#include "gui/common/progress_host.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/library/library_dialog.h"
#include "gui/lists/manager_dialog.h"
#include "gui/tools/function_solver_dialog.h"
#include "gui/tools/tool_windows.h"
#include "store/ini_file.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QFontInfo>
#include <QFileSystemWatcher>
#include <QTimer>
#include <QMessageBox>
#include <QLineEdit>
#include <QSplitter>
#include <QTextBlock>
#include <QVBoxLayout>

namespace quorvex::gui {

DocumentWindow::DocumentWindow(Services& services, QString untitled_name, QWidget* parent)
    : QWidget(parent),
      m_services(services),
      m_untitled(std::move(untitled_name)),
      // The system folder also holds the statistics tables, which the engine names by appending.
      m_parser(std::make_unique<engine::Parser>(&functions::builtin_functions(),
                                                services.library_dir.toStdString() + "/",
                                                services.data_dir.toStdString())),
      m_reporter(this, services.collected_messages),
      m_document(std::make_unique<document::Document>(*m_parser, &m_reporter)),
      m_splitter(new QSplitter(Qt::Horizontal, this)),
      m_editor(new MathEditor(services, *m_parser, m_splitter)) {
    setObjectName(QStringLiteral("documentWindow"));
    m_parser->set_reporter(&m_reporter);
    // A new engine takes the program's options, then the number formats for new documents.
    document::ApplyToNewParser(services.options, *m_parser);
    if (services.settings) document::ReadGlobalSettings(*services.settings, *m_parser);

    m_splitter->addWidget(m_editor);
    m_splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
    apply_font();
    connect(m_editor->document(), &QTextDocument::modificationChanged, this, [this] { update_caption(); });
    desktop::HubListener listener;
    listener.variables_changed = [this] {
        m_editor->refresh_stale_marks(); // an edit or a deletion in a manager changes answers too
        update_caption();
        Q_EMIT variablesChanged();
    };
    listener.functions_changed = [this] {
        m_editor->refresh_names();
        m_editor->refresh_stale_marks();
        update_caption();
        Q_EMIT functionsChanged();
    };
    listener.play = [this](std::string_view sound) {
        if (m_services.sounds) m_services.sounds->play(QString::fromUtf8(sound.data(), static_cast<qsizetype>(sound.size())));
    };
    m_hub = std::make_unique<desktop::DocumentHub>(*m_parser, *m_document, m_reporter, std::move(listener));
    m_tools = std::make_unique<ToolWindows>(*this);
    connect(m_editor, &MathEditor::variablesChanged, this, [this] {
        update_caption();
        Q_EMIT variablesChanged();
    });
    connect(m_editor, &MathEditor::functionsChanged, this, [this] {
        update_caption();
        Q_EMIT functionsChanged();
    });
    update_caption();
}

DocumentWindow::~DocumentWindow() {
    // The panes and dialogs read the engine while they go (a list's model, the editor's
    // colouring): they go first, while the engine and the document are still here.
    delete m_library;
    delete m_variable_manager;
    delete m_function_manager;
    delete m_solver;
    m_tools.reset();
    delete m_splitter;
}

QString DocumentWindow::caption() const {
    // The path as it is written: on a file system that tells case apart, capitals would name
    // another file.
    const QString name = m_path.isEmpty() ? m_untitled : m_path;
    return QStringLiteral("MATH EDITOR - ") + name + QStringLiteral("[*]");
}

void DocumentWindow::update_caption() {
    const bool graph = graph_shown() && !m_graph_window->windowTitle().isEmpty();
    setWindowTitle(graph ? m_graph_window->windowTitle() + QStringLiteral("[*]") : caption());
    setWindowModified(is_modified());
    Q_EMIT captionChanged();
}

void DocumentWindow::apply_font() {
    const document::FontRecord& record = m_document->Font;
    QFont font(QString::fromStdString(record.FaceName));
    font.setStyleHint(QFont::TypeWriter);
    // The document keeps a platform font height in pixels (negative: the character height).
    font.setPixelSize(std::clamp(std::abs(record.Height) + 3, 10, 72));
    font.setBold(record.Weight >= 600);
    font.setItalic(record.Italic != 0);
    m_editor->setFont(font);
    for (ListPane* pane : {m_variable_list, m_function_list})
        if (pane) pane->setFont(font);
}

void DocumentWindow::show_text() {
    QString text;
    for (size_t i = 0; i < m_document->Lines.size(); ++i) {
        if (i) text += QLatin1Char('\n');
        text += QString::fromStdString(m_document->Lines[i]);
    }
    m_editor->setPlainText(text);
    m_editor->refresh_names(); // the document brought its functions
    Q_EMIT variablesChanged();
    Q_EMIT functionsChanged();
    apply_font();
}

bool DocumentWindow::load(const QString& path) {
    ProgressHost host(this, QStringLiteral("Open File"));
    m_document->set_host(&host);
    m_document->set_progress([&host](std::string_view text, int percent) { host.set_progress(text, percent); });
    const bool loaded = m_document->Read(path.toStdString());
    m_document->set_host(nullptr);
    m_document->set_progress({});
    if (!loaded) return false;
    m_path = QFileInfo(path).absoluteFilePath();
    show_text();
    m_editor->document()->setModified(false);
    update_caption();
    watch_file();
    return true;
}

void DocumentWindow::watch_file() {
    m_on_disk = desktop::FileStamp::of(m_path.toStdString());
    m_declined = {};
    m_removed_on_disk = false;
    if (!m_watcher) {
        m_watcher = new QFileSystemWatcher(this);
        // Several notices come for one save by another program: the file is looked at once,
        // when they have settled.
        auto* settle = new QTimer(this);
        settle->setSingleShot(true);
        settle->setInterval(200);
        connect(m_watcher, &QFileSystemWatcher::fileChanged, settle, qOverload<>(&QTimer::start));
        connect(settle, &QTimer::timeout, this, &DocumentWindow::check_file_on_disk);
    }
    if (!m_watcher->files().isEmpty()) m_watcher->removePaths(m_watcher->files());
    if (!m_path.isEmpty()) m_watcher->addPath(m_path);
}

void DocumentWindow::check_file_on_disk() {
    if (m_path.isEmpty() || m_checking_disk) return;
    m_checking_disk = true;
    const desktop::FileStamp now = desktop::FileStamp::of(m_path.toStdString());
    // A file replaced by a rename is a new file: the watch follows it.
    if (now.exists && m_watcher && !m_watcher->files().contains(m_path)) m_watcher->addPath(m_path);
    if (!now.exists && !m_removed_on_disk && m_on_disk.exists) {
        m_removed_on_disk = true;
        m_reporter.report(QStringLiteral("The file \"%1\" was deleted or moved by another program.\n\n"
                                         "Its document stays open here; save it to keep it.")
                              .arg(m_path)
                              .toStdString(),
                          "File Changed", engine::MessageKind::Warning);
        m_parser->set_vars_saved(false); // closing now asks to save
        update_caption();
    } else if (now.exists && !(now == m_on_disk) && !(now == m_declined)) {
        m_removed_on_disk = false;
        const QString lost = is_modified() ? QStringLiteral("\n\nThe changes made here since it was saved will be lost.")
                                           : QString();
        const int answer = ask_user(m_services, this, QStringLiteral("File Changed"),
                                    QStringLiteral("The file \"%1\" was changed by another program.\n\nDo you want to "
                                                   "reload it?%2")
                                        .arg(m_path, lost),
                                    QMessageBox::Yes | QMessageBox::No);
        if (answer == QMessageBox::Yes)
            reload();
        else
            m_declined = now;
    }
    m_checking_disk = false;
}

bool DocumentWindow::reload() {
    std::string before;
    const bool had_text = compose(before);
    if (graph_shown()) toggle_graph();
    if (load(m_path)) return true;
    // The file no longer reads: what was open comes back, to be saved elsewhere.
    if (had_text && m_document->ReadText(before)) {
        show_text();
        m_editor->document()->setModified(true);
        update_caption();
    }
    return false;
}

bool DocumentWindow::may_overwrite(const QString& target) {
    if (m_path.isEmpty() || QFileInfo(target).absoluteFilePath() != m_path) return true;
    const desktop::FileStamp now = desktop::FileStamp::of(m_path.toStdString());
    if (!now.exists || now == m_on_disk) return true;
    return ask_user(m_services, this, QStringLiteral("Save File"),
                    QStringLiteral("The file \"%1\" was changed by another program since it was opened here.\n\n"
                                   "Do you want to overwrite it?")
                        .arg(m_path),
                    QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool DocumentWindow::load_recovered(const std::string& text, const QString& origin) {
    if (!m_document->ReadText(text)) return false;
    m_path = origin;
    show_text();
    m_editor->document()->setModified(true);
    update_caption();
    if (!m_path.isEmpty()) watch_file();
    return true;
}

bool DocumentWindow::compose(std::string& text) {
    m_document->Lines.clear();
    for (QTextBlock block = m_editor->document()->begin(); block.isValid(); block = block.next())
        m_document->Lines.push_back(block.text().toStdString());
    return m_document->Compose(text);
}

bool DocumentWindow::save(const QString& path) {
    const QString target = path.isEmpty() ? m_path : path;
    if (target.isEmpty() || !may_overwrite(target)) return false;
    m_document->Lines.clear();
    for (QTextBlock block = m_editor->document()->begin(); block.isValid(); block = block.next())
        m_document->Lines.push_back(block.text().toStdString());
    ProgressHost host(this, QStringLiteral("Save File"));
    m_document->set_host(&host);
    const bool written = m_document->Write(target.toStdString());
    m_document->set_host(nullptr);
    if (!written) return false;
    if (m_services.sounds) m_services.sounds->play(QStringLiteral("QClick.wav"));
    m_path = QFileInfo(target).absoluteFilePath();
    m_editor->document()->setModified(false);
    update_caption();
    watch_file();
    Q_EMIT saved(m_path);
    return true;
}

void DocumentWindow::closeEvent(QCloseEvent* event) {
    if (may_close(m_save_as ? m_save_as : [] { return QString(); }))
        event->accept();
    else
        event->ignore();
}

GraphWindow* DocumentWindow::graph_window() {
    if (!m_graph_window) {
        m_graph_window = new GraphWindow(*this, m_splitter);
        connect(m_graph_window, &GraphWindow::pointerMoved, this, &DocumentWindow::statusText);
        m_splitter->insertWidget(0, m_graph_window);
        m_graph_window->hide();
    }
    return m_graph_window;
}

bool DocumentWindow::graph_shown() const { return m_graph_window && m_graph_window->isVisible(); }

void DocumentWindow::toggle_graph() {
    GraphWindow* graphs = graph_window();
    const auto shown = [](ListPane* pane) { return pane && pane->isVisible(); };
    if (graph_shown()) {
        graphs->hide();
        m_editor->show();
        // The lists come back as they were beside the editor.
        if (m_variables_before_graph && m_variable_list) m_variable_list->show();
        if (m_functions_before_graph && m_function_list) m_function_list->show();
        share_space();
        m_editor->setFocus();
        update_caption();
        Q_EMIT statusText(QString()); // the coordinates under the pointer were the graph's
        return;
    }
    // The lists belong to the editor: a graph takes the whole place.
    m_variables_before_graph = shown(m_variable_list);
    m_functions_before_graph = shown(m_function_list);
    for (ListPane* pane : {m_variable_list, m_function_list})
        if (pane) pane->hide();
    graphs->refresh_list();
    m_editor->hide();
    graphs->show();
    update_caption();
    if (graphs->current_graph() >= 0) graphs->draw(graphs->current_graph());
    graphs->setFocus();
}

void DocumentWindow::toggle_list(bool variables) {
    // The lists stand beside the editor, not beside a graph.
    if (graph_shown()) return;
    ListPane*& pane = variables ? m_variable_list : m_function_list;
    if (!pane) {
        pane = new ListPane(*this, variables ? ListPane::Kind::Variables : ListPane::Kind::Functions, m_splitter);
        if (lists_at_top())
            m_splitter->insertWidget(0, pane);
        else
            m_splitter->addWidget(pane);
        pane->setFont(m_editor->font());
        connect(this, variables ? &DocumentWindow::variablesChanged : &DocumentWindow::functionsChanged, pane,
                &ListPane::refresh);
        pane->hide();
    }
    pane->setVisible(!pane->isVisible());
    if (pane->isVisible()) pane->refresh();
    share_space();
}

void DocumentWindow::share_space() {
    const int lists = (m_variable_list && m_variable_list->isVisible()) + (m_function_list && m_function_list->isVisible());
    const int whole = m_splitter->orientation() == Qt::Horizontal ? width() : height();
    QList<int> sizes;
    for (int i = 0; i < m_splitter->count(); ++i) {
        QWidget* each = m_splitter->widget(i);
        if (each == m_editor) sizes << (lists ? whole * 55 / 100 : whole);
        else if (each->isVisible() && (each == m_variable_list || each == m_function_list)) sizes << whole * 45 / 100 / lists;
        else if (each == m_graph_window && each->isVisible()) sizes << whole;
        else sizes << 0;
    }
    m_splitter->setSizes(sizes);
}

bool DocumentWindow::lists_at_top() const { return m_splitter->orientation() == Qt::Vertical; }

void DocumentWindow::set_lists_at_top(bool top) {
    if (top == lists_at_top()) return;
    m_splitter->setOrientation(top ? Qt::Vertical : Qt::Horizontal);
    // Above the editor the lists come first; at its right, last.
    for (ListPane* pane : {m_function_list, m_variable_list})
        if (pane) {
            if (top)
                m_splitter->insertWidget(0, pane);
            else
                m_splitter->addWidget(pane);
        }
    share_space();
}

void DocumentWindow::set_editor_font(const QFont& font) {
    document::FontRecord& record = m_document->Font;
    record.FaceName = font.family().left(static_cast<int>(document::FontRecord::MaxFaceName)).toStdString();
    // Kept as the platform's character height, as the document has always kept it.
    const int pixels = QFontInfo(font).pixelSize();
    record.Height = -std::max(1, pixels - 3);
    record.Weight = font.bold() ? 700 : 400;
    record.Italic = font.italic() ? 1 : 0;
    apply_font();
    m_parser->set_vars_saved(false); // the document changed
    update_caption();
}

ManagerDialog* DocumentWindow::open_manager(bool variables, const QString& name) {
    ManagerDialog*& manager = variables ? m_variable_manager : m_function_manager;
    if (!manager)
        manager = new ManagerDialog(*this, variables ? ManagerDialog::Kind::Variables : ManagerDialog::Kind::Functions, this);
    if (!name.isEmpty()) manager->select(name);
    manager->show();
    manager->raise();
    manager->activateWindow();
    return manager;
}

void DocumentWindow::insert_into_editor(const QString& text) {
    if (graph_shown()) toggle_graph();
    m_editor->insertPlainText(text);
}

LibraryDialog* DocumentWindow::open_library() {
    if (!m_library) {
        m_library = new LibraryDialog(*this, this);
        // At the document's right, where it leaves the editor's lines (which start at the left)
        // in view.
        const QPoint corner = mapToGlobal(QPoint(width(), 0));
        m_library->move(std::max(0, corner.x() - m_library->width() - 16), corner.y() + 16);
    }
    m_library->show();
    m_library->raise();
    m_library->activateWindow();
    m_library->search()->setFocus();
    return m_library;
}

FunctionSolverDialog* DocumentWindow::open_solver(const QString& prototype, const QString& description) {
    if (!m_solver) m_solver = new FunctionSolverDialog(*this, this);
    // A refusal (a constant, too many parameters) shows in the solver's solution field; a
    // cancelled save question keeps the function it had.
    m_solver->configure(prototype, description);
    m_solver->show();
    m_solver->raise();
    m_solver->activateWindow();
    return m_solver;
}

bool DocumentWindow::show_graph(int index) {
    update_caption();
    if (!graph_shown()) toggle_graph();
    graph_window()->refresh_list();
    return graph_window()->draw(index);
}

bool DocumentWindow::add_function_graph(const std::string& function, const std::string& variable, double low,
                                        double high, long points, QString* error) {
    return add_surface_graph(function, variable, low, high, points, {}, 0, 0, 0, error);
}

bool DocumentWindow::add_surface_graph(const std::string& function, const std::string& variable, double low,
                                       double high, long points, const std::string& z_variable, double z_low,
                                       double z_high, long z_points, QString* error) {
    const auto fail = [error](const QString& why) {
        if (error) *error = why;
        return false;
    };
    const int index = m_parser->find_function(function.c_str());
    if (index < 0) return fail(QStringLiteral("\"%1\" is no function of this document.").arg(QString::fromStdString(function)));
    if (!(high > low) || points < 2 || points > 1000000)
        return fail(QStringLiteral("The range needs a low end below the high end and 2 to 1000000 points."));
    const bool surface = !z_variable.empty();
    if (surface && (!(z_high > z_low) || z_points < 2 || z_points > 1000 || points > 1000))
        return fail(QStringLiteral("A surface needs a low end below the high end on each axis and 2 to 1000 points a side."));
    if (surface && z_variable == variable)
        return fail(QStringLiteral("The X and Z variables of a surface must differ."));
    document::DocumentGraph graph;
    const engine::Function* declared = m_parser->function_at(index);
    graph.Data.Functions.emplace_back(declared->full_name(), declared->value());
    graph.Data.XAxisVar = graph::VariableCopy(engine::Variable(variable, engine::complex(low, 0), engine::complex(high, 0), points));
    if (surface)
        graph.Data.ZAxisVar =
            graph::VariableCopy(engine::Variable(z_variable, engine::complex(z_low, 0), engine::complex(z_high, 0), z_points));
    graph.Data.SetComVarList();
    graph.Data.Name = m_hub->GetUniqueGraphName(declared->short_name());
    graph.Data.SetDefaultHeader(true);
    graph.Data.SetDefaultFooter(true);
    graph.Data.SetDefaultXAxisTitle(true);
    graph.Data.SetDefaultYAxisTitle(true);
    if (surface) graph.Data.SetDefaultZAxisTitle(true);
    m_document->Graphs.push_back(std::move(graph));
    m_parser->set_vars_saved(false); // the document changed
    return show_graph(static_cast<int>(m_document->Graphs.size()) - 1);
}

bool DocumentWindow::is_modified() const {
    return m_editor->document()->isModified() || !m_parser->vars_saved() || !m_parser->funcs_saved();
}

bool DocumentWindow::may_close(const std::function<QString()>& save_as) {
    // A tool's run works on this document's engine until it ends or is stopped.
    if (m_editor->recalculating()) return false; // its progress shows Stop
    if (!m_tools->may_close(m_reporter)) return false;
    // The solver's list of data points is the user's work too, kept nowhere else.
    if (m_solver && !m_solver->may_close()) return false;
    if (!is_modified()) return true;
    const QString text =
        m_path.isEmpty()
            ? QStringLiteral("Attributes in the file have changed!\n\n Do you wish to save the changes?")
            : QStringLiteral("Attributes in the ' %1 ' file have changed!\n\n Do you wish to save the changes?").arg(m_path);
    const int answer = ask_user(m_services, this, QStringLiteral("Save File"), text,
                                QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Cancel) return false;
    if (answer == QMessageBox::No) return true;
    const QString target = m_path.isEmpty() ? save_as() : m_path;
    return !target.isEmpty() && save(target);
}

} // namespace quorvex::gui
