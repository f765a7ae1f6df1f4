// The one record per process through which all windows and classes communicate. It has no owner: every window and class
// reads and writes it. A field set by one entry keeps its value into the next unless the entry sets it again.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "store/connection.h"

namespace orvenmod {

struct AppState {
    std::unique_ptr<store::Connection> gConn;  ///< the open connection; none when closed
    std::string gConnStr;
    std::string gMsgTitle;      ///< title of every message box
    std::int16_t gIsAdmin = 0;  ///< 1 passes every right, 0 makes the list hide columns
    std::string gRightPrefix;   ///< the letter of what is open: item classes or dictionary
    std::int16_t gNoNewAfterSave = 0;
    std::string gParamSQL;  ///< the host's filter fragment, with its own " and "
    std::int16_t gDictTypeEditMode = 0;
    std::int16_t gItemCalled = 0;
    std::int32_t gLoginUserId = 0;
    std::int16_t gZeroNumber = 0;  ///< decimal places of quantity cells
    std::int16_t gItemClassId = 0;
    std::string gItemName;
    std::string gItemTable;
    std::int16_t gEditMode = 0;  ///< 0 new, 1 update
    std::int32_t gCurItemId = 0;
    std::string gViewName;
    std::string gTreeFilter;
    std::int16_t gIsReturn = 0;  ///< 1: the window is a picker
    std::string gRetNumber;
    std::string gRetName;
    std::string gRetItemId;  ///< "-1" after a bill selection
    std::string gFindValue;
    std::string gListFilter;  ///< the condition behind the rows now shown
    std::string gItemAllName;
    std::string gIniPath;
    std::string gAppPath;  ///< folder of the suite
    std::int32_t gCurParentId = 0;
    std::string gPhotoPath;
    std::int16_t gPhotoCleared = 0;
    std::string gListColumns;
    std::string gLoginUserName;
};

/// The record of this process.
AppState& appState();

}  // namespace orvenmod
