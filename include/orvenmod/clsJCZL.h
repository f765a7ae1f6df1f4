// The dictionaries: simple lists of codes and names. An entry works with the user, decimal places and suite folder that
// the last clsBasicInfo left; without one the user is 0, who has no rights.
#pragma once

#include <cstdint>
#include <string>

#include <orvenmod/export.h>
#include <orvenmod/variant.h>

namespace orvenmod {

class ORVENMOD_API clsJCZL {
public:
    /// Class_Initialize: reads message title and admin flag from the shared settings. Throws std::runtime_error where
    /// the flag is no number.
    clsJCZL();
    /// Class_Terminate: drops the connection.
    ~clsJCZL();
    clsJCZL(const clsJCZL&) = delete;
    clsJCZL& operator=(const clsJCZL&) = delete;

    /// Manages all dictionaries. The result is always false.
    bool mainInterface(const std::string& strDBConnection);

    /// Shows one dictionary, with `intIsReturn` 1 as a picker. The result is always false: read fItemId, fNumber and
    /// fName.
    bool mainSingleInterface(const std::int16_t& intIsReturn, const std::int16_t& intFitemClassId,
                             const std::string& strDBConnection);

    Variant UserRight;    ///< stored only
    std::string fItemId;  ///< result
    std::string fName;    ///< result
    std::string fNumber;  ///< result
};

}  // namespace orvenmod
