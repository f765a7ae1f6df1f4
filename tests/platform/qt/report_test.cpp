// A report through Qt's printing: the PDF is read back with pdftotext, the preview is used as a clerk would.
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QImage>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <filesystem>
#include <fstream>

#include "platform/qt/qttoolkit.h"
#include "platform/qt/qtwindows.h"
#include "support/machinelimits.h"
#include "support/qt_output.h"
#include "support/temporary.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;
using platform::Report;
using platform::ReportAlignment;
using platform::ReportFieldType;

std::string withoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

class QtReportTest : public QtToolkitTest {
protected:
    QtReportTest() {
        std::ofstream(template_) << "report 1\npage A5 landscape\nmargins 10 10 10 10\nheader 14\n"
                                    "text fTitle 0 0 190 10 size 16 bold centre\nfooter 8\n"
                                    "text - 0 1 190 6 centre \"第 {page} 页 共 {pages} 页\"\n";
        report_->initialize = [this] { define(); };
        report_->fetchRecord = [this] {
            for (int i = 1; i <= records_; ++i) {
                report_->appendRecord();
                if (columns_) setFields(i);
                report_->postRecord();
            }
        };
    }
    ~QtReportTest() override { toolkit().setPrintFile(""); }

    platform::qt::QtToolkit& toolkit() { return dynamic_cast<platform::qt::QtToolkit&>(script->toolkit()); }
    std::string print(const std::string& name = "list.pdf") {
        toolkit().setPrintFile(folder_.file(name));
        report_->print();
        return pdfText(folder_.file(name));
    }
    /// Shows the preview and plays the steps on it.
    void preview(const std::function<void(QDialog&)>& steps) {
        onDialog(
            "preview", [this] { report_->printPreview(); }, steps);
    }

    TemporaryFolder folder_;
    std::string template_ = folder_.file("Report3.grf");
    int records_ = 50;
    bool columns_ = true;
    std::vector<std::string> texts_;  ///< of the records, where a test has its own
    std::unique_ptr<Report> report_ = script->toolkit().createReport();

private:
    void setFields(int record) {
        const auto at = static_cast<std::size_t>(record) - 1;
        report_->setFieldText(1, at < texts_.size() ? texts_[at] : "货品" + std::to_string(record));
        report_->setFieldText(2, std::to_string(record) + ".5");
    }
    void define() {
        report_->loadFromFile(template_);
        report_->setTitle("货品打印");
        report_->setHeaderText(1, "fTitle", "货品一览");
        if (!columns_) return;
        report_->addField("名称", ReportFieldType::text);
        report_->addColumn("名称", "名称", 1, 6);
        report_->addField("数量", ReportFieldType::number);
        report_->setFieldFormat(2, "#,##0.00");
        report_->addColumn("数量", "数量", 2, 3);
        report_->setContentAlignment(1, ReportAlignment::right);
    }
};

TEST_F(QtReportTest, printsEveryRecordWithTitlesAndNumbersOnEveryPage) {
    const std::string text = print();
    for (int i = 1; i <= records_; ++i)
        EXPECT_NE(text.find("货品" + std::to_string(i) + " "), std::string::npos) << i;
    EXPECT_NE(text.find("50.50"), std::string::npos);
    EXPECT_EQ(countOf(text, "货品一览"), 1U);
    const std::size_t pages = countOf(text, "\f");
    EXPECT_GE(pages, 3U);
    EXPECT_EQ(countOf(text, "名称"), pages);
    EXPECT_NE(withoutBlanks(text).find("第1页共" + std::to_string(pages) + "页"), std::string::npos) << text;
}

TEST_F(QtReportTest, printsAnEmptyListAsOnePage) {
    records_ = 0;
    const std::string text = print();
    EXPECT_EQ(countOf(text, "\f"), 1U);
    EXPECT_EQ(countOf(text, "货品一览") + countOf(text, "名称"), 2U);
}

TEST_F(QtReportTest, printsTextsOfAnyKindOnTheirOneLine) {
    std::string controls = "控";
    for (char c = 1; c < 0x20; ++c)
        controls += c;
    texts_ = {controls + "制", "第一行\r\n第二行", "表情😀完", std::string(40000, 'y'), "坏\xE5\xAE了", ""};
    records_ = static_cast<int>(texts_.size());
    const std::string text = print();
    EXPECT_EQ(countOf(text, "\f"), 1U);
    for (const char* part : {"控", "制", "第一行 第二行", "表情", "yyyyy", "6.50"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    EXPECT_EQ(text.find(std::string(200, 'y')), std::string::npos) << "cut at its cell";
    preview([](QDialog& dialog) { EXPECT_FALSE(dialog.grab().isNull()); });
}

TEST_F(QtReportTest, printsAListWithoutColumnsAsOnePage) {
    columns_ = false;
    const std::string text = print();
    EXPECT_EQ(countOf(text, "\f"), 1U);
    EXPECT_EQ(countOf(text, "货品一览"), 1U);
}

TEST_F(QtReportTest, isWrittenThroughALinkAndLeavesWhatIsReadOnly) {
    fs::create_symlink("target.pdf", folder_.file("link.pdf"));
    EXPECT_EQ(countOf(print("link.pdf"), "货品一览"), 1U);
    EXPECT_TRUE(fs::is_symlink(folder_.file("link.pdf")));
    EXPECT_TRUE(fs::is_regular_file(folder_.file("target.pdf")));
    fs::permissions(folder_.file("target.pdf"), fs::perms::owner_read);
    toolkit().setPrintFile(folder_.file("link.pdf"));
    EXPECT_THROW(report_->print(), std::runtime_error);
}

TEST_F(QtReportTest, aFolderOrAMissingFolderIsRefusedAndLeavesNothing) {
    fs::create_directory(folder_.file("folder.pdf"));
    for (const char* name : {"folder.pdf", "gone/list.pdf"}) {
        toolkit().setPrintFile(folder_.file(name));
        EXPECT_THROW(report_->print(), std::runtime_error) << name;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 2);
}

TEST_F(QtReportTest, aFullDiskIsToldAndLeavesTheOldFile) {
    std::ofstream(folder_.file("list.pdf")) << "old";
    toolkit().setPrintFile(folder_.file("list.pdf"));
    {
        const FullDisk disk(4096);
        EXPECT_THROW(report_->print(), std::runtime_error);
    }
    std::string left;
    std::ifstream(folder_.file("list.pdf")) >> left;
    EXPECT_EQ(left, "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 2);
}

TEST_F(QtReportTest, aLongPrintThatIsCancelledLeavesNoFile) {
    records_ = 20000;
    std::ofstream(folder_.file("old.pdf")) << "old";
    for (const char* name : {"new.pdf", "old.pdf"}) {
        toolkit().setPrintFile(folder_.file(name));
        onDialog(
            "progress", [this] { report_->print(); },
            [](QDialog& box) {
                EXPECT_EQ(box.windowTitle(), "货品打印");
                EXPECT_EQ(box.findChild<QLabel*>()->text(), "正在打印，请稍候…");
                box.findChild<QPushButton*>("cancel")->click();
            });
    }
    EXPECT_FALSE(fs::exists(folder_.file("new.pdf")));
    EXPECT_EQ(fs::file_size(folder_.file("old.pdf")), 3U);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 2);
}

TEST_F(QtReportTest, aLongPrintFromThePreviewTellsHowFarItIsOverIt) {
    records_ = 5000;
    toolkit().setPrintFile(folder_.file("list.pdf"));
    preview([](QDialog& dialog) {
        onDialog(
            "progress", [&dialog] { pressAction(dialog, "Print"); },
            [&dialog](QDialog& box) { EXPECT_EQ(box.parentWidget(), &dialog); });
        EXPECT_TRUE(dialog.isVisible());
    });
}

TEST_F(QtReportTest, aMissingTemplateIsRefusedBeforeAnyWindow) {
    fs::remove(template_);
    EXPECT_THROW(report_->printPreview(), std::runtime_error);
    EXPECT_THROW(print(), std::runtime_error);
}

TEST_F(QtReportTest, thePreviewTurnsItsPages) {
    preview([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "货品打印 - 打印预览");
        auto* number = dialog.findChild<QSpinBox*>("PageNumber");
        EXPECT_FALSE(dialog.findChild<QAction*>("Previous")->isEnabled());
        EXPECT_EQ(dialog.findChild<QLabel*>("PageCount")->text(),
                  QStringLiteral(" / 共 %1 页 ").arg(number->maximum()));
        pressAction(dialog, "Next");
        EXPECT_EQ(number->value(), 2);
        pressAction(dialog, "Last");
        EXPECT_EQ(number->value(), number->maximum());
        EXPECT_FALSE(dialog.findChild<QAction*>("Next")->isEnabled());
        pressAction(dialog, "Previous");
        pressAction(dialog, "First");
        EXPECT_EQ(number->value(), 1);
        QTest::keyClick(&dialog, Qt::Key_PageDown);
        EXPECT_EQ(number->value(), 2);
        number->setValue(3);
        EXPECT_TRUE(dialog.findChild<QAction*>("Previous")->isEnabled());
    });
}

TEST_F(QtReportTest, thePreviewShowsTheSheetInTheChosenSize) {
    preview([](QDialog& dialog) {
        auto* page = dialog.findChild<QWidget*>("page");
        auto* zoom = dialog.findChild<QComboBox*>("Zoom");
        zoom->setCurrentIndex(zoom->findData(100));
        const int plain = page->width();
        EXPECT_NEAR(plain, 210 / 25.4 * 96, 30);
        zoom->setCurrentIndex(zoom->findData(200));
        EXPECT_GT(page->width(), plain * 3 / 2);
        zoom->setCurrentIndex(0);
        EXPECT_LT(page->height(), dialog.height());
        const QImage image = page->grab().toImage();
        int dark = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                dark += qGray(image.pixel(x, y)) < 100 ? 1 : 0;
        }
        EXPECT_GT(dark, 500) << "letters on the sheet";
    });
}

/// Opens the page set-up, which must show the paper, and chooses another.
void setUpPage(QDialog& preview, const QString& shown, const QString& chosen) {
    onDialog(
        "pageSetup", [&preview] { pressAction(preview, "PageSetup"); },
        [&](QDialog& setup) {
            auto& box = dynamic_cast<QInputDialog&>(setup);
            EXPECT_EQ(box.textValue(), shown);
            EXPECT_TRUE(box.comboBoxItems().contains(chosen));
            box.setTextValue(chosen);
            box.accept();
        });
}

TEST_F(QtReportTest, thePreviewTakesAnotherPaper) {
    preview([](QDialog& dialog) {
        auto* number = dialog.findChild<QSpinBox*>("PageNumber");
        auto* page = dialog.findChild<QWidget*>("page");
        const int before = number->maximum();
        setUpPage(dialog, "A5 横向", "A4 纵向");
        EXPECT_LT(number->maximum(), before);
        EXPECT_GT(page->height(), page->width());
        setUpPage(dialog, "A4 纵向", "Letter 横向");
        EXPECT_GT(page->width(), page->height());
        setUpPage(dialog, "Letter 横向", "Letter 横向");
    });
}

TEST_F(QtReportTest, thePreviewKnowsATemplatesOwnPaper) {
    std::ofstream(template_) << "report 1\npage 241 140\nheader 14\ntext fTitle 0 0 190 10\n";
    preview([](QDialog& dialog) {
        setUpPage(dialog, "241 × 140 毫米", "241 × 140 毫米");
        auto* page = dialog.findChild<QWidget*>("page");
        EXPECT_GT(page->width(), page->height());
        setUpPage(dialog, "241 × 140 毫米", "A4 纵向");
        EXPECT_LT(page->width(), page->height());
    });
}

TEST_F(QtReportTest, thePreviewPrintsWhatItShows) {
    toolkit().setPrintFile(folder_.file("list.pdf"));
    preview([](QDialog& dialog) { pressAction(dialog, "Print"); });
    EXPECT_EQ(countOf(pdfText(folder_.file("list.pdf")), "货品一览"), 1U);
}

TEST_F(QtReportTest, aLongPreviewLaysOutOnlyThePageThatIsLookedAt) {
    records_ = 100000;
    preview([](QDialog& dialog) {
        EXPECT_GT(dialog.findChild<QSpinBox*>("PageNumber")->maximum(), 5000);
        pressAction(dialog, "Last");
    });
}

}  // namespace
}  // namespace orvenmod::test
