// The tree. The nodes are kept in the shared model, which knows their order and keys; the widget mirrors it, and each
// of its items carries its key as Qt::UserRole.
#pragma once

#include <QHash>
#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

#include "platform/model/treemodel.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"
#include "platform/tree.h"

namespace orvenmod::platform::qt {

/// Tells of clicks and of the menu key.
class TreeWidget : public QTreeWidget {
    Q_OBJECT
public:
    explicit TreeWidget(QWidget* parent);
    std::function<void(QTreeWidgetItem*)> onNode;                    ///< the user came to a node or clicked it
    std::function<void(MouseButton, const QPoint& global)> onMouse;  ///< pressed, the node told before

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool pressing_ = false;
    bool nodePressed_ = false;  ///< with the left button, on the node and not on its little arrow
    bool focusing_ = false;
};

class QtTree final : public QtControl<Tree> {
public:
    QtTree(Core& core, const ControlDesign& design, QWidget* parent);

    void clear() override;
    void add(const std::string& parentKey, const std::string& key, const std::string& text,
             const std::string& image) override;
    void ensureVisible(const std::string& key) override;
    void remove(const std::string& key) override;
    int count() const override { return model_.count(); }
    bool has(const std::string& key) const override { return model_.has(key); }
    std::string text(const std::string& key) const override { return model_.node(key).text; }
    std::string parent(const std::string& key) const override;
    bool expanded(const std::string& key) const override { return model_.node(key).expanded; }
    int indexOf(const std::string& key) const override { return model_.indexOf(key); }
    std::string keyAt(int index) const override { return model_.keyAt(index); }
    std::string selected() const override { return model_.selected(); }
    void select(const std::string& key) override;

private:
    QTreeWidgetItem* item(const std::string& key) const { return items_[model_.slot(key)]; }
    void showSelected();
    void scrollSoon(const std::string& key);
    void moved(QTreeWidgetItem* item);
    void pressed(MouseButton button, const QPoint& global);

    Core& core_;
    TreeWidget* tree_;
    model::TreeModel model_;
    std::vector<QTreeWidgetItem*> items_;  ///< by the model's slot
    QHash<QString, QIcon> icons_;
    bool writing_ = false;  ///< code is at work: the widget's signals are no user's
    std::string scrollTo_;  ///< the node to bring into view at the next turn of the event loop, "" for none
};

}  // namespace orvenmod::platform::qt
