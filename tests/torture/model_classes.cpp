// What a walk does to classes, their fields and the dictionary.
#include <algorithm>
#include <iterator>

#include "platform/listgrid.h"
#include "torture/commands.h"
#include "torture/model.h"

namespace orvenmod::test {

namespace {

constexpr int kFirstOwnClass = 51;
constexpr int kBaseFields = 3;  // short code, code, name
constexpr std::size_t kMostClasses = 6;
constexpr std::size_t kMostFields = 5;

template <class Entry>
void fill(User& dialog, const Entry& entry) {
    dialog.type("txt", entry.code, 0);
    dialog.type("txt", entry.name, 1);
    dialog.click("cmdOK", -1);
}

// The list shows them by their codes' order, which is the store's.
void selectEntry(User& user, int id) {
    const auto& list = user.control<platform::ListGrid>("vsf1");
    for (int row = 1; row < list.rowCount(); ++row)
        if (list.text(row, 0) == std::to_string(id)) return user.selectRow("vsf1", row);
}

}  // namespace

void Model::newClass(const Step&, Desk& desk) {
    if (classes_.size() >= kMostClasses) return;
    const int id = kFirstOwnClass + static_cast<int>(classes_.size()) - 1;
    const std::string key = std::to_string(id);
    const std::string name = unusedName("项");
    if (!play(
            desk, "newClass", "数据保存成功！", [&](Desk& at) { makeClass(at, key, name); }, true))
        return;
    const auto row = database_.rows("select fItemTable,fViewName from tblItemClass where fItemClassId=" + key).at(0);
    classes_[id] = {name, row[0], row[1]};
}

void Model::newField(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    Class& its = classes_.at(itemClass);
    if (itemClass == kGoods || its.fields.size() >= kMostFields) return;
    const std::string name = unusedName("栏");
    const int lookup = static_cast<int>(step.how % 3);
    const auto act = [&](Desk& at) { makeField(at, std::to_string(itemClass), name, lookup); };
    if (!play(desk, "newField", "数据保存成功!", act, true)) return;
    its.fields.push_back({name, lookup != 0});
}

void Model::setUpField(const Step& step, Desk& desk) {
    const int itemClass = chooseClass(step);
    Class& its = classes_.at(itemClass);
    if (its.fields.empty()) return;
    const std::size_t which = step.which % its.fields.size();
    Field& field = its.fields[which];
    Field wanted = field;
    if (step.how % 2 == 0) wanted.shown = !field.shown;
    if (step.how % 3 == 0) wanted.caption = unusedName("改栏");
    const int row = kBaseFields + 1 + static_cast<int>(which);
    const auto act = [&](Desk& at) {
        inFieldSetup(at, std::to_string(itemClass), [&](User& dialog) {
            if (wanted.shown != field.shown) dialog.clickCell("fps1", 2, row);
            dialog.clickCell("fps1", 1, row);
            dialog.chooseMenu("MenuUnLock");
            dialog.typeCell("fps1", 1, row, wanted.caption);
            dialog.clickTool("Save");
        });
    };
    if (!play(desk, "setUpField", "数据保存成功!", act, true)) return;
    field = wanted;
    its.wasSetUp = true;
}

bool Model::hasEntry(const std::string& code, int but) const {
    return std::ranges::any_of(entries_,
                               [&](const auto& each) { return each.first != but && each.second.code == code; });
}

void Model::newEntry(const Step& step, Desk& desk) {
    const Entry entry{shortCode(step), unusedName("值")};
    const auto act = [&](Desk& at) {
        at.onWindow("frmJCZL", [&](User& dialog) { fill(dialog, entry); });
        inDictionary(at, [](User& user) { user.click("cmd", 1); });
    };
    if (play(desk, "newEntry", "数据保存成功！", act, !hasEntry(entry.code))) entries_[++lastEntry_] = entry;
}

void Model::changeEntry(const Step& step, Desk& desk) {
    const int id = chooseEntry(step);
    if (id == 0) return;
    const Entry entry{shortCode(step), unusedName("改值")};
    const auto act = [&](Desk& at) {
        at.onWindow("frmJCZL", [&](User& dialog) { fill(dialog, entry); });
        inDictionary(at, [&](User& user) {
            selectEntry(user, id);
            user.click("cmd", 2);
        });
    };
    if (play(desk, "changeEntry", "数据修改成功！", act, !hasEntry(entry.code, id))) entries_[id] = entry;
}

void Model::deleteEntry(const Step& step, Desk& desk) {
    const int id = chooseEntry(step);
    if (id == 0) return;
    const auto act = [&](Desk& at) {
        inDictionary(at, [&](User& user) {
            selectEntry(user, id);
            user.click("cmd", 3);
        });
    };
    if (play(desk, "deleteEntry", "数据删除成功！", act, true)) entries_.erase(id);
}

int Model::chooseEntry(const Step& step) const {
    return entries_.empty() ? 0 : std::next(entries_.begin(), static_cast<int>(step.which % entries_.size()))->first;
}

}  // namespace orvenmod::test
