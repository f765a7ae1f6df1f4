// Twips; 15 are a pixel.
#include "designer/frmHSXMNew_design.h"

namespace orvenmod {

using platform::ControlDesign;
using platform::ControlKind;

namespace {

constexpr float kWidth = 5700;
constexpr float kHeight = 2700;
constexpr float kLabelLeft = 300;
constexpr float kEditLeft = 1350;
constexpr float kEditWidth = kWidth - kEditLeft - kLabelLeft;
constexpr float kEditHeight = 315;
constexpr float kFirstTop = 300;
constexpr float kLineHeight = 510;
constexpr float kButtonTop = kHeight - 690;
constexpr float kButtonWidth = 1500;
constexpr float kButtonHeight = 420;

float lineTop(int line) { return kFirstTop + kLineHeight * static_cast<float>(line); }

ControlDesign label(std::string_view name, std::string_view caption, int line) {
    return {.kind = ControlKind::label,
            .name = name,
            .caption = caption,
            .left = kLabelLeft,
            .top = lineTop(line) + 45,
            .width = kEditLeft - kLabelLeft - 60,
            .height = 240};
}

ControlDesign edit(std::string_view name, int index, std::string_view accessibleName, int line) {
    return {.kind = ControlKind::edit,
            .name = name,
            .index = index,
            .left = kEditLeft,
            .top = lineTop(line),
            .width = kEditWidth,
            .height = kEditHeight,
            .accessibleName = accessibleName};
}

ControlDesign button(std::string_view name, std::string_view caption, float left) {
    return {.kind = ControlKind::button,
            .name = name,
            .caption = caption,
            .left = left,
            .top = kButtonTop,
            .width = kButtonWidth,
            .height = kButtonHeight};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmHSXMNew";
    design.caption = "核算项目";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    design.controls = {label("Label1", "类别：", 0),
                       edit("txtType", -1, "类别", 0),
                       label("Label2", "名称：", 1),
                       edit("txt", 0, "名称", 1),
                       label("Label3", "表名：", 2),
                       edit("txt", 1, "表名", 2),
                       button("cmdOK", "新增(&A)", kWidth - kLabelLeft - 2 * kButtonWidth - 150),
                       button("cmdClose", "关闭(&C)", kWidth - kLabelLeft - kButtonWidth)};
    return design;
}

}  // namespace

const platform::WindowDesign& hsxmNewDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
