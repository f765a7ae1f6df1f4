// What a toolkit must do, told once as tests and linked into one binary a toolkit. Each binary says which by defining
// newScript().
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "support/user.h"

namespace orvenmod::test {

/// The scripts of the toolkit under test.
std::unique_ptr<Script> newScript();

class ToolkitContract : public ::testing::Test {
protected:
    /// Opens a window of the design, lets `load` dress it and a user do the steps.
    void use(const platform::WindowDesign& design, const std::function<void(platform::Window&)>& load,
             const std::function<void(User&)>& steps) {
        const auto window = toolkit.createWindow(design);
        script->onWindow(window->name(), steps);
        window->showModal([&] { load(*window); });
    }
    void use(const platform::WindowDesign& design, const std::function<void(User&)>& steps) {
        use(
            design, [](platform::Window&) {}, steps);
    }
    void TearDown() override { script->finish(); }

    std::unique_ptr<Script> script = newScript();
    platform::Toolkit& toolkit = script->toolkit();
};

/// A window with these controls, menus left empty.
inline platform::WindowDesign windowWith(std::vector<platform::ControlDesign> controls) {
    platform::WindowDesign design;
    design.name = "frmSample";
    design.caption = "样窗";
    design.width = 9000;
    design.height = 6000;
    design.controls = std::move(controls);
    return design;
}

inline platform::ControlDesign drawn(platform::ControlKind kind, std::string_view name, float top = 0,
                                     float height = 400) {
    platform::ControlDesign design{.kind = kind, .name = name};
    design.top = top;
    design.width = 3000;
    design.height = height;
    design.accessibleName = name;
    return design;
}

}  // namespace orvenmod::test
