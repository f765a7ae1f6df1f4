#include "platform/report/reportpages.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "platform/replaceall.h"

namespace orvenmod::platform::report {

namespace {

constexpr double kLeastScale = 0.5;  // of letters: smaller ones can't be read
// Columns are made for letters on a screen and have room to spare on paper: letters shrink later than columns. A text
// that is too wide for its cell then shrinks by itself.
constexpr double kSpare = 1.6;
constexpr double kCellPadding = 0.8;
constexpr double kSlack = 1e-6;

std::size_t rowsIn(double height, double rowHeight) {
    const double rows = std::floor(height / rowHeight + kSlack);
    return rows < 1 ? 1 : static_cast<std::size_t>(rows);
}

std::string onOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    return text;
}

}  // namespace

ReportPages::ReportPages(const ReportData& data, const Paper& paper, std::string date)
    : data_(data), paper_(paper), date_(std::move(date)) {
    groupColumns();
    for (const Band& header : data.page.headers)
        headersHeight_ += header.height;
    const bool anyColumn = !groups_.front().empty();
    rows_ = anyColumn ? data.records.count() : 0;
    const double room = paper_.innerHeight() - data.page.footer.height - data.page.titleHeight;
    firstRows_ = rowsIn(room - headersHeight_, data.page.rowHeight);
    nextRows_ = rowsIn(room, data.page.rowHeight);
    if (rows_ > firstRows_) blocks_ += (rows_ - firstRows_ + nextRows_ - 1) / nextRows_;
}

void ReportPages::groupColumns() {
    const double room = std::max(paper_.innerWidth(), 1.0);
    double total = 0;
    for (const ReportColumn& column : data_.columns)
        total += column.hidden ? 0 : column.width;
    if (data_.page.wideColumns == WideColumns::fit && total > room) scale_ = room / total;
    groups_.emplace_back();
    double left = 0;
    for (const ReportColumn& column : data_.columns) {
        if (column.hidden || column.width <= 0) continue;
        const double width = std::min(column.width * scale_, room);
        if (left + width > room + kSlack) {
            groups_.emplace_back();
            left = 0;
        }
        groups_.back().push_back({&column, left, width});
        left += width;
    }
}

double ReportPages::letterScale() const { return std::clamp(scale_ * kSpare, kLeastScale, 1.0); }

std::size_t ReportPages::firstRow(std::size_t block) const {
    return block == 0 ? 0 : std::min(rows_, firstRows_ + (block - 1) * nextRows_);
}

Page ReportPages::page(std::size_t number) const {
    if (number >= count()) throw std::out_of_range("no such page of the report");
    const std::size_t block = number / groups_.size();
    const Group& group = groups_[number % groups_.size()];
    Page page;
    double top = paper_.top;
    if (block == 0) {
        // The pages beside the first one keep the room, so that their rows line up.
        for (const Band& header : data_.page.headers) {
            if (number == 0) placeBand(page, header, top, number);
            top += header.height;
        }
    }
    placeTitles(page, group, top);
    top += data_.page.titleHeight;
    for (std::size_t row = firstRow(block); row < firstRow(block + 1); ++row) {
        placeRow(page, group, row, top);
        top += data_.page.rowHeight;
    }
    placeBand(page, data_.page.footer, paper_.height - paper_.bottom - data_.page.footer.height, number);
    return page;
}

void ReportPages::placeBand(Page& page, const Band& band, double top, std::size_t number) const {
    const double stretch = paper_.innerWidth() / data_.page.paper.innerWidth();
    for (const TemplateText& each : band.texts) {
        const Box box{paper_.left + each.box.left * stretch, top + each.box.top, each.box.width * stretch,
                      each.box.height};
        page.texts.push_back({box, each.literal ? onOneLine(each.text) : filled(each.text, number), each.points,
                              each.bold, each.alignment});
    }
}

void ReportPages::placeTitles(Page& page, const Group& group, double top) const {
    const double points = data_.page.points * letterScale();
    for (const auto& [column, left, width] : group) {
        const Box cell{paper_.left + left, top, width, data_.page.titleHeight};
        page.shaded.push_back(cell);
        page.frames.push_back(cell);
        page.texts.push_back({{cell.left + kCellPadding, top, cell.width - 2 * kCellPadding, cell.height},
                              onOneLine(column->title),
                              points,
                              true,
                              column->titleAlignment});
    }
}

void ReportPages::placeRow(Page& page, const Group& group, std::size_t row, double top) const {
    const double points = data_.page.points * letterScale();
    for (const auto& [column, left, width] : group) {
        const Box cell{paper_.left + left, top, width, data_.page.rowHeight};
        page.frames.push_back(cell);
        std::string text = onOneLine(data_.shown(row, *column));
        if (text.empty()) continue;
        page.texts.push_back({{cell.left + kCellPadding, top, cell.width - 2 * kCellPadding, cell.height},
                              std::move(text),
                              points,
                              false,
                              column->contentAlignment});
    }
}

std::string ReportPages::filled(std::string text, std::size_t number) const {
    if (text.find('{') != std::string::npos) {
        text = replaceAll(std::move(text), "{page}", std::to_string(number + 1));
        text = replaceAll(std::move(text), "{pages}", std::to_string(count()));
        text = replaceAll(std::move(text), "{date}", date_);
        text = replaceAll(std::move(text), "{title}", data_.title);
    }
    return onOneLine(std::move(text));
}

}  // namespace orvenmod::platform::report
