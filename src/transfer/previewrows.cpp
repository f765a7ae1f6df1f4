#include "transfer/previewrows.h"

#include <algorithm>

namespace orvenmod {

namespace {

constexpr int kNumberWidth = 750;
constexpr int kStateWidth = 750;
constexpr int kReasonWidth = 4500;
constexpr int kOutcomeReasonWidth = 7200;
constexpr int kFieldWidth = 1650;

const char* stateText(RowState state) {
    constexpr const char* kTexts[kRowStates] = {"新增", "修改", "相同", "拒绝"};
    return kTexts[static_cast<std::size_t>(state)];
}

// A list measures and paints what it shows; a cell of megabytes would hold it up.
std::string shortened(std::string text) {
    constexpr std::size_t kShown = 600;
    if (text.size() <= kShown) return text;
    std::size_t end = kShown;
    while ((static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return text.replace(end, std::string::npos, "…");
}

std::vector<std::size_t> shownFields(const ImportSession& session) {
    std::vector<std::size_t> fields;
    for (std::size_t field = 0; field < session.fields().size(); ++field) {
        if (session.columnOf(field) >= 0) fields.push_back(field);
    }
    return fields;
}

}  // namespace

void showRows(platform::ListGrid& grid, std::shared_ptr<const platform::RowSource> rows,
              const std::vector<ListColumn>& columns) {
    grid.bind(std::move(rows));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int column = static_cast<int>(i);
        grid.setText(0, column, columns[i].title);
        grid.setColumnWidth(column, columns[i].width);
    }
}

std::optional<std::string_view> WordedRows::cell(std::size_t row, int column) const {
    auto made = made_.find(row);
    if (made == made_.end()) made = made_.emplace(row, texts(row)).first;
    return made->second[static_cast<std::size_t>(column)];
}

CheckedRows::CheckedRows(const ImportSession& session, std::vector<std::size_t> places)
    : WordedRows(places.size(), static_cast<int>(columns(session).size())),
      session_(session),
      places_(std::move(places)) {}

std::vector<ListColumn> CheckedRows::columns(const ImportSession& session) {
    std::vector<ListColumn> columns = {{"行", kNumberWidth}, {"核对", kStateWidth}, {"原因", kReasonWidth}};
    for (const std::size_t field : shownFields(session))
        columns.push_back({session.fields()[field].caption, kFieldWidth});
    return columns;
}

std::vector<std::string> CheckedRows::texts(std::size_t row) const {
    const std::size_t place = places_[row];
    const CheckedRow checked = session_.checked(place);
    std::vector<std::string> texts = {std::to_string(session_.row(place) + 1), stateText(checked.state),
                                      reasonText(checked.reasons, session_.fields())};
    for (const std::size_t field : shownFields(session_)) {
        texts.push_back(shortened(session_.text(place, field)));
        for (const CellReason& reason : checked.reasons) {
            if (reason.field == field) texts.back() += " ◀ " + reason.text;
        }
    }
    return texts;
}

ResultRows::ResultRows(const ImportSession& session, std::map<std::size_t, std::string> kept)
    : ResultRows(session, std::move(kept), lines(session)) {}

ResultRows::ResultRows(const ImportSession& session, std::map<std::size_t, std::string> kept, std::vector<Line> lines)
    : WordedRows(lines.size(), static_cast<int>(columns().size())),
      session_(session),
      kept_(std::move(kept)),
      lines_(std::move(lines)) {}

std::vector<ListColumn> ResultRows::columns() {
    return {{"行", kNumberWidth},
            {"结果", kStateWidth},
            {"代码", 2 * kFieldWidth},
            {"名称", 2 * kFieldWidth},
            {"原因", kOutcomeReasonWidth}};
}

// Those that the store or the check refused stand first: they are what is left to do.
std::vector<ResultRows::Line> ResultRows::lines(const ImportSession& session) {
    std::vector<Line> lines;
    for (const std::size_t place : session.refused())
        lines.push_back({place, RowState::refused});
    for (const RowOutcome& outcome : session.result().rows) {
        if (outcome.state != RowState::refused) lines.push_back({session.placeOf(outcome.row), outcome.state});
    }
    return lines;
}

std::vector<std::string> ResultRows::texts(std::size_t row) const {
    const auto [place, state] = lines_[row];
    const ItemTexts item = session_.checked(place).draft.texts;
    const auto kept = kept_.find(session_.row(place));
    const std::string reason = state == RowState::refused ? session_.reasonOf(place)
                               : kept == kept_.end()      ? ""
                                                          : kept->second;
    return {std::to_string(session_.row(place) + 1), stateText(state), item.number, item.name, reason};
}

}  // namespace orvenmod
