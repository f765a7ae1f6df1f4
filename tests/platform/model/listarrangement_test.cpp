// A list's rows under every arrangement, against a plain model.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "platform/model/listgridmodel.h"
#include "platform/model/listoutput.h"

namespace orvenmod::platform::model {
namespace {

using Texts = std::vector<std::string>;

class Cells final : public RowSource {
public:
    explicit Cells(std::vector<Texts> rows) : rows_(std::move(rows)) {}
    std::size_t rowCount() const override { return rows_.size(); }
    int columnCount() const override { return 3; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        return rows_[row][static_cast<std::size_t>(column)];
    }

private:
    std::vector<Texts> rows_;
};

ListGridModel goods() {
    ListGridModel list({}, 0);
    list.bind(std::make_shared<Cells>(
        std::vector<Texts>{{"03", "内六角", "5"}, {"01", "扳手", ""}, {"02", "螺丝", "10.5"}, {"04", "垫片", "-2"}}));
    for (int column = 0; const char* title : {"代码", "名称", "数量"})
        list.column(column++).title = title;
    list.column(2).kind = ColumnKind::number;
    return list;
}

Texts codes(const ListGridModel& list) {
    Texts all;
    for (int row = 1; row < list.rowCount(); ++row)
        all.push_back(list.text(row, 0));
    return all;
}

TEST(ListArrangement, keepsCurrentAndSelectedRowsThroughASort) {
    ListGridModel list = goods();
    list.setCurrentRow(1);
    list.setSelected(4, true);
    list.sort(0, SortOrder::ascending);
    EXPECT_EQ(codes(list), (Texts{"01", "02", "03", "04"}));
    EXPECT_EQ(list.currentRow(), 3);
    EXPECT_TRUE(list.isSelected(3));
    EXPECT_TRUE(list.isSelected(4));
    EXPECT_FALSE(list.isSelected(1));
    list.sort(0, SortOrder::told);
    EXPECT_EQ(codes(list), (Texts{"03", "01", "02", "04"}));
    EXPECT_EQ(list.currentRow(), 1);
}

TEST(ListArrangement, theThirdClickGoesBackToTheToldOrder) {
    ListGridModel list = goods();
    list.sortOn(2);
    EXPECT_EQ(codes(list), (Texts{"04", "03", "02", "01"}));
    list.sortOn(2);
    EXPECT_EQ(codes(list), (Texts{"02", "03", "04", "01"})) << "blanks stay last";
    list.sortOn(2);
    EXPECT_EQ(list.sortedColumn(), -1);
    EXPECT_EQ(codes(list), (Texts{"03", "01", "02", "04"}));
}

TEST(ListArrangement, whatIsWrittenColouredAndRemovedIsTheRowThatShows) {
    ListGridModel list = goods();
    list.sort(0, SortOrder::descending);
    list.setText(1, 1, "新");
    const Colour red{175, 0, 0};
    list.setRowColour(2, &red);
    list.removeRow(3);
    EXPECT_EQ(codes(list), (Texts{"04", "03", "01"}));
    list.sort(0, SortOrder::told);
    EXPECT_EQ(codes(list), (Texts{"03", "01", "04"}));
    EXPECT_EQ(list.text(3, 1), "新");
    EXPECT_NE(list.rowColour(1), nullptr);
    EXPECT_EQ(list.rowColour(2), nullptr);
}

TEST(ListArrangement, narrowingTakesTheSelectionFromWhatGoes) {
    ListGridModel list = goods();
    list.setCurrentRow(1);
    list.setSelected(3, true);
    list.narrow("ls");
    EXPECT_EQ(codes(list), Texts{"02"});
    EXPECT_EQ(list.selectedCount(), 1U);
    EXPECT_EQ(list.currentRow(), 1);
    list.narrow("");
    EXPECT_EQ(codes(list), (Texts{"03", "01", "02", "04"}));
    EXPECT_EQ(list.currentRow(), 3) << "where the user stood stays";
    list.narrow("没有");
    EXPECT_EQ(list.rowCount(), 1);
    EXPECT_EQ(list.currentRow(), 0);
}

TEST(ListArrangement, rowsBoundLaterAreArrangedWhenAsked) {
    ListGridModel list = goods();
    list.sort(0, SortOrder::descending);
    list.narrow("0 s");
    list.bind(
        std::make_shared<Cells>(std::vector<Texts>{{"07", "螺丝", "0"}, {"08", "垫片", "1"}, {"09", "扳手", "1"}}));
    EXPECT_EQ(codes(list), (Texts{"07", "08", "09"}));
    list.arrange();
    EXPECT_EQ(codes(list), (Texts{"09", "07"}));
    EXPECT_EQ(list.currentRow(), 1);
    EXPECT_EQ(list.selectedCount(), 1U);
}

TEST(ListArrangement, aSortingThatWasUsedBeforeDoesWithoutTheRowsThatWereTakenSince) {
    ListGridModel list({}, 0);
    for (const char* code : {"03", "01", "02", "04"})
        list.addRow(code);
    list.sort(0, SortOrder::ascending);
    list.sort(0, SortOrder::told);
    list.removeRow(4);
    list.sort(0, SortOrder::descending);
    EXPECT_EQ(codes(list), (Texts{"03", "02", "01"}));
    list.sort(0, SortOrder::told);
    list.setRowCount(2);
    list.sort(0, SortOrder::ascending);
    EXPECT_EQ(codes(list), Texts{"03"});
}

TEST(ListArrangement, hiddenColumnsAreNotSearched) {
    ListGridModel list = goods();
    list.column(1).hidden = true;
    list.narrow("螺丝");
    EXPECT_EQ(list.rowCount(), 1);
}

TEST(ListArrangement, tellsItsState) {
    ListGridModel list = goods();
    EXPECT_EQ(list.status(), "显示 4 行，选中 1 行");
    list.setCurrentColumn(2);
    list.setSelected(2, true);
    list.setSelected(3, true);
    EXPECT_EQ(list.status(), "显示 4 行，选中 3 行，数量合计 15.5");
    list.narrow("nlj");
    EXPECT_EQ(list.status(), "显示 1 行，共 4 行，选中 1 行，数量合计 5");
}

TEST(ListArrangement, copiesWhatIsSelectedAsItShows) {
    ListGridModel list = goods();
    list.sort(0, SortOrder::ascending);
    list.moveColumn(2, 0);
    list.column(1).hidden = true;
    list.setCurrentRow(1);
    list.setSelected(3, true);
    EXPECT_EQ(copySelectedRows(list).text, "数量\t代码\n\t01\n5\t03\n");
    list.clearSelection();
    EXPECT_EQ(copySelectedRows(list).html, "");
}

TEST(ListArrangement, copiesANumberThatASpreadsheetWouldCutAsAText) {
    ListGridModel list({}, 0);
    list.bind(std::make_shared<Cells>(std::vector<Texts>{{"123456789012345", "1234567890123456", "1234567890123456"}}));
    for (int column = 0; column < 3; ++column)
        list.column(column).kind = ColumnKind::number;
    list.column(2).format = "#,###";
    const std::string html = copySelectedRows(list).html;
    EXPECT_NE(html.find("sdval=\"123456789012345\""), std::string::npos);
    EXPECT_NE(html.find("sdnum=\"2052;0;@\">1234567890123456<"), std::string::npos) << html;
    EXPECT_NE(html.find("sdval=\"1234567890123456\""), std::string::npos) << "what has a format is a quantity";
}

TEST(ListArrangement, agreesWithAPlainModelUnderRandomChanges) {
    std::mt19937 random(11);
    const auto below = [&](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); };
    ListGridModel list({}, 0);
    std::vector<Texts> rows;
    for (int i = 0; i < 60; ++i)
        rows.push_back({std::to_string(below(40)), i % 3 == 0 ? "螺丝" : "扳手", std::to_string(i)});
    list.bind(std::make_shared<Cells>(rows));
    list.column(0).kind = ColumnKind::number;
    std::vector<Texts> plain = rows;
    for (int step = 0; step < 300 && plain.size() > 2; ++step) {
        const int order = below(3);
        list.sort(0, static_cast<SortOrder>(order));
        const std::string word = below(2) == 0 ? "" : "ls";
        list.narrow(word);
        std::vector<Texts> shown = plain;
        if (!word.empty()) std::erase_if(shown, [](const Texts& row) { return row[1] != "螺丝"; });
        const auto number = [](const Texts& row) { return std::stoi(row[0]); };
        if (order == 1) std::ranges::stable_sort(shown, std::less<>(), number);
        if (order == 2) std::ranges::stable_sort(shown, std::greater<>(), number);
        ASSERT_EQ(list.rowCount() - 1, static_cast<int>(shown.size())) << step;
        for (std::size_t row = 0; row < shown.size(); ++row)
            ASSERT_EQ(list.text(static_cast<int>(row) + 1, 2), shown[row][2]) << step;
        if (step % 6 != 0 || shown.empty()) continue;
        const int gone = below(static_cast<int>(shown.size()));
        list.removeRow(gone + 1);
        std::erase(plain, shown[static_cast<std::size_t>(gone)]);
    }
}

}  // namespace
}  // namespace orvenmod::platform::model
