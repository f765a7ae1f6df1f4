// Twips; 15 are a pixel.
//
//   fps1
//                    [cmdOK][cmdCancel]
#include "transfer/frmImportRow.h"

#include <vector>

#include "frame/services.h"
#include "platform/controls.h"
#include "platform/dialogdesign.h"
#include "platform/entrygrid.h"
#include "platform/sheet/utf16.h"

namespace orvenmod {

namespace {

using platform::ControlKind;

constexpr int kCaptionColumn = 1;
constexpr int kValueColumn = 2;
constexpr int kReasonColumn = 3;

platform::WindowDesign makeDesign() {
    constexpr float kWidth = 11400;
    constexpr float kHeight = 6900;
    constexpr float kInset = 150;
    constexpr float kBelowGrid = 750;
    platform::DialogDesign dialog("frmImportRow", "修改此行", {.width = kWidth, .height = kHeight, .margin = kInset});
    platform::ControlDesign grid{.kind = ControlKind::entryGrid, .name = "fps1", .left = kInset, .top = kInset};
    grid.width = kWidth - 2 * kInset;
    grid.height = kHeight - kInset - kBelowGrid;
    grid.accessibleName = "各字段的值";
    grid.columns = {{.title = "项目", .width = 2100, .locked = true},
                    {.title = "值", .width = 4200, .stretches = true},
                    {.title = "原因", .width = 4200, .locked = true}};
    dialog.add(grid);
    dialog.buttons({{.kind = ControlKind::button, .name = "cmdOK", .caption = "确定(&O)"},
                    {.kind = ControlKind::button, .name = "cmdCancel", .caption = "取消(&C)"}});
    return dialog.design();
}

const platform::WindowDesign& rowDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

std::vector<std::size_t> shownFields(const ImportSession& session) {
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < session.fields().size(); ++field) {
        if (session.columnOf(field) >= 0) fields.push_back(field);
    }
    return fields;
}

// A grid measures, paints and edits what it shows; one that is left as it is shown stays whole.
std::string shownValue(const ImportSession& session, std::size_t place, std::size_t field) {
    const std::string text = session.text(place, field);
    if (platform::cutToUnits(text).size() == text.size()) return text;
    return std::string(platform::cutToUnits(text, platform::kLongestCell - 1)) + "…";
}

/// Fills the grid; the first row with a reason is active.
void fill(platform::EntryGrid& fps1, const ImportSession& session, std::size_t place,
          const std::vector<std::size_t>& fields) {
    const CheckedRow checked = session.checked(place);
    int first = 0;
    for (const std::size_t field : fields) {
        const int row = fps1.rowCount() + 1;
        fps1.setRowCount(row);
        fps1.setText(kCaptionColumn, row, session.fields()[field].caption);
        fps1.setRequired(kCaptionColumn, row, session.fields()[field].required);
        fps1.setText(kValueColumn, row, shownValue(session, place, field));
        for (const CellReason& reason : checked.reasons) {
            if (reason.field == field) fps1.setText(kReasonColumn, row, reason.text);
        }
        if (first == 0 && !fps1.text(kReasonColumn, row).empty()) first = row;
    }
    fps1.setActiveCell(kValueColumn, first == 0 ? 1 : first);
}

}  // namespace

std::map<std::size_t, std::string> frmImportRow::mend(const ImportSession& session, std::size_t place) {
    std::map<std::size_t, std::string> changes;
    const auto window = services().toolkit.createWindow(rowDesign());
    auto& fps1 = window->get<platform::EntryGrid>("fps1");
    const std::vector<std::size_t> fields = shownFields(session);
    window->get<platform::Button>("cmdCancel").click = [&] { window->close(); };
    window->get<platform::Button>("cmdOK").click = [&] {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const std::string typed = fps1.text(kValueColumn, static_cast<int>(i) + 1);
            if (typed != shownValue(session, place, fields[i])) changes[fields[i]] = typed;
        }
        window->close();
    };
    window->showModal([&] {
        window->setCaption("修改第" + std::to_string(session.row(place) + 1) + "行");
        fill(fps1, session, place, fields);
        fps1.setFocus();
    });
    return changes;
}

}  // namespace orvenmod
