#include "transfer/importfields.h"

#include <algorithm>
#include <charconv>

#include "editor/fieldsource.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "platform/asciitext.h"
#include "platform/model/cellinput.h"
#include "platform/numberformat.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

constexpr const char* kCategoryCaption = "所属分类";
constexpr char kBetween = '\n';
constexpr char kBecomes = '\t';

/// The number in "varchar(30)", 0 for none.
int lengthIn(const std::string& type) {
    if (platform::lowerCase(type).find("char") == std::string::npos) return 0;
    const std::size_t open = type.find('(');
    return open == std::string::npos ? 0 : static_cast<int>(leadingNumber(std::string_view(type).substr(open + 1)));
}

void takeLengths(const store::TableOutline& table, std::vector<ImportField>& fields) {
    for (ImportField& field : fields) {
        for (const store::ColumnOutline& column : table.columns) {
            if (platform::lowerCase(column.name) != platform::lowerCase(field.column)) continue;
            const int length = lengthIn(column.type);
            field.national = platform::lowerCase(column.type).starts_with("n");
            if (length > 0) field.longest = field.longest == 0 ? length : std::min(field.longest, length);
        }
    }
}

// A store that can't tell refuses what is too long when it is stored.
void readLengths(std::vector<ImportField>& fields) {
    try {
        const store::Outline outline = appState().gConn->outline();
        for (const store::TableOutline& table : outline.tables) {
            const std::string name = platform::lowerCase(table.name);
            if (name == "tblitem" || name == platform::lowerCase(trim(appState().gItemTable)))
                takeLengths(table, fields);
        }
    } catch (const store::Failure&) {
        for (ImportField& field : fields)
            field.longest = 0;
    }
}

std::shared_ptr<const Entries> entriesOf(const store::Recordset& field) {
    auto entries = std::make_shared<Entries>();
    store::Recordset rows = readEntries(field);
    for (; !rows.eof(); rows.moveNext())
        entries->add(rows.text("fitemid"), rows.text("fnumber"), rows.text("fname"));
    return entries;
}

/// The number that a spreadsheet makes out of the code; the code itself where that is none.
std::string asNumber(const std::string& code) {
    double number = 0;
    const char* const end = code.data() + code.size();
    const bool begins = !code.empty() && code[0] >= '0' && code[0] <= '9';
    const auto parsed = std::from_chars(code.data(), end, number);
    return begins && parsed.ec == std::errc() && parsed.ptr == end ? platform::plainNumber(number) : code;
}

std::string headingKey(std::string_view heading) {
    std::string key = lookupKey(heading);
    while (key.ends_with('*'))
        key = trim(key.substr(0, key.size() - 1));
    return key;
}

bool names(const ImportField& field, const std::string& key) {
    const std::string caption = lookupKey(field.caption);
    if (key == caption || (!field.column.empty() && key == lookupKey(field.column))) return true;
    if (field.column.empty()) return key == "分类" || key == "分类代码" || key == "类别";
    return field.isReference() && (key == caption + "代码" || key == caption + "名称");
}

std::unordered_map<std::string, std::string> takeApart(const std::string& remembered) {
    std::unordered_map<std::string, std::string> fields;
    for (std::size_t at = 0; at < remembered.size();) {
        const std::size_t end = std::min(remembered.find(kBetween, at), remembered.size());
        const std::size_t becomes = remembered.find(kBecomes, at);
        if (becomes < end)
            fields[remembered.substr(at, becomes - at)] = remembered.substr(becomes + 1, end - becomes - 1);
        at = end + 1;
    }
    return fields;
}

}  // namespace

std::string lookupKey(std::string_view text) { return platform::lowerCase(platform::model::plainLetters(text)); }

void Entries::add(const std::string& id, const std::string& code, const std::string& name) {
    names_.push_back(name);
    const std::string key = lookupKey(code);
    if (std::string number = asNumber(key); number != key) madeNumbers_.insert(std::move(number));
    const auto [own, first] = byCode_.emplace(key, id);
    if (!first) own->second = kSeveral;
    const auto [same, only] = byName_.emplace(lookupKey(name), id);
    if (!only) same->second = kSeveral;
}

std::string Entries::idOf(std::string_view text, std::string& refusal) const {
    const std::string key = lookupKey(text);
    for (const auto* entries : {&byCode_, &byName_}) {
        const auto found = entries->find(key);
        if (found == entries->end()) continue;
        if (found->second != kSeveral) return found->second;
        refusal = "有多项符合，请用代码";
        return "";
    }
    refusal = "没有这一项";
    return "";
}

bool ImportField::isNumber() const {
    return !isReference() && (type == store::kNumberField || type == store::kCurrencyField);
}
bool ImportField::isDate() const { return !isReference() && type == store::kDateField; }

std::vector<ImportField> readImportFields() {
    std::vector<ImportField> fields;
    store::Recordset rows = readFields();
    for (; !rows.eof(); rows.moveNext()) {
        ImportField field{.caption = rows.text("fname"),
                          .column = trim(rows.text("fFieldName")),
                          .type = trim(rows.text("fFieldType")),
                          .sourceClass = rows.text("FValueItemID")};
        field.required = trim(rows.text("fisNull")) == "1";
        if (field.type == store::kNumberField) field.rule = numberRule(rows);
        if (FieldRow{.sourceClass = field.sourceClass}.isReference()) field.entries = entriesOf(rows);
        fields.push_back(std::move(field));
    }
    if (fields.size() <= kNameField) throw std::runtime_error("该类别的字段不完整，不能导入");
    readLengths(fields);
    fields.push_back({.caption = kCategoryCaption});
    return fields;
}

std::vector<int> matchHeadings(const std::vector<std::string>& headings, const std::vector<ImportField>& fields,
                               const std::string& remembered) {
    const auto before = takeApart(remembered);
    std::vector<int> match(headings.size(), -1);
    std::vector<bool> given(fields.size());
    const auto give = [&](std::size_t heading, const auto& fits) {
        for (std::size_t field = 0; field < fields.size() && match[heading] < 0; ++field) {
            if (given[field] || !fits(fields[field])) continue;
            match[heading] = static_cast<int>(field);
            given[field] = true;
        }
    };
    std::vector<bool> known(headings.size());
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const auto last = before.find(headingKey(headings[i]));
        if (last == before.end()) continue;
        known[i] = true;
        if (last->second != "-") give(i, [&](const ImportField& field) { return field.column == last->second; });
    }
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const std::string key = headingKey(headings[i]);
        if (!known[i] && !key.empty()) give(i, [&](const ImportField& field) { return names(field, key); });
    }
    return match;
}

std::string rememberedMatch(const std::vector<std::string>& headings, const std::vector<ImportField>& fields,
                            const std::vector<int>& match) {
    std::string text;
    for (std::size_t i = 0; i < headings.size(); ++i) {
        const std::string key = headingKey(headings[i]);
        if (key.empty()) continue;
        const std::string column = match[i] < 0 ? "-" : fields[static_cast<std::size_t>(match[i])].column;
        text += key + kBecomes + column + kBetween;
    }
    return text;
}

}  // namespace orvenmod
