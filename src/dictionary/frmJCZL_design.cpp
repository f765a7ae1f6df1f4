// Twips; 15 are a pixel.
//
//   代码： [txt(0)]
//   名称： [txt(1)]
//              [cmdOK][cmdClose]
#include "dictionary/frmJCZL_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    platform::DialogDesign dialog("frmJCZL", "基础资料", {.width = 5400, .height = 2100, .fieldLeft = 1110});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 0, .caption = "代码："},
                {.kind = ControlKind::edit, .name = "txt", .index = 0});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 1, .caption = "名称："},
                {.kind = ControlKind::edit, .name = "txt", .index = 1});
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdOK", .caption = "新增(&A)"},
                    {.kind = ControlKind::button, .name = "cmdClose", .caption = "关闭(&C)"}});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& entryDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
