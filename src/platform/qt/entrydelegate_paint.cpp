// How an entry grid's cells look.
#include <QApplication>
#include <QPainter>

#include "platform/qt/entrydelegate.h"
#include "platform/qt/entrygridview.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kArrowWidth = 18;
constexpr int kMargin = 3;
constexpr int kStarWidth = 14;

// The cell without its text: background, selection, focus.
void paintGround(QPainter& painter, QStyleOptionViewItem cell) {
    cell.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &cell, &painter, cell.widget);
}

// The cell with its text, which leaves room at the right end.
void paintShortened(QPainter& painter, const QStyleOptionViewItem& cell, int room) {
    paintGround(painter, cell);
    QStyleOptionViewItem text = cell;
    text.rect.setRight(cell.rect.right() - room);
    text.backgroundBrush = Qt::NoBrush;
    text.state.setFlag(QStyle::State_HasFocus, false);
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &text, &painter, cell.widget);
}

// Calm on the light ground of a locked cell and legible on a dark one.
QColor starColour(const QStyleOptionViewItem& cell) {
    if (cell.state.testFlag(QStyle::State_Selected)) return cell.palette.color(QPalette::HighlightedText);
    const bool ownGround = cell.backgroundBrush.style() != Qt::NoBrush;
    const QColor ground = ownGround ? cell.backgroundBrush.color() : cell.palette.color(QPalette::Base);
    return ground.lightness() > 127 ? QColor(176, 48, 48) : QColor(240, 140, 140);
}

}  // namespace

void EntryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const CellPlace place = EntryGridItems::cellOf(index);
    switch (items_.cells().cellType(place.column, place.row)) {
        case CellType::button:
            paintButton(*painter, cell, index);
            return;
        case CellType::checkBox:
            paintCheckBox(*painter, cell, index);
            return;
        case CellType::combo:
            if (items_.cells().locked(place.column, place.row)) break;
            paintCombo(*painter, cell);
            return;
        default:
            break;
    }
    if (items_.cells().required(place.column, place.row))
        paintStarred(*painter, cell);
    else
        QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
}

void EntryDelegate::paintStarred(QPainter& painter, const QStyleOptionViewItem& cell) const {
    paintShortened(painter, cell, kStarWidth);
    painter.save();
    painter.setFont(cell.font);
    painter.setPen(starColour(cell));
    painter.drawText(cell.rect.adjusted(cell.rect.width() - kStarWidth, 0, 0, 0), Qt::AlignCenter, QStringLiteral("*"));
    painter.restore();
}

void EntryDelegate::paintButton(QPainter& painter, const QStyleOptionViewItem& cell, const QModelIndex& index) const {
    paintGround(painter, cell);
    QStyleOptionButton button;
    button.initFrom(&view_);
    button.rect = cell.rect.adjusted(1, 1, -1, -1);
    // A button without a text of its own is called as its column.
    button.text = cell.text.isEmpty()
                      ? index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString()
                      : cell.text;
    button.state.setFlag(QStyle::State_Sunken, view_.isPressed(index));
    button.state.setFlag(QStyle::State_Raised, !view_.isPressed(index));
    button.state.setFlag(QStyle::State_HasFocus, view_.hasFocus() && view_.currentIndex() == index);
    view_.style()->drawControl(QStyle::CE_PushButton, &button, &painter, &view_);
}

void EntryDelegate::paintCheckBox(QPainter& painter, const QStyleOptionViewItem& cell, const QModelIndex& index) const {
    paintGround(painter, cell);
    const CellPlace place = EntryGridItems::cellOf(index);
    const auto& items = items_.cells().items(place.column, place.row);
    QStyleOptionButton box;
    box.initFrom(&view_);
    box.palette = cell.palette;
    box.text = items.empty() ? QString() : toQt(items.front());
    box.state.setFlag(QStyle::State_On, items_.cells().text(place.column, place.row) == "1");
    box.state.setFlag(QStyle::State_Off, !box.state.testFlag(QStyle::State_On));
    box.state.setFlag(QStyle::State_HasFocus, false);
    const bool selected = cell.state.testFlag(QStyle::State_Selected);
    box.palette.setColor(QPalette::WindowText,
                         cell.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    box.rect = cell.rect.adjusted(kMargin, 0, 0, 0);
    if (items.empty()) {
        const int side = view_.style()->pixelMetric(QStyle::PM_IndicatorWidth, &box, &view_);
        box.rect.setLeft(cell.rect.center().x() - side / 2);
    }
    view_.style()->drawControl(QStyle::CE_CheckBox, &box, &painter, &view_);
}

void EntryDelegate::paintCombo(QPainter& painter, const QStyleOptionViewItem& cell) const {
    paintShortened(painter, cell, kArrowWidth);
    QStyleOption arrow;
    arrow.initFrom(&view_);
    arrow.palette = cell.palette;
    arrow.rect = QRect(cell.rect.right() - kArrowWidth + 2, cell.rect.center().y() - 5, 11, 11);
    if (cell.state.testFlag(QStyle::State_Selected)) {
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
            arrow.palette.setColor(role, cell.palette.color(QPalette::HighlightedText));
    }
    view_.style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, &painter, &view_);
}

}  // namespace orvenmod::platform::qt
