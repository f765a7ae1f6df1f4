#include "designer/frmHSXMDetailNew_design.h"

#include "designer/griddialog.h"

namespace orvenmod {

namespace {

constexpr float kHeight = 5100;  // twips

platform::WindowDesign makeDesign() {
    platform::WindowDesign design = gridDialog("frmHSXMDetailNew", "新增明细信息", kHeight, "明细信息",
                                               {{.title = "名称", .width = 2400, .locked = true},
                                                {.title = "值", .width = 4200},
                                                {.title = "隐含列", .width = 900}});
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"},
                    {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile"}};
    return design;
}

}  // namespace

const platform::WindowDesign& hsxmDetailNewDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
