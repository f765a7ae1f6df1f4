// Twips; 15 are a pixel.
//
//   Toolbar1
//   SSTab1   [基本信息] fps1
//            [附件]     cmdAddFJ
//                       fps2
//            [物料图片] cmdAdd cmdClear
//                       pict1
#include "editor/frmBasicInfo_design.h"

#include "editor/fieldrow.h"

namespace orvenmod {

using platform::CellType;
using platform::ControlDesign;
using platform::ControlKind;
using platform::GridColumn;

namespace {

constexpr float kWidth = 11700;
constexpr float kHeight = 8400;
constexpr float kInset = 120;
constexpr float kTabsWidth = kWidth - 2 * kInset;
constexpr float kTabsHeight = kHeight - 2 * kInset;
constexpr float kPageTop = 480;  // below the tabs' captions
constexpr float kBelowButtons = 960;
constexpr float kButtonWidth = 1800;
constexpr float kButtonHeight = 360;

std::vector<GridColumn> fieldColumns() {
    std::vector<GridColumn> columns = {{.title = "项目", .width = 2700, .locked = true},
                                       {.title = "值", .width = 7770, .stretches = true},
                                       {.title = "字段名称"},
                                       {.title = "数据类型"},
                                       {.title = "小数点位数"},
                                       {.title = "核算项目ID"},
                                       {.title = "内部ID"},
                                       {.title = "缺省值"},
                                       {.title = "能否为空"},
                                       {.title = "最大值"},
                                       {.title = "最小值"},
                                       {.title = "核算项目类别"},
                                       {.title = ""}};
    return columns;
}

std::vector<GridColumn> attachmentColumns() {
    return {{.title = "删除", .width = 900, .type = CellType::button},
            {.title = "打开", .width = 900, .type = CellType::button},
            {.title = "附件名称", .width = 4335},
            {.title = "文件名称", .width = 4335, .locked = true, .stretches = true},
            {.title = "", .hidden = true, .locked = true}};
}

ControlDesign onPage(ControlKind kind, std::string_view name, int page, float top) {
    ControlDesign design{.kind = kind, .name = name, .left = kInset, .top = top, .parent = "SSTab1", .page = page};
    design.width = kTabsWidth - 2 * kInset;
    design.height = kTabsHeight - top - kInset;
    return design;
}

ControlDesign button(std::string_view name, std::string_view caption, int page, float left) {
    ControlDesign design = onPage(ControlKind::button, name, page, kPageTop);
    design.caption = caption;
    design.left = left;
    design.width = kButtonWidth;
    design.height = kButtonHeight;
    return design;
}

std::vector<ControlDesign> controls() {
    ControlDesign tabs{.kind = ControlKind::tabs, .name = "SSTab1", .left = kInset, .top = kInset};
    tabs.width = kTabsWidth;
    tabs.height = kTabsHeight;
    tabs.accessibleName = "资料";
    tabs.pages = {"基本信息", "附件", "物料图片"};
    ControlDesign fields = onPage(ControlKind::entryGrid, "fps1", 0, kPageTop);
    fields.accessibleName = "基本信息";
    fields.columns = fieldColumns();
    ControlDesign attachments = onPage(ControlKind::entryGrid, "fps2", 1, kBelowButtons);
    attachments.accessibleName = "附件";
    attachments.columns = attachmentColumns();
    ControlDesign picture = onPage(ControlKind::picture, "pict1", 2, kBelowButtons);
    picture.accessibleName = "物料图片";
    return {{.kind = ControlKind::toolbar, .name = "Toolbar1", .accessibleName = "工具栏"},
            tabs,
            fields,
            button("cmdAddFJ", "添加附件(&A)", 1, kInset),
            attachments,
            button("cmdAdd", "添加图片(&A)", 2, kInset),
            button("cmdClear", "删除图片(&D)", 2, kInset + kButtonWidth + kInset),
            picture,
            {.kind = ControlKind::fileDialog, .name = "cd1"},
            {.kind = ControlKind::fileDialog, .name = "cd2"}};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmBasicInfo";
    design.width = kWidth;
    design.height = kHeight;
    design.controls = controls();
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuFileSave", .caption = "保存", .parent = "MenuFile", .shortcut = "Ctrl+S"},
                    {.name = "MenuFileClose", .caption = "关闭", .parent = "MenuFile"},
                    {.name = "MenuEdit", .caption = "编辑(&E)"},
                    {.name = "MenuNewAfterSave",
                     .caption = "保存后新增",
                     .parent = "MenuEdit",
                     .checked = true,
                     .checkable = true}};
    design.toolbar = "Toolbar1";
    // The suite's other buttons never had a command in this window and are left out.
    design.toolButtons = {{.key = "New", .caption = "新增", .icon = "new"},
                          {.key = "Copy", .caption = "复制", .icon = "copy"},
                          {.key = "Save", .caption = "保存", .icon = "save"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

}  // namespace

const platform::WindowDesign& basicInfoDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
