#include "tools/orvencopy/progressbar.h"

#include <algorithm>
#include <ostream>

namespace orvenmod::tools {

namespace {

constexpr int kWidth = 28;
constexpr int kWhole = 100;
constexpr int kLineEvery = 10;
constexpr std::size_t kTableWidth = 20;

const char* word(store::CopyProgress::Stage stage) {
    switch (stage) {
        case store::CopyProgress::Stage::copying:
            return "copying  ";
        case store::CopyProgress::Stage::indexing:
            return "indexing ";
        case store::CopyProgress::Stage::comparing:
            return "comparing";
    }
    return "";
}

int percentOf(const store::CopyProgress& progress) {
    if (progress.total <= 0) return kWhole;
    return static_cast<int>(std::min<std::int64_t>(progress.rows * kWhole / progress.total, kWhole));
}

}  // namespace

void ProgressBar::show(const store::CopyProgress& progress) {
    const int percent = percentOf(progress);
    const bool other = progress.stage != stage_;
    const bool step = terminal_ == Terminal::yes ? percent != percent_ || progress.table != table_
                                                 : percent / kLineEvery != percent_ / kLineEvery;
    if (!other && !step && percent_ >= 0) return;
    stage_ = progress.stage;
    percent_ = percent;
    table_ = progress.table;
    if (terminal_ == Terminal::yes) return draw(progress, percent);
    stream_ << word(stage_) << ' ' << percent << " %\n" << std::flush;
}

void ProgressBar::draw(const store::CopyProgress& progress, int percent) {
    std::string table = progress.table.substr(0, kTableWidth);
    table.resize(kTableWidth, ' ');
    const auto full = static_cast<std::size_t>(percent * kWidth / kWhole);
    stream_ << '\r' << word(stage_) << "  " << table << " [" << std::string(full, '#')
            << std::string(kWidth - full, '-') << "] " << (percent < kWhole ? " " : "") << (percent < 10 ? " " : "")
            << percent << " %" << std::flush;
    drawn_ = true;
}

void ProgressBar::clear() {
    constexpr std::size_t kLine = 72;
    if (drawn_) stream_ << '\r' << std::string(kLine, ' ') << '\r' << std::flush;
    drawn_ = false;
}

}  // namespace orvenmod::tools
