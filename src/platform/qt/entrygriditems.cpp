#include "platform/qt/entrygriditems.h"

#include <stdexcept>

#include "platform/qt/alignment.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

Qt::Alignment alignmentOf(const model::EntryGridModel& cells, CellPlace cell) {
    const CellType type = cells.cellType(cell.column, cell.row);
    if (type == CellType::number || type == CellType::currency) return Qt::AlignRight | Qt::AlignVCenter;
    return toQt(cells.columnAlignment(cell.column));
}

}  // namespace

int EntryGridItems::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : cells_.rowCount(); }

int EntryGridItems::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : cells_.columnCount(); }

QVariant EntryGridItems::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const CellPlace cell = cellOf(index);
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return toQt(cells_.displayText(cell.column, cell.row));
        case Qt::EditRole:
            return toQt(cells_.text(cell.column, cell.row));
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole:
            if (cells_.required(cell.column, cell.row)) return QStringLiteral("必填");
            return {};
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(alignmentOf(cells_, cell));
        case Qt::BackgroundRole:
            if (lockedColour && cells_.locked(cell.column, cell.row)) return *lockedColour;
            return {};
        case Qt::ForegroundRole:
            // The colour is the logic's and knows nothing of dark palettes: the text follows it.
            if (lockedColour && cells_.locked(cell.column, cell.row))
                return lockedColour->lightness() > 127 ? QColor(Qt::black) : QColor(Qt::white);
            return {};
        default:
            return {};
    }
}

QVariant EntryGridItems::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    if (section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole) return toQt(cells_.heading(section + 1));
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    return {};
}

Qt::ItemFlags EntryGridItems::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    const CellPlace cell = cellOf(index);
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const bool combo = cells_.cellType(cell.column, cell.row) == CellType::combo;
    if (cells_.takesText(cell.column, cell.row) || (combo && !cells_.locked(cell.column, cell.row)))
        flags |= Qt::ItemIsEditable;
    return flags;
}

CellPlace EntryGridItems::cellOf(const QModelIndex& index) {
    return index.isValid() ? CellPlace{index.column() + 1, index.row() + 1} : CellPlace{};
}

QModelIndex EntryGridItems::indexOf(CellPlace cell) const { return index(cell.row - 1, cell.column - 1); }

void EntryGridItems::setRowCount(int rows) {
    const int before = cells_.rowCount();
    if (rows < 0) throw std::out_of_range("no such number of rows: " + std::to_string(rows));
    if (rows > before) {
        beginInsertRows({}, before, rows - 1);
        cells_.setRowCount(rows);
        endInsertRows();
    } else if (rows < before) {
        beginRemoveRows({}, rows, before - 1);
        cells_.setRowCount(rows);
        endRemoveRows();
    }
}

void EntryGridItems::deleteRow(int row) {
    if (row < 1 || row > cells_.rowCount()) throw std::out_of_range("no such row: " + std::to_string(row));
    beginRemoveRows({}, row - 1, row - 1);
    cells_.deleteRow(row);
    endRemoveRows();
}

void EntryGridItems::cellChanged(CellPlace cell) {
    if (cell.row == 0) {
        emit headerDataChanged(Qt::Horizontal, cell.column - 1, cell.column - 1);
        if (rowCount() > 0) emit dataChanged(index(0, cell.column - 1), index(rowCount() - 1, cell.column - 1));
        return;
    }
    const QModelIndex changed = indexOf(cell);
    emit dataChanged(changed, changed);
}

}  // namespace orvenmod::platform::qt
