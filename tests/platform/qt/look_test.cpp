// Fonts, texts, colours and places.
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPalette>
#include <QPushButton>
#include <QRawFont>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>
#include <cstdlib>
#include <stdexcept>

#include "platform/qt/application.h"
#include "platform/qt/chinesetexts.h"
#include "platform/qt/qttoolkit.h"
#include "platform/qt/qtwindows.h"
#include "support/temporary.h"

namespace orvenmod::test {
namespace {

using namespace platform;

/// Puts the application's palette back.
class PaletteGuard {
public:
    PaletteGuard() : before_(QApplication::palette()) {}
    ~PaletteGuard() { QApplication::setPalette(before_); }
    PaletteGuard(const PaletteGuard&) = delete;
    PaletteGuard& operator=(const PaletteGuard&) = delete;

private:
    QPalette before_;
};

TEST_F(QtToolkitTest, theWindowsFontHasChinese) {
    const QRawFont font = QRawFont::fromFont(qt::windowFont(), QFontDatabase::SimplifiedChinese);
    EXPECT_TRUE(font.supportsCharacter(QChar(u'物')));
    use(sampleWindow(), loadNothing,
        [](User&) { EXPECT_EQ(found<QTableView>("vsf1")->font().family(), qt::windowFont().family()); });
}

TEST_F(QtToolkitTest, qtsOwnTextsAreChinese) {
    QMessageBox box;
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_TRUE(box.button(QMessageBox::Yes)->text().startsWith(QStringLiteral("是")));
    EXPECT_TRUE(box.button(QMessageBox::No)->text().startsWith(QStringLiteral("否")));
    EXPECT_EQ(box.button(QMessageBox::Ok)->text(), "确定");
    EXPECT_EQ(box.button(QMessageBox::Cancel)->text(), "取消");
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    EXPECT_TRUE(dialog.labelText(QFileDialog::FileName).startsWith(QStringLiteral("文件名")));
}

TEST_F(QtToolkitTest, ourOwnTextsStandInWhereQtsAreMissing) {
    const qt::ChineseTexts texts;
    EXPECT_EQ(texts.translate("QPlatformTheme", "&Yes", nullptr, -1), "是(&Y)");
    EXPECT_EQ(texts.translate("QFileDialog", "Create New Folder", nullptr, -1), "新建文件夹");
    EXPECT_TRUE(texts.translate("QWidget", "a text that nobody knows", nullptr, -1).isEmpty());
}

TEST_F(QtToolkitTest, fifteenTwipsAreAPixelAndEdgesThatTouchStayTogether) {
    WindowDesign design = sampleWindow();
    design.controls.push_back({.kind = ControlKind::label, .name = "LabelA", .left = 22, .width = 100, .height = 300});
    design.controls.push_back({.kind = ControlKind::label, .name = "LabelB", .left = 122, .width = 100, .height = 300});
    use(design, loadNothing, [](User& user) {
        const QRect left = found<QLabel>("LabelA")->geometry();
        const QRect right = found<QLabel>("LabelB")->geometry();
        EXPECT_EQ(left.right() + 1, right.left());
        EXPECT_EQ(found<QTableView>("vsf1")->geometry(), QRect(200, 40, 400, 200));
        EXPECT_FLOAT_EQ(user.control<Label>("LabelB").left(), 122);
    });
}

TEST_F(QtToolkitTest, aWindowLargerThanTheScreenLoadsAsDrawnAndIsThenFittedToIt) {
    WindowDesign design = sampleWindow();
    design.width = 60000;
    design.height = 30000;
    float whileLoading = 0;
    use(
        design, [&](Window& window) { whileLoading = window.innerWidth(); },
        [](User& user) {
            const QWidget* window = QApplication::activeModalWidget();
            const QRect screen = window->screen()->availableGeometry();
            EXPECT_TRUE(screen.contains(window->geometry()))
                << screen.width() << " x " << screen.height() << ", the window from " << window->x() << ", "
                << window->y() << " is " << window->width() << " x " << window->height();
            EXPECT_LT(user.window().innerWidth(), 60000);
        });
    EXPECT_FLOAT_EQ(whileLoading, 60000);
}

TEST_F(QtToolkitTest, aWindowOpensInTheMiddleOfTheScreen) {
    use(sampleWindow(), loadNothing, [](User&) {
        const QWidget* window = QApplication::activeModalWidget();
        const QPoint off = window->geometry().center() - window->screen()->availableGeometry().center();
        EXPECT_LE(std::abs(off.x()), 4);
        EXPECT_LE(std::abs(off.y()), 20) << "the frame counts too";
    });
}

TEST_F(QtToolkitTest, theColourOfARowStaysLegibleOnADarkGround) {
    const PaletteGuard guard;
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 32));
    QApplication::setPalette(dark);
    use(
        sampleWindow(),
        [](Window& window) {
            auto& list = window.get<ListGrid>("vsf1");
            list.addRow("1\t电阻");
            const Colour darkRed{150, 0, 0};
            list.setRowColour(1, &darkRed);
        },
        [](User&) {
            const auto* model = found<QTableView>("vsf1")->model();
            const auto shown = model->index(0, 0).data(Qt::ForegroundRole).value<QColor>();
            EXPECT_GT(shown.lightness(), 150);
            EXPECT_EQ(shown.hslHue(), 0);
        });
}

TEST_F(QtToolkitTest, aLockedCellsTextFollowsItsGround) {
    use(
        sampleWindow(),
        [](Window& window) {
            loadRows(window);
            window.get<EntryGrid>("fps1").setLockedColour({244, 244, 217});
        },
        [](User&) {
            const QModelIndex locked = found<QTableView>("fps1")->model()->index(0, 0);
            EXPECT_EQ(locked.data(Qt::BackgroundRole).value<QColor>(), QColor(244, 244, 217));
            EXPECT_EQ(locked.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::black));
            EXPECT_FALSE(locked.siblingAtColumn(1).data(Qt::BackgroundRole).isValid());
        });
}

TEST_F(QtToolkitTest, theTopRowOfAnEntryGridIsWholeAtItsEndAndAFieldStaysInItsCell) {
    use(
        sampleWindow(),
        [](Window& window) {
            auto& cells = window.get<EntryGrid>("fps1");
            cells.setRowCount(40);
            cells.setActiveCell(4, 38);
            cells.setFocus();
        },
        [](User& user) {
            auto* view = found<QTableView>("fps1");
            const auto topIsWhole = [view] {
                const int top = view->rowAt(0);
                return top > 0 && view->rowViewportPosition(top) == 0;
            };
            const auto fieldFits = [view] {
                return view->indexWidget(view->currentIndex())->geometry() == view->visualRect(view->currentIndex());
            };
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
            EXPECT_TRUE(topIsWhole());
            EXPECT_GE(view->rowAt(view->viewport()->height() - view->rowHeight(0)), 39) << "and the last shows";
            user.typeKeys("a");
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() - 1);
            EXPECT_TRUE(topIsWhole() && fieldFits());
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
            EXPECT_TRUE(topIsWhole() && fieldFits());
            view->resize(view->width(), view->height() - 7);
            view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum());
            EXPECT_TRUE(topIsWhole() && fieldFits());
            user.press("Esc");
        });
}

TEST_F(QtToolkitTest, aPictureShowsTheWholeWindow) {
    const TemporaryFolder folder;
    const std::string file = folder.file("window.png");
    auto& toolkit = dynamic_cast<qt::QtToolkit&>(script->toolkit());
    use(sampleWindow(), loadNothing, [&](User& user) {
        toolkit.savePicture(user.window(), file);
        const QWidget* window = QApplication::activeModalWidget();
        EXPECT_EQ(QImage(QString::fromStdString(file)).size(), window->size() * window->devicePixelRatioF());
        EXPECT_THROW(toolkit.savePicture(user.window(), folder.file("missing/window.png")), std::runtime_error);
    });
}

TEST_F(QtToolkitTest, aDesktopThatStretchesAWindowTooFarIsNotTold) {
    use(
        sampleWindow(), [](Window&) {},
        [](User& user) {
            QWidget* root = QApplication::activeModalWidget();
            root->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
            root->resize(3000, 2600);
            QCoreApplication::processEvents();
            EXPECT_EQ(user.window().innerWidth(), kLargestInner);
            EXPECT_EQ(user.window().innerHeight(), kLargestInner);
        });
}

}  // namespace
}  // namespace orvenmod::test
