// Short codes proposed, codes composed, fields tested.
#include "editor/editortest.h"
#include "editor/shortnumber.h"

namespace orvenmod::test {
namespace {

class EditorCodes : public EditorTest {
protected:
    // The proposal under a category whose children have the codes.
    std::string proposalAfter(const Texts& codes) {
        database().execute("delete from tblItem where fItemClassId=3");
        database().execute("delete from ICItem");
        int id = 500;
        for (const std::string& code : codes) {
            ++id;
            database().addItem(3, id, "x" + std::to_string(id), "货", 0);
            database().execute("update tblItem set fShortNumber='" + code +
                               "',fParentId=9 where fItemId=" + std::to_string(id));
        }
        return getShortNumber(9);
    }
};

TEST_F(EditorCodes, theFirstChildIsOne) { EXPECT_EQ(proposalAfter({}), "001"); }

TEST_F(EditorCodes, theHighestOfTheLongestCodesCounts) {
    EXPECT_EQ(proposalAfter({"1", "2", "003"}), "004");
    EXPECT_EQ(proposalAfter({"9", "10"}), "11");
    EXPECT_EQ(proposalAfter({"0099"}), "0100");
    EXPECT_EQ(proposalAfter({"007"}), "008");
    EXPECT_EQ(proposalAfter({"12"}), "13");
    EXPECT_EQ(proposalAfter({"999"}), "1000");
    EXPECT_EQ(proposalAfter({"000"}), "001");
}

TEST_F(EditorCodes, aCodeThatIsNoNumberFailsAndGivesTheFirst) {
    script().answer(MessageKind::critical, "类型不匹配", Answer::ok);
    EXPECT_EQ(proposalAfter({"A1"}), "001");
    script().finish();
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorCodes, aSuccessorBeyondThirtyTwoBitsFailsAndGivesTheFirst) {
    script().answer(MessageKind::critical, "溢出", Answer::ok);
    EXPECT_EQ(proposalAfter({"2147483647"}), "001");
    script().finish();
}

TEST_F(EditorCodes, aCodeOfElevenCharactersIsCutToTen) { EXPECT_EQ(proposalAfter({"00000000012"}), "0000000002"); }

TEST_F(EditorCodes, theCodeFollowsTheTypingLetterByLetter) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "A7");
        EXPECT_EQ(value(user, kCodeRow), "A7");
        typeName(user, "垫圈");
        EXPECT_EQ(value(user, kCodeRow), "A7");
    });
    stage.openNew(
        [](User& user) {
            user.typeCell("fps1", kValue, kShortCodeRow, "9");
            EXPECT_EQ(value(user, kCodeRow), "01.01.9");
        },
        13);
}

TEST_F(EditorCodes, aPickedCategoryProposesAndComposesAnew) {
    stage.openNew([](User& user) {
        user.pickCell("fps1", kValue, kCategoryRow, 3);
        EXPECT_EQ(value(user, kCategoryRow), "电器(02)");
        EXPECT_EQ(chosenId(user, kCategoryRow), "14");
        EXPECT_EQ(appState().gCurParentId, 14);
        EXPECT_EQ(value(user, kShortCodeRow), "002");
        EXPECT_EQ(value(user, kCodeRow), "02.002");
        user.pickCell("fps1", kValue, kCategoryRow, 0);
        EXPECT_EQ(value(user, kCategoryRow), "无");
        EXPECT_EQ(chosenId(user, kCategoryRow), "0");
        EXPECT_EQ(user.control<EntryGrid>("fps1").text(kCategoryCode, kCategoryRow), "");
        EXPECT_EQ(appState().gCurParentId, 0);
        EXPECT_EQ(value(user, kCodeRow), value(user, kShortCodeRow));
    });
}

TEST_F(EditorCodes, aPickInAChangeProposesAnewToo) {
    stage.openItem(101, [](User& user) {
        user.pickCell("fps1", kValue, kCategoryRow, 3);
        EXPECT_EQ(value(user, kCodeRow), "02.002");
    });
}

TEST_F(EditorCodes, aPickedReferenceKeepsItsIdBesideIt) {
    stage.openNew([](User& user) {
        user.pickCell("fps1", kValue, kSupplierRow, 1);
        EXPECT_EQ(value(user, kSupplierRow), "华南供应");
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
    });
}

TEST_F(EditorCodes, afterANullCategoryCodeTypingAndPickingComposeDifferently) {
    database().execute("drop view vICItem");
    database().execute(
        "create view vICItem as select a.*,b.fShortNumber,b.fParentId,c.fName as fParentIdName,c.fDepth as "
        "fParentDepth,"
        "c.fNumber as fParentIdNumber,'' as fHName from ICItem as a left join tblItem as b on a.fItemId=b.fItemId left "
        "join tblItem as c on c.fItemId=b.fParentId");
    stage.openItem(104, [](User& user) {
        EXPECT_EQ(user.control<EntryGrid>("fps1").text(kCategoryCode, kCategoryRow), "0");
        user.typeCell("fps1", kValue, kShortCodeRow, "5");
        EXPECT_EQ(value(user, kCodeRow), "0.5");
        user.pickCell("fps1", kValue, kSupplierRow, 0);
        EXPECT_EQ(value(user, kCodeRow), "5");
    });
}

TEST_F(EditorCodes, aRequiredFieldOfBlanksIsReported) {
    stage.openNew([](User& user) {
        typeName(user, "   ");
        user.answer(MessageKind::warning, "名称不能为空!");
        user.chooseMenu("MenuFileSave");
    });
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::warning, "名称不能为空!", kTitle}));
    EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "0");
}

TEST_F(EditorCodes, everyFormOfACodeIsStoredAndTheNextOneProposed) {
    const struct {
        const char* typed;
        const char* next;
        const char* failure;
    } cases[] = {{"0099", "0100", ""},
                 {"999", "1000", ""},
                 {"12345678901", "1234567891", ""},
                 {"A1", "001", "类型不匹配"},
                 {"2147483647", "001", "溢出"}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.typed);
        database().execute("delete from tblItem where fParentId=14");
        stage.openNew(
            [&](User& user) {
                EXPECT_EQ(value(user, kShortCodeRow), "001");
                user.typeCell("fps1", kValue, kShortCodeRow, each.typed);
                typeName(user, std::string("货 ") + each.typed);
                user.answer(MessageKind::information, "数据保存成功!");
                if (*each.failure != 0) user.answer(MessageKind::critical, each.failure);
                user.clickTool("Save");
                EXPECT_EQ(value(user, kShortCodeRow), each.next);
                EXPECT_EQ(value(user, kCodeRow), std::string("02.") + each.next);
            },
            14);
        EXPECT_EQ(database().value("select fNumber from tblItem where fParentId=14"), std::string("02.") + each.typed);
    }
}

TEST_F(EditorCodes, aRequiredReferenceIsTestedByItsText) {
    database().execute("update tblTableInfo set fIsNull=1 where fItemClassId=3 and fFieldName='fH'");
    database().execute("update ICItem set fH=999 where fItemId=101");
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(chosenId(user, kSupplierRow), "999");
        user.answer(MessageKind::warning, "主供应商不能为空!");
        user.clickTool("Save");
    });
}

TEST_F(EditorCodes, fieldsAreTestedBeforeAttachments) {
    const std::string file = stage.makeFile("a.txt", "a");
    stage.openNew([&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.answer(MessageKind::warning, "名称不能为空!");
        user.clickTool("Save");
        user.chooseTab("SSTab1", 0);
        typeName(user, "垫圈");
        user.answer(MessageKind::warning, "附件第1行名称不能为空!");
        user.clickTool("Save");
    });
}

}  // namespace
}  // namespace orvenmod::test
