// A combo over rows that somebody holds: the same as one over texts.
#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

/// Id, name and code; the last name is null, and the third is the first once more.
class Entries : public RowSource {
public:
    std::size_t rowCount() const override { return 4; }
    int columnCount() const override { return 3; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        ++reads;
        if (fails) throw std::runtime_error("读取失败");
        static const std::optional<std::string_view> kCells[4][3] = {
            {"11", "螺丝", "01"}, {"12", "螺母 Nut", "02"}, {"13", "螺丝", "03"}, {"14", std::nullopt, "04"}};
        return kCells[row][column];
    }

    mutable int reads = 0;
    bool fails = false;
};

class ItemRows : public ToolkitContract {
protected:
    static constexpr int kName = 2, kId = 3;

    void overRows(const std::function<void(User&, EntryGrid&)>& steps) {
        ControlDesign design = drawn(ControlKind::entryGrid, "fps1", 0, 5000);
        design.width = 8000;
        design.columns = {{.title = "项目", .width = 1500, .locked = true},
                          {.title = "值", .width = 2500},
                          {.title = "内部ID", .width = 900, .hidden = true}};
        use(
            windowWith({design}),
            [this](Window& window) {
                auto& grid = window.get<EntryGrid>("fps1");
                grid.setRowCount(2);
                grid.setCellType(kName, 1, CellType::combo);
                grid.setCellType(kId, 1, CellType::combo);
                grid.setItems(kId, 1, {entries, 0});
                grid.setItems(kName, 1, {entries, 1});
                grid.setItemCodes(kName, 1, {entries, 2});
                grid.setItemLeader(kName, 1, kId);
                grid.setClearable(kName, 1, true);
            },
            [&](User& user) { steps(user, user.control<EntryGrid>("fps1")); });
    }

    const std::shared_ptr<Entries> entries = std::make_shared<Entries>();
};

TEST_F(ItemRows, selectTheEntryOfAWrittenText) {
    overRows([](User&, EntryGrid& grid) {
        EXPECT_EQ(grid.selectedItem(kName, 1), 3) << "the entry without a name";
        EXPECT_EQ(grid.selectedItem(kId, 1), -1);
        grid.setText(kName, 1, "螺丝");
        EXPECT_EQ(grid.selectedItem(kName, 1), 0);
        grid.setText(kName, 1, "不在其中");
        EXPECT_EQ(grid.selectedItem(kName, 1), -1);
        grid.setText(kId, 1, "13");
        EXPECT_EQ(grid.selectedItem(kId, 1), 2);
        grid.selectItem(kName, 1, 2);
        EXPECT_EQ(grid.text(kName, 1), "螺丝");
        EXPECT_EQ(grid.selectedItem(kName, 1), 2);
        EXPECT_THROW(grid.selectItem(kName, 1, 4), std::out_of_range);
        EXPECT_EQ(grid.selectedItem(kName, 1), 2);
    });
}

TEST_F(ItemRows, areReadWhenSomebodyAsksWhichIsSelected) {
    overRows([this](User& user, EntryGrid& grid) {
        grid.setText(kId, 1, "12");
        grid.setText(kName, 1, "螺母 Nut");
        user.clickCell("fps1", 1, 1);
        user.press("Right");
        EXPECT_EQ(grid.text(kName, 1) + grid.text(kId, 1), "螺母 Nut12");
        EXPECT_EQ(entries->reads, 0);
        EXPECT_EQ(grid.selectedItem(kName, 1), 1);
        EXPECT_GT(entries->reads, 0);
    });
}

TEST_F(ItemRows, areToldApartByWhatIsSelectedBesideThem) {
    overRows([](User& user, EntryGrid& grid) {
        grid.setText(kId, 1, "13");
        grid.setText(kName, 1, "螺丝");
        EXPECT_EQ(grid.selectedItem(kName, 1), 2);
        grid.setText(kId, 1, "12");
        grid.setText(kName, 1, "螺丝");
        EXPECT_EQ(grid.selectedItem(kName, 1), 0) << "another entry's id";
        grid.setText(kId, 1, "99");
        grid.setText(kName, 1, "");
        EXPECT_EQ(grid.selectedItem(kName, 1), 3);
        grid.setText(kId, 1, "13");
        grid.setText(kName, 1, "螺丝");
        user.clickCell("fps1", kName, 1);
        user.press("F4");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(kName, 1), 2);
    });
}

TEST_F(ItemRows, thatCanNotBeReadLeaveTheCellShutAndItsTextAsItWas) {
    overRows([this](User& user, EntryGrid& grid) {
        grid.setText(kId, 1, "12");
        grid.setText(kName, 1, "螺母 Nut");
        user.clickCell("fps1", kName, 1);
        if (grid.cellOpen()) user.press("Esc");
        entries->fails = true;
        for (const char* key : {"F4", "F2", "Delete"}) {
            user.answer(MessageKind::critical, "读取失败");
            user.press(key);
            EXPECT_FALSE(grid.cellOpen()) << key;
            EXPECT_EQ(grid.text(kName, 1), "螺母 Nut") << key;
        }
        user.answer(MessageKind::critical, "读取失败");
        user.typeKeys("x");
        EXPECT_EQ(grid.text(kName, 1), "螺母 Nut");
        entries->fails = false;
        user.press("F4");
        EXPECT_EQ(user.openedList().size(), 4U);
        user.press("Up");
        user.press("Enter");
        EXPECT_EQ(grid.text(kName, 1), "螺丝");
    });
}

TEST_F(ItemRows, areListedWithTheCodesOfEqualTexts) {
    overRows([](User& user, EntryGrid& grid) {
        user.clickCell("fps1", kName, 1);
        user.press("F4");
        EXPECT_EQ(user.openedList(), (std::vector<std::string>{"螺丝(01)", "螺母 Nut", "螺丝(03)", ""}));
        user.press("Up");
        user.press("Enter");
        EXPECT_EQ(grid.selectedItem(kName, 1), 2);
    });
}

TEST_F(ItemRows, areFoundByWhatIsTyped) {
    overRows([](User& user, EntryGrid& grid) {
        user.clickCell("fps1", kName, 1);
        user.typeKeys("nut");
        user.press("Tab");
        EXPECT_EQ(grid.selectedItem(kName, 1), 1);
        EXPECT_EQ(grid.text(kName, 1), "螺母 Nut");
        user.clickCell("fps1", kName, 1);
        user.typeKeys("螺丝");
        user.press("Tab");
        EXPECT_EQ(grid.refusal(), "有多项符合，请从列表中选择");
    });
}

TEST_F(ItemRows, needACodeForEach) {
    overRows([](User&, EntryGrid& grid) {
        EXPECT_THROW(grid.setItemCodes(kName, 1, {"01", "02"}), std::invalid_argument);
    });
}

TEST(ItemTexts, readsAnItemOfRowsWhereItStands) {
    const auto entries = std::make_shared<const Entries>();
    const ItemTexts names(entries, 1);
    EXPECT_EQ(names.size(), 4U);
    EXPECT_EQ(names.at(1).data(), entries->cell(1, 1)->data());
    EXPECT_EQ(names.find("螺母 Nut"), 1);
    EXPECT_EQ(names.find("螺母"), -1);
    EXPECT_EQ(names.all(), (std::vector<std::string>{"螺丝", "螺母 Nut", "螺丝", ""}));
    EXPECT_EQ(names.all().data(), ItemTexts(names).all().data()) << "copied once";
    EXPECT_THROW(names.at(4), std::out_of_range);
    EXPECT_EQ(ItemTexts().size(), 0U);
}

}  // namespace
}  // namespace orvenmod::test
