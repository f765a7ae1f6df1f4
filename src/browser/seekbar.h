// The search bar of frmBasicInfoList: one condition on one field.
//
//   PC(0)   caption | view column | kind "1" number, "2" text, "3" date | class | code or name | item type;
//           row 0 is "无", no condition
//   PC(1)   the operator's caption | its SQL word
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/window.h"

namespace orvenmod {

class SeekBar {
public:
    explicit SeekBar(platform::Window& window);

    /// Fills PC(0) and selects the field that was selected when the window last closed. Shows its own failures.
    void addToFpsA();
    void PC_SelChange(int Index);
    /// The condition without its closing bracket, "" for none.
    std::string buildSeekSQLA() const;
    void clearCell();
    /// The row of PC(0), as the ini file keeps it.
    int selectedField() const { return field_.selected(); }

private:
    void readFields();

    platform::Combo& field_;     // PC(0)
    platform::Combo& operator_;  // PC(1)
    platform::Edit& txtSearch_;
    platform::DatePicker& dtp_;
};

/// The ini file's section, and its key for the field selected in a class's window.
inline constexpr const char* kIniSection = "Orvenmod";
std::string seekFieldKey();

}  // namespace orvenmod
