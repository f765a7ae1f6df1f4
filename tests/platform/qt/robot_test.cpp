// What test robots and screen readers find.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QToolButton>
#include <QTreeWidget>

#include "platform/qt/qtwindows.h"
#include "platform/qt/text.h"

namespace orvenmod::test {
namespace {

using namespace platform;

TEST_F(QtToolkitTest, widgetsAndActionsBearTheNamesOfTheirControls) {
    use(sampleWindow(), loadNothing, [](User&) {
        EXPECT_EQ(QApplication::activeModalWidget()->objectName(), "frmSample");
        found<QLineEdit>("txt(0)");
        found<QTableView>("vsf1");
        found<QMenu>("MenuFile");
        EXPECT_EQ(found<QAction>("MenuFileSave")->text(), "保存");
        EXPECT_EQ(found<QToolButton>("Exit")->text(), "关闭");
    });
}

TEST_F(QtToolkitTest, nodesCarryTheirKeyAndTheirPicture) {
    use(
        sampleWindow(), [](Window& window) { window.get<Tree>("tv1").add("", "D0", "全部", "Folder"); },
        [](User&) {
            const QTreeWidgetItem* node = found<QTreeWidget>("tv1")->topLevelItem(0);
            EXPECT_EQ(node->data(0, Qt::UserRole).toString(), "D0");
            EXPECT_FALSE(node->icon(0).pixmap(16).isNull());
        });
}

TEST_F(QtToolkitTest, aFieldIsCalledAsTheLabelBeforeItAndItsMnemonicLeadsThere) {
    use(sampleWindow(), loadNothing, [](User& user) {
        auto* field = found<QLineEdit>("txt(0)");
        EXPECT_EQ(field->accessibleName(), "代码");
        EXPECT_EQ(found<QLabel>("Label1")->buddy(), field);
        EXPECT_EQ(found<QTableView>("vsf1")->accessibleName(), "明细");
        user.control<Tree>("tv1").setFocus();
        user.press("Alt+D");
        EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
    });
}

TEST_F(QtToolkitTest, everyToolbarButtonHasAPictureANameAndATipWithItsKey) {
    use(sampleWindow(), loadNothing, [](User&) {
        for (const char* key : {"Save", "Print", "Exit"}) {
            auto* button = found<QToolButton>(key);
            EXPECT_FALSE(button->icon().pixmap(20).isNull()) << key;
            EXPECT_FALSE(button->accessibleName().isEmpty()) << key;
        }
        EXPECT_EQ(found<QToolButton>("Save")->toolTip(), "保存 (Ctrl+S)");
        EXPECT_EQ(found<QToolButton>("Print")->toolTip(), "打印");
    });
}

TEST(SpokenCaption, leavesOutMnemonicsAndTheClosingColon) {
    EXPECT_EQ(qt::spokenCaption("搜索(&F)"), "搜索");
    EXPECT_EQ(qt::spokenCaption("查询条件："), "查询条件");
    EXPECT_EQ(qt::spokenCaption("&Open:"), "Open");
    EXPECT_EQ(qt::spokenCaption("名称"), "名称");
}

}  // namespace
}  // namespace orvenmod::test
