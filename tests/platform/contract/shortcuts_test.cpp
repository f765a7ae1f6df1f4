// The keys of menus and buttons hold wherever the keyboard stands.
#include <map>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

/// An edit, a combo, a date, a tree, a list and cells, a button whose letter a menu has too, and one of its own.
WindowDesign keysWindow() {
    ControlDesign list = drawn(ControlKind::listGrid, "vsf1", 2400, 900),
                  cells = drawn(ControlKind::entryGrid, "fps1", 3400, 900),
                  find = drawn(ControlKind::button, "cmdFind", 4400),
                  clear = drawn(ControlKind::button, "cmdClear", 4900);
    list.columns = {{.title = "代码"}};
    cells.columns = {{.title = "名称"}};
    find.caption = "搜索(&F)";
    clear.caption = "清空条件(&C)";
    WindowDesign design = windowWith({drawn(ControlKind::edit, "txtSearch"), drawn(ControlKind::combo, "PC", 500),
                                      drawn(ControlKind::datePicker, "dtp", 1000),
                                      drawn(ControlKind::tree, "tv1", 1500, 800), list, cells, find, clear});
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile", .shortcut = "Ctrl+X"},
                    {.name = "MenuFileSave", .caption = "保存", .parent = "MenuFile", .shortcut = "Ctrl+S"},
                    {.name = "MenuEdit", .caption = "编辑(&E)"},
                    {.name = "MenuEditNew", .caption = "新增", .parent = "MenuEdit", .shortcut = "Ctrl+A"},
                    {.name = "MenuEditUpdate", .caption = "修改", .parent = "MenuEdit", .shortcut = "Ctrl+U"}};
    return design;
}

class Keys : public ToolkitContract {
protected:
    std::vector<std::string> raised;

    void work(const std::function<void(User&)>& steps) {
        use(
            keysWindow(),
            [this](Window& window) {
                for (const char* name : {"MenuFileExit", "MenuFileSave", "MenuEditNew", "MenuEditUpdate"})
                    window.get<Menu>(name).click = [this, name] { raised.emplace_back(name); };
                for (const char* name : {"cmdFind", "cmdClear"})
                    window.get<Button>(name).click = [this, name] { raised.emplace_back(name); };
                window.get<Edit>("txtSearch").setText("螺丝");
                window.get<Combo>("PC").addRow({"代码"});
                window.get<Tree>("tv1").add("", "D0", "全部", "");
                window.get<ListGrid>("vsf1").addRow("1");
                window.get<EntryGrid>("fps1").setRowCount(1);
                window.get<EntryGrid>("fps1").setActiveCell(1, 1);
            },
            steps);
    }
};

TEST_F(Keys, ofMenusHoldInEveryControl) {
    const std::vector<std::pair<const char*, const char*>> shortcuts = {{"Ctrl+A", "MenuEditNew"},
                                                                        {"Ctrl+X", "MenuFileExit"},
                                                                        {"Ctrl+U", "MenuEditUpdate"},
                                                                        {"Ctrl+S", "MenuFileSave"}};
    work([&](User& user) {
        for (const char* control : {"txtSearch", "PC", "dtp", "tv1", "vsf1", "fps1", "cmdFind"}) {
            for (const auto& [key, menu] : shortcuts) {
                user.window().find(control)->setFocus();
                raised.clear();
                user.press(key);
                EXPECT_EQ(raised, std::vector<std::string>{menu}) << control << " " << key;
            }
        }
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "螺丝") << "nothing was cut";
    });
}

TEST_F(Keys, ofMenusHoldInACellThatIsBeingTypedIn) {
    work([&](User& user) {
        auto& cells = user.control<EntryGrid>("fps1");
        cells.setFocus();
        user.typeKeys("12");
        user.press("Ctrl+A");
        EXPECT_EQ(raised, std::vector<std::string>{"MenuEditNew"});
        EXPECT_EQ(cells.text(1, 1), "12");
    });
}

TEST_F(Keys, ofAMenuThatIsOffAreLeftToTheEdit) {
    work([&](User& user) {
        user.control<Menu>("MenuEditNew").setEnabled(false);
        user.control<Edit>("txtSearch").setFocus();
        user.press("Ctrl+A");
        user.typeKeys("钉");
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "钉") << "Ctrl+A marks the whole text";
        EXPECT_TRUE(raised.empty());
    });
}

TEST_F(Keys, altAndALetterOfAButtonClickItWhereAMenuHasTheLetterToo) {
    work([&](User& user) {
        for (const char* control : {"txtSearch", "vsf1", "fps1"}) {
            user.window().find(control)->setFocus();
            raised.clear();
            user.press("Alt+F");
            EXPECT_EQ(raised, std::vector<std::string>{"cmdFind"}) << control;
            EXPECT_TRUE(user.control<Button>("cmdFind").hasFocus()) << control;
        }
        user.press("Alt+C");
        EXPECT_EQ(raised.back(), "cmdClear");
        EXPECT_TRUE(user.control<Button>("cmdClear").hasFocus());
        EXPECT_EQ(user.control<Edit>("txtSearch").text(), "螺丝");
    });
}

TEST_F(Keys, altAndALetterOfAButtonThatIsOffOrHiddenClickNothing) {
    work([&](User& user) {
        user.control<Button>("cmdClear").setEnabled(false);
        user.press("Alt+C");
        user.control<Button>("cmdClear").setEnabled(true);
        user.control<Button>("cmdClear").setVisible(false);
        user.press("Alt+C");
        EXPECT_TRUE(raised.empty());
    });
}

}  // namespace
}  // namespace orvenmod::test
