// Twips; 15 are a pixel.
//
//   lblItem
//   vsfUsage   单据 | 张数 | 最近的单据（内码） | 余额
//                                        [cmdClose]
#include "hierarchy/frmItemUsage_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    constexpr float kWidth = 11400;
    constexpr float kHeight = 4200;
    constexpr float kMargin = 150;
    constexpr float kLabelHeight = 300;
    constexpr float kListTop = kMargin + kLabelHeight + 90;
    constexpr float kForButtons = 660;
    platform::DialogDesign dialog("frmItemUsage", "使用情况", {.width = kWidth, .height = kHeight, .margin = kMargin});
    dialog.add({.kind = ControlKind::label,
                .name = "lblItem",
                .left = kMargin,
                .top = kMargin,
                .width = kWidth - 2 * kMargin,
                .height = kLabelHeight});
    dialog.add({.kind = ControlKind::listGrid,
                .name = "vsfUsage",
                .left = kMargin,
                .top = kListTop,
                .width = kWidth - 2 * kMargin,
                .height = kHeight - kListTop - kForButtons,
                .accessibleName = "使用情况",
                .columns = {{.title = "单据", .width = 1800},
                            {.title = "张数", .width = 1050, .alignment = platform::Alignment::right},
                            {.title = "最近的单据（内码）", .width = 7050},
                            {.title = "余额", .width = 900, .alignment = platform::Alignment::centre}}});
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdClose", .caption = "关闭(&C)"}});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& itemUsageDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
