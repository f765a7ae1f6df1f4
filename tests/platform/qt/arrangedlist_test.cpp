// A list that its user narrows: what of it stands in the window.
#include <QLineEdit>
#include <QTableView>

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

}  // namespace
}  // namespace orvenmod::test
