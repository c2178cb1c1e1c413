#include "engine_models.h"

#include "engine/function.h"
#include "engine/parser.h"

namespace quorvex::gui {

EngineListModel::EngineListModel(engine::Parser& parser, Kind kind, QObject* parent)
    : QAbstractTableModel(parent), m_parser(parser), m_kind(kind) {}

int EngineListModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    return m_kind == Kind::Variables ? m_parser.variable_count() : m_parser.function_count();
}

int EngineListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant EngineListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    if (m_kind == Kind::Functions) {
        const engine::Function* function = m_parser.function_at(index.row());
        if (!function) return {};
        return QString::fromStdString(index.column() == 0 ? function->full_name() : function->value());
    }
    if (index.column() == 0) {
        const char* name = m_parser.get_var_name(index.row());
        return name ? QString::fromUtf8(name) : QString();
    }
    // The engine's text of the value at the variables' precision, the range of an incremental
    // variable included; the engine keeps that text in a buffer of its own.
    auto& parser = const_cast<engine::Parser&>(m_parser);
    const char* value = parser.get_var_str_value(index.row(), parser.variable_format().precision, false);
    return value ? QString::fromUtf8(value) : QString();
}

QVariant EngineListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    if (m_kind == Kind::Variables) return section == 0 ? tr("Variable") : tr("Value");
    return section == 0 ? tr("Function") : tr("Definition");
}

void EngineListModel::refresh() {
    beginResetModel();
    endResetModel();
}

} // namespace quorvex::gui
