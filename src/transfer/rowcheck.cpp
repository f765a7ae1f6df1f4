#include "transfer/rowcheck.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>

#include "frame/conversion.h"
#include "platform/model/cellinput.h"

namespace orvenmod {

namespace {

constexpr const char* kMadeNumber = "电子表格把代码变成了数字，前面的零可能丢了，请改成文本";
constexpr const char* kNoDate = "1900-01-01";

// A text that was saved by a spreadsheet has the errors as texts.
bool isErrorText(const std::string& text) {
    constexpr std::string_view kErrors[] = {"#N/A", "#REF!", "#VALUE!", "#DIV/0!", "#NAME?", "#NULL!", "#NUM!"};
    return std::find(std::begin(kErrors), std::end(kErrors), text) != std::end(kErrors);
}

/// What can't be read out of the cell, "" where it can.
std::string unreadable(const SheetCell& cell) {
    switch (cell.kind) {
        case CellKind::uncomputed:
            return "公式没有存下结果，请在电子表格里打开并保存一次";
        case CellKind::error:
            return "单元格是错误值";
        case CellKind::merged:
            return "合并的单元格，请先拆分";
        default:
            return isErrorText(cell.text) ? "单元格是错误值" : "";
    }
}

/// Why a code may not be found that was written well.
std::string changedBySpreadsheet(const SheetCell& cell) {
    if (cell.kind == CellKind::number) return "，电子表格可能把代码变成了数字";
    return cell.kind == CellKind::date ? "，电子表格可能把代码变成了日期" : "";
}

double numberOr0(const std::string& text) { return isNumeric(text) ? toDouble(text) : 0; }

std::uint32_t hashOf(const std::string& key) { return static_cast<std::uint32_t>(std::hash<std::string>()(key)); }

std::string idOr0(const std::string& text) { return trim(text).empty() ? "0" : trim(text); }

std::string lengthRefusal(const std::string& text, const ImportField& field) {
    std::size_t length = 0;
    for (const char byte : text) {
        const auto bits = static_cast<unsigned char>(byte);
        const bool begins = (bits & 0xC0U) != 0x80U;
        if (begins) length += bits < 0x80U || field.national ? 1 : 2;
    }
    const auto longest = static_cast<std::size_t>(field.longest);
    if (field.longest == 0 || length <= longest) return "";
    if (field.national) return "太长，最多 " + std::to_string(longest) + " 个字";
    return "太长，最多 " + std::to_string(longest / 2) + " 个汉字或 " + std::to_string(longest) + " 个字母";
}

}  // namespace

RowCheck::RowCheck(const SheetRows& rows, const std::vector<ImportField>& fields, const std::vector<int>& match,
                   const ImportOptions& options, const platform::Date& today)
    : rows_(rows), fields_(fields), columnOf_(fields.size(), -1), options_(options), today_(today) {
    for (std::size_t column = 0; column < match.size(); ++column) {
        if (match[column] >= 0) columnOf_[static_cast<std::size_t>(match[column])] = static_cast<int>(column);
    }
}

void RowCheck::readStored() {
    const store::Recordset tree = readTree();
    stored_.read(tree);
    categories_.read(tree);
}

SheetCell RowCheck::cellOf(std::size_t row, std::size_t field) const {
    return columnOf_[field] < 0 ? SheetCell{} : rows_.cell(row, columnOf_[field]);
}

std::string RowCheck::valueOf(std::size_t row, std::size_t field, CheckedRow& checked) const {
    const SheetCell cell = cellOf(row, field);
    const std::string problem = unreadable(cell);
    if (!problem.empty()) checked.reasons.push_back({field, problem});
    std::string text = trim(platform::model::onOneLine(cell.text));
    if (!problem.empty()) text.clear();
    const bool code = isCodeField(fields_, field);
    if (code && cell.kind == CellKind::date)
        checked.reasons.push_back({field, "电子表格把代码变成了日期 " + cell.text + "，请改成文本"});
    if (code && cell.kind == CellKind::number && options_.numberCode == WhenCodeIsNumber::refuse)
        checked.reasons.push_back({field, kMadeNumber});
    if (text.find('\'') != std::string::npos) checked.reasons.push_back({field, "不能有单引号"});
    return text;
}

RowCheck::Codes RowCheck::codesOf(std::size_t row, CheckedRow& checked) {
    Codes codes;
    codes.shortCode = valueOf(row, kShortCodeField, checked);
    codes.code = valueOf(row, kCodeField, checked);
    const std::string category = valueOf(row, categoryField(), checked);
    codes.categoryTold = !category.empty();
    if (codes.categoryTold) {
        std::string refusal = "没有这个分类";
        codes.category = categories_.find(category);
        if (!codes.category && options_.category == WhenCategoryMissing::make && checked.reasons.empty())
            codes.category = categories_.plan(category, refusal);
        if (codes.category) refusal = plannedRefusal(*codes.category);
        if (!refusal.empty()) checked.reasons.push_back({categoryField(), refusal});
    } else if (!codes.code.empty()) {
        codes.category = &categories_.around(codes.code);
    }
    if (!codes.category) codes.category = &categories_.at(0);
    const std::string above = codes.category->code.empty() ? "" : codes.category->code + ".";
    if (codes.shortCode.empty() && codes.code.starts_with(above)) codes.shortCode = codes.code.substr(above.size());
    const std::string composed = above + codes.shortCode;
    if (codes.shortCode.empty() && codes.code.empty()) {
        if (checked.reasons.empty()) checked.reasons.push_back({kShortCodeField, "没有代码"});
    } else if (!codes.code.empty() && codes.code != composed && checked.reasons.empty()) {
        checked.reasons.push_back({kCodeField, "与分类和短代码不符，应为 " + composed});
    }
    codes.code = composed;
    return codes;
}

// What is stored was accepted before.
std::string RowCheck::plannedRefusal(const ImportCategory& category) const {
    std::string refusal;
    for (const ImportCategory* each = &category; each->id < 0 && refusal.empty();
         each = &categories_.at(each->parentId)) {
        refusal = lengthRefusal(each->name, fields_[kNameField]);
        if (refusal.empty()) refusal = lengthRefusal(each->code, fields_[kCodeField]);
    }
    return refusal;
}

void RowCheck::noteCode(std::size_t row) {
    CheckedRow ignored;
    const Codes codes = codesOf(row, ignored);
    if (ignored.reasons.empty()) noted_.push_back({hashOf(lookupKey(codes.code)), static_cast<std::uint32_t>(row)});
}

void RowCheck::sortCodes() { std::sort(noted_.begin(), noted_.end()); }

std::optional<std::size_t> RowCheck::otherFirst(const std::string& code, std::size_t row) {
    const std::string key = lookupKey(code);
    const std::uint32_t hash = hashOf(key);
    const auto begin = std::lower_bound(noted_.begin(), noted_.end(), NotedCode{.hash = hash});
    for (auto noted = begin; noted != noted_.end() && noted->hash == hash && noted->row != row; ++noted) {
        CheckedRow ignored;
        if (lookupKey(codesOf(noted->row, ignored).code) == key) return noted->row;
    }
    return std::nullopt;
}

CheckedRow RowCheck::check(std::size_t row) {
    CheckedRow checked;
    const Codes codes = codesOf(row, checked);
    const StoredItem* found = checked.reasons.empty() ? stored_.byCode(codes.code) : nullptr;
    if (found && !found->detail) checked.reasons.push_back({kCodeField, "代码已经存在，是一个分类"});
    if (found && found->detail) checked.itemId = found->id;
    const std::optional<std::size_t> first =
        checked.reasons.empty() ? otherFirst(codes.code, row) : std::optional<std::size_t>();
    if (first) checked.reasons.push_back({kCodeField, "与第" + std::to_string(*first + 1) + "行的代码重复"});
    checked.draft.texts.number = codes.code;
    checked.draft.texts.shortNumber = codes.shortCode;
    checked.draft.categoryId = found && !codes.categoryTold ? found->parentId : std::to_string(codes.category->id);
    checkFields(row, checked, codes);
    if (checked.reasons.empty()) {
        const std::string& name = checked.draft.texts.name;
        if (options_.doubledName == WhenNameDoubled::refuse && !name.empty() && stored_.hasName(name, checked.itemId))
            checked.reasons.push_back({kNameField, "名称已经存在"});
    }
    if (!checked.reasons.empty()) {
        checked.state = RowState::refused;
    } else if (checked.itemId == 0) {
        checked.state = RowState::added;
    } else {
        bool changed = found->shortCode != codes.shortCode || found->parentId != checked.draft.categoryId;
        for (std::size_t field = kCodeField; field < categoryField() && !changed; ++field)
            changed = differs(field, checked.itemId, checked.draft.classFields[field - kCodeField]);
        checked.state = changed && options_.found == WhenFound::change ? RowState::changed : RowState::same;
        if (checked.state == RowState::changed && found->locked) {
            checked.reasons.push_back({kCodeField, kLockedItem});
            checked.state = RowState::refused;
        }
    }
    return checked;
}

void RowCheck::checkFields(std::size_t row, CheckedRow& checked, const Codes& codes) {
    const auto require = [&](std::size_t field, const std::string& value) {
        if (fields_[field].required && trim(value).empty())
            checked.reasons.push_back({field, fields_[field].caption + "不能为空!"});
    };
    const bool coded = checked.reasons.empty();
    if (coded) require(kShortCodeField, codes.shortCode);
    FieldRow ignored;
    if (coded) checkValue(kShortCodeField, codes.shortCode, ignored, checked);
    for (std::size_t field = kCodeField; field < categoryField(); ++field) {
        FieldRow value{.fieldName = fields_[field].column,
                       .fieldType = fields_[field].type,
                       .sourceClass = fields_[field].sourceClass};
        const std::size_t before = checked.reasons.size();
        if (field == kCodeField) {
            if (coded) checkValue(field, codes.code, value, checked);
        } else if (columnOf_[field] >= 0) {
            std::string text = valueOf(row, field, checked);
            if (checked.reasons.size() == before) checkValue(field, std::move(text), value, checked);
            if (fields_[field].isReference()) doubtNumber(row, field, before, checked);
        } else if (checked.itemId != 0) {
            takeStored(field, checked.itemId, value);
        }
        if (checked.reasons.size() == before && (field != kCodeField || coded)) require(field, value.value);
        checked.draft.classFields.push_back(std::move(value));
    }
    checked.draft.texts.name = checked.draft.classFields[kNameField - kCodeField].value;
}

// The entry that a number means may be another's: that of the code with the zeros before it.
void RowCheck::doubtNumber(std::size_t row, std::size_t field, std::size_t before, CheckedRow& checked) const {
    const SheetCell cell = cellOf(row, field);
    if (checked.reasons.size() > before) {
        checked.reasons.back().text += changedBySpreadsheet(cell);
    } else if (cell.kind == CellKind::number && options_.numberCode == WhenCodeIsNumber::refuse &&
               fields_[field].entries->isNumberOfOther(cell.text)) {
        checked.reasons.push_back({field, kMadeNumber});
    }
}

void RowCheck::checkValue(std::size_t field, std::string text, FieldRow& into, CheckedRow& checked) const {
    const ImportField& rule = fields_[field];
    std::string refusal;
    if (rule.isReference()) {
        into.chosenId = text.empty() ? "" : rule.entries->idOf(text, refusal);
    } else if (rule.isNumber() || rule.isDate()) {
        platform::model::CellInput input =
            rule.isDate() ? platform::model::readDate(text, today_) : platform::model::readNumber(text, rule.rule);
        refusal = input.refusal;
        text = std::move(input.text);
    } else {
        refusal = lengthRefusal(text, rule);
    }
    if (!refusal.empty()) checked.reasons.push_back({field, refusal});
    into.value = std::move(text);
}

void RowCheck::takeStored(std::size_t field, std::int32_t itemId, FieldRow& into) const {
    const std::string& column = fields_[field].column;
    if (fields_[field].isReference()) {
        into.chosenId = stored_.value(itemId, column);
        into.value = stored_.value(itemId, column + "Name");
    } else {
        into.value = stored_.value(itemId, column);
        if (fields_[field].isDate()) into.value = std::string(platform::withoutMidnight(into.value));
    }
}

// Only what the file tells can differ.
bool RowCheck::differs(std::size_t field, std::int32_t itemId, const FieldRow& wanted) const {
    if (columnOf_[field] < 0) return false;
    FieldRow held;
    takeStored(field, itemId, held);
    if (fields_[field].isReference()) return idOr0(held.chosenId) != idOr0(wanted.chosenId);
    if (fields_[field].isNumber()) return numberOr0(held.value) != numberOr0(wanted.value);
    if (fields_[field].isDate()) return held.value != (wanted.value.empty() ? kNoDate : wanted.value);
    return trim(held.value) != wanted.value;
}

}  // namespace orvenmod
