// The item's attachments: the grid fps2, and the store where they are deleted and opened at once.
//
//   fps2   1 "删除" | 2 "打开" | 3 caption | 4 file name | 5 full path of a file not yet stored; the tag of column 1 is
//   the
//          stored entry id, "" on a new row
#pragma once

#include <cstdint>
#include <string>

#include "platform/controls.h"
#include "platform/entrygrid.h"

namespace orvenmod {

class Attachments {
public:
    Attachments(platform::EntryGrid& fps2, platform::FileDialog& cd2) : fps2_(fps2), cd2_(cd2) {}

    /// Lists the stored attachments of gCurItemId, without their contents.
    void load();
    void clear() { fps2_.setRowCount(0); }
    /// Stores every row for the new item, within the open transaction.
    void storeAll(std::int32_t itemId) const;
    /// Stores the new rows and the captions of the stored ones.
    void storeChanges(std::int32_t itemId) const;
    /// Every row must have a caption; warns of the first that hasn't and gives it, else 0.
    int checkCaptions() const;
    /// Puts the keyboard into the caption of the row.
    void showCaption(int row);
    /// Removes the file last taken out for viewing.
    void removeOpened();
    /// Adds a row that is not stored yet.
    void add(const std::string& caption, const std::string& fileName, const std::string& path);

    void cmdAddFJ_Click();
    void fps2_ButtonClicked(int column, int row);

private:
    void delFJ(std::int32_t entryId);
    void getFJInfo(std::int32_t entryId);
    void storeRow(std::int32_t itemId, int row) const;

    platform::EntryGrid& fps2_;
    platform::FileDialog& cd2_;
    std::string fjTempFile_;
};

}  // namespace orvenmod
