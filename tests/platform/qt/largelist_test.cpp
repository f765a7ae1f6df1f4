// A million rows: what is read is what shows.
#include <QTableView>

#include "platform/qt/qtwindows.h"

namespace orvenmod::test {
namespace {

using namespace platform;

constexpr std::size_t kRows = 1'000'000;
constexpr long kCellsOfAScreen = 10'000;

class CountingRows : public RowSource {
public:
    std::size_t rowCount() const override { return kRows; }
    int columnCount() const override { return 6; }
    std::optional<std::string_view> cell(std::size_t, int) const override {
        ++*read;
        return "12.5";
    }
    std::shared_ptr<long> read = std::make_shared<long>(0);
};

TEST_F(QtToolkitTest, ofAMillionRowsOnlyThoseThatShowAreRead) {
    const auto rows = std::make_shared<CountingRows>();
    use(
        sampleWindow(),
        [&](Window& window) {
            auto& list = window.get<ListGrid>("vsf1");
            list.bind(rows);
            list.setColumnFormat(3, "#,###.##");
            list.setCurrentRow(1);
        },
        [&](User& user) {
            QApplication::activeModalWidget()->repaint();
            EXPECT_GT(*rows->read, 0);
            EXPECT_LT(*rows->read, kCellsOfAScreen);
            *rows->read = 0;
            user.selectRow("vsf1", static_cast<int>(kRows));
            EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), static_cast<int>(kRows));
            QApplication::activeModalWidget()->repaint();
            EXPECT_LT(*rows->read, kCellsOfAScreen);
        });
}

TEST_F(QtToolkitTest, allRowsAreSelectedAtOnce) {
    use(
        sampleWindow(), [](Window& window) { window.get<ListGrid>("vsf1").bind(std::make_shared<CountingRows>()); },
        [](User& user) {
            auto& list = user.control<ListGrid>("vsf1");
            list.setFocus();
            user.press("Ctrl+A");
            EXPECT_TRUE(list.isSelected(1));
            EXPECT_TRUE(list.isSelected(static_cast<int>(kRows)));
            list.setCurrentRow(7);
            EXPECT_FALSE(list.isSelected(1));
            EXPECT_TRUE(list.isSelected(7));
        });
}

TEST_F(QtToolkitTest, aClickBesideTheRowsLeavesThemSelected) {
    use(
        sampleWindow(),
        [](Window& window) {
            for (const char* row : {"1", "2"})
                window.get<ListGrid>("vsf1").addRow(row);
        },
        [](User& user) {
            const auto& list = user.control<ListGrid>("vsf1");
            user.selectRow("vsf1", 2);
            QWidget* ground = found<QTableView>("vsf1")->viewport();
            QTest::mouseClick(ground, Qt::LeftButton, Qt::NoModifier, QPoint(20, ground->height() - 5));
            EXPECT_TRUE(list.isSelected(2));
            EXPECT_EQ(list.currentRow(), 2);
            EXPECT_TRUE(list.hasFocus());
        });
}

TEST_F(QtToolkitTest, rowsThatTheMouseRemovesFromTheSelectionAreNoLongerSelected) {
    use(
        sampleWindow(), [](Window& window) { window.get<ListGrid>("vsf1").bind(std::make_shared<CountingRows>()); },
        [](User& user) {
            const auto& list = user.control<ListGrid>("vsf1");
            user.selectRow("vsf1", 2);
            user.alsoSelectRow("vsf1", 4);
            EXPECT_TRUE(list.isSelected(2) && list.isSelected(4) && !list.isSelected(3));
            user.alsoSelectRow("vsf1", 2);
            EXPECT_FALSE(list.isSelected(2));
            EXPECT_EQ(list.currentRow(), 2);
        });
}

}  // namespace
}  // namespace orvenmod::test
