// The command that brings a list in, from the list's own menu.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "browser/browsertest.h"

namespace orvenmod::test {
namespace {

using ::testing::Contains;

class BrowserImport : public BrowserTest {};

TEST_F(BrowserImport, theMenuOpensItForWhoeverMayAddAndNothingElseIsAsked) {
    const Texts right = {"select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='Y304'"};
    stage.set("SystemLogin", "IsAdmin", "0");
    stage.open(kManagement, [&](User& user) {
        stage.forgetStatements();
        user.answer(MessageKind::warning, kRefusal);
        user.chooseMenu("MenuImport");
        EXPECT_EQ(stage.statements(), right);
        database().grant(7, "Y304");
        script().onWindow("frmImport", [](User& import) {
            EXPECT_EQ(import.window().caption(), "导入货品");
            import.click("cmdClose");
        });
        stage.forgetStatements();
        user.chooseMenu("MenuImport");
        EXPECT_EQ(stage.statements(), right);
    });
}

TEST_F(BrowserImport, whatItHasStoredShowsInTheListAndTheTree) {
    const std::string file = database().folder().file("list.csv");
    std::ofstream(file) << "短代码,名称,所属分类\n9,垫圈,五金/垫圈\n";
    stage.open(kManagement, [&](User& user) {
        script().onWindow("frmImport", [&](User& import) {
            import.type("txtFile", file, -1);
            import.click("cmdNext");
            import.pick("cmbCategory", 1, -1);
            import.click("cmdNext");
            import.click("cmdNext");
        });
        user.chooseMenu("MenuImport");
        EXPECT_THAT(codes(user), Contains("01.02.9"));
        const std::string made = database().value("select fItemId from tblItem where fNumber='01.02'");
        EXPECT_EQ(user.control<platform::Tree>("tv1").text("D" + made), "垫圈(01.02)");
    });
}

}  // namespace
}  // namespace orvenmod::test
