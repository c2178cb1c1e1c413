#include "graph_setup_dialog.h"

#include "setup_pages.h"

#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/editor/document_window.h"
#include "gui/graph2d/graph_window.h"
#include "gui/lists/manager_dialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

constexpr const char* k_caption = "Graphing Utility";

} // namespace

GraphSetupDialog::GraphSetupDialog(DocumentWindow& document, int graph, Mode mode, QWidget* parent)
    : QDialog(parent), m_document(document), m_mode(mode), m_tabs(new QTabWidget(this)),
      m_list(new QListWidget(this)), m_new_name(new QLineEdit(this)) {
    setObjectName(mode == Mode::Wizard ? QStringLiteral("graphsWizard") : QStringLiteral("graphSetup"));
    store::IniFile* settings = document.services().settings;

    // "Graphs": the document's list, and a new graph by name.
    auto* graphs_page = new QWidget(this);
    auto* add = new QPushButton(tr("&Add"), graphs_page);
    auto* rename = new QPushButton(tr("Re&name..."), graphs_page);
    auto* remove = new QPushButton(tr("&Delete"), graphs_page);
    auto* check = new QPushButton(tr("Data &Check"), graphs_page);
    auto* to_functions = new QPushButton(tr("F&unctions..."), graphs_page);
    auto* to_points = new QPushButton(tr("Data P&oints..."), graphs_page);
    m_new_name->setPlaceholderText(tr("Name of a new graph"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_new_name, 1);
    row->addWidget(add);
    auto* side = new QVBoxLayout;
    for (QPushButton* button : {rename, remove, check, to_functions, to_points}) {
        button->setAutoDefault(false);
        side->addWidget(button);
    }
    side->addStretch();
    auto* list_row = new QHBoxLayout;
    list_row->addWidget(m_list, 1);
    list_row->addLayout(side);
    auto* graphs_layout = new QVBoxLayout(graphs_page);
    auto* list_label = new QLabel(tr("The &graphs of this document:"), graphs_page);
    list_label->setBuddy(m_list);
    graphs_layout->addWidget(list_label);
    graphs_layout->addLayout(list_row, 1);
    graphs_layout->addLayout(row);
    m_tabs->addTab(graphs_page, tr("Graphs"));
    connect(add, &QPushButton::clicked, this, [this] { add_graph(m_new_name->text()); });
    connect(rename, &QPushButton::clicked, this, [this] {
        if (m_index < 0) return tell("Choose a graph to rename.");
        bool ok = false;
        const QString name = QInputDialog::getText(this, tr("Rename Graph"), tr("New name of the graph:"),
                                                   QLineEdit::Normal, QString::fromStdString(m_temp.Data.Name), &ok);
        if (ok) rename_graph(name);
    });
    connect(check, &QPushButton::clicked, this, &GraphSetupDialog::data_check);
    connect(to_functions, &QPushButton::clicked, this, [this] { m_tabs->setCurrentIndex(1); });
    connect(to_points, &QPushButton::clicked, this, [this] { m_tabs->setCurrentIndex(3); });
    connect(m_new_name, &QLineEdit::returnPressed, add, &QPushButton::click);
    connect(remove, &QPushButton::clicked, this, [this] {
        auto& graphs = m_document.document().Graphs;
        if (m_index < 0 || m_index >= static_cast<int>(graphs.size())) return;
        MessageReporter reporter(this, m_document.services().collected_messages);
        if (!reporter.ask("Are you sure that you want to delete the graph \"" + graphs[static_cast<size_t>(m_index)].Data.Name +
                              "\"?",
                          k_caption))
            return;
        graphs.erase(graphs.begin() + m_index);
        m_document.parser().set_vars_saved(false);
        delete m_list->takeItem(m_index);
        choose(std::min(m_index, static_cast<int>(graphs.size()) - 1));
        graphs_changed();
    });
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row != m_index) choose(row);
    });

    engine::Parser& parser = document.parser();
    const auto add_page = [this](SetupPage* page, const QString& title) {
        page->set_services(&m_document.services());
        m_pages.push_back(page);
        m_tabs->addTab(page, title);
    };
    auto* functions = new FunctionsPage(parser, this);
    functions->edit_function = [this](const QString& function) { m_document.open_manager(false, function); };
    add_page(functions, tr("Functions"));
    add_page(new VariablesPage(this), tr("Variables"));
    add_page(new DataPage(parser, this), tr("Data Points"));
    add_page(new LabelsPage(this), tr("Labels"));
    add_page(new TypesPage(this), tr("Types"));
    add_page(new StylesPage(settings, this), tr("Styles"));
    add_page(new ColorsPage(document.services(), this), tr("Colors"));
    // Each page shows what the others changed (the variables follow the functions, ...). With
    // the pages, leaving one applies it: its checks run as the wizard's Next runs them, and one
    // that fails keeps the user on the page.
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int now) {
        const int leaving = m_current_tab;
        if (m_mode == Mode::Pages && !m_turning && leaving != now) {
            // A graph with nothing in it yet is no reason to keep the user on the functions: the
            // data points may be on their way (Apply still says there is nothing to graph).
            store_pages();
            const bool empty = m_index >= 0 && !m_temp.Data.IsGraphData();
            const bool passed = (empty && leaving == static_cast<int>(graph::SetupPage::Functions)) || check_tab(leaving);
            turn_to(passed ? now : leaving);
            if (!passed) return;
        }
        m_current_tab = m_tabs->currentIndex();
        store_pages();
        load_pages();
        update_buttons();
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    if (mode == Mode::Wizard) {
        m_tabs->tabBar()->hide();
        m_prev = new QPushButton(tr("< &Prev"), this);
        m_next = new QPushButton(tr("&Next >"), this);
        m_finish = new QPushButton(tr("&Finish"), this);
        auto* cancel = new QPushButton(tr("Cancel"), this);
        auto* buttons = new QHBoxLayout;
        buttons->addStretch();
        for (QPushButton* button : {m_prev, m_next, m_finish, cancel}) buttons->addWidget(button);
        layout->addLayout(buttons);
        connect(m_prev, &QPushButton::clicked, this, &GraphSetupDialog::previous);
        connect(m_next, &QPushButton::clicked, this, &GraphSetupDialog::next);
        connect(m_finish, &QPushButton::clicked, this, &GraphSetupDialog::accept);
        connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
        m_next->setDefault(true);
    } else {
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel, this);
        layout->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::accepted, this, &GraphSetupDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &GraphSetupDialog::apply);
    }
    for (const document::DocumentGraph& each : document.document().Graphs)
        m_list->addItem(QString::fromStdString(each.Data.Name));
    choose(graph);
    resize(660, 480);
    connect(&document, &DocumentWindow::graphBuilding, this, [this](bool building) { enable_setup(!building); });
    if (document.graph_shown() && document.graph_window()->building()) enable_setup(false);
    ask_value = [this](const QString& variable) -> std::optional<QString> {
        bool ok = false;
        const QString value = QInputDialog::getText(this, QString::fromLatin1(k_caption),
                                                    tr("Value of the variable %1:").arg(variable), QLineEdit::Normal,
                                                    QString(), &ok);
        if (!ok) return std::nullopt;
        return value;
    };
}

void GraphSetupDialog::enable_setup(bool enabled) {
    m_building = !enabled;
    m_tabs->setEnabled(enabled);
}

bool GraphSetupDialog::refuse_while_building() {
    if (!m_building) return false;
    tell("A graph is being built. Wait until it is finished, or stop it, before you change the graph setup.");
    return true;
}

void GraphSetupDialog::turn_to(int tab) {
    const bool was_turning = m_turning;
    m_turning = true;
    m_tabs->setCurrentIndex(tab);
    m_current_tab = m_tabs->currentIndex();
    m_turning = was_turning;
}

void GraphSetupDialog::graphs_changed() {
    if (m_document.graph_shown()) m_document.graph_window()->refresh_list();
}

void GraphSetupDialog::choose(int graph) {
    auto& graphs = m_document.document().Graphs;
    m_index = graph >= 0 && graph < static_cast<int>(graphs.size()) ? graph : -1;
    m_temp = m_index >= 0 ? graphs[static_cast<size_t>(m_index)] : document::DocumentGraph{graph::GraphData(), {}};
    {
        const QSignalBlocker quiet(m_list);
        m_list->setCurrentRow(m_index);
    }
    load_pages();
    for (int tab = 1; tab < m_tabs->count(); ++tab) m_tabs->setTabEnabled(tab, m_index >= 0);
    update_buttons();
    update_caption();
}

void GraphSetupDialog::update_caption() {
    const QString document = m_document.file_path().isEmpty() ? m_document.untitled_name()
                                                               : QFileInfo(m_document.file_path()).fileName();
    setWindowTitle(m_index >= 0 ? QStringLiteral("GRAPH SETUP : %1 : %2").arg(document, QString::fromStdString(m_temp.Data.Name))
                                : QStringLiteral("GRAPH SETUP : %1").arg(document));
}

const document::DocumentGraph& GraphSetupDialog::temp() {
    store_pages();
    return m_temp;
}

void GraphSetupDialog::store_pages() {
    if (m_index < 0) return;
    for (SetupPage* page : m_pages) page->store(m_temp);
}

void GraphSetupDialog::load_pages() {
    for (SetupPage* page : m_pages) page->load(m_temp);
}

void GraphSetupDialog::tell(const std::string& text) {
    MessageReporter reporter(this, m_document.services().collected_messages);
    reporter.report(text, k_caption, engine::MessageKind::Information);
}

bool GraphSetupDialog::ask(const std::string& text) {
    return ask_user(m_document.services(), this, QString::fromLatin1(k_caption), QString::fromStdString(text),
                    QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool GraphSetupDialog::settle(const std::function<std::optional<graph::SetupProblem>(bool)>& check) {
    bool allow_warnings = false;
    while (const std::optional<graph::SetupProblem> problem = check(allow_warnings)) {
        turn_to(static_cast<int>(problem->page)); // the pages stand in the checks' order
        const bool offered = problem->proceed_question || problem->offer != graph::SetupOffer::None;
        if (!offered) {
            tell(problem->message);
            return false;
        }
        const bool yes = ask(problem->message);
        switch (problem->offer) {
        case graph::SetupOffer::None:
            if (!yes) return false;
            allow_warnings = true;
            break;
        case graph::SetupOffer::DefaultAxis:
            if (!yes || !graph::pick_default_x_axis(m_temp.Data)) return false;
            break;
        case graph::SetupOffer::DefineVariable: {
            const std::optional<QString> value = yes ? ask_value(QString::fromStdString(problem->variable)) : std::nullopt;
            if (!value || !m_document.hub().AddEditVariable(problem->variable, value->trimmed().toStdString()) ||
                !m_document.parser().var_assigned(problem->variable.c_str())) {
                if (!yes) tell(problem->refusal);
                return false;
            }
            break;
        }
        case graph::SetupOffer::EditFunction:
            if (yes) m_document.open_manager(false, QString::fromStdString(problem->variable));
            return false;
        }
        load_pages(); // what was answered shows on the pages
    }
    return true;
}

bool GraphSetupDialog::check_tab(int tab) {
    const auto page = static_cast<graph::SetupPage>(tab);
    if (page == graph::SetupPage::Graphs || tab >= m_tabs->count()) return true;
    store_pages();
    const bool passed =
        settle([&](bool allow_warnings) { return graph::check_page(page, m_temp.Data, m_document.parser(), allow_warnings); });
    if (passed) load_pages(); // the checks may have put limits the right way round
    return passed;
}

bool GraphSetupDialog::data_check() {
    if (refuse_while_building()) return false;
    if (m_index < 0) {
        tell("Choose a graph, or add one, first.");
        return false;
    }
    store_pages();
    if (!settle([this](bool allow_warnings) { return graph::check_graph(m_temp.Data, m_document.parser(), allow_warnings); }))
        return false;
    load_pages();
    tell("The graph was checked and no errors were found: it is ready to be drawn.");
    return true;
}

bool GraphSetupDialog::rename_graph(const QString& name) {
    if (refuse_while_building()) return false;
    auto& graphs = m_document.document().Graphs;
    if (m_index < 0 || m_index >= static_cast<int>(graphs.size())) {
        tell("Choose a graph to rename.");
        return false;
    }
    const std::string wanted = name.trimmed().toStdString();
    graph::GraphData& renamed = graphs[static_cast<size_t>(m_index)].Data;
    if (wanted.empty()) {
        tell("Give the graph a name.");
        return false;
    }
    if (!m_document.hub().IsUniqueGraphName(wanted, &renamed)) {
        tell("A graph named \"" + wanted + "\" exists already: choose another name.");
        return false;
    }
    renamed.SetName(wanted.c_str());
    m_temp.Data.SetName(wanted.c_str());
    m_document.parser().set_vars_saved(false);
    m_list->item(m_index)->setText(name.trimmed());
    update_caption();
    graphs_changed();
    return true;
}

bool GraphSetupDialog::add_graph(const QString& name) {
    if (refuse_while_building()) return false;
    const std::string wanted = name.trimmed().toStdString();
    if (wanted.empty()) {
        tell("Give the new graph a name.");
        return false;
    }
    if (!m_document.hub().IsUniqueGraphName(wanted)) {
        tell("A graph named \"" + wanted + "\" exists already: choose another name.");
        return false;
    }
    document::DocumentGraph graph;
    graph.Data.SetName(wanted.c_str());
    m_document.document().Graphs.push_back(std::move(graph));
    m_document.parser().set_vars_saved(false);
    m_list->addItem(QString::fromStdString(wanted));
    m_new_name->clear();
    choose(static_cast<int>(m_document.document().Graphs.size()) - 1);
    return true;
}

bool GraphSetupDialog::apply() {
    if (refuse_while_building()) return false;
    if (m_index < 0) {
        tell("Choose a graph, or add one, first.");
        return false;
    }
    if (m_index >= static_cast<int>(m_document.document().Graphs.size())) return false;
    // Closing a page checks it: the titles are checked when the labels page is the one open.
    if (m_tabs->currentWidget() == page<LabelsPage>() && !check_tab(m_tabs->currentIndex())) return false;
    store_pages();
    if (!settle([this](bool allow_warnings) { return graph::check_graph(m_temp.Data, m_document.parser(), allow_warnings); }))
        return false;
    load_pages(); // the checks may have put limits the right way round
    m_document.document().Graphs[static_cast<size_t>(m_index)] = m_temp;
    m_document.parser().set_vars_saved(false);
    Q_EMIT applied(m_index);
    return true;
}

void GraphSetupDialog::accept() {
    if (apply()) QDialog::accept();
}

void GraphSetupDialog::next() {
    if (refuse_while_building()) return;
    if (m_tabs->currentIndex() == 0 && m_index < 0) {
        tell("Choose a graph, or add one, first.");
        return;
    }
    const int leaving = m_tabs->currentIndex();
    if (leaving + 1 < m_tabs->count() && check_tab(leaving)) m_tabs->setCurrentIndex(leaving + 1);
}

void GraphSetupDialog::previous() {
    if (refuse_while_building()) return;
    const int leaving = m_tabs->currentIndex();
    if (leaving > 0 && check_tab(leaving)) m_tabs->setCurrentIndex(leaving - 1);
}

void GraphSetupDialog::update_buttons() {
    if (m_mode != Mode::Wizard) return;
    m_prev->setEnabled(m_tabs->currentIndex() > 0);
    m_next->setEnabled(m_tabs->currentIndex() + 1 < m_tabs->count());
    m_finish->setEnabled(m_index >= 0);
}

} // namespace quorvex::gui
