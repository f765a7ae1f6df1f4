// The items of one class: a window to manage them, to pick one, or to pick many for a bill.
//
// One thread, that of the caller, which the modal window blocks. All objects of a process share one state, so one
// window stack runs at a time.
#pragma once

#include <cstdint>
#include <string>

#include <orvenmod/export.h>
#include <orvenmod/variant.h>

namespace orvenmod {

class ORVENMOD_API clsBasicInfo {
public:
    /// Class_Initialize: reads message title, admin flag, user and decimal places from the shared settings. Throws
    /// std::runtime_error, which names the setting, where one of the numbers is none or the places aren't 0 to 10.
    clsBasicInfo();
    /// Class_Terminate: drops the connection.
    ~clsBasicInfo();
    clsBasicInfo(const clsBasicInfo&) = delete;
    clsBasicInfo& operator=(const clsBasicInfo&) = delete;

    /// Shows the items of class `intFitemClassId` in the database `strDBConn` and returns when the window is closed.
    /// The result is always false and tells nothing: read fItemId, fNumber and fName.
    ///
    /// strFindField  ignored
    /// strFindValue  narrows the first list to codes and names that hold it
    /// intIsReturn   1 makes the window a picker
    /// intItemCalled with class 3 and intIsReturn 1: 1 picks many items for a bill. fItemId is then "-1" and the rows
    ///               stand in tblItemInput.
    /// strParamSQL   a condition on every list, beginning with " and "
    ///
    /// Throws std::runtime_error where the database can't be opened or a shared setting is no number. Any later failure
    /// is shown to the user and leaves the results as they were.
    bool mainInterface(const std::int16_t& intFitemClassId, const std::string& strFindField,
                       const std::string& strFindValue, const std::string& strDBConn, const std::int16_t& intIsReturn,
                       const Variant& intItemCalled = {}, const Variant& strParamSQL = {});

    std::string fItemId;  ///< result
    std::string fNumber;  ///< result
    std::string fName;    ///< result

    std::int16_t fItemClassId = 0;  ///< the class of the last entry

    // Stored only.
    Variant UserRight;
    std::string strFindValue;
    std::string DBConnection;
    std::string strFindSql;
    std::string fItemName;
    std::string fTableName;
    std::int16_t Status = 0;

private:
    void lookUpClass() const;
};

}  // namespace orvenmod
