// Twips; 15 are a pixel.
//
//   类别ID： [txt1]
//   名称：   [txt]
//                [cmdOK][cmdClose]
#include "dictionary/frmJCZLType_design.h"

namespace orvenmod {

using platform::ControlDesign;
using platform::ControlKind;

namespace {

constexpr float kWidth = 5400;
constexpr float kHeight = 2100;
constexpr float kFieldLeft = 1290;
constexpr float kButtonTop = 1530;

ControlDesign label(int index, std::string_view caption, float top) {
    return {.kind = ControlKind::label,
            .name = "Label1",
            .index = index,
            .caption = caption,
            .left = 300,
            .top = top + 45,
            .width = 960,
            .height = 240};
}

ControlDesign field(std::string_view name, std::string_view accessible, float top) {
    return {.kind = ControlKind::edit,
            .name = name,
            .left = kFieldLeft,
            .top = top,
            .width = kWidth - kFieldLeft - 300,
            .height = 315,
            .accessibleName = accessible};
}

ControlDesign button(std::string_view name, std::string_view caption, float left) {
    return {.kind = ControlKind::button,
            .name = name,
            .caption = caption,
            .left = left,
            .top = kButtonTop,
            .width = 1350,
            .height = 375};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmJCZLType";
    design.caption = "基础资料类别新增";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    design.controls = {label(0, "类别ID：", 300),
                       field("txt1", "类别ID", 300),
                       label(1, "名称：", 810),
                       field("txt", "名称", 810),
                       button("cmdOK", "新增(&A)", kWidth - 300 - 2 * 1350 - 120),
                       button("cmdClose", "关闭(&C)", kWidth - 300 - 1350)};
    return design;
}

}  // namespace

const platform::WindowDesign& dictionaryDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
