#include "platform/qt/qtlistgrid.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QScopedValueRollback>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

QWidget* newBody(const ControlDesign& design, QWidget* parent) {
    if (design.arranges) return new ListGridArea(parent);
    return new ListGridView(parent);
}

}  // namespace

QtListGrid::QtListGrid(Core& core, const ControlDesign& design, QWidget* parent)
    : QtControl(design, newBody(design, parent)),
      core_(core),
      model_(design.columns, design.fixedColumns),
      items_(model_),
      area_(qobject_cast<ListGridArea*>(body_.widget())),
      view_(area_ != nullptr ? &area_->view() : static_cast<ListGridView*>(body_.widget())) {
    view_->setModel(&items_);
    dressColumns();
    listen();
    if (area_ == nullptr) return;
    // Robots look for the list itself under the control's name.
    view_->setObjectName(area_->objectName());
    area_->setObjectName(area_->objectName() + QStringLiteral("Area"));
    body_.setFocusPart(view_);
    listenToHeading();
    listenToLine();
    repaint();
}

void QtListGrid::listen() {
    items_.onFailure = [this] { tellFailure(); };
    view_->onLook = [this] {
        if (!telling_ && !view_->writing) model_.lookAgain();
    };
    view_->onDoubleClick = [this] { core_.guard([this] { doubleClick.raise(); }); };
    view_->onKey = [this](int code) { core_.guard([this, code] { keyDown.raise(code); }); };
    view_->onTyped = [this](const QString& text) {
        if (typed) core_.guard([this, &text] { typed.raise(fromQt(text)); });
        return static_cast<bool>(typed);
    };
    view_->onMouse = [this](MouseButton button, const QPoint& global) { mouse(button, global); };
    const QItemSelectionModel* selection = view_->selectionModel();
    QObject::connect(selection, &QItemSelectionModel::selectionChanged, view_,
                     [this](const auto& selected, const auto& deselected) {
                         mirror(selected, deselected);
                         repaint();
                     });
    QObject::connect(selection, &QItemSelectionModel::currentRowChanged, view_, [this](const QModelIndex& current) {
        if (!view_->writing) model_.setCurrentOnly(current.isValid() ? current.row() + 1 : 0);
    });
    QObject::connect(selection, &QItemSelectionModel::currentChanged, view_, [this](const QModelIndex& current) {
        if (view_->writing || !current.isValid()) return;
        model_.setCurrentColumn(current.column());
        repaint();
    });
    QObject::connect(view_->horizontalHeader(), &QHeaderView::sectionResized, view_,
                     [this](int column, int, int pixels) {
                         if (!view_->writing && pixels > 0)
                             model_.column(column).width = static_cast<int>(toTwips(pixels));
                     });
}

void QtListGrid::bind(std::shared_ptr<const RowSource> source) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    items_.reset([this, &source] { model_.bind(std::move(source)); });
    dressColumns();
    showCurrent(Selection::currentOnly);
    view_->scrollToTop();
    repaint();
}

void QtListGrid::setRowCount(int rows) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    items_.reset([this, rows] { model_.setRowCount(rows); });
    showSelection();
}

void QtListGrid::addRow(const std::string& cells) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    const int columns = model_.columnCount();
    items_.appendRow(cells);
    if (model_.columnCount() == columns) return;
    items_.reset([] {});
    dressColumns();
    showSelection();
}

void QtListGrid::removeRow(int row) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    model_.value(row, 0);  // a row that isn't fails here, before the view hears of it
    items_.removeRow(row);
    showCurrent(Selection::kept);
    repaint();
}

void QtListGrid::setText(int row, int column, std::string_view text) {
    model_.setText(row, column, text);
    if (row == 0)
        items_.headingChanged(column);
    else
        repaint();
}

void QtListGrid::setColumnHidden(int column, bool hidden) {
    model_.setHidden(column, hidden);
    view_->setColumnHidden(column, hidden);
}

void QtListGrid::setColumnAlignment(int column, int alignment) {
    model_.column(column).alignment = alignment;
    repaint();
}

void QtListGrid::setHeaderAlignment(int column, int alignment) {
    model_.column(column).headerAlignment = alignment;
    items_.headingChanged(column);
}

void QtListGrid::setColumnFormat(int column, const std::string& format) {
    model_.setFormat(column, format);
    repaint();
}

void QtListGrid::setColumnBlanked(int column, CellTest blanked) {
    model_.setBlanked(column, blanked);
    repaint();
}

void QtListGrid::setColumnWidth(int column, int twips) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    model_.column(column).width = twips;
    view_->setColumnWidth(column, toPixels(static_cast<float>(twips)));
}

void QtListGrid::setCurrentRow(int row) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    model_.setCurrentRow(row);
    showCurrent(Selection::currentOnly);
}

void QtListGrid::setSelected(int row, bool selected) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    model_.setSelected(row, selected);
    view_->selectionModel()->select(
        items_.index(row - 1, 0),
        (selected ? QItemSelectionModel::Select : QItemSelectionModel::Deselect) | QItemSelectionModel::Rows);
}

void QtListGrid::setRowColour(int row, const Colour* colour) {
    model_.setRowColour(row, colour);
    repaint();
}

void QtListGrid::dressColumns() {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    for (int column = 0; column < model_.columnCount(); ++column) {
        const model::ListGridModel::Column& look = model_.column(column);
        view_->setColumnWidth(column, toPixels(static_cast<float>(look.width)));
        view_->setColumnHidden(column, look.hidden);
    }
    for (int place = 0; place < model_.columnCount(); ++place) {
        const int shown = view_->horizontalHeader()->visualIndex(model_.columnAt(place));
        if (shown != place) view_->horizontalHeader()->moveSection(shown, place);
    }
}

// Brings the view to the model's current row.
void QtListGrid::showCurrent(Selection wanted) {
    QItemSelectionModel* selection = view_->selectionModel();
    const int row = model_.currentRow();
    if (row == 0) {
        if (wanted == Selection::currentOnly) selection->clear();
        selection->clearCurrentIndex();
        return;
    }
    int column = view_->currentIndex().isValid() ? view_->currentIndex().column() : model_.currentColumn();
    if (column < 0 || column >= model_.columnCount()) column = 0;
    while (column + 1 < model_.columnCount() && model_.column(column).hidden)
        ++column;
    const QItemSelectionModel::SelectionFlags whole = QItemSelectionModel::Rows;
    if (wanted == Selection::currentOnly)
        selection->setCurrentIndex(items_.index(row - 1, column), QItemSelectionModel::ClearAndSelect | whole);
    else if (model_.isSelected(row) && !selection->isSelected(items_.index(row - 1, column)))
        selection->setCurrentIndex(items_.index(row - 1, column), QItemSelectionModel::Select | whole);
    else
        selection->setCurrentIndex(items_.index(row - 1, column), QItemSelectionModel::NoUpdate);
}

// After a reset, which empties the view's selection.
void QtListGrid::showSelection() {
    QItemSelection selected;
    std::size_t left = model_.selectedCount();
    for (int row = 1; left > 0 && row < model_.rowCount(); ++row) {
        if (!model_.isSelected(row)) continue;
        const int first = row;
        while (row < model_.rowCount() && model_.isSelected(row)) {
            ++row;
            --left;
        }
        selected.select(items_.index(first - 1, 0), items_.index(row - 2, model_.columnCount() - 1));
    }
    view_->selectionModel()->select(selected, QItemSelectionModel::Select);
    showCurrent(Selection::kept);
}

void QtListGrid::mirror(const QItemSelection& selected, const QItemSelection& deselected) {
    if (view_->writing) return;
    const auto write = [this](const QItemSelection& ranges, bool state) {
        for (const QItemSelectionRange& range : ranges) {
            for (int row = range.top(); row <= range.bottom(); ++row)
                model_.setSelected(row + 1, state);
        }
    };
    write(deselected, false);
    write(selected, true);
}

// One repaint for however many cells are written before the next turn of the event loop.
void QtListGrid::repaint() {
    if (repaintWaits_) return;
    repaintWaits_ = true;
    QTimer::singleShot(0, view_, [this] {
        repaintWaits_ = false;
        view_->viewport()->update();
        if (area_ != nullptr) area_->tell(toQt(model_.status()));
        tellFailure();
    });
}

// In the event loop's next turn: a box within the painting that met the failure would be painted over.
void QtListGrid::tellFailure() {
    const std::optional<std::string> failure = model_.takeFailure();
    if (!failure || telling_) return;
    telling_ = true;
    QTimer::singleShot(0, view_, [this, text = *failure] {
        core_.showEscaped(text);
        telling_ = false;
    });
}

void QtListGrid::mouse(MouseButton button, const QPoint& global) {
    const QScopedValueRollback<std::optional<QPoint>> place(core_.popUpPlace, global);
    core_.guard([this, button] { mouseDown.raise(button); });
}

}  // namespace orvenmod::platform::qt
