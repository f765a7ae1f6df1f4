// The entry grid's cells for Qt's views, read from the shared model. Qt counts rows and columns from 0, the model from
// 1; `index` and `cellOf` translate.
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <optional>

#include "platform/model/entrygridmodel.h"

namespace orvenmod::platform::qt {

/// A cell as the model counts, 0 and 0 for none.
struct CellPlace {
    int column = 0;
    int row = 0;
    bool operator==(const CellPlace&) const = default;
};

class EntryGridItems : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit EntryGridItems(model::EntryGridModel& cells) : cells_(cells) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    static CellPlace cellOf(const QModelIndex& index);
    QModelIndex indexOf(CellPlace cell) const;
    const model::EntryGridModel& cells() const { return cells_; }

    void setRowCount(int rows);
    void deleteRow(int row);
    /// Row 0: the whole column and its heading.
    void cellChanged(CellPlace cell);

    std::optional<QColor> lockedColour;

private:
    model::EntryGridModel& cells_;
};

}  // namespace orvenmod::platform::qt
