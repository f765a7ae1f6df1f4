#include "platform/model/sortkeys.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "platform/model/chinese.h"

namespace orvenmod::platform::model {

namespace {

constexpr std::size_t kHead = 8;  // bytes compared at once
constexpr int kExponentOfOne = 0x4000;
constexpr int kExtreme = 0x3000;  // of an exponent, so that no number begins as what is none
constexpr unsigned char kPositive = 0x80;
constexpr unsigned char kNoNumber = 0xFF;  // behind every number

/// A number's digits without leading and trailing zeros, 0.digits * 10^exponent.
struct Decimal {
    bool valid = false;
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

Decimal decimalOf(std::string_view text) {
    Decimal number;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    bool behindPoint = false;
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '.' && !behindPoint) {
            behindPoint = true;
        } else if (c >= '0' && c <= '9') {
            number.valid = true;
            if (number.digits.empty() && c == '0') {
                if (behindPoint) --number.exponent;
                continue;
            }
            number.digits += c;
            if (!behindPoint) ++number.exponent;
        } else {
            break;
        }
    }
    if (number.valid && at < text.size()) {
        int power = 0;
        std::string_view tail = text.substr(at);
        const bool raised = tail.front() == 'e' || tail.front() == 'E';
        tail.remove_prefix(tail.size() > 1 && tail[1] == '+' ? 2 : 1);
        const auto [end, error] = std::from_chars(tail.data(), tail.data() + tail.size(), power);
        number.valid = raised && error == std::errc() && end == tail.data() + tail.size();
        number.exponent += std::clamp(power, -kExtreme, kExtreme);
    }
    while (!number.digits.empty() && number.digits.back() == '0')
        number.digits.pop_back();
    if (number.digits.size() % 2 == 1) number.digits += '0';
    return number;
}

bool isBlank(std::string_view cell) { return cell.find_first_not_of(' ') == std::string_view::npos; }

}  // namespace

void SortKeys::set(std::size_t slot, std::string_view cell) {
    keys_[slot].begin = bytes_.size();
    if (!isBlank(cell)) kind_ == ColumnKind::number ? addNumber(cell) : addText(cell);
    keys_[slot].end = bytes_.size();
}

void SortKeys::addNumber(std::string_view cell) {
    const auto first = cell.find_first_not_of(' ');
    const Decimal number = decimalOf(cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
    if (!number.valid) {
        bytes_.push_back(kNoNumber);
        return addText(cell);
    }
    const std::size_t from = bytes_.size();
    if (number.digits.empty()) {
        bytes_.insert(bytes_.end(), {kPositive, 0});
        return;
    }
    const int exponent = std::clamp(number.exponent, -kExtreme, kExtreme) + kExponentOfOne;
    bytes_.push_back(static_cast<unsigned char>(kPositive | (exponent >> 8)));
    bytes_.push_back(static_cast<unsigned char>(exponent));
    for (std::size_t i = 0; i < number.digits.size(); i += 2)
        bytes_.push_back(static_cast<unsigned char>((number.digits[i] - '0') * 10 + number.digits[i + 1] - '0' + 1));
    if (!number.negative) return;
    bytes_.push_back(0);  // turned, it puts -1 behind -1.5
    for (std::size_t i = from; i < bytes_.size(); ++i)
        bytes_[i] = static_cast<unsigned char>(~bytes_[i]);
}

void SortKeys::addText(std::string_view cell) { appendCollationKey(cell, bytes_); }

std::vector<std::uint32_t> SortedSlots::inOrder(SortOrder order) const {
    if (order == SortOrder::ascending) return slots_;
    std::vector<std::uint32_t> result;
    result.reserve(slots_.size());
    const auto add = [&](std::size_t from, std::size_t end) {
        result.insert(result.end(), slots_.begin() + static_cast<std::ptrdiff_t>(from),
                      slots_.begin() + static_cast<std::ptrdiff_t>(end));
    };
    for (std::size_t end = blanksFrom_; end > 0;) {
        std::size_t from = end - 1;
        while (tied_.test(from))
            --from;
        add(from, end);
        end = from;
    }
    add(blanksFrom_, slots_.size());
    return result;
}

SortedSlots SortKeys::sorted() const {
    std::vector<Entry> entries;
    entries.reserve(keys_.size());
    const auto slots = static_cast<std::uint32_t>(keys_.size());
    for (std::uint32_t slot = 0; slot < slots; ++slot) {
        if (length(slot) > 0) entries.push_back({headOf(slot, 0), slot});
    }
    SortedSlots result;
    sortFrom(0, entries.data(), entries.data() + entries.size(),
             [&](const Entry* entry) { result.tied_.set(static_cast<std::size_t>(entry - entries.data())); });
    result.slots_.reserve(slots);
    for (const Entry& entry : entries)
        result.slots_.push_back(entry.slot);
    result.blanksFrom_ = entries.size();
    for (std::uint32_t slot = 0; slot < slots; ++slot) {
        if (length(slot) == 0) result.slots_.push_back(slot);
    }
    return result;
}

std::uint64_t SortKeys::headOf(std::uint32_t slot, std::size_t depth) const {
    std::uint64_t head = 0;
    const std::size_t end = keys_[slot].end;
    for (std::size_t at = keys_[slot].begin + depth, i = 0; i < kHead; ++i, ++at)
        head = (head << 8) | (at < end ? bytes_[at] : 0U);
    return head;
}

template <class Tie>
void SortKeys::sortFrom(std::size_t depth, Entry* first, Entry* last, const Tie& tie) const {
    std::sort(first, last,
              [](const Entry& a, const Entry& b) { return a.head != b.head ? a.head < b.head : a.slot < b.slot; });
    depth += kHead;
    for (Entry* run = first; run != last;) {
        Entry* end = run;
        bool goesOn = false;
        for (; end != last && end->head == run->head; ++end)
            goesOn = goesOn || length(end->slot) > depth;
        if (goesOn && end - run > 1) {
            for (Entry* each = run; each != end; ++each)
                each->head = headOf(each->slot, depth);
            sortFrom(depth, run, end, tie);
        } else {
            for (Entry* each = run + 1; each != end; ++each)
                tie(each);
        }
        run = end;
    }
}

}  // namespace orvenmod::platform::model
