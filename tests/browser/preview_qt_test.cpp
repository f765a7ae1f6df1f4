// Preview and print from the list's window, through Qt's own dialogs to a PDF.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <sstream>

#include "browser/browsertest.h"
#include "platform/qt/qttoolkit.h"
#include "support/qt_output.h"
#include "support/sourcefolder.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class ListPreview : public ::testing::Test {
protected:
    ListPreview() {
        fs::copy_file(sourceFile("examples/host/Report3.grf"), stage.database().folder().file("Report3.grf"));
        stage.set("SystemLogin", "gLoginUserName", "张会计");
        for (int i = 0; i < 100; ++i)
            stage.database().addItem(3, 1000 + i, "01.01." + std::to_string(1000 + i), "垫圈" + std::to_string(i), 13);
    }

    /// Presses the preview's button in the list's window and plays the steps on the preview.
    void preview(const std::function<void(QDialog&)>& steps) {
        stage.open(kPicker, [&](User& user) {
            onDialog(
                "preview", [&user] { user.clickTool("Preview"); }, steps);
            EXPECT_TRUE(user.window().shown());
            rows_ = listRows(user, user.control<platform::ListGrid>("vsf1").columnCount() - 1);
        });
    }
    std::string pdf() const { return folder_.file("list.pdf"); }
    /// In the print dialog: into the PDF file.
    void printToFile(QDialog& dialog) const {
        auto* printers = dialog.findChild<QComboBox*>("printers");
        auto* file = dialog.findChild<QLineEdit*>("filename");
        ASSERT_TRUE(printers != nullptr && file != nullptr);
        printers->setCurrentIndex(printers->count() - 1);
        file->setText(QString::fromStdString(pdf()));
        dialog.accept();
    }
    /// Every row of the list stands on a line of the PDF, its cells in their order.
    void expectRowsInPdf() const {
        std::istringstream lines(pdfText(pdf()));
        auto row = rows_.begin();
        for (std::string line; std::getline(lines, line) && row != rows_.end();) {
            if (holds(line, *row)) ++row;
        }
        EXPECT_TRUE(row == rows_.end()) << "not on paper: " << row->at(0) << "\n" << pdfText(pdf());
    }

    TemporaryFolder folder_;
    BrowserStage stage{newQtScript};
    Rows rows_;

private:
    static bool holds(const std::string& line, const Texts& cells) {
        std::size_t at = 0;
        for (std::string cell : cells) {
            if (cell == "1,244.5") cell = "1,244.50";  // the report's format has all decimals
            if (cell == "5") cell = "5.00";
            at = line.find(cell, at);
            if (at == std::string::npos) return false;
            at += cell.size();
        }
        return true;
    }
};

TEST_F(ListPreview, turnsItsPagesByMouseAndKeyboard) {
    preview([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "货品打印 - 打印预览");
        auto* number = dialog.findChild<QSpinBox*>("PageNumber");
        EXPECT_EQ(number->maximum(), 5);
        pressAction(dialog, "Next");
        EXPECT_EQ(number->value(), 2);
        QTest::keyClick(&dialog, Qt::Key_End);
        EXPECT_EQ(number->value(), 5);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
}

TEST_F(ListPreview, isEnlargedAndTakesAnotherPaper) {
    preview([](QDialog& dialog) {
        auto* page = dialog.findChild<QWidget*>("page");
        auto* zoom = dialog.findChild<QComboBox*>("Zoom");
        zoom->setCurrentIndex(zoom->findData(100));
        const QSize plain = page->size();
        EXPECT_GT(plain.width(), plain.height()) << "landscape";
        zoom->setCurrentIndex(zoom->findData(200));
        EXPECT_GT(page->width(), plain.width() * 3 / 2);
        onDialog(
            "pageSetup", [&dialog] { pressAction(dialog, "PageSetup"); },
            [](QDialog& setup) {
                dynamic_cast<QInputDialog&>(setup).setTextValue(QStringLiteral("A4 纵向"));
                setup.accept();
            });
        EXPECT_LT(page->width(), page->height());
        EXPECT_EQ(dialog.findChild<QSpinBox*>("PageNumber")->maximum(), 3);
    });
}

TEST_F(ListPreview, printsWhatItShowsThroughThePrintDialog) {
    preview([this](QDialog& dialog) {
        onDialog(
            "print", [&dialog] { pressAction(dialog, "Print"); }, [this](QDialog& print) { printToFile(print); });
        EXPECT_TRUE(dialog.isVisible()) << "the preview stays";
    });
    expectRowsInPdf();
    const std::string text = pdfText(pdf());
    EXPECT_NE(text.find("打印人:张会计"), std::string::npos) << text;
    EXPECT_EQ(std::ranges::count(text, '\f'), 5);
}

TEST_F(ListPreview, isNotNeededToPrint) {
    stage.open(kPicker, [this](User& user) {
        user.clickNode("tv1", "D12");
        rows_ = listRows(user, user.control<platform::ListGrid>("vsf1").columnCount() - 1);
        onDialog(
            "print", [&user] { user.clickTool("Print"); }, [this](QDialog& print) { printToFile(print); });
    });
    ASSERT_EQ(rows_.size(), 102U);
    expectRowsInPdf();
    EXPECT_EQ(pdfText(pdf()).find("墙壁开关"), std::string::npos) << "the list as filtered";
}

TEST_F(ListPreview, printsRowsAndColumnsInTheOrderTheyShow) {
    stage.open(kPicker, [this](User& user) {
        user.clickHeading("vsf1", 2);
        user.clickHeading("vsf1", 2);
        user.dragHeading("vsf1", 3, 2);
        onDialog(
            "print", [&user] { user.clickTool("Print"); }, [this](QDialog& print) { printToFile(print); });
    });
    rows_ = {{"劳保手套", "03"}, {"墙壁开关", "02.001"}};
    for (int i = 99; i >= 0; --i)
        rows_.push_back({"垫圈" + std::to_string(i), "01.01." + std::to_string(1000 + i)});
    rows_.push_back({"螺母", "01.01.002"});
    rows_.push_back({"内六角螺丝", "01.01.001"});
    expectRowsInPdf();
    const std::string text = pdfText(pdf());
    EXPECT_LT(text.find("名称"), text.find("代码")) << text;
}

TEST_F(ListPreview, aCancelledPrintDialogPrintsNothing) {
    stage.open(kPicker, [](User& user) {
        onDialog(
            "print", [&user] { user.clickTool("Print"); }, [](QDialog& print) { print.reject(); });
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
    EXPECT_TRUE(fs::is_empty(folder_.path()));
    EXPECT_TRUE(stage.script().messages().empty());
}

}  // namespace
}  // namespace orvenmod::test
