// Twips; 15 are a pixel.
#include "designer/frmHSXMDetailSetup_design.h"

namespace orvenmod {

using platform::CellType;
using platform::ControlKind;

namespace {

constexpr float kWidth = 7200;
constexpr float kHeight = 7200;
constexpr float kMargin = 60;

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmHSXMDetailSetup";
    design.caption = "基础资料明细设置";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    design.controls = {{.kind = ControlKind::toolbar, .name = "Toolbar1", .accessibleName = "工具栏"},
                       {.kind = ControlKind::entryGrid,
                        .name = "fps1",
                        .left = kMargin,
                        .top = kMargin,
                        .width = kWidth - 2 * kMargin,
                        .height = kHeight - 2 * kMargin,
                        .accessibleName = "明细设置",
                        .columns = {{.title = "列名", .width = 4500, .locked = true},
                                    {.title = "是否显示", .width = 1800, .type = CellType::checkBox},
                                    {.title = "列宽", .width = 900, .hidden = true, .type = CellType::number},
                                    {.title = "", .width = 900, .hidden = true}}}};
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuUnLock", .caption = "解除锁定", .parent = "MenuFile"},
                    {.name = "MenuAAA", .caption = "-", .parent = "MenuFile"},
                    {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile"}};
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Save", .caption = "保存", .icon = "save"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

}  // namespace

const platform::WindowDesign& hsxmDetailSetupDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
