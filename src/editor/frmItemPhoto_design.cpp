// Twips; 15 are a pixel.
//
//   pict1
//         [cmdOK][cmdClear][cmdExit]
#include "editor/frmItemPhoto_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    constexpr float kWidth = 6600;
    constexpr float kMargin = 180;
    platform::DialogDesign dialog("frmItemPhoto", "图片",
                                  {.width = kWidth, .height = 5400, .margin = kMargin, .buttonWidth = 1320});
    dialog.add({.kind = ControlKind::picture,
                .name = "pict1",
                .left = kMargin,
                .top = kMargin,
                .width = kWidth - 2 * kMargin,
                .height = 4500,
                .accessibleName = "图片"});
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdOK", .caption = "载入(&L)"},
                    {.kind = ControlKind::button, .name = "cmdClear", .caption = "清除(&Q)"},
                    {.kind = ControlKind::button, .name = "cmdExit", .caption = "关闭(&C)"}});
    dialog.add({.kind = ControlKind::fileDialog, .name = "cd1"});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& itemPhotoDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
