// A tree whose nodes are all made visible.
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include "platform/qt/qtwindows.h"
#include "support/qt_user.h"

namespace orvenmod::test {
namespace {

using namespace platform;

constexpr int kNodes = 2000;

/// Counts how often the tree measures a node, as it does whenever it lays its nodes out.
class CountingDelegate : public QStyledItemDelegate {
public:
    explicit CountingDelegate(int& measured) : measured_(measured) {}
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        ++measured_;
        return QStyledItemDelegate::sizeHint(option, index);
    }

private:
    int& measured_;
};

void fillVisibly(Window& window) {
    auto& tree = window.get<Tree>("tv1");
    tree.add("", "D0", "全部", "");
    for (int id = 1; id <= kNodes; ++id) {
        const std::string key = "D" + std::to_string(id);
        tree.add("D0", key, "类" + key, "");
        tree.ensureVisible(key);
    }
}

TEST_F(QtToolkitTest, nodesMadeVisibleOneAfterAnotherAreLaidOutOnce) {
    int measured = 0;
    CountingDelegate delegate(measured);
    use(
        sampleWindow(),
        [&](Window& window) {
            found<QTreeWidget>("tv1")->setItemDelegate(&delegate);
            fillVisibly(window);
        },
        [&](User&) {
            QApplication::activeModalWidget()->repaint();
            EXPECT_GT(measured, 0);
            EXPECT_LT(measured, 3 * kNodes);
        });
}

TEST_F(QtToolkitTest, theNodeMadeVisibleLastIsInSight) {
    use(sampleWindow(), fillVisibly, [](User& user) {
        auto* tree = found<QTreeWidget>("tv1");
        const auto inSight = [tree](QTreeWidgetItem* node) {
            return tree->viewport()->rect().contains(tree->visualItemRect(node).center());
        };
        QTreeWidgetItem* root = tree->topLevelItem(0);
        EXPECT_TRUE(inSight(root->child(kNodes - 1)));
        user.control<Tree>("tv1").ensureVisible("D0");
        settle();
        EXPECT_TRUE(inSight(root));
        user.control<Tree>("tv1").ensureVisible("D2000");
        user.control<Tree>("tv1").remove("D2000");
        settle();
        EXPECT_EQ(user.control<Tree>("tv1").count(), kNodes) << "what goes before it shows is let go";
    });
}

}  // namespace
}  // namespace orvenmod::test
