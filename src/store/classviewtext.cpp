#include "store/classviewtext.h"

#include "store/itemclass.h"

namespace orvenmod::store {

struct ClassViewText::Wording {
    std::string_view stockColumn;
    std::string_view opening;
    std::string_view treeJoins;
    std::string_view lookupOpening;
    std::string_view lookupClosing;

    static const Wording& of(ViewWording wording) {
        static constexpr Wording kNewField = {
            ",0 as ftimeqty ", " from ((",
            " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid)  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid) ",
            "(", " )"};
        static constexpr Wording kSetup = {
            " ,0 as fTimeQty  ", " from ",
            " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid ",
            " ", " "};
        return wording == ViewWording::newField ? kNewField : kSetup;
    }
};

ClassViewText::ClassViewText(std::string_view view, std::string_view table, ViewWording wording)
    : wording_(Wording::of(wording)), opening_(wording_.opening), joins_(table) {
    columns_.append("create view ").append(view);
    columns_ +=
        "  as  SELECT a.fItemid,b.fIslock,b.fParentid, isnull(c.fname,'') AS fParentidname, "
        "isnull(c.fDepth,1) AS fParentDepth, b.fNBNumber ,isnull(c.fnumber,'') as fParentIdNumber "
        ",isnull(b.fShortNumber,'') as fShortNumber ";
    joins_ += wording_.treeJoins;
}

void ClassViewText::addAmount() { columns_ += ",isnull(a.fAmount,0) as fAmount "; }

void ClassViewText::addStock() { columns_ += wording_.stockColumn; }

void ClassViewText::addField(std::string_view name, std::string_view type) {
    const std::string_view empty = type == kDateField     ? "'1900-01-01'"
                                   : type == kNumberField ? "0"
                                   : type == kTextField   ? "''"
                                                          : "";
    if (empty.empty()) return;
    columns_.append(",isnull(a.").append(name).append(",").append(empty).append(")  as ").append(name);
}

void ClassViewText::addLookup(std::string_view name, std::string_view source) {
    const std::string alias = "A" + std::to_string(++lookups_);
    columns_.append(",isnull(a.").append(name).append(",0)  as ").append(name);
    columns_.append(",isnull(").append(alias).append(".fNumber,'')  as ").append(name).append("Number ");
    columns_.append(",isnull(").append(alias).append(".fName,'')  as ").append(name).append("Name ");
    opening_ += wording_.lookupOpening;
    joins_.append(" left outer join ").append(source).append("  as ").append(alias).append(" on ").append(alias);
    joins_.append(".fitemid=a.").append(name).append(wording_.lookupClosing);
}

std::string classViewSkeleton(std::string_view view, std::string_view table) {
    std::string text = "create view ";
    text.append(view).append(
        " as SELECT a.fItemid, a.fnumber, a.fname, b.fIslock, b.fParentid, isnull(c.fname,'') AS fParentidname, "
        "isnull(c.fDepth,1) AS fParentDepth, b.fNBNumber,isnull(c.fnumber,'') as fParentIdNumber,"
        "isnull(b.fShortNumber,'') as fShortNumber    fROM ((");
    return text.append(table).append(
        " AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid) LEFT JOIN tblItem AS c  ON c.fItemid=b.fParentid)");
}

}  // namespace orvenmod::store
