#include "support/keyboardwalk.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvenmod::test {

using namespace platform;

namespace {

constexpr ControlKind kStops[] = {ControlKind::button, ControlKind::edit,     ControlKind::combo,
                                  ControlKind::tree,   ControlKind::listGrid, ControlKind::datePicker,
                                  ControlKind::tabs,   ControlKind::entryGrid};

const ControlDesign* containerOf(const WindowDesign& design, const ControlDesign& control) {
    for (const ControlDesign& each : design.controls) {
        if (!control.parent.empty() && each.name == control.parent) return &each;
    }
    return nullptr;
}

/// Whether it can be reached on the first page of every tab control.
bool reachable(const WindowDesign& design, const ControlDesign& control) {
    for (const ControlDesign* each = &control; each; each = containerOf(design, *each)) {
        const ControlDesign* container = containerOf(design, *each);
        if (!each->visible || !each->enabled) return false;
        if (container && container->kind == ControlKind::tabs && each->page != 0) return false;
    }
    return true;
}

std::string label(std::string_view name, int index) {
    return index < 0 ? std::string(name) : std::string(name) + "(" + std::to_string(index) + ")";
}

std::vector<std::string> expectedStops(const WindowDesign& design) {
    std::vector<std::string> stops;
    for (const ControlDesign& each : design.controls) {
        const bool stop = std::find(std::begin(kStops), std::end(kStops), each.kind) != std::end(kStops);
        if (stop && reachable(design, each)) stops.push_back(label(each.name, each.index));
    }
    return stops;
}

std::string focusedControl(const Window& window) {
    for (const Control* each : window.controls()) {
        if (each->hasFocus()) return label(each->name(), each->index());
    }
    return "nothing";
}

/// A name is the caption, the accessible name, or the label drawn just before.
void expectNames(const WindowDesign& design) {
    for (std::size_t at = 0; at < design.controls.size(); ++at) {
        const ControlDesign& each = design.controls[at];
        if (std::find(std::begin(kStops), std::end(kStops), each.kind) == std::end(kStops)) continue;
        const bool labelled = at > 0 && design.controls[at - 1].kind == ControlKind::label;
        EXPECT_TRUE(!each.caption.empty() || !each.accessibleName.empty() || labelled)
            << design.name << ": a screen reader has no name for " << label(each.name, each.index);
    }
}

}  // namespace

void walkByKeyboard(Script& script, const WindowDesign& design) {
    expectNames(design);
    const std::vector<std::string> expected = expectedStops(design);
    const auto window = script.toolkit().createWindow(design);
    script.onWindow(window->name(), [&expected](User& user) {
        std::vector<std::string> walked;
        for (std::size_t step = 0; step < expected.size(); ++step) {
            walked.push_back(focusedControl(user.window()));
            user.press("Tab");
        }
        EXPECT_EQ(walked, expected);
        if (!expected.empty()) {
            EXPECT_EQ(focusedControl(user.window()), expected.front()) << "the walk goes round";
        }
    });
    window->showModal([] {});
    script.finish();
}

}  // namespace orvenmod::test
