// Twips; 15 are a pixel. Code before name in the order of the Tab key: after a save the focus returns to the short
// code.
//
//   SSTab1   所属分类：   [cmb(0)]
//            分类短代码： [txt(1)]
//            分类名称：   [txt(0)]
//            分类代码：   [txt(2)]
//                                  [cmdOperate][cmdClose]
#include "hierarchy/frmParent_design.h"

namespace orvenmod {

using platform::ControlDesign;
using platform::ControlKind;

namespace {

constexpr float kWidth = 6600;
constexpr float kHeight = 3750;
constexpr float kFirstLine = 600;
constexpr float kLine = 510;
constexpr float kFieldLeft = 1560;
constexpr float kButtonTop = 3240;

ControlDesign label(int index, std::string_view caption, float top) {
    return {.kind = ControlKind::label,
            .name = "Label1",
            .index = index,
            .caption = caption,
            .left = 240,
            .top = top + 45,
            .width = kFieldLeft - 300,
            .height = 240,
            .parent = "SSTab1"};
}

ControlDesign field(ControlKind kind, std::string_view name, int index, std::string_view accessible, float top) {
    return {.kind = kind,
            .name = name,
            .index = index,
            .left = kFieldLeft,
            .top = top,
            .width = kWidth - 240 - kFieldLeft - 240,
            .height = 315,
            .parent = "SSTab1",
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

std::vector<ControlDesign> controls() {
    return {
        {.kind = ControlKind::tabs,
         .name = "SSTab1",
         .left = 120,
         .top = 120,
         .width = kWidth - 240,
         .height = kButtonTop - 270,
         .accessibleName = "分类",
         .pages = {"分类"}},
        label(0, "所属分类：", kFirstLine),
        field(ControlKind::combo, "cmb", 0, "所属分类", kFirstLine),
        label(1, "分类短代码：", kFirstLine + kLine),
        field(ControlKind::edit, "txt", 1, "分类短代码", kFirstLine + kLine),
        label(2, "分类名称：", kFirstLine + 2 * kLine),
        field(ControlKind::edit, "txt", 0, "分类名称", kFirstLine + 2 * kLine),
        label(3, "分类代码：", kFirstLine + 3 * kLine),
        field(ControlKind::edit, "txt", 2, "分类代码", kFirstLine + 3 * kLine),
        button("cmdOperate", "新增(&A)", kWidth - 120 - 2 * 1350 - 120),
        button("cmdClose", "关闭(&C)", kWidth - 120 - 1350),
    };
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmParent";
    design.caption = "分类";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    design.controls = controls();
    return design;
}

}  // namespace

const platform::WindowDesign& parentDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
