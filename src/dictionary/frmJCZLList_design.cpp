// Twips; 15 are a pixel.
//
//   vsf1
//                 [cmd(1)][cmd(2)][cmd(3)][cmd(0)]
#include "dictionary/frmJCZLList_design.h"

namespace orvenmod {

using platform::ControlDesign;
using platform::ControlKind;

namespace {

constexpr float kWidth = 11400;
constexpr float kHeight = 7200;
constexpr float kButtonTop = 6690;
constexpr float kButtonStep = 1350 + 120;
constexpr int kEmptyColumns = 7;

ControlDesign button(int index, std::string_view caption, int place) {
    return {.kind = ControlKind::button,
            .name = "cmd",
            .index = index,
            .caption = caption,
            .left = kWidth - 60 + 120 - static_cast<float>(4 - place) * kButtonStep,
            .top = kButtonTop,
            .width = 1350,
            .height = 375};
}

std::vector<ControlDesign> controls() {
    ControlDesign list{.kind = ControlKind::listGrid,
                       .name = "vsf1",
                       .left = 60,
                       .top = 60,
                       .width = kWidth - 120,
                       .height = kButtonTop - 195,
                       .accessibleName = "明细资料"};
    list.columns = {{.title = "内部ID", .width = 900, .hidden = true},
                    {.title = "代码", .width = 2415},
                    {.title = "名称", .width = 2175}};
    list.columns.resize(list.columns.size() + kEmptyColumns);
    return {list, button(1, "新增(&A)", 0), button(2, "修改(&U)", 1), button(3, "删除(&D)", 2),
            button(0, "关闭(&C)", 3)};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmJCZLList";
    design.caption = "基础资料";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    design.controls = controls();
    return design;
}

}  // namespace

const platform::WindowDesign& entryListDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
