#include "browser/seekbar.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

constexpr int kFieldColumn = 1;
constexpr int kKindColumn = 2;

struct Operator {
    std::string_view caption;
    std::string_view word;
    std::string_view opening = "";  ///< texts: what stands before the value in the condition
    std::string_view closing = "";
    bool takesValue = true;
};

constexpr Operator kNumberOperators[] = {{"大于", ">"}, {"大于等于", ">="}, {"等于", "="},
                                         {"小于", "<"}, {"小于等于", "<="}, {"不等于", "<>"}};

// The words of a text's operators stand in the combo only; the condition goes by the caption.
constexpr Operator kTextOperators[] = {
    {"等于", "=", "='", "'"},
    {"包含", "Like", " like '%", "%' "},
    {"不包含", "Not like", " not like '%", "%' "},
    {"不等于", "<>", "<>'", "'"},
    {.caption = "为空", .word = "Is null", .opening = "  is null ", .takesValue = false},
    {.caption = "不为空", .word = " is not  null", .opening = "  is not null ", .takesValue = false},
    {"大于等于", ">=", ">='", "'"},
    {"小于等于", "<=", "<='", "'"}};

constexpr Operator kDateOperators[] = {{"等于", "="},      {"不等于", "<>"}, {"大于", ">"},
                                       {"大于等于", ">="}, {"小于", "<"},    {"小于等于", "<="}};

std::span<const Operator> operatorsOf(const std::string& kind) {
    if (kind == store::kSeekNumber) return kNumberOperators;
    if (kind == store::kSeekText) return kTextOperators;
    if (kind == store::kSeekDate) return kDateOperators;
    return {};
}

std::string textFragment(const std::string& caption, const std::string& value) {
    const auto found = std::ranges::find(kTextOperators, std::string_view(caption), &Operator::caption);
    if (found == std::end(kTextOperators)) return "";
    std::string fragment(found->opening);
    if (found->takesValue) fragment += value;
    return fragment.append(found->closing);
}

std::string selectedCell(const platform::Combo& combo, int column) {
    return combo.selected() < 0 ? "" : combo.cell(combo.selected(), column);
}

std::string classKey(const char* name) { return name + std::to_string(appState().gItemClassId); }

}  // namespace

std::string seekFieldKey() { return classKey("JCZLA"); }

SeekBar::SeekBar(platform::Window& window)
    : field_(window.get<platform::Combo>("PC", 0)),
      operator_(window.get<platform::Combo>("PC", 1)),
      txtSearch_(window.get<platform::Edit>("txtSearch")),
      dtp_(window.get<platform::DatePicker>("dtp")) {}

void SeekBar::addToFpsA() {
    trapped([this] {
        readFields();
        field_.setListRows(field_.rowCount());
        const int saved = toInt32(GetIniS(kIniSection, seekFieldKey(), "0"));
        GetIniS(kIniSection, classKey("JCZLB"), "");
        // A row that is gone, since a field was removed, is no condition.
        field_.select(saved >= 0 && saved < field_.rowCount() ? saved : 0);
        txtSearch_.setText(appState().gFindValue);
        return true;
    });
}

void SeekBar::readFields() {
    openDB();
    store::Recordset rows = openRows(
        "select a.*,isnull(b.fItemType,0) as fItemType from tblFindInfoentry2 as a "
        " left outer join tblItemclass as b on a.fitemclassid=b.fitemclassid "
        " where a.ftypeid=" +
        store::listType(appState().gItemClassId) + " order by a.fentryid");
    field_.addRow({"无", "", "", ""});
    for (; !rows.eof(); rows.moveNext()) {
        field_.addRow({rows.text("ftitlename"), rows.text("fFieldName"), rows.text("fNumType"),
                       rows.text("fItemclassid"), rows.text("fNumberName"), rows.text("fitemtype")});
    }
    closeDB();
}

void SeekBar::PC_SelChange(int Index) {
    if (Index != 0) return;
    const std::string kind = selectedCell(field_, kKindColumn);
    operator_.clear();
    if (kind.empty()) {
        operator_.setListRows(0);
        return;
    }
    const auto operators = operatorsOf(kind);
    if (!operators.empty()) {
        const bool date = kind == store::kSeekDate;
        txtSearch_.setVisible(!date);
        dtp_.setVisible(date);
        if (date) dtp_.setValue(services().clock.today());
    }
    for (const Operator& one : operators)
        operator_.addRow({std::string(one.caption), std::string(one.word)});
    operator_.setListRows(static_cast<int>(operators.size()));
    if (!operators.empty()) operator_.select(kind == store::kSeekText ? 1 : 0);
}

std::string SeekBar::buildSeekSQLA() const {
    if (field_.selected() < 1) return "";
    std::string result = " and ( ";
    const std::string kind = selectedCell(field_, kKindColumn);
    const std::string field = selectedCell(field_, kFieldColumn);
    const std::string word = selectedCell(operator_, 1);
    const std::string value = trim(txtSearch_.text());
    if (kind == store::kSeekNumber) {
        if (value.empty()) return "";
        result += " " + field + " " + word + value + " ";
    } else if (kind == store::kSeekText) {
        result += " " + field + textFragment(selectedCell(operator_, 0), value);
    } else if (kind == store::kSeekDate) {
        result += " " + field + " " + word + "'" + platform::toText(dtp_.value()) + "' ";
    }
    return result;
}

void SeekBar::clearCell() {
    txtSearch_.setText("");
    dtp_.setValue(services().clock.today());
}

}  // namespace orvenmod
