#include "name_completer.h"

#include "desktop/name_catalog.h"

#include <QStandardItemModel>

namespace quorvex::gui {

namespace {

QStandardItem* item_of(const desktop::CatalogEntry& entry) {
    auto* item = new QStandardItem(QString::fromStdString(entry.name));
    QString tip = QString::fromStdString(entry.prototype);
    if (!entry.description.empty()) tip += QStringLiteral("\n") + QString::fromStdString(entry.description);
    item->setToolTip(tip);
    item->setData(static_cast<int>(entry.kind), Qt::UserRole);
    return item;
}

} // namespace

NameCompleter::NameCompleter(engine::Parser& parser, QObject* parent)
    : QCompleter(parent), m_parser(parser), m_model(new QStandardItemModel(this)) {
    for (const desktop::CatalogEntry& entry : desktop::catalog_names(parser))
        if (entry.kind != desktop::NameKind::UserFunction) m_model->appendRow(item_of(entry));
    m_fixed_rows = m_model->rowCount();
    add_document_rows();
    setModel(m_model);
    setCaseSensitivity(Qt::CaseInsensitive);
    setCompletionMode(QCompleter::PopupCompletion);
    setModelSorting(QCompleter::UnsortedModel);
    setFilterMode(Qt::MatchStartsWith);
}

void NameCompleter::add_document_rows() {
    for (const desktop::CatalogEntry& entry : desktop::document_functions(m_parser)) m_model->appendRow(item_of(entry));
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

} // namespace quorvex::gui
