#include "graph_setup_dialog.h"

#include "setup_pages.h"

#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/editor/document_window.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
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
    auto* remove = new QPushButton(tr("&Delete"), graphs_page);
    m_new_name->setPlaceholderText(tr("Name of a new graph"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_new_name, 1);
    row->addWidget(add);
    row->addWidget(remove);
    auto* graphs_layout = new QVBoxLayout(graphs_page);
    graphs_layout->addWidget(new QLabel(tr("The graphs of this document:"), graphs_page));
    graphs_layout->addWidget(m_list, 1);
    graphs_layout->addLayout(row);
    m_tabs->addTab(graphs_page, tr("Graphs"));
    connect(add, &QPushButton::clicked, this, [this] { add_graph(m_new_name->text()); });
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
    });
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row != m_index) choose(row);
    });

    engine::Parser& parser = document.parser();
    const auto add_page = [this](SetupPage* page, const QString& title) {
        m_pages.push_back(page);
        m_tabs->addTab(page, title);
    };
    add_page(new FunctionsPage(parser, this), tr("Functions"));
    add_page(new VariablesPage(this), tr("Variables"));
    add_page(new DataPage(this), tr("Data Points"));
    add_page(new LabelsPage(this), tr("Labels"));
    add_page(new TypesPage(this), tr("Types"));
    add_page(new StylesPage(settings, this), tr("Styles"));
    add_page(new ColorsPage(settings, this), tr("Colors"));
    // Each page shows what the others changed (the variables follow the functions, ...).
    connect(m_tabs, &QTabWidget::currentChanged, this, [this] {
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
    resize(620, 460);
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

bool GraphSetupDialog::add_graph(const QString& name) {
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
    if (m_index < 0) {
        tell("Choose a graph, or add one, first.");
        return false;
    }
    store_pages();
    bool allow_warnings = false;
    while (const std::optional<graph::SetupProblem> problem = graph::check_graph(m_temp.Data, m_document.parser(), allow_warnings)) {
        m_tabs->setCurrentIndex(static_cast<int>(problem->page)); // the pages stand in the checks' order
        MessageReporter reporter(this, m_document.services().collected_messages);
        if (problem->proceed_question && reporter.ask(problem->message, k_caption)) {
            allow_warnings = true;
            continue;
        }
        if (!problem->proceed_question) tell(problem->message);
        return false;
    }
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
    if (m_tabs->currentIndex() == 0 && m_index < 0) {
        tell("Choose a graph, or add one, first.");
        return;
    }
    if (m_tabs->currentIndex() + 1 < m_tabs->count()) m_tabs->setCurrentIndex(m_tabs->currentIndex() + 1);
}

void GraphSetupDialog::previous() {
    if (m_tabs->currentIndex() > 0) m_tabs->setCurrentIndex(m_tabs->currentIndex() - 1);
}

void GraphSetupDialog::update_buttons() {
    if (m_mode != Mode::Wizard) return;
    m_prev->setEnabled(m_tabs->currentIndex() > 0);
    m_next->setEnabled(m_tabs->currentIndex() + 1 < m_tabs->count());
    m_finish->setEnabled(m_index >= 0);
}

} // namespace quorvex::gui
