// A list whose rows are fetched when somebody looks: where one can't be, the user is told once, and the list lives on.
#include "platform/contract/listgrid.h"

namespace orvenmod::test {
namespace {

using namespace platform;
using Texts = std::vector<std::string>;

constexpr const char* kFailure = "读不到行";
constexpr int kRows = 500;

std::shared_ptr<TextRows> manyRows() {
    std::vector<Texts> rows;
    for (int row = 1; row <= kRows; ++row)
        rows.push_back({std::to_string(row), "A" + std::to_string(1000 + row)});
    return std::make_shared<TextRows>(rows);
}

WindowDesign arrangedWindow() {
    WindowDesign design = listWindow(0);
    design.controls[0].arranges = true;
    design.controls[0].columns = {{.title = "内码", .width = 1500}, {.title = "代码", .width = 1500}};
    return design;
}

class FetchedList : public ToolkitContract {
protected:
    void useRows(const std::function<void(User&)>& steps) {
        use(
            arrangedWindow(), [this](Window& window) { window.get<ListGrid>("vsf1").bind(rows); },
            [&](User& user) {
                grid = &user.control<ListGrid>("vsf1");
                steps(user);
            });
    }
    /// Fails the next fetch alone.
    void failOnce() { rows->failAt = rows->fetches + 1; }
    std::size_t boxes() const { return script->messages().size(); }

    std::shared_ptr<TextRows> rows = manyRows();
    ListGrid* grid = nullptr;
};

TEST_F(FetchedList, aRowThatCanNotBeFetchedIsToldInOneBox) {
    useRows([this](User& user) {
        rows->failAll = true;
        user.answer(MessageKind::critical, kFailure);
        user.selectRow("vsf1", 400);
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(grid->currentRow(), 400);
    });
}

TEST_F(FetchedList, theUserWhoLooksAgainSeesTheRow) {
    useRows([this](User& user) {
        rows->failAll = true;
        user.answer(MessageKind::critical, kFailure);
        user.selectRow("vsf1", 400);
        rows->failAll = false;
        user.selectRow("vsf1", 1);
        user.selectRow("vsf1", 400);
        EXPECT_EQ(grid->text(400, 1), "A1400");
        EXPECT_EQ(boxes(), 1U);
    });
}

TEST_F(FetchedList, whoReadsARowThatCanNotBeFetchedIsToldByAFailure) {
    useRows([this](User&) {
        rows->failAll = true;
        EXPECT_THROW((void)grid->text(300, 1), std::runtime_error);
        EXPECT_THROW((void)grid->value(300, 1), std::runtime_error);
        rows->failAll = false;
        EXPECT_EQ(grid->text(300, 1), "A1300");
    });
}

TEST_F(FetchedList, aSortingThatFailsLeavesTheRowsAsTheyWere) {
    useRows([this](User& user) {
        user.selectRow("vsf1", 2);
        user.alsoSelectRow("vsf1", 3);
        rows->failAt = rows->fetches + 100;
        user.answer(MessageKind::critical, kFailure);
        user.clickHeading("vsf1", 1);
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(grid->sortedColumn(), -1);
        EXPECT_EQ(grid->currentRow(), 3);
        EXPECT_TRUE(grid->isSelected(2) && grid->isSelected(3));
        EXPECT_EQ(grid->text(1, 0), "1");
        user.clickHeading("vsf1", 1);
        user.clickHeading("vsf1", 1);
        EXPECT_EQ(grid->text(1, 0), std::to_string(kRows));
        EXPECT_TRUE(grid->isSelected(kRows - 1) && grid->isSelected(kRows - 2));
    });
}

TEST_F(FetchedList, aSortingByAnotherColumnThatFailsKeepsTheOneBefore) {
    useRows([this](User& user) {
        user.clickHeading("vsf1", 1);
        user.clickHeading("vsf1", 1);
        rows->failAt = rows->fetches + 100;
        user.answer(MessageKind::critical, kFailure);
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(grid->sortedColumn(), 1);
        EXPECT_EQ(grid->sortOrder(), SortOrder::descending);
        EXPECT_EQ(grid->text(1, 0), std::to_string(kRows));
    });
}

TEST_F(FetchedList, aNarrowingThatFailsShowsAllRowsUntilTheNextLetter) {
    useRows([this](User& user) {
        grid->setFocus();
        rows->failAll = true;
        user.answer(MessageKind::critical, kFailure);
        user.press("Ctrl+F");
        user.answer(MessageKind::critical, kFailure);
        user.typeKeys("A");
        EXPECT_EQ(boxes(), 2U);
        EXPECT_EQ(grid->rowCount(), kRows + 1);
        rows->failAll = false;
        user.typeKeys("149");
        EXPECT_EQ(grid->narrowing(), "A149");
        EXPECT_EQ(grid->rowCount(), 11);
        EXPECT_EQ(grid->text(10, 0), "499");
        user.press("Esc");
        EXPECT_EQ(grid->rowCount(), kRows + 1);
    });
}

TEST_F(FetchedList, aCopyThatFailsLeavesTheClipboard) {
    useRows([this](User& user) {
        user.selectRow("vsf1", 1);
        user.press("Ctrl+C");
        const std::string before = user.copied();
        EXPECT_EQ(before, "内码\t代码\n1\tA1001\n");
        user.selectRow("vsf1", 400);
        grid->setSelected(2, true);
        failOnce();
        user.answer(MessageKind::critical, kFailure);
        user.press("Ctrl+C");
        EXPECT_EQ(user.copied(), before);
        user.press("Ctrl+C");
        EXPECT_EQ(user.copied(), "内码\t代码\n2\tA1002\n400\tA1400\n");
    });
}

TEST_F(FetchedList, rowsThatAreBoundAnewAreLookedAtAgain) {
    useRows([this](User& user) {
        rows->failAll = true;
        user.answer(MessageKind::critical, kFailure);
        user.selectRow("vsf1", 400);
        grid->bind(manyRows());
        user.selectRow("vsf1", 400);
        EXPECT_EQ(grid->text(400, 1), "A1400");
        EXPECT_EQ(boxes(), 1U);
    });
}

}  // namespace
}  // namespace orvenmod::test
