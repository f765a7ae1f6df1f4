// What a clerk types into the editor's cells is stored as typed, or refused where it stands.
#include "editor/cellroads.h"
#include "frame/services.h"

namespace orvenmod::test {
namespace {

constexpr const char* kNoDay = "请输入日期，如 2026-03-04";

std::string refusal(User& user) { return user.control<EntryGrid>("fps1").refusal(); }

TEST_P(EditorCellRoads, aPartOfASuppliersNameIsStoredAsTheSupplier) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kSupplierRow);
        user.typeKeys("南");
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stored("fH", 203), "202");
}

TEST_P(EditorCellRoads, aSupplierThatIsntMeantClearlyIsRefusedAndNothingIsSent) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kSupplierRow);
        user.typeKeys("供应");
        stage.forgetStatements();
        user.press("Ctrl+S");
        EXPECT_EQ(refusal(user), "有多项符合，请从列表中选择");
        user.typeKeys("乙");
        user.clickTool("Save");
        EXPECT_EQ(refusal(user), "没有这一项");
        user.chooseMenu("MenuFileSave");
        user.chooseMenu("MenuFileClose");
        user.clickTool("Exit");
        user.closeWindow();
        EXPECT_TRUE(user.window().shown());
        EXPECT_EQ(user.control<EntryGrid>("fps1").openText(), "供应乙");
        EXPECT_EQ(stage.statements(), Texts{});
        user.press("Esc");
        EXPECT_EQ(value(user, kSupplierRow), "");
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stored("fH", 203), "0");
}

TEST_P(EditorCellRoads, anEmptiedSupplierIsNoneAndAnEmptiedCategoryIsRefused) {
    database().execute("update ICItem set fH=202 where fItemId=101");
    stage.openItem(101, [](User& user) {
        user.clickCell("fps1", kValue, kCategoryRow);
        user.press("Delete");
        EXPECT_EQ(refusal(user), "请选择一项");
        user.press("Esc");
        EXPECT_EQ(chosenId(user, kCategoryRow), "13");
        user.clickCell("fps1", kValue, kSupplierRow);
        user.press("Delete");
        EXPECT_EQ(value(user, kSupplierRow) + chosenId(user, kSupplierRow), "");
        user.answer(MessageKind::information, "数据修改成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stored("fH", 101), "0");
    EXPECT_EQ(stored("fNumber", 101), "01.01.001");
}

TEST_P(EditorCellRoads, theSecondOfTwoSuppliersOfOneNameStaysTheSecond) {
    database().execute("update tblItem set fName='华东供应' where fItemId=202");
    database().execute("update ICItem set fH=202 where fItemId=101");
    const auto save = [](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    };
    stage.openItem(101, [&](User& user) {
        EXPECT_EQ(user.control<EntryGrid>("fps1").selectedItem(kValue, kSupplierRow), 1);
        save(user);
    });
    EXPECT_EQ(stored("fH", 101), "202");
    stage.openItem(101, [&](User& user) {
        user.clickCell("fps1", kValue, kSupplierRow);
        user.press("F4");
        EXPECT_EQ(user.openedList(), (Texts{"华东供应(01)", "华东供应(02)"}));
        user.press("Enter");
        EXPECT_EQ(value(user, kSupplierRow), "华东供应");
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
        save(user);
    });
    EXPECT_EQ(stored("fH", 101), "202");
}

TEST_P(EditorCellRoads, aNumberBeyondItsFieldsLimitsIsNotSaved) {
    setField("fMinQty", "fNumberDec=1,FMaxNumber=1000,FMinNumber=10");
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        for (const char* typed : {"5", "1500", "-20"}) {
            user.clickCell("fps1", kValue, kMinQtyRow);
            user.typeKeys(typed);
            stage.forgetStatements();
            user.press("Ctrl+S");
            EXPECT_EQ(refusal(user), "请输入 10 到 1000 之间的数") << typed;
            EXPECT_EQ(value(user, kMinQtyRow), typed);
            EXPECT_EQ(stage.statements(), Texts{});
            user.press("Esc");
            EXPECT_EQ(value(user, kMinQtyRow), "");
        }
        user.clickCell("fps1", kValue, kMinQtyRow);
        user.paste(" ９９９．５ ");
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stored("fMinQty", 203), "999.5");
}

TEST_P(EditorCellRoads, limitsThatWereLeftEmptyAreNone) {
    for (const char* limits : {"FMaxNumber=0,FMinNumber=0", "FMaxNumber=null,FMinNumber=0",
                               "FMaxNumber=0,FMinNumber=null", "FMaxNumber=null,FMinNumber=null"}) {
        setField("fMinQty", std::string("fNumberDec=2,") + limits);
        stage.openNew([&](User& user) {
            user.typeCell("fps1", kValue, kMinQtyRow, "-1,234.5");
            EXPECT_EQ(value(user, kMinQtyRow), "-1234.5") << limits;
        });
    }
    setField("fMinQty", "FMaxNumber=0,FMinNumber=-5");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "1");
        EXPECT_EQ(refusal(user), "请输入 -5 到 0 之间的数");
    });
}

TEST_P(EditorCellRoads, aDayIsStoredAsMeantOrRefused) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kDayRow);
        user.typeKeys("2026-02-30");
        stage.forgetStatements();
        user.press("Ctrl+S");
        EXPECT_EQ(refusal(user), kNoDay);
        EXPECT_EQ(stage.statements(), Texts{});
        user.press("Esc");
        user.typeKeys("26-3-4");
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stored("fF", 203), "2026-03-04 00:00:00");
}

TEST_P(EditorCellRoads, aDayWithoutItsYearIsThisYears) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kDayRow, "3-4");
        const std::string year = std::to_string(services().clock.today().year);
        EXPECT_EQ(value(user, kDayRow), year + "-03-04");
    });
}

TEST_P(EditorCellRoads, theCodeFollowsTheTypingAndEscapeBack) {
    stage.openNew(
        [](User& user) {
            const std::string before = value(user, kCodeRow);
            user.clickCell("fps1", kValue, kShortCodeRow);
            user.typeKeys("A7");
            EXPECT_EQ(value(user, kCodeRow), "01.01.A7");
            user.press("Esc");
            EXPECT_EQ(value(user, kShortCodeRow), "003");
            EXPECT_EQ(value(user, kCodeRow), before);
        },
        13);
}

TEST_P(EditorCellRoads, theNameOfAnAttachmentIsTakenOverByASave) {
    stage.storeAttachment(4, "a.txt", "a");
    stage.openItem(101, [](User& user) {
        user.chooseTab("SSTab1", 1);
        user.clickCell("fps2", 3, 1);
        user.typeKeys("图纸");
        user.answer(MessageKind::information, "数据修改成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(database().value("select fName from tblItemFJ where fItemId=101"), "图纸");
}

}  // namespace
}  // namespace orvenmod::test
