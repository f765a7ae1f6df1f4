#include "torture/model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "dictionary/frmJCZLList.h"
#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "frame/mdlMain.h"
#include "hierarchy/categorysave.h"
#include "hierarchy/itemroutines.h"
#include "torture/commands.h"

namespace orvenmod::test {

namespace {

constexpr int kGoods = 3;
constexpr int kDictionary = 501;
constexpr int kFirstOwnClass = 51;
constexpr std::size_t kMostClasses = 6;
constexpr int kMostFields = 8;
constexpr std::size_t kLongestCode = 60;

Rows sorted(Rows rows) {
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::string textOf(const Rows& rows) {
    std::string text;
    for (const auto& row : rows) {
        for (const std::string& cell : row)
            text += cell + "|";
        text += "\n";
    }
    return text;
}

std::string compared(const std::string& what, const Rows& found, const Rows& expected) {
    if (found == expected) return {};
    Rows more;
    Rows less;
    const Rows one = sorted(found);
    const Rows other = sorted(expected);
    std::set_difference(one.begin(), one.end(), other.begin(), other.end(), std::back_inserter(more));
    std::set_difference(other.begin(), other.end(), one.begin(), one.end(), std::back_inserter(less));
    return what + " holds\n" + textOf(more) + "instead of\n" + textOf(less);
}

}  // namespace

std::string textOf(const std::vector<Step>& steps) {
    std::string text = "{";
    for (const Step& step : steps) {
        text += (text.size() > 1 ? ", {" : "{") + std::to_string(step.what) + ", " + std::to_string(step.which) + ", " +
                std::to_string(step.how) + "}";
    }
    return text + "}";
}

Model::Model(Database& database) : database_(database) {
    for (const char* statement :
         {"delete from tblItem", "delete from ICItem", "delete from tblMaxNum", "delete from tblBillInfo",
          "delete from tblbillinfoentry", "delete from tblSubType", "delete from tblItemClass where fItemType='1'",
          "insert into tblItemClass(fItemClassId,fItemName,fItemType,fItemTable) values(501,'单位','1','')"}) {
        database_.execute(statement);
    }
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        for (const char* field : {"'fCustId',1", "'fSettleId',2"}) {
            database_.execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                              "," + field + ")");
        }
    }
    Class goods{"货品", "ICItem", "vICItem"};
    goods.fields = std::stoi(database_.value("select count(*) from tblTableInfo where fItemClassId=3"));
    classes_[kGoods] = goods;
}

std::string Model::take(const Step& step, Desk& desk) {
    using Take = void (Model::*)(const Step&, Desk&);
    static constexpr Take kTakes[] = {
        &Model::newItem,      &Model::newItem,      &Model::newItem,     &Model::newItem,     &Model::changeItem,
        &Model::changeItem,   &Model::newCategory,  &Model::newCategory, &Model::newCategory, &Model::moveCategory,
        &Model::moveCategory, &Model::moveCategory, &Model::deleteItem,  &Model::deleteItem,  &Model::deleteCategory,
        &Model::newClass,     &Model::newField,     &Model::newEntry,    &Model::newEntry,    &Model::deleteEntry};
    wrong_.clear();
    (this->*kTakes[step.what % std::size(kTakes)])(step, desk);
    return wrong_;
}

bool Model::play(Desk& desk, const std::string& name, const std::string& success, const std::function<void(Desk&)>& act,
                 Wanted wanted) {
    desk.play({.name = name, .success = success, .act = act});
    ++(desk.told() ? done_ : refused_);
    if (desk.told() != wanted) wrong_ = name + (wanted ? " wasn't done: " : " was done: ") + desk.account();
    return desk.told();
}

void Model::enter(int itemClass) const {
    const Class& entered = classes_.at(itemClass);
    AppState& state = appState();
    state.gItemClassId = static_cast<std::int16_t>(itemClass);
    state.gItemName = entered.name;
    state.gItemTable = entered.table;
    state.gViewName = entered.view;
}

int Model::chooseClass(const Step& step) const {
    return std::next(classes_.begin(), static_cast<int>(step.how / 7 % classes_.size()))->first;
}

int Model::chooseNode(int itemClass, bool detail, unsigned which) const {
    std::vector<int> found;
    for (const auto& [id, node] : classes_.at(itemClass).tree.nodes)
        if (node.detail == detail) found.push_back(id);
    return found.empty() ? 0 : found[which % found.size()];
}

std::string Model::shortCode(const Step& step) {
    static const char* const kCodes[] = {"01", "02", "1", "A", "a b", "甲", "X.Y", "007"};
    return kCodes[step.how % std::size(kCodes)] + std::to_string(step.how / 8 % 20);
}

// Another clerk, whose process has a record of its own.
void Model::somebodyElse(const Step& step) {
    AppState mine = std::move(appState());
    appState() = AppState();
    appState().gConnStr = mine.gConnStr;
    appState().gIsAdmin = 1;
    const int itemClass = mine.gItemClassId;
    enter(itemClass);
    const int id = chooseNode(itemClass, false, step.which / 3);
    const int parent = chooseNode(itemClass, false, step.which / 5);
    if (id == 0 || step.which % 2 == 0) {
        storeCategory(itemClass, parent, shortCode({0, 0, step.how / 3}));
    } else {
        storeMove(itemClass, id, parent, shortCode({0, 0, step.how / 3}));
    }
    appState() = std::move(mine);
}

void Model::newItem(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    PlainTree& tree = classes_.at(itemClass).tree;
    const int parent = step.which % 4 == 0 ? 0 : chooseNode(itemClass, false, step.which);
    const std::string typed = shortCode(step);
    const std::string code = tree.composed(parent, typed);
    if (code.size() > kLongestCode) return;
    const std::string name = unusedName("物");
    bool wanted = false;
    const auto act = [&](Desk& at) {
        enter(itemClass);
        appState().gEditMode = 0;
        appState().gCurParentId = parent;
        at.onWindow("frmBasicInfo", [&](User& user) {
            user.typeCell("fps1", kValue, kShortCodeRow, typed);
            typeName(user, name);
            if (step.which % 5 == 0) somebodyElse(step);
            wanted = !tree.isTaken(code);
            user.clickTool("Save");
        });
        frmBasicInfo::instance().show(nullptr);
    };
    desk.play({.name = "newItem", .success = "数据保存成功!", .act = act});
    ++(desk.told() ? done_ : refused_);
    if (desk.told() != wanted) wrong_ = "a new item " + code + ": " + desk.account();
    if (desk.told()) tree.nodes[++lastId_] = {parent, true, typed, code, name};
}

void Model::changeItem(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    PlainTree& tree = classes_.at(itemClass).tree;
    const int id = chooseNode(itemClass, true, step.which);
    if (id == 0) return;
    Node& node = tree.nodes.at(id);
    const std::string typed = shortCode(step);
    const bool recoded = typed != node.shortCode;
    const std::string code = recoded ? tree.composed(node.parent, typed) : node.code;
    if (code.size() > kLongestCode) return;
    const std::string name = unusedName("改");
    const auto act = [&](Desk& at) {
        enter(itemClass);
        appState().gEditMode = 1;
        appState().gCurItemId = id;
        at.onWindow("frmBasicInfo", [&](User& user) {
            typeName(user, name);
            if (recoded) user.typeCell("fps1", kValue, kShortCodeRow, typed);
            user.clickTool("Save");
        });
        frmBasicInfo::instance().show(nullptr);
    };
    if (!play(desk, "changeItem", "数据修改成功!", act, !tree.isTaken(code, id))) return;
    node.name = name;
    node.shortCode = typed;
    node.code = code;
}

bool Model::storeCategory(int itemClass, int parent, const std::string& typed) {
    PlainTree& tree = classes_.at(itemClass).tree;
    const std::string code = tree.composed(parent, typed);
    if (code.size() > kLongestCode) return false;
    const std::string name = unusedName("类");
    const bool wanted = !tree.isTaken(code);
    const bool stored = insertCategory({name, typed, code, std::to_string(parent)});
    if (stored != wanted) wrong_ = "category " + code + (stored ? " was stored" : " was refused");
    if (stored) tree.nodes[++lastId_] = {parent, false, typed, code, name};
    return stored;
}

void Model::newCategory(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    const int parent = step.which % 3 == 0 ? 0 : chooseNode(itemClass, false, step.which);
    desk.play({.name = "newCategory", .act = [&](Desk& at) {
                   enter(itemClass);
                   if (storeCategory(itemClass, parent, shortCode(step))) at.tell();
               }});
    ++(desk.told() ? done_ : refused_);
}

bool Model::mayMove(int itemClass, int id, int parent, const std::string& code) const {
    const PlainTree& tree = classes_.at(itemClass).tree;
    return !tree.isTaken(code, id) && !tree.isBelow(parent, id) && tree.recoded(id, code);
}

bool Model::storeMove(int itemClass, int id, int parent, const std::string& typed) {
    PlainTree& tree = classes_.at(itemClass).tree;
    const std::string code = tree.composed(parent, typed);
    const auto codes = tree.recoded(id, code);
    const auto tooLong = [](const auto& each) { return each.second.size() > kLongestCode; };
    if (code.size() > kLongestCode || (codes && std::ranges::any_of(*codes, tooLong))) return false;
    const bool wanted = mayMove(itemClass, id, parent, code);
    const std::string name = unusedName("移");
    appState().gCurItemId = id;
    const bool stored = orvenmod::moveCategory({name, typed, code, std::to_string(parent)});
    if (stored != wanted)
        wrong_ = "moving " + std::to_string(id) + " to " + code + (stored ? " was done" : " was refused");
    if (!stored || !codes) return stored;
    for (const auto& [moved, its] : *codes)
        tree.nodes[moved].code = its;
    Node& node = tree.nodes.at(id);
    node.parent = parent;
    node.shortCode = typed;
    node.name = name;
    return true;
}

void Model::moveCategory(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    const int id = chooseNode(itemClass, false, step.which);
    if (id == 0) return;
    const int parent = step.how % 4 == 0 ? 0 : chooseNode(itemClass, false, step.how);
    desk.play({.name = "moveCategory", .act = [&](Desk& at) {
                   enter(itemClass);
                   if (storeMove(itemClass, id, parent, shortCode(step))) at.tell();
               }});
    ++(desk.told() ? done_ : refused_);
}

void Model::deleteItem(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    const int id = chooseNode(itemClass, true, step.which);
    if (id == 0) return;
    const auto act = [&](Desk& at) {
        enter(itemClass);
        appState().gCurItemId = id;
        if (delDetail()) at.tell();
    };
    if (play(desk, "deleteItem", "", act, true)) classes_.at(itemClass).tree.nodes.erase(id);
}

void Model::deleteCategory(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    PlainTree& tree = classes_.at(itemClass).tree;
    const int id = chooseNode(itemClass, false, step.which);
    if (id == 0) return;
    const auto act = [&](Desk& at) {
        enter(itemClass);
        if (delParent(id)) at.tell();
    };
    if (play(desk, "deleteCategory", "", act, !tree.hasChildren(id))) tree.nodes.erase(id);
}

void Model::newClass(const Step&, Desk& desk) {
    if (classes_.size() >= kMostClasses) return;
    const int id = kFirstOwnClass + static_cast<int>(classes_.size()) - 1;
    const std::string key = std::to_string(id);
    const std::string name = unusedName("项");
    if (!play(
            desk, "newClass", "数据保存成功！", [&](Desk& at) { makeClass(at, key, name); }, true))
        return;
    const auto row = database_.rows("select fItemTable,fViewName from tblItemClass where fItemClassId=" + key).at(0);
    classes_[id] = {name, row[0], row[1], {}, 3, {"短代码", "代码", "名称"}};
}

void Model::newField(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    Class& its = classes_.at(itemClass);
    if (itemClass == kGoods || its.fields >= kMostFields) return;
    const std::string name = unusedName("栏");
    const int lookup = static_cast<int>(step.how % 3);
    const auto act = [&](Desk& at) { makeField(at, std::to_string(itemClass), name, lookup); };
    if (!play(desk, "newField", "数据保存成功!", act, true)) return;
    ++its.fields;
    for (const char* part : lookup == 0 ? std::vector{""} : std::vector{"代码", "名称"})
        its.descriptions.push_back(name + part);
}

void Model::newEntry(const Step& step, Desk& desk) {
    const std::string code = shortCode(step);
    const std::string name = unusedName("值");
    const auto taken = [&](const auto& each) { return each.second.code == code; };
    const auto act = [&](Desk& at) {
        appState().gItemClassId = kDictionary;
        appState().gRightPrefix = "Z";
        at.onWindow("frmJCZL", [&](User& dialog) {
            dialog.type("txt", code, 0);
            dialog.type("txt", name, 1);
            dialog.click("cmdOK", -1);
        });
        at.onWindow("frmJCZLList", [](User& user) { user.click("cmd", 1); });
        frmJCZLList::instance().show();
    };
    const bool wanted = std::ranges::none_of(entries_, taken);
    if (play(desk, "newEntry", "数据保存成功！", act, wanted)) entries_[++lastEntry_] = {code, name};
}

void Model::deleteEntry(const Step& step, Desk& desk) {
    if (entries_.empty()) return;
    // The list shows them by their codes' order, which is the store's; the first row's entry is whichever it is.
    int gone = 0;
    const auto act = [&](Desk& at) {
        appState().gItemClassId = kDictionary;
        appState().gRightPrefix = "Z";
        at.onWindow("frmJCZLList", [&](User& user) {
            const auto& list = user.control<platform::ListGrid>("vsf1");
            const int row = 1 + static_cast<int>(step.which % entries_.size());
            if (row >= list.rowCount()) return;
            gone = std::stoi(list.text(row, 0));
            user.selectRow("vsf1", row);
            user.click("cmd", 3);
        });
        frmJCZLList::instance().show();
    };
    if (play(desk, "deleteEntry", "数据删除成功！", act, true)) entries_.erase(gone);
}

Rows Model::itemRows() const {
    Rows rows;
    for (const auto& [itemClass, its] : classes_) {
        for (auto row : its.tree.items()) {
            row.push_back(std::to_string(itemClass));
            row.push_back(its.tree.nodes.at(std::stoi(row[0])).detail ? "1" : "0");
            rows.push_back(row);
        }
    }
    return sorted(rows);
}

std::string Model::classDifference(int itemClass) const {
    const Class& its = classes_.at(itemClass);
    const std::string key = std::to_string(itemClass);
    std::string all =
        compared("tblItemClass of " + key,
                 database_.rows("select fItemName,fItemTable,fViewName from tblItemClass where fItemClassId=" + key),
                 {{its.name, its.table, its.view}});
    all += compared("tblTableInfo of " + key,
                    database_.rows("select count(*) from tblTableInfo where fItemClassId=" + key),
                    {{std::to_string(its.fields)}});
    if (its.descriptions.empty()) return all;
    Rows found;
    std::string columns;
    for (const auto& row : database_.rows("select fFieldDesc,fFieldName from tblViewDesc where fTypeId=" +
                                          std::to_string(6000 + itemClass))) {
        found.push_back({row[0]});
        columns += (columns.empty() ? "" : ",") + row[1];
    }
    Rows expected;
    for (const std::string& description : its.descriptions)
        expected.push_back({description});
    all += compared("tblViewDesc of " + key, sorted(found), sorted(expected));
    // Fails where the view lacks one of them.
    database_.rows("select " + columns + " from " + its.view + " where 1=0");
    return all;
}

std::string Model::differenceNow() {
    std::string all = compared("tblItem",
                               sorted(database_.rows("select fitemid,fnumber,fnbnumber,fdepth,fparentid,fshortnumber,"
                                                     "fname,fitemclassid,fisdetail from tblItem")),
                               itemRows());
    Rows entries;
    for (const auto& [id, entry] : entries_)
        entries.push_back({std::to_string(id), entry.code, entry.name});
    all +=
        compared("tblSubType", sorted(database_.rows("select fitemid,fnumber,fname from tblSubType")), sorted(entries));
    for (const auto& [itemClass, its] : classes_) {
        const std::string key = std::to_string(itemClass);
        Rows details;
        for (const auto& [id, node] : its.tree.nodes)
            if (node.detail) details.push_back({std::to_string(id), node.code, node.name});
        for (const std::string& from : {its.table, its.view})
            all += compared(from, sorted(database_.rows("select fitemid,fnumber,fname from " + from)), sorted(details));
        all += classDifference(itemClass);
    }
    if (lastId_ > 0) {
        all += compared("the counter", database_.rows("select fMaxNum from tblMaxNum where fTableName='tblItem'"),
                        {{std::to_string(lastId_)}});
    }
    return all;
}

}  // namespace orvenmod::test
