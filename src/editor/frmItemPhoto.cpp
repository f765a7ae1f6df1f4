#include "editor/frmItemPhoto.h"

#include <string>

#include "editor/binaryfile.h"
#include "editor/frmItemPhoto_design.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "platform/controls.h"

namespace orvenmod {

using platform::Button;
using platform::Picture;

frmItemPhoto& frmItemPhoto::instance() {
    static auto& window = *new frmItemPhoto;  // the process may end while it is shown
    return window;
}

void frmItemPhoto::show() {
    const auto make = [] { return services().toolkit.createWindow(itemPhotoDesign()); };
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
