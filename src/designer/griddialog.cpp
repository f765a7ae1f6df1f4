// Twips; 15 are a pixel.
//
//   Toolbar1
//   fps1
#include "designer/griddialog.h"

#include <utility>

namespace orvenmod {

using platform::ControlKind;

platform::WindowDesign gridDialog(std::string_view name, std::string_view caption, float height,
                                  std::string_view accessibleName, std::vector<platform::GridColumn> columns) {
    constexpr float kWidth = 7200;
    constexpr float kMargin = 60;
    platform::WindowDesign design;
    design.name = name;
    design.caption = caption;
    design.width = kWidth;
    design.height = height;
    design.resizable = false;
    design.controls = {{.kind = ControlKind::toolbar, .name = "Toolbar1", .accessibleName = "工具栏"},
                       {.kind = ControlKind::entryGrid,
                        .name = "fps1",
                        .left = kMargin,
                        .top = kMargin,
                        .width = kWidth - 2 * kMargin,
                        .height = height - 2 * kMargin,
                        .accessibleName = accessibleName,
                        .columns = std::move(columns)}};
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Save", .caption = "保存", .icon = "save"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

}  // namespace orvenmod
