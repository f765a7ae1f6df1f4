#include "designer/frmHSXMDetailSetup_design.h"

#include "designer/griddialog.h"

namespace orvenmod {

using platform::CellType;

namespace {

constexpr float kHeight = 7200;  // twips

platform::WindowDesign makeDesign() {
    platform::WindowDesign design =
        gridDialog("frmHSXMDetailSetup", "基础资料明细设置", kHeight, "明细设置",
                   {{.title = "列名", .width = 4500, .locked = true},
                    {.title = "是否显示", .width = 1800, .type = CellType::checkBox},
                    {.title = "列宽", .width = 900, .hidden = true, .type = CellType::number},
                    {.title = "", .width = 900, .hidden = true}});
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuUnLock", .caption = "解除锁定", .parent = "MenuFile"},
                    {.name = "MenuAAA", .caption = "-", .parent = "MenuFile"},
                    {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile"}};
    return design;
}

}  // namespace

const platform::WindowDesign& hsxmDetailSetupDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
