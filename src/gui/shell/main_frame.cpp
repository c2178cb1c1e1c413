#include "main_frame.h"

#include "options_dialog.h"

#include "desktop/autosave.h"
#include "desktop/recent_files.h"
#include "gui/common/program_icon.h"
#include "gui/common/services.h"
#include "gui/editor/document_printer.h"
#include "gui/editor/document_window.h"
#include "gui/editor/editor_actions.h"
#include "gui/editor/recalc_actions.h"
#include "gui/editor/find_replace_dialog.h"
#include "gui/editor/keypad.h"
#include "gui/editor/math_editor.h"
#include "gui/graph2d/graph_window.h"
#include "gui/graph2d/graph_setup_dialog.h"
#include "gui/graph2d/new_graph_dialog.h"
#include "gui/graph2d/graph2d_actions.h"
#include "gui/graph3d/graph3d_actions.h"
#include "gui/help/help_actions.h"
#include "gui/tools/tool_actions.h"
#include "gui/common/message_reporter.h"
#include "gui/common/sound_player.h"
#include "store/atomic_write.h"
#include "store/ini_file.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>

#include <unistd.h>

namespace quorvex::gui {

namespace {

constexpr int k_autosave_ms = 2 * 60 * 1000;
const QString k_filter = QStringLiteral("Quorvex documents (*.qvx);;All files (*)");

QString autosave_dir(const Services& services) { return services.data_dir + QStringLiteral("/autosave"); }

} // namespace

MainFrame::MainFrame(Services& services, QWidget* parent)
    : QMainWindow(parent), m_services(services), m_area(new QMdiArea(this)), m_autosave_timer(new QTimer(this)) {
    setObjectName(QStringLiteral("mainFrame"));
    setWindowTitle(QStringLiteral("Quorvex"));
    setWindowIcon(program_icon());
    m_area->setViewMode(QMdiArea::SubWindowView);
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(m_area);
    m_keypad = new Keypad(m_services, [this] { return active_document(); }, this);
    addDockWidget(Qt::BottomDockWidgetArea, m_keypad);
    // Shown as it was left (ShowCalcBar), and at the first start, when the choice is written at
    // once; afterwards it is written when it changes.
    m_first_start = m_services.settings && m_services.settings->GetString("OPTIONS", "ShowCalcBar").empty();
    if (m_first_start) {
        m_services.settings->WriteString("OPTIONS", "ShowCalcBar", "1");
        m_services.settings->Save();
    }
    m_keypad->setVisible(m_services.settings && m_services.settings->GetInt("OPTIONS", "ShowCalcBar", 1) != 0);
    connect(m_keypad, &QDockWidget::visibilityChanged, this, [this](bool shown) {
        if (!m_services.settings || isHidden()) return;
        m_services.settings->WriteString("OPTIONS", "ShowCalcBar", shown ? "1" : "0");
        m_services.settings->Save();
    });
    create_actions();
    create_menus();
    m_keypad->add_tools({action(QStringLiteral("toolsOptions")), action(QStringLiteral("editFind")),
                         action(QStringLiteral("editReplace")), action(QStringLiteral("fileSave")),
                         action(QStringLiteral("toolsVariableManager")), action(QStringLiteral("toolsFunctionManager")),
                         action(QStringLiteral("toolsLibrary")), action(QStringLiteral("toolsIntegration")),
                         action(QStringLiteral("toolsDifferentiation"))});
    m_autosave_warning = new QLabel(this);
    m_autosave_warning->setObjectName(QStringLiteral("autosaveWarning"));
    m_autosave_warning->setForegroundRole(QPalette::HighlightedText);
    m_autosave_warning->setBackgroundRole(QPalette::Highlight);
    m_autosave_warning->setAutoFillBackground(true);
    m_autosave_warning->setMargin(2);
    m_autosave_warning->hide();
    statusBar()->addPermanentWidget(m_autosave_warning);
    m_position = new QLabel(this);
    m_position->setObjectName(QStringLiteral("caretPosition"));
    statusBar()->addPermanentWidget(m_position);
    statusBar()->showMessage(tr("Ready"));
    connect(m_area, &QMdiArea::subWindowActivated, this, [this] {
        update_actions();
        update_position();
        // An open Find follows the document the user turns to.
        if (DocumentWindow* window = active_document(); window && m_find) m_find->set_editor(window->editor());
    });
    // Held while this program runs: the next start tells a crash's slots from a running program's.
    m_autosave_owner = desktop::AutosaveFolder::new_owner(::getpid(), QDateTime::currentMSecsSinceEpoch());
    desktop::AutosaveFolder(autosave_dir(m_services).toStdString()).claim(m_autosave_owner, m_autosave_lock);
    connect(m_autosave_timer, &QTimer::timeout, this, &MainFrame::autosave_now);
    m_autosave_timer->start(k_autosave_ms);
    update_actions();
    resize(1000, 700);
}

MainFrame::~MainFrame() {
    // The documents go while this is still a frame: their going makes the area and the editors
    // signal, and the handlers reach back into the frame.
    disconnect(m_area, nullptr, this, nullptr);
    disconnect(m_keypad, nullptr, this, nullptr); // the dock hides as it goes, after the frame is gone
    for (QMdiSubWindow* sub : m_area->subWindowList()) delete sub;
}

QAction* MainFrame::action(const QString& name) const { return findChild<QAction*>(name); }

void MainFrame::create_actions() {
    // Icons from the desktop's theme, else the style's own, so the toolbar has pictures everywhere.
    const QHash<QString, QStyle::StandardPixmap> fallback{
        {QStringLiteral("document-new"), QStyle::SP_FileIcon},
        {QStringLiteral("document-open"), QStyle::SP_DialogOpenButton},
        {QStringLiteral("document-save"), QStyle::SP_DialogSaveButton},
        {QStringLiteral("document-print"), QStyle::SP_FileDialogDetailedView},
        {QStringLiteral("media-playback-start"), QStyle::SP_MediaPlay},
        {QStringLiteral("application-exit"), QStyle::SP_DialogCloseButton}};
    const auto make = [this, fallback](const QString& name, const QString& text, const QKeySequence& key, auto slot,
                                       const QString& icon = {}) {
        auto* action = new QAction(text, this);
        action->setObjectName(name);
        if (!key.isEmpty()) action->setShortcut(key);
        if (!icon.isEmpty())
            action->setIcon(QIcon::fromTheme(icon, fallback.contains(icon) ? style()->standardIcon(fallback[icon])
                                                                           : QIcon()));
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
        return action;
    };
    make(QStringLiteral("fileNew"), tr("&New"), QKeySequence(Qt::CTRL | Qt::Key_N), [this] { new_document(); },
         QStringLiteral("document-new"));
    make(QStringLiteral("fileOpen"), tr("&Open..."), QKeySequence(Qt::CTRL | Qt::Key_O), [this] { open_with_dialog(); },
         QStringLiteral("document-open"));
    make(QStringLiteral("fileSave"), tr("&Save"), QKeySequence(Qt::CTRL | Qt::Key_S),
         [this] { save_document(active_document(), false); }, QStringLiteral("document-save"));
    make(QStringLiteral("fileSaveAs"), tr("Save &As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
         [this] { save_document(active_document(), true); }, QStringLiteral("document-save-as"));
    make(QStringLiteral("fileClose"), tr("&Close"), QKeySequence(Qt::CTRL | Qt::Key_W),
         [this] { close_window(m_area->activeSubWindow()); });
    make(QStringLiteral("fileCloseAll"), tr("Close A&ll"), {}, [this] {
        for (QMdiSubWindow* sub : m_area->subWindowList())
            if (!close_window(sub)) break;
    });
    make(QStringLiteral("filePrint"), tr("&Print..."), QKeySequence(Qt::CTRL | Qt::Key_P), [this] { print(false); },
         QStringLiteral("document-print"));
    make(QStringLiteral("filePrintPreview"), tr("Print Pre&view..."), {}, [this] { print(true); },
         QStringLiteral("document-print-preview"));
    make(QStringLiteral("fileExportPdf"), tr("&Export as PDF..."), {}, [this] { export_pdf(); });
    make(QStringLiteral("fileExit"), tr("E&xit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); },
         QStringLiteral("application-exit"));

    const auto on_editor = [this](void (QPlainTextEdit::*call)()) {
        return [this, call] {
            if (DocumentWindow* window = active_document()) (window->editor()->*call)();
        };
    };
    make(QStringLiteral("editUndo"), tr("&Undo"), QKeySequence::Undo, on_editor(&QPlainTextEdit::undo),
         QStringLiteral("edit-undo"));
    make(QStringLiteral("editRedo"), tr("&Redo"), QKeySequence::Redo, on_editor(&QPlainTextEdit::redo),
         QStringLiteral("edit-redo"));
    make(QStringLiteral("editCut"), tr("Cu&t"), QKeySequence::Cut, on_editor(&QPlainTextEdit::cut),
         QStringLiteral("edit-cut"));
    make(QStringLiteral("editCopy"), tr("&Copy"), QKeySequence::Copy, on_editor(&QPlainTextEdit::copy),
         QStringLiteral("edit-copy"));
    make(QStringLiteral("editPaste"), tr("&Paste"), QKeySequence::Paste, on_editor(&QPlainTextEdit::paste),
         QStringLiteral("edit-paste"));
    make(QStringLiteral("editSelectAll"), tr("Select &All"), QKeySequence::SelectAll,
         on_editor(&QPlainTextEdit::selectAll));
    const auto find = [this](bool replace) {
        return [this, replace] {
            DocumentWindow* window = active_document();
            if (!window) return;
            if (!m_find) m_find = new FindReplaceDialog(this);
            m_find->open_for(window->editor(), replace);
        };
    };
    make(QStringLiteral("editFind"), tr("&Find..."), QKeySequence::Find, find(false), QStringLiteral("edit-find"));
    make(QStringLiteral("editReplace"), tr("R&eplace..."), QKeySequence(Qt::CTRL | Qt::Key_H), find(true),
         QStringLiteral("edit-find-replace"));
    // The editor handles these keys itself; the actions keep the shortcuts out of the way.
    for (const QString& name : {QStringLiteral("editUndo"), QStringLiteral("editRedo"), QStringLiteral("editCut"),
                                QStringLiteral("editCopy"), QStringLiteral("editPaste"), QStringLiteral("editSelectAll")})
        action(name)->setShortcutContext(Qt::WidgetShortcut);

    make(QStringLiteral("computeLine"), tr("&Compute Line"), QKeySequence(Qt::Key_F4), [this] {
        if (DocumentWindow* window = active_document()) window->editor()->compute_current_line();
    }, QStringLiteral("media-playback-start"));
    action(QStringLiteral("computeLine"))->setShortcutContext(Qt::WidgetShortcut); // the editor takes F4 itself
    QAction* fraction = make(QStringLiteral("computeAsFraction"), tr("Answers as &Fractions"), {}, [this](bool on) {
        if (DocumentWindow* window = active_document()) window->editor()->set_as_fraction(on);
    });
    fraction->setCheckable(true);
    make(QStringLiteral("graphToggle"), tr("Show &Graph / Editor"), QKeySequence(Qt::Key_F9), [this] {
        if (DocumentWindow* window = active_document()) window->toggle_graph();
    });
    make(QStringLiteral("viewKeypad"), tr("&Calculator Keypad"), QKeySequence(Qt::Key_F5),
         [this] { m_keypad->setVisible(!m_keypad->isVisible()); });
    make(QStringLiteral("viewVariables"), tr("&Variables List"), QKeySequence(Qt::Key_F11), [this] {
        if (DocumentWindow* window = active_document()) window->toggle_list(true);
    });
    make(QStringLiteral("viewFunctions"), tr("&Functions List"), QKeySequence(Qt::Key_F12), [this] {
        if (DocumentWindow* window = active_document()) window->toggle_list(false);
    });
    const auto manager = [this](bool variables) {
        return [this, variables] {
            if (DocumentWindow* window = active_document()) window->open_manager(variables);
        };
    };
    make(QStringLiteral("toolsVariableManager"), tr("&Variables Manager..."), QKeySequence(Qt::Key_F6), manager(true));
    make(QStringLiteral("toolsFunctionManager"), tr("&Function Manager..."), QKeySequence(Qt::Key_F7), manager(false));
    make(QStringLiteral("toolsLibrary"), tr("Function &Library..."), QKeySequence(Qt::Key_F8), [this] {
        if (DocumentWindow* window = active_document()) window->open_library();
    });
    QAction* incremental = make(QStringLiteral("viewIncrementalVariables"), tr("&Incremental Variables' Values"), {},
                                [this](bool on) { set_incremental_display(on); });
    incremental->setCheckable(true);
    incremental->setChecked(m_services.options.IncrementalVariables);
    make(QStringLiteral("graphNew"), tr("&New Graph of a Function..."), {}, [this] { new_function_graph(); });
    make(QStringLiteral("graphSetup"), tr("Graph &Setup..."), {}, [this] { graph_setup(false); });
    make(QStringLiteral("graphWizard"), tr("Graphs &Wizard..."), {}, [this] { graph_setup(true); });
    make(QStringLiteral("graphExport"), tr("&Export Graph..."), {}, [this] {
        if (DocumentWindow* window = active_document()) window->graph_window()->export_with_dialog();
    });
    make(QStringLiteral("graphOpenFile"), tr("&Open Graph File..."), {}, [this] {
        if (DocumentWindow* window = active_document()) {
            if (!window->graph_shown()) window->toggle_graph();
            window->graph_window()->open_file_with_dialog();
        }
    });
    make(QStringLiteral("graphSaveFile"), tr("Save Graph &File..."), {}, [this] {
        if (DocumentWindow* window = active_document(); window && window->graph_shown())
            window->graph_window()->save_file_with_dialog();
    });
    const auto on_graph = [this](auto call) {
        return [this, call] {
            if (DocumentWindow* window = active_document(); window && window->graph_shown()) call(*window->graph_window());
        };
    };
    make(QStringLiteral("graphNote"), tr("Insert &Note..."), {}, on_graph([](GraphWindow& g) { g.insert_note_with_dialog(); }));
    make(QStringLiteral("graphGrid"), tr("&Grid Lines"), {}, on_graph([](GraphWindow& g) { g.toggle_grid(); }));
    make(QStringLiteral("graphLogX"), tr("Logarithmic &X Axis"), {}, on_graph([](GraphWindow& g) { g.toggle_logarithmic(true); }));
    make(QStringLiteral("graphLogY"), tr("Logarithmic &Y Axis"), {}, on_graph([](GraphWindow& g) { g.toggle_logarithmic(false); }));
    make(QStringLiteral("graphCopy"), tr("&Copy Graph"), {}, [this] {
        if (DocumentWindow* window = active_document(); window && window->graph_shown())
            window->graph_window()->copy_to_clipboard();
    });
    make(QStringLiteral("graphPrint"), tr("&Print Graph..."), {}, [this] {
        if (DocumentWindow* window = active_document(); window && window->graph_shown()) window->graph_window()->print(false);
    });
    make(QStringLiteral("graphPrintPreview"), tr("Print Pre&view of Graph..."), {}, [this] {
        if (DocumentWindow* window = active_document(); window && window->graph_shown()) window->graph_window()->print(true);
    });
    make(QStringLiteral("toolsOptions"), tr("&Options..."), {}, [this] { show_options(); },
         QStringLiteral("preferences-system"));

    make(QStringLiteral("windowTile"), tr("&Tile"), {}, [this] { m_area->tileSubWindows(); });
    make(QStringLiteral("windowCascade"), tr("&Cascade"), {}, [this] { m_area->cascadeSubWindows(); });
    make(QStringLiteral("windowNext"), tr("&Next"), QKeySequence::NextChild, [this] { m_area->activateNextSubWindow(); });
    make(QStringLiteral("windowPrevious"), tr("&Previous"), QKeySequence::PreviousChild,
         [this] { m_area->activatePreviousSubWindow(); });
    make(QStringLiteral("helpAbout"), tr("&About Quorvex"), {}, [this] {
        QMessageBox::about(this, tr("About Quorvex"),
                           tr("<b>Quorvex %1</b><p>A scientific calculation environment: expressions, functions "
                              "and answers computed in decimal to 15 significant digits.</p>")
                               .arg(QApplication::applicationVersion()));
    });
}

void MainFrame::create_menus() {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    for (const char* name : {"fileNew", "fileOpen"}) file->addAction(action(QLatin1String(name)));
    m_recent_menu = file->addMenu(tr("Open &Recent"));
    m_recent_menu->setObjectName(QStringLiteral("recentMenu"));
    for (const char* name : {"fileSave", "fileSaveAs", "fileClose", "fileCloseAll"}) file->addAction(action(QLatin1String(name)));
    file->addSeparator();
    for (const char* name : {"filePrint", "filePrintPreview", "fileExportPdf"}) file->addAction(action(QLatin1String(name)));
    file->addSeparator();
    file->addAction(action(QStringLiteral("fileExit")));

    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    for (const char* name : {"editUndo", "editRedo"}) edit->addAction(action(QLatin1String(name)));
    edit->addSeparator();
    for (const char* name : {"editCut", "editCopy", "editPaste", "editSelectAll"}) edit->addAction(action(QLatin1String(name)));
    edit->addSeparator();
    for (const char* name : {"editFind", "editReplace"}) edit->addAction(action(QLatin1String(name)));

    QMenu* compute = menuBar()->addMenu(tr("&Compute"));
    compute->addAction(action(QStringLiteral("computeLine")));
    compute->addAction(action(QStringLiteral("computeAsFraction")));
    compute->addSeparator();
    m_recalc_actions = add_recalc_actions(this, compute, [this] { return active_document(); });

    QMenu* view = menuBar()->addMenu(tr("&View"));
    for (const char* name : {"viewKeypad", "viewVariables", "viewFunctions", "viewIncrementalVariables"})
        view->addAction(action(QLatin1String(name)));
    add_editor_actions(this, edit, view, [this] { return active_document(); }, [this] { return m_find; });

    QMenu* graph = menuBar()->addMenu(tr("&Graph"));
    for (const char* name : {"graphToggle", "graphWizard", "graphSetup", "graphNew"})
        graph->addAction(action(QLatin1String(name)));
    graph->addSeparator();
    for (const char* name : {"graphNote", "graphGrid", "graphLogX", "graphLogY"}) graph->addAction(action(QLatin1String(name)));
    graph->addSeparator();
    const auto shown_graph = [this]() -> GraphWindow* {
        DocumentWindow* window = active_document();
        return window && window->graph_shown() ? window->graph_window() : nullptr;
    };
    add_2d_graph_actions(this, graph, shown_graph);
    graph->addSeparator();
    add_3d_graph_actions(this, graph, shown_graph);
    graph->addSeparator();
    for (const char* name : {"graphOpenFile", "graphSaveFile", "graphExport", "graphCopy", "graphPrint", "graphPrintPreview"})
        graph->addAction(action(QLatin1String(name)));

    QMenu* tools = menuBar()->addMenu(tr("&Tools"));
    for (const char* name : {"toolsVariableManager", "toolsFunctionManager", "toolsLibrary"})
        tools->addAction(action(QLatin1String(name)));
    tools->addSeparator();
    m_tool_actions = add_tool_actions(this, tools, [this] { return active_document(); });
    tools->addSeparator();
    tools->addAction(action(QStringLiteral("toolsOptions")));

    m_window_menu = menuBar()->addMenu(tr("&Window"));
    m_window_menu->setObjectName(QStringLiteral("windowMenu"));
    for (const char* name : {"windowTile", "windowCascade", "windowNext", "windowPrevious"})
        m_window_menu->addAction(action(QLatin1String(name)));
    m_window_menu->addSeparator();
    m_window_list = new QActionGroup(this);
    m_window_list->setExclusive(true);
    connect(m_window_menu, &QMenu::aboutToShow, this, &MainFrame::update_window_menu);
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    add_help_actions(this, help, m_services, [this] { return active_document(); });
    help->addAction(action(QStringLiteral("helpAbout")));

    QToolBar* bar = addToolBar(tr("Standard"));
    bar->setObjectName(QStringLiteral("standardToolBar"));
    bar->setToolButtonStyle(m_services.options.FlatButtons ? Qt::ToolButtonIconOnly : Qt::ToolButtonFollowStyle);
    for (const char* name : {"fileNew", "fileOpen", "fileSave", "filePrint"}) bar->addAction(action(QLatin1String(name)));
    bar->addSeparator();
    for (const char* name : {"editCut", "editCopy", "editPaste"}) bar->addAction(action(QLatin1String(name)));
    bar->addSeparator();
    bar->addAction(action(QStringLiteral("computeLine")));
    bar->addAction(m_recalc_actions.front());
    update_recent_menu();
}

void MainFrame::update_actions() {
    DocumentWindow* window = active_document();
    // Commands on a document wait for one.
    for (const char* name :
         {"fileSave", "fileSaveAs", "fileClose", "fileCloseAll", "filePrint", "filePrintPreview", "fileExportPdf",
          "editUndo", "editRedo", "editCut", "editCopy", "editPaste", "editSelectAll", "editFind", "editReplace",
          "editFindNext", "editClear", "viewFont", "viewListsRight", "viewListsTop",
          "computeLine", "computeAsFraction", "viewVariables", "viewFunctions", "toolsVariableManager",
          "toolsFunctionManager", "toolsLibrary", "graphToggle", "graphNew", "graphSetup", "graphWizard",
          "graphOpenFile", "graphSaveFile", "graphNote", "graphGrid", "graphLogX", "graphLogY", "graphExport",
          "graphCopy", "graphPrint", "graphPrintPreview", "windowTile", "windowCascade", "windowNext",
          "windowPrevious"})
        action(QLatin1String(name))->setEnabled(window != nullptr);
    for (QAction* tool : m_tool_actions + m_recalc_actions) tool->setEnabled(window != nullptr);
    if (window) action(QStringLiteral("computeAsFraction"))->setChecked(window->editor()->as_fraction());
}

void MainFrame::update_window_menu() {
    for (QAction* old : m_window_list->actions()) delete old;
    const QList<QMdiSubWindow*> subs = m_area->subWindowList();
    for (int i = 0; i < subs.size(); ++i) {
        QMdiSubWindow* sub = subs[i];
        QString caption = sub->windowTitle();
        caption.replace(QStringLiteral("[*]"), sub->isWindowModified() ? QStringLiteral("*") : QString());
        // An '&' in a path is text, not a mnemonic.
        caption.replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* item = m_window_menu->addAction(i < 9 ? QStringLiteral("&%1 %2").arg(i + 1).arg(caption) : caption);
        item->setObjectName(QStringLiteral("windowDocument"));
        item->setCheckable(true);
        item->setChecked(sub == m_area->activeSubWindow());
        m_window_list->addAction(item);
        connect(item, &QAction::triggered, this, [this, sub] { m_area->setActiveSubWindow(sub); });
    }
}

void MainFrame::update_position() {
    // The active child only: while the last one closes it is still listed, and no longer active.
    QMdiSubWindow* sub = m_area->activeSubWindow();
    DocumentWindow* window = sub ? qobject_cast<DocumentWindow*>(sub->widget()) : nullptr;
    if (!window) {
        m_position->clear();
        return;
    }
    const QTextCursor cursor = window->editor()->textCursor();
    m_position->setText(tr("Line %1, Col %2").arg(cursor.blockNumber() + 1).arg(cursor.positionInBlock() + 1));
}

void MainFrame::update_recent_menu() {
    m_recent_menu->clear();
    const auto& files = m_services.recent ? m_services.recent->files() : std::vector<std::string>{};
    for (size_t i = 0; i < files.size(); ++i) {
        const QString path = QString::fromStdString(files[i]);
        QAction* item = m_recent_menu->addAction(QStringLiteral("&%1 %2").arg((i + 1) % 10).arg(path));
        connect(item, &QAction::triggered, this, [this, path] { open_document(path); });
    }
    m_recent_menu->setEnabled(!files.empty());
}

void MainFrame::remember(const QString& path) {
    if (!m_services.recent) return;
    m_services.recent->add(path.toStdString());
    m_services.recent->store();
    if (m_services.settings) m_services.settings->Save();
    update_recent_menu();
}

QMdiSubWindow* MainFrame::add_window(DocumentWindow* window) {
    QMdiSubWindow* sub = m_area->addSubWindow(window);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->setWindowTitle(window->windowTitle());
    window->set_autosave_slot(desktop::AutosaveFolder::new_slot(m_autosave_owner, ++m_slot_count));
    window->set_save_as_chooser([this, window] { return ask_save_path(window); });
    // However the window goes, its autosave goes with it: it was saved, or the user said No.
    connect(window, &QObject::destroyed, this,
            [folder = autosave_dir(m_services).toStdString(), slot = window->autosave_slot()] {
                desktop::AutosaveFolder(folder).remove(slot);
            });
    connect(window, &DocumentWindow::saved, this, [this](const QString& path) { remember(path); });
    connect(window, &DocumentWindow::frameCommand, this, [this](const QString& name) {
        if (QAction* command = action(name)) command->trigger();
    });
    connect(window, &DocumentWindow::statusText, this, [this](const QString& text) {
        if (text.isEmpty())
            statusBar()->clearMessage();
        else
            statusBar()->showMessage(text);
    });
    connect(window, &DocumentWindow::captionChanged, sub, [sub, window] {
        sub->setWindowTitle(window->windowTitle());
        sub->setWindowModified(window->isWindowModified());
    });
    connect(window->editor(), &QPlainTextEdit::cursorPositionChanged, this, &MainFrame::update_position);
    // The child's own Close carries the frame's Close key too (Ctrl+W on most desktops), which
    // made the key ambiguous and then do nothing: the frame's command is the one that closes.
    if (QMenu* system = sub->systemMenu())
        for (QAction* each : system->actions()) each->setShortcuts({});
    sub->resize(m_area->size() * 0.9);
    sub->show();
    window->editor()->setFocus();
    if (m_area->subWindowList().size() == 1) sub->showMaximized();
    update_actions();
    return sub;
}

DocumentWindow* MainFrame::open_getting_started() {
    // The user's own copy, to change and save as they like; the program's stays as shipped.
    const QString copy = QDir(m_services.data_dir).filePath(QStringLiteral("Getting Started.qvx"));
    if (!QFileInfo::exists(copy) &&
        !QFile::copy(QDir(m_services.library_dir).filePath(QStringLiteral("Getting Started.qvx")), copy))
        return nullptr;
    QFile::setPermissions(copy, QFile::permissions(copy) | QFileDevice::WriteOwner);
    return open_document(copy);
}

void MainFrame::open_first_start_documents() {
    DocumentWindow* sheet = open_getting_started();
    DocumentWindow* blank = new_document();
    if (!sheet || !blank) return;
    // Side by side once the window has its size: the worksheet to read and press Enter on at the
    // left, an empty document to work in at the right, where the typing goes.
    QTimer::singleShot(0, this, [this, sheet = QPointer<DocumentWindow>(sheet), blank = QPointer<DocumentWindow>(blank)] {
        if (!sheet || !blank) return;
        auto* left = qobject_cast<QMdiSubWindow*>(sheet->parentWidget());
        auto* right = qobject_cast<QMdiSubWindow*>(blank->parentWidget());
        if (!left || !right) return;
        const QRect area = m_area->viewport()->rect();
        const int split = area.width() * 2 / 5;
        left->showNormal();
        right->showNormal();
        left->setGeometry(0, 0, split, area.height());
        right->setGeometry(split, 0, area.width() - split, area.height());
        m_area->setActiveSubWindow(right);
        blank->editor()->setFocus();
    });
}

DocumentWindow* MainFrame::new_document() {
    auto* window = new DocumentWindow(m_services, tr("Untitled %1").arg(++m_untitled_count));
    add_window(window);
    return window;
}

QMdiSubWindow* MainFrame::window_of_path(const QString& path) const {
    const QString wanted = QFileInfo(path).absoluteFilePath();
    for (QMdiSubWindow* sub : m_area->subWindowList()) {
        auto* window = qobject_cast<DocumentWindow*>(sub->widget());
        if (window && window->file_path() == wanted) return sub;
    }
    return nullptr;
}

DocumentWindow* MainFrame::open_document(const QString& path) {
    if (QMdiSubWindow* open = window_of_path(path)) {
        m_area->setActiveSubWindow(open);
        return qobject_cast<DocumentWindow*>(open->widget());
    }
    auto* window = new DocumentWindow(m_services, QFileInfo(path).fileName());
    if (!window->load(path)) {
        delete window;
        if (m_services.recent && !QFileInfo::exists(path)) {
            m_services.recent->remove(path.toStdString());
            update_recent_menu();
        }
        return nullptr;
    }
    add_window(window);
    remember(window->file_path());
    return window;
}

void MainFrame::open_missing(const QString& path) {
    const QString text = QStringLiteral("The file \"%1\" could not be found!").arg(path);
    if (m_services.collected_messages)
        *m_services.collected_messages << QStringLiteral("Find File: ") + text;
    else
        QMessageBox::information(this, QStringLiteral("Find File"), text);
    new_document();
}

void MainFrame::open_with_dialog() {
    const QString start = active_document() && !active_document()->file_path().isEmpty()
                              ? QFileInfo(active_document()->file_path()).absolutePath()
                              : QDir::homePath();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"), start, k_filter);
    if (!path.isEmpty()) open_document(path);
}

DocumentWindow* MainFrame::active_document() const {
    QMdiSubWindow* sub = m_area->activeSubWindow();
    if (!sub && !m_area->subWindowList().isEmpty()) sub = m_area->subWindowList().constLast();
    return sub ? qobject_cast<DocumentWindow*>(sub->widget()) : nullptr;
}

QList<DocumentWindow*> MainFrame::documents() const {
    QList<DocumentWindow*> all;
    for (QMdiSubWindow* sub : m_area->subWindowList())
        if (auto* window = qobject_cast<DocumentWindow*>(sub->widget())) all << window;
    return all;
}

QString MainFrame::ask_save_path(DocumentWindow* window) {
    const QString suggestion = window->file_path().isEmpty()
                                   ? QDir::home().filePath(window->untitled_name() + QStringLiteral(".qvx"))
                                   : window->file_path();
    QString path = choose_save_path ? choose_save_path(suggestion)
                                    : QFileDialog::getSaveFileName(this, tr("Save As"), suggestion, k_filter);
    if (!path.isEmpty() && QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".qvx");
    return path;
}

bool MainFrame::save_document(DocumentWindow* window, bool ask_for_name) {
    if (!window) return false;
    const QString path = ask_for_name || window->file_path().isEmpty() ? ask_save_path(window) : window->file_path();
    if (path.isEmpty() || !window->save(path)) return false;
    desktop::AutosaveFolder(autosave_dir(m_services).toStdString()).remove(window->autosave_slot());
    statusBar()->showMessage(tr("Saved %1").arg(window->file_path()), 4000);
    return true;
}

bool MainFrame::close_window(QMdiSubWindow* sub) {
    if (!sub) return true;
    // The document window asks its save question as it closes; a refusal keeps it open.
    if (!sub->close()) return false;
    update_actions();
    update_position();
    return true;
}

void MainFrame::closeEvent(QCloseEvent* event) {
    for (QMdiSubWindow* sub : m_area->subWindowList()) {
        if (!close_window(sub)) {
            event->ignore();
            return;
        }
    }
    if (m_services.settings) m_services.settings->Save();
    event->accept();
}

void MainFrame::autosave_now() {
    const desktop::AutosaveFolder folder(autosave_dir(m_services).toStdString());
    QStringList failures;
    for (DocumentWindow* window : documents()) {
        if (!window->is_modified()) {
            folder.remove(window->autosave_slot());
            continue;
        }
        std::string text;
        std::string error;
        const QString title = window->file_path().isEmpty() ? window->untitled_name() : window->file_path();
        if (!window->compose(text))
            failures << tr("%1: the document could not be composed").arg(title);
        else if (!folder.write(window->autosave_slot(), window->file_path().toStdString(), title.toStdString(), text,
                               &error))
            failures << tr("%1: %2").arg(title, QString::fromStdString(error));
    }
    // A failure stays in sight until an autosave works again: the user must know that a crash
    // now would lose work.
    if (failures.isEmpty()) {
        m_autosave_warning->hide();
        return;
    }
    m_autosave_warning->setText(tr("Autosave failed: save your work"));
    m_autosave_warning->setToolTip(tr("The automatic copies could not be written to %1:\n%2")
                                       .arg(QDir::toNativeSeparators(autosave_dir(m_services)), failures.join(QLatin1Char('\n'))));
    m_autosave_warning->show();
}

void MainFrame::offer_recovery() {
    const desktop::AutosaveFolder folder(autosave_dir(m_services).toStdString());
    const auto found = folder.recoverable();
    for (const desktop::RecoverableDocument& each : found) {
        const QString name = QString::fromStdString(each.title.empty() ? each.origin_path : each.title);
        const QString text =
            tr("Quorvex was stopped before \"%1\" was saved. An automatic copy holds changes made after the last save.\n\n"
               "Do you want to recover them?")
                .arg(name);
        const int answer =
            ask_user(m_services, this, tr("Recover Document"), text, QMessageBox::Yes | QMessageBox::No);
        if (answer == QMessageBox::Yes) {
            std::string bytes;
            if (!store::read_whole_file(each.autosave_path, bytes)) continue;
            auto* window = new DocumentWindow(m_services, QString::fromStdString(each.title));
            if (!window->load_recovered(bytes, QString::fromStdString(each.origin_path))) {
                delete window;
                continue;
            }
            add_window(window);
        }
        folder.remove(each.slot);
    }
    folder.remove_stale_locks();
}

namespace {

// The name a document goes by in a print's header and a PDF's title.
QString print_name(const DocumentWindow& window) {
    return window.file_path().isEmpty() ? window.untitled_name() : QFileInfo(window.file_path()).fileName();
}

DocumentPrinter printer_of(DocumentWindow& window) {
    const MathEditor& editor = *window.editor();
    return DocumentPrinter(*editor.document(), editor.font(), editor.logicalDpiY(), print_name(window));
}

} // namespace

void MainFrame::print(bool preview) {
    DocumentWindow* window = active_document();
    if (!window) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(print_name(*window));
    const DocumentPrinter text = printer_of(*window);
    if (preview) {
        QPrintPreviewDialog dialog(&printer, this);
        connect(&dialog, &QPrintPreviewDialog::paintRequested, this, [&text](QPrinter* target) { text.print(*target); });
        dialog.exec();
        return;
    }
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) text.print(printer);
}

void MainFrame::export_pdf() {
    DocumentWindow* window = active_document();
    if (!window) return;
    QString suggestion = window->file_path().isEmpty() ? QDir::home().filePath(window->untitled_name())
                                                       : window->file_path();
    suggestion = QFileInfo(suggestion).absolutePath() + QLatin1Char('/') + QFileInfo(suggestion).completeBaseName() +
                 QStringLiteral(".pdf");
    QString path = choose_save_path ? choose_save_path(suggestion)
                                    : QFileDialog::getSaveFileName(this, tr("Export as PDF"), suggestion,
                                                                   tr("PDF files (*.pdf)"));
    if (path.isEmpty()) return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    printer.setDocName(print_name(*window));
    if (printer_of(*window).print(printer) == 0) {
        statusBar()->showMessage(tr("Could not write %1").arg(path), 8000);
        return;
    }
    statusBar()->showMessage(tr("Exported %1").arg(path), 4000);
}

void MainFrame::graph_setup(bool wizard) {
    DocumentWindow* window = active_document();
    if (!window || (window->graph_shown() && window->graph_window()->refuse_setup())) return;
    // The sheet is modeless and one per document and mode: asked again, it comes to the front.
    const QString name = wizard ? QStringLiteral("graphsWizard") : QStringLiteral("graphSetup");
    if (auto* open = window->findChild<GraphSetupDialog*>(name, Qt::FindDirectChildrenOnly)) {
        open->raise();
        open->activateWindow();
        return;
    }
    const int current = window->graph_shown() ? window->graph_window()->current_graph() : 0;
    auto* dialog =
        new GraphSetupDialog(*window, current, wizard ? GraphSetupDialog::Mode::Wizard : GraphSetupDialog::Mode::Pages, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (wizard) dialog->setWindowTitle(tr("Graphs Wizard"));
    connect(dialog, &GraphSetupDialog::applied, window, [window](int graph) { window->show_graph(graph); });
    dialog->show();
}

void MainFrame::new_function_graph() {
    DocumentWindow* window = active_document();
    if (!window) return;
    NewGraphDialog dialog(window->parser(), this);
    if (dialog.exec() != QDialog::Accepted) return;
    QString error;
    if (!window->add_surface_graph(dialog.function(), dialog.variable(), dialog.low(), dialog.high(), dialog.points(),
                                   dialog.z_variable(), dialog.z_low(), dialog.z_high(), dialog.z_points(), &error) &&
        !error.isEmpty())
        QMessageBox::warning(this, tr("Graphing Utility"), error);
}

void MainFrame::show_options() {
    OptionsDialog dialog(m_services, active_document() ? &active_document()->parser() : nullptr, this);
    if (dialog.exec() != QDialog::Accepted) return;
    for (DocumentWindow* window : documents()) {
        window->editor()->apply_options();
        window->document().set_program_precise(m_services.options.PreciseArithmetic);
    }
    action(QStringLiteral("viewIncrementalVariables"))->setChecked(m_services.options.IncrementalVariables);
}

void MainFrame::set_incremental_display(bool on) {
    // One option for every document: the setting, each engine, and each variable list.
    if (m_services.sounds) m_services.sounds->play(QStringLiteral("QClick.wav"));
    m_services.options.IncrementalVariables = on;
    if (m_services.settings) {
        m_services.settings->WriteString("OPTIONS", "IncrementalVariables", on ? "1" : "0");
        m_services.settings->Save();
    }
    for (DocumentWindow* window : documents()) {
        window->parser().set_incremental_display(on);
        Q_EMIT window->variablesChanged();
    }
}

} // namespace quorvex::gui
