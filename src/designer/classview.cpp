#include "designer/classview.h"

#include <cstdint>
#include <string_view>

#include "designer/filled.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/idcounter.h"
#include "store/classviewtext.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

// The wording in which the two modes differ.
struct Wording {
    std::string_view drop;
    std::string_view fieldFiller;
};

constexpr Wording kNewField = {"drop view ", "  "};
constexpr Wording kSetup = {"drop view  ", " "};

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
    std::string_view numType() const {
        if (type == store::kDateField) return store::kSeekDate;
        return type == store::kNumberField ? store::kSeekNumber : store::kSeekText;
    }
};

class Generator {
public:
    Generator(store::Flight& flight, const ClassObjects& objects, ClassViewMode mode, const std::string& newField)
        : flight_(flight),
          objects_(objects),
          mode_(mode),
          newField_(newField),
          wording_(mode == ClassViewMode::newField ? kNewField : kSetup),
          view_(objects.view, objects.table,
                mode == ClassViewMode::newField ? store::ViewWording::newField : store::ViewWording::setup) {}

    void run() {
        if (mode_ == ClassViewMode::newField) {
            readNextEntry();
        } else {
            type_ = store::listType(itemClass_);
            flight_.execute("delete from tblViewDesc where ftypeid=" + type_);
        }
        flight_.execute(std::string(wording_.drop) + objects_.view);
        addClassColumn();
        addFields();
        flight_.execute(view_.text());
    }

private:
    // Search rows are filed under a type id of 16 bits.
    void readNextEntry() {
        type_ = std::to_string(toInt16(static_cast<double>(store::listTypeNumber(itemClass_))));
        const auto row =
            flight_.open("select max(fentryid) as fEntryId1 from tblFindinfoentry2 where ftypeid=" + type_);
        entry_ = idAfter(row.eof() || row.isNull("fEntryId1") ? 1 : toInt32(row.text("fEntryId1")));
    }

    void addClassColumn() {
        const std::string_view amount = amountCaption(itemClass_);
        if (!amount.empty()) {
            view_.addAmount();
            if (mode_ == ClassViewMode::setup) flight_.execute(filled(kAmount, {{"t", type_}, {"word", amount}}));
        } else if (itemClass_ == store::kGoods) {
            view_.addStock();
            if (mode_ == ClassViewMode::setup) flight_.execute(filled(kStock, {{"t", type_}}));
        }
    }

    void addFields() {
        auto rows = flight_.open(
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
        view_.addField(field.name, field.type);
        if (!isDescribed(field)) return;
        describe(field, field.type == store::kNumberField ? kNumberDescription : kDescription);
        if (mode_ == ClassViewMode::newField) offerSearch(field, "{t},'{f}','{cap}',{numtype},{t},1,{e},0");
    }

    void addLookup(const Field& field) {
        view_.addLookup(field.name, field.lookupKind == store::kItemClass ? "tblItem" : "tblSubType");
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
        flight_.execute(filled(text, {{"t", type_}, {"f", field.name}, {"cap", field.caption}}));
    }

    // The row's class id holds the type id.
    void offerSearch(const Field& field, std::string_view values) {
        flight_.execute(filled(
            "insert into tblFindinfoEntry2(fTypeid,fFieldName,fTitleName,fNumType,fItemclassid,fIsDefault,fEntryId,"
            "fNumberName) values({values})",
            {{"values", filled(values, {{"t", type_},
                                        {"f", field.name},
                                        {"cap", field.caption},
                                        {"numtype", field.numType()},
                                        {"e", std::to_string(entry_++)}})}}));
    }

    store::Flight& flight_;
    const ClassObjects& objects_;
    const ClassViewMode mode_;
    const std::string& newField_;
    const Wording& wording_;
    const std::int16_t itemClass_ = appState().gItemClassId;
    std::string type_;
    store::ClassViewText view_;
    std::int32_t entry_ = 0;
};

}  // namespace

ClassObjects readClassObjects(store::Flight& flight, const std::string& itemClass) {
    const auto row = flight.open("select * from tblItemclass where fitemclassid=" + itemClass);
    return {row.text("fviewname"), row.text("fItemTable")};
}

void regenerateClassView(store::Flight& flight, const ClassObjects& objects, ClassViewMode mode,
                         const std::string& newField) {
    Generator(flight, objects, mode, newField).run();
}

}  // namespace orvenmod
