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

TEST_F(QtToolkitTest, aClickBesideTheTextOfANodeMeansTheNodeThatItMarks) {
    std::vector<std::string> keys;
    use(
        sampleWindow(),
        [&](Window& window) {
            auto& tree = window.get<Tree>("tv1");
            for (const auto& [parent, key] : {std::pair{"", "D0"}, {"D0", "D1"}, {"D1", "D2"}, {"D1", "D3"}})
                tree.add(parent, key, key, "");
            tree.ensureVisible("D3");
            tree.nodeClick = [&](const std::string& key) { keys.push_back(key); };
        },
        [](User& user) {
            auto* tree = found<QTreeWidget>("tv1");
            QTreeWidgetItem* parent = tree->topLevelItem(0)->child(0);
            const auto beside = [tree](QTreeWidgetItem* node) {
                return QPoint(2, tree->visualItemRect(node).center().y());
            };
            QTest::mouseClick(tree->viewport(), Qt::RightButton, Qt::NoModifier, beside(parent->child(0)));
            EXPECT_EQ(tree->currentItem(), parent->child(0));
            EXPECT_EQ(user.control<Tree>("tv1").selected(), "D2");
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, beside(parent->child(1)));
            EXPECT_EQ(tree->currentItem(), parent->child(1));
            EXPECT_EQ(user.control<Tree>("tv1").selected(), "D3");
            QTest::mouseClick(tree->viewport(), Qt::MiddleButton, Qt::NoModifier, beside(parent->child(0)));
            EXPECT_EQ(tree->currentItem(), parent->child(1));
        });
    EXPECT_EQ(keys, (std::vector<std::string>{"D2", "D3"}));
}

TEST_F(QtToolkitTest, openingAndClosingANodeByItsBranchClicksNoNode) {
    int clicks = 0;
    use(
        sampleWindow(),
        [&](Window& window) {
            auto& tree = window.get<Tree>("tv1");
            for (const auto& [parent, key] : {std::pair{"", "D0"}, {"D0", "D1"}, {"D1", "D2"}})
                tree.add(parent, key, key, "");
            tree.ensureVisible("D2");
            tree.select("D2");
            tree.nodeClick = [&](const std::string&) { ++clicks; };
        },
        [&](User& user) {
            auto* tree = found<QTreeWidget>("tv1");
            const QRect place = tree->visualItemRect(tree->topLevelItem(0)->child(0));
            const QPoint branch(place.left() - tree->indentation() / 2, place.center().y());
            for (const bool open : {false, true}) {
                QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, branch);
                EXPECT_EQ(user.control<Tree>("tv1").expanded("D1"), open);
            }
            EXPECT_EQ(clicks, 0);
            QTest::mouseClick(tree->viewport(), Qt::RightButton, Qt::NoModifier, branch);
            EXPECT_EQ(user.control<Tree>("tv1").selected(), "D1");
            EXPECT_TRUE(user.control<Tree>("tv1").expanded("D1")) << "a menu is asked for, nothing else";
        });
    EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace orvenmod::test
