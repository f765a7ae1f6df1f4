// The save dialog as a clerk uses it: what becomes of the name that is typed.
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "platform/contract/contract.h"
#include "platform/qt/qttoolkit.h"
#include "support/qt_output.h"
#include "support/temporary.h"

namespace orvenmod::test {
namespace {

class QtFileDialogTest : public ::testing::Test {
protected:
    /// The path that is given for a name in the folder, typed after the filter was moved down so many times.
    std::string chosen(const std::string& name, int down) {
        auto& dialog = window_->get<platform::FileDialog>("cd1");
        dialog.setFilter("Excel文件(*.xls)|*.xls|Excel工作簿(*.xlsx)|*.xlsx");
        onDialog(
            "cd1", [&dialog] { EXPECT_TRUE(dialog.showSave()); },
            [&](QDialog& shown) {
                auto* type = shown.findChild<QComboBox*>("fileTypeCombo");
                for (int i = 0; i < down; ++i)
                    QTest::keyClick(type, Qt::Key_Down);
                shown.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(folder_.file(name)));
                auto* buttons = shown.findChild<QDialogButtonBox*>();
                QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
            });
        return dialog.fileName();
    }

    TemporaryFolder folder_;
    platform::qt::QtToolkit toolkit_;
    std::unique_ptr<platform::Window> window_ =
        toolkit_.createWindow(windowWith({{.kind = platform::ControlKind::fileDialog, .name = "cd1"}}));
};

TEST_F(QtFileDialogTest, aNameWithoutExtensionGetsThatOfTheFilter) {
    EXPECT_EQ(chosen("list", 0), folder_.file("list.xls"));
    EXPECT_EQ(chosen("list", 1), folder_.file("list.xlsx"));
}

TEST_F(QtFileDialogTest, aNameWithAnExtensionStays) {
    EXPECT_EQ(chosen("list.xlsx", 0), folder_.file("list.xlsx"));
    EXPECT_EQ(chosen("list.txt", 1), folder_.file("list.txt"));
}

}  // namespace
}  // namespace orvenmod::test
