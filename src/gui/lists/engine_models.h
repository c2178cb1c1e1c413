#pragma once
#include <QAbstractTableModel>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

// The document's variables as a table over the engine's own list: name, value (with the range of
// an incremental variable). It copies nothing: each cell is read from the engine when shown, and
// refresh() tells the views that the engine changed.
class VariableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit VariableModel(engine::Parser& parser, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void refresh();

private:
    engine::Parser& m_parser;
};

// The document's functions: name with its parameters, and the expression.
class FunctionModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit FunctionModel(engine::Parser& parser, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void refresh();

private:
    engine::Parser& m_parser;
};

} // namespace quorvex::gui
