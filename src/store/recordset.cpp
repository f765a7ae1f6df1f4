#include "store/recordset.h"

#include <algorithm>
#include <cstring>

#include "store/failure.h"
#include "store/text.h"

namespace orvenmod::store {

namespace {

constexpr std::size_t kShortLength = 0xFF;
constexpr std::size_t kFirstArenaBlock = 4096;
constexpr std::size_t kFirstRows = 16;

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(),
                                                     [](char a, char b) { return asciiLower(a) == asciiLower(b); });
}

}  // namespace

Recordset::Recordset() = default;
Recordset::Recordset(std::vector<Column> columns) : columns_(std::move(columns)) {}
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

int columnOf(const std::vector<Column>& columns, std::string_view name) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (sameName(columns[i].name, name)) return static_cast<int>(i);
    }
    throw Failure(FailureKind::noSuchObject, kNoSuchField,
                  "在对应所需名称或序数的集合中，未找到项目：" + std::string(name) + "。");
}

Value Recordset::cell(std::size_t row, int column) const {
    const std::size_t offset = (row % kRowsPerBlock) * columns_.size() + static_cast<std::size_t>(column);
    const char* at = cells_[row / kRowsPerBlock][offset];
    if (at == nullptr) return std::nullopt;
    std::size_t length = static_cast<unsigned char>(*at++);
    if (length == kShortLength) {
        std::memcpy(&length, at, sizeof length);
        at += sizeof length;
    }
    return std::string_view(at, length);
}

Value Recordset::field(std::string_view name) const {
    const int index = column(name);
    if (eof()) {
        throw Failure(FailureKind::other, kNoCurrentRow,
                      "BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。");
    }
    return cell(at_, index);
}

std::string Recordset::text(std::string_view name, std::string_view fallback) const {
    return std::string(field(name).value_or(fallback));
}

std::size_t Recordset::memory() const {
    const std::size_t full = cells_.empty() ? 0 : cells_.size() - 1;
    return (full * kRowsPerBlock * columns_.size() + capacity_) * sizeof(const char*) + arenaBytes_;
}

void Recordset::addText(std::string_view text) {
    if (text.size() < kShortLength) {
        char* cell = reserve(text.size() + 1);
        *cell = static_cast<char>(text.size());
        if (!text.empty()) std::memcpy(cell + 1, text.data(), text.size());
        addCell(cell);
        return;
    }
    const std::size_t length = text.size();
    char* cell = reserve(length + 1 + sizeof length);
    *cell = static_cast<char>(kShortLength);
    std::memcpy(cell + 1, &length, sizeof length);
    std::memcpy(cell + 1 + sizeof length, text.data(), length);
    addCell(cell);
}

void Recordset::addNull() { addCell(nullptr); }

void Recordset::addCell(const char* cell) {
    if (filled_ == capacity_) growCells();
    cells_.back()[filled_++] = cell;
}

// The first block starts with a few rows and doubles, since most queries fetch one row; the later ones are whole.
void Recordset::growCells() {
    const std::size_t whole = kRowsPerBlock * columns_.size();
    if (cells_.empty() || capacity_ == whole) {
        capacity_ = cells_.empty() ? kFirstRows * columns_.size() : whole;
        cells_.push_back(std::make_unique_for_overwrite<const char*[]>(capacity_));
        filled_ = 0;
        return;
    }
    capacity_ = std::min(capacity_ * 2, whole);
    auto larger = std::make_unique_for_overwrite<const char*[]>(capacity_);
    std::copy_n(cells_.back().get(), filled_, larger.get());
    cells_.back() = std::move(larger);
}

char* Recordset::reserve(std::size_t bytes) {
    if (bytes > left_) {
        // A quarter of what is there: the last block, half empty on the average, stays a small part of the whole.
        const std::size_t usual = std::clamp(arenaBytes_ / 4, kFirstArenaBlock, kArenaBlock);
        // A text larger than a quarter of a block gets a block of its own, so that the rest of the current one
        // is not lost.
        if (bytes > usual / 4) {
            arena_.push_back(std::make_unique_for_overwrite<char[]>(bytes));
            arenaBytes_ += bytes;
            return arena_.back().get();
        }
        arena_.push_back(std::make_unique_for_overwrite<char[]>(usual));
        arenaBytes_ += usual;
        free_ = arena_.back().get();
        left_ = usual;
    }
    char* at = free_;
    free_ += bytes;
    left_ -= bytes;
    return at;
}

}  // namespace orvenmod::store
