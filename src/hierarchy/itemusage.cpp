#include "hierarchy/itemusage.h"

#include <set>
#include <string_view>

#include "frame/conversion.h"
#include "frame/openrows.h"
#include "hierarchy/billfamilies.h"

namespace orvenmod {

namespace {

constexpr const char* kCatalogues =
    "select fFieldName,1 as fType,ftypeid from tblBillInfo where fFieldType=1 "
    "union all select fFieldName,2 as fType,ftypeid from tblbillinfoentry where fFieldType=1";

// The values of the column fkind of a family's statement.
constexpr int kCount = 1;
constexpr int kLatest = 2;
constexpr int kBalance = 3;

// A probe asks for one of the bills; this is the same without that limit.
std::string allOf(std::string_view probe) {
    const std::string_view top = "top 1 ";
    std::string text(probe.substr(kChainWord.size()));
    text.erase(text.find(top), top.size());
    return text;
}

/// The bills of the family that use the item, one for each use; "" where no column can hold one.
std::string billsOf(const BillFamily& family, const store::Recordset& fields, const std::string& id) {
    std::string bills;
    std::set<std::string> known;
    for (std::size_t row = 0; row < fields.rowCount(); ++row) {
        const std::int32_t type = toInt32(fields.cell(row, fields.column("ftypeid")).value_or("0"));
        if (type < family.firstType || type > family.lastType) continue;
        const bool head = fields.cell(row, fields.column("fType")) == "1";
        const std::string_view probe = head ? family.headProbe : family.entryProbe;
        if (probe.empty()) continue;
        const std::string name(fields.cell(row, fields.column("fFieldName")).value_or(""));
        // The types of a family share their tables, and name the same columns.
        const std::string column = allOf(probe) + name + "=" + id;
        if (known.insert(column).second) bills += std::string(bills.empty() ? "" : kChainWord) + column;
    }
    return bills;
}

std::string usageStatement(const BillFamily& family, const std::string& bills, const std::string& id) {
    std::string statement;
    const auto part = [&statement](int kind, const std::string& value, const std::string& from) {
        statement += (statement.empty() ? "select " : " union all select ") + std::to_string(kind) + " as fkind," +
                     value + " as fvalue from (" + from + ") as t";
    };
    // Made distinct around the chain: a "union" within it would nest as deep as the family has columns.
    if (!bills.empty()) {
        part(kCount, "count(distinct finterid)", bills);
        part(kLatest, "finterid", "select distinct top 10 finterid from (" + bills + ") as b order by finterid desc");
    }
    for (const std::string_view balance : family.balancesAlone)
        part(kBalance, "finterid", std::string(balance.substr(balance.find("select"))) + id);
    return statement;
}

}  // namespace

std::string usedItem(std::int32_t id) {
    const store::Recordset rows = openRows("select fNumber,fName from tblItem where fItemId=" + std::to_string(id));
    return rows.eof() ? "" : rows.text("fNumber") + " " + rows.text("fName");
}

std::vector<FamilyUsage> itemUsage(std::int32_t id) {
    const store::Recordset fields = openRows(kCatalogues);
    const std::string number = std::to_string(id);
    std::vector<FamilyUsage> all;
    for (const BillFamily& family : billFamilies()) {
        FamilyUsage usage{.family = std::string(family.name), .bills = "0", .latest = {}};
        const std::string statement = usageStatement(family, billsOf(family, fields, number), number);
        if (!statement.empty()) {
            store::Recordset rows = openRows(statement);
            for (; !rows.eof(); rows.moveNext()) {
                const int kind = toInt32(rows.text("fkind"));
                if (kind == kCount) usage.bills = rows.text("fvalue");
                if (kind == kLatest) usage.latest.push_back(rows.text("fvalue"));
                if (kind == kBalance) usage.balance = true;
            }
        }
        all.push_back(std::move(usage));
    }
    return all;
}

}  // namespace orvenmod
