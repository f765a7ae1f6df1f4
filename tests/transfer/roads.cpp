#include "transfer/roads.h"

#include <fstream>

#include "support/keyboardwalk.h"
#include "support/spreadsheet.h"
#include "transfer/frmImport_design.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Frame;
using platform::ListGrid;

const std::vector<std::string> kHeadings = {"短代码",   "名称",     "规格型号", "最低库存",
                                            "建档日期", "主供应商", "所属分类"};

TEST_P(ImportRoads, theWindowIsWorkedByKeyboard) { walkByKeyboard(stage.script(), importDesign()); }

TEST_P(ImportRoads, aClerkBringsAListIn) {
    const std::string file = stage.workbook({kHeadings,
                                             {"003", "垫圈", "M6", "1.5", "2026-3-4", "华南供应", "01.01"},
                                             {"001", "内六角螺丝", "", "", "", "", "五金/螺丝"},
                                             {"002", "螺母", "M8", "", "", "01", "01.01"},
                                             {"", "无代码", "", "", "", "", ""}});
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        EXPECT_TRUE(user.control<Frame>("FrameColumns").visible());
        const auto& columns = user.control<EntryGrid>("fpsColumns");
        EXPECT_EQ(columns.rowCount(), 7);
        EXPECT_EQ(columns.text(2, 2), "垫圈，内六角螺丝，螺母");
        EXPECT_EQ(columns.text(3, 7), "所属分类");
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblCounts"), "共 4 行：新增 1，修改 1，相同 1，拒绝 1");
        EXPECT_EQ(shownRows(user, "vsfCheck", 5), (Rows{{"2", "新增", "", "003", "垫圈"},
                                                        {"3", "相同", "", "001", "内六角螺丝"},
                                                        {"4", "修改", "", "002", "螺母"},
                                                        {"5", "拒绝", "短代码：没有代码", " ◀ 没有代码", "无代码"}}));
        for (const std::string& sent : stage.statements())
            EXPECT_TRUE(sent.starts_with("select ")) << sent;
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 1 行，修改 1 行，拒绝 1 行。");
        EXPECT_EQ(shownRows(user, "vsfResult", 5), (Rows{{"5", "拒绝", "", "无代码", "短代码：没有代码"},
                                                         {"2", "新增", "01.01.003", "垫圈", ""},
                                                         {"4", "修改", "01.01.002", "螺母", ""}}));
        user.click("cmdClose");
    });
    EXPECT_EQ(stage.added(), Texts{"01.01.003|垫圈|13|3|.12.13.203."});
    EXPECT_EQ(stage.database().rows("select fModel,fMinQty,fF,fH from ICItem where fItemId=203"),
              (Rows{{"M6", "1.5", "2026-03-04 00:00:00", "202"}}));
    EXPECT_EQ(stage.database().rows("select fModel,fH from ICItem where fItemId=102"), (Rows{{"M8", "201"}}));
    EXPECT_EQ(stage.behind.refreshes, std::vector<int>{3});
}

TEST_P(ImportRoads, aRefusedRowIsMended) {
    const std::string file = stage.workbook({kHeadings, {"005", "垫圈", "", "很多", "", "华西供应", ""}});
    stage.import([&](User& user) {
        toCheck(user, file);
        EXPECT_EQ(shownRows(user, "vsfCheck", 3)[0][2],
                  "最低库存：请输入 0 到 99999999.99 之间的数；主供应商：没有这一项");
        stage.script().onWindow("frmImportRow", [](User& row) {
            const auto& grid = row.control<EntryGrid>("fps1");
            EXPECT_EQ(grid.text(3, 4), "请输入 0 到 99999999.99 之间的数");
            EXPECT_EQ(grid.activeRow(), 4);
            row.typeCell("fps1", 2, 4, "12");
            row.typeCell("fps1", 2, 6, "02");
            row.click("cmdOK");
        });
        user.doubleClickRow("vsfCheck", 1);
        EXPECT_EQ(caption(user, "lblCounts"), "共 1 行：新增 1，修改 0，相同 0，拒绝 0");
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 1 行，修改 0 行，拒绝 0 行。");
    });
    EXPECT_EQ(stage.database().rows("select fMinQty,fH from ICItem where fItemId=203"), (Rows{{"12", "202"}}));
}

TEST_P(ImportRoads, aRowOfHugeCellsIsMendedInPlace) {
    constexpr std::size_t kBeside = 1U << 20U;
    const std::string huge(10U << 20U, 'x');
    const std::string file = stage.text("短代码,名称,规格型号\n7," + huge + ',' + huge.substr(0, kBeside) + '\n');
    stage.import([&](User& user) {
        toCheck(user, file);
        stage.script().onWindow("frmImportRow", [&huge](User& row) {
            constexpr std::size_t kShown = 32766;
            EXPECT_EQ(row.control<EntryGrid>("fps1").text(2, 3), huge.substr(0, kShown) + "…");
            row.typeCell("fps1", 2, 2, "垫圈");
            row.click("cmdOK");
        });
        user.doubleClickRow("vsfCheck", 1);
        EXPECT_EQ(shownRows(user, "vsfCheck", 3)[0][2].find("名称"), std::string::npos);
        stage.script().onWindow("frmImportRow", [](User& row) {
            row.typeCell("fps1", 2, 3, "M1");
            row.click("cmdOK");
        });
        EXPECT_EQ(shownRows(user, "vsfCheck", 1).size(), 1U);
        user.doubleClickRow("vsfCheck", 1);
        EXPECT_EQ(caption(user, "lblCounts"), "共 1 行：新增 1，修改 0，相同 0，拒绝 0");
    });
}

TEST_P(ImportRoads, refusedRowsAreSavedWithTheirReasonsAndBroughtInAgain) {
    const std::string file = stage.workbook({kHeadings, {"005", "垫圈", "", "很多"}, {"0006", "平垫", "", "1"}});
    const std::string refused = stage.database().folder().file("refused.xlsx");
    stage.import([&](User& user) {
        toCheck(user, file);
        user.chooseFile(refused);
        user.answer(MessageKind::information, "拒绝的行已保存！");
        user.click("cmdSaveRefused");
    });
    EXPECT_EQ(readSpreadsheet(refused),
              (Lines{{"短代码", "名称", "规格型号", "最低库存", "建档日期", "主供应商", "所属分类", "未导入的原因"},
                     {"005", "垫圈", "", "很多", "", "", "", "最低库存：请输入 0 到 99999999.99 之间的数"}}));
    stage.import([&](User& user) {
        toCheck(user, refused);
        EXPECT_EQ(shownRows(user, "vsfCheck", 4),
                  (Rows{{"2", "拒绝", "最低库存：请输入 0 到 99999999.99 之间的数", "005"}}));
    });
}

TEST_P(ImportRoads, whatWasAddedIsTakenBackBehindTheGuardOfTheDelete) {
    const std::string file = stage.workbook({kHeadings, {"005", "垫圈"}, {"006", "平垫"}});
    stage.import([&](User& user) {
        toCheck(user, file);
        user.click("cmdNext");
        stage.database().execute("insert into tblstockbal(fItemId) values(203)");
        user.answer(MessageKind::question, "确定要撤回新增的行吗？", Answer::yes);
        user.click("cmdTakeBack");
        EXPECT_EQ(caption(user, "lblResult"), "新增 1 行，修改 0 行，拒绝 0 行。有 1 行没有撤回。");
        EXPECT_EQ(shownRows(user, "vsfResult", 5)[0][2], "005");
        EXPECT_EQ(shownRows(user, "vsfResult", 5)[0][4], "该项目在库存单据中已经使用,不能删除!");
    });
    EXPECT_EQ(stage.added(), Texts{"005|垫圈|0|1|.203."});
}

TEST_P(ImportRoads, categoriesThatWereMadeAreTakenBackWhereNothingElseIsInThem) {
    const std::string file = stage.workbook(
        {{"短代码", "名称", "所属分类"}, {"9", "a", "五金/垫圈/平垫"}, {"8", "b", "五金/垫圈"}, {"7", "c", "五金/灯"}});
    const auto categories = [this] {
        return stage.database().rows(
            "select fName from tblItem where fItemClassId=3 and fIsDetail=0 and fItemId>202 order by fItemId");
    };
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        user.pick("cmbCategory", 1, -1);
        user.click("cmdNext");
        user.click("cmdNext");
        EXPECT_EQ(categories(), (Rows{{"垫圈"}, {"平垫"}, {"灯"}}));
        stage.database().execute("insert into tblstockbal(fItemId) select fItemId from tblItem where fName='b'");
        user.answer(MessageKind::question, "确定要撤回新增的行吗？", Answer::yes);
        user.click("cmdTakeBack");
        EXPECT_EQ(caption(user, "lblResult"),
                  "新增 1 行，修改 0 行，拒绝 0 行。有 1 行没有撤回。留下新建的分类 1 个。");
        EXPECT_EQ(categories(), Rows{{"垫圈"}});
        stage.database().execute("delete from tblstockbal");
        user.answer(MessageKind::question, "确定要撤回新增的行吗？", Answer::yes);
        user.click("cmdTakeBack");
        EXPECT_EQ(caption(user, "lblResult"), "新增 0 行，修改 0 行，拒绝 0 行。已全部撤回。");
        EXPECT_FALSE(user.control<platform::Button>("cmdTakeBack").enabled());
    });
    EXPECT_EQ(categories(), Rows{});
    EXPECT_EQ(stage.added(), Texts{});
}

TEST_P(ImportRoads, aDisabledItemIsNotTakenBack) {
    const std::string file = stage.workbook({kHeadings, {"005", "垫圈"}});
    stage.import([&](User& user) {
        toCheck(user, file);
        user.click("cmdNext");
        stage.database().execute("update tblItem set fIsLock=1 where fItemId=203");
        user.answer(MessageKind::question, "确定要撤回新增的行吗？", Answer::yes);
        user.click("cmdTakeBack");
        EXPECT_NE(shownRows(user, "vsfResult", 5)[0][4], "");
    });
    EXPECT_EQ(stage.added(), Texts{"005|垫圈|0|1|.203."});
}

TEST_P(ImportRoads, aCancelledRunKeepsWholeRowsAndASecondOneFinishes) {
    Lines lines = {kHeadings};
    for (int i = 1; i <= 1200; ++i)
        lines.push_back({std::to_string(10000 + i), "货" + std::to_string(i)});
    const std::string file = stage.workbook(lines);
    stage.import([&](User& user) {
        toCheck(user, file);
        user.cancelProgress(640);
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 640 行，修改 0 行，拒绝 0 行。已取消，其余的行没有存入。");
        EXPECT_EQ(stage.added().size(), 640U);
        user.click("cmdBack");
        EXPECT_EQ(caption(user, "lblCounts"), "共 1200 行：新增 560，修改 0，相同 640，拒绝 0");
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 560 行，修改 0 行，拒绝 0 行。");
    });
    EXPECT_EQ(stage.added().size(), 1200U);
}

}  // namespace
}  // namespace orvenmod::test
