#include "platform/model/listoutput.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/model/listgridmodel.h"
#include "platform/numberformat.h"

namespace orvenmod::platform::model {

namespace {

constexpr int kMostDecimals = 10;

// A spreadsheet would turn codes into numbers and dates: Excel takes the style's word for it, LibreOffice the
// attribute's.
constexpr std::string_view kTextCell = "<td style='mso-number-format:\"\\@\"' sdnum=\"2052;0;@\">";
constexpr std::string_view kNumberCell = "<td sdnum=\"2052;0;General\" sdval=\"";

bool plainNumeral(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// A line or a tab within a cell would begin another one.
std::string oneLine(std::string text) {
    for (char& c : text) {
        if (c == '\t' || c == '\n' || c == '\r') c = ' ';
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\n':
                out += "<br>";
                break;
            default:
                if (static_cast<unsigned char>(c) >= ' ' || c == '\t') out += c;
        }
    }
    return out;
}

void addRow(const ListGridModel& list, const std::vector<int>& columns, int row, CopiedRows& copied) {
    copied.html += "<tr>";
    const char* between = "";
    for (const int column : columns) {
        const std::string text = list.text(row, column);
        const std::string_view value = list.value(row, column);
        copied.text += between + oneLine(text);
        between = "\t";
        const ListGridModel::Column& of = list.column(column);
        const bool quantity = plainNumeral(value) && (!of.format.empty() || !losesDigits(value));
        const bool number = row > 0 && of.kind == ColumnKind::number && quantity;
        if (number)
            copied.html += std::string(kNumberCell) + std::string(value) + "\">" + std::string(value);
        else
            copied.html += std::string(kTextCell) + escaped(text);
        copied.html += "</td>";
    }
    copied.text += "\n";
    copied.html += "</tr>\n";
}

}  // namespace

std::vector<int> shownColumns(const ListGridModel& list) {
    std::vector<int> columns;
    for (int place = 0; place < list.columnCount(); ++place) {
        const int column = list.columnAt(place);
        if (!list.column(column).hidden) columns.push_back(column);
    }
    return columns;
}

CopiedRows copySelectedRows(const ListGridModel& list, const RowsDone& done) {
    CopiedRows copied;
    if (list.selectedCount() == 0) return copied;
    const std::vector<int> columns = shownColumns(list);
    copied.html =
        "<html><head><meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\"></head><body><table>\n";
    addRow(list, columns, 0, copied);
    list.forEachSelected(done, [&](int row) { addRow(list, columns, row, copied); });
    copied.html += "</table></body></html>\n";
    return copied;
}

void NumberSum::add(std::string_view number) {
    const auto first = number.find_first_not_of(' ');
    if (first == std::string_view::npos) return;
    number.remove_prefix(first);
    long double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || end != number.data() + number.size()) return;
    sum_ += value;
    const auto point = number.find('.');
    if (point != std::string_view::npos)
        decimals_ = std::clamp(static_cast<int>(number.size() - point) - 1, decimals_, kMostDecimals);
}

std::string NumberSum::text(const std::string& format) const {
    std::array<char, 512> digits;
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), sum_, std::chars_format::fixed, decimals_);
    if (error != std::errc()) return "?";
    std::string plain(digits.data(), end);
    if (plain.find('.') != std::string::npos) {
        plain.erase(plain.find_last_not_of('0') + 1);
        if (plain.back() == '.') plain.pop_back();
    }
    if (plain == "-0") plain = "0";
    return format.empty() ? plain : formatNumber(plain, format);
}

}  // namespace orvenmod::platform::model
