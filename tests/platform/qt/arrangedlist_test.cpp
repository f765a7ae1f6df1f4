// A list that its user narrows: what of it stands in the window.
#include <QElapsedTimer>
#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTableView>
#include <memory>
#include <utility>
#include <vector>

#include "platform/qt/qtwindows.h"

namespace orvenmod::test {
namespace {

using namespace platform;

constexpr int kRows = 40;

WindowDesign arrangedWindow() {
    WindowDesign design = sampleWindow();
    for (ControlDesign& control : design.controls)
        control.arranges = control.name == "vsf1";
    return design;
}

void loadManyRows(Window& window) {
    auto& list = window.get<ListGrid>("vsf1");
    for (int row = 1; row <= kRows; ++row)
        list.addRow(std::to_string(100 + row) + "\t垫圈");
    list.setCurrentRow(1);
}

/// Neither the row at the top is cut nor the current one, wherever the list has come to stand.
void expectWholeRows(const std::string& after) {
    QApplication::processEvents();
    const auto* list = QApplication::activeModalWidget()->findChild<QTableView*>(QStringLiteral("vsf1"));
    EXPECT_EQ(list->rowViewportPosition(list->rowAt(0)), 0) << after;
    const QRect current = list->visualRect(list->currentIndex());
    EXPECT_TRUE(list->viewport()->rect().contains(current))
        << after << ": current at " << current.top() << " of " << list->viewport()->height();
}

TEST_F(QtToolkitTest, noRowIsCutHoweverTheListIsNarrowed) {
    for (const int current : {1, 20, kRows}) {
        const std::string from = " from " + std::to_string(current);
        use(arrangedWindow(), loadManyRows, [&](User& user) {
            user.selectRow("vsf1", current);
            expectWholeRows("a click" + from);
            user.press("Ctrl+F");
            expectWholeRows("opening the line" + from);
            for (const char* words : {"1", "12", "13", ""}) {
                found<QLineEdit>("vsf1Line")->setText(QString::fromUtf8(words));
                expectWholeRows(std::string("typing ") + words + from);
            }
            user.press("Esc");
            expectWholeRows("closing the line" + from);
        });
    }
}

class ManyRows : public RowSource {
public:
    std::size_t rowCount() const override { return 250'000; }
    int columnCount() const override { return 1; }
    std::optional<std::string_view> cell(std::size_t row, int) const override { return row % 2 == 0 ? "a" : "b"; }
};

// A view that compares each marked row with every other takes half a minute for it.
TEST_F(QtToolkitTest, everySecondRowOfManyIsMarkedInATrice) {
    use(
        arrangedWindow(), [](Window& window) { window.get<ListGrid>("vsf1").bind(std::make_shared<ManyRows>()); },
        [](User& user) {
            auto& list = user.control<ListGrid>("vsf1");
            list.narrow("a");
            list.setFocus();
            user.press("Ctrl+A");
            QElapsedTimer clock;
            clock.start();
            list.narrow("");
            EXPECT_LT(clock.elapsed(), 10'000);
            EXPECT_TRUE(list.isSelected(249'999));
            EXPECT_FALSE(list.isSelected(250'000));
        });
}

/// How wide the first and the last line of the drawing are.
std::pair<int, int> endsOf(const QImage& image) {
    std::vector<int> widths;
    for (int y = 0; y < image.height(); ++y) {
        int dark = 0;
        for (int x = 0; x < image.width(); ++x)
            dark += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
        if (dark > 0) widths.push_back(dark);
    }
    return widths.empty() ? std::pair(0, 0) : std::pair(widths.front(), widths.back());
}

TEST_F(QtToolkitTest, theArrowOfAHeadingPointsUpWhereTheValuesGoUp) {
    use(arrangedWindow(), loadManyRows, [](User& user) {
        constexpr int kArrow = 16;
        const auto drawn = [](QStyleOptionHeader::SortIndicator of) {
            QImage image(kArrow, kArrow, QImage::Format_RGB32);
            image.fill(Qt::white);
            QStyleOptionHeader option;
            option.rect = image.rect();
            option.palette = QPalette(Qt::white);
            option.sortIndicator = of;
            QPainter painter(&image);
            QApplication::style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &option, &painter);
            painter.end();
            return image;
        };
        user.clickHeading("vsf1", 0);
        EXPECT_EQ(found<QTableView>("vsf1")->horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
        // Qt's heading asks for the sign "down" then.
        const auto [top, bottom] = endsOf(drawn(QStyleOptionHeader::SortDown));
        EXPECT_LT(top, bottom);
        const auto [first, last] = endsOf(drawn(QStyleOptionHeader::SortUp));
        EXPECT_GT(first, last);
    });
}

}  // namespace
}  // namespace orvenmod::test
