// The designer of item classes and their fields. An entry works with the user that the last clsBasicInfo left; without
// one the user is 0, who has no rights.
#pragma once

#include <string>

#include <orvenmod/export.h>
#include <orvenmod/variant.h>

namespace orvenmod {

class ORVENMOD_API clsHSXMManage {
public:
    /// Class_Initialize: reads message title and admin flag from the shared settings. Throws std::runtime_error where
    /// the flag is no number.
    clsHSXMManage();
    /// Class_Terminate: drops the connection.
    ~clsHSXMManage();
    clsHSXMManage(const clsHSXMManage&) = delete;
    clsHSXMManage& operator=(const clsHSXMManage&) = delete;

    /// Works in the database DBConnection. The result is always false.
    bool mainInterface();

    Variant UserRight;         ///< stored only
    std::string DBConnection;  ///< the connection string of the entry
};

}  // namespace orvenmod
