#include "platform/qt/listgriditems.h"

#include <QColor>
#include <QGuiApplication>
#include <QPalette>

#include "platform/qt/alignment.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kMiddle = 128;
constexpr int kLegibleLightness = 175;

// The metadata may hold any number; one that means nothing is read as left.
Qt::Alignment alignmentOf(int units) { return toQt(static_cast<Alignment>(units)); }

// The colours are chosen for a light ground; on a dark one they keep their hue.
QColor legible(const Colour& colour) {
    const QColor chosen(colour.red, colour.green, colour.blue);
    const bool dark = QGuiApplication::palette().color(QPalette::Base).lightness() < kMiddle;
    if (!dark || chosen.lightness() >= kMiddle) return chosen;
    return QColor::fromHsl(chosen.hslHue(), chosen.hslSaturation(), kLegibleLightness);
}

}  // namespace

int ListGridItems::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_.rowCount() - 1; }

int ListGridItems::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_.columnCount(); }

QVariant ListGridItems::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount()) return {};
    const int row = index.row() + 1;
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return shownText(row, index.column());
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(alignmentOf(rows_.column(index.column()).alignment));
        case Qt::ForegroundRole:
            if (const Colour* colour = rows_.rowColour(row)) return legible(*colour);
            return {};
        default:
            return {};
    }
}

QString ListGridItems::shownText(int row, int column) const {
    const QString text = toQt(rows_.shownText(row, column));
    if (rows_.failed() && onFailure) onFailure();
    return text;
}

QVariant ListGridItems::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    const model::ListGridModel::Column& column = rows_.column(section);
    if (role == Qt::DisplayRole) return toQt(column.title);
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(alignmentOf(column.headerAlignment));
    return {};
}

void ListGridItems::appendRow(std::string_view cells) {
    beginInsertRows({}, rowCount(), rowCount());
    rows_.addRow(cells);
    endInsertRows();
}

void ListGridItems::removeRow(int row) {
    beginRemoveRows({}, row - 1, row - 1);
    rows_.removeRow(row);
    endRemoveRows();
}

}  // namespace orvenmod::platform::qt
