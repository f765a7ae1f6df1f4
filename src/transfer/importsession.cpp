#include "transfer/importsession.h"

#include <algorithm>
#include <filesystem>
#include <functional>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "hierarchy/itemroutines.h"
#include "platform/model/cellinput.h"
#include "platform/sheet/utf16.h"

namespace orvenmod {

namespace {

constexpr std::size_t kRowsAStep = 200;

std::int64_t timeOf(const std::string& path) {
    std::error_code none;
    return std::filesystem::last_write_time(path, none).time_since_epoch().count();
}

std::uint64_t sizeOf(const std::string& path) {
    std::error_code none;
    return std::filesystem::file_size(path, none);
}

/// Why the delete left it, "" where it is gone. Where what failed can't be undone nothing further may be tried.
std::string whyKept(const std::function<std::string()>& remove, bool& goesOn) {
    try {
        return remove();
    } catch (const store::Failure& failure) {
        std::string reason = failure.text();
        try {
            if (appState().gConn->inTransaction()) appState().gConn->rollbackTrans();
        } catch (const store::Failure&) {
            goesOn = false;
        }
        return reason;
    }
}

}  // namespace

std::string reasonText(const std::vector<CellReason>& reasons, const std::vector<ImportField>& fields) {
    std::string text;
    for (const CellReason& reason : reasons) {
        const std::string& caption = fields[reason.field].caption;
        if (!text.empty()) text += "；";
        text += reason.text.starts_with(caption) ? reason.text : caption + "：" + reason.text;
    }
    return text;
}

void ImportSession::readFile(const FileChoice& choice, const WhileReading& meanwhile) {
    const std::int64_t time = timeOf(choice.path);
    const std::uint64_t size = sizeOf(choice.path);
    SheetFile file = readSheetFile(choice, meanwhile);
    file_ = std::move(file);
    choice_ = choice;
    readTime_ = time;
    readSize_ = size;
    check_.reset();
    findHeading();
}

bool ImportSession::fileChanged() const {
    return timeOf(choice_.path) != readTime_ || sizeOf(choice_.path) != readSize_;
}

// The first row that holds anything.
void ImportSession::findHeading() {
    headings_.clear();
    rows_.clear();
    heading_ = 0;
    while (heading_ < file_.rows.rowCount() && file_.rows.isBlank(heading_))
        ++heading_;
    for (int column = 0; column < file_.rows.columnCount(); ++column)
        headings_.push_back(trim(platform::model::onOneLine(file_.rows.cell(heading_, column).text)));
    for (std::size_t row = heading_ + 1; row < file_.rows.rowCount(); ++row) {
        if (!file_.rows.isBlank(row)) rows_.push_back(row);
    }
}

std::string ImportSession::sample(std::size_t column) const {
    constexpr std::size_t kSamples = 3;
    constexpr std::size_t kSought = 100;
    constexpr std::size_t kLongestSample = 100;
    std::string text;
    std::size_t found = 0;
    for (std::size_t place = 0; place < std::min(rows_.size(), kSought) && found < kSamples; ++place) {
        const std::string value = trim(file_.rows.cell(rows_[place], static_cast<int>(column)).text);
        if (value.empty()) continue;
        const std::string_view line = std::string_view(value).substr(0, value.find('\n'));
        const std::string_view begin = platform::cutToUnits(line, kLongestSample);
        text +=
            (found++ == 0 ? "" : "，") + platform::model::onOneLine(begin) + (begin.size() < line.size() ? "…" : "");
    }
    return text;
}

// What was checked before stays until all is judged: the lists that show it go on asking for it.
bool ImportSession::check(platform::Progress& progress) {
    auto fresh = std::make_unique<RowCheck>(file_.rows, fields_, match, options, today_);
    fresh->readStored();
    for (std::size_t place = 0; place < rows_.size(); ++place) {
        if (place % kRowsAStep == 0 && !progress.advance(static_cast<int>(place / 2))) return false;
        fresh->noteCode(rows_[place]);
    }
    fresh->sortCodes();
    std::vector<RowState> states;
    states.reserve(rows_.size());
    for (std::size_t place = 0; place < rows_.size(); ++place) {
        if (place % kRowsAStep == 0 && !progress.advance(static_cast<int>((rows_.size() + place) / 2))) return false;
        states.push_back(fresh->check(rows_[place]).state);
    }
    if (!progress.advance(static_cast<int>(rows_.size()))) return false;
    check_ = std::move(fresh);
    states_ = std::move(states);
    counts_ = {};
    for (const RowState state : states_)
        ++counts_[static_cast<std::size_t>(state)];
    result_ = {};
    return true;
}

void ImportSession::rejudge(std::size_t place) {
    --counts_[static_cast<std::size_t>(states_[place])];
    states_[place] = check_->check(rows_[place]).state;
    ++counts_[static_cast<std::size_t>(states_[place])];
}

std::size_t ImportSession::placeOf(std::size_t row) const {
    return static_cast<std::size_t>(std::lower_bound(rows_.begin(), rows_.end(), row) - rows_.begin());
}

std::string ImportSession::text(std::size_t place, std::size_t field) const {
    const int column = check_->columnOf(field);
    return column < 0 ? "" : file_.rows.cell(rows_[place], column).text;
}

bool ImportSession::isCode(int column) const {
    const int field = match[static_cast<std::size_t>(column)];
    return field >= 0 && isCodeField(fields_, static_cast<std::size_t>(field));
}

void ImportSession::mend(std::size_t place, std::size_t field, const std::string& text) {
    const int column = check_->columnOf(field);
    if (column >= 0) file_.rows.mend(rows_[place], column, text);
}

void ImportSession::run(platform::Progress& progress) {
    std::vector<std::size_t> wanted;
    for (std::size_t place = 0; place < rows_.size(); ++place) {
        if (states_[place] == RowState::added || states_[place] == RowState::changed) wanted.push_back(rows_[place]);
    }
    result_ = ImportRun(*check_, progress).store(wanted);
}

std::vector<std::size_t> ImportSession::refused() const {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < rows_.size(); ++place) {
        if (states_[place] == RowState::refused || result_.reasons.count(rows_[place]) != 0) places.push_back(place);
    }
    return places;
}

std::string ImportSession::reasonOf(std::size_t place) const {
    const auto stored = result_.reasons.find(rows_[place]);
    return stored != result_.reasons.end() ? stored->second : reasonText(check_->check(rows_[place]).reasons, fields_);
}

std::vector<KeptItem> ImportSession::takeBack(platform::Progress& progress, MadeCategories categories) {
    std::vector<KeptItem> kept;
    std::vector<RowOutcome> left;
    int done = 0;
    bool goesOn = true;
    for (const RowOutcome& outcome : result_.rows) {
        if (outcome.state != RowState::added) {
            left.push_back(outcome);
            continue;
        }
        goesOn = goesOn && progress.advance(done++);
        std::string reason = "没有撤回";
        if (goesOn) reason = whyKept([&outcome] { return deleteUnused(outcome.itemId).text; }, goesOn);
        if (reason.empty()) continue;
        kept.push_back({outcome.row, reason});
        left.push_back(outcome);
    }
    result_.rows = std::move(left);
    if (categories == MadeCategories::takeBack) {
        std::erase_if(result_.categories, [&goesOn](std::int32_t id) {
            return goesOn && whyKept([id] { return deleteEmptyCategory(id); }, goesOn).empty();
        });
    }
    return kept;
}

}  // namespace orvenmod
