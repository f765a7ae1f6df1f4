// The design of a small dialog: lines of a caption and its field below one another, a row of buttons in the lower right
// corner. All of them look alike, so each says only what it asks for.
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
    float firstLine = 300;            ///< top of the first field
    std::string_view container = "";  ///< name of the tabs that the lines lie in
};

class DialogDesign {
public:
    DialogDesign(std::string_view name, std::string_view caption, const DialogMeasures& measures);

    void add(const ControlDesign& control) { design_.controls.push_back(control); }
    /// A caption and its field, told by name, kind and place in a control array; the places are filled in.
    void line(ControlDesign label, ControlDesign field);
    /// Buttons from left to right, the last at the margin.
    void buttons(std::vector<ControlDesign> buttons);

    WindowDesign design() const { return design_; }

private:
    DialogMeasures measures_;
    WindowDesign design_;
    float top_;
};

}  // namespace orvenmod::platform
