// A list that its user sorts, narrows and dresses: what means a row means the one that shows, and no statement is sent.
#include <filesystem>
#include <fstream>

#include "browser/roads.h"
#include "support/spreadsheet.h"

namespace orvenmod::test {
namespace {

using platform::EntryGrid;
using platform::ListGrid;

constexpr int kCode = 2;
constexpr int kName = 3;
constexpr int kStock = 5;

ListGrid& listOf(User& user) { return user.control<ListGrid>("vsf1"); }

/// Every arrangement of the goods, each with a row to act on that stands elsewhere in the told order.
struct Arrangement {
    const char* told;
    Steps arrange;
};
const std::vector<Arrangement>& arrangements() {
    static const std::vector<Arrangement> kAll = {
        {"up by name", [](User& user) { user.clickHeading("vsf1", kName); }},
        {"down by code",
         [](User& user) {
             user.clickHeading("vsf1", kCode);
             user.clickHeading("vsf1", kCode);
         }},
        {"up by number", [](User& user) { user.clickHeading("vsf1", kStock); }},
        {"narrowed",
         [](User& user) {
             user.press("Ctrl+F");
             user.typeKeys("02");
             user.press("Enter");
         }},
        {"sorted and narrowed",
         [](User& user) {
             user.clickHeading("vsf1", kCode);
             user.clickHeading("vsf1", kCode);
             user.press("Ctrl+F");
             user.typeKeys("l");
             user.press("Enter");
         }},
    };
    return kAll;
}

Texts shownCodes(User& user) { return codes(user); }

void lastRow(User& user) { user.selectRow("vsf1", listOf(user).rowCount() - 1); }

void fillCatalogues(Database& database) {
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        database.execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                         ",'fCustId',1)");
    }
}

TEST_P(Roads, sortingAndNarrowingSendNoStatement) {
    stage.open(kPicker, [this](User& user) {
        stage.forgetStatements();
        for (const Arrangement& each : arrangements())
            each.arrange(user);
        user.dragHeading("vsf1", kStock, kCode);
        user.press("Ctrl+C");
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_P(Roads, aClickOnAHeadingSortsByNumbersAndByChineseLetters) {
    stage.open(kPicker, [](User& user) {
        user.clickHeading("vsf1", kName);
        EXPECT_EQ(shownCodes(user), (Texts{"03", "01.01.002", "01.01.001", "02.001"})) << "lao luo nei qiang";
        user.clickHeading("vsf1", kStock);
        EXPECT_EQ(shownCodes(user), (Texts{"02.001", "01.01.001", "01.01.002", "03"})) << "5, 1244.5, blanks";
        user.clickHeading("vsf1", kStock);
        EXPECT_EQ(shownCodes(user), (Texts{"01.01.001", "02.001", "01.01.002", "03"}));
        user.clickHeading("vsf1", kStock);
        EXPECT_EQ(shownCodes(user), (Texts{"01.01.001", "01.01.002", "02.001", "03"}));
    });
}

TEST_P(Roads, theEditorOpensOnTheRowThatShows) {
    for (const Arrangement& each : arrangements()) {
        stage.set("ListColumns", "7.3", "");
        stage.open(kManagement, [&](User& user) {
            if (std::string(each.told) == "up by number") return;  // a manager's list has no stock
            each.arrange(user);
            lastRow(user);
            const int row = listOf(user).rowCount() - 1;
            const std::string id = listOf(user).text(row, 1);
            stage.script().onWindow("frmBasicInfo",
                                    [&](User&) { EXPECT_EQ(std::to_string(appState().gCurItemId), id) << each.told; });
            user.press("Ctrl+U");
        });
    }
}

TEST_P(Roads, aPickerGivesBackTheRowThatShows) {
    for (const Arrangement& each : arrangements()) {
        stage.set("ListColumns", "7.3", "");
        std::string id;
        stage.open(kPicker, [&](User& user) {
            each.arrange(user);
            const int row = listOf(user).rowCount() - 1;
            id = listOf(user).text(row, 1);
            user.doubleClickRow("vsf1", row);
        });
        EXPECT_EQ(stage.fItemId, id) << each.told;
    }
}

TEST_P(Roads, theLastOfSeveralSelectedRowsIsTheLastThatShows) {
    stage.open(kPicker, [](User& user) {
        user.clickHeading("vsf1", kCode);
        user.clickHeading("vsf1", kCode);
        user.selectRow("vsf1", 4);
        user.alsoSelectRow("vsf1", 2);
        user.press("Enter");
    });
    EXPECT_EQ(stage.fNumber, "01.01.001");
}

TEST_P(Roads, aRowThatWasNarrowedAwayIsMeantByNothing) {
    stage.open(kPicker, [](User& user) {
        user.selectRow("vsf1", 4);
        user.press("Ctrl+F");
        user.typeKeys("螺母");
        user.press("Enter");
        user.press("Enter");
    });
    EXPECT_EQ(stage.fNumber, "01.01.002");
}

TEST_P(Roads, aBillTakesTheRowsThatShowAndTheirStock) {
    for (const Arrangement& each : arrangements()) {
        stage.set("ListColumns", "7.3", "");
        stage.open(kBillPicker, [&](User& user) {
            each.arrange(user);
            auto& bill = user.control<EntryGrid>("fps1");
            const int last = listOf(user).rowCount() - 1;
            for (int row = 1; row <= last; ++row) {
                user.doubleClickRow("vsf1", row);
                EXPECT_EQ(bill.text(1, row), listOf(user).text(row, kCode)) << each.told;
                const std::string stock = listOf(user).text(row, kStock);
                const std::string expected = stock.empty() ? "0" : stock == "1,244.5" ? "1" : stock;
                EXPECT_EQ(bill.text(5, row).substr(0, 1), expected) << each.told;
            }
        });
    }
}

TEST_P(Roads, aDeleteTakesTheRowThatShows) {
    fillCatalogues(stage.database());
    stage.database().addItem(3, 110, "09.1", "轴承乙", 14);
    stage.database().addItem(3, 111, "09.2", "轴承甲", 14);
    stage.open(kManagement, [](User& user) {
        user.clickHeading("vsf1", kName);
        EXPECT_EQ(shownCodes(user).at(4), "09.2");
        user.press("Ctrl+F");
        user.typeKeys("zc");
        user.selectRow("vsf1", 1);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.chooseMenu("MenuEditDelete");
        EXPECT_EQ(shownCodes(user), Texts{"09.1"});
        EXPECT_EQ(listOf(user).currentRow(), 1);
        user.press("Esc");
        EXPECT_EQ(shownCodes(user), (Texts{"03", "01.01.002", "01.01.001", "02.001", "09.1"}));
        user.clickHeading("vsf1", kName);
        user.clickHeading("vsf1", kName);
        EXPECT_EQ(shownCodes(user), (Texts{"01.01.001", "01.01.002", "02.001", "03", "09.1"}));
    });
    EXPECT_EQ(stage.database().rows("select fItemId from tblItem where fItemId in (110,111)"), (Rows{{"110"}}));
}

TEST_P(Roads, theExportIsTheListAsItShows) {
    const TemporaryFolder folder;
    for (const std::size_t which : {1U, 4U}) {
        const Arrangement& each = arrangements()[which];
        stage.set("ListColumns", "7.3", "");
        Texts shown;
        stage.open(kPicker, [&](User& user) {
            each.arrange(user);
            user.dragHeading("vsf1", kName, kCode);
            shown = shownCodes(user);
            user.chooseFile(folder.file("list.xlsx"));
            user.answer(MessageKind::information, "导出成功!");
            user.clickTool("Excel");
        });
        const Rows rows = readSpreadsheet(folder.file("list.xlsx"));
        ASSERT_EQ(rows.size(), shown.size() + 1) << each.told;
        EXPECT_EQ(rows[0][0] + rows[0][1], "名称代码");
        for (std::size_t row = 0; row < shown.size(); ++row)
            EXPECT_EQ(rows[row + 1][1], shown[row]) << each.told;
    }
}

TEST_P(Roads, theArrangementOutlivesASearchATreeNodeAndASave) {
    stage.open(kPicker, [](User& user) {
        user.clickHeading("vsf1", kCode);
        user.clickHeading("vsf1", kCode);
        user.clickNode("tv1", "D12");
        EXPECT_EQ(shownCodes(user), (Texts{"01.01.002", "01.01.001"}));
        EXPECT_EQ(listOf(user).currentRow(), 1);
        EXPECT_TRUE(listOf(user).isSelected(1));
        user.press("Ctrl+F");
        user.typeKeys("lm");
        user.clickNode("tv1", "D0");
        EXPECT_EQ(shownCodes(user), Texts{"01.01.002"});
        EXPECT_EQ(listOf(user).narrowing(), "lm");
    });
}

TEST_P(Roads, aBlankedZeroSortsAndIsFoundAsTheBlankItShowsAs) {
    stage.open(kPicker, [](User& user) {
        user.press("Ctrl+F");
        user.typeKeys("0.00");
        EXPECT_EQ(shownCodes(user), Texts{});
        user.press("Ctrl+F");
        user.typeKeys("1244");
        EXPECT_EQ(shownCodes(user), Texts{"01.01.001"}) << "it shows as 1,244.5";
        user.press("Esc");
        user.clickHeading("vsf1", kStock);
        EXPECT_EQ(shownCodes(user).front(), "02.001");
    });
}

TEST_P(Roads, theColumnsAreAsTheUserLeftThem) {
    stage.open(kPicker, [](User& user) {
        user.dragHeading("vsf1", kStock, kCode);
        listOf(user).setColumnWidth(kName, 3000);
        user.clickHeading("vsf1", kCode);
        user.clickHeading("vsf1", kCode);
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"),
              "width fName 3000;order fTimeQty,fNumber,fName,fModel,fMinQty;sort fNumber descending");
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(listOf(user).columnAt(2), kStock);
        EXPECT_EQ(listOf(user).columnWidth(kName), 3000);
        EXPECT_EQ(shownCodes(user).front(), "03");
        EXPECT_EQ(listOf(user).currentRow(), 1);
        user.clickNode("tv1", "D12");
        EXPECT_EQ(listOf(user).columnWidth(kName), 3000) << "behind a refresh too";
        user.rightClickHeading("vsf1", kName, "MenuHeadingReset");
        EXPECT_EQ(listOf(user).columnAt(2), kCode);
        EXPECT_EQ(listOf(user).columnWidth(kName), 4000);
        EXPECT_EQ(shownCodes(user).front(), "01.01.001");
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "");
}

TEST_P(Roads, anotherUserHasColumnsOfTheirOwn) {
    stage.set("ListColumns", "7.3", "width fName 3000");
    stage.set("SystemLogin", "gLoginUserId", "8");
    stage.open(kPicker, [](User& user) { EXPECT_EQ(listOf(user).columnWidth(kName), 4000); });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "width fName 3000");
}

TEST_P(Roads, whatTheMetadataHidesStaysHiddenAndKeepsItsPlace) {
    stage.set("ListColumns", "7.3", "order fTimeQty,fNumber,fName,fModel,fMinQty;sort fTimeQty descending");
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(shownCodes(user).front(), "01.01.001") << "the sorted column isn't there";
        for (int column = 0; column < listOf(user).columnCount(); ++column)
            EXPECT_NE(listOf(user).text(0, column), "库存数");
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "order fTimeQty,fNumber,fName,fModel,fMinQty;sort fTimeQty descending");
}

TEST_P(Roads, aColumnMovedMeanwhileLeavesThePlaceOfTheOneThatIsNotShown) {
    stage.set("ListColumns", "7.3", "order fTimeQty,fNumber,fModel,fName,fMinQty");
    stage.open(kManagement, [](User& user) { user.dragHeading("vsf1", 5, 2); });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "order fTimeQty,fMinQty,fNumber,fModel,fName");
    stage.open(kPicker, [](User& user) { EXPECT_EQ(listOf(user).columnAt(2), kStock); });
}

TEST_P(Roads, aListWithAFieldTwiceKeepsItsColumnsToo) {
    stage.database().execute(
        "insert into tblFindinfoEntry(ftypeid,fentryid,fFieldName,fTitlename,fAlign,fDataFormat,fWidth) "
        "select ftypeid,50,fFieldName,'又名',fAlign,fDataFormat,1234 from tblFindinfoEntry where fFieldName='fName'");
    stage.open(kManagement, [](User& user) { user.dragHeading("vsf1", kName, kCode); });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "order fName,fNumber,fModel,fMinQty");
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(listOf(user).columnAt(2), kName);
        EXPECT_EQ(listOf(user).text(0, listOf(user).columnAt(6)), "又名");
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "order fName,fNumber,fModel,fMinQty");
}

TEST_P(Roads, aFieldAddedLaterAppearsWhereTheMetadataPutsIt) {
    stage.set("ListColumns", "7.3", "order fModel,fTimeQty,fNumber,fName");
    stage.open(kPicker, [](User& user) {
        Texts titles;
        for (int place = 2; place < listOf(user).columnCount(); ++place)
            titles.push_back(listOf(user).text(0, listOf(user).columnAt(place)));
        EXPECT_EQ(titles, (Texts{"规格型号", "库存数", "最低库存", "代码", "名称"}));
    });
}

TEST_P(Roads, aStoredStateThatMakesNoSenseIsIgnored) {
    for (const char* text : {"x", "width fName", "width fName 0", "width fName 99999", "width fName 1e3",
                             "order fName,fName", "order ,", "sort fName sideways", ";", "width fName 3000;",
                             "width fName 3000;width fName 2000", "sort fName ascending;sort fName ascending"}) {
        stage.set("ListColumns", "7.3", text);
        stage.open(kPicker, [&](User& user) {
            EXPECT_EQ(listOf(user).columnWidth(kName), 4000) << text;
            EXPECT_EQ(shownCodes(user).front(), "01.01.001") << text;
            EXPECT_EQ(listOf(user).columnAt(3), 3) << text;
        });
    }
    stage.set("ListColumns", "7.3", "width fGone 3000;order fGone,fModel;sort fGone ascending");
    stage.open(kPicker, [&](User& user) { EXPECT_EQ(shownCodes(user).size(), 4U); });
}

TEST_P(Roads, theHeadingsMenuSortsByKeysAlone) {
    stage.open(kPicker, [](User& user) {
        user.selectCell("vsf1", 1, kName);
        user.pressForMenu("Ctrl+H", "MenuHeadingDown");
        EXPECT_EQ(shownCodes(user), (Texts{"02.001", "01.01.001", "01.01.002", "03"}));
        user.pressForMenu("Ctrl+H", "MenuHeadingUp");
        EXPECT_EQ(shownCodes(user), (Texts{"03", "01.01.002", "01.01.001", "02.001"}));
        user.pressForMenu("Ctrl+H", "MenuHeadingReset");
        EXPECT_EQ(shownCodes(user).front(), "01.01.001");
    });
}

TEST_P(Roads, theHeadingsMenuMovesAndWidensByKeysAlone) {
    stage.open(kPicker, [](User& user) {
        platform::ListGrid& list = listOf(user);
        user.selectCell("vsf1", 1, kName);
        user.pressForMenu("Ctrl+H", "MenuHeadingLeft");
        EXPECT_EQ(list.columnAt(2), kName);
        user.pressForMenu("Ctrl+H", "MenuHeadingLeft");
        EXPECT_EQ(list.columnAt(2), kName) << "before it stand only columns that aren't shown";
        user.pressForMenu("Ctrl+H", "MenuHeadingRight");
        user.pressForMenu("Ctrl+H", "MenuHeadingRight");
        EXPECT_EQ(list.columnAt(4), kName);
        user.pressForMenu("Ctrl+H", "MenuHeadingWider");
        EXPECT_EQ(list.columnWidth(kName), 4300);
        for (int i = 0; i < 20; ++i)
            user.pressForMenu("Ctrl+H", "MenuHeadingNarrower");
        EXPECT_EQ(list.columnWidth(kName), 300);
        user.selectCell("vsf1", 1, kStock);
        user.pressForMenu("Ctrl+H", "MenuHeadingRight");
        user.pressForMenu("Ctrl+H", "MenuHeadingRight");
        EXPECT_EQ(list.columnAt(list.columnCount() - 1), kStock) << "behind the last one is no place";
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "width fName 300;order fNumber,fModel,fName,fMinQty,fTimeQty");
}

TEST_P(Roads, aColumnNarrowerThanAStepIsNotWidenedByMakingItNarrower) {
    stage.open(kPicker, [](User& user) {
        listOf(user).setColumnWidth(kName, 150);
        user.selectCell("vsf1", 1, kName);
        user.pressForMenu("Ctrl+H", "MenuHeadingNarrower");
        EXPECT_EQ(listOf(user).columnWidth(kName), 150);
        user.pressForMenu("Ctrl+H", "MenuHeadingWider");
        EXPECT_EQ(listOf(user).columnWidth(kName), 450);
    });
}

TEST_P(Roads, aKeptSortingThatIsCancelledIsGivenUpForThisTimeAlone) {
    for (int i = 0; i < 400; ++i)
        stage.database().addItem(3, 200 + i, "10." + std::to_string(1000 + i), "螺丝", 14);
    const std::string kept = "sort fNumber descending";
    stage.set("ListColumns", "7.3", kept);
    stage.script().cancelProgress(200);
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(shownCodes(user).front(), "01.01.001");
        user.clickNode("tv1", "D14");
        EXPECT_EQ(shownCodes(user).front(), "02.001") << "it isn't asked for again";
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), kept);
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(shownCodes(user).front(), "10.1399");
        user.clickHeading("vsf1", kName);
        user.cancelProgress(200);
        user.clickNode("tv1", "D14");
        EXPECT_EQ(listOf(user).sortedColumn(), -1) << "a refresh is cancelled likewise";
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "sort fName ascending");
    stage.script().cancelProgress(200);
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(listOf(user).sortedColumn(), -1);
        user.rightClickHeading("vsf1", kName, "MenuHeadingReset");
    });
    EXPECT_EQ(stage.get("ListColumns", "7.3"), "");
}

TEST_P(Roads, whatIsCopiedStaysACodeInASpreadsheet) {
    stage.database().addItem(3, 120, "0012", "<片>&\"1/2\"", 14);
    stage.database().addItem(3, 121, "1E5", "=1+1", 14);
    stage.database().addStock(120, 1, "12.5");
    const TemporaryFolder folder;
    stage.open(kPicker, [&](User& user) {
        user.press("Ctrl+F");
        user.typeKeys("1");
        user.press("Enter");
        for (int row = 1; row < listOf(user).rowCount(); ++row)
            row == 1 ? user.selectRow("vsf1", row) : user.alsoSelectRow("vsf1", row);
        user.press("Ctrl+C");
        std::ofstream(folder.file("copied.html")) << user.copiedHtml();
        EXPECT_EQ(user.copied().substr(0, user.copied().find('\n')), "代码\t名称\t规格型号\t库存数\t最低库存");
    });
    const Rows rows = readSpreadsheet(folder.file("copied.html"));
    const auto formats = readSpreadsheetFormats(folder.file("copied.html"));
    const auto rowOf = [&rows](const std::string& code) {
        for (std::size_t row = 0; row < rows.size(); ++row)
            if (!rows[row].empty() && rows[row][0] == code) return row;
        ADD_FAILURE() << "no row of " << code;
        return std::size_t{0};
    };
    EXPECT_EQ(formats.at(rowOf("0012")).at(0), "@");
    EXPECT_EQ(rows.at(rowOf("0012")).at(1), "<片>&\"1/2\"");
    EXPECT_EQ(rows.at(rowOf("0012")).at(3), "12.5");
    EXPECT_NE(formats.at(rowOf("0012")).at(3), "@") << "a quantity is a number";
    EXPECT_EQ(formats.at(rowOf("1E5")).at(0), "@");
    EXPECT_EQ(rows.at(rowOf("1E5")).at(1), "=1+1");
    EXPECT_EQ(rows.at(rowOf("01.01.001")).at(3), "1244.5");
}

TEST_P(Roads, theToldKeysStillDoWhatTheyDid) {
    stage.open(kManagement, [this](User& user) {
        user.press("Ctrl+F");
        user.typeKeys("02");
        stage.script().onWindow("frmBasicInfo", [](User&) { EXPECT_EQ(appState().gEditMode, 0); });
        user.press("Ctrl+A");
        user.press("Ctrl+X");
        EXPECT_FALSE(user.window().shown());
    });
}

TEST_P(Roads, copyingInTheSearchTextCopiesNoRows) {
    stage.open(kManagement, [](User& user) {
        user.selectRow("vsf1", 1);
        user.press("Ctrl+C");
        const std::string rows = user.copied();
        EXPECT_NE(rows, "");
        user.control<platform::Edit>("txtSearch").setFocus();
        user.press("Ctrl+C");
        EXPECT_EQ(user.copied(), rows) << "an empty text leaves the clipboard";
    });
}

TEST_P(Roads, theUsageOfAnItemIsReadWhenItIsAskedAlone) {
    fillCatalogues(stage.database());
    for (int bill = 1; bill <= 12; ++bill)
        stage.database().execute("insert into icstockbill(fInterId,fCustId) values(" + std::to_string(bill) + ",102)");
    stage.database().execute("insert into tblFP(fInterId,fCustId) values(77,102)");
    stage.open(kManagement, [this](User& user) {
        user.selectRow("vsf1", 2);
        stage.forgetStatements();
        stage.script().onWindow("frmItemUsage", [](User& usage) {
            const auto& list = usage.control<ListGrid>("vsfUsage");
            EXPECT_EQ(list.rowCount(), 7);
            EXPECT_EQ(list.text(1, 0) + list.text(1, 1), "库存单据12");
            EXPECT_EQ(list.text(1, 2), "12, 11, 10, 9, 8, 7, 6, 5, 4, 3");
            EXPECT_EQ(list.text(2, 1), "0");
            EXPECT_EQ(list.text(6, 0) + list.text(6, 1) + list.text(6, 2), "发票177");
            EXPECT_TRUE(list.hasFocus());
            EXPECT_EQ(usage.control<platform::Label>("lblItem").caption(),
                      "【01.01.002 螺母】以下单据使用了该项目，每类列出最近十张：");
            usage.press("Alt+C");
            EXPECT_FALSE(usage.window().shown());
        });
        user.chooseMenu("MenuItemUsage");
        EXPECT_EQ(stage.statements().size(), 8U) << "the item, the catalogues, then one a family";
    });
}

TEST_P(Roads, theUsageIsOneClickAwayAfterARefusedDelete) {
    fillCatalogues(stage.database());
    stage.database().execute("insert into icstockbill(fInterId,fCustId) values(5,102)");
    const std::string refusal = "该项目在库存单据中已经使用,不能删除!";
    stage.open(kManagement, [&](User& user) {
        user.selectRow("vsf1", 2);
        for (const Answer answer : {Answer::ok, Answer::further}) {
            user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
            user.answer(MessageKind::warning, refusal, answer);
            if (answer == Answer::further)
                stage.script().onWindow("frmItemUsage", [](User& usage) {
                    EXPECT_EQ(usage.control<ListGrid>("vsfUsage").text(1, 2), "5");
                });
            stage.forgetStatements();
            user.chooseMenu("MenuEditDelete");
            EXPECT_EQ(stage.statements().size(), answer == Answer::ok ? 3U : 11U);
        }
        EXPECT_EQ(shownCodes(user).size(), 4U);
    });
}

}  // namespace
}  // namespace orvenmod::test
