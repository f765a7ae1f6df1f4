#include "designer/newfield.h"

#include "designer/filled.h"
#include "designer/frmItem.h"
#include "designer/lists.h"
#include "frame/appstate.h"
#include "frame/conversion.h"

namespace orvenmod {

namespace {

constexpr const char* kNoLookup = "无";

constexpr std::string_view kFieldRow =
    "insert into tblTableInfo(fIsvisible,finterid,fitemclassid,fname,fFieldName "
    ",fNumberDec,FMaxNumber,FMinNumber,fDefaultValue,fIsNull,fValueItemID,fItemType,fFieldType) "
    "values(1,{interid},{class},'{name}','{field}','{dec}','{max}','{min}','{default}','{isnull}','{source}','{kind}', "
    "{type})";

struct ColumnKind {
    const char* type;    // as the alter table writes it
    const char* stored;  // fFieldType
};

// A currency is a whole number, as a number is. The lookup comes last: it overrides the others.
ColumnKind columnKind(const NewField& made) {
    if (isLookup(made.lookup)) return {"  int ", "1"};
    if (made.typeCode == "0") return {"  datetime", "0"};
    if (made.typeCode == "1") return {"  varchar(50)", "1"};
    return {"  int", "13"};
}

}  // namespace

bool isLookup(const std::string& lookup) { return !lookup.empty() && lookup != kNoLookup; }

std::string fieldRow(const NewField& made, const std::string& itemClass, const std::string& interId) {
    const auto code = splitList(made.lookupCode);
    std::string source = entryOf(code, 0);
    std::string kind = entryOf(code, 1);
    if (source == "-1") {
        source = "0";
        kind.clear();
    }
    return filled(kFieldRow, {{"interid", interId},
                              {"class", itemClass},
                              {"name", made.name},
                              {"field", made.field},
                              {"dec", made.decimals},
                              {"max", made.maximum},
                              {"min", made.minimum},
                              {"default", made.fallback},
                              {"isnull", made.isNull},
                              {"source", source},
                              {"kind", kind},
                              {"type", columnKind(made).stored}});
}

std::string columnStatement(const NewField& made, const std::string& table) {
    return "alter table " + table + " add  " + made.field + columnKind(made).type;
}

std::string proposedFieldName() {
    const auto row = appState().gConn->open("select fpreletter,fbillno from tblmaxbillno where ftypeid=1001 ");
    const std::string head = "FSelf" + frmItem::instance().txtFItemClassId;
    if (row.eof()) return head + "A1";
    const std::int16_t last = toInt16(required(row.field("fbillno")));
    return head + row.text("fpreletter") + std::to_string(toInt16(std::to_string(last + 1)));
}

void countFieldName() {
    store::Connection& connection = *appState().gConn;
    const bool counted = !connection.open("select * from tblMaxbillno where ftypeid=1001").eof();
    connection.execute(counted ? "update tblMaxbillno set fbillno=fbillno+1 where ftypeid=1001 "
                               : "insert into tblmaxbillno(fpreletter,ftypeid,fbillno) values('A',1001,1) ");
}

}  // namespace orvenmod
