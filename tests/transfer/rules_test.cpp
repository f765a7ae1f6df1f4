// How the check judges a row, and what the options change.
#include <cstdint>
#include <functional>
#include <unordered_map>
#include <utility>

#include "transfer/importtest.h"

namespace orvenmod::test {
namespace {

constexpr int kFound = 1;

class ImportRules : public ImportTest {
protected:
    static void nothing(User&) {}

    /// State, reasons of each row as the check shows them.
    Rows judged(const Lines& lines, const Steps& choose = nothing) {
        Rows rows;
        check(lines, choose, [&](User& user) {
            for (const auto& row : shownRows(user, "vsfCheck", 3))
                rows.push_back({row[1], row[2]});
        });
        return rows;
    }
    /// Imports it all and gives what was added.
    Texts stored(const Lines& lines, const Steps& choose = nothing) {
        check(lines, choose, [](User& user) { user.click("cmdNext"); });
        return stage.added();
    }

private:
    void check(const Lines& lines, const Steps& choose, const Steps& then) {
        const std::string file = stage.workbook(lines);
        stage.import([&](User& user) {
            user.type("txtFile", file, -1);
            user.click("cmdNext");
            choose(user);
            user.click("cmdNext");
            then(user);
        });
    }
};

TEST_F(ImportRules, whatMustBeFilledMustBeFilled) {
    database().execute("update tblTableInfo set fIsNull=1 where fItemClassId=3 and fFieldName='fModel'");
    EXPECT_EQ(judged({{"短代码", "名称", "规格型号"}, {"9", "", ""}, {"8", "a", "b"}}),
              (Rows{{"拒绝", "名称不能为空!；规格型号不能为空!"}, {"新增", ""}}));
}

TEST_F(ImportRules, lengthsAreThoseThatTheStoreTakes) {
    std::string name;
    for (int i = 0; i < 50; ++i)
        name += "长";
    EXPECT_EQ(judged({{"短代码", "名称"}, {"9", name}, {"8", name + "长"}}),
              (Rows{{"新增", ""}, {"拒绝", "名称：太长，最多 50 个汉字或 100 个字母"}}));
    EXPECT_EQ(stored({{"短代码", "名称"}, {"9", name}}), Texts{"9|" + name + "|0|1|.203."});
}

TEST_F(ImportRules, daysAndNumbersAreUnderstoodAsTheEditorDoes) {
    stored({{"短代码", "名称", "最低库存", "建档日期"}, {"9", "a", "１，２３４．５", "26-3-4"}});
    EXPECT_EQ(database().rows("select fMinQty,fF from ICItem where fItemId=203"),
              (Rows{{"1234.5", "2026-03-04 00:00:00"}}));
}

TEST_F(ImportRules, aLookupIsFoundByItsCodeOrByAnOnlyName) {
    database().addItem(2, 209, "09", "华东供应");
    EXPECT_EQ(
        judged({{"短代码", "名称", "主供应商"},
                {"9", "a", "09"},
                {"8", "b", "华南供应"},
                {"7", "c", "华东供应"},
                {"6", "d", "华"}}),
        (Rows{
            {"新增", ""}, {"新增", ""}, {"拒绝", "主供应商：有多项符合，请用代码"}, {"拒绝", "主供应商：没有这一项"}}));
}

TEST_F(ImportRules, aCodeMayStandOnceInTheFileAndNeverForACategory) {
    EXPECT_EQ(judged({{"短代码", "名称"}, {"9", "a"}, {"9", "b"}, {"02", "c"}}),
              (Rows{{"新增", ""}, {"拒绝", "代码：与第2行的代码重复"}, {"拒绝", "代码已经存在，是一个分类"}}));
}

/// Two codes that a check can't tell apart by its notes of them.
std::pair<std::string, std::string> codesThatHashAlike() {
    std::unordered_map<std::uint32_t, std::string> seen;
    for (int number = 1000000;; ++number) {
        std::string code = std::to_string(number);
        const auto hash = static_cast<std::uint32_t>(std::hash<std::string>()(code));
        const auto [other, fresh] = seen.emplace(hash, code);
        if (!fresh) return {other->second, code};
    }
}

TEST_F(ImportRules, codesThatHashAlikeAreStillTwo) {
    const auto [one, other] = codesThatHashAlike();
    EXPECT_EQ(
        judged({{"短代码", "名称"}, {one, "a"}, {other, "b"}, {one, "c"}, {other, "d"}}),
        (Rows{{"新增", ""}, {"新增", ""}, {"拒绝", "代码：与第2行的代码重复"}, {"拒绝", "代码：与第3行的代码重复"}}));
}

TEST_F(ImportRules, aWholeCodeFindsItsCategoryAndMustFitIt) {
    EXPECT_EQ(stored({{"代码", "名称", "所属分类"}, {"01.01.9", "a", ""}, {"02.9", "b", "电器"}, {"9.9", "c", ""}}),
              (Texts{"01.01.9|a|13|3|.12.13.203.", "02.9|b|14|2|.14.204.", "9.9|c|0|1|.205."}));
    EXPECT_EQ(judged({{"代码", "名称", "所属分类"}, {"01.8", "a", "02"}}),
              (Rows{{"拒绝", "代码：与分类和短代码不符，应为 02."}}));
}

TEST_F(ImportRules, missingCategoriesAreRefusedOrMadeWithTheirParents) {
    const Lines lines = {
        {"短代码", "名称", "所属分类"}, {"9", "a", "五金/垫圈/平垫"}, {"8", "b", "五金/垫圈"}, {"7", "c", "03.01"}};
    EXPECT_EQ(judged(lines)[0], (Texts{"拒绝", "所属分类：没有这个分类"}));
    EXPECT_EQ(stored(lines, [](User& user) { user.pick("cmbCategory", 1, -1); }),
              (Texts{"01.02|垫圈|12|2|.12.203.", "01.02.001|平垫|203|3|.12.203.204.",
                     "01.02.001.9|a|204|4|.12.203.204.205.", "01.02.8|b|203|3|.12.203.206."}));
}

TEST_F(ImportRules, aMissingCategoryGetsACodeThatNoItemHas) {
    database().addItem(3, 150, "01.02", "链", 12);
    EXPECT_EQ(stored({{"短代码", "名称", "所属分类"}, {"9", "a", "五金/垫圈"}},
                     [](User& user) { user.pick("cmbCategory", 1, -1); }),
              (Texts{"01.03|垫圈|12|2|.12.203.", "01.03.9|a|203|3|.12.203.204."}));
}

TEST_F(ImportRules, aMissingCategoryIsAsLongAsTheStoreTakesAtMost) {
    std::string name;
    for (int i = 0; i < 51; ++i)
        name += "长";
    EXPECT_EQ(judged({{"短代码", "名称", "所属分类"}, {"9", "a", "五金/" + name}, {"8", "b", name + "/短"}},
                     [](User& user) { user.pick("cmbCategory", 1, -1); }),
              (Rows{{"拒绝", "所属分类：太长，最多 50 个汉字或 100 个字母"},
                    {"拒绝", "所属分类：太长，最多 50 个汉字或 100 个字母"}}));
}

TEST_F(ImportRules, whatIsFoundByItsCodeIsChangedOrLeft) {
    const Lines lines = {{"代码", "名称"}, {"02.001", "新开关"}};
    EXPECT_EQ(judged(lines)[0][0], "修改");
    EXPECT_EQ(judged(lines, [](User& user) { user.pick("cmbFound", kFound, -1); })[0][0], "相同");
    database().execute("update tblItem set fisLock=1 where fItemId=103");
    EXPECT_EQ(judged(lines), (Rows{{"拒绝", "代码：该项目已经禁用!不能修改"}}));
}

TEST_F(ImportRules, aChangeKeepsWhatTheFileDoesNotTell) {
    database().execute("update ICItem set fModel='M5',fMinQty=3,fF='2026-02-03',fH=201 where fItemId=101");
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'.bmp')");
    stored({{"代码", "规格型号"}, {"01.01.001", "M6"}});
    EXPECT_EQ(database().rows("select fNumber,fName,fModel,fMinQty,fF,fH from ICItem where fItemId=101"),
              (Rows{{"01.01.001", "内六角螺丝", "M6", "3", "2026-02-03 00:00:00", "201"}}));
    EXPECT_EQ(database().rows("select fHZ from ICItemPhoto where fItemId=101"), (Rows{{".bmp"}}));
    EXPECT_EQ(database().value("select fNBNumber from tblItem where fItemId=101"), ".12.13.101.");
}

TEST_F(ImportRules, aDoubledNameIsStoredOrRefused) {
    const Lines lines = {{"短代码", "名称"}, {"9", "螺母"}};
    EXPECT_EQ(judged(lines)[0][0], "新增");
    EXPECT_EQ(judged(lines, [](User& user) { user.pick("cmbName", 1, -1); }), (Rows{{"拒绝", "名称已经存在"}}));
}

TEST_F(ImportRules, columnsGoWhereTheyWentTheLastTime) {
    const std::string file = stage.workbook({{"货号", "品名"}, {"9", "垫圈"}});
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        user.pickCell("fpsColumns", 3, 1, 1);
        user.pickCell("fpsColumns", 3, 2, 3);
        user.click("cmdNext");
    });
    stage.import([&](User& user) {
        toCheck(user, file);
        EXPECT_EQ(caption(user, "lblCounts"), "共 1 行：新增 1，修改 0，相同 0，拒绝 0");
    });
}

TEST_F(ImportRules, changesAndCategoriesTakeTheirOwnRights) {
    appState().gIsAdmin = 0;
    const std::string file = stage.workbook({{"短代码", "名称"}, {"9", "垫圈"}});
    const auto refused = [](User& user) {
        user.answer(MessageKind::warning, kRefusal);
        user.click("cmdNext");
        EXPECT_TRUE(user.control<platform::Frame>("FrameColumns").visible());
    };
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        refused(user);
        user.pick("cmbFound", kFound, -1);
        user.pick("cmbCategory", 1, -1);
        refused(user);
        user.pick("cmbCategory", 0, -1);
        user.click("cmdNext");
        user.click("cmdNext");
        user.answer(MessageKind::warning, kRefusal);
        user.click("cmdTakeBack");
    });
    EXPECT_EQ(stage.added().size(), 1U);
}

}  // namespace
}  // namespace orvenmod::test
