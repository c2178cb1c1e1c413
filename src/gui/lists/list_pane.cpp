#include "list_pane.h"

#include "engine_models.h"

#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"
#include "gui/tools/tool_windows.h"

#include <QAction>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

#include <set>

namespace quorvex::gui {

ListPane::ListPane(DocumentWindow& document, Kind kind, QWidget* parent)
    : QWidget(parent), m_document(document), m_kind(kind), m_view(new QTableView(this)) {
    const bool variables = kind == Kind::Variables;
    setObjectName(variables ? QStringLiteral("variableList") : QStringLiteral("functionList"));
    m_model = new EngineListModel(document.parser(), kind, this);
    m_view->setModel(m_model);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setAlternatingRowColors(true);
    m_view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_view, &QWidget::customContextMenuRequested, this, &ListPane::show_menu);
    connect(m_view, &QTableView::doubleClicked, this, [this] { insert_selection_into_editor(); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(variables ? tr("Variables") : tr("Functions"), this));
    layout->addWidget(m_view, 1);
}

void ListPane::refresh() { m_model->refresh(); }

int ListPane::delete_selection() {
    std::set<int> rows;
    for (const QModelIndex& index : m_view->selectionModel()->selectedRows()) rows.insert(index.row());
    if (rows.empty()) return 0;
    // From the last row up, so the others keep their places; the list is refreshed once, at the
    // end, and only a single item is asked about (the hub still asks where something uses it).
    const bool ask = rows.size() == 1;
    int deleted = 0;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const bool last = std::next(row) == rows.rend();
        const bool gone = m_kind == Kind::Variables ? m_document.hub().DeleteVariable(*row, last, ask)
                                                    : m_document.hub().DeleteFunction(*row, last, ask);
        deleted += gone;
    }
    refresh();
    return deleted;
}

bool ListPane::clear_all() {
    const bool variables = m_kind == Kind::Variables;
    MessageReporter reporter(this, m_document.services().collected_messages);
    if (!reporter.ask(variables ? "Are you sure that you want to delete all the variables?"
                                : "Are you sure that you want to delete all the functions?",
                      variables ? "Variables Manager" : "Function Manager"))
        return false;
    if (variables)
        m_document.parser().delete_all_vars();
    else
        m_document.parser().delete_all_funcs();
    m_document.parser().set_vars_saved(false);
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("Delete.wav"));
    refresh();
    if (!variables) m_document.editor()->refresh_names();
    return true;
}

void ListPane::show_menu(const QPoint& at) {
    const bool variables = m_kind == Kind::Variables;
    const bool selected = m_view->currentIndex().isValid();
    QMenu menu(this);
    menu.addAction(tr("&Insert into the Editor"), this, &ListPane::insert_selection_into_editor)->setEnabled(selected);
    menu.addAction(tr("&Delete"), this, &ListPane::delete_selection)->setEnabled(selected);
    menu.addAction(tr("&Clear All..."), this, &ListPane::clear_all);
    menu.addSeparator();
    menu.addAction(variables ? tr("Variables &Manager...") : tr("Function &Manager..."), this,
                   [this, variables] { m_document.open_manager(variables, selected_name()); });
    if (variables) {
        menu.addAction(tr("&Precision and Format..."), this,
                       [this] { Q_EMIT m_document.frameCommand(QStringLiteral("toolsOptions")); });
        QAction* incremental = menu.addAction(tr("Incremental Variables' &Values"), this, [this] {
            Q_EMIT m_document.frameCommand(QStringLiteral("viewIncrementalVariables"));
        });
        incremental->setCheckable(true);
        incremental->setChecked(m_document.services().options.IncrementalVariables);
    } else {
        menu.addAction(tr("Function &Solver..."), this, [this] {
            const QModelIndex current = m_view->currentIndex();
            const QString prototype = m_model->index(current.row(), 0).data().toString() + QStringLiteral(" = ") +
                                      m_model->index(current.row(), 1).data().toString();
            m_document.open_solver(prototype, tr("A function of this document."));
        })->setEnabled(selected);
        // The tools open on the selected function, by its call ("f[x]").
        const auto tool_entry = [this, selected](QMenu* into, const QString& text, Tool tool) {
            into->addAction(text, this, [this, tool] { m_document.tools().open(tool, selected_name()); })
                ->setEnabled(selected);
        };
        QMenu* calculus = menu.addMenu(tr("&Calculus"));
        tool_entry(calculus, tr("&Integration..."), Tool::Integration);
        tool_entry(calculus, tr("&Differentiation..."), Tool::Differentiation);
        QMenu* math_tools = menu.addMenu(tr("Math &Tools"));
        tool_entry(math_tools, tr("&Root Finder..."), Tool::RootFinder);
        tool_entry(math_tools, tr("&Quick Calc..."), Tool::QuickCalc);
        tool_entry(&menu, tr("Quick &Graph..."), Tool::QuickGraph);
    }
    menu.addSeparator();
    menu.addAction(tr("&Print..."), this, &ListPane::print);
    menu.exec(m_view->viewport()->mapToGlobal(at));
}

QString ListPane::selected_name() const {
    const QModelIndex current = m_view->currentIndex();
    return current.isValid() ? m_model->index(current.row(), 0).data().toString() : QString();
}

void ListPane::insert_selection_into_editor() {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return;
    // A function goes in with the brackets the editor shows.
    engine::Parser& parser = m_document.parser();
    const QString name = m_kind == Kind::Variables || parser.use_square_brackets()
                             ? m_model->index(current.row(), 0).data().toString()
                             : QString::fromUtf8(parser.get_func_name_ex(current.row()));
    m_document.editor()->insertPlainText(name);
    m_document.editor()->setFocus();
}

QString ListPane::printable_html() const {
    const bool variables = m_kind == Kind::Variables;
    const QString document = m_document.file_path().isEmpty() ? m_document.untitled_name() : m_document.file_path();
    QString html = QStringLiteral("<h3>%1 of %2</h3><table cellspacing=0 cellpadding=3 border=1>")
                       .arg(variables ? tr("Variables") : tr("Functions"), document.toHtmlEscaped());
    html += QStringLiteral("<tr><th align=left>%1</th><th align=left>%2</th></tr>")
                .arg(m_model->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
                     m_model->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString());
    for (int row = 0; row < m_model->rowCount(); ++row)
        html += QStringLiteral("<tr><td>%1</td><td>%2</td></tr>")
                    .arg(m_model->index(row, 0).data().toString().toHtmlEscaped(),
                         m_model->index(row, 1).data().toString().toHtmlEscaped());
    return html + QStringLiteral("</table>");
}

void ListPane::print() {
    QPrinter printer;
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(m_kind == Kind::Variables ? tr("Print Variables") : tr("Print Functions"));
    if (dialog.exec() != QDialog::Accepted) return;
    QTextDocument page;
    page.setHtml(printable_html());
    page.print(&printer);
}

void ListPane::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete) {
        delete_selection();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        insert_selection_into_editor();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace quorvex::gui
