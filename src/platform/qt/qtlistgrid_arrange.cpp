// What the user does to the arrangement of a list, and how the view follows it.
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QShortcut>
#include <utility>

#include "platform/model/listoutput.h"
#include "platform/qt/qtlistgrid.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

/// Calls where a key is pressed in the line.
class LineKeys : public QObject {
public:
    LineKeys(QObject* parent, std::function<bool(int)> onKey) : QObject(parent), onKey_(std::move(onKey)) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        return event->type() == QEvent::KeyPress && onKey_(static_cast<QKeyEvent*>(event)->key());
    }

private:
    std::function<bool(int)> onKey_;
};

}  // namespace

// A change that fails leaves the rows as they were, but the view has forgotten what it showed, and its heading has
// turned the arrow.
template <class Work>
void QtListGrid::showingAfter(Work work) {
    try {
        work();
    } catch (...) {
        showArrangement();
        throw;
    }
    showArrangement();
}

template <class Change>
void QtListGrid::rearrange(Change change) {
    showingAfter([&] { items_.reset(change); });
}

void QtListGrid::listenToHeading() {
    QHeaderView* heading = view_->horizontalHeader();
    heading->setSectionsMovable(true);
    heading->setContextMenuPolicy(Qt::CustomContextMenu);
    QObject::connect(heading, &QHeaderView::sectionClicked, view_,
                     [this](int column) { core_.guard([this, column] { sortOn(column); }); });
    // The second of two fast clicks comes as a double one alone.
    QObject::connect(heading, &QHeaderView::sectionDoubleClicked, heading, &QHeaderView::sectionClicked);
    QObject::connect(heading, &QHeaderView::sectionMoved, view_, [this](int column, int, int place) {
        if (!view_->writing) model_.moveColumn(column, place);
    });
    QObject::connect(heading, &QHeaderView::customContextMenuRequested, view_, [this, heading](const QPoint& at) {
        const int column = heading->logicalIndexAt(at);
        if (column >= 0) askHeadingMenu(column, heading->mapToGlobal(at));
    });
    view_->onOwnKey = [this](QKeyEvent& key) { return ownKey(key); };
}

void QtListGrid::listenToLine() {
    QLineEdit& line = area_->line();
    line.setObjectName(view_->objectName() + QStringLiteral("Line"));
    QObject::connect(&line, &QLineEdit::textChanged, view_,
                     [this](const QString& words) { core_.guard([this, &words] { showNarrowing(words); }); });
    line.installEventFilter(new LineKeys(&line, [this](int key) {
        if (key == Qt::Key_Escape) {
            closeLine();
        } else if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_Return || key == Qt::Key_Enter ||
                   key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            view_->setFocus(Qt::OtherFocusReason);
        } else {
            return false;
        }
        return true;
    }));
    auto* find = new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), area_);
    QObject::connect(find, &QShortcut::activated, view_, [this] {
        if (area_->isVisible() && area_->isEnabled()) openLine();
    });
}

bool QtListGrid::ownKey(const QKeyEvent& key) {
    if (key.modifiers() == Qt::ControlModifier && key.key() == Qt::Key_C) {
        core_.guard([this] { copySelected(); });
    } else if (key.modifiers() == Qt::ControlModifier && key.key() == Qt::Key_H) {
        const QRect cell = view_->visualRect(view_->currentIndex());
        if (view_->currentIndex().isValid())
            askHeadingMenu(view_->currentIndex().column(), view_->viewport()->mapToGlobal(QPoint(cell.left(), 0)));
    } else if (key.key() == Qt::Key_Escape && area_->line().isVisible()) {
        closeLine();
    } else {
        return false;
    }
    return true;
}

// What is read before a change: while the bar is painted, so is the list, as it was.
template <class Work>
bool QtListGrid::doneUnderBar(const char* text, Work work) const {
    const auto progress = core_.createProgress(text, fromQt(view_->window()->windowTitle()), model_.allRows());
    return model::doneUnder(*progress, work);
}

bool QtListGrid::readyNarrowing() {
    return doneUnderBar(model::kReadyingNarrowing,
                        [this](const model::RowsDone& done) { model_.readyNarrowing(done); });
}

bool QtListGrid::readySort(int column) {
    return doneUnderBar(model::kSorting,
                        [this, column](const model::RowsDone& done) { model_.readySort(column, done); });
}

void QtListGrid::sortOn(int column) {
    model_.setCurrentColumn(column);
    showingAfter([&] {
        if (readySort(column)) items_.reset([this, column] { model_.sortOn(column); });
    });
}

void QtListGrid::openLine() {
    bool cancelled = false;
    core_.guard([&] { cancelled = !readyNarrowing(); });
    if (cancelled) return closeLine();
    area_->line().show();
    area_->line().setFocus(Qt::ShortcutFocusReason);
    area_->line().selectAll();
}

// Of a million rows the table has half a gigabyte: it goes on as it is, which is what others ask for.
void QtListGrid::copySelected() const {
    model::CopiedRows copied;
    doneUnderBar(model::kCopying, [&](const model::RowsDone& done) { copied = copySelectedRows(model_, done); });
    if (copied.html.empty()) return;
    auto* data = new QMimeData;
    data->setText(toQt(std::exchange(copied.text, {})));
    data->setData(QStringLiteral("text/html"), QByteArray::fromStdString(copied.html));
    QGuiApplication::clipboard()->setMimeData(data);
}

void QtListGrid::sort(int column, SortOrder order) {
    showingAfter([&] {
        if (order == SortOrder::told || readySort(column)) items_.reset([&] { model_.sort(column, order); });
    });
}

void QtListGrid::narrow(const std::string& words) {
    // A line whose text stays tells of nothing.
    if (area_ == nullptr || area_->line().text() == toQt(words)) return showNarrowing(toQt(words));
    if (!words.empty()) area_->line().show();
    area_->line().setText(toQt(words));
}

void QtListGrid::showNarrowing(const QString& words) {
    if (!words.isEmpty() && !readyNarrowing()) {
        if (area_ != nullptr) closeLine();
        return;
    }
    rearrange([this, &words] { model_.narrow(fromQt(words)); });
}

void QtListGrid::closeLine() {
    core_.guard([this] { area_->line().clear(); });
    area_->line().hide();
    view_->setFocus(Qt::OtherFocusReason);
}

void QtListGrid::arrange() {
    if (model_.sorts() && !readySort(model_.sortedColumn())) sort(model_.sortedColumn(), SortOrder::told);
    if (!model_.narrowing().empty() && !readyNarrowing()) area_ != nullptr ? closeLine() : narrow("");
    rearrange([this] { model_.arrange(); });
}

void QtListGrid::moveColumn(int column, int place) {
    model_.moveColumn(column, place);
    dressColumns();
}

// A reset empties the view's selection and forgets where it stood.
void QtListGrid::showArrangement() {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    QHeaderView* heading = view_->horizontalHeader();
    const int column = model_.sortedColumn();
    heading->setSortIndicatorShown(column >= 0);
    if (column >= 0)
        heading->setSortIndicator(
            column, model_.sortOrder() == SortOrder::ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    dressColumns();
    showSelection();
    if (view_->currentIndex().isValid()) view_->scrollTo(view_->currentIndex());
    repaint();
}

void QtListGrid::askHeadingMenu(int column, const QPoint& global) {
    const QScopedValueRollback<std::optional<QPoint>> place(core_.popUpPlace, global);
    core_.guard([this, column] {
        model_.setCurrentColumn(column);
        headingMenu.raise(column);
    });
}

}  // namespace orvenmod::platform::qt
