// Twips; 15 are a pixel.
//
//   附件名称： [txt]
//   附件路径： [PowerEdit1]
//             [PowerButton1][cmdClose]
#include "editor/frmFJNew_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    platform::DialogDesign dialog(
        "frmFJNew", "附件",
        {.width = 6600, .height = 1980, .fieldLeft = 1320, .margin = 180, .firstLine = 210, .buttonWidth = 1560});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .caption = "附件名称："},
                {.kind = ControlKind::edit, .name = "txt"});
    dialog.line({.kind = ControlKind::label, .name = "Label2", .caption = "附件路径："},
                {.kind = ControlKind::edit, .name = "PowerEdit1", .enabled = false});
    dialog.buttons({{.kind = ControlKind::button, .name = "PowerButton1", .caption = "选择文件(&O)"},
                    {.kind = ControlKind::button, .name = "cmdClose", .caption = "关闭(&C)"}});
    dialog.add({.kind = ControlKind::fileDialog, .name = "cd1"});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& newAttachmentDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
