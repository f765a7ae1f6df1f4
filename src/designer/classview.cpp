#include "designer/classview.h"

#include <cstdint>
#include <string_view>

#include "designer/filled.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

// The wording in which the two modes differ.
struct Wording {
    std::string_view drop;
    std::string_view fieldFiller;
    std::string_view goodsColumn;
    std::string_view opening;
    std::string_view treeJoins;
    std::string_view lookupOpening;
    std::string_view lookupClosing;
};

constexpr Wording kNewField = {
    "drop view ",
    "  ",
    ",0 as ftimeqty ",
    " from ((",
    " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid)  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid) ",
    "(",
    " )"};

constexpr Wording kSetup = {
    "drop view  ",
    " ",
    " ,0 as fTimeQty  ",
    " from ",
    " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid ",
    " ",
    " "};

constexpr std::string_view kAmount =
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'famount','{word}',1)";
constexpr std::string_view kStock =
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'fTimeQty','库存数',1)";
constexpr std::string_view kDescription =
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'{f}','{cap}',0)";
constexpr std::string_view kNumberDescription =
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'{f}','{cap}',1)";
constexpr std::string_view kCodeDescription =
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'{f}Number','{cap}代码',0)";
constexpr std::string_view kNameDescription =
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'{f}Name','{cap}名称',0)";

std::string_view amountCaption(std::int16_t itemClass) {
    switch (itemClass) {
        case 1:
            return "应收款";
        case 2:
            return "应付款";
        case 11:
            return "账号余额";
        default:
            return "";
    }
}

struct Field {
    std::string caption;
    std::string name;
    std::string type;
    std::string lookupKind;

    bool isLookup() const { return !lookupKind.empty(); }
    /// How the search bar treats its values.
    std::string_view numType() const { return type == "0" ? "3" : type == "13" ? "1" : "2"; }
};

class Generator {
public:
    Generator(store::Connection& connection, const ClassObjects& objects, ClassViewMode mode,
              const std::string& newField)
        : connection_(connection),
          objects_(objects),
          mode_(mode),
          newField_(newField),
          wording_(mode == ClassViewMode::newField ? kNewField : kSetup) {}

    void run() {
        if (mode_ == ClassViewMode::newField) {
            readNextEntry();
        } else {
            type_ = store::listType(itemClass_);
            connection_.execute("delete from tblViewDesc where ftypeid=" + type_);
        }
        connection_.execute(std::string(wording_.drop) + objects_.view);
        head_ = "create view " + objects_.view +
                "  as "
                " SELECT a.fItemid,b.fIslock,b.fParentid, isnull(c.fname,'') AS fParentidname, "
                "isnull(c.fDepth,1) AS fParentDepth, b.fNBNumber ,isnull(c.fnumber,'') as fParentIdNumber "
                ",isnull(b.fShortNumber,'') as fShortNumber ";
        addClassColumn();
        opening_ = wording_.opening;
        tail_ = objects_.table + std::string(wording_.treeJoins);
        addFields();
        connection_.execute(head_ + opening_ + tail_);
    }

private:
    // Search rows are filed under a type id of 16 bits.
    void readNextEntry() {
        type_ = std::to_string(toInt16(store::listType(itemClass_)));
        const auto row =
            connection_.open("select max(fentryid) as fEntryId1 from tblFindinfoentry2 where ftypeid=" + type_);
        entry_ = row.eof() || row.isNull("fEntryId1") ? 2 : toInt32(row.text("fEntryId1")) + 1;
    }

    void addClassColumn() {
        const std::string_view amount = amountCaption(itemClass_);
        if (!amount.empty()) {
            head_ += ",isnull(a.fAmount,0) as fAmount ";
            if (mode_ == ClassViewMode::setup) connection_.execute(filled(kAmount, {{"t", type_}, {"word", amount}}));
        } else if (itemClass_ == store::kGoods) {
            head_ += wording_.goodsColumn;
            if (mode_ == ClassViewMode::setup) connection_.execute(filled(kStock, {{"t", type_}}));
        }
    }

    void addFields() {
        auto rows = connection_.open(
            "select fname,ffieldname,fFieldtype,fItemType,fValueItemId from tblTableInfo where "
            "fitemclassid=" +
            std::to_string(itemClass_) + " and fisvisible=1 and fFieldName<>'fShortNumber'" +
            std::string(wording_.fieldFiller) + " order by finterid ");
        for (; !rows.eof(); rows.moveNext()) {
            const Field field{rows.text("fname"), rows.text("ffieldname"), rows.text("fFieldtype"),
                              rows.text("fItemType")};
            if (field.isLookup()) {
                addLookup(field);
            } else {
                addPlain(field);
            }
        }
    }

    void addPlain(const Field& field) {
        if (field.type == "0") head_ += filled(",isnull(a.{f},'1900-01-01')  as {f}", {{"f", field.name}});
        if (field.type == "13") head_ += filled(",isnull(a.{f},0)  as {f}", {{"f", field.name}});
        if (field.type == "1") head_ += filled(",isnull(a.{f},'')  as {f}", {{"f", field.name}});
        if (!isDescribed(field)) return;
        describe(field, field.type == "13" ? kNumberDescription : kDescription);
        if (mode_ == ClassViewMode::newField) offerSearch(field, "{t},'{f}','{cap}',{numtype},{t},1,{e},0");
    }

    void addLookup(const Field& field) {
        const std::string number = std::to_string(++lookups_);
        head_ +=
            filled(",isnull(a.{f},0)  as {f},isnull(A{k}.fNumber,'')  as {f}Number ,isnull(A{k}.fName,'')  as {f}Name ",
                   {{"f", field.name}, {"k", number}});
        opening_ += wording_.lookupOpening;
        tail_ += field.lookupKind == "0" ? " left outer join tblItem " : " left outer join tblSubType ";
        tail_ += filled(" as A{k} on A{k}.fitemid=a.{f}", {{"f", field.name}, {"k", number}});
        tail_ += wording_.lookupClosing;
        if (!isDescribed(field)) return;
        if (mode_ == ClassViewMode::newField) {
            offerSearch(field, "{t},'{f}Number','{cap}代码',2,{t},1,{e},0");
            offerSearch(field, "{t},'{f}Name','{cap}名称',2,{t},1,{e},1");
        }
        describe(field, kCodeDescription);
        describe(field, kNameDescription);
    }

    bool isDescribed(const Field& field) const { return mode_ == ClassViewMode::setup || field.name == newField_; }

    void describe(const Field& field, std::string_view text) {
        connection_.execute(filled(text, {{"t", type_}, {"f", field.name}, {"cap", field.caption}}));
    }

    // The row's class id holds the type id.
    void offerSearch(const Field& field, std::string_view values) {
        connection_.execute(filled(
            "insert into tblFindinfoEntry2(fTypeid,fFieldName,fTitleName,fNumType,fItemclassid,fIsDefault,fEntryId,"
            "fNumberName) values({values})",
            {{"values", filled(values, {{"t", type_},
                                        {"f", field.name},
                                        {"cap", field.caption},
                                        {"numtype", field.numType()},
                                        {"e", std::to_string(entry_++)}})}}));
    }

    store::Connection& connection_;
    const ClassObjects& objects_;
    const ClassViewMode mode_;
    const std::string& newField_;
    const Wording& wording_;
    const std::int16_t itemClass_ = appState().gItemClassId;
    std::string type_;
    std::string head_;
    std::string opening_;
    std::string tail_;
    std::int32_t entry_ = 0;
    int lookups_ = 0;
};

}  // namespace

ClassObjects readClassObjects(store::Connection& connection, const std::string& itemClass) {
    const auto row = connection.open("select * from tblItemclass where fitemclassid=" + itemClass);
    return {row.text("fviewname"), row.text("fItemTable")};
}

void regenerateClassView(store::Connection& connection, const ClassObjects& objects, ClassViewMode mode,
                         const std::string& newField) {
    Generator(connection, objects, mode, newField).run();
}

}  // namespace orvenmod
