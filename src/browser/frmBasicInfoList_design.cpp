// Twips; 15 are a pixel. Tag "t" keeps a control's top while the window grows: the bars above tree and list stay put.
//
//   Toolbar1
//   Frame1                   Frame2
//   [cmdAddType][cmdUpd..]   Label1 [PC(0)][PC(1)][txtSearch|dtp][cmdFind][cmdClear]   [cmdAddDetail][cmdUpdateDetail]
//   tv1                      vsf1
//                            Frame3  [cmdAddItem][cmdRemoveItem]
//                                    fps1
#include "browser/frmBasicInfoList_design.h"

namespace orvenmod {

using platform::CellType;
using platform::ControlDesign;
using platform::ControlKind;
using platform::MenuDesign;
using platform::ToolButtonDesign;

namespace {

constexpr float kWidth = 19800;
constexpr float kHeight = 8700;
constexpr float kInset = 60;  // of a frame in the window, and of what lies at a frame's side
constexpr float kFrameHeight = kHeight - 2 * kInset;
// The bar's buttons grow with the window, tree and list below it don't move: the gap is for a window of 1080 pixels.
constexpr float kBarTop = 150;
constexpr float kGridTop = 750;
constexpr float kButtonHeight = 345;
constexpr float kTreeButtonWidth = 1500;
constexpr float kTreeButtonGap = 90;
// What makes captions, fields and buttons of the bar stand on one line.
constexpr float kFieldDrop = 15;
constexpr float kFieldHeight = 315;
constexpr float kLabelDrop = 45;
constexpr float kLabelHeight = 240;
// The bar from left to right. What is sought is typed or, in the same place, picked as a date.
constexpr float kBarGap = 60;
constexpr float kLabelLeft = 90;
constexpr float kLabelWidth = 1140;
constexpr float kFieldLeft = 1260;
constexpr float kFieldWidth = 2040;
constexpr float kComparisonLeft = kFieldLeft + kFieldWidth + kBarGap;
constexpr float kComparisonWidth = 1500;
constexpr float kSoughtLeft = kComparisonLeft + kComparisonWidth + kBarGap;
constexpr float kSoughtWidth = 2340;
constexpr float kFindLeft = 7350;
constexpr float kFindWidth = 1200;
constexpr float kClearLeft = kFindLeft + kFindWidth + kBarGap;
constexpr float kClearWidth = 1620;
constexpr float kAddLeft = 10500;
constexpr float kItemButtonWidth = 2200;
constexpr float kUpdateLeft = kAddLeft + kItemButtonWidth + kBarGap;
constexpr float kBillBarTop = 300;
constexpr float kBillInset = 150;
constexpr float kAddToBillWidth = 1800;
constexpr float kRemoveLeft = 2040;
constexpr float kRemoveWidth = 1200;
constexpr float kBillGridTop = 720;
constexpr float kBillGridHeight = 1980;
constexpr float kTreeWidth = 4380;
constexpr float kFrame2Left = 4620;
constexpr float kFrame2Width = kWidth - kFrame2Left - kInset;
constexpr float kFrame3Height = 2850;

std::vector<ControlDesign> treeSide() {
    return {
        {.kind = ControlKind::frame,
         .name = "Frame1",
         .left = kInset,
         .top = kInset,
         .width = kTreeWidth + kBesideTree,
         .height = kFrameHeight,
         .tag = "t",
         .accessibleName = "分类"},
        {.kind = ControlKind::button,
         .name = "cmdAddType",
         .caption = "增加分类",
         .left = kInset,
         .top = kBarTop,
         .width = kTreeButtonWidth,
         .height = kButtonHeight,
         .tag = "t",
         .parent = "Frame1"},
        {.kind = ControlKind::button,
         .name = "cmdUpdateParent",
         .caption = "修改分类",
         .left = kInset + kTreeButtonWidth + kTreeButtonGap,
         .top = kBarTop,
         .width = kTreeButtonWidth,
         .height = kButtonHeight,
         .tag = "t",
         .parent = "Frame1"},
        {.kind = ControlKind::tree,
         .name = "tv1",
         .left = kInset,
         .top = kGridTop,
         .width = kTreeWidth,
         .height = kFrameHeight - kAboveGrids,
         .tag = "t",
         .parent = "Frame1",
         .accessibleName = "分类"},
    };
}

ControlDesign inBar(ControlKind kind, std::string_view name, std::string_view caption, float left, float width) {
    return {.kind = kind,
            .name = name,
            .caption = caption,
            .left = left,
            .top = kind == ControlKind::button ? kBarTop : kBarTop + kFieldDrop,
            .width = width,
            .height = kind == ControlKind::button ? kButtonHeight : kFieldHeight,
            .tag = "t",
            .parent = "Frame2"};
}

std::vector<ControlDesign> searchBar() {
    ControlDesign label = inBar(ControlKind::label, "Label1", "查询条件：", kLabelLeft, kLabelWidth);
    label.top = kBarTop + kLabelDrop;
    label.height = kLabelHeight;
    ControlDesign field = inBar(ControlKind::combo, "PC", "", kFieldLeft, kFieldWidth);
    field.index = 0;
    field.accessibleName = "查询字段";
    ControlDesign comparison = inBar(ControlKind::combo, "PC", "", kComparisonLeft, kComparisonWidth);
    comparison.index = 1;
    comparison.accessibleName = "比较方式";
    ControlDesign value = inBar(ControlKind::edit, "txtSearch", "", kSoughtLeft, kSoughtWidth);
    value.accessibleName = "查询内容";
    ControlDesign date = inBar(ControlKind::datePicker, "dtp", "", kSoughtLeft, kSoughtWidth);
    date.accessibleName = "查询日期";
    date.visible = false;
    return {label,
            field,
            comparison,
            value,
            date,
            inBar(ControlKind::button, "cmdFind", "搜索(&F)", kFindLeft, kFindWidth),
            inBar(ControlKind::button, "cmdClear", "清空条件(&C)", kClearLeft, kClearWidth),
            inBar(ControlKind::button, "cmdAddDetail", "增加物料", kAddLeft, kItemButtonWidth),
            inBar(ControlKind::button, "cmdUpdateDetail", "修改明细", kUpdateLeft, kItemButtonWidth)};
}

std::vector<ControlDesign> list() {
    return {
        {.kind = ControlKind::listGrid,
         .name = "vsf1",
         .left = kBesideList / 2,
         .top = kGridTop,
         .width = kFrame2Width - kBesideList,
         .height = kFrameHeight - kAboveGrids,
         .tag = "t",
         .parent = "Frame2",
         .accessibleName = "明细",
         .fixedColumns = 1,
         .arranges = true},
        {.kind = ControlKind::dataControl, .name = "Adodc1", .parent = "Frame2", .visible = false},
    };
}

std::vector<ControlDesign> billArea() {
    ControlDesign bill{.kind = ControlKind::entryGrid,
                       .name = "fps1",
                       .left = kBillInset,
                       .top = kBillGridTop,
                       .width = kFrame2Width - kBesideBill,
                       .height = kBillGridHeight,
                       .parent = "Frame3",
                       .accessibleName = "单据选定的物料"};
    // All of them in sight at the smallest window: whoever types a quantity sees of which item.
    bill.columns = {
        {.title = "物料代码", .width = 1500, .locked = true},
        {.title = "物料名称", .width = 1900, .locked = true, .stretches = true},
        {.title = "规格型号", .width = 1200, .locked = true},
        {.title = "计量单位", .width = 900, .locked = true},
        {.title = "库存数",
         .width = 1200,
         .alignment = platform::Alignment::right,
         .locked = true,
         .type = CellType::number},
        {.title = "数量", .width = 1200, .alignment = platform::Alignment::right, .type = CellType::number}};
    return {
        {.kind = ControlKind::frame,
         .name = "Frame3",
         .caption = "单据选定的物料",
         .left = 0,
         .top = kFrameHeight - kFrame3Height,
         .width = kFrame2Width,
         .height = kFrame3Height,
         .parent = "Frame2"},
        {.kind = ControlKind::button,
         .name = "cmdAddItem",
         .caption = "添加到单据(&A)",
         .left = kBillInset,
         .top = kBillBarTop,
         .width = kAddToBillWidth,
         .height = kButtonHeight,
         .parent = "Frame3"},
        {.kind = ControlKind::button,
         .name = "cmdRemoveItem",
         .caption = "移除(&R)",
         .left = kRemoveLeft,
         .top = kBillBarTop,
         .width = kRemoveWidth,
         .height = kButtonHeight,
         .parent = "Frame3"},
        bill,
    };
}

std::vector<ControlDesign> controls() {
    std::vector<ControlDesign> all = {{.kind = ControlKind::toolbar, .name = "Toolbar1", .accessibleName = "工具栏"},
                                      {.kind = ControlKind::imageList, .name = "ImageList1"}};
    const auto add = [&all](const std::vector<ControlDesign>& some) {
        all.insert(all.end(), some.begin(), some.end());
    };
    add(treeSide());
    add({{.kind = ControlKind::frame,
          .name = "Frame2",
          .left = kFrame2Left,
          .top = kInset,
          .width = kFrame2Width,
          .height = kFrameHeight,
          .tag = "t",
          .accessibleName = "明细"}});
    add(searchBar());
    add(list());
    add(billArea());
    all.push_back({.kind = ControlKind::fileDialog, .name = "cd1"});
    return all;
}

// MenuLockDetail and MenuUnLockDetail are switched off here, and nothing of this window switches them on. MenuHeading
// isn't in the bar: it pops up on a heading of the list.
std::vector<MenuDesign> menus() {
    return {
        {.name = "MenuFile", .caption = "文件(&F)"},
        {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile", .shortcut = "Ctrl+X"},
        {.name = "MenuParentEdit", .caption = "分类编辑(&P)"},
        {.name = "MenuParentEditNew", .caption = "新增分类", .parent = "MenuParentEdit"},
        {.name = "MenuParentEditUpdate", .caption = "修改分类", .parent = "MenuParentEdit"},
        {.name = "MenuParentEditDelete", .caption = "删除分类", .parent = "MenuParentEdit"},
        {.name = "MenuEdit", .caption = "明细编辑(&E)"},
        {.name = "MenuEditNew", .caption = "新增明细", .parent = "MenuEdit", .shortcut = "Ctrl+A"},
        {.name = "MenuEditUpdate", .caption = "修改明细", .parent = "MenuEdit", .shortcut = "Ctrl+U"},
        {.name = "MenuEditDelete", .caption = "删除明细", .parent = "MenuEdit"},
        {.name = "MenuLockDetail", .caption = "禁用明细", .parent = "MenuEdit", .enabled = false},
        {.name = "MenuUnLockDetail", .caption = "反禁用明细", .parent = "MenuEdit", .enabled = false},
        {.name = "MenuItemUsage", .caption = "使用情况(&S)", .parent = "MenuEdit"},
        {.name = "MenuImport", .caption = "导入(&I)…", .parent = "MenuEdit"},
        {.name = "MenuHeading", .caption = "列", .visible = false},
        {.name = "MenuHeadingUp", .caption = "升序(&A)", .parent = "MenuHeading"},
        {.name = "MenuHeadingDown", .caption = "降序(&D)", .parent = "MenuHeading"},
        {.name = "MenuHeadingLeft", .caption = "左移(&L)", .parent = "MenuHeading"},
        {.name = "MenuHeadingRight", .caption = "右移(&I)", .parent = "MenuHeading"},
        {.name = "MenuHeadingWider", .caption = "加宽(&W)", .parent = "MenuHeading"},
        {.name = "MenuHeadingNarrower", .caption = "变窄(&N)", .parent = "MenuHeading"},
        {.name = "MenuHeadingReset", .caption = "恢复默认列(&R)", .parent = "MenuHeading"},
    };
}

// The suite's other buttons (新增, 浏览, 搜索 ...) never had an action in this window and are left out.
std::vector<ToolButtonDesign> toolButtons() {
    return {{.key = "Excel", .caption = "Excel", .icon = "excel"},
            {.key = "Preview", .caption = "预览", .icon = "preview"},
            {.key = "Print", .caption = "打印", .icon = "print"},
            {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmBasicInfoList";
    design.caption = "明细";
    design.width = kWidth;
    design.height = kHeight;
    design.controls = controls();
    design.menus = menus();
    design.toolbar = "Toolbar1";
    design.toolButtons = toolButtons();
    return design;
}

}  // namespace

const platform::WindowDesign& basicInfoListDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
