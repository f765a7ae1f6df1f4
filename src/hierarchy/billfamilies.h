// The families of bills that the usage guard probes, in the order in which they run: what is asked of the catalogues
// and of the bills, and what the user is told on a hit.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace orvenmod {

struct BillFamily {
    std::string_view name;
    /// The types of its bills in the catalogues.
    std::int32_t firstType, lastType;
    /// Reads the names of the head fields; worded for items (fFieldType=1).
    std::string_view headFields;
    /// Joined to it for the entry fields; "" for bills that have none.
    std::string_view entryFields;
    /// The probe of one field, up to its name, as it stands behind another one.
    std::string_view headProbe;
    std::string_view entryProbe;
    std::string_view message;

    /// Probes beside the catalogue's, each up to the id: where no field was named, and behind the fields' probes.
    std::vector<std::string_view> balancesAlone = {};
    std::vector<std::string_view> balancesChained = {};
    bool stockBalances = false;
};

/// What stands before every probe of a chain but the first.
inline constexpr std::string_view kChainWord = " union all";

const std::vector<BillFamily>& billFamilies();

}  // namespace orvenmod
