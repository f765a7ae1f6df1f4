// Twips; 15 are a pixel.
#include "designer/frmHSXMDetailNew_design.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

constexpr float kWidth = 7200;
constexpr float kHeight = 5100;
constexpr float kMargin = 60;

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmHSXMDetailNew";
    design.caption = "新增明细信息";
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
                        .accessibleName = "明细信息",
                        .columns = {{.title = "名称", .width = 2400, .locked = true},
                                    {.title = "值", .width = 4200},
                                    {.title = "隐含列", .width = 900}}}};
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile"}};
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Save", .caption = "保存", .icon = "save"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

}  // namespace

const platform::WindowDesign& hsxmDetailNewDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
