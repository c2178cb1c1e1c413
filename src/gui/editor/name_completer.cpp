#include "name_completer.h"

#include "desktop/name_catalog.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>

namespace quorvex::gui {

namespace {

QList<QStandardItem*> row_of(const desktop::CatalogEntry& entry) {
    auto* name = new QStandardItem(QString::fromStdString(entry.name));
    QString tip = QString::fromStdString(entry.prototype);
    if (!entry.description.empty()) tip += QStringLiteral("\n") + QString::fromStdString(entry.description);
    name->setToolTip(tip);
    name->setData(static_cast<int>(entry.kind), Qt::UserRole);
    name->setData(QString::fromStdString(desktop::completion_text(entry)), NameCompleter::InsertRole);
    // A constant's prototype is its name again: nothing to show beside it.
    auto* prototype = new QStandardItem(entry.kind == desktop::NameKind::Constant ? QString()
                                                                                 : QString::fromStdString(entry.prototype));
    prototype->setToolTip(tip);
    return {name, prototype};
}

} // namespace

NameCompleter::NameCompleter(engine::Parser& parser, QObject* parent)
    : QCompleter(parent), m_parser(parser), m_model(new QStandardItemModel(0, 2, this)) {
    for (const desktop::CatalogEntry& entry : desktop::catalog_names(parser))
        if (entry.kind != desktop::NameKind::UserFunction) m_model->appendRow(row_of(entry));
    m_fixed_rows = m_model->rowCount();
    add_document_rows();
    setModel(m_model);
    setCompletionColumn(0);
    setCaseSensitivity(Qt::CaseInsensitive);
    setCompletionMode(QCompleter::PopupCompletion);
    setModelSorting(QCompleter::UnsortedModel);
    setFilterMode(Qt::MatchStartsWith);
    // Two columns, so that the prototype stands beside each name.
    auto* view = new QTreeView;
    view->setObjectName(QStringLiteral("namePopup"));
    view->setHeaderHidden(true);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->header()->setStretchLastSection(true);
    // The popup is made as wide as its names and prototypes (popup_width); a scroll bar across
    // it would only take the place of the one row a single name has.
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setPopup(view); // the completer owns it
}

void NameCompleter::add_document_rows() {
    for (const desktop::CatalogEntry& entry : desktop::document_functions(m_parser)) m_model->appendRow(row_of(entry));
}

void NameCompleter::refresh_document_functions() {
    m_model->removeRows(m_fixed_rows, m_model->rowCount() - m_fixed_rows);
    add_document_rows();
}

QStringList NameCompleter::function_names() const {
    QStringList names;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const auto kind = static_cast<desktop::NameKind>(m_model->item(row)->data(Qt::UserRole).toInt());
        if (kind == desktop::NameKind::LibraryFunction || kind == desktop::NameKind::UserFunction)
            names << m_model->item(row)->text();
    }
    return names;
}

int NameCompleter::popup_width() const {
    QAbstractItemView* list = popup(); // the tree view's own sizeHintForColumn is not public
    const int gap = list->fontMetrics().averageCharWidth() * 2;
    const int names = list->sizeHintForColumn(0) + gap;
    static_cast<QTreeView*>(list)->setColumnWidth(0, names);
    return names + list->sizeHintForColumn(1) + list->verticalScrollBar()->sizeHint().width() + 2 * list->frameWidth() + gap;
}

} // namespace quorvex::gui
