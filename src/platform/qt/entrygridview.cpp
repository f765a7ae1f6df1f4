// A cell is left before anything else happens, and it may refuse. Qt's views do it the other way round: a field that
// loses the keyboard is committed and closed, and the click that took the keyboard goes on. So the view never commits
// by itself. What is typed goes to the shared model letter by letter, and every way out asks it first:
//
//   a key that leaves, a command, the window's end   takeOver(): closed, or it stays open with the hint beside it
//   a press of the mouse elsewhere in the window     LeavingWatch takes over before the press reaches its widget; where
//                                                    the cell refuses, the whole click is swallowed
//   Escape, a view that is taken away                closeEditor() alone, which gives up what was typed
#include "platform/qt/entrygridview.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolBar>
#include <algorithm>
#include <utility>

#include "platform/qt/celleditors.h"
#include "platform/qt/listgridview.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kRowHeaderWidth = 30;

/// Whether a press of the mouse on that widget leaves a cell: bars, whose commands take over by themselves, and what
/// only shows another part of the list don't.
bool leaves(const QWidget* pressed) {
    for (const QWidget* each = pressed; each != nullptr && !each->isWindow(); each = each->parentWidget()) {
        if (qobject_cast<const QMenuBar*>(each) != nullptr || qobject_cast<const QToolBar*>(each) != nullptr ||
            qobject_cast<const QScrollBar*>(each) != nullptr || qobject_cast<const QHeaderView*>(each) != nullptr)
            return false;
    }
    return true;
}

}  // namespace

/// While a field is open: a press of the mouse elsewhere in the window leaves it first, and where that is refused the
/// whole click does nothing.
class EntryGridView::LeavingWatch : public QObject {
public:
    explicit LeavingWatch(EntryGridView& view) : QObject(&view), view_(view) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget == nullptr || widget->window() != view_.window()) return false;
        if (event->type() == QEvent::MouseButtonRelease && std::exchange(refused_, false)) return true;
        if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick) return false;
        QWidget* field = view_.openField();
        if (field == nullptr || widget == field || field->isAncestorOf(widget) || !leaves(widget)) return false;
        refused_ = !view_.takeOver();
        if (refused_) field->setFocus();
        return refused_;
    }

private:
    EntryGridView& view_;
    bool refused_ = false;
};

EntryGridView::EntryGridView(QWidget* parent)
    : QTableView(parent), watch_(new LeavingWatch(*this)), hint_(new CellHint(parent->window())) {
    dressGrid(*this);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectItems);
    setEditTriggers(AnyKeyPressed | EditKeyPressed | DoubleClicked);
    setTabKeyNavigation(false);
    verticalHeader()->show();
    verticalHeader()->setMinimumWidth(kRowHeaderWidth);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    verticalHeader()->setSectionsClickable(false);
    horizontalHeader()->setSectionsClickable(false);
}

// A field that is open loses the keyboard when it goes, and by then its view is no more than a widget.
EntryGridView::~EntryGridView() {
    if (items_ == nullptr) return;
    if (QLineEdit* field = openField()) field->removeEventFilter(itemDelegate());
}

void EntryGridView::setUp(EntryGridItems& items, EntryActions& actions) {
    items_ = &items;
    actions_ = &actions;
    setItemDelegate(new EntryDelegate(*this, items, actions));
    setModel(&items);
}

void EntryGridView::advance() {
    if (items_->cells().activeRow() == 0) return;
    const auto [column, row] = items_->cells().nextValue();
    if (row > 0)
        setCurrentIndex(items_->indexOf({column, row}));
    else
        actions_->leftByEnter();
}

QLineEdit* EntryGridView::openField() const {
    return items_->cells().cellOpen() ? qobject_cast<QLineEdit*>(indexWidget(currentIndex())) : nullptr;
}

bool EntryGridView::takeOver() {
    QLineEdit* field = openField();
    if (field == nullptr) return true;
    const CellPlace cell = EntryGridItems::cellOf(currentIndex());
    const auto left = actions_->left();
    if (!left.refusal.empty()) {
        hint_->tell(toQt(left.refusal), *field);
        return false;
    }
    closeEditor(field, QAbstractItemDelegate::NoHint);
    if (left.picked) actions_->changed(cell, *left.picked);
    return true;
}

void EntryGridView::giveUp() {
    if (QLineEdit* field = openField()) closeEditor(field, QAbstractItemDelegate::RevertModelCache);
}

// Whoever closes it without a take-over gives up what was typed.
void EntryGridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor, hint);
    qApp->removeEventFilter(watch_);
    hideHint();
    actions_->undone();
}

void EntryGridView::hideHint() {
    if (hint_ != nullptr) hint_->hide();
}

void EntryGridView::placeHint() {
    const QLineEdit* field = openField();
    if (field != nullptr && hint_->isVisible()) hint_->place(*field);
}

// Qt's own would warn of a cell that doesn't open.
void EntryGridView::open(const QModelIndex& index) { edit(index, AllEditTriggers, nullptr); }

void EntryGridView::dropDown(const QModelIndex& index) {
    open(index);
    auto* day = qobject_cast<TextCellEditor*>(indexWidget(index));
    if (day != nullptr && day->hasCalendar()) day->openCalendar();
}

bool EntryGridView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // Without a field, as where a combo's entries can't be read, Qt calls it opened too.
    if (!QTableView::edit(index, trigger, event) || openField() == nullptr) return false;
    qApp->installEventFilter(watch_);
    auto* choice = qobject_cast<ItemCellEditor*>(indexWidget(index));
    if (choice != nullptr && trigger != AnyKeyPressed) choice->openList();
    return true;
}

void EntryGridView::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    if (event->button() != Qt::LeftButton) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    pressed_ = isPressable(index) || isCombo(index) ? index : QModelIndex();
    if (pressed_.isValid()) update(index);
}

void EntryGridView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = pressed_;
    pressed_ = QModelIndex();
    if (event->button() != Qt::LeftButton || !index.isValid()) return;
    update(index);
    if (indexAt(event->position().toPoint()) != index) return;
    if (isPressable(index))
        actions_->pressed(EntryGridItems::cellOf(index));
    else
        open(index);
}

void EntryGridView::keyPressEvent(QKeyEvent* event) {
    // The open field has the keyboard; what it leaves over is for nobody.
    if (openField() != nullptr) return event->ignore();
    if (copyOrPaste(*event)) return;
    const QModelIndex index = currentIndex();
    const CellPlace cell = EntryGridItems::cellOf(index);
    const bool button = isPressable(index) && items_->cells().cellType(cell.column, cell.row) == CellType::button;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            // One that is still held down was for what had the keyboard before.
            if (!event->isAutoRepeat()) button ? actions_->pressed(cell) : advance();
            return;
        case Qt::Key_Space:
            if (!isPressable(index)) break;
            actions_->pressed(cell);
            return;
        case Qt::Key_F4:
            dropDown(index);
            return;
        case Qt::Key_Down:
            if (!(event->modifiers() & Qt::AltModifier)) break;
            dropDown(index);
            return;
        case Qt::Key_Delete:
            enterText(QString());
            return;
        default:
            break;
    }
    QTableView::keyPressEvent(event);
}

bool EntryGridView::copyOrPaste(const QKeyEvent& event) {
    const QModelIndex index = currentIndex();
    if (event.matches(QKeySequence::Copy)) {
        if (index.isValid()) QGuiApplication::clipboard()->setText(index.data(Qt::EditRole).toString());
        return true;
    }
    if (!event.matches(QKeySequence::Paste)) return false;
    enterText(QGuiApplication::clipboard()->text());
    return true;
}

void EntryGridView::enterText(const QString& text) {
    if (!currentIndex().isValid() || !QTableView::edit(currentIndex(), AllEditTriggers, nullptr)) return;
    QLineEdit* field = openField();
    if (field == nullptr) return;
    qApp->installEventFilter(watch_);
    field->setText(text);
    emit field->textEdited(text);
    takeOver();
}

// Composing goes on here until its first commit: the field would interrupt it by taking the keyboard. What comes
// without having been composed opens the cell as a key does.
void EntryGridView::inputMethodEvent(QInputMethodEvent* event) {
    const bool composes = !event->preeditString().isEmpty();
    const bool commits = !event->commitString().isEmpty();
    if (composing_ || (composes && openField() == nullptr)) {
        composing_ = composes && !commits;
        return QTableView::inputMethodEvent(event);
    }
    if (openField() == nullptr && !(commits && edit(currentIndex(), AnyKeyPressed, nullptr))) return event->ignore();
    QCoreApplication::sendEvent(openField(), event);
}

// The view would make its first cell active by itself.
void EntryGridView::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback<bool> guard(writing, true);
    const bool had = currentIndex().isValid();
    QTableView::focusInEvent(event);
    if (!had) selectionModel()->clearCurrentIndex();
}

void EntryGridView::updateGeometries() {
    QTableView::updateGeometries();
    if (alignTopRow(*this)) updateEditorGeometries();
}

void EntryGridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dy != 0 && alignTopRow(*this)) updateEditorGeometries();
}

bool EntryGridView::isPressable(const QModelIndex& index) const {
    if (!index.isValid()) return false;
    const CellPlace cell = EntryGridItems::cellOf(index);
    const CellType type = items_->cells().cellType(cell.column, cell.row);
    if (type != CellType::button && type != CellType::checkBox) return false;
    return !items_->cells().locked(cell.column, cell.row);
}

bool EntryGridView::isCombo(const QModelIndex& index) const {
    if (!index.isValid()) return false;
    const CellPlace cell = EntryGridItems::cellOf(index);
    return items_->cells().cellType(cell.column, cell.row) == CellType::combo &&
           !items_->cells().locked(cell.column, cell.row);
}

bool takeOverIn(const QWidget& window) {
    const QList<EntryGridView*> grids = window.findChildren<EntryGridView*>();
    return std::all_of(grids.begin(), grids.end(), [](EntryGridView* grid) { return grid->takeOver(); });
}

}  // namespace orvenmod::platform::qt
