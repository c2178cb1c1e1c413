#pragma once
#include "desktop/document_hub.h"
#include "desktop/file_stamp.h"
#include "document/document.h"
#include "engine/parser.h"
#include "gui/common/message_reporter.h"

#include <QFont>
#include <QString>
#include <QWidget>

#include <memory>

class QFileSystemWatcher;
class QSplitter;

namespace quorvex::gui {
class FunctionSolverDialog;
class ToolWindows;
class GraphWindow;
class LibraryDialog;
class ListPane;
class ManagerDialog;
}

namespace quorvex::gui {

class MathEditor;
struct Services;

// One open document: the MDI child's content. It owns the document's engine (each document has
// its own variables and functions), the Document that reads and writes its .qvx file, and the
// math editor; the splitter beside the editor is where the graph, the lists and the tool windows
// of the document take their place. Everything that reaches the engine for this document goes
// through here.
class DocumentWindow : public QWidget {
    Q_OBJECT

public:
    DocumentWindow(Services& services, QString untitled_name, QWidget* parent = nullptr);
    ~DocumentWindow() override;

    MathEditor* editor() const { return m_editor; }
    engine::Parser& parser() { return *m_parser; }
    document::Document& document() { return *m_document; }
    QSplitter* splitter() const { return m_splitter; }
    Services& services() { return m_services; }
    // The graph window, made on first use; it takes the editor's place while it is shown.
    GraphWindow* graph_window();
    bool graph_shown() const;
    // Shows the graph window in the editor's place, or the editor again (F9).
    void toggle_graph();
    // The list of variables (F11) or functions (F12) beside the editor, shown or hidden.
    void toggle_list(bool variables);
    // The lists stand at the right of the editor, or above it.
    void set_lists_at_top(bool top);
    bool lists_at_top() const;
    // The editor's font, also that of both lists, kept with the document.
    void set_editor_font(const QFont& font);
    ListPane* variable_list() const { return m_variable_list; }
    ListPane* function_list() const { return m_function_list; }
    // The variables manager (F6) or function manager (F7) of this document, made once and
    // reused, shown with `name` selected when it is given.
    ManagerDialog* open_manager(bool variables, const QString& name = {});
    // The function solver of this document on a function's prototype; null until first opened.
    FunctionSolverDialog* open_solver(const QString& prototype, const QString& description);
    FunctionSolverDialog* solver() const { return m_solver; }
    // The math tools of this document (quick calc, integration, ...), each made once and reused,
    // with their inputs kept in the document.
    ToolWindows& tools() { return *m_tools; }
    // Types `text` at the editor's caret, bringing the editor back in place of a graph first.
    void insert_into_editor(const QString& text);
    // The function library browser (F8) of this document, made once and reused.
    LibraryDialog* open_library();
    // Shows the graph window and draws graph `index` of the document.
    bool show_graph(int index);
    // Adds a graph of the document's function `function` (its full name) over `variable` from
    // `low` to `high` in `points` points, and draws it; false with `error` set when it can not.
    bool add_function_graph(const std::string& function, const std::string& variable, double low, double high,
                            long points, QString* error = nullptr);
    // The same as a surface: `variable` along X, `z_variable` along Z.
    bool add_surface_graph(const std::string& function, const std::string& variable, double low, double high,
                           long points, const std::string& z_variable, double z_low, double z_high, long z_points,
                           QString* error = nullptr);
    // The way the document's tools, managers and graphs reach its engine and graphs.
    desktop::DocumentHub& hub() { return *m_hub; }

    // The file, empty for a document never saved.
    const QString& file_path() const { return m_path; }
    // The name shown for a document never saved ("Untitled 1").
    const QString& untitled_name() const { return m_untitled; }
    // "MATH EDITOR - " and the path as it is written, or the untitled name.
    QString caption() const;
    // The window's caption: the editor's, or while a graph is shown the graph window's.
    void update_caption();

    // Loads the file into this window; false (after the message) when it can not be read.
    bool load(const QString& path);
    // Takes a document text (an autosave) as if read, keeping `origin` as the file to save to;
    // the window counts as modified.
    bool load_recovered(const std::string& text, const QString& origin);
    // Saves to `path` (the current file when empty); false, after the message, on failure.
    bool save(const QString& path = {});
    // The whole document as a save would write it.
    bool compose(std::string& text);

    // True when something would be lost by closing: the text, or the engine's declarations.
    bool is_modified() const;
    // Asks "Save File" when modified: true when the window may close (saved, or the user said
    // No); false for Cancel or a failed save. `save_as` supplies a path for a document never saved
    // (empty: the user cancelled).
    bool may_close(const std::function<QString()>& save_as);

    // How a close asks for a file name for a document never saved (the frame's Save As).
    void set_save_as_chooser(std::function<QString()> chooser) { m_save_as = std::move(chooser); }

    // Looks at the file on disk: when another program changed it, offers to reload it; when
    // another program removed it, says so and counts the document as modified. Runs by itself
    // when the file is seen to change.
    void check_file_on_disk();

    // The autosave slot of this window.
    const std::string& autosave_slot() const { return m_autosave_slot; }
    void set_autosave_slot(std::string slot) { m_autosave_slot = std::move(slot); }

Q_SIGNALS:
    void captionChanged();
    void saved(const QString& path);
    void variablesChanged();
    void functionsChanged();
    // A text for the frame's status bar (the coordinates under the pointer in a graph).
    void statusText(const QString& text);
    // A pane asks for one of the frame's commands (its QAction's object name), such as the
    // options or the display of incremental variables, which concern every document.
    void frameCommand(const QString& action);
    // A graph of the document starts (true) or ends (false) being built; the setup waits for it.
    void graphBuilding(bool building);

protected:
    // Closing the window (its title bar's button, the frame) asks the save question first.
    void closeEvent(QCloseEvent* event) override;

private:
    void show_text();
    // Remembers what the file holds now and watches it for changes by other programs.
    void watch_file();
    bool reload();
    // Before writing over the document's own file: asks when another program changed it since
    // it was read or written here. True when the save may go on.
    bool may_overwrite(const QString& target);
    void apply_font();
    // The editor keeps a little more than half of the splitter; the lists shown share the rest.
    void share_space();

    Services& m_services;
    QString m_untitled;
    QString m_path;
    std::unique_ptr<engine::Parser> m_parser;
    MessageReporter m_reporter;
    std::unique_ptr<document::Document> m_document;
    QSplitter* m_splitter;
    MathEditor* m_editor;
    GraphWindow* m_graph_window = nullptr;
    ListPane* m_variable_list = nullptr;
    ListPane* m_function_list = nullptr;
    // The lists that were shown when a graph took the editor's place, to show again after it.
    bool m_variables_before_graph = false, m_functions_before_graph = false;
    ManagerDialog* m_variable_manager = nullptr;
    ManagerDialog* m_function_manager = nullptr;
    FunctionSolverDialog* m_solver = nullptr;
    std::unique_ptr<ToolWindows> m_tools;
    LibraryDialog* m_library = nullptr;
    std::unique_ptr<desktop::DocumentHub> m_hub;
    std::string m_autosave_slot;
    std::function<QString()> m_save_as;
    QFileSystemWatcher* m_watcher = nullptr;
    desktop::FileStamp m_on_disk;      // the file as last read or written here
    desktop::FileStamp m_declined;     // a change the user chose not to reload, not asked again
    bool m_checking_disk = false;
    bool m_removed_on_disk = false;
};

} // namespace quorvex::gui
