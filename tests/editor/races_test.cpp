// What somebody else does between two statements of a save, at the worst moment.
#include <fstream>

#include "editor/editortest.h"
#include "support/serverdifferences.h"

namespace orvenmod::test {
namespace {

const std::string kNoTransaction = "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。";

class EditorRaces : public EditorTest {
protected:
    // Somebody else acts once, right after the statement that starts so.
    void after(const std::string& start, std::function<void()> act) {
        stage.afterOperation([this, start, act = std::move(act)](const store::TraceRecord& record) {
            if (!record.sql.starts_with(start)) return;
            const auto acting = act;
            stage.afterOperation({});
            acting();
        });
    }

    // As another process's editor leaves its new item.
    void storeOther(int id, const std::string& shortCode, const std::string& name) {
        const std::string key = std::to_string(id);
        database().execute("insert into ICItem(fItemId,fNumber,fName) values(" + key + ",'01.01." + shortCode + "','" +
                           name + "')");
        database().execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,"
            "fShortNumber) values(" +
            key + ",'01.01." + shortCode + "','" + name + "',3,13,1,3,0,'.12.13." + key + ".','" + shortCode + "')");
    }

    void moveCounter() { database().execute("update tblMaxNum set fMaxNum=fMaxNum+1 where fTableName='tblItem'"); }
    std::string counter() { return database().value("select fMaxNum from tblMaxNum where fTableName='tblItem'"); }

    void save(User& user) {
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    }
};

TEST_F(EditorRaces, whoLosesAnIdGetsTheStoresMessageAndKeepsWhatWasTyped) {
    const std::string file = database().folder().file("a.bmp");
    std::ofstream(file) << "picture";
    const std::string text =
        "违反了 PRIMARY KEY 约束“PK__ICItem__fItemId”。不能在对象“ICItem”中插入重复键。重复键值为 (203)。";
    stage.openNew(
        [&](User& user) {
            user.typeCell("fps1", kValue, kShortCodeRow, "777");
            typeName(user, "垫圈");
            user.typeCell("fps1", kValue, kModelRow, "M6");
            user.typeCell("fps1", kValue, kMinQtyRow, "5");
            user.pickCell("fps1", kValue, kSupplierRow, 1);
            user.chooseTab("SSTab1", 1);
            user.chooseFile(file);
            user.click("cmdAddFJ");
            user.typeCell("fps2", 3, 1, "图纸");
            user.chooseTab("SSTab1", 2);
            user.chooseFile(file);
            user.click("cmdAdd");
            const Texts typed = values(user);

            after("select * from tblMaxnum", [this] {
                moveCounter();
                storeOther(203, "888", "别人的");
            });
            user.answer(MessageKind::critical, text);
            user.clickTool("Save");
            const ShownMessage told = script().messages().back();
            EXPECT_TRUE(told.text == text || isServersWordingOf(told.text, text)) << told.text;
            EXPECT_EQ(told, (ShownMessage{MessageKind::critical, told.text, kTitle}));
            EXPECT_EQ(script().messages().size(), 1U) << "the transaction was open, so its rollback is accepted";

            EXPECT_EQ(values(user), typed);
            EXPECT_EQ(chosenId(user, kSupplierRow), "202");
            EXPECT_EQ(chosenId(user, kCategoryRow), "13");
            EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 1);
            EXPECT_EQ(user.control<EntryGrid>("fps2").text(3, 1), "图纸");
            EXPECT_EQ(appState().gPhotoPath, file);
            EXPECT_EQ(appState().gEditMode, 0);
            EXPECT_EQ(appState().gCurItemId, 203) << "the id that was lost";
            EXPECT_EQ(goods(203).at(0).at(1), "别人的");
            EXPECT_EQ(database().value("select count(*) from tblItemFJ"), "0");
            EXPECT_EQ(database().value("select count(*) from ICItemPhoto"), "0");
            EXPECT_EQ(counter(), "204");

            save(user);
        },
        13);
    EXPECT_EQ(item(205), (Rows{{"01.01.777", "垫圈", "3", "13", "1", "3", "0", ".12.13.205.", "777"}}));
    EXPECT_EQ(goods(205), (Rows{{"01.01.777", "垫圈", "M6", "5", "1900-01-01 00:00:00", "202"}}));
    EXPECT_EQ(database().value("select fName from tblItemFJ where fItemId=205"), "图纸");
    EXPECT_EQ(database().value("select count(*) from ICItemPhoto where fItemId=205"), "1");
    EXPECT_EQ(item(203).at(0).at(1), "别人的");
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorRaces, whoLosesTheFirstIdOfADatabaseToo) {
    const std::string text =
        "违反了 PRIMARY KEY 约束“PK__tblMaxNum__fTableName”。不能在对象“tblMaxNum”中插入重复键。重复键值为 "
        "(tblItem)。";
    database().execute("delete from tblMaxNum");
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        after("select * from tblMaxnum",
              [this] { database().execute("insert into tblMaxNum(fTableName,fMaxNum) values('tblItem',500)"); });
        user.answer(MessageKind::critical, text);
        user.answer(MessageKind::critical, kNoTransaction);
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "垫圈");
        save(user);
    });
    EXPECT_EQ(item(501).at(0).at(1), "垫圈");
    EXPECT_EQ(counter(), "501");
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorRaces, aCodeAndNameTakenAfterTheirTestsAreStoredTwice) {
    stage.openNew(
        [this](User& user) {
            user.typeCell("fps1", kValue, kShortCodeRow, "777");
            typeName(user, "垫圈");
            after("select * from tblItem where fname=", [this] { storeOther(300, "777", "垫圈"); });
            save(user);
        },
        13);
    EXPECT_EQ(database().rows("select fItemId,fNumber,fName from tblItem where fNumber='01.01.777' order by fItemId"),
              (Rows{{"203", "01.01.777", "垫圈"}, {"300", "01.01.777", "垫圈"}}));
}

TEST_F(EditorRaces, aCodeTakenSinceItWasProposedIsRefused) {
    stage.openNew(
        [this](User& user) {
            EXPECT_EQ(value(user, kShortCodeRow), "003");
            typeName(user, "垫圈");
            storeOther(300, "003", "别人的");
            user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
            user.clickTool("Save");
            EXPECT_EQ(value(user, kNameRow), "垫圈");
            EXPECT_EQ(counter(), "202");
            user.typeCell("fps1", kValue, kShortCodeRow, "004");
            save(user);
        },
        13);
    EXPECT_EQ(item(203).at(0).at(0), "01.01.004");
}

TEST_F(EditorRaces, aChangeThatMeetsATakenCodeIsRefusedAndWritesNothing) {
    stage.openItem(101, [this](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "777");
        typeName(user, "内六角");
        storeOther(300, "777", "别人的");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "内六角");
    });
    EXPECT_EQ(item(101).at(0).at(1), "内六角螺丝");
    EXPECT_EQ(counter(), "202");
}

TEST_F(EditorRaces, whoWaitsTooLongForTheOthersSaveIsToldAndKeepsWhatWasTyped) {
    appState().gConnStr += ";Busy Timeout=20";
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        const auto other = stores().connect(stage.connectionString());
        other->beginTrans();
        other->execute("update tblMaxNum set fMaxNum=fMaxNum+1");
        user.answer(MessageKind::critical, database().busyText());
        user.answer(MessageKind::critical, kNoTransaction);
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "垫圈");
        other->rollbackTrans();
        save(user);
    });
    EXPECT_EQ(item(203).at(0).at(1), "垫圈") << "the counter had not moved";
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

}  // namespace
}  // namespace orvenmod::test
