#include "editor/frmItemPhoto.h"

#include <string>

#include "editor/binaryfile.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "platform/controls.h"

namespace orvenmod {

using platform::Button;
using platform::ControlDesign;
using platform::ControlKind;
using platform::Picture;

namespace {

// Twips; 15 are a pixel.
//
//   pict1
//           [cmdOK] [cmdClear] [cmdExit]
constexpr float kWidth = 6600;
constexpr float kHeight = 5400;
constexpr float kMargin = 180;
constexpr float kPictureHeight = 4500;
constexpr float kButtonTop = kMargin + kPictureHeight + kMargin;
constexpr float kButtonWidth = 1320;
constexpr float kButtonHeight = 360;
constexpr float kButtonStep = kButtonWidth + 120;
constexpr float kLastButton = kWidth - kMargin - kButtonWidth;

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
    design.name = "frmItemPhoto";
    design.caption = "图片";
    design.width = kWidth;
    design.height = kHeight;
    design.resizable = false;
    design.controls = {{.kind = ControlKind::picture,
                        .name = "pict1",
                        .left = kMargin,
                        .top = kMargin,
                        .width = kWidth - 2 * kMargin,
                        .height = kPictureHeight,
                        .accessibleName = "图片"},
                       button("cmdOK", "载入(&L)", kLastButton - 2 * kButtonStep),
                       button("cmdClear", "清除(&Q)", kLastButton - kButtonStep),
                       button("cmdExit", "关闭(&C)", kLastButton),
                       {.kind = ControlKind::fileDialog, .name = "cd1"}};
    return design;
}

}  // namespace

frmItemPhoto& frmItemPhoto::instance() {
    static frmItemPhoto window;
    return window;
}

void frmItemPhoto::show() {
    static const platform::WindowDesign design = makeDesign();
    const auto make = [] { return services().toolkit.createWindow(design); };
    showOnce(window_, make, [this] {
        window_->get<Button>("cmdOK").click = [this] { cmdOK_Click(); };
        window_->get<Button>("cmdClear").click = [this] { cmdClear_Click(); };
        window_->get<Button>("cmdExit").click = [this] { window_->close(); };
        window_->showModal([this] { Form_Load(); });
    });
}

void frmItemPhoto::Form_Load() {
    appState().gPhotoPath = "";
    appState().gPhotoCleared = 0;
    if (appState().gEditMode == 1) getItemPhoto();
}

void frmItemPhoto::getItemPhoto() {
    openDB();
    trapped([&] {
        store::Recordset photos =
            openRows("select * from ICItemPhoto where fitemid=" + std::to_string(appState().gCurItemId));
        for (; !photos.eof(); photos.moveNext()) {
            const std::string path = platform::nativePath(appState().gAppPath + "\\Temp001.jpg");
            writeFile(path, photos.field("fPhoto").value_or(""));
            window_->get<Picture>("pict1").show(path);
            appState().gPhotoPath = path;
        }
        return true;
    });
}

void frmItemPhoto::cmdOK_Click() {
    auto& dialog = window_->get<platform::FileDialog>("cd1");
    dialog.setFilter("JPG文件(*.jpg)|*.jpg");
    if (!dialog.showOpen() || dialog.fileName().empty()) return;
    appState().gPhotoPath = dialog.fileName();
    window_->get<Picture>("pict1").show(appState().gPhotoPath);
}

void frmItemPhoto::cmdClear_Click() {
    window_->get<Picture>("pict1").clear();
    appState().gPhotoPath = "";
    appState().gPhotoCleared = 1;
}

}  // namespace orvenmod
