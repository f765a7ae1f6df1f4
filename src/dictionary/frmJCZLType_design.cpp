// Twips; 15 are a pixel.
//
//   类别ID： [txt1]
//   名称：   [txt]
//                [cmdOK][cmdClose]
#include "dictionary/frmJCZLType_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    platform::DialogDesign dialog("frmJCZLType", "基础资料类别新增",
                                  {.width = 5400, .height = 2100, .fieldLeft = 1290});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 0, .caption = "类别ID："},
                {.kind = ControlKind::edit, .name = "txt1"});
    dialog.line({.kind = ControlKind::label, .name = "Label1", .index = 1, .caption = "名称："},
                {.kind = ControlKind::edit, .name = "txt"});
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdOK", .caption = "新增(&A)"},
                    {.kind = ControlKind::button, .name = "cmdClose", .caption = "关闭(&C)"}});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& dictionaryDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
