#pragma once
#include "desktop/process_lock.h"

#include <QMainWindow>

#include <string>

class QActionGroup;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QLabel;
class QTimer;

namespace quorvex::gui {

class DocumentWindow;
class FindReplaceDialog;
class Keypad;
struct Services;

// The frame of the desktop program: the documents as MDI children, the menus, the toolbar and
// the status bar. Every command is one QAction shared by menu, toolbar and shortcut; a command
// acts on the active document.
class MainFrame : public QMainWindow {
    Q_OBJECT

public:
    explicit MainFrame(Services& services, QWidget* parent = nullptr);
    ~MainFrame() override;

    DocumentWindow* new_document();
    // The worksheet that teaches the program, from the user's copy (made from the program's on
    // first use); null when it can not be had.
    DocumentWindow* open_getting_started();
    // The first start's documents: the worksheet at the left, an empty document at the right.
    void open_first_start_documents();
    // No settings were there when the program started: the first start on this account.
    bool first_start() const { return m_first_start; }
    // Opens `path`, or raises its window when it is open already; null (after the message) when it
    // can not be read.
    DocumentWindow* open_document(const QString& path);
    // The message of a file named on the command line that does not exist, then a new document.
    void open_missing(const QString& path);
    DocumentWindow* active_document() const;
    QList<DocumentWindow*> documents() const;
    bool save_document(DocumentWindow* window, bool ask_for_name);
    // Writes every modified document to its autosave slot; removes the slots of the others.
    void autosave_now();
    // Offers back documents that an earlier run left in the autosave folder.
    void offer_recovery();
    QMdiArea* mdi_area() const { return m_area; }
    QAction* action(const QString& name) const;
    Keypad* keypad() const { return m_keypad; }

    // Tests choose file names here instead of a dialog.
    std::function<QString(const QString& suggestion)> choose_save_path;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void create_actions();
    void create_menus();
    void update_actions();
    void update_recent_menu();
    // The Window menu's list of open documents, the active one checked.
    void update_window_menu();
    // The caret's line and column of the active document in the status line, or nothing.
    void update_position();
    void remember(const QString& path);
    void open_with_dialog();
    void print(bool preview);
    void export_pdf();
    void show_options();
    // Shows incremental variables' values or their ranges, in every document, and keeps it.
    void set_incremental_display(bool on);
    void new_function_graph();
    void graph_setup(bool wizard);
    bool close_window(QMdiSubWindow* sub);
    QMdiSubWindow* add_window(DocumentWindow* window);
    QMdiSubWindow* window_of_path(const QString& path) const;
    QString ask_save_path(DocumentWindow* window);

    Services& m_services;
    QMdiArea* m_area;
    QMenu* m_recent_menu = nullptr;
    QMenu* m_window_menu = nullptr;
    QActionGroup* m_window_list = nullptr;
    QLabel* m_position = nullptr;
    QTimer* m_autosave_timer;
    Keypad* m_keypad = nullptr;
    bool m_first_start = false;
    QList<QAction*> m_tool_actions; // the math tools' commands, enabled with a document
    QList<QAction*> m_recalc_actions; // recalculation and the document check, enabled with a document
    FindReplaceDialog* m_find = nullptr;
    QLabel* m_autosave_warning = nullptr; // shown from a failed autosave until one works again
    int m_untitled_count = 0;
    int m_slot_count = 0;
    // This program's name in the autosave folder and the lock that marks it as running.
    std::string m_autosave_owner;
    desktop::ProcessLock m_autosave_lock;
};

} // namespace quorvex::gui
