// Twips; 15 are a pixel.
//
//   Toolbar1
//   tv1 | vsf1
#include "dictionary/frmJCBasicInfo_design.h"

namespace orvenmod {

using platform::ControlDesign;
using platform::ControlKind;
using platform::MenuDesign;

namespace {

constexpr float kWidth = 13200;
constexpr float kHeight = 7800;
constexpr float kTreeWidth = 4200;
constexpr float kMargin = 60;

std::vector<ControlDesign> controls() {
    ControlDesign list{.kind = ControlKind::listGrid,
                       .name = "vsf1",
                       .left = kTreeWidth + 2 * kMargin,
                       .top = kMargin,
                       .width = kWidth - kTreeWidth - 3 * kMargin,
                       .height = kHeight - 2 * kMargin,
                       .accessibleName = "明细资料"};
    list.columns = {{.title = "", .width = 900, .hidden = true},
                    {.title = "代码", .width = 1875},
                    {.title = "名称", .width = 2220}};
    return {{.kind = ControlKind::toolbar, .name = "Toolbar1", .accessibleName = "工具栏"},
            {.kind = ControlKind::imageList, .name = "ImageList1"},
            {.kind = ControlKind::tree,
             .name = "tv1",
             .left = kMargin,
             .top = kMargin,
             .width = kTreeWidth,
             .height = kHeight - 2 * kMargin,
             .accessibleName = "基础资料类别"},
            list,
            {.kind = ControlKind::fileDialog, .name = "cd1"}};
}

std::vector<MenuDesign> menus() {
    return {{.name = "MenuFile", .caption = "文件(&F)"},
            {.name = "MenuClose", .caption = "关闭", .parent = "MenuFile"},
            {.name = "MenuJCZL", .caption = "类别(&J)"},
            {.name = "MenuJCZLNew1", .caption = "新增资料类别", .parent = "MenuJCZL"},
            {.name = "MenuJCZLUpdate1", .caption = "修改资料类别", .parent = "MenuJCZL"},
            {.name = "MenuEdit", .caption = "明细编辑(&E)"},
            {.name = "MenuJCZLNew", .caption = "新增明细资料", .parent = "MenuEdit"},
            {.name = "MenuUpdateJCZL", .caption = "修改明细资料", .parent = "MenuEdit"},
            {.name = "MenuDelJCZL", .caption = "删除明细资料", .parent = "MenuEdit"}};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmJCBasicInfo";
    design.caption = "基础资料";
    design.width = kWidth;
    design.height = kHeight;
    design.controls = controls();
    design.menus = menus();
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Excel", .caption = "Excel", .icon = "excel"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

}  // namespace

const platform::WindowDesign& dictionariesDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
