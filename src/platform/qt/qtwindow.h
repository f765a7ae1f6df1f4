// A window: its widget, its controls, and the loop that runs while it is shown.
#pragma once

#include <map>
#include <memory>

#include "platform/qt/core.h"
#include "platform/qt/windowbuilder.h"
#include "platform/qt/windowwidget.h"
#include "platform/window.h"

class QEventLoop;

namespace orvenmod::platform::qt {

class QtWindow final : public Window {
public:
    QtWindow(Core& core, const WindowDesign& design);
    ~QtWindow() override;

    const std::string& name() const override { return name_; }
    std::string caption() const override;
    void setCaption(const std::string& caption) override;
    float innerWidth() const override { return width_; }
    float innerHeight() const override { return height_; }
    void setInnerSize(float width, float height) override;
    const std::vector<Control*>& controls() const override { return controls_; }
    Control* find(const std::string& name, int index) const override;
    void showModal(const std::function<void()>& load) override;
    void close() override;
    bool shown() const override { return shown_; }
    void setPointer(Pointer pointer) override;
    Pointer pointer() const override { return pointer_; }

    WindowWidget& widget() const { return *widget_; }

private:
    void open();
    void runLoad(const std::function<void()>& load);
    void runLoop();
    void hide();
    void areaResized();
    void takeAreaSize();
    void focusFirst();

    Core& core_;
    std::string name_;
    float width_;
    float height_;
    bool resizable_;
    std::unique_ptr<WindowWidget> widget_;
    BuiltWindow built_;
    std::vector<Control*> controls_;
    std::map<std::pair<std::string, int>, Control*> byName_;
    QEventLoop* loop_ = nullptr;
    bool shown_ = false;
    bool loaded_ = false;
    bool sizing_ = false;  ///< code sizes the window, and raises the event itself
    Pointer pointer_ = Pointer::arrow;
};

}  // namespace orvenmod::platform::qt
