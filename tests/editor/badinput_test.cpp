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

TEST_F(EditorBadInput, aNameOfAHundredCharactersIsStoredWhole) {
    const std::string name(100, 'x');
    stage.openNew([&](User& user) {
        typeName(user, name);
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(203).at(0).at(1), name);
}

TEST_F(EditorBadInput, aChangedNameOfAHundredAndOneCharactersUndoesTheChange) {
    const Rows before = goods(101);
    stage.openItem(101, [](User& user) {
        typeName(user, std::string(101, 'x'));
        user.answer(MessageKind::critical,
                    "将在表“ICItem”的列“fName”中截断字符串或二进制数据。截断值:“" + std::string(100, 'x') + "”。");
        user.clickTool("Save");
    });
    EXPECT_EQ(goods(101), before);
}

TEST_F(EditorBadInput, anAttachmentsNameThatIsTooLongUndoesTheItem) {
    const std::string file = stage.makeFile("a.txt", "a");
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, std::string(201, 'x'));
        user.answer(MessageKind::critical,
                    "将在表“tblItemFJ”的列“fName”中截断字符串或二进制数据。截断值:“" + std::string(200, 'x') + "”。");
        user.clickTool("Save");
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

TEST_F(EditorBadInput, aQuoteInTheShortCodeBreaksTheFirstTestOfANewItem) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "0'4");
        typeName(user, "垫圈");
        user.answer(MessageKind::critical, "字符串 ' and fitemclassid=3' 后的引号不完整。");
        user.answer(MessageKind::critical, kNoTransaction);
        user.clickTool("Save");
        EXPECT_EQ(value(user, kShortCodeRow), "0'4");
        EXPECT_EQ(value(user, kCodeRow), "0'4");
    });
    expectNothingStored();
}

TEST_F(EditorBadInput, cellsOfNumbersAndDaysTakeNoQuote) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "1'2");
        const auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_EQ(grid.refusal(), "请输入 0 到 99999999.99 之间的数");
        user.press("Esc");
        user.typeCell("fps1", kValue, kDayRow, "2026-'03-04");
        EXPECT_EQ(grid.refusal(), "请输入日期，如 2026-03-04");
        user.press("Esc");
        EXPECT_EQ(value(user, kMinQtyRow) + value(user, kDayRow), "");
    });
}

TEST_F(EditorBadInput, aQuoteInAnyFieldOfAChangeIsToldAndChangesNothing) {
    const Rows before = goods(101);
    const struct {
        int row;
        const char* rest;  // of the statement that the quote breaks
    } cases[] = {{kShortCodeRow, " and fitemclassid=3 and fitemid<>101"},
                 {kNameRow, " and fitemclassid=3 and fitemid<>101 and fisdetail=1 "},
                 {kModelRow, ",fH=0 where fitemid=101"}};
    for (const auto& each : cases) {
        const int row = each.row;
        SCOPED_TRACE(row);
        stage.openItem(101, [&](User& user) {
            user.typeCell("fps1", kValue, row, "5'管");
            user.answer(MessageKind::critical, std::string("字符串 '") + each.rest + "' 后的引号不完整。");
            if (row != kModelRow) user.answer(MessageKind::critical, kNoTransaction);
            user.clickTool("Save");
            EXPECT_EQ(value(user, row), "5'管");
        });
        EXPECT_EQ(goods(101), before);
        EXPECT_EQ(item(101).at(0).at(1), "内六角螺丝");
    }
    EXPECT_EQ(stage.list.refreshes, Texts{});
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorBadInput, aTextThatClosesItsOwnQuotesIsPartOfItsStatementAndOfNoOther) {
    stage.openItem(101, [](User& user) {
        user.typeCell("fps1", kValue, kModelRow, "'+(select fname from tblItem where fitemid=12)+'");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    const std::string model = database().value("select fModel from ICItem where fitemid=101");
    EXPECT_EQ(model, database().value("select fname from tblItem where fitemid=12")) << "what the login may read";
    const Rows before = goods(101);
    stage.openItem(101, [](User& user) {
        user.typeCell("fps1", kValue, kModelRow, "' delete from tblItem where '1'='1");
        user.answer(MessageKind::critical, "关键字 'delete' 附近有语法错误。");
        user.clickTool("Save");
    });
    EXPECT_EQ(goods(101), before);
}

TEST_F(EditorBadInput, aQuoteInTheNameOfAStoredAttachmentUndoesTheChange) {
    stage.storeAttachment(4, "a.txt", "a");
    stage.openItem(101, [](User& user) {
        typeName(user, "内六角");
        user.chooseTab("SSTab1", 1);
        user.typeCell("fps2", 3, 1, "5'图");
        user.answer(MessageKind::critical, "字符串 ' where fitemid=101 and fentryid=4' 后的引号不完整。");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(101).at(0).at(1), "内六角螺丝");
    EXPECT_EQ(database().value("select fName from tblItemFJ where fItemId=101"), "附件");
}

TEST_F(EditorBadInput, aQuoteInTheNameOfANewAttachmentIsStored) {
    const std::string file = stage.makeFile("5'.txt", "a");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "5'图");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().rows("select fName,fFileName from tblItemFJ where fItemId=101"), (Rows{{"5'图", "5'.txt"}}));
}

TEST_F(EditorBadInput, aNumberThatAWholeColumnCannotHoldIsRefusedByTheStore) {
    constexpr int kPiecesRow = kSupplierRow + 1;
    database().execute("alter table ICItem add FSelf3A1 int");
    database().execute(
        "insert into tblTableInfo(fIsVisible,fInterId,fItemClassId,fName,fFieldName,fNumberDec,fIsNull,fValueItemId,"
        "fItemType,fFieldType,fIsLock) values(1,90,3,'件数','FSelf3A1',2,0,0,'0',13,0)");
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.typeCell("fps1", kValue, kPiecesRow, "12.5");
        user.answer(MessageKind::critical, "在将 varchar 值 '12.5' 转换成数据类型 int 时失败。");
        user.clickTool("Save");
        user.typeCell("fps1", kValue, kPiecesRow, "3000000000");
        user.answer(MessageKind::critical, "varchar 值 '3000000000' 的转换溢出了 int 列。");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kPiecesRow), "3000000000");
        user.typeCell("fps1", kValue, kPiecesRow, "2147483647");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().rows("select fItemId,FSelf3A1 from ICItem where fItemId>202"), (Rows{{"205", "2147483647"}}));
}

TEST_F(EditorBadInput, aChangeIntoACategoryDeletedMeanwhileLeavesTheItemWithoutAPlace) {
    stage.openItem(103, [this](User& user) {
        database().execute("delete from tblItem where fItemId=14");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(103), (Rows{{"02.001", "墙壁开关", "3", "0", "1", "0", "0", "", "001"}}));
}

}  // namespace
}  // namespace orvenmod::test
