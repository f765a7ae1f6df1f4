// The fixed rows of a new database: the classes with fixed roles and what drives their editor, list, search bar,
// reports and rights.
#include <utility>

#include "store/classrights.h"
#include "store/itemclass.h"
#include "store/schemaparts.h"

namespace orvenmod::store {
namespace {

constexpr std::string_view kNumberFormat = "#,###.##";

// The grid's alignments.
constexpr int kLeft = 1;
constexpr int kCentre = 4;
constexpr int kRight = 7;

enum class Lock { open, locked };

/// Which of a lookup's two columns is sought in; a field that is none counts as a code.
enum class SeekIn { code, name };

constexpr FixedField kShortCode{
    .caption = "短代码", .name = "fShortNumber", .type = kTextField, .column = "", .required = true};
constexpr FixedField kCode{.caption = "代码", .name = "fNumber", .type = kTextField, .column = "", .required = true};
constexpr FixedField kName{.caption = "名称", .name = "fName", .type = kTextField, .column = "", .required = true};

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

    void addField(const FixedField& field, Lock lock = Lock::open) {
        rows_.push_back(
            "insert into tblTableInfo(fIsvisible,finterid,fitemclassid,fname,fFieldName,fNumberDec,FMaxNumber,"
            "FMinNumber,fDefaultValue,fIsNull,fValueItemID,fItemType,fFieldType,fislock) values(1," +
            std::to_string(++fields_) + "," + std::to_string(fixed_.id) + "," + quoted(field.caption) + "," +
            quoted(field.name) + "," + std::to_string(field.decimals) + "," +
            (field.type == kNumberField ? "99999999.99" : "0") + ",0,''," + (field.required ? "1" : "0") + "," +
            std::to_string(field.sourceClass) + "," + (isLookup(field) ? "'0'" : "''") + "," + std::string(field.type) +
            "," + (lock == Lock::locked ? "1" : "0") + ")");
    }

    void addFields() {
        addField(kShortCode);
        addField(kCode, Lock::locked);
        addField(kName);
        for (const FixedField& field : fixed_.fields)
            addField(field);
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
        addColumn(kCode.name, kCode.caption, kLeft, "", 2000);
        addColumn(kName.name, kName.caption, kLeft, "", 4000);
        for (const FixedField& field : fixed_.fields) {
            if (field.listWidth == 0) {
                continue;
            }
            const std::string column = std::string(field.name) + (isLookup(field) ? "Name" : "");
            const int align = field.type == kNumberField ? kRight : field.type == kDateField ? kCentre : kLeft;
            addColumn(column, field.caption, align, field.type == kNumberField ? field.format : "", field.listWidth);
        }
    }

    void addSeek(int entry, std::string_view field, std::string_view title, std::string_view kind,
                 std::string_view source, SeekIn part = SeekIn::code) {
        rows_.push_back(
            "insert into tblFindinfoEntry2(ftypeid,fFieldname,ftitleName,fNumType,fItemclassid,fIsDefault,fEntryid,"
            "fNumberName) values(" +
            listId(fixed_) + "," + quoted(field) + "," + quoted(title) + "," + std::string(kind) + "," +
            std::string(source) + ",1," + std::to_string(entry) + "," + (part == SeekIn::name ? "1" : "0") + ")");
    }

    void addSearch() {
        addSeek(1, kCode.name, kCode.caption, kSeekText, "0");
        addSeek(1, kShortCode.name, kShortCode.caption, kSeekText, "0");
        addSeek(2, kName.name, kName.caption, kSeekText, "0");
        int entry = 2;
        for (const FixedField& field : fixed_.fields) {
            if (isLookup(field)) {
                addSeek(++entry, std::string(field.name) + "Number", std::string(field.caption) + "代码", kSeekText,
                        listId(fixed_), SeekIn::code);
                addSeek(++entry, std::string(field.name) + "Name", std::string(field.caption) + "名称", kSeekText,
                        listId(fixed_), SeekIn::name);
            } else {
                addSeek(++entry, field.name, field.caption, seekKind(field.type), listId(fixed_));
            }
        }
    }

    void addDescription(std::string_view field, std::string_view caption, std::string_view type = kTextField) {
        rows_.push_back("insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(" + listId(fixed_) +
                        "," + quoted(field) + "," + quoted(caption) + "," + (type == kNumberField ? "1" : "0") + ")");
    }

    void addDescriptions() {
        addDescription(fixed_.amountField == kBalanceField ? "famount" : fixed_.amountField, fixed_.amountCaption,
                       kNumberField);
        addDescription(kCode.name, kCode.caption);
        addDescription(kName.name, kName.caption);
        for (const FixedField& field : fixed_.fields) {
            if (isLookup(field)) {
                addDescription(std::string(field.name) + "Number", std::string(field.caption) + "代码");
                addDescription(std::string(field.name) + "Name", std::string(field.caption) + "名称");
            } else {
                addDescription(field.name, field.caption, field.type);
            }
        }
    }

    void addRights() {
        for (const std::string& row : classRightRows(fixed_.id, fixed_.name))
            rows_.push_back(row);
    }

    const FixedClass& fixed_;
    std::vector<std::string> rows_;
    int fields_ = 0;
    int columns_ = 0;
};

}  // namespace

std::vector<std::string> fixedClassRows(const FixedClass& fixed) { return ClassRows(fixed).take(); }

std::vector<std::string> dictionaryRightRows() {
    constexpr std::pair<const char*, const char*> kRights[] = {{right::kNewCategory, "类别新增"},
                                                               {right::kUpdateCategory, "类别修改"},
                                                               {right::kNewDetail, "资料新增"},
                                                               {right::kUpdateDetail, "资料修改"},
                                                               {right::kDeleteDetail, "资料删除"}};
    const std::string head = "insert into tblSystemPrivillenge(fNumber,fName,fIsDetail,fParentNumber) values(";
    const std::string group(1, kDictionaryRights);
    std::vector<std::string> rows{head + quoted(group) + ",'基础资料',0,'')"};
    for (const auto& [digits, name] : kRights)
        rows.push_back(head + quoted(group + digits) + "," + quoted(name) + ",1," + quoted(group) + ")");
    return rows;
}

}  // namespace orvenmod::store
