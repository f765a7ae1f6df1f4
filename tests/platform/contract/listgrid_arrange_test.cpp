// How a user arranges a list.
#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;
using Texts = std::vector<std::string>;

void fillGoods(Window& window) {
    auto& grid = window.get<ListGrid>("vsf1");
    grid.bind(std::make_shared<TextRows>(std::vector<Texts>{{"0003", "内六角", "5", "x"},
                                                            {"0001", "扳手", "NULL", "y"},
                                                            {"0002", "螺丝", "10.5", "z"},
                                                            {"0004", "重垫片", "-2", "x"}}));
    grid.setColumnKind(2, ColumnKind::number);
}

ListGrid& listOf(User& user) { return user.control<ListGrid>("vsf1"); }

Texts codesOf(User& user) {
    Texts codes;
    for (int row = 1; row < listOf(user).rowCount(); ++row)
        codes.push_back(listOf(user).text(row, 0));
    return codes;
}

Texts shownTitles(User& user) {
    Texts titles;
    for (int place = 0; place < listOf(user).columnCount(); ++place) {
        const int column = listOf(user).columnAt(place);
        if (!listOf(user).columnHidden(column)) titles.push_back(listOf(user).text(0, column));
    }
    return titles;
}

TEST_F(ToolkitContract, clicksOnAHeadingSortUpDownAndNotAtAll) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.clickHeading("vsf1", 2);
        EXPECT_EQ(codesOf(user), (Texts{"0004", "0003", "0002", "0001"}));
        EXPECT_EQ(listOf(user).sortedColumn(), 2);
        EXPECT_EQ(listOf(user).sortOrder(), SortOrder::ascending);
        user.clickHeading("vsf1", 2);
        EXPECT_EQ(codesOf(user), (Texts{"0002", "0003", "0004", "0001"}));
        user.clickHeading("vsf1", 2);
        EXPECT_EQ(codesOf(user), (Texts{"0003", "0001", "0002", "0004"}));
        EXPECT_EQ(listOf(user).sortedColumn(), -1);
        user.clickHeading("vsf1", 1);
        EXPECT_EQ(codesOf(user), (Texts{"0001", "0002", "0003", "0004"})) << "by the letters of the Chinese";
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(listOf(user).sortOrder(), SortOrder::ascending) << "another heading begins anew";
    });
}

TEST_F(ToolkitContract, aColumnOfAnotherKindIsSortedAnew) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        listOf(user).setColumnKind(2, ColumnKind::text);
        user.clickHeading("vsf1", 2);
        EXPECT_EQ(codesOf(user), (Texts{"0004", "0002", "0003", "0001"})) << "-2, 10.5, 5";
        listOf(user).setColumnKind(2, ColumnKind::number);
        user.clickHeading("vsf1", 2);
        EXPECT_EQ(codesOf(user), (Texts{"0002", "0003", "0004", "0001"}));
    });
}

TEST_F(ToolkitContract, theSameWordsAgainFindColumnsAsTheyShowByThen) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        listOf(user).narrow("y");
        EXPECT_EQ(codesOf(user), Texts{}) << "the column isn't shown";
        listOf(user).narrow("");
        listOf(user).setColumnHidden(3, false);
        listOf(user).narrow("y");
        EXPECT_EQ(codesOf(user), Texts{"0001"});
        listOf(user).narrow("");
        listOf(user).setColumnFormat(2, "0.00");
        listOf(user).narrow("10.50");
        EXPECT_EQ(codesOf(user), Texts{"0002"});
    });
}

TEST_F(ToolkitContract, theSecondOfTwoFastClicksOnAHeadingCountsToo) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.doubleClickRow("vsf1", 0);
        EXPECT_EQ(listOf(user).sortedColumn(), 0);
        EXPECT_EQ(listOf(user).sortOrder(), SortOrder::descending);
    });
}

TEST_F(ToolkitContract, theUserStandsOnTheSameRowInEveryOrder) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.selectRow("vsf1", 1);
        user.alsoSelectRow("vsf1", 3);
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(listOf(user).currentRow(), 2);
        EXPECT_TRUE(listOf(user).isSelected(2) && listOf(user).isSelected(3));
        EXPECT_FALSE(listOf(user).isSelected(1));
        user.selectRow("vsf1", 4);
        EXPECT_EQ(listOf(user).text(listOf(user).currentRow(), 0), "0004");
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(listOf(user).currentRow(), 1);
        EXPECT_TRUE(listOf(user).isSelected(1));
        EXPECT_FALSE(listOf(user).isSelected(4));
        listOf(user).setFocus();
        user.press("Down");
        EXPECT_EQ(listOf(user).text(listOf(user).currentRow(), 0), "0003");
    });
}

TEST_F(ToolkitContract, rowsBoundLaterShowAsTheyComeUntilTheyAreArranged) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.clickHeading("vsf1", 0);
        fillGoods(user.window());
        EXPECT_EQ(codesOf(user), (Texts{"0003", "0001", "0002", "0004"}));
        listOf(user).arrange();
        EXPECT_EQ(codesOf(user), (Texts{"0001", "0002", "0003", "0004"}));
        EXPECT_EQ(listOf(user).currentRow(), 1);
        EXPECT_TRUE(listOf(user).isSelected(1));
        EXPECT_FALSE(listOf(user).isSelected(2));
    });
}

TEST_F(ToolkitContract, controlFNarrowsAsOneTypesAndEscapeShowsAllAgain) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.control<Edit>("txt").setFocus();
        user.press("Ctrl+F");
        user.typeKeys("nlj");
        EXPECT_EQ(codesOf(user), Texts{"0003"});
        EXPECT_EQ(listOf(user).narrowing(), "nlj");
        EXPECT_TRUE(listOf(user).isSelected(1));
        user.press("Backspace");
        user.press("Backspace");
        user.press("Backspace");
        EXPECT_EQ(codesOf(user).size(), 4U);
        user.typeKeys("c 4");
        EXPECT_EQ(codesOf(user), Texts{"0004"}) << "重 is read chong too, and every word counts";
        user.press("Esc");
        EXPECT_EQ(codesOf(user), (Texts{"0003", "0001", "0002", "0004"}));
        EXPECT_EQ(listOf(user).narrowing(), "");
        EXPECT_TRUE(listOf(user).hasFocus());
        EXPECT_EQ(listOf(user).currentRow(), 4);
    });
}

TEST_F(ToolkitContract, whatIsTypedAfterControlFAgainTakesTheLinesPlace) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.press("Ctrl+F");
        user.typeKeys("内");
        user.press("Ctrl+F");
        user.typeKeys("扳手");
        EXPECT_EQ(codesOf(user), Texts{"0001"});
        user.press("Down");
        user.press("Esc");
        EXPECT_EQ(codesOf(user).size(), 4U) << "Esc in the list takes the line away as well";
    });
}

TEST_F(ToolkitContract, keysLeadFromTheLineToTheRows) {
    for (const char* key : {"Down", "Enter", "Tab"}) {
        use(arrangedWindow(), fillGoods, [key](User& user) {
            user.press("Ctrl+F");
            user.typeKeys("00");
            user.press(key);
            EXPECT_TRUE(listOf(user).hasFocus());
            user.press("Down");
            EXPECT_EQ(listOf(user).currentRow(), 2) << key;
            EXPECT_EQ(listOf(user).narrowing(), "00");
        });
    }
}

TEST_F(ToolkitContract, aNarrowedListThatIsEmptyHasNoCurrentRow) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.press("Ctrl+F");
        user.typeKeys("没有");
        EXPECT_EQ(listOf(user).rowCount(), 1);
        EXPECT_EQ(listOf(user).currentRow(), 0);
        user.press("Down");
        user.press("Down");
        EXPECT_EQ(listOf(user).currentRow(), 0);
        user.press("Esc");
        EXPECT_EQ(listOf(user).rowCount(), 5);
    });
}

TEST_F(ToolkitContract, narrowingKeepsTheOrder) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.clickHeading("vsf1", 0);
        user.clickHeading("vsf1", 0);
        user.press("Ctrl+F");
        user.typeKeys("p");
        EXPECT_EQ(codesOf(user), Texts{"0004"});
        user.press("Esc");
        EXPECT_EQ(codesOf(user), (Texts{"0004", "0003", "0002", "0001"}));
    });
}

TEST_F(ToolkitContract, controlCCopiesTheSelectedRowsAsTheyShow) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.clickHeading("vsf1", 0);
        user.selectRow("vsf1", 2);
        user.alsoSelectRow("vsf1", 3);
        user.press("Ctrl+C");
        EXPECT_EQ(user.copied(), "代码\t名称\t数量\n0002\t螺丝\t10.5\n0003\t内六角\t5\n");
        EXPECT_NE(user.copiedHtml().find("0002"), std::string::npos);
        EXPECT_EQ(user.copiedHtml().find("内码"), std::string::npos) << "what is hidden stays hidden";
    });
}

TEST_F(ToolkitContract, aDraggedHeadingTakesTheOthersPlace) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        user.dragHeading("vsf1", 2, 0);
        EXPECT_EQ(shownTitles(user), (Texts{"数量", "代码", "名称"}));
        EXPECT_EQ(listOf(user).sortedColumn(), -1) << "a drag is no click";
        user.dragHeading("vsf1", 0, 1);
        EXPECT_EQ(shownTitles(user), (Texts{"数量", "名称", "代码"}));
        listOf(user).moveColumn(0, 0);
        EXPECT_EQ(shownTitles(user), (Texts{"代码", "数量", "名称"}));
        fillGoods(user.window());
        EXPECT_EQ(shownTitles(user), (Texts{"代码", "数量", "名称"}));
        EXPECT_EQ(listOf(user).text(1, 0), "0003");
    });
}

TEST_F(ToolkitContract, rowsThatWereBoundSinceAreFoundByMoreOfTheSameWords) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        listOf(user).narrow("000");
        listOf(user).narrow("0001");
        fillGoods(user.window());
        listOf(user).setText(4, 0, "00012");
        user.press("Ctrl+F");
        listOf(user).narrow("00012");
        EXPECT_EQ(codesOf(user), (Texts{"00012"}));
    });
}

TEST_F(ToolkitContract, theSameWordsAgainFindWhatWasWrittenSince) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        listOf(user).narrow("000");
        listOf(user).setText(1, 0, "7");
        listOf(user).narrow("000");
        EXPECT_EQ(codesOf(user), (Texts{"0001", "0002", "0004"}));
    });
}

TEST_F(ToolkitContract, theLineBelowTellsCountsAndTheSumOfANumberColumn) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        EXPECT_EQ(listOf(user).status(), "显示 4 行，选中 1 行");
        user.selectCell("vsf1", 3, 2);
        user.alsoSelectRow("vsf1", 4);
        EXPECT_EQ(listOf(user).status(), "显示 4 行，选中 2 行") << "a click into a text column sums nothing";
        user.selectCell("vsf1", 3, 2);
        EXPECT_EQ(listOf(user).status(), "显示 4 行，选中 1 行，数量合计 10.5");
        user.press("Ctrl+F");
        user.typeKeys("4");
        EXPECT_EQ(listOf(user).status(), "显示 1 行，共 4 行，选中 1 行，数量合计 -2");
    });
}

TEST_F(ToolkitContract, theArrowsLeadToTheColumnThatIsSummed) {
    use(arrangedWindow(), fillGoods, [](User& user) {
        listOf(user).moveColumn(2, 1);
        listOf(user).setFocus();
        user.press("Right");
        EXPECT_EQ(listOf(user).status(), "显示 4 行，选中 1 行，数量合计 5");
        user.press("Right");
        user.press("Right");
        EXPECT_EQ(listOf(user).status(), "显示 4 行，选中 1 行") << "the names are the last column that shows";
        user.press("Left");
        EXPECT_EQ(listOf(user).status(), "显示 4 行，选中 1 行，数量合计 5");
        EXPECT_EQ(listOf(user).currentRow(), 1);
    });
}

TEST_F(ToolkitContract, theHeadingsMenuIsAskedByMouseAndByKey) {
    std::vector<int> asked;
    use(
        arrangedWindow(),
        [&](Window& window) {
            fillGoods(window);
            window.get<ListGrid>("vsf1").headingMenu = [&](int column) {
                asked.push_back(column);
                window.get<Menu>("MenuHeading").popUp();
            };
            window.get<Menu>("MenuReset").click = [&] { asked.push_back(-1); };
        },
        [](User& user) {
            user.rightClickHeading("vsf1", 1, "MenuReset");
            user.selectCell("vsf1", 2, 2);
            user.pressForMenu("Ctrl+H", "MenuReset");
        });
    EXPECT_EQ(asked, (std::vector<int>{1, -1, 2, -1}));
}

TEST_F(ToolkitContract, aListThatIsNotArrangedIsLeftAsItStands) {
    WindowDesign design = arrangedWindow();
    design.controls[0].arranges = false;
    use(design, fillGoods, [](User& user) {
        user.clickHeading("vsf1", 0);
        user.dragHeading("vsf1", 0, 2);
        user.press("Ctrl+F");
        EXPECT_EQ(codesOf(user), (Texts{"0003", "0001", "0002", "0004"}));
        EXPECT_EQ(shownTitles(user), (Texts{"代码", "名称", "数量"}));
    });
}

}  // namespace
}  // namespace orvenmod::test
