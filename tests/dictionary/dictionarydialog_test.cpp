// The dialog of dictionaries: its two modes, which are told by two fields, and what it stores.
#include "dictionary/dictionarytest.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Edit;
using platform::Label;
using platform::Tree;

const std::string kEmptyId = "类别ID不能为空";
const std::string kTakenId = "类别ID已经存在，请重新输入！";

class DictionaryDialog : public DictionaryTest {
protected:
    void openNew(const Steps& steps) {
        stage.openManager([&](User& manager) {
            script().onWindow("frmJCZLType", steps);
            manager.chooseMenu("MenuJCZLNew1");
        });
    }
    void openUpdate(const Steps& steps) {
        stage.openManager([&](User& manager) {
            manager.clickNode("tv1", "D501");
            script().onWindow("frmJCZLType", steps);
            manager.chooseMenu("MenuJCZLUpdate1");
        });
    }
    static void fill(User& user, const std::string& id, const std::string& name) {
        user.type("txt1", id);
        user.type("txt", name);
    }
    Rows dictionaries() {
        return database().rows(
            "select fitemclassid,fitemname,fitemtype,fitemtable,fviewname from tblItemClass where fitemtype='1' order "
            "by "
            "fitemclassid");
    }
};

TEST_F(DictionaryDialog, captionsAreThoseOfANewDictionary) {
    openNew([](User& user) {
        EXPECT_EQ(user.window().caption(), "基础资料类别新增");
        EXPECT_EQ(user.control<Label>("Label1", 0).caption(), "类别ID：");
        EXPECT_EQ(user.control<Label>("Label1", 1).caption(), "名称：");
        EXPECT_EQ(user.control<Button>("cmdOK").caption(), "新增(&A)");
        EXPECT_EQ(user.control<Button>("cmdClose").caption(), "关闭(&C)");
        user.click("cmdClose");
        EXPECT_FALSE(user.window().shown());
    });
}

TEST_F(DictionaryDialog, anEmptyIdIsRefused) {
    openNew([this](User& user) {
        fill(user, "  ", "材质");
        stage.forgetStatements();
        user.answer(MessageKind::warning, kEmptyId);
        user.click("cmdOK");
        EXPECT_TRUE(user.control<Edit>("txt1").hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
        EXPECT_EQ(script().messages().back().title, kTitle);
    });
}

TEST_F(DictionaryDialog, anEmptyNameIsRefusedInTheSameWords) {
    openNew([this](User& user) {
        fill(user, "503", " ");
        stage.forgetStatements();
        user.answer(MessageKind::warning, kEmptyId);
        user.click("cmdOK");
        EXPECT_TRUE(user.control<Edit>("txt").hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(DictionaryDialog, aNewOneSendsItsStatementsAndShowsInTheTree) {
    stage.openManager([this](User& manager) {
        script().onWindow("frmJCZLType", [this](User& user) {
            fill(user, " 503 ", " 材质 ");
            stage.forgetStatements();
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            EXPECT_EQ(stage.statements(),
                      (Texts{"select fItemname from tblItemClass where fitemclassid=503",
                             "insert into tblItemClass(fitemclassid,fitemname,fItemType,fitemtable) "
                             "values(503,'材质','1','') "}));
            EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "execute", "close"}));
            EXPECT_EQ(user.control<Edit>("txt1").text(), "");
            EXPECT_EQ(user.control<Edit>("txt").text(), "");
        });
        manager.chooseMenu("MenuJCZLNew1");
        auto& tv1 = manager.control<Tree>("tv1");
        EXPECT_EQ(tv1.text("D503"), "材质");
        EXPECT_EQ(tv1.parent("D503"), "D0");
        EXPECT_TRUE(tv1.expanded("D0"));
    });
    EXPECT_EQ(dictionaries().back(), (std::vector<std::string>{"503", "材质", "1", "", "NULL"}));
}

TEST_F(DictionaryDialog, itStaysOpenForTheNextOne) {
    openNew([](User& user) {
        for (const char* id : {"503", "504"}) {
            fill(user, id, "材质");
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
        }
    });
    EXPECT_EQ(dictionaries().size(), 4U);
}

TEST_F(DictionaryDialog, enterMovesOnToTheNextControl) {
    openNew([](User& user) {
        user.control<Edit>("txt1").setFocus();
        user.press("Enter");
        EXPECT_TRUE(user.control<Edit>("txt").hasFocus());
        user.press("Enter");
        EXPECT_TRUE(user.control<Button>("cmdOK").hasFocus());
    });
}

TEST_F(DictionaryDialog, theIdOfAnyClassIsTaken) {
    openNew([](User& user) {
        for (const char* id : {"501", "3"}) {
            fill(user, id, "材质");
            user.answer(MessageKind::warning, kTakenId);
            user.click("cmdOK");
            EXPECT_TRUE(user.control<Edit>("txt1").hasFocus());
            EXPECT_EQ(user.control<Edit>("txt").text(), "材质");
        }
    });
    EXPECT_EQ(dictionaries().size(), 2U);
}

TEST_F(DictionaryDialog, anIdThatIsNoNumberIsTheStoresFailure) {
    openNew([](User& user) {
        fill(user, "abc", "材质");
        user.answer(MessageKind::warning, "列名 'abc' 无效。");
        user.click("cmdOK");
        EXPECT_EQ(user.control<Edit>("txt1").text(), "abc");
    });
    EXPECT_EQ(dictionaries().size(), 2U);
}

TEST_F(DictionaryDialog, aQuoteInTheNameIsTheStoresFailure) {
    openNew([](User& user) {
        fill(user, "503", "材'质");
        user.answer(MessageKind::warning, "字符串 ','') ' 后的引号不完整。");
        user.click("cmdOK");
    });
    EXPECT_EQ(dictionaries().size(), 2U);
}

TEST_F(DictionaryDialog, aNameOfMoreThanAHundredCharactersIsRefusedByItsColumn) {
    openNew([](User& user) {
        fill(user, "503", std::string(101, '7'));
        user.answer(MessageKind::warning, "将在表“tblItemClass”的列“fItemName”中截断字符串或二进制数据。截断值:“" +
                                              std::string(100, '7') + "”。");
        user.click("cmdOK");
    });
    EXPECT_EQ(dictionaries().size(), 2U);
}

TEST_F(DictionaryDialog, anIdBeyond16BitsIsStoredAndItsNodeCannotBeChosen) {
    stage.openManager([this](User& manager) {
        script().onWindow("frmJCZLType", [](User& user) {
            fill(user, "40000", "材质");
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
        });
        manager.chooseMenu("MenuJCZLNew1");
        manager.answer(MessageKind::critical, "溢出");
        manager.clickNode("tv1", "D40000");
        EXPECT_EQ(manager.window().shown(), true);
    });
    EXPECT_EQ(dictionaries().size(), 3U);
}

TEST_F(DictionaryDialog, aChangeShowsTheDictionaryWithItsIdDisabled) {
    openUpdate([this](User& user) {
        EXPECT_EQ(user.window().caption(), "基础资料类别修改");
        EXPECT_EQ(user.control<Button>("cmdOK").caption(), "修改(&U)");
        EXPECT_EQ(user.control<Edit>("txt1").text(), "501");
        EXPECT_FALSE(user.control<Edit>("txt1").enabled());
        EXPECT_EQ(user.control<Edit>("txt").text(), "单位");
        EXPECT_EQ(stage.lastStatement(), "select * from tblItemClass where fitemclassid=501 ");
    });
}

TEST_F(DictionaryDialog, aChangeIsRefusedSinceItsIdIsTakenAndTheFocusFails) {
    openUpdate([](User& user) {
        user.type("txt", "计量单位");
        user.answer(MessageKind::warning, kTakenId);
        user.answer(MessageKind::warning, "无效的过程调用或参数");
        user.click("cmdOK");
    });
    EXPECT_EQ(dictionaries()[0][1], "单位");
}

TEST_F(DictionaryDialog, afterAChangeTheNextNewOneLooksLikeAChange) {
    stage.openManager([this](User& manager) {
        manager.clickNode("tv1", "D502");
        script().onWindow("frmJCZLType", [](User&) {});
        manager.chooseMenu("MenuJCZLUpdate1");
        script().onWindow("frmJCZLType", [](User& user) {
            EXPECT_EQ(user.window().caption(), "基础资料类别修改");
            EXPECT_EQ(user.control<Edit>("txt1").text(), "502");
        });
        manager.chooseMenu("MenuJCZLNew1");
        appState().gEditMode = 0;
        script().onWindow("frmJCZLType", [](User& user) { EXPECT_EQ(user.window().caption(), "基础资料类别新增"); });
        manager.chooseMenu("MenuJCZLNew1");
    });
}

TEST_F(DictionaryDialog, aChangeOfADictionaryThatIsGoneShowsEmptyFields) {
    stage.openManager([this](User& manager) {
        manager.clickNode("tv1", "D502");
        database().execute("delete from tblItemClass where fItemClassId=502");
        script().onWindow("frmJCZLType", [](User& user) {
            EXPECT_EQ(user.control<Edit>("txt1").text(), "");
            EXPECT_TRUE(user.control<Edit>("txt1").enabled());
        });
        manager.chooseMenu("MenuJCZLUpdate1");
    });
}

TEST_F(DictionaryDialog, inUpdateModeItStoresTheNameAndReadsTheTreeAgain) {
    stage.openManager([this](User& manager) {
        manager.clickNode("tv1", "D502");
        script().onWindow("frmJCZLType", [this](User& user) {
            appState().gDictTypeEditMode = 1;
            user.type("txt", " 色 ");
            stage.forgetStatements();
            user.answer(MessageKind::information, kChanged);
            user.click("cmdOK");
            EXPECT_EQ(stage.statements(),
                      (Texts{"update tblItemClass set fitemname='色' where fitemclassid=502 ",
                             "select fitemclassid,fitemname from tblItemclass where fitemtype='1' order by "
                             "fitemclassid "}));
        });
        manager.chooseMenu("MenuJCZLUpdate1");
        EXPECT_EQ(manager.control<Tree>("tv1").text("D502"), "色(502)");
        EXPECT_EQ(manager.control<Tree>("tv1").selected(), "D502");
    });
}

TEST_F(DictionaryDialog, anyOtherModeEndsTheCommand) {
    openNew([this](User& user) {
        fill(user, "503", "材质");
        appState().gDictTypeEditMode = 2;
        stage.forgetStatements();
        user.click("cmdOK");
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

}  // namespace
}  // namespace orvenmod::test
