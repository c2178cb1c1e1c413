#pragma once
#include <QAbstractTableModel>

namespace quorvex::engine {
class Parser;
}

namespace quorvex::gui {

// The document's variables (name, value with the range of an incremental variable) or functions
// (name with parameters, expression) as a table over the engine's own lists. It copies nothing:
// each cell is read from the engine when shown, and refresh() tells the views that it changed.
class EngineListModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum class Kind { Variables, Functions };
    EngineListModel(engine::Parser& parser, Kind kind, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void refresh();

private:
    engine::Parser& m_parser;
    Kind m_kind;
};

} // namespace quorvex::gui
