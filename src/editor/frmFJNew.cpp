#include "editor/frmFJNew.h"

#include "editor/frmBasicInfo.h"
#include "editor/frmFJNew_design.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "platform/controls.h"

namespace orvenmod {

using platform::Button;

frmFJNew& frmFJNew::instance() {
    static auto& window = *new frmFJNew;  // the process may end while it is shown
    return window;
}

void frmFJNew::show() {
    const auto make = [] { return services().toolkit.createWindow(newAttachmentDesign()); };
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
