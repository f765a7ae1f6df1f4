// Where the keyboard stands, which row a command means, and a bill that is filled without the mouse.
#include "browser/roads.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Edit;
using platform::EntryGrid;
using platform::ListGrid;
using platform::Tree;

void expectFirstRow(User& user, const char* after) {
    const auto& list = user.control<ListGrid>("vsf1");
    EXPECT_EQ(list.currentRow(), 1) << after;
    EXPECT_TRUE(list.isSelected(1)) << after;
}

void searchFor(User& user, const std::string& name) {
    user.pick("PC", 2, 0);
    user.type("txtSearch", name);
    user.click("cmdFind");
}

/// Ten goods whose codes are numbers, and what was handed over of them: 1 of the first to 10 of the last.
Rows tenGoods(Database& database) {
    Rows handed;
    for (int place = 1; place <= 10; ++place) {
        const std::string code = std::to_string(9000 + place);
        database.addItem(3, 500 + place, code, "货" + code);
        handed.push_back({std::to_string(500 + place), std::to_string(place), std::to_string(place)});
    }
    return handed;
}

Rows handedOver(Database& database) {
    return database.rows("select fItemId,fQty,fEntryId from tblItemInput order by fEntryId");
}

TEST_P(Roads, theFirstRowIsTheOneThatIsMeantAfterEveryRefresh) {
    stage.open(kManagement, [](User& user) {
        user.selectRow("vsf1", 3);
        user.clickNode("tv1", "D12");
        expectFirstRow(user, "a click on a node");
        user.selectRow("vsf1", 2);
        user.click("cmdFind");
        expectFirstRow(user, "a search for all");
        user.selectRow("vsf1", 4);
        searchFor(user, "螺丝");
        expectFirstRow(user, "a search");
    });
}

TEST_P(Roads, changingActsOnTheFirstFind) {
    stage.open(kManagement, [this](User& user) {
        searchFor(user, "开关");
        stage.script().onWindow("frmBasicInfo", [](User&) { EXPECT_EQ(appState().gCurItemId, 103); });
        user.click("cmdUpdateDetail");
        user.clickNode("tv1", "D12");
        stage.script().onWindow("frmBasicInfo", [](User&) { EXPECT_EQ(appState().gCurItemId, 101); });
        user.press("Ctrl+U");
    });
}

TEST_P(Roads, enterBehindASearchPicksTheFirstFind) {
    stage.open(kPicker, [](User& user) {
        searchFor(user, "开关");
        user.press("Enter");
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "103");
}

TEST_P(Roads, theRowThatTookADeletedOnesPlaceIsMeantNext) {
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        stage.database().execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                                 ",'fCustId',1)");
    }
    stage.open(kManagement, [](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.chooseMenu("MenuEditDelete");
        const auto& list = user.control<ListGrid>("vsf1");
        EXPECT_EQ(list.currentRow(), 2);
        EXPECT_TRUE(list.isSelected(2));
        EXPECT_EQ(list.text(2, 2), "02.001");
    });
}

TEST_P(Roads, aDoubleClickOnTheHeadingDoesNothing) {
    for (const Call& call : {kManagement, kPicker, kBillPicker}) {
        stage.open(call, [](User& user) {
            user.doubleClickRow("vsf1", 0);
            EXPECT_TRUE(user.window().shown());
            EXPECT_EQ(user.control<EntryGrid>("fps1").rowCount(), 0);
        });
        EXPECT_EQ(stage.fItemId, "");
    }
}

TEST_P(Roads, aPickerOpensWithTheKeyboardInItsList) {
    for (const Call& call : {kPicker, kBillPicker}) {
        stage.open(call, [](User& user) { EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus()); });
        Call empty = call;
        empty.paramSql = " and 1=2";
        stage.open(empty, [](User& user) { EXPECT_TRUE(user.control<Edit>("txtSearch").hasFocus()); });
    }
    stage.open(kPicker, [](User& user) {
        user.press("Down");
        user.press("Enter");
    });
    EXPECT_EQ(stage.fItemId, "102");
}

TEST_P(Roads, aPickerWithoutRowsOpensWithTheKeyboardInTheDateThatIsSearched) {
    stage.open(kPicker, [](User& user) { user.pick("PC", 4, 0); });
    Call empty = kPicker;
    empty.paramSql = " and 1=2";
    stage.open(empty, [](User& user) { EXPECT_TRUE(user.control<platform::DatePicker>("dtp").hasFocus()); });
}

TEST_P(Roads, upAndDownLeadFromTheSearchTextToTheList) {
    stage.open(kManagement, [](User& user) {
        for (const char* key : {"Down", "Up"}) {
            user.control<Edit>("txtSearch").setFocus();
            user.press(key);
            EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus()) << key;
            expectFirstRow(user, key);
        }
    });
}

TEST_P(Roads, aSearchThatFindsNothingWaitsForAnotherText) {
    stage.open(kPicker, [](User& user) {
        searchFor(user, "没有");
        EXPECT_TRUE(user.control<Edit>("txtSearch").hasFocus());
        user.typeKeys("开关");
        user.press("Enter");
        user.press("Enter");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
}

TEST_P(Roads, aBillIsFilledFromTheListByKeysAlone) {
    const Rows expected = tenGoods(stage.database());
    stage.open(kBillPicker, [](User& user) {
        for (int skipped = 0; skipped < 4; ++skipped)
            user.press("Down");
        for (int quantity = 1; quantity <= 10; ++quantity) {
            user.press("Enter");
            EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus()) << quantity;
            user.typeKeys(std::to_string(quantity));
            user.press("Enter");
            EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus()) << quantity;
        }
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 14) << "behind the last row there is no next";
        user.press("Alt+A");
    });
    EXPECT_EQ(handedOver(stage.database()), expected);
}

TEST_P(Roads, aBillIsFilledThroughTheSearchByKeysAlone) {
    const Rows expected = tenGoods(stage.database());
    stage.open(kBillPicker, [](User& user) {
        user.pick("PC", 1, 0);
        user.control<ListGrid>("vsf1").setFocus();
        for (int quantity = 1; quantity <= 10; ++quantity) {
            user.typeKeys(std::to_string(9000 + quantity));
            EXPECT_EQ(user.control<Edit>("txtSearch").text(), std::to_string(9000 + quantity));
            EXPECT_TRUE(user.control<Edit>("txtSearch").hasFocus());
            user.press("Enter");
            EXPECT_TRUE(user.control<Button>("cmdFind").hasFocus());
            user.press("Enter");
            EXPECT_EQ(codes(user), Texts{std::to_string(9000 + quantity)});
            user.press("Enter");
            user.typeKeys(std::to_string(quantity));
            user.press("Enter");
        }
        user.press("Alt+A");
    });
    EXPECT_EQ(handedOver(stage.database()), expected);
}

TEST_P(Roads, correctingAQuantityMovesTheListNoFurther) {
    stage.open(kBillPicker, [](User& user) {
        user.press("Enter");
        user.typeKeys("3");
        user.press("Enter");
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        user.clickCell("fps1", 6, 1);
        user.typeKeys("4");
        user.press("Enter");
        EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus());
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        user.press("Alt+A");
    });
    EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"101", "4"}}));
}

TEST_P(Roads, theQuantityOfADoubleClickedItemIsTypedAtOnce) {
    stage.open(kBillPicker, [](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.typeKeys("2.5");
        user.answer(MessageKind::question, "该货品已经加入选定的货品中,是否继续加入?", Answer::no);
        user.doubleClickRow("vsf1", 3);
        EXPECT_TRUE(user.control<ListGrid>("vsf1").hasFocus()) << "nothing was added";
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"103", "2.5"}}));
}

TEST_P(Roads, shortcutsHoldWhereTheKeyboardStands) {
    stage.open(kManagement, [this](User& user) {
        user.type("txtSearch", "开关");
        stage.script().onWindow("frmBasicInfo", [](User&) { EXPECT_EQ(appState().gEditMode, 0); });
        user.press("Ctrl+A");
        user.control<Edit>("txtSearch").setFocus();
        user.pick("PC", 2, 0);
        user.press("Alt+F");
        EXPECT_EQ(codes(user), Texts{"02.001"});
        user.control<Edit>("txtSearch").setFocus();
        user.press("Ctrl+X");
        EXPECT_FALSE(user.window().shown());
    });
}

TEST_P(Roads, aPopupMeansTheRowAndTheNodeThatWereClicked) {
    stage.open(kManagement, [this](User& user) {
        stage.script().onWindow("frmBasicInfo", [](User&) { EXPECT_EQ(appState().gCurItemId, 103); });
        user.rightClickRow("vsf1", 3, "MenuEditUpdate");
        user.alsoSelectRow("vsf1", 1);
        stage.script().onWindow("frmBasicInfo", [](User&) { EXPECT_EQ(appState().gCurItemId, 101); });
        user.rightClickRow("vsf1", 1, "MenuEditUpdate");
        stage.script().onWindow("frmParent", [](User&) { EXPECT_EQ(appState().gCurItemId, 13); });
        user.rightClickNode("tv1", "D13", "MenuParentEditUpdate");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"})) << "the list is the node's";
    });
}

TEST_P(Roads, noWindowGrowsBeyondWhatMeasuresIt) {
    stage.open(kManagement, [](User& user) {
        user.resizeWindow(45000, 36000);
        EXPECT_LE(user.window().innerWidth(), 32767);
        EXPECT_LE(user.window().innerHeight(), 32767);
        EXPECT_GT(user.window().innerWidth(), 32700);
        user.resizeWindow(19800, 8700);
    });
    EXPECT_TRUE(stage.script().messages().empty());
}

}  // namespace
}  // namespace orvenmod::test
