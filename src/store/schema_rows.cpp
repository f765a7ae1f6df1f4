// The fixed rows of a new database: the classes with fixed roles and what drives their editor, list, search bar,
// reports and rights.
#include <utility>

#include "store/classrights.h"
#include "store/itemclass.h"
#include "store/schemaparts.h"

namespace orvenmod::store {
namespace {

constexpr int kDate = 0;
constexpr int kNumber = 13;
constexpr std::string_view kNumberFormat = "#,###.##";

// The grid's alignments.
constexpr int kLeft = 1;
constexpr int kCentre = 4;
constexpr int kRight = 7;

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

std::string listId(const FixedClass& fixed) { return listType(fixed.id); }

bool isLookup(const FixedField& field) { return field.sourceClass != 0; }

/// The statements of one class, in the order in which the class designer would have sent them.
class ClassRows {
public:
    explicit ClassRows(const FixedClass& fixed) : fixed_(fixed) {}

    std::vector<std::string> take() {
        addClass();
        addFields();
        addList();
        addSearch();
        addDescriptions();
        addRights();
        return std::move(rows_);
    }

private:
    void addClass() {
        rows_.push_back("insert into tblItemClass(fitemclassid,fItemName,fItemtable,fItemType,fViewName) values(" +
                        std::to_string(fixed_.id) + "," + quoted(fixed_.name) + "," + quoted(fixed_.table) + ",'0'," +
                        quoted("v" + std::string(fixed_.table)) + ")");
    }

    void addField(int order, std::string_view caption, std::string_view name, int type, bool required, bool locked,
                  int decimals, int source) {
        rows_.push_back(
            "insert into tblTableInfo(fIsvisible,finterid,fitemclassid,fname,fFieldName,fNumberDec,FMaxNumber,"
            "FMinNumber,fDefaultValue,fIsNull,fValueItemID,fItemType,fFieldType,fislock) values(1," +
            std::to_string(order) + "," + std::to_string(fixed_.id) + "," + quoted(caption) + "," + quoted(name) + "," +
            std::to_string(decimals) + "," + (type == kNumber ? "99999999.99" : "0") + ",0,''," +
            (required ? "1" : "0") + "," + std::to_string(source) + "," + (source == 0 ? "''" : "'0'") + "," +
            std::to_string(type) + "," + (locked ? "1" : "0") + ")");
    }

    void addFields() {
        addField(1, "短代码", "fShortNumber", 1, true, false, 0, 0);
        addField(2, "代码", "fNumber", 1, true, true, 0, 0);
        addField(3, "名称", "fName", 1, true, false, 0, 0);
        int order = 3;
        for (const FixedField& field : fixed_.fields) {
            addField(++order, field.caption, field.name, field.type, field.required, false, field.decimals,
                     field.sourceClass);
        }
    }

    // The bill area finds the stock column by its entry, so entries run without gaps.
    void addColumn(std::string_view field, std::string_view title, int align, std::string_view format, int width) {
        rows_.push_back(
            "insert into tblFindinfoentry(ftypeid,fentryid,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,"
            "fIsMerge,fIsDefault,fWidth) values(" +
            listId(fixed_) + "," + std::to_string(++columns_) + "," + quoted(field) + "," + quoted(title) + "," +
            std::to_string(align) + "," + quoted(format) + ",1,0,0,1," + std::to_string(width) + ")");
        if (columns_ + 1 == fixed_.amountEntry) {
            addColumn(fixed_.amountField, fixed_.amountCaption, kRight, kNumberFormat, 1500);
        }
    }

    void addList() {
        addColumn("fNumber", "代码", kLeft, "", 2000);
        addColumn("fName", "名称", kLeft, "", 4000);
        for (const FixedField& field : fixed_.fields) {
            if (field.listWidth == 0) {
                continue;
            }
            const std::string column = std::string(field.name) + (isLookup(field) ? "Name" : "");
            const int align = field.type == kNumber ? kRight : field.type == kDate ? kCentre : kLeft;
            addColumn(column, field.caption, align, field.type == kNumber ? field.format : "", field.listWidth);
        }
    }

    void addSeek(int entry, std::string_view field, std::string_view title, int kind, std::string_view source,
                 bool byName) {
        rows_.push_back(
            "insert into tblFindinfoEntry2(ftypeid,fFieldname,ftitleName,fNumType,fItemclassid,fIsDefault,fEntryid,"
            "fNumberName) values(" +
            listId(fixed_) + "," + quoted(field) + "," + quoted(title) + "," + std::to_string(kind) + "," +
            std::string(source) + ",1," + std::to_string(entry) + "," + (byName ? "1" : "0") + ")");
    }

    void addSearch() {
        addSeek(1, "fNumber", "代码", 2, "0", false);
        addSeek(1, "fShortNumber", "短代码", 2, "0", false);
        addSeek(2, "fName", "名称", 2, "0", false);
        int entry = 2;
        for (const FixedField& field : fixed_.fields) {
            if (isLookup(field)) {
                addSeek(++entry, std::string(field.name) + "Number", std::string(field.caption) + "代码", 2,
                        listId(fixed_), false);
                addSeek(++entry, std::string(field.name) + "Name", std::string(field.caption) + "名称", 2,
                        listId(fixed_), true);
            } else {
                const int kind = field.type == kNumber ? 1 : field.type == kDate ? 3 : 2;
                addSeek(++entry, field.name, field.caption, kind, listId(fixed_), false);
            }
        }
    }

    void addDescription(std::string_view field, std::string_view caption, bool isNumber) {
        rows_.push_back("insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(" + listId(fixed_) +
                        "," + quoted(field) + "," + quoted(caption) + "," + (isNumber ? "1" : "0") + ")");
    }

    void addDescriptions() {
        addDescription(fixed_.amountField == "fAmount" ? "famount" : fixed_.amountField, fixed_.amountCaption, true);
        addDescription("fNumber", "代码", false);
        addDescription("fName", "名称", false);
        for (const FixedField& field : fixed_.fields) {
            if (isLookup(field)) {
                addDescription(std::string(field.name) + "Number", std::string(field.caption) + "代码", false);
                addDescription(std::string(field.name) + "Name", std::string(field.caption) + "名称", false);
            } else {
                addDescription(field.name, field.caption, field.type == kNumber);
            }
        }
    }

    void addRights() {
        for (const std::string& row : classRightRows(fixed_.id, fixed_.name))
            rows_.push_back(row);
    }

    const FixedClass& fixed_;
    std::vector<std::string> rows_;
    int columns_ = 0;
};

}  // namespace

std::vector<std::string> fixedClassRows(const FixedClass& fixed) { return ClassRows(fixed).take(); }

std::vector<std::string> dictionaryRightRows() {
    const std::string head = "insert into tblSystemPrivillenge(fNumber,fName,fIsDetail,fParentNumber) values(";
    return {head + "'Z','基础资料',0,'')",    head + "'Z01','类别新增',1,'Z')", head + "'Z02','类别修改',1,'Z')",
            head + "'Z04','资料新增',1,'Z')", head + "'Z05','资料修改',1,'Z')", head + "'Z06','资料删除',1,'Z')"};
}

}  // namespace orvenmod::store
