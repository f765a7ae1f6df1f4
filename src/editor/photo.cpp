#include "editor/photo.h"

#include <string>

#include "editor/binaryfile.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/openrows.h"
#include "frame/services.h"

namespace orvenmod {

void Photo::load() {
    store::Recordset photos =
        openRows("select * from ICItemPhoto where fitemid=" + std::to_string(appState().gCurItemId));
    for (; !photos.eof(); photos.moveNext()) {
        const std::string suffix = photos.text("fHZ");
        // The stored suffix names no folder.
        const std::string path = services().folders.temporary() + "/" +
                                 plainFileName("Temp001" + (suffix.empty() ? std::string(".jpg") : suffix));
        writeFile(path, photos.field("fPhoto").value_or(""));
        pict1_.show(path);
        appState().gPhotoPath = path;
    }
}

void Photo::store(std::int32_t itemId) const {
    const AppState& state = appState();
    if (state.gPhotoPath.empty() || state.gItemClassId != kPhotoClass) return;
    const auto content = readFile(state.gPhotoPath);
    const auto rows = state.gConn->openTable("ICItemPhoto");
    rows->addNew();
    rows->set("fitemid", std::to_string(itemId));
    rows->setBinary("fPhoto", content);
    rows->set("fHZ", suffixOf(state.gPhotoPath));
    rows->update();
}

void Photo::cmdAdd_Click() {
    cd1_.setFilter("图片文件(*.jpg)|*.jpg|图片文件(*.bmp)|*.bmp");
    if (!cd1_.showOpen() || cd1_.fileName().empty()) return;
    appState().gPhotoPath = cd1_.fileName();
    pict1_.show(appState().gPhotoPath);
}

void Photo::cmdClear_Click() {
    pict1_.clear();
    appState().gPhotoPath = "";
}

}  // namespace orvenmod
