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

// Twips; 15 are a pixel.
//
//   Label1  txt
//   Label2  PowerEdit1
//           [PowerButton1] [cmdClose]
constexpr float kWidth = 6600;
constexpr float kHeight = 1980;
constexpr float kMargin = 180;
constexpr float kFieldLeft = 1320;
constexpr float kFieldWidth = kWidth - kMargin - kFieldLeft;
constexpr float kLabelWidth = 1080;
constexpr float kLabelDrop = 30;  // puts a caption's text on the line of its field's
constexpr float kFirstLine = 210;
constexpr float kSecondLine = 690;
constexpr float kControlHeight = 345;
constexpr float kButtonTop = 1350;
constexpr float kButtonWidth = 1560;
constexpr float kCloseLeft = kWidth - kMargin - kButtonWidth;
constexpr float kChooseLeft = kCloseLeft - kButtonWidth - 120;

ControlDesign control(ControlKind kind, std::string_view name, std::string_view caption, float left, float top,
                      float width) {
    return {.kind = kind,
            .name = name,
            .caption = caption,
            .left = left,
            .top = top,
            .width = width,
            .height = kControlHeight};
}

ControlDesign label(std::string_view name, std::string_view caption, float line) {
    return control(ControlKind::label, name, caption, kMargin, line + kLabelDrop, kLabelWidth);
}

ControlDesign field(std::string_view name, float line) {
    return control(ControlKind::edit, name, "", kFieldLeft, line, kFieldWidth);
}

ControlDesign button(std::string_view name, std::string_view caption, float left) {
    return control(ControlKind::button, name, caption, left, kButtonTop, kButtonWidth);
}

platform::WindowDesign makeDesign() {
    platform::WindowDesign design;
    design.name = "frmFJNew";
    design.caption = "附件";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    ControlDesign path = field("PowerEdit1", kSecondLine);
    path.enabled = false;
    design.controls = {label("Label1", "附件名称：", kFirstLine),           field("txt", kFirstLine),
                       label("Label2", "附件路径：", kSecondLine),          path,
                       button("PowerButton1", "选择文件(&O)", kChooseLeft), button("cmdClose", "关闭(&C)", kCloseLeft),
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
