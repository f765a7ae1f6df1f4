#include "transfer/importrun.h"

#include <algorithm>
#include <stdexcept>

#include "editor/photo.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/openrows.h"
#include "hierarchy/categoryinsert.h"

namespace orvenmod {

namespace {

constexpr std::ptrdiff_t kRowsAPart = 500;
constexpr int kRowsAStep = 20;

/// Why the save itself refused a row: nothing of it was sent.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A photo that the update takes away and that is to stay.
class KeptPhoto {
public:
    explicit KeptPhoto(std::int32_t itemId) : itemId_(itemId) {
        if (appState().gItemClassId == kPhotoClass)
            photos_ = openRows("select * from ICItemPhoto where fitemid=" + std::to_string(itemId));
    }

    // The editor keeps the last of several.
    void putBack() {
        if (photos_.rowCount() == 0) return;
        const std::size_t last = photos_.rowCount() - 1;
        const auto rows = appState().gConn->openTable("ICItemPhoto");
        rows->addNew();
        rows->set("fitemid", std::to_string(itemId_));
        const std::string_view photo = photos_.cell(last, photos_.column("fPhoto")).value_or("");
        rows->setBinary("fPhoto", std::as_bytes(std::span(photo.data(), photo.size())));
        rows->set("fHZ", photos_.cell(last, photos_.column("fHZ")).value_or(""));
        rows->update();
    }

private:
    std::int32_t itemId_;
    store::Recordset photos_;
};

}  // namespace

ImportResult ImportRun::store(const Rows& rows) {
    if (check_.options().failing == WhenRowFails::storeNothing) {
        storeTogether(rows);
    } else {
        storeApart(rows);
    }
    for (const auto& [planned, made] : made_)
        result_.categories.push_back(made);
    return std::move(result_);
}

bool ImportRun::advance() {
    if (!result_.cancelled && !progress_.advance(done_)) result_.cancelled = true;
    return !result_.cancelled;
}

void ImportRun::undo() {
    openMade_.clear();
    if (appState().gConn->inTransaction()) appState().gConn->rollbackTrans();
}

void ImportRun::keepMade() {
    made_.insert(openMade_.begin(), openMade_.end());
    openMade_.clear();
}

void ImportRun::refuse(std::size_t row, const std::string& reason) {
    result_.rows.push_back({.row = row, .state = RowState::refused});
    result_.reasons[row] = reason;
}

void ImportRun::storeApart(const Rows& rows) {
    for (auto at = rows.begin(); at != rows.end() && advance();) {
        const auto end = at + std::min(kRowsAPart, rows.end() - at);
        storePart(at, end);
        if (!result_.failure.empty()) return;
        at = end;
    }
    advance();
}

void ImportRun::storePart(Rows::const_iterator begin, Rows::const_iterator end) {
    const int doneBefore = done_;
    auto reached = end;
    if (tryPart(begin, reached)) return;
    done_ = doneBefore;
    for (auto at = begin; at != end && result_.failure.empty() && advance(); ++at) {
        auto next = at + 1;
        if (!tryPart(at, next) && result_.failure.empty()) ++done_;
    }
}

/// Stores the rows in one transaction, up to `end` or where the user cancels. False where that failed, and a single row
/// is noted with its reason.
bool ImportRun::tryPart(Rows::const_iterator begin, Rows::const_iterator& end) {
    store::Connection& connection = *appState().gConn;
    const std::size_t rowsBefore = result_.rows.size();
    const bool single = end - begin == 1;
    try {
        connection.beginTrans();
        for (auto at = begin; at != end; ++at) {
            try {
                result_.rows.push_back(storeRow(*at));
            } catch (const Refusal& refusal) {
                refuse(*at, refusal.what());
            }
            if (++done_ % kRowsAStep == 0 && !single && !advance()) end = at + 1;
        }
        connection.commitTrans();
        keepMade();
        return true;
    } catch (const std::runtime_error& failure) {
        result_.rows.resize(rowsBefore);
        for (auto at = begin; at != end; ++at)
            result_.reasons.erase(*at);
        const std::string text = failure.what();
        try {
            undo();
            if (single) refuse(*begin, text);
        } catch (const store::Failure&) {
            result_.failure = text;
        }
        return false;
    }
}

void ImportRun::storeTogether(const Rows& rows) {
    store::Connection& connection = *appState().gConn;
    std::size_t row = 0;
    const auto nothing = [&] {
        result_.rows.clear();
        result_.reasons.clear();
        undo();
    };
    try {
        connection.beginTrans();
        for (const std::size_t each : rows) {
            row = each;
            if (done_ % kRowsAStep == 0 && !advance()) return nothing();
            result_.rows.push_back(storeRow(each));
            ++done_;
        }
        if (!advance()) return nothing();
        connection.commitTrans();
        keepMade();
    } catch (const std::runtime_error& failure) {
        const std::string text = failure.what();
        nothing();
        refuse(row, text);
    }
}

RowOutcome ImportRun::storeRow(std::size_t row) {
    CheckedRow checked = check_.check(row);
    checked.draft.categoryId = storedCategory(checked.draft.categoryId);
    if (checked.state == RowState::changed) {
        updateItem(checked.draft, checked.itemId);
    } else {
        checked.itemId = insertItem(checked.draft);
    }
    return {row, checked.state, checked.itemId};
}

std::int32_t ImportRun::insertItem(const ItemDraft& item) {
    if (codeIsTaken(item, "")) throw Refusal(kTakenCode);
    if (nameIsTaken(item, "") && check_.options().doubledName == WhenNameDoubled::refuse) throw Refusal("名称已经存在");
    const std::int32_t itemId = takeItemId();
    appState().gConn->executeAll(newItemRows(item, itemId));
    return itemId;
}

void ImportRun::updateItem(const ItemDraft& item, std::int32_t itemId) {
    const std::optional<bool> locked = itemLock(itemId);
    if (!locked) throw Refusal("核对以后，该项目已被删除");
    if (*locked) throw Refusal(kLockedItem);
    if (codeIsTaken(item, butItself(itemId))) throw Refusal(kTakenCode);
    if (nameIsTaken(item, butItself(itemId)) && check_.options().doubledName == WhenNameDoubled::refuse)
        throw Refusal("名称已经存在");
    KeptPhoto photo(itemId);
    appState().gConn->executeAll(changedItemRows(item, itemId));
    photo.putBack();
}

// Made in the transaction of the first row that needs it, its parents before it.
std::string ImportRun::storedCategory(const std::string& id) {
    const std::int32_t planned = toInt32(id.empty() ? "0" : id);
    if (planned >= 0) return id;
    for (const auto* known : {&made_, &openMade_}) {
        if (const auto found = known->find(planned); found != known->end()) return std::to_string(found->second);
    }
    const ImportCategory& category = check_.categories().at(planned);
    const std::string parent = storedCategory(std::to_string(category.parentId));
    if (storeCategory(
            {.name = category.name, .shortCode = category.shortCode, .code = category.code, .parentId = parent}))
        throw Refusal("分类的代码已经存在：" + category.code);
    const auto rows = openRows("select fitemid from tblItem where fnumber='" + category.code +
                               "' and fitemclassid=" + std::to_string(appState().gItemClassId) + " and fisdetail=0");
    const std::int32_t made = toInt32(rows.text("fitemid", "0"));
    openMade_[planned] = made;
    return std::to_string(made);
}

}  // namespace orvenmod
