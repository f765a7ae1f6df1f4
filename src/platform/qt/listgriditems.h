// The list grid's rows for Qt's views: nothing is copied, each cell is read from the shared model when it is painted.
// A model row is a data row counted from 0.
#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "platform/model/listgridmodel.h"

namespace orvenmod::platform::qt {

class ListGridItems : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListGridItems(model::ListGridModel& rows) : rows_(rows) {}

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    std::function<void()> onFailure;  ///< a row that was asked for can't be fetched
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Brackets a change of all rows and columns.
    template <class Change>
    void reset(Change change) {
        beginResetModel();
        try {
            change();
        } catch (...) {
            endResetModel();
            throw;
        }
        endResetModel();
    }
    void appendRow(std::string_view cells);
    void removeRow(int row);
    void headingChanged(int column) { emit headerDataChanged(Qt::Horizontal, column, column); }

private:
    QString shownText(int row, int column) const;

    model::ListGridModel& rows_;
};

}  // namespace orvenmod::platform::qt
