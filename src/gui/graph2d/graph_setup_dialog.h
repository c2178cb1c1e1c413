#pragma once
#include "document/document.h"
#include "graph/setup_checks.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <vector>

class QLineEdit;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace quorvex::gui {

class DocumentWindow;
class SetupPage;

// The graph setup: the document's graphs, and eight pages over one temporary copy of the chosen
// graph. With Pages it has Apply, OK and Cancel; as the "Graphs Wizard" it walks the pages with
// Prev, Next and Finish, checking the page it leaves. Cancel leaves the document's graph as it
// was. It is modeless: the document stays in use beside it.
class GraphSetupDialog : public QDialog {
    Q_OBJECT

public:
    enum class Mode { Pages, Wizard };
    GraphSetupDialog(DocumentWindow& document, int graph, Mode mode, QWidget* parent = nullptr);

    // The copy the pages edit, as the controls stand.
    const document::DocumentGraph& temp();
    int graph_index() const { return m_index; }
    QTabWidget* tabs() const { return m_tabs; }
    QListWidget* graph_list() const { return m_list; }
    // Adds a graph of that name to the document and chooses it; false (after the message) for
    // an empty name or one a graph has.
    bool add_graph(const QString& name);
    // Renames the chosen graph; false (after the message) for an empty name or another graph's.
    bool rename_graph(const QString& name);
    // Runs every check on the copy, answering what it offers, and says so when all pass.
    bool data_check();
    // The value the user gives a variable the functions need, offered when it has none; nothing
    // when cancelled. A box unless replaced.
    std::function<std::optional<QString>(const QString& variable)> ask_value;
    // Checks the copy and writes it into the document's graph; false (after the message, on the
    // page concerned) when a check refused.
    bool apply();
    // The wizard's steps.
    void next();
    void previous();
    template <typename Page> Page* page() const {
        for (SetupPage* each : m_pages)
            if (auto* found = qobject_cast<Page*>(each)) return found;
        return nullptr;
    }

    void accept() override;
    // Off while a graph of the document is being built: the pages can not be changed, and Apply,
    // OK and the wizard's steps say that a build is running.
    void enable_setup(bool enabled);
    bool setup_enabled() const { return !m_building; }

Q_SIGNALS:
    // The document's graph was changed: draw it.
    void applied(int graph);

private:
    void choose(int graph);
    void store_pages();
    void load_pages();
    void tell(const std::string& text);
    bool ask(const std::string& text);
    // Shows each problem `check` finds on its page, answering its question or offer, until none is
    // left (true) or the user is refused or says No (false).
    bool settle(const std::function<std::optional<graph::SetupProblem>(bool allow_warnings)>& check);
    // The checks of the page on tab `tab` (none for "Graphs", Styles and Colors).
    bool check_tab(int tab);
    void graphs_changed();
    // True, after saying so, while a graph is being built.
    bool refuse_while_building();
    // Turns to another page without the checks of the page left (a check turning to its page).
    void turn_to(int tab);
    void update_buttons();
    void update_caption();

    DocumentWindow& m_document;
    Mode m_mode;
    int m_index = -1;
    document::DocumentGraph m_temp;
    QTabWidget* m_tabs;
    QListWidget* m_list;
    QLineEdit* m_new_name;
    std::vector<SetupPage*> m_pages; // the pages after "Graphs", in tab order
    QPushButton* m_prev = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_finish = nullptr;
    int m_current_tab = 0;  // the page shown, known still when the tab bar has moved on
    bool m_turning = false; // the page changes without leaving checks
    bool m_building = false;
};

} // namespace quorvex::gui
