// What the keyboard does in Qt's own way.
#include <QContextMenuEvent>
#include <QTableView>
#include <QToolButton>

#include "platform/qt/application.h"
#include "platform/qt/keycodes.h"
#include "platform/qt/qtwindows.h"

namespace orvenmod::test {
namespace {

using namespace platform;

TEST_F(QtToolkitTest, f6LeadsToTheToolbarAndBackAndTheArrowsFromButtonToButton) {
    std::vector<std::string> clicked;
    use(
        sampleWindow(),
        [&](Window& window) {
            window.get<Toolbar>("Toolbar1").buttonClick = [&](const std::string& key) { clicked.push_back(key); };
        },
        [](User& user) {
            user.control<Tree>("tv1").setFocus();
            user.press("F6");
            EXPECT_TRUE(found<QToolButton>("Save")->hasFocus());
            user.press("Right");
            user.press("Enter");
            user.press("Left");
            user.press("Left");
            EXPECT_TRUE(found<QToolButton>("Exit")->hasFocus());
            user.press("F6");
            EXPECT_TRUE(user.control<Tree>("tv1").hasFocus());
        });
    EXPECT_EQ(clicked, std::vector<std::string>{"Print"});
}

TEST_F(QtToolkitTest, theMenuKeyAsksForTheMenuOfAList) {
    std::vector<MouseButton> pressed;
    use(
        sampleWindow(),
        [&](Window& window) {
            auto& list = window.get<ListGrid>("vsf1");
            list.addRow("1\t电阻");
            list.mouseDown = [&](MouseButton button) { pressed.push_back(button); };
        },
        [](User&) {
            auto* list = found<QTableView>("vsf1");
            QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5), list->mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(list, &key);
        });
    EXPECT_EQ(pressed, std::vector<MouseButton>{MouseButton::right});
}

TEST_F(QtToolkitTest, enterWalksTheCellsThatTakeAValueAndPassesLockedOnes) {
    use(sampleWindow(), loadRows, [](User& user) {
        auto& cells = user.control<EntryGrid>("fps1");
        cells.setFocus();
        std::vector<std::pair<int, int>> walked;
        for (int step = 0; step < 4; ++step) {
            user.press("Enter");
            walked.emplace_back(cells.activeColumn(), cells.activeRow());
        }
        EXPECT_EQ(walked, (std::vector<std::pair<int, int>>{{3, 1}, {4, 1}, {2, 2}, {3, 2}}));
    });
}

TEST_F(QtToolkitTest, enterThatIsHeldDownGoesNoFurtherThanOneStep) {
    int left = 0;
    use(
        sampleWindow(),
        [&](Window& window) {
            loadRows(window);
            auto& list = window.get<ListGrid>("vsf1");
            list.addRow("1\t电阻");
            list.keyDown = [&window](int key) {
                if (key != kKeyEnter) return;
                window.get<EntryGrid>("fps1").setActiveCell(4, 2);
                window.get<EntryGrid>("fps1").setFocus();
            };
            window.get<EntryGrid>("fps1").leftByEnter = [&] { ++left; };
        },
        [&](User& user) {
            const auto hold = [] {
                for (const bool repeated : {false, true, true}) {
                    QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), repeated);
                    QCoreApplication::sendEvent(QApplication::focusWidget(), &key);
                }
            };
            const auto& cells = user.control<EntryGrid>("fps1");
            user.control<ListGrid>("vsf1").setFocus();
            hold();
            EXPECT_TRUE(cells.hasFocus());
            EXPECT_EQ(left, 0);
            user.typeKeys("好");
            EXPECT_TRUE(cells.cellOpen());
            hold();
            EXPECT_FALSE(cells.cellOpen());
            EXPECT_EQ(left, 1);
        });
}

// The click of a button's letter comes a tenth of a second after the key.
TEST_F(QtToolkitTest, aButtonsLetterThatACellRefusedClicksNothingLater) {
    int clicks = 0;
    WindowDesign design = sampleWindow();
    ControlDesign button{.kind = ControlKind::button, .name = "cmdOk", .left = 200, .top = 3900};
    button.width = 1200;
    button.height = 400;
    button.caption = "确定(&K)";
    design.controls.push_back(button);
    use(
        design,
        [&](Window& window) {
            loadRows(window);
            window.get<EntryGrid>("fps1").setNumberRule(2, 1, {.minimum = 10, .maximum = 100});
            window.get<Button>("cmdOk").click = [&] { ++clicks; };
        },
        [&](User& user) {
            user.clickCell("fps1", 2, 1);
            user.typeKeys("5");
            user.press("Alt+K");
            EXPECT_TRUE(user.control<EntryGrid>("fps1").cellOpen());
            user.press("Esc");
            QTest::qWait(300);
            EXPECT_EQ(clicks, 0);
            EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus());
            user.press("Alt+K");
            EXPECT_EQ(clicks, 1);
        });
}

TEST_F(QtToolkitTest, typingInAChoiceAndEnterPicksTheEntryThatContainsIt) {
    std::vector<int> picked;
    use(
        sampleWindow(),
        [&](Window& window) {
            loadRows(window);
            window.get<EntryGrid>("fps1").comboCloseUp = [&](int, int, int item) { picked.push_back(item); };
        },
        [](User& user) {
            auto& cells = user.control<EntryGrid>("fps1");
            cells.setFocus();
            cells.setActiveCell(3, 1);
            QTest::sendKeyEvent(QTest::Click, found<QTableView>("fps1"), Qt::Key_unknown, QStringLiteral("金"),
                                Qt::NoModifier);
            user.press("Enter");
            EXPECT_EQ(cells.text(3, 1), "五金件");
        });
    EXPECT_EQ(picked, std::vector<int>{2});
}

TEST_F(QtToolkitTest, whatIsNoExceptionOfOursIsShownToo) {
    use(
        sampleWindow(),
        [](Window& window) { window.get<Toolbar>("Toolbar1").buttonClick = [](const std::string&) { throw 7; }; },
        [](User& user) {
            user.answer(MessageKind::critical, "未知错误");
            user.clickTool("Save");
            EXPECT_TRUE(user.window().shown());
        });
}

TEST(KeyCodes, areThoseOfTheDesktopTheLogicComesFrom) {
    platform::qt::ensureApplication();  // a key event belongs to a keyboard of the application
    const auto codeOf = [](Qt::Key key) { return qt::keyCodeOf(QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier)); };
    EXPECT_EQ(codeOf(Qt::Key_Return), kKeyEnter);
    EXPECT_EQ(codeOf(Qt::Key_Enter), kKeyEnter);
    EXPECT_EQ(codeOf(Qt::Key_Delete), 46);
    EXPECT_EQ(codeOf(Qt::Key_F1), 112);
    EXPECT_EQ(codeOf(Qt::Key_A), 'A');
    EXPECT_EQ(codeOf(Qt::Key_VolumeUp), 0);
    EXPECT_EQ(qt::keyOfCode(kKeyEnter), Qt::Key_Return);
}

}  // namespace
}  // namespace orvenmod::test
