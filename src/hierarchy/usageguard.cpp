#include "hierarchy/usageguard.h"

#include <string_view>

#include "frame/openrows.h"
#include "hierarchy/billfamilies.h"
#include "platform/replaceall.h"

namespace orvenmod {

namespace {

std::string catalogueStatement(const BillFamily& family, Guarded what) {
    const std::string ofItems = std::string(family.headFields).append(family.entryFields);
    return what == Guarded::item ? ofItems : platform::replaceAll(ofItems, "fFieldType=1", "fFieldType=2");
}

// One statement that probes all fields of the family; "" where there is nothing to probe.
std::string probeChain(const BillFamily& family, Guarded what, const std::string& id) {
    std::string chain;
    const store::Recordset fields = openRows(catalogueStatement(family, what));
    constexpr std::size_t kUsualProbe = 100;  // bytes
    chain.reserve(fields.rowCount() * kUsualProbe);
    const int type = fields.column("fType");
    const int name = fields.column("fFieldName");
    for (std::size_t row = 0; row < fields.rowCount(); ++row) {
        std::string_view probe = fields.cell(row, type) == "1" ? family.headProbe : family.entryProbe;
        if (probe.empty()) continue;
        if (chain.empty()) probe.remove_prefix(kChainWord.size());
        chain.append(probe).append(fields.cell(row, name).value_or("")).append("=").append(id);
    }
    if (family.stockBalances && what == Guarded::entry) return chain;
    for (const std::string_view probe : chain.empty() ? family.balancesAlone : family.balancesChained) {
        chain.append(probe).append(id);
    }
    return chain;
}

}  // namespace

std::string usageOf(std::int32_t id, Guarded what) {
    for (const BillFamily& family : billFamilies()) {
        if (!openRows(probeChain(family, what, std::to_string(id))).eof()) return std::string(family.message);
    }
    return "";
}

}  // namespace orvenmod
