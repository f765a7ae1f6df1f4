#include "editor/frmFJNew.h"

#include "editor/frmBasicInfo.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "platform/controls.h"

namespace orvenmod {

using platform::Button;
using platform::ControlDesign;
using platform::ControlKind;

namespace {

ControlDesign control(ControlKind kind, std::string_view name, std::string_view caption, float left, float top,
                      float width) {
    return {.kind = kind, .name = name, .caption = caption, .left = left, .top = top, .width = width, .height = 345};
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmFJNew";
    design.caption = "附件";
    design.width = 6600;
    design.height = 1980;
    design.resizable = false;
    ControlDesign path = control(ControlKind::edit, "PowerEdit1", "", 1320, 690, 5100);
    path.enabled = false;
    design.controls = {control(ControlKind::label, "Label1", "附件名称：", 180, 240, 1080),
                       control(ControlKind::edit, "txt", "", 1320, 210, 5100),
                       control(ControlKind::label, "Label2", "附件路径：", 180, 720, 1080),
                       path,
                       control(ControlKind::button, "PowerButton1", "选择文件(&O)", 3180, 1350, 1560),
                       control(ControlKind::button, "cmdClose", "关闭(&C)", 4860, 1350, 1560),
                       {.kind = ControlKind::fileDialog, .name = "cd1"}};
    return design;
}

}  // namespace

frmFJNew& frmFJNew::instance() {
    static frmFJNew window;
    return window;
}

void frmFJNew::show() {
    static const platform::WindowDesign design = makeDesign();
    const auto make = [] { return services().toolkit.createWindow(design); };
    showOnce(window_, make, [this] {
        window_->get<Button>("PowerButton1").click = [this] { PowerButton1_Click(); };
        window_->get<Button>("cmdClose").click = [this] { window_->close(); };
        window_->showModal([] {});
    });
}

// The row gets no path: it counts as a stored one.
void frmFJNew::PowerButton1_Click() {
    const std::string caption = trim(window_->get<platform::Edit>("txt").text());
    if (caption.empty()) return showWarning("附件名称不能为空！");
    auto& dialog = window_->get<platform::FileDialog>("cd1");
    dialog.setFilter("附件文件(*.*)|*.*");
    if (!dialog.showOpen() || dialog.fileName().empty()) return;
    frmBasicInfo::instance().addAttachment(caption, dialog.fileTitle());
    window_->close();
}

}  // namespace orvenmod
