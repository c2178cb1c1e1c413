#include "engine_models.h"

#include "engine/function.h"
#include "engine/parser.h"

namespace quorvex::gui {

VariableModel::VariableModel(engine::Parser& parser, QObject* parent) : QAbstractTableModel(parent), m_parser(parser) {}

int VariableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_parser.variable_count(); }
int VariableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant VariableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    if (index.column() == 0) {
        const char* name = m_parser.get_var_name(index.row());
        return name ? QString::fromUtf8(name) : QString();
    }
    // The engine's text of the value at the variables' precision, the range of an incremental
    // variable included.
    auto& parser = const_cast<engine::Parser&>(m_parser);
    const char* value = parser.get_var_str_value(index.row(), parser.variable_format().precision, false);
    return value ? QString::fromUtf8(value) : QString();
}

QVariant VariableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? tr("Variable") : tr("Value");
}

void VariableModel::refresh() {
    beginResetModel();
    endResetModel();
}

FunctionModel::FunctionModel(engine::Parser& parser, QObject* parent) : QAbstractTableModel(parent), m_parser(parser) {}

int FunctionModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_parser.function_count(); }
int FunctionModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant FunctionModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    const engine::Function* function = m_parser.function_at(index.row());
    if (!function) return {};
    return QString::fromStdString(index.column() == 0 ? function->full_name() : function->value());
}

QVariant FunctionModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? tr("Function") : tr("Definition");
}

void FunctionModel::refresh() {
    beginResetModel();
    endResetModel();
}

} // namespace quorvex::gui
