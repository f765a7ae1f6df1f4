// The commands that change a category or an item from the list, in the window itself.
#include <gtest/gtest.h>

#include "browser/browsertest.h"

namespace orvenmod::test {
namespace {

using platform::Tree;

class BrowserCommands : public BrowserTest {};

TEST_F(BrowserCommands, aCategoryStoredInItsDialogShowsInTheTree) {
    stage.open(kManagement, [this](User& user) {
        user.clickNode("tv1", "D14");
        script().onWindow("frmParent", [](User& dialog) {
            dialog.type("txt", "07", 1);
            dialog.type("txt", "灯具", 0);
            dialog.answer(MessageKind::information, "数据保存成功！");
            dialog.click("cmdOperate");
        });
        user.click("cmdAddType");
        const std::string id = database().value("select fItemId from tblItem where fNumber='02.07'");
        EXPECT_EQ(user.control<Tree>("tv1").parent("D" + id), "D14");
        EXPECT_EQ(user.control<Tree>("tv1").text("D" + id), "灯具(02.07)");
    });
}

TEST_F(BrowserCommands, aDeletedItemLeavesTheList) {
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        database().execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                           ",'fCustId',1)");
    }
    stage.open(kManagement, [](User& user) {
        user.selectRow("vsf1", 4);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.chooseMenu("MenuEditDelete");
        EXPECT_EQ(codes(user).size(), 3U);
    });
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fIsDetail=1"), "3");
}

TEST_F(BrowserCommands, aCategoryWithItemsStays) {
    stage.open(kManagement, [](User& user) {
        user.clickNode("tv1", "D14");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::warning, "该分类下面还有明细，不能删除!");
        user.rightClick("tv1", "MenuParentEditDelete");
        EXPECT_TRUE(user.control<Tree>("tv1").has("D14"));
    });
}

}  // namespace
}  // namespace orvenmod::test
