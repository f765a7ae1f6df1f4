#include "browser/listcolumns.h"

#include <algorithm>
#include <set>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"

namespace orvenmod {

namespace {

constexpr const char* kSection = "ListColumns";
constexpr int kFirstColumn = 2;  // behind the grid's own and the key
constexpr int kSmallestWidth = 15;
constexpr int kLargestWidth = 32760;

std::string settingsKey() {
    return std::to_string(appState().gLoginUserId) + "." + std::to_string(appState().gItemClassId);
}

bool takeWidth(const std::vector<std::string>& words, KeptColumns& kept) {
    if (words.size() != 3 || words[1].empty() || words[2].empty() || words[2].size() > 5) return false;
    if (words[2].find_first_not_of("0123456789") != std::string::npos) return false;
    const int width = toInt32(words[2]);
    if (width < kSmallestWidth || width > kLargestWidth) return false;
    return kept.widths.emplace(words[1], width).second;
}

bool takeOrder(const std::vector<std::string>& words, KeptColumns& kept) {
    if (words.size() != 2 || !kept.order.empty()) return false;
    kept.order = split(words[1], ",");
    const std::set<std::string> names(kept.order.begin(), kept.order.end());
    return names.size() == kept.order.size() && names.count("") == 0;
}

bool takeSort(const std::vector<std::string>& words, KeptColumns& kept) {
    if (words.size() != 3 || words[1].empty() || !kept.sorted.empty()) return false;
    if (words[2] != "ascending" && words[2] != "descending") return false;
    kept.sorted = words[1];
    kept.sortOrder = words[2] == "ascending" ? platform::SortOrder::ascending : platform::SortOrder::descending;
    return true;
}

/// Adds the names that the order lacks, each behind the one that it stands behind among `names`.
void fillIn(std::vector<std::string>& order, const std::vector<std::string>& names) {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (std::ranges::find(order, names[i]) != order.end()) continue;
        order.insert(i == 0 ? order.begin() : std::ranges::find(order, names[i - 1]) + 1, names[i]);
    }
}

}  // namespace

std::string toText(const KeptColumns& kept) {
    std::string text;
    const auto part = [&text](const std::string& words) { text += (text.empty() ? "" : ";") + words; };
    for (const auto& [field, width] : kept.widths)
        part("width " + field + " " + std::to_string(width));
    std::string order;
    for (const std::string& field : kept.order)
        order += (order.empty() ? "" : ",") + field;
    if (!order.empty()) part("order " + order);
    if (!kept.sorted.empty())
        part("sort " + kept.sorted + (kept.sortOrder == platform::SortOrder::ascending ? " ascending" : " descending"));
    return text;
}

KeptColumns keptColumns(const std::string& text) {
    KeptColumns kept;
    if (text.empty()) return kept;
    for (const std::string& part : split(text, ";")) {
        const std::vector<std::string> words = split(part, " ");
        const bool sense = (words[0] == "width" && takeWidth(words, kept)) ||
                           (words[0] == "order" && takeOrder(words, kept)) ||
                           (words[0] == "sort" && takeSort(words, kept));
        if (!sense) return {};
    }
    return kept;
}

void ListColumns::load() {
    stored_ = setting(kSection, settingsKey(), "");
    kept_ = keptColumns(stored_);
    sorts_ = !kept_.sorted.empty();
}

void ListColumns::save() {
    note();
    const std::string text = toText(kept_);
    if (text == stored_) return;
    saveSetting(kSection, settingsKey(), text);
    stored_ = text;
}

void ListColumns::note() {
    if (fields_.empty()) return;
    const std::vector<std::string> told = toldOrder();
    std::vector<std::string> shown;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const int width = grid_.columnWidth(kFirstColumn + static_cast<int>(i));
        if (width == fields_[i].width)
            kept_.widths.erase(fields_[i].name);
        else
            kept_.widths[fields_[i].name] = std::clamp(width, kSmallestWidth, kLargestWidth);
    }
    for (int place = 0; place < grid_.columnCount(); ++place) {
        const int column = grid_.columnAt(place) - kFirstColumn;
        if (column < 0 || column >= static_cast<int>(told.size())) continue;
        const std::string& field = told[static_cast<std::size_t>(column)];
        // A field that the metadata lists twice is kept by its first place.
        if (std::ranges::find(shown, field) == shown.end()) shown.push_back(field);
    }
    if (shown != wantedOrder()) {
        // A field that isn't shown now keeps the place that it had.
        fillIn(shown, kept_.order);
        kept_.order = shown == told ? std::vector<std::string>() : shown;
    }
    // A sorting by a field that isn't shown waits for it, and one that took too long for another day, until the user
    // sorts otherwise.
    if ((sorts_ || givenUp_) && grid_.sortedColumn() < 0) return;
    sorts_ = false;
    const int sorted = grid_.sortedColumn() - kFirstColumn;
    const bool sorts = sorted >= 0 && sorted < static_cast<int>(fields_.size());
    kept_.sorted = sorts ? fields_[static_cast<std::size_t>(sorted)].name : "";
    kept_.sortOrder = sorts ? grid_.sortOrder() : platform::SortOrder::told;
}

void ListColumns::apply(const ColumnSpec& spec) {
    fields_.clear();
    const std::vector<std::string> names = split(spec.columns, ",");
    for (std::size_t i = 1; i < names.size(); ++i) {
        const int column = kFirstColumn + static_cast<int>(i) - 1;
        if (column >= grid_.columnCount()) break;
        fields_.push_back({names[i], grid_.columnWidth(column)});
        if (const auto width = kept_.widths.find(names[i]); width != kept_.widths.end())
            grid_.setColumnWidth(column, width->second);
    }
    place(wantedOrder());
}

void ListColumns::arrange() {
    const int column = sorts_ ? columnOf(kept_.sorted) : -1;
    if (column >= 0) {
        grid_.sort(column, kept_.sortOrder);
        sorts_ = false;
    }
    grid_.arrange();
    givenUp_ = !sorts_ && !kept_.sorted.empty() && grid_.sortedColumn() < 0;
}

void ListColumns::move(int column, int side) {
    int place = 0;
    while (grid_.columnAt(place) != column)
        ++place;
    do {
        place += side;
        if (place < kFirstColumn || place >= grid_.columnCount()) return;
    } while (grid_.columnHidden(grid_.columnAt(place)));
    grid_.moveColumn(column, place);
}

void ListColumns::widen(int column, int steps) {
    constexpr int kStep = 300;
    const int width = grid_.columnWidth(column);
    // One that was dragged beyond the bounds is left there.
    grid_.setColumnWidth(column,
                         std::clamp(width + steps * kStep, std::min(width, kStep), std::max(width, kLargestWidth)));
}

void ListColumns::reset() {
    kept_ = {};
    sorts_ = givenUp_ = false;
    for (std::size_t i = 0; i < fields_.size(); ++i)
        grid_.setColumnWidth(kFirstColumn + static_cast<int>(i), fields_[i].width);
    place(wantedOrder());
    if (grid_.sortedColumn() >= 0) grid_.sort(grid_.sortedColumn(), platform::SortOrder::told);
}

// A field that wasn't there when the order was kept stands behind the one that the metadata puts it behind.
std::vector<std::string> ListColumns::wantedOrder() const {
    std::vector<std::string> order;
    for (const std::string& field : kept_.order) {
        if (columnOf(field) >= 0) order.push_back(field);
    }
    fillIn(order, toldOrder());
    return order;
}

std::vector<std::string> ListColumns::toldOrder() const {
    std::vector<std::string> order;
    for (const Field& field : fields_)
        order.push_back(field.name);
    return order;
}

void ListColumns::place(const std::vector<std::string>& order) {
    for (std::size_t i = 0; i < order.size(); ++i)
        grid_.moveColumn(columnOf(order[i]), kFirstColumn + static_cast<int>(i));
}

int ListColumns::columnOf(const std::string& field) const {
    const auto found = std::ranges::find(fields_, field, &Field::name);
    return found == fields_.end() ? -1 : kFirstColumn + static_cast<int>(found - fields_.begin());
}

}  // namespace orvenmod
