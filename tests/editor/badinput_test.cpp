// What users should not do, and do.
#include "editor/editortest.h"

namespace orvenmod::test {
namespace {

const std::string kNoTransaction = "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。";

class EditorBadInput : public EditorTest {
protected:
    void expectNothingStored() {
        EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "0");
        EXPECT_EQ(database().value("select count(*) from ICItem where fItemId>202"), "0");
    }
};

TEST_F(EditorBadInput, aQuoteInAFieldBreaksTheClassStatementAndIsUndone) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.typeCell("fps1", kValue, kModelRow, "3' pipe");
        user.answer(MessageKind::critical, "字符串 ',0)' 后的引号不完整。");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kModelRow), "3' pipe");
        user.typeCell("fps1", kValue, kModelRow, "3 pipe");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(goods(203), Rows{}) << "the first id was used up";
    EXPECT_EQ(goods(204).at(0).at(2), "3 pipe");
}

TEST_F(EditorBadInput, aQuoteInTheNameFailsBeforeTheTransactionAndTheRollbackToo) {
    stage.openNew([](User& user) {
        typeName(user, "5' 管");
        user.answer(MessageKind::critical, "字符串 ' and fitemclassid=3 and fisdetail=1 ' 后的引号不完整。");
        user.answer(MessageKind::critical, kNoTransaction);
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "5' 管");
        typeName(user, "管");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(203).at(0).at(1), "管");
}

TEST_F(EditorBadInput, aNameOfAHundredAndOneCharactersIsTruncatedNowhere) {
    const std::string name(101, 'x');
    stage.openNew([&](User& user) {
        typeName(user, name);
        user.answer(MessageKind::critical,
                    "将在表“ICItem”的列“fName”中截断字符串或二进制数据。截断值:“" + std::string(100, 'x') + "”。");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), name);
    });
    expectNothingStored();
}

TEST_F(EditorBadInput, aTextInANumberColumnIsRefusedByTheStore) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.control<EntryGrid>("fps1").setText(kValue, kMinQtyRow, "abc");
        user.answer(MessageKind::critical, "从数据类型 varchar 转换为 numeric 时出错。");
        user.clickTool("Save");
    });
    expectNothingStored();
}

TEST_F(EditorBadInput, aWrongDateIsRefusedByTheStore) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.control<EntryGrid>("fps1").setText(kValue, kDayRow, "2026-02-30");
        user.answer(MessageKind::critical, "从 varchar 数据类型到 datetime 数据类型的转换产生一个超出范围的值。");
        user.clickTool("Save");
    });
    expectNothingStored();
}

TEST_F(EditorBadInput, anItemDeletedMeanwhileIsReportedAsSaved) {
    stage.openItem(101, [this](User& user) {
        database().execute("delete from tblItem where fItemId=101");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(101), Rows{});
}

TEST_F(EditorBadInput, aFolderGivenAsAPhotoUndoesTheItem) {
    const std::string folder = database().folder().path();
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        appState().gPhotoPath = folder;
        user.answer(MessageKind::critical, "不是文件：" + folder);
        user.clickTool("Save");
    });
    expectNothingStored();
}

TEST_F(EditorBadInput, aDatabaseThatIsGoneKeepsWhatWasTyped) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        const std::string good = appState().gConnStr;
        appState().gConnStr = "Provider=SQLite;Data Source=/none/suite.db";
        user.answer(MessageKind::critical,
                    "找不到数据库文件“/none/suite.db”。若要新建数据库，请在连接字符串中加上 Mode=Create。");
        user.answer(MessageKind::critical, "对象变量或 With 块变量未设置");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "垫圈");
        appState().gConnStr = good;
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(203).at(0).at(1), "垫圈");
}

}  // namespace
}  // namespace orvenmod::test
