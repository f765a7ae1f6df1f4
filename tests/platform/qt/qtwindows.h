// What the tests of the Qt toolkit alone share: a window of a few controls, and the widgets behind them.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <functional>
#include <memory>

#include "support/user.h"

namespace orvenmod::test {

class QtToolkitTest : public ::testing::Test {
protected:
    /// Opens the window, lets `load` fill it and a user do the steps.
    void use(const platform::WindowDesign& design, const std::function<void(platform::Window&)>& load,
             const std::function<void(User&)>& steps) {
        const auto window = script->toolkit().createWindow(design);
        script->onWindow(window->name(), steps);
        window->showModal([&] { load(*window); });
    }
    void TearDown() override { script->finish(); }

    /// A widget of the window in front.
    template <class Widget>
    static Widget* found(const char* name) {
        auto* widget = QApplication::activeModalWidget()->findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    std::unique_ptr<Script> script = newQtScript();
};

/// An edit with its label, a tree, a list, an entry grid of four columns, a toolbar and menus.
inline platform::WindowDesign sampleWindow() {
    using namespace platform;
    WindowDesign design;
    design.name = "frmSample";
    design.caption = "样窗";
    design.width = 12000;
    design.height = 7500;
    ControlDesign list{.kind = ControlKind::listGrid, .name = "vsf1", .left = 3000, .top = 600};
    list.width = 6000;
    list.height = 3000;
    list.columns = {{.title = "代码"}, {.title = "名称"}};
    list.accessibleName = "明细";
    ControlDesign cells{.kind = ControlKind::entryGrid, .name = "fps1", .left = 3000, .top = 3900};
    cells.width = 8000;
    cells.height = 3000;
    cells.accessibleName = "数量";
    cells.columns = {{.title = "名称", .width = 1500, .locked = true},
                     {.title = "数量", .width = 1500, .type = CellType::number},
                     {.title = "分类", .width = 1500, .type = CellType::combo},
                     {.title = "备注", .width = 1500}};
    design.controls = {
        {.kind = ControlKind::toolbar, .name = "Toolbar1"},
        {.kind = ControlKind::label, .name = "Label1", .caption = "代码(&D)：", .width = 900, .height = 315},
        {.kind = ControlKind::edit, .name = "txt", .index = 0, .left = 900, .width = 1500, .height = 315},
        {.kind = ControlKind::tree, .name = "tv1", .top = 600, .width = 2700, .height = 4000, .accessibleName = "分类"},
        list,
        cells};
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuFileSave", .caption = "保存", .parent = "MenuFile", .shortcut = "Ctrl+S"}};
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Save", .caption = "保存", .icon = "save"},
                          {.key = "Print", .caption = "打印", .icon = "print"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

inline void loadNothing(platform::Window&) {}

/// One row with the choices of the third column.
inline void loadRows(platform::Window& window) {
    auto& cells = window.get<platform::EntryGrid>("fps1");
    cells.setRowCount(2);
    cells.setText(1, 1, "电阻");
    cells.setText(2, 1, "12");
    cells.setItems(3, 0, {"无", "电子元件", "五金件"});
    cells.setActiveCell(2, 1);
}

}  // namespace orvenmod::test
