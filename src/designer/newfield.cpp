#include "designer/newfield.h"

#include "designer/filled.h"
#include "designer/lists.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

constexpr const char* kNoLookup = "无";

constexpr std::string_view kFieldRow =
    "insert into tblTableInfo(fIsvisible,finterid,fitemclassid,fname,fFieldName "
    ",fNumberDec,FMaxNumber,FMinNumber,fDefaultValue,fIsNull,fValueItemID,fItemType,fFieldType) "
    "values(1,{interid},{class},'{name}','{field}','{dec}','{max}','{min}','{default}','{isnull}','{source}','{kind}', "
    "{type})";

struct ColumnKind {
    const char* type;         // as the alter table writes it
    std::string_view stored;  // fFieldType
};

// A currency is a whole number, as a number is. The lookup comes last: it overrides the others.
ColumnKind columnKind(const NewField& made) {
    if (isLookup(made.lookup)) return {"  int ", store::kTextField};
    if (made.typeCode == store::kDateField) return {"  datetime", store::kDateField};
    if (made.typeCode == store::kTextField) return {"  varchar(50)", store::kTextField};
    return {"  int", store::kNumberField};
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

}  // namespace orvenmod
