// The views of a new database, worded as the generators of the class designer word them, so that the first save in
// field setup changes nothing.
#include <utility>

#include "store/schemaparts.h"

namespace orvenmod::store {
namespace {

std::string classColumn(const FixedField& field) {
    const std::string name(field.name);
    constexpr int kDate = 0;
    constexpr int kNumber = 13;
    const std::string empty = field.type == kDate ? "'1900-01-01'" : field.type == kNumber ? "0" : "''";
    return ",isnull(a." + name + "," + empty + ")  as " + name;
}

std::string lookupColumns(std::string_view field, const std::string& alias) {
    const std::string name(field);
    return ",isnull(a." + name + ",0)  as " + name + ",isnull(" + alias + ".fNumber,'')  as " + name +
           "Number ,isnull(" + alias + ".fName,'')  as " + name + "Name ";
}

}  // namespace

std::string fixedClassView(const FixedClass& fixed) {
    const std::string table(fixed.table);
    std::string head = "create view v" + table +
                       "  as  SELECT a.fItemid,b.fIslock,b.fParentid, isnull(c.fname,'') AS fParentidname, "
                       "isnull(c.fDepth,1) AS fParentDepth, b.fNBNumber ,isnull(c.fnumber,'') as fParentIdNumber "
                       ",isnull(b.fShortNumber,'') as fShortNumber ";
    head += fixed.amountField == "fAmount" ? ",isnull(a.fAmount,0) as fAmount " : " ,0 as fTimeQty  ";
    head += ",isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName";
    std::string opening = " from ";
    std::string tail =
        table + " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid ";
    int lookups = 0;
    for (const FixedField& field : fixed.fields) {
        if (field.sourceClass == 0) {
            head += classColumn(field);
            continue;
        }
        const std::string alias = "A" + std::to_string(++lookups);
        head += lookupColumns(field.name, alias);
        opening += " ";
        tail.append(" left outer join tblItem  as ").append(alias).append(" on ").append(alias);
        tail.append(".fitemid=a.").append(field.name).append(" ");
    }
    return head + opening + tail;
}

std::string stockView() {
    return " create view vTimeStock as \r\n"
           " select isnull(a.fitemid,0) as fitemid,isnull(a.fqty,0) as fqty,isnull(a.fAMount,0) as fAmount \r\n"
           " ,isnull(a.fstockid,0) as fstockid \r\n"
           " ,isnull(b.fNumber,'') as fStockIdNumber,isnull(b.fname,'') as fStockIdName "
           " ,isnull(c.fNumber,'') as fItemidNumber,isnull(c.fname,'') as fitemIdName,isnull(c.fModel,'') as fModel "
           "\r\n"
           " ,isnull(c.fUnit,'') as fUnit,isnull(c.fMinQty,0) as fMinQty,isnull(c.fMaxQty,0) as fMaxQty \r\n"
           " ,case  when isnull(a.fqty,0)=0 then 0 else round(isnull(a.famount,0)/isnull(a.fqty,0),6) end as fPrice "
           "\r\n"
           ",isnull(c.fA,'') as fA ,isnull(c.fB,'') as fB ,isnull(c.fC,'') as fC ,isnull(c.fD,0) as fD "
           ",isnull(c.fE,0) as fE ,isnull(c.fF,'1900-01-01') as fF ,isnull(c.fG,'1900-01-01') as fG "
           ",isnull(c.fH,0) as fH,isnull(f3.fNumber,'') as fHNumber,isnull(f3.fname,'') as fHName  "
           " from tbltimestock as a left outer join tblStock as b on a.fstockid=b.fitemid \r\n"
           " left outer join icitem as c on c.fitemid=a.fitemid \r\n"
           " left outer join tblSupplier as f3 on f3.fitemid=c.fh ";
}

std::vector<std::string> stockViewRows() {
    std::vector<std::pair<std::string, std::pair<std::string, int>>> rows = {
        {"fStockIdNumber", {"仓库编码", 0}},
        {"fStockIdName", {"仓库名称", 1}},
        {"fItemIdNumber", {"物料编码", 0}},
        {"fItemIdName", {"物料名称", 1}},
        {"fModel", {"规格型号", 0}},
        {"fUnit", {"计量单位", 0}},
        {"fQty", {"数量", 0}},
        {"fPrice", {"单价", 0}},
        {"fAmount", {"金额", 0}},
        {"fMaxQty", {"最大库存", 0}},
        {"fMinQty", {"最低库存", 0}},
    };
    for (const FixedClass& fixed : fixedClasses()) {
        for (const FixedField& field : fixed.fields) {
            const std::string name(field.name);
            const std::string caption(field.caption);
            if (name == "fH") {
                rows.push_back({name + "Number", {caption + "编码", 0}});
                rows.push_back({name + "Name", {caption + "名称", 0}});
            } else if (name.size() == 2 && name[1] >= 'A' && name[1] <= 'G') {
                rows.push_back({name, {caption, 0}});
            }
        }
    }
    std::vector<std::string> statements;
    statements.reserve(rows.size());
    for (const auto& [name, description] : rows) {
        statements.push_back("insert into tblviewdesc(ftypeid,fFieldName,fFieldDesc,fFieldType) values(5033,'" + name +
                             "','" + description.first + "'," + std::to_string(description.second) + ")");
    }
    return statements;
}

}  // namespace orvenmod::store
