// Twips; 15 are a pixel. Code before name in the order of the Tab key: after a save the focus returns to the short
// code.
//
//   SSTab1   所属分类：   [cmb(0)]
//            分类短代码： [txt(1)]
//            分类名称：   [txt(0)]
//            分类代码：   [txt(2)]
//                                  [cmdOperate][cmdClose]
#include "hierarchy/frmParent_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    constexpr float kWidth = 6600;
    constexpr float kHeight = 3750;
    constexpr float kMargin = 120;
    constexpr float kForButtons = 660;  // below the tabs
    platform::DialogDesign dialog("frmParent", "分类",
                                  {.width = kWidth,
                                   .height = kHeight,
                                   .fieldLeft = 1560,
                                   .margin = kMargin,
                                   .firstLine = 600,
                                   .container = "SSTab1"});
    dialog.add({.kind = ControlKind::tabs,
                .name = "SSTab1",
                .left = kMargin,
                .top = kMargin,
                .width = kWidth - 2 * kMargin,
                .height = kHeight - kMargin - kForButtons,
                .accessibleName = "分类",
                .pages = {"分类"}});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 0, .caption = "所属分类："},
                {.kind = ControlKind::combo, .name = "cmb", .index = 0});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 1, .caption = "分类短代码："},
                {.kind = ControlKind::edit, .name = "txt", .index = 1});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 2, .caption = "分类名称："},
                {.kind = ControlKind::edit, .name = "txt", .index = 0});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 3, .caption = "分类代码："},
                {.kind = ControlKind::edit, .name = "txt", .index = 2});
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdOperate", .caption = "新增(&A)"},
                    {.kind = ControlKind::button, .name = "cmdClose", .caption = "关闭(&C)"}});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& parentDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
