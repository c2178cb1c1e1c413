#include "list_pane.h"

#include "engine_models.h"

#include "gui/common/message_reporter.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"

#include <QAction>
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
    m_model = new EngineListModel(document.parser(),
                                  variables ? EngineListModel::Kind::Variables : EngineListModel::Kind::Functions, this);
    m_view->setModel(m_model);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setAlternatingRowColors(true);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto add = [this](const QString& text, auto slot) {
        auto* action = new QAction(text, m_view);
        connect(action, &QAction::triggered, this, slot);
        m_view->addAction(action);
    };
    add(tr("&Insert into the Editor"), [this] { insert_selection_into_editor(); });
    add(tr("&Delete"), [this] { delete_selection(); });
    add(tr("&Clear All..."), [this] { clear_all(); });
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

void ListPane::insert_selection_into_editor() {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return;
    const QString name = m_model->index(current.row(), 0).data().toString();
    m_document.editor()->insertPlainText(name);
    m_document.editor()->setFocus();
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
