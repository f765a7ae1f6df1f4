// A menu or an entry of one. Owned by its window; the actions and menus are children of the menu bar.
#pragma once

#include <QAction>
#include <QMenuBar>

#include "platform/controls.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"

namespace orvenmod::platform::qt {

class QtMenu final : public QtControl<Menu> {
public:
    /// `holder` is the menu it lies in, null for the bar; `hasEntries` makes it a menu of its own.
    QtMenu(Core& core, const MenuDesign& design, QMenuBar* bar, QMenu* holder, bool hasEntries);

    std::string caption() const override;
    void setCaption(const std::string& caption) override;
    bool checked() const override { return checked_; }
    void setChecked(bool checked) override;
    void popUp() override;

    bool visible() const override;
    void setVisible(bool visible) override;
    bool enabled() const override;
    void setEnabled(bool enabled) override;

    QMenu* menu() const { return menu_; }

private:
    void chosen();

    Core& core_;
    QMenuBar* bar_;
    QMenu* menu_ = nullptr;
    QAction* action_ = nullptr;
    bool checked_ = false;
};

}  // namespace orvenmod::platform::qt
