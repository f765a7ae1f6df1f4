#include "torture/model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "frame/mdlMain.h"
#include "hierarchy/categorysave.h"
#include "hierarchy/itemroutines.h"

namespace orvenmod::test {

namespace {

constexpr std::size_t kLongestCode = 60;

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
    classes_[kGoods] = {"货品", "ICItem", "vICItem"};
    goodsFields_ = fieldRows();
}

std::string Model::take(const Step& step, Desk& desk) {
    using Take = void (Model::*)(const Step&, Desk&);
    static constexpr Take kTakes[] = {
        &Model::newItem,      &Model::newItem,      &Model::newItem,     &Model::newItem,     &Model::changeItem,
        &Model::changeItem,   &Model::newCategory,  &Model::newCategory, &Model::newCategory, &Model::moveCategory,
        &Model::moveCategory, &Model::moveCategory, &Model::deleteItem,  &Model::deleteItem,  &Model::deleteCategory,
        &Model::lockItem,     &Model::unlockItem,   &Model::newClass,    &Model::newField,    &Model::setUpField,
        &Model::newEntry,     &Model::newEntry,     &Model::changeEntry, &Model::deleteEntry};
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
    if (!play(desk, "changeItem", "数据修改成功!", act, !node.locked && !tree.isTaken(code, id))) return;
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
    auto& nodes = classes_.at(itemClass).tree.nodes;
    if (play(desk, "deleteItem", "", act, !nodes.at(id).locked)) nodes.erase(id);
}

void Model::lockItem(const Step& step, Desk& desk) { changeLock(step, desk, true); }
void Model::unlockItem(const Step& step, Desk& desk) { changeLock(step, desk, false); }

void Model::changeLock(const Step& step, Desk& desk, bool locked) {
    const int itemClass = chooseClass(step);
    const int id = chooseNode(itemClass, true, step.which);
    if (id == 0) return;
    const auto act = [&](Desk& at) {
        enter(itemClass);
        appState().gCurItemId = id;
        if (locked ? lockDetail() : unLockDetail()) at.tell();
    };
    Node& node = classes_.at(itemClass).tree.nodes.at(id);
    if (play(desk, locked ? "lockItem" : "unlockItem", "", act, node.locked != locked)) node.locked = locked;
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

}  // namespace orvenmod::test
