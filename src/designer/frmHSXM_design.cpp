// Twips; 15 are a pixel.
//
//   Toolbar1
//   tv1        vsf1
#include "designer/frmHSXM_design.h"

namespace orvenmod {

using platform::Alignment;
using platform::ControlDesign;
using platform::ControlKind;
using platform::GridColumn;
using platform::MenuDesign;

namespace {

constexpr float kWidth = 18600;
constexpr float kHeight = 8700;
constexpr float kMargin = 60;
constexpr float kTreeWidth = 4500;
constexpr float kGridLeft = kTreeWidth + 2 * kMargin;
constexpr float kInnerHeight = kHeight - 2 * kMargin;

std::vector<GridColumn> columns() {
    return {{.title = "", .width = 900},
            {.title = "名称", .width = 1515, .alignment = Alignment::left},
            {.title = "字段名", .width = 1155, .alignment = Alignment::left},
            {.title = "数据类型", .width = 1605, .alignment = Alignment::right},
            {.title = "核算项目", .width = 1440, .alignment = Alignment::centre},
            {.title = "最大值", .width = 1035, .alignment = Alignment::right},
            {.title = "最小值", .width = 1005, .alignment = Alignment::right},
            {.title = "小数点位数", .width = 1140, .alignment = Alignment::right},
            {.title = "缺省值", .width = 1125, .alignment = Alignment::centre},
            {.title = "能否为空", .width = 1095, .alignment = Alignment::left},
            {.title = "取自核算类别", .width = 1470, .alignment = Alignment::left}};
}

std::vector<ControlDesign> controls() {
    return {{.kind = ControlKind::toolbar, .name = "Toolbar1", .accessibleName = "工具栏"},
            {.kind = ControlKind::imageList, .name = "ImageList1"},
            {.kind = ControlKind::imageList, .name = "ImageList2"},
            {.kind = ControlKind::tree,
             .name = "tv1",
             .left = kMargin,
             .top = kMargin,
             .width = kTreeWidth,
             .height = kInnerHeight,
             .accessibleName = "核算项目类别"},
            {.kind = ControlKind::listGrid,
             .name = "vsf1",
             .left = kGridLeft,
             .top = kMargin,
             .width = kWidth - kGridLeft - kMargin,
             .height = kInnerHeight,
             .accessibleName = "明细",
             .columns = columns()}};
}

// MenuHSXMUpdate is out of use: nothing stands behind it.
std::vector<MenuDesign> menus() {
    return {
        {.name = "MenuFile", .caption = "文件(&F)"},
        {.name = "MenuExit", .caption = "退出", .parent = "MenuFile"},
        {.name = "MenuHSXM", .caption = "核算项目类别(&L)"},
        {.name = "MenuHSXMNew", .caption = "核算项目新增", .parent = "MenuHSXM"},
        {.name = "MenuHSXMUpdate", .caption = "核算项目修改", .parent = "MenuHSXM", .enabled = false, .visible = false},
        {.name = "MenuDetail", .caption = "明细管理(&D)"},
        {.name = "MenuDetailNew", .caption = "新增明细", .parent = "MenuDetail"},
        {.name = "MenuDetailSetup", .caption = "明细信息设置", .parent = "MenuDetail"}};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmHSXM";
    design.caption = "核算项目管理";
    design.width = kWidth;
    design.height = kHeight;
    design.controls = controls();
    design.menus = menus();
    design.toolbar = "Toolbar1";
    // The suite's other buttons (查询, 审核, 预览 ...) never had an action in this window and are left out.
    design.toolButtons = {{.key = "New", .caption = "新增", .icon = "new"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

}  // namespace

const platform::WindowDesign& hsxmDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
