// The box of long work, as a clerk meets it.
#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QWindow>
#include <chrono>

#include "platform/qt/qttoolkit.h"
#include "platform/qt/qtwindows.h"

namespace orvenmod::test {
namespace {

using platform::Pointer;
using platform::Progress;
using std::chrono::hours;
using std::chrono::milliseconds;

class QtProgressTest : public QtToolkitTest {
protected:
    platform::qt::QtToolkit& toolkit() { return dynamic_cast<platform::qt::QtToolkit&>(script->toolkit()); }
    /// Plays the steps while the sample window is open.
    void work(const std::function<void(User&)>& steps) { use(sampleWindow(), loadNothing, steps); }
    std::unique_ptr<Progress> progress(int whole) { return toolkit().createProgress("正在导出", "测试套件", whole); }

    /// The box in front, null for none.
    static QDialog* box() {
        auto* front = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        return front != nullptr && front->objectName() == QLatin1String("progress") ? front : nullptr;
    }
};

TEST_F(QtProgressTest, shortWorkShowsNone) {
    toolkit().setProgressPace(hours(1), milliseconds(0));
    work([this](User&) {
        const auto shortWork = progress(10);
        for (int done = 1; done <= 10; ++done) {
            EXPECT_TRUE(shortWork->advance(done));
            EXPECT_EQ(box(), nullptr);
        }
    });
}

TEST_F(QtProgressTest, longWorkTellsHowFarItIsAndGoesAway) {
    work([this](User& user) {
        user.window().setPointer(Pointer::hourglass);
        auto longWork = progress(200);
        longWork->advance(20);
        ASSERT_NE(box(), nullptr);
        EXPECT_EQ(box()->windowTitle(), "测试套件");
        EXPECT_EQ(box()->findChild<QLabel*>()->text(), "正在导出");
        const auto* bar = box()->findChild<QProgressBar*>("done");
        EXPECT_EQ(bar->text(), "10%");
        EXPECT_EQ(bar->accessibleName(), "正在导出");
        longWork->advance(150);
        EXPECT_EQ(bar->text(), "75%");
        EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "the button can be clicked";
        longWork->advance(200);
        EXPECT_EQ(bar->maximum(), 0) << "moves while the rest has no measure";
        longWork.reset();
        EXPECT_EQ(box(), nullptr);
        EXPECT_NE(QApplication::overrideCursor(), nullptr) << "the hourglass again";
        user.window().setPointer(Pointer::arrow);
    });
}

TEST_F(QtProgressTest, isRenewedAtItsIntervalOnly) {
    toolkit().setProgressPace(milliseconds(0), hours(1));
    work([this](User&) {
        const auto longWork = progress(100);
        longWork->advance(1);
        ASSERT_NE(box(), nullptr) << "it shows at once";
        longWork->advance(90);
        EXPECT_EQ(box()->findChild<QProgressBar*>("done")->value(), 1);
    });
}

TEST_F(QtProgressTest, isCancelledByItsButtonEscOrTheTitleBarAndStaysUntilTheWorkEnds) {
    const std::vector<std::function<void(QDialog&)>> ways = {
        [](QDialog& dialog) { dialog.findChild<QPushButton*>("cancel")->click(); },
        [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }, [](QDialog& dialog) { dialog.close(); }};
    for (const auto& cancel : ways) {
        work([&](User&) {
            const auto longWork = progress(100);
            EXPECT_TRUE(longWork->advance(10));
            ASSERT_NE(box(), nullptr);
            EXPECT_EQ(box()->findChild<QPushButton*>("cancel")->text(), "取消");
            cancel(*box());
            EXPECT_FALSE(longWork->advance(11));
            ASSERT_NE(box(), nullptr);
            EXPECT_TRUE(box()->isVisible());
            EXPECT_EQ(box()->findChild<QLabel*>()->text(), "正在取消…");
            EXPECT_FALSE(box()->findChild<QPushButton*>("cancel")->isEnabled());
        });
    }
}

TEST_F(QtProgressTest, isNotCancelledByTheEnterThatNamedTheFile) {
    work([this](User&) {
        const auto longWork = progress(100);
        longWork->advance(10);
        ASSERT_NE(box(), nullptr);
        QTest::keyClick(box(), Qt::Key_Return);
        QTest::keyClick(box()->findChild<QPushButton*>("cancel"), Qt::Key_Return);
        EXPECT_TRUE(longWork->advance(11));
    });
}

TEST_F(QtProgressTest, letsNothingElseBeClickedMeanwhile) {
    int clicks = 0;
    use(
        sampleWindow(),
        [&](platform::Window& window) {
            window.get<platform::Toolbar>("Toolbar1").buttonClick = [&](const std::string&) { ++clicks; };
        },
        [&](User&) {
            auto* button = found<QToolButton>("Save");
            QWidget* root = button->window();
            const QPoint place = button->mapTo(root, button->rect().center());
            const auto longWork = progress(100);
            longWork->advance(10);
            QTest::mouseClick(root->windowHandle(), Qt::LeftButton, {}, place);
            longWork->advance(20);
            EXPECT_EQ(clicks, 0);
        });
}

TEST_F(QtProgressTest, noWindowTicksWhileWorkPaints) {
    toolkit().setTickInterval(milliseconds(0));
    toolkit().setProgressPace(hours(1), milliseconds(0));
    int ticks = 0;
    use(
        sampleWindow(), [&](platform::Window& window) { window.tick = [&] { ++ticks; }; },
        [&](User&) {
            const auto longWork = progress(10);
            ticks = 0;
            for (int done = 1; done <= 10; ++done) {
                longWork->advance(done);
                toolkit().paintPending();
            }
            EXPECT_EQ(ticks, 0);
            QApplication::processEvents();
            EXPECT_GT(ticks, 0);
        });
    toolkit().setTickInterval();
}

}  // namespace
}  // namespace orvenmod::test
