#include "transfer/storeditems.h"

#include <algorithm>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/openrows.h"
#include "transfer/importfields.h"

namespace orvenmod {

namespace {

constexpr int kSeveral = 0;

/// The texts between the separators of a path of names.
std::vector<std::string> namesOf(const std::string& path) {
    std::vector<std::string> names{""};
    for (const char letter : path) {
        if (letter == '/' || letter == '\\' || letter == '>') {
            names.emplace_back();
        } else {
            names.back() += letter;
        }
    }
    for (std::string& name : names)
        name = trim(name);
    return names;
}

std::string pathKey(const std::string& path) {
    std::string key;
    for (const std::string& name : namesOf(path))
        key += (key.empty() ? "" : "/") + lookupKey(name);
    return key;
}

std::string lastPart(const std::string& code) { return code.substr(code.rfind('.') + 1); }

bool isCodeLike(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z') ||
               (letter >= 'A' && letter <= 'Z') || letter == '.' || letter == '-';
    });
}

/// Where the tree's rows have what.
struct TreeColumns {
    explicit TreeColumns(const store::Recordset& read)
        : rows(read),
          id(read.column("fitemid")),
          code(read.column("fnumber")),
          name(read.column("fname")),
          parent(read.column("fparentid")),
          detail(read.column("fisdetail")),
          locked(read.column("fislock")),
          shortCode(read.column("fshortnumber")) {}

    std::string text(std::size_t row, int column) const {
        const bool number = column == id || column == parent || column == detail || column == locked;
        return std::string(rows.cell(row, column).value_or(number ? "0" : ""));
    }

    const store::Recordset& rows;
    int id, code, name, parent, detail, locked, shortCode;
};

}  // namespace

store::Recordset readTree() {
    return openRows(
        "select fitemid,fnumber,fname,fparentid,fisdetail,fislock,isnull(fshortnumber,'') as fshortnumber from tblItem "
        "where fitemclassid=" +
        std::to_string(appState().gItemClassId) + " order by fdepth,fnumber");
}

void StoredItems::read(const store::Recordset& tree) {
    const TreeColumns at(tree);
    for (std::size_t row = 0; row < tree.rowCount(); ++row) {
        const std::int32_t id = toInt32(at.text(row, at.id));
        const bool detail = at.text(row, at.detail) == "1";
        byCode_.insert_or_assign(lookupKey(at.text(row, at.code)), StoredItem{.id = id,
                                                                              .detail = detail,
                                                                              .locked = at.text(row, at.locked) == "1",
                                                                              .parentId = at.text(row, at.parent),
                                                                              .shortCode = at.text(row, at.shortCode)});
        if (!detail) continue;
        const auto [same, only] = byName_.emplace(lookupKey(at.text(row, at.name)), id);
        if (!only) same->second = kSeveral;
    }
    values_ = openRows("select * from " + appState().gViewName);
    const int id = values_.column("fitemid");
    for (std::size_t row = 0; row < values_.rowCount(); ++row)
        rows_[toInt32(values_.cell(row, id).value_or("0"))] = row;
}

const StoredItem* StoredItems::byCode(const std::string& code) const {
    const auto found = byCode_.find(lookupKey(code));
    return found == byCode_.end() ? nullptr : &found->second;
}

bool StoredItems::hasName(const std::string& name, std::int32_t id) const {
    const auto found = byName_.find(lookupKey(name));
    return found != byName_.end() && found->second != id;
}

std::string StoredItems::value(std::int32_t id, const std::string& column) const {
    const auto row = rows_.find(id);
    if (row == rows_.end()) return "";
    return std::string(values_.cell(row->second, values_.column(column)).value_or(""));
}

void ImportCategories::read(const store::Recordset& tree) {
    categories_[0] = {};
    paths_[0] = "";
    const TreeColumns at(tree);
    for (std::size_t row = 0; row < tree.rowCount(); ++row) {
        const std::string code = at.text(row, at.code);
        const std::int32_t parent = toInt32(at.text(row, at.parent));
        if (at.text(row, at.detail) == "1") {
            noteShortCode(parent, lastPart(code));
            continue;
        }
        add({.id = toInt32(at.text(row, at.id)),
             .parentId = categories_.count(parent) == 0 ? 0 : parent,
             .code = code,
             .shortCode = lastPart(code),
             .name = at.text(row, at.name)});
    }
}

const ImportCategory& ImportCategories::add(ImportCategory category) {
    const std::string& above = paths_[category.parentId];
    std::string path = above.empty() ? lookupKey(category.name) : above + "/" + lookupKey(category.name);
    byCode_.emplace(lookupKey(category.code), category.id);
    byPath_.emplace(path, category.id);
    const auto [same, only] = byName_.emplace(lookupKey(category.name), category.id);
    if (!only) same->second = kSeveral;
    paths_[category.id] = std::move(path);
    noteShortCode(category.parentId, category.shortCode);
    const std::int32_t id = category.id;
    return categories_[id] = std::move(category);
}

const ImportCategory* ImportCategories::find(const std::string& text) const {
    const std::string key = lookupKey(text);
    if (key.empty() || key == "无") return &categories_.at(0);
    if (const auto code = byCode_.find(key); code != byCode_.end()) return &categories_.at(code->second);
    const auto path = byPath_.find(pathKey(text));
    if (path != byPath_.end()) return &categories_.at(path->second);
    // A name that only one category has.
    const auto name = byName_.find(key);
    return name == byName_.end() || name->second == kSeveral ? nullptr : &categories_.at(name->second);
}

const ImportCategory& ImportCategories::around(const std::string& code) const {
    for (std::size_t dot = code.rfind('.'); dot != std::string::npos && dot > 0; dot = code.rfind('.', dot - 1)) {
        const auto found = byCode_.find(lookupKey(code.substr(0, dot)));
        if (found != byCode_.end()) return categories_.at(found->second);
    }
    return categories_.at(0);
}

void ImportCategories::noteShortCode(std::int32_t parentId, const std::string& code) {
    constexpr std::size_t kLongest = 9;
    if (code.empty() || code.size() > kLongest || code.find_first_not_of("0123456789") != std::string::npos) return;
    std::string& highest = highestCodes_[parentId];
    if (code.size() > highest.size() || (code.size() == highest.size() && code > highest)) highest = code;
}

std::string ImportCategories::nextShortCode(std::int32_t parentId) const {
    const auto found = highestCodes_.find(parentId);
    const std::string highest = found == highestCodes_.end() ? "000" : found->second;
    const std::string next = std::to_string(toInt32(highest) + 1);
    return next.size() < highest.size() ? std::string(highest.size() - next.size(), '0') + next : next;
}

const ImportCategory* ImportCategories::plan(const std::string& text, std::string& refusal) {
    const std::vector<std::string> names = namesOf(text);
    if (text.find('\'') != std::string::npos ||
        std::any_of(names.begin(), names.end(), [](const std::string& name) { return name.empty(); })) {
        refusal = "分类写得不对";
        return nullptr;
    }
    if (names.size() == 1 && isCodeLike(text)) {
        const ImportCategory& parent = around(text);
        const std::string shortCode = text.substr(parent.code.empty() ? 0 : parent.code.size() + 1);
        if (shortCode.find('.') != std::string::npos) {
            refusal = "没有上级分类";
            return nullptr;
        }
        return &add(
            {.id = --lastPlanned_, .parentId = parent.id, .code = text, .shortCode = shortCode, .name = shortCode});
    }
    std::int32_t parent = 0;
    std::string path;
    for (const std::string& name : names) {
        path += (path.empty() ? "" : "/") + lookupKey(name);
        if (const auto stored = byPath_.find(path); stored != byPath_.end()) {
            parent = stored->second;
            continue;
        }
        const std::string shortCode = nextShortCode(parent);
        const std::string& above = categories_.at(parent).code;
        parent = add({.id = --lastPlanned_,
                      .parentId = parent,
                      .code = above.empty() ? shortCode : above + "." + shortCode,
                      .shortCode = shortCode,
                      .name = name})
                     .id;
    }
    return &categories_.at(parent);
}

}  // namespace orvenmod
