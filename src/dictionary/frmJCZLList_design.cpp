// Twips; 15 are a pixel.
//
//   vsf1
//                 [cmd(1)][cmd(2)][cmd(3)][cmd(0)]
#include "dictionary/frmJCZLList_design.h"

#include "platform/dialogdesign.h"

namespace orvenmod {

using platform::ControlKind;

namespace {

platform::WindowDesign makeDesign() {
    constexpr float kWidth = 11400;
    constexpr float kHeight = 7200;
    constexpr float kMargin = 60;
    constexpr float kForButtons = 645;  // below the list
    constexpr int kEmptyColumns = 7;
    platform::DialogDesign dialog("frmJCZLList", "基础资料", {.width = kWidth, .height = kHeight, .margin = kMargin});
    platform::ControlDesign list{.kind = ControlKind::listGrid,
                                 .name = "vsf1",
                                 .left = kMargin,
                                 .top = kMargin,
                                 .width = kWidth - 2 * kMargin,
                                 .height = kHeight - kMargin - kForButtons,
                                 .accessibleName = "明细资料"};
    list.columns = {{.title = "内部ID", .width = 900, .hidden = true},
                    {.title = "代码", .width = 2415},
                    {.title = "名称", .width = 2175}};
    list.columns.resize(list.columns.size() + kEmptyColumns);
    dialog.add(list);
    dialog.buttons({{.kind = ControlKind::button, .name = "cmd", .index = 1, .caption = "新增(&A)"},
                    {.kind = ControlKind::button, .name = "cmd", .index = 2, .caption = "修改(&U)"},
                    {.kind = ControlKind::button, .name = "cmd", .index = 3, .caption = "删除(&D)"},
                    {.kind = ControlKind::button, .name = "cmd", .index = 0, .caption = "关闭(&C)"}});
    return dialog.design();
}

}  // namespace

const platform::WindowDesign& entryListDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
