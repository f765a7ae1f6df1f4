// The design of a small dialog: lines of a caption and its field below one another, a row of buttons in the lower right
// corner. Such dialogs look alike, so a window says only what is in it.
#pragma once

#include <string_view>
#include <vector>

#include "platform/design.h"

namespace orvenmod::platform {

/// In twips.
struct DialogMeasures {
    float width = 0, height = 0;
    float fieldLeft = 0;
    float margin = 300;
    float firstLine = 300;  ///< top of the first field
    float buttonWidth = 1350;
    std::string_view container = "";  ///< the tabs control that the lines lie in
};

class DialogDesign {
public:
    DialogDesign(std::string_view name, std::string_view caption, const DialogMeasures& measures);

    void add(const ControlDesign& control) { design_.controls.push_back(control); }
    /// A caption and its field; their places are told here.
    void line(ControlDesign label, ControlDesign field);
    /// From left to right, the last at the margin; their places are told here.
    void buttons(std::vector<ControlDesign> buttons);

    const WindowDesign& design() const { return design_; }

private:
    DialogMeasures measures_;
    float nextLine_;
    WindowDesign design_;
};

}  // namespace orvenmod::platform
