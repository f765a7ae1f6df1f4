// The save dialog as a clerk uses it: what becomes of the name that is typed.
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <fstream>

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
        return choose([&](QDialog& shown) {
            auto* type = shown.findChild<QComboBox*>("fileTypeCombo");
            for (int i = 0; i < down; ++i)
                QTest::keyClick(type, Qt::Key_Down);
            save(shown, name);
        });
    }

    /// The same where the dialog shows a box, which that button answers. The user gives up where it isn't enough.
    std::string chosenAmid(const std::string& name, QMessageBox::StandardButton button) {
        asked_.clear();
        return choose([&](QDialog& shown) {
            QTimer::singleShot(0, &shown, [&, button] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                ASSERT_NE(box, nullptr) << "no box";
                asked_ = box->text();
                plain_ = box->textFormat() == Qt::PlainText;
                QTest::mouseClick(box->button(button), Qt::LeftButton);
            });
            save(shown, name);
        });
    }

    std::string choose(const std::function<void(QDialog&)>& steps) {
        auto& dialog = window_->get<platform::FileDialog>("cd1");
        dialog.setFilter("Excel文件(*.xls)|*.xls|Excel工作簿(*.xlsx)|*.xlsx");
        bool named = false;
        onDialog(
            "cd1", [&] { named = dialog.showSave(); }, steps);
        return named ? dialog.fileName() : "";
    }

    void save(const QDialog& shown, const std::string& name) const {
        shown.findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(folder_.file(name)));
        auto* buttons = shown.findChild<QDialogButtonBox*>();
        QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    }

    QString asked_;
    bool plain_ = false;
    TemporaryFolder folder_;
    platform::qt::QtToolkit toolkit_;
    std::unique_ptr<platform::Window> window_ =
        toolkit_.createWindow(windowWith({{.kind = platform::ControlKind::fileDialog, .name = "cd1"}}));
};

TEST_F(QtFileDialogTest, aNameWithoutExtensionGetsThatOfTheFilter) {
    EXPECT_EQ(chosen("list", 0), folder_.file("list.xls"));
    EXPECT_EQ(chosen("list", 1), folder_.file("list.xlsx"));
}

TEST_F(QtFileDialogTest, theQuestionBeforeAnOverwriteIsAskedForTheNameWithItsExtension) {
    std::ofstream(folder_.file("list.xls")) << "old";
    std::ofstream(folder_.file("list")) << "another";
    EXPECT_EQ(chosenAmid("list", QMessageBox::Yes), folder_.file("list.xls"));
    EXPECT_TRUE(asked_.contains("list.xls")) << asked_.toStdString();
    EXPECT_EQ(chosenAmid("list", QMessageBox::No), "");
    std::filesystem::permissions(folder_.file("list.xls"), std::filesystem::perms::owner_read);
    EXPECT_EQ(chosenAmid("list", QMessageBox::Ok), "");
    EXPECT_EQ(asked_.toStdString(), "“list.xls”是只读文件，不能替换。");
    EXPECT_TRUE(plain_) << "a name with signs of markup shows as it is";
}

TEST_F(QtFileDialogTest, aNameThatLooksLikeMarkupIsAskedForAsItIs) {
    std::ofstream(folder_.file("<b>list<u>.xls")) << "old";
    EXPECT_EQ(chosenAmid("<b>list<u>", QMessageBox::Yes), folder_.file("<b>list<u>.xls"));
    EXPECT_TRUE(asked_.contains("<b>list<u>.xls")) << asked_.toStdString();
    EXPECT_TRUE(plain_);
}

TEST_F(QtFileDialogTest, aFolderThatIsNamedIsGoneInto) {
    std::filesystem::create_directory(folder_.file("lists"));
    EXPECT_EQ(choose([&](QDialog& shown) {
                  save(shown, "lists");
                  EXPECT_TRUE(shown.isVisible());
                  EXPECT_EQ(dynamic_cast<QFileDialog&>(shown).directory().dirName(), "lists");
                  shown.reject();
              }),
              "");
}

TEST_F(QtFileDialogTest, aNameWithAnExtensionStays) {
    EXPECT_EQ(chosen("list.xlsx", 0), folder_.file("list.xlsx"));
    EXPECT_EQ(chosen("list.txt", 1), folder_.file("list.txt"));
}

}  // namespace
}  // namespace orvenmod::test
