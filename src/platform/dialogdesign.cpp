#include "platform/dialogdesign.h"

namespace orvenmod::platform {

namespace {

constexpr float kLineStep = 510;
constexpr float kFieldHeight = 315;
constexpr float kLabelDrop = 45;  // puts a caption's text on the line of its field's
constexpr float kLabelHeight = 240;
constexpr float kBesideLabel = 30;
constexpr float kButtonHeight = 375;
constexpr float kButtonGap = 120;
constexpr float kBelowButtons = 135;

}  // namespace

DialogDesign::DialogDesign(std::string_view name, std::string_view caption, const DialogMeasures& measures)
    : measures_(measures), nextLine_(measures.firstLine) {
    design_.name = name;
    design_.caption = caption;
    design_.width = measures.width;
    design_.height = measures.height;
    design_.resizable = false;
}

void DialogDesign::line(ControlDesign label, ControlDesign field) {
    const bool contained = !measures_.container.empty();
    const float inset = contained ? 2 * measures_.margin : measures_.margin;
    const float right = measures_.width - (contained ? 2 * measures_.margin : 0) - inset;
    label.left = inset;
    label.top = nextLine_ + kLabelDrop;
    label.width = measures_.fieldLeft - inset - kBesideLabel;
    label.height = kLabelHeight;
    field.left = measures_.fieldLeft;
    field.top = nextLine_;
    field.width = right - measures_.fieldLeft;
    field.height = kFieldHeight;
    label.parent = field.parent = measures_.container;
    nextLine_ += kLineStep;
    add(label);
    add(field);
}

void DialogDesign::buttons(std::vector<ControlDesign> buttons) {
    float left = measures_.width - measures_.margin + kButtonGap -
                 static_cast<float>(buttons.size()) * (measures_.buttonWidth + kButtonGap);
    for (ControlDesign& button : buttons) {
        button.left = left;
        button.top = measures_.height - kButtonHeight - kBelowButtons;
        button.width = measures_.buttonWidth;
        button.height = kButtonHeight;
        left += measures_.buttonWidth + kButtonGap;
        add(button);
    }
}

}  // namespace orvenmod::platform
