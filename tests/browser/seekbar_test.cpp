// The search bar: fields, operators, and the condition that they make.
#include <gtest/gtest.h>

#include <fstream>

#include "browser/browsertest.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Combo;
using platform::DatePicker;
using platform::Edit;

constexpr int kName = 2;
constexpr int kMinQty = 3;
constexpr int kFiled = 4;

Texts column(const Combo& combo, int which) {
    Texts cells;
    for (int row = 0; row < combo.rowCount(); ++row)
        cells.push_back(combo.cell(row, which));
    return cells;
}

class SeekConditions : public BrowserTest {
protected:
    void open(const Steps& steps) { stage.open(kManagement, steps); }
    /// The condition behind the list after a search.
    static std::string conditionOf(User& user) {
        user.click("cmdFind");
        return appState().gListFilter;
    }
    static std::string textCondition(User& user, int operation, const std::string& value) {
        user.pick("PC", kName, 0);
        user.pick("PC", operation, 1);
        user.type("txtSearch", value);
        return conditionOf(user);
    }
    void writeIni(const std::string& text) { std::ofstream(stage.iniFile()) << text; }
};

TEST_F(SeekConditions, theFieldsComeFromTheMetadataBehindTheRowNone) {
    open([](User& user) {
        const auto& fields = user.control<Combo>("PC", 0);
        EXPECT_EQ(column(fields, 0), (Texts{"无", "代码", "名称", "最低库存", "建档日期"}));
        EXPECT_EQ(column(fields, 1), (Texts{"", "fNumber", "fName", "fMinQty", "fF"}));
        EXPECT_EQ(column(fields, 2), (Texts{"", "2", "2", "1", "3"}));
        EXPECT_EQ(fields.listRows(), 5);
    });
}

TEST_F(SeekConditions, aFieldCarriesItsClassItsNameFlagAndTheClassesType) {
    database().execute("update tblFindinfoEntry2 set fItemClassId=1,fNumberName=1 where fTypeId=6003 and fEntryId=2");
    open([](User& user) {
        const auto& fields = user.control<Combo>("PC", 0);
        EXPECT_EQ(fields.cell(kName, 3) + "|" + fields.cell(kName, 4) + "|" + fields.cell(kName, 5), "1|1|0");
        EXPECT_EQ(fields.cell(1, 5), "0") << "no class";
        EXPECT_EQ(fields.cell(0, 3), "");
    });
}

TEST_F(SeekConditions, withoutFieldsOnlyTheRowNoneIsOfferedAndASearchListsAll) {
    database().execute("delete from tblFindinfoEntry2 where fTypeId=6003");
    open([](User& user) {
        EXPECT_EQ(column(user.control<Combo>("PC", 0), 0), Texts{"无"});
        user.clickNode("tv1", "D14");
        EXPECT_EQ(conditionOf(user), "");
        EXPECT_EQ(codes(user).size(), 4U);
    });
}

TEST_F(SeekConditions, theRowNoneOffersNoOperatorsAndListsAll) {
    open([](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).selected(), 0);
        EXPECT_EQ(user.control<Combo>("PC", 1).rowCount(), 0);
        EXPECT_EQ(user.control<Combo>("PC", 1).listRows(), 0);
        user.pick("PC", kName, 0);
        user.pick("PC", 0, 0);
        EXPECT_EQ(user.control<Combo>("PC", 1).rowCount(), 0);
        EXPECT_EQ(conditionOf(user), "");
    });
}

TEST_F(SeekConditions, aNumberOffersSixComparisons) {
    open([](User& user) {
        user.pick("PC", kMinQty, 0);
        const auto& operators = user.control<Combo>("PC", 1);
        EXPECT_EQ(column(operators, 0), (Texts{"大于", "大于等于", "等于", "小于", "小于等于", "不等于"}));
        EXPECT_EQ(column(operators, 1), (Texts{">", ">=", "=", "<", "<=", "<>"}));
        EXPECT_EQ(operators.selected(), 0);
        EXPECT_EQ(operators.listRows(), 6);
        EXPECT_TRUE(user.control<Edit>("txtSearch").visible());
        EXPECT_FALSE(user.control<DatePicker>("dtp").visible());
    });
}

TEST_F(SeekConditions, aTextOffersEightComparisonsAndStartsWithContains) {
    open([](User& user) {
        user.pick("PC", kName, 0);
        const auto& operators = user.control<Combo>("PC", 1);
        EXPECT_EQ(column(operators, 0),
                  (Texts{"等于", "包含", "不包含", "不等于", "为空", "不为空", "大于等于", "小于等于"}));
        EXPECT_EQ(column(operators, 1), (Texts{"=", "Like", "Not like", "<>", "Is null", " is not  null", ">=", "<="}));
        EXPECT_EQ(operators.selected(), 1);
        EXPECT_EQ(operators.listRows(), 8);
    });
}

TEST_F(SeekConditions, aDateOffersSixComparisonsAndTheDatePickerWithToday) {
    open([](User& user) {
        user.pick("PC", kFiled, 0);
        const auto& operators = user.control<Combo>("PC", 1);
        EXPECT_EQ(column(operators, 0), (Texts{"等于", "不等于", "大于", "大于等于", "小于", "小于等于"}));
        EXPECT_EQ(column(operators, 1), (Texts{"=", "<>", ">", ">=", "<", "<="}));
        EXPECT_EQ(operators.selected(), 0);
        EXPECT_FALSE(user.control<Edit>("txtSearch").visible());
        EXPECT_TRUE(user.control<DatePicker>("dtp").visible());
        EXPECT_EQ(user.control<DatePicker>("dtp").value(), (platform::Date{2026, 11, 20}));
        user.pick("PC", kName, 0);
        EXPECT_TRUE(user.control<Edit>("txtSearch").visible());
        EXPECT_FALSE(user.control<DatePicker>("dtp").visible());
    });
}

TEST_F(SeekConditions, aKindThatIsUnknownLeavesTheBoxesAndOffersNothing) {
    database().execute("update tblFindinfoEntry2 set fNumType=9 where fTypeId=6003 and fEntryId=1");
    open([](User& user) {
        user.pick("PC", kFiled, 0);
        user.pick("PC", 1, 0);
        EXPECT_EQ(user.control<Combo>("PC", 1).rowCount(), 0);
        EXPECT_TRUE(user.control<DatePicker>("dtp").visible());
        user.answer(MessageKind::critical, "')' 附近有语法错误。");
        EXPECT_EQ(conditionOf(user), " and ( )");
        user.pick("PC", 0, 0);
        EXPECT_EQ(conditionOf(user), "");
    });
}

TEST_F(SeekConditions, aNumberConditionHasTwoBlanksInFrontAndNoneBeforeTheValue) {
    database().execute("update ICItem set fMinQty=3 where fItemId=102");
    open([&](User& user) {
        user.pick("PC", kMinQty, 0);
        user.type("txtSearch", "  2.5 ");
        EXPECT_EQ(conditionOf(user), " and (  fMinQty >2.5 )");
        EXPECT_EQ(stage.lastStatement(),
                  "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and (  fMinQty >2.5 ) order by "
                  "fnumber ");
        EXPECT_EQ(codes(user), Texts{"01.01.002"});
        user.pick("PC", 5, 1);
        EXPECT_EQ(conditionOf(user), " and (  fMinQty <>2.5 )");
    });
}

TEST_F(SeekConditions, aNumberConditionWithoutAValueIsNone) {
    open([](User& user) {
        user.pick("PC", kMinQty, 0);
        user.type("txtSearch", "   ");
        EXPECT_EQ(conditionOf(user), "");
        EXPECT_EQ(codes(user).size(), 4U);
    });
}

TEST_F(SeekConditions, aTextConditionFollowsTheCaption) {
    open([](User& user) {
        EXPECT_EQ(textCondition(user, 0, " 螺母 "), " and (  fName='螺母')");
        EXPECT_EQ(codes(user), Texts{"01.01.002"});
        EXPECT_EQ(textCondition(user, 1, "螺"), " and (  fName like '%螺%' )");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        EXPECT_EQ(textCondition(user, 2, "螺"), " and (  fName not like '%螺%' )");
        EXPECT_EQ(codes(user), (Texts{"02.001", "03"}));
        EXPECT_EQ(textCondition(user, 3, "螺母"), " and (  fName<>'螺母')");
        EXPECT_EQ(textCondition(user, 6, "螺"), " and (  fName>='螺')");
        EXPECT_EQ(textCondition(user, 7, "螺"), " and (  fName<='螺')");
    });
}

TEST_F(SeekConditions, theEmptyConditionsIgnoreTheValue) {
    open([](User& user) {
        EXPECT_EQ(textCondition(user, 4, "螺'"), " and (  fName  is null )");
        EXPECT_EQ(codes(user), Texts{});
        EXPECT_EQ(textCondition(user, 5, "螺'"), " and (  fName  is not null )");
        EXPECT_EQ(codes(user).size(), 4U);
    });
}

TEST_F(SeekConditions, anEmptyTextIsAValue) {
    open([](User& user) {
        EXPECT_EQ(textCondition(user, 1, ""), " and (  fName like '%%' )");
        EXPECT_EQ(codes(user).size(), 4U);
        EXPECT_EQ(textCondition(user, 0, ""), " and (  fName='')");
        EXPECT_EQ(codes(user), Texts{});
    });
}

TEST_F(SeekConditions, aDateConditionTakesTheDateAsText) {
    database().execute("update ICItem set fF='2026-02-03' where fItemId=103");
    open([](User& user) {
        user.pick("PC", kFiled, 0);
        user.pickDate("dtp", {2026, 2, 3});
        EXPECT_EQ(conditionOf(user), " and (  fF ='2026-02-03' )");
        EXPECT_EQ(codes(user), Texts{"02.001"});
        user.pick("PC", 3, 1);
        EXPECT_EQ(conditionOf(user), " and (  fF >='2026-02-03' )");
    });
}

TEST_F(SeekConditions, clearingEmptiesTheValueAndLeavesCombosAndList) {
    open([&](User& user) {
        user.pick("PC", kName, 0);
        user.pick("PC", 0, 1);
        user.type("txtSearch", "螺母");
        user.click("cmdFind");
        user.control<DatePicker>("dtp").setValue({2000, 1, 1});
        stage.forgetStatements();
        user.click("cmdClear");
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "");
        EXPECT_EQ(user.control<DatePicker>("dtp").value(), (platform::Date{2026, 11, 20}));
        EXPECT_EQ(user.control<Combo>("PC", 0).selected(), kName);
        EXPECT_EQ(user.control<Combo>("PC", 1).selected(), 0);
        EXPECT_EQ(codes(user), Texts{"01.01.002"});
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(SeekConditions, anotherComparisonChangesNothingElse) {
    open([&](User& user) {
        user.pick("PC", kName, 0);
        user.type("txtSearch", "螺");
        stage.forgetStatements();
        user.pick("PC", 0, 1);
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "螺");
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(SeekConditions, theFieldIsKeptForTheNextUseOfTheClassButNoCondition) {
    open([](User& user) { textCondition(user, 0, "螺母"); });
    EXPECT_EQ(Stage::contents(stage.iniFile()).find("JCZLA3"), Stage::contents(stage.iniFile()).rfind("JCZLA3"));
    open([](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).selected(), kName);
        EXPECT_EQ(user.control<Combo>("PC", 1).selected(), 1) << "the default";
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "");
        EXPECT_EQ(codes(user).size(), 4U);
    });
    stage.open({.itemClass = 1}, [](User& user) { EXPECT_EQ(user.control<Combo>("PC", 0).selected(), 0); });
}

TEST_F(SeekConditions, theFirstUseWritesBothKeys) {
    open([&](User&) {
        const std::string ini = Stage::contents(stage.iniFile());
        EXPECT_NE(ini.find("[Orvenmod]"), std::string::npos) << ini;
        EXPECT_NE(ini.find("JCZLA3"), std::string::npos) << ini;
        EXPECT_NE(ini.find("JCZLB3"), std::string::npos) << ini;
    });
}

TEST_F(SeekConditions, theIniFileKeepsItsOrderCommentsAndOtherKeys) {
    writeIni("; 套件\n[Other]\nkey=1\n[Orvenmod]\nJCZLA1=2\nJCZLA3=1\nforeign=x\n");
    open([](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).selected(), 1);
        user.pick("PC", kName, 0);
    });
    const std::string ini = Stage::contents(stage.iniFile());
    std::size_t at = 0;
    for (const char* part : {"; 套件", "[Other]", "key", "[Orvenmod]", "JCZLA1", "JCZLA3", "foreign"}) {
        at = ini.find(part, at);
        EXPECT_NE(at, std::string::npos) << part << " in\n" << ini;
    }
}

TEST_F(SeekConditions, aSavedIndexBeyondTheRowsChoosesTheRowNone) {
    for (const char* saved : {"5", "99", "-1"}) {
        writeIni(std::string("[Orvenmod]\nJCZLA3=") + saved + "\n");
        stage.open({.findValue = "螺"}, [](User& user) {
            EXPECT_EQ(user.control<Combo>("PC", 0).selected(), 0);
            EXPECT_EQ(user.control<Combo>("PC", 1).rowCount(), 0);
            EXPECT_EQ(user.control<Edit>("txtSearch").text(), "螺") << "the load goes on";
        });
    }
}

TEST_F(SeekConditions, aSavedIndexThatIsNoNumberIsToldAndTheWindowGoesOn) {
    writeIni("[Orvenmod]\nJCZLA3=abc\n");
    script().answer(MessageKind::critical, "类型不匹配", Answer::ok);
    open([](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).rowCount(), 5);
        EXPECT_EQ(codes(user).size(), 4U);
        user.pick("PC", kName, 0);
        EXPECT_EQ(conditionOf(user), " and (  fName like '%%' )");
    });
}

TEST_F(SeekConditions, missingFieldTablesAreToldAndTheWindowGoesOn) {
    database().execute("drop table tblFindinfoEntry2");
    script().answer(MessageKind::critical, "对象名 'tblFindInfoentry2' 无效。", Answer::ok);
    open([](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).rowCount(), 0);
        EXPECT_EQ(codes(user).size(), 4U);
        EXPECT_EQ(conditionOf(user), "");
    });
}

TEST_F(SeekConditions, theHostsValueShowsWhateverFieldIsSelected) {
    writeIni("[Orvenmod]\nJCZLA3=3\n");
    stage.open({.findValue = "螺"}, [](User& user) {
        EXPECT_EQ(user.control<Combo>("PC", 0).selected(), kMinQty);
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "螺");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
    });
}

}  // namespace
}  // namespace orvenmod::test
