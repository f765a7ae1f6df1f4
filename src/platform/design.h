// A window's design as data: its controls, menus and toolbar. Each window keeps its design in a file of its own beside
// its logic; a toolkit makes the window from it. The order of the controls is the order of the window's control
// collection and of the Tab key.
#pragma once

#include <string_view>
#include <vector>

namespace orvenmod::platform {

enum class ControlKind {
    frame,  ///< container with a border and a caption ("" for no border)
    label,
    button,
    edit,
    combo,  ///< drop-down of rows with several columns, the first shown
    datePicker,
    tree,
    listGrid,
    entryGrid,
    tabs,  ///< container; a child's `page` says on which tab it lies
    picture,
    toolbar,
    menu,
    imageList,
    fileDialog,
    dataControl  ///< unseen row source
};

/// Whether the keyboard can reach a control of that kind.
constexpr bool takesFocus(ControlKind kind) {
    switch (kind) {
        case ControlKind::button:
        case ControlKind::edit:
        case ControlKind::combo:
        case ControlKind::datePicker:
        case ControlKind::tree:
        case ControlKind::listGrid:
        case ControlKind::entryGrid:
        case ControlKind::tabs:
            return true;
        default:
            return false;
    }
}

/// Cell alignment in a list grid, in the units of the list metadata.
enum class Alignment { general = 0, left = 1, centre = 4, right = 7 };

enum class CellType { date = 0, text = 1, button = 7, combo = 8, checkBox = 10, currency = 12, number = 13 };

/// A column of a grid as drawn. Width in twips.
struct GridColumn {
    std::string_view title;
    int width = 900;
    Alignment alignment = Alignment::left;
    bool hidden = false;
    bool locked = false;             ///< entry grids: the user can't edit
    CellType type = CellType::text;  ///< entry grids
    bool stretches = false;          ///< entry grids: takes the width that the other columns leave
};

struct ControlDesign {
    ControlKind kind;
    std::string_view name;
    int index = -1;                 ///< place in a control array, -1 alone
    std::string_view caption = "";  ///< '&' marks the mnemonic
    float left = 0, top = 0, width = 0, height = 0;
    std::string_view tag = "";
    std::string_view parent = "";  ///< name of the container, "" the window
    int page = 0;                  ///< tab of the container, where that is a tabs control
    bool visible = true;
    bool enabled = true;
    std::string_view accessibleName = "";      ///< for controls that have no caption
    std::vector<GridColumn> columns = {};      ///< grids
    int fixedColumns = 0;                      ///< list grids
    bool arranges = false;                     ///< list grids: the user sorts, narrows and copies; a line tells counts
    std::vector<std::string_view> pages = {};  ///< tabs: their captions
};

struct MenuDesign {
    std::string_view name;
    std::string_view caption;        ///< '&' marks the mnemonic; "-" is a separator
    std::string_view parent = "";    ///< name of the menu it lies in, "" the menu bar
    std::string_view shortcut = "";  ///< such as "Ctrl+A"
    bool enabled = true;
    bool visible = true;
    bool checked = false;
    bool checkable = false;
};

struct ToolButtonDesign {
    std::string_view key;
    std::string_view caption;
    std::string_view icon;  ///< name of the picture: "excel", "preview", "print", "exit", "save", "new", "copy" ...
    bool separatorBefore = false;
};

struct WindowDesign {
    std::string_view name;
    std::string_view caption;
    float width = 0, height = 0;  ///< inner size in twips
    bool resizable = true;
    std::vector<ControlDesign> controls;
    std::vector<MenuDesign> menus;
    std::string_view toolbar = "";  ///< name of the toolbar, "" for none
    std::vector<ToolButtonDesign> toolButtons;
};

}  // namespace orvenmod::platform
