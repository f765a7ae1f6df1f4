// Twips; 15 are a pixel.
//
//   类别： [txtType]
//   名称： [txt(0)]
//   表名： [txt(1)]
//              [cmdOK][cmdClose]
#include "designer/frmHSXMNew_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    platform::DialogDesign dialog("frmHSXMNew", "核算项目", {.width = 5700, .height = 2610, .fieldLeft = 1110});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .caption = "类别："},
                {.kind = ControlKind::edit, .name = "txtType"});
    dialog.line({.kind = ControlKind::label, .name = "Label2", .caption = "名称："},
                {.kind = ControlKind::edit, .name = "txt", .index = 0});
    dialog.line({.kind = ControlKind::label, .name = "Label3", .caption = "表名："},
                {.kind = ControlKind::edit, .name = "txt", .index = 1});
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdOK", .caption = "新增(&A)"},
                    {.kind = ControlKind::button, .name = "cmdClose", .caption = "关闭(&C)"}});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& hsxmNewDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
