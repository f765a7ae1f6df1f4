#include "hierarchy/usageguard.h"

#include <exception>
#include <string_view>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "hierarchy/billfamilies.h"

namespace orvenmod {

namespace {

store::Recordset openRows(const std::string& sql) { return appState().gConn->open(sql); }

std::string catalogueStatement(const BillFamily& family, int catalogueType) {
    static constexpr std::string_view kForItems = "fFieldType=1";
    const std::string wanted = "fFieldType=" + std::to_string(catalogueType);
    std::string sql = std::string(family.headFields).append(family.entryFields);
    for (auto at = sql.find(kForItems); at != std::string::npos; at = sql.find(kForItems, at + wanted.size())) {
        sql.replace(at, kForItems.size(), wanted);
    }
    return sql;
}

// One statement that probes all fields of the family; "" where there is nothing to probe.
std::string probeChain(const BillFamily& family, const GuardedDelete& what, const std::string& id) {
    std::string chain;
    const store::Recordset fields = openRows(catalogueStatement(family, what.catalogueType));
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
    if (family.stockBalances && !what.stockBalances) return chain;
    for (const std::string_view probe : chain.empty() ? family.balancesAlone : family.balancesChained) {
        chain.append(probe).append(id);
    }
    return chain;
}

bool isLocked(const std::string& id) {
    store::Recordset rows = openRows("select fislock,fname from tblItem where fitemid=" + id);
    for (; !rows.eof(); rows.moveNext()) {
        if (toInt32(rows.text("fislock", "0")) != 1) continue;
        showWarning(rows.text("fname") + "已经禁用,不能删除!");
        return true;
    }
    return false;
}

bool isUsed(const GuardedDelete& what, const std::string& id) {
    for (const BillFamily& family : billFamilies()) {
        if (openRows(probeChain(family, what, id)).eof()) continue;
        showWarning(std::string(family.message));
        return true;
    }
    return false;
}

void deleteRows(const GuardedDelete& what, const std::string& id) {
    store::Connection& connection = *appState().gConn;
    if (what.inTransaction) connection.beginTrans();
    for (const std::string& statement : what.statements)
        connection.execute(statement + id);
    if (what.inTransaction) connection.commitTrans();
}

}  // namespace

bool deleteUnused(std::int32_t id, const GuardedDelete& what) {
    try {
        openDB();
        const std::string number = std::to_string(id);
        const bool refused = (what.locks && isLocked(number)) || isUsed(what, number);
        if (!refused) deleteRows(what, number);
        closeDB();
        return !refused;
    } catch (const std::exception& failure) {
        what.showFailure(failure.what());
        if (what.inTransaction && appState().gConn) rollbackTrans();
        closeDB();
        return false;
    }
}

}  // namespace orvenmod
