// The editor as a clerk meets it in Qt: what can be typed, picked, seen and opened.
#include <QApplication>
#include <QCalendarWidget>
#include <QCompleter>
#include <QHeaderView>
#include <QImage>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <cmath>
#include <stdexcept>

#include "editor/editortest.h"
#include "platform/qt/qttoolkit.h"
#include "support/qt_user.h"

namespace orvenmod::test {
namespace {

constexpr QRgb kLocked = qRgb(244, 244, 217);

class EditorCells : public testing::Test {
protected:
    void TearDown() override { stage.finish(); }

    void setField(const std::string& field, const std::string& values) {
        stage.database().execute("update tblTableInfo set " + values + " where fItemClassId=3 and fFieldName='" +
                                 field + "'");
    }

    static QTableView& fields() { return *QApplication::activeModalWidget()->findChild<QTableView*>("fps1"); }
    static QModelIndex cell(int column, int row) { return fields().model()->index(row - 1, column - 1); }
    /// What the cell looks like.
    static QImage look(int column, int row) {
        return fields().viewport()->grab(fields().visualRect(cell(column, row))).toImage();
    }

    EditorStage stage{newQtScript};
};

/// Of the brightness of two colours, 1 to 21; 4.5 is what small text needs.
double contrast(const QColor& one, const QColor& other) {
    const auto brightness = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const auto [low, high] = std::minmax({brightness(one), brightness(other)});
    return (high + 0.05) / (low + 0.05);
}

int pixelsUnlike(const QImage& image, int left, QRgb ground) {
    int count = 0;
    for (int y = 2; y < image.height() - 2; ++y) {
        for (int x = left; x < image.width() - 2; ++x)
            count += image.pixel(x, y) != ground;
    }
    return count;
}

TEST_F(EditorCells, aDayIsPickedFromTheCalendarByKeys) {
    stage.openItem(101, [](User& user) {
        user.typeCell("fps1", kValue, kDayRow, "2026-03-04");
        user.press("F4");
        auto* calendar = QApplication::activePopupWidget()->findChild<QCalendarWidget*>();
        ASSERT_NE(calendar, nullptr);
        EXPECT_EQ(calendar->selectedDate(), QDate(2026, 3, 4)) << "it opens at the day of the cell";
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        EXPECT_EQ(value(user, kDayRow), "2026-03-12");
    });
}

TEST_F(EditorCells, aNumberShowsTheDecimalsOfItsField) {
    setField("fMinQty", "fNumberDec=2,FMaxNumber=100,FMinNumber=-5");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "7");
        EXPECT_EQ(cell(kValue, kMinQtyRow).data().toString(), "7.00");
        EXPECT_TRUE(cell(kValue, kMinQtyRow).data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
    });
}

TEST_F(EditorCells, aRefusalShowsBesideItsCellUntilTheNextLetter) {
    setField("fMinQty", "fNumberDec=2,FMaxNumber=100,FMinNumber=10");
    stage.openNew([](User& user) {
        auto* hint = QApplication::activeModalWidget()->findChild<QLabel*>("cellHint");
        ASSERT_NE(hint, nullptr);
        EXPECT_FALSE(hint->isVisible());
        user.typeCell("fps1", kValue, kMinQtyRow, "150");
        user.clickCell("fps1", kValue, kNameRow);
        EXPECT_TRUE(hint->isVisible()) << "a click elsewhere doesn't take it away";
        EXPECT_EQ(hint->text(), "请输入 10 到 100 之间的数");
        const QRect place = fields().visualRect(cell(kValue, kMinQtyRow));
        const QPoint below = fields().viewport()->mapTo(hint->window(), place.bottomRight());
        EXPECT_NEAR(hint->y(), below.y(), 6);
        EXPECT_EQ(hint->geometry().right(), below.x()) << "a number stands at the right end of its cell";
        user.typeKeys("0");
        EXPECT_FALSE(hint->isVisible());
        user.press("Enter");
        EXPECT_TRUE(hint->isVisible());
        user.press("Esc");
        EXPECT_FALSE(hint->isVisible());
    });
}

/// A click as the desktop gives it: at a place of the window, whatever lies there or has the mouse.
void clickPlace(const QModelIndex& index, Qt::MouseButton button = Qt::LeftButton) {
    auto* view = QApplication::activeModalWidget()->findChild<QTableView*>("fps1");
    const QPoint place = view->viewport()->mapTo(view->window(), view->visualRect(index).center());
    // Without a window manager nobody gives the window the keyboard back when a list closes.
    if (QApplication::activePopupWidget() == nullptr) view->window()->activateWindow();
    settle();
    QTest::mouseClick(view->window()->windowHandle(), button, Qt::NoModifier, place);
    settle();
}

TEST_F(EditorCells, aClickBesideAnOpenListTakesOverWhatWasTyped) {
    stage.openNew([](User& user) {
        user.clickCell("fps1", kValue, kSupplierRow);
        user.typeKeys("南");
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        clickPlace(cell(kValue, kNameRow));
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        clickPlace(cell(kValue, kNameRow));
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), kNameRow);
        user.clickCell("fps1", kValue, kSupplierRow);
        user.typeKeys("供");
        clickPlace(cell(kValue, kNameRow));
        clickPlace(cell(kValue, kNameRow));
        EXPECT_EQ(user.control<EntryGrid>("fps1").refusal(), "有多项符合，请从列表中选择");
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), kSupplierRow);
        clickPlace(cell(kValue, kNameRow), Qt::RightButton);
        EXPECT_EQ(user.control<EntryGrid>("fps1").openText(), "供");
        EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus());
        user.typeKeys("x");
        EXPECT_EQ(user.control<EntryGrid>("fps1").openText(), "供x");
        user.press("Esc");
        if (user.control<EntryGrid>("fps1").cellOpen()) user.press("Esc");
        clickPlace(cell(kValue, kNameRow));
        user.typeKeys("新");
        EXPECT_EQ(value(user, kNameRow), "新");
    });
}

TEST_F(EditorCells, aClickOnAChoiceOpensItsListAndTheNextLetterTakesItsPlace) {
    stage.openNew([](User& user) {
        user.pickCell("fps1", kValue, kSupplierRow, 0);
        clickPlace(cell(kValue, kNameRow));
        clickPlace(cell(kValue, kSupplierRow));
        EXPECT_EQ(user.openedList().size(), 2U);
        user.typeKeys("南");
        EXPECT_EQ(user.control<EntryGrid>("fps1").openText(), "南");
        EXPECT_EQ(user.openedList(), Texts{"华南供应"});
        user.press("Tab");
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
    });
}

TEST_F(EditorCells, aRefusalGoesWithTheRowOfItsCell) {
    setField("fMinQty", "fNumberDec=2,FMaxNumber=100,FMinNumber=10");
    stage.openNew([](User& user) {
        auto* hint = QApplication::activeModalWidget()->findChild<QLabel*>("cellHint");
        user.typeCell("fps1", kValue, kMinQtyRow, "150");
        ASSERT_TRUE(hint->isVisible());
        user.control<EntryGrid>("fps1").deleteRow(kMinQtyRow);
        settle();
        EXPECT_FALSE(hint->isVisible());
    });
}

/// What an input method gives, wherever the keyboard stands.
void input(const QString& committed, const QString& composing = {}) {
    QInputMethodEvent event(composing, {});
    event.setCommitString(committed);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    settle();
}

TEST_F(EditorCells, anInputMethodThatCommitsAtOnceLosesNothing) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kNameRow, "旧名");
        EXPECT_TRUE(fields().testAttribute(Qt::WA_InputMethodEnabled));
        input("电器");
        EXPECT_EQ(value(user, kNameRow), "电器");
        input("件");
        EXPECT_EQ(value(user, kNameRow), "电器件");
        user.press("Enter");
        user.clickCell("fps1", kValue, kSupplierRow);
        input("华");
        input("南");
        user.press("Tab");
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
        user.clickCell("fps1", kValue, kMinQtyRow);
        input("１２");
        input("．５");
        user.press("Tab");
        EXPECT_EQ(value(user, kMinQtyRow), "12.5");
        user.clickCell("fps1", kValue, kCodeRow);
        const std::string code = value(user, kCodeRow);
        input("电器");
        EXPECT_EQ(value(user, kCodeRow), code) << "locked";
    });
}

TEST_F(EditorCells, anInputMethodComposesInACellThatIsNotOpen) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kNameRow, "旧名");
        input("", "dian");
        input("", "dianqi");
        input("电器");
        EXPECT_EQ(value(user, kNameRow), "电器");
        input("", "jian");
        input("件");
        user.press("Enter");
        EXPECT_EQ(value(user, kNameRow), "电器件");
        user.clickCell("fps1", kValue, kSupplierRow);
        input("", "nan");
        input("南");
        user.press("Enter");
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
    });
}

TEST_F(EditorCells, aListThatShowsLetsTheKeysOfACommandThrough) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kSupplierRow);
        user.typeKeys("南");
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stage.database().value("select fH from ICItem where fItemId=203"), "202");
}

TEST_F(EditorCells, aCurrencyShowsItsSeparatorsAndKeepsThePlainNumber) {
    setField("fMinQty", "fFieldType=12");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "1234567.5");
        EXPECT_EQ(value(user, kMinQtyRow), "1234567.5");
        EXPECT_EQ(cell(kValue, kMinQtyRow).data().toString(), "1,234,567.50");
        typeName(user, "垫圈");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(stage.database().value("select fMinQty from ICItem where fItemId=203"), "1234567.5");
}

TEST_F(EditorCells, aChoiceIsSearchedByTypingAndEscapeLeavesIt) {
    stage.openNew([](User& user) {
        user.pickCell("fps1", kValue, kSupplierRow, 0);
        user.clickCell("fps1", kValue, kSupplierRow);
        pressLetter(fields(), "南");
        auto* field = qobject_cast<QLineEdit*>(fields().indexWidget(cell(kValue, kSupplierRow)));
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->completer()->completionModel()->rowCount(), 1) << "only what contains it is offered";
        user.press("Enter");
        EXPECT_EQ(value(user, kSupplierRow), "华南供应");
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
        user.clickCell("fps1", kValue, kSupplierRow);
        pressLetter(fields(), "东");
        for (int open = 0; open < 2 && fields().indexWidget(cell(kValue, kSupplierRow)) != nullptr; ++open)
            user.press("Esc");
        EXPECT_EQ(value(user, kSupplierRow), "华南供应");
        pressLetter(fields(), "x");
        user.press("Enter");
        EXPECT_EQ(user.control<EntryGrid>("fps1").refusal(), "没有这一项");
        EXPECT_EQ(value(user, kSupplierRow), "华南供应");
    });
}

TEST_F(EditorCells, enterWalksFromValueToValuePastTheLockedCode) {
    stage.openNew([](User& user) {
        std::vector<int> walked;
        for (int step = 0; step < 8; ++step) {
            walked.push_back(user.control<EntryGrid>("fps1").activeRow());
            EXPECT_EQ(user.control<EntryGrid>("fps1").activeColumn(), kValue);
            user.press("Enter");
        }
        EXPECT_EQ(walked, (std::vector<int>{kShortCodeRow, kNameRow, kModelRow, kMinQtyRow, kDayRow, kSupplierRow,
                                            kCategoryRow, kCategoryRow}));
    });
}

TEST_F(EditorCells, theValuesTakeTheWidthOfTheWindow) {
    stage.openNew([](User& user) {
        const auto rest = [] { return fields().viewport()->width() - fields().horizontalHeader()->length(); };
        EXPECT_EQ(rest(), 0);
        const int before = fields().columnWidth(kValue - 1);
        user.resizeWindow(18000, 12000);
        EXPECT_EQ(rest(), 0);
        EXPECT_GT(fields().columnWidth(kValue - 1), before + 300);
    });
}

TEST_F(EditorCells, lockedCellsCarryTheirColourAndStayLegible) {
    stage.openNew([](User& user) {
        const QImage locked = look(kValue, kCodeRow);
        EXPECT_EQ(locked.pixel(locked.width() / 2, 3), kLocked);
        EXPECT_GT(contrast(QColor(kLocked), cell(kValue, kCodeRow).data(Qt::ForegroundRole).value<QColor>()), 4.5);
        EXPECT_GT(pixelsUnlike(locked, 0, kLocked), 10) << "its text shows";
        const QImage open = look(kValue, kNameRow);
        EXPECT_NE(open.pixel(open.width() / 2, 3), kLocked);
        user.clickCell("fps1", kValue, kCodeRow);
        pressLetter(fields(), "9");
        EXPECT_EQ(value(user, kCodeRow), "04") << "and nobody types in them";
    });
}

TEST_F(EditorCells, aRequiredFieldBearsAStarBesideItsName) {
    stage.openNew([](User& user) {
        const auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_TRUE(grid.required(kCaption, kNameRow));
        EXPECT_FALSE(grid.required(kCaption, kModelRow));
        EXPECT_EQ(grid.text(kCaption, kNameRow), "名称");
        constexpr int kStar = 20;
        const auto atTheEnd = [](int row) {
            const QImage image = look(kCaption, row);
            return pixelsUnlike(image, image.width() - kStar, kLocked);
        };
        EXPECT_GT(atTheEnd(kNameRow), 3);
        EXPECT_EQ(atTheEnd(kModelRow), 0);
        EXPECT_EQ(cell(kCaption, kNameRow).data(Qt::ToolTipRole).toString(), "必填");
        EXPECT_EQ(cell(kCaption, kNameRow).data(Qt::AccessibleDescriptionRole).toString(), "必填");
        EXPECT_FALSE(cell(kCaption, kModelRow).data(Qt::ToolTipRole).isValid());
    });
}

TEST_F(EditorCells, aLongNameLeavesRoomForTheStar) {
    setField("fName", "fName='货品在合同、单据和标签上所用的完整的正式名称'");
    stage.openNew([](User&) {
        constexpr int kRoom = 12;
        const auto end = [](int row) {
            const QImage image = look(kCaption, row);
            return image.copy(image.width() - kRoom, 0, kRoom, image.height());
        };
        EXPECT_EQ(end(kNameRow), end(kCodeRow));
    });
}

TEST_F(EditorCells, aJpegAndABitmapAreShownInTheirProportions) {
    QImage drawn(60, 20, QImage::Format_RGB32);
    drawn.fill(Qt::blue);
    for (const char* format : {"jpg", "bmp"}) {
        const std::string path = stage.database().folder().file(std::string("wide.") + format);
        ASSERT_TRUE(drawn.save(QString::fromStdString(path))) << format;
        stage.openNew([&](User& user) {
            user.chooseTab("SSTab1", 2);
            user.chooseFile(path);
            user.click("cmdAdd");
            auto* frame = QApplication::activeModalWidget()->findChild<QWidget*>("pict1");
            const QImage shown = frame->grab().toImage();
            const auto isBlue = [&shown](int x, int y) {
                const QColor colour = shown.pixelColor(x, y);
                return colour.blue() > 200 && colour.red() < 60 && colour.green() < 60;
            };
            int wide = 0;
            int high = 0;
            for (int x = 0; x < shown.width(); ++x)
                wide += isBlue(x, shown.height() / 2);
            for (int y = 0; y < shown.height(); ++y)
                high += isBlue(shown.width() / 2, y);
            ASSERT_GT(high, 0) << format;
            EXPECT_NEAR(static_cast<double>(wide) / high, 3, 0.1) << format;
        });
    }
}

TEST_F(EditorCells, anAttachmentThatNoProgramOpensIsToldAndItsFileGoesWithTheWindow) {
    stage.storeAttachment(4, "a.xyz", "content");
    std::string taken;
    dynamic_cast<platform::qt::QtToolkit&>(stage.script().toolkit()).setDocumentOpener([&](const std::string& path) {
        taken = path;
        throw std::runtime_error("没有能打开此文件的程序");
    });
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.answer(MessageKind::critical, "没有能打开此文件的程序");
        user.clickCell("fps2", 2, 1);
        EXPECT_EQ(Stage::contents(taken), "content");
    });
    EXPECT_EQ(Stage::contents(taken), "");
}

}  // namespace
}  // namespace orvenmod::test
