// The logic hears of a node once a user's press, key or menu has come to it, never of what it did to the tree itself.
// Qt tells of every change of the current item in one way, whoever caused it; the flags that stand while code writes,
// the mouse presses and the keyboard arrives tell them apart.
#include "platform/qt/qttree.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QTimer>
#include <utility>

#include "platform/qt/icons.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

TreeWidget::TreeWidget(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize(QSize(16, 16));
    setIndentation(18);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setTabKeyNavigation(false);
}

void TreeWidget::mousePressEvent(QMouseEvent* event) {
    const bool right = event->button() == Qt::RightButton;
    if (!right && event->button() != Qt::LeftButton) return;
    const QPoint place = event->position().toPoint();
    QTreeWidgetItem* node = itemAt(place);
    const bool another = node != currentItem();
    {
        const QScopedValueRollback<bool> guard(pressing_, true);
        if (!right)
            QTreeWidget::mousePressEvent(event);
        else if (node != nullptr)
            setCurrentItem(node);
    }
    // Beside its text a press marks the node as well, but for the arrow that opens and closes it.
    const bool marked = another && node == currentItem();
    nodePressed_ = !right && node != nullptr && (marked || visualItemRect(node).contains(place));
    // What a menu on the tree does, it does to the node that is marked.
    if (right && node != nullptr && marked && onNode) onNode(node);
    if (onMouse) onMouse(right ? MouseButton::right : MouseButton::left, event->globalPosition().toPoint());
}

void TreeWidget::mouseReleaseEvent(QMouseEvent* event) {
    QTreeWidget::mouseReleaseEvent(event);
    if (!nodePressed_ || event->button() != Qt::LeftButton) return;
    nodePressed_ = false;
    if (currentItem() != nullptr && onNode) onNode(currentItem());
}

void TreeWidget::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard && onMouse) {
        const QRect place = currentItem() != nullptr ? visualItemRect(currentItem()) : QRect(0, 0, 1, 1);
        onMouse(MouseButton::right, viewport()->mapToGlobal(place.center()));
    }
    event->accept();
}

void TreeWidget::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeWidget::currentChanged(current, previous);
    if (!pressing_ && !focusing_ && onNode && current.isValid()) onNode(itemFromIndex(current));
}

// The one column is as wide as its longest node, and never narrower than the tree: the mark spans the whole row.
void TreeWidget::resizeEvent(QResizeEvent* event) {
    header()->setMinimumSectionSize(viewport()->width());
    QTreeWidget::resizeEvent(event);
}

// The view would make its first item current by itself.
void TreeWidget::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback<bool> guard(focusing_, true);
    const bool had = currentIndex().isValid();
    QTreeWidget::focusInEvent(event);
    if (!had) selectionModel()->clearCurrentIndex();
}

QtTree::QtTree(Core& core, const ControlDesign& design, QWidget* parent)
    : QtControl(design, new TreeWidget(parent)), core_(core), tree_(static_cast<TreeWidget*>(body_.widget())) {
    tree_->onNode = [this](QTreeWidgetItem* item) { moved(item); };
    tree_->onMouse = [this](MouseButton button, const QPoint& global) { pressed(button, global); };
    const auto keepOpen = [this](QTreeWidgetItem* item, bool open) {
        if (!writing_) model_.setExpanded(fromQt(item->data(0, Qt::UserRole).toString()), open);
    };
    QObject::connect(tree_, &QTreeWidget::itemExpanded, tree_, [keepOpen](auto* item) { keepOpen(item, true); });
    QObject::connect(tree_, &QTreeWidget::itemCollapsed, tree_, [keepOpen](auto* item) { keepOpen(item, false); });
}

void QtTree::clear() {
    const QScopedValueRollback<bool> writing(writing_, true);
    model_.clear();
    items_.clear();
    tree_->clear();
}

void QtTree::add(const std::string& parentKey, const std::string& key, const std::string& text,
                 const std::string& image) {
    const QScopedValueRollback<bool> writing(writing_, true);
    model_.add(parentKey, key, text, image);
    auto* added = new QTreeWidgetItem;
    added->setText(0, toQt(text));
    added->setData(0, Qt::UserRole, toQt(key));
    if (!image.empty()) {
        const QString name = toQt(image);
        auto known = icons_.constFind(name);
        if (known == icons_.constEnd()) known = icons_.insert(name, icon(image));
        added->setIcon(0, *known);
    }
    if (parentKey.empty())
        tree_->addTopLevelItem(added);
    else
        item(parentKey)->addChild(added);
    items_.push_back(added);
}

void QtTree::ensureVisible(const std::string& key) {
    const QScopedValueRollback<bool> writing(writing_, true);
    for (std::size_t up = model_.node(key).parent; up != model::TreeModel::kRoot; up = model_.node(up).parent) {
        if (!model_.node(up).expanded) items_[up]->setExpanded(true);
    }
    model_.ensureVisible(key);
    scrollSoon(key);
}

// The widget lays all its nodes out before it scrolls: once for however many nodes are made visible one after another.
void QtTree::scrollSoon(const std::string& key) {
    if (scrollTo_.empty()) {
        QTimer::singleShot(0, tree_, [this] {
            const std::string to = std::exchange(scrollTo_, {});
            if (model_.has(to)) tree_->scrollToItem(item(to));
        });
    }
    scrollTo_ = key;
}

void QtTree::remove(const std::string& key) {
    const QScopedValueRollback<bool> writing(writing_, true);
    QTreeWidgetItem* gone = item(key);
    model_.remove(key);
    delete gone;
    showSelected();
}

std::string QtTree::parent(const std::string& key) const {
    const std::size_t up = model_.node(key).parent;
    return up == model::TreeModel::kRoot ? std::string() : model_.node(up).key;
}

void QtTree::select(const std::string& key) {
    const QScopedValueRollback<bool> writing(writing_, true);
    model_.select(key);
    showSelected();
}

void QtTree::showSelected() {
    const std::string key = model_.selected();
    tree_->setCurrentItem(key.empty() ? nullptr : item(key));
    if (key.empty()) tree_->clearSelection();
}

void QtTree::moved(QTreeWidgetItem* node) {
    if (writing_) return;
    const std::string key = fromQt(node->data(0, Qt::UserRole).toString());
    model_.select(key);
    core_.guard([this, &key] { nodeClick.raise(key); });
}

void QtTree::pressed(MouseButton button, const QPoint& global) {
    const QScopedValueRollback<std::optional<QPoint>> place(core_.popUpPlace, global);
    core_.guard([this, button] { mouseDown.raise(button); });
}

}  // namespace orvenmod::platform::qt
