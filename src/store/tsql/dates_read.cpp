// Reading dates: as stored, and as people write them.
//
// People write a date in a dozen forms, and what a number is may only show later: "2026" alone is a year's first day,
// in "Jan 2 2026" it is a part. So the reader takes the text piece by piece - a word, a time, three numbers with a sign
// between, a bare number - and each piece says what it settles; what is still open is settled, and checked, at the end.
//
//   26.1.2               2026-01-02 00:00:00    the year first, where nothing tells
//   1/2/2026             2026-01-02 00:00:00    four digits are the year; then the month first,
//   1/2/2026, style 103  2026-02-01 00:00:00    unless a style says the day
//   20260102 3:04 PM     2026-01-02 15:04:00
//   2026-02-30           242: a date by its form, but none that there is
//   hello                241
#include <algorithm>

#include "store/tsql/dates.h"
#include "store/tsql/error.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

constexpr std::string_view kMonthNames[] = {"january", "february", "march",     "april",   "may",      "june",
                                            "july",    "august",   "september", "october", "november", "december"};

// The server's cutoff: 49 is 2049, 50 is 1950.
int centuryOf(int twoDigits) { return twoDigits < 50 ? 2000 + twoDigits : 1900 + twoDigits; }

struct Number {
    int value = 0;
    int digits = 0;
};

// The parts of a date in the order in which a text of unclear order has them. A style tells it by its form: 1 and 101
// are m/d/y, 3 and 103 d/m/y.
enum class Order { yearFirst, monthFirst, dayFirst };

Order orderOf(int style) {
    switch (style % 100) {
        case 1:
        case 10:
            return Order::monthFirst;
        case 3:
        case 4:
        case 5:
            return Order::dayFirst;
        default:
            return Order::yearFirst;
    }
}

class DateReader {
public:
    DateReader(std::string_view text, Kind to, std::string_view from, int style)
        : text_(text), to_(to), from_(from), order_(orderOf(style)) {}

    DateTime read() {
        skipBlanks();
        while (at_ < text_.size()) {
            readPart();
            skipBlanks();
        }
        finishNamedMonth();
        check();
        return date_;
    }

private:
    [[noreturn]] static void noDate() { throw Error(kDateSyntax); }
    [[noreturn]] void outOfRange() const {
        if (to_ == Kind::date || to_ == Kind::time) noDate();
        throw Error(kDateOutOfRange, {std::string(from_), std::string(typeName(to_))});
    }

    char peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
    void skipBlanks() {
        while (peek() == ' ' || peek() == '\t' || peek() == ',')
            ++at_;
    }

    Number number() {
        Number result;
        while (isDigit(peek())) {
            if (++result.digits > 8) noDate();
            result.value = result.value * 10 + (text_[at_++] - '0');
        }
        if (result.digits == 0) noDate();
        return result;
    }

    std::string word() {
        const std::size_t start = at_;
        while (isLetter(peek()))
            ++at_;
        return lowerText(text_.substr(start, at_ - start));
    }

    void readPart() {
        if (isLetter(peek())) return readWord();
        if (!isDigit(peek())) noDate();
        const Number first = number();
        const char separator = peek();
        if (separator == ':' || half() != 0) return readTime(first);
        if ((separator == '-' || separator == '/' || separator == '.') && isDigit(peek(1)))
            return readTriple(first, separator);
        readPlainNumber(first);
    }

    // 1 for AM, 2 for PM behind optional blanks, else 0; does not move.
    int half() const {
        std::size_t at = at_;
        while (at < text_.size() && text_[at] == ' ')
            ++at;
        if (at + 2 > text_.size() || (at + 2 < text_.size() && isLetter(text_[at + 2]))) return 0;
        const std::string letters = lowerText(text_.substr(at, 2));
        return letters == "am" ? 1 : letters == "pm" ? 2 : 0;
    }

    void readWord() {
        const std::string name = word();
        // The ISO form: 2026-01-02T10:00:00Z.
        if (name == "t" && haveDay_ && isDigit(peek())) return;
        if (name == "z" && haveTime_ && at_ == text_.size()) return;
        const auto* found = name.size() < 3 ? std::end(kMonthNames)
                                            : std::find_if(std::begin(kMonthNames), std::end(kMonthNames),
                                                           [&](auto m) { return name == m || name == m.substr(0, 3); });
        if (found == std::end(kMonthNames) || haveDay_ || namedMonth_) noDate();
        date_.month = static_cast<int>(found - std::begin(kMonthNames)) + 1;
        namedMonth_ = true;
        if (peek() == '-' || peek() == '/' || peek() == '.') ++at_;
    }

    void readTime(Number hour) {
        if (haveTime_ || hour.digits > 2) noDate();
        haveTime_ = true;
        date_.hour = hour.value;
        if (peek() == ':') {
            ++at_;
            date_.minute = shortNumber();
            if (peek() == ':') {
                ++at_;
                date_.second = shortNumber();
                if (peek() == '.' || peek() == ':') readFraction(peek() == '.');
            }
        }
        const int part = half();
        if (part == 0) return;
        if (date_.hour > 12 || (date_.hour == 0 && part == 2)) outOfRange();
        date_.hour = date_.hour % 12 + (part == 2 ? 12 : 0);
        skipBlanks();
        at_ += 2;
    }

    int shortNumber() {
        const Number result = number();
        if (result.digits > 2) noDate();
        return result.value;
    }

    void readFraction(bool decimal) {
        ++at_;
        const Number fraction = number();
        // ".5" is half a second, ":5" five milliseconds.
        const int most = to_ == Kind::date || to_ == Kind::time ? 7 : 3;
        if (fraction.digits > (decimal ? most : 3)) noDate();
        int value = fraction.value;
        if (decimal) {
            for (int digits = fraction.digits; digits < 3; ++digits)
                value *= 10;
            for (int digits = fraction.digits; digits > 3; --digits)
                value /= 10;
        }
        date_.millisecond = value;
    }

    void readTriple(Number first, char separator) {
        if (haveDay_ || namedMonth_) return readNamedTriple(first);
        ++at_;
        const Number second = number();
        if (peek() != separator || !isDigit(peek(1))) return noDate();
        ++at_;
        const Number third = number();
        if (first.digits == 4) return setDay(first.value, second, third);
        if (third.digits == 4) {
            return order_ == Order::dayFirst ? setDay(third.value, second, first) : setDay(third.value, first, second);
        }
        if (first.digits > 2 || third.digits > 2) noDate();
        switch (order_) {
            case Order::yearFirst:
                return setDay(centuryOf(first.value), second, third);
            case Order::monthFirst:
                return setDay(centuryOf(third.value), first, second);
            case Order::dayFirst:
                return setDay(centuryOf(third.value), second, first);
        }
    }

    // "Jan-2-2026", "2-Jan-2026": the sign only parts the numbers.
    void readNamedTriple(Number first) {
        if (haveDay_) noDate();
        ++at_;
        readPlainNumber(first);
    }

    void setDay(int year, Number month, Number day) {
        if (month.digits > 2 || day.digits > 2) noDate();
        date_.year = year;
        date_.month = month.value;
        date_.day = day.value;
        haveDay_ = true;
    }

    void readPlainNumber(Number value) {
        if (haveDay_) noDate();
        if (value.digits == 8) return setDay(value.value / 10000, {value.value / 100 % 100, 2}, {value.value % 100, 2});
        if (value.digits == 6) {
            return setDay(centuryOf(value.value / 10000), {value.value / 100 % 100, 2}, {value.value % 100, 2});
        }
        // A year alone, unless a month's name is still to come.
        if (value.digits == 4 && !namedMonth_ && namedCount_ == 0 && !isLetterAhead())
            return setDay(value.value, {1, 1}, {1, 1});
        if (namedCount_ == 2 || (value.digits != 4 && value.digits > 2)) noDate();
        named_[namedCount_++] = value;
        if (peek() == '-' || peek() == '/' || peek() == '.') ++at_;
    }

    bool isLetterAhead() const {
        std::size_t at = at_;
        while (at < text_.size() && (text_[at] == ' ' || text_[at] == '-'))
            ++at;
        return at < text_.size() && isLetter(text_[at]);
    }

    void finishNamedMonth() {
        if (!namedMonth_) {
            if (namedCount_ > 0) noDate();
            return;
        }
        if (namedCount_ == 0) noDate();
        // "Jan 2 2026", "2026 Jan 2", "Jan 2026".
        const bool yearFirst = named_[0].digits == 4;
        const Number year = yearFirst ? named_[0] : named_[1];
        const Number day = yearFirst ? named_[1] : named_[0];
        if (year.digits == 0) noDate();
        date_.year = year.digits == 4 ? year.value : centuryOf(year.value);
        date_.day = day.digits == 0 ? 1 : day.value;
    }

    void check() const {
        if (date_.year < 1 || date_.month < 1 || date_.month > 12 || date_.day < 1 ||
            date_.day > daysInMonth(date_.year, date_.month) || date_.hour > 23 || date_.minute > 59 ||
            date_.second > 59) {
            outOfRange();
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    Kind to_;
    std::string_view from_;
    Order order_;
    DateTime date_;
    bool haveDay_ = false;
    bool haveTime_ = false;
    bool namedMonth_ = false;
    Number named_[2];
    int namedCount_ = 0;
};

}  // namespace

std::optional<DateTime> readStored(std::string_view text) {
    static constexpr std::string_view kForm = "0000-00-00 00:00:00.000";
    if (text.size() != 19 && text.size() != 23) return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (kForm[i] == '0' ? !isDigit(text[i]) : text[i] != kForm[i]) return std::nullopt;
    }
    const auto number = [&text](std::size_t at, std::size_t count) {
        int value = 0;
        for (; count > 0; --count)
            value = value * 10 + (text[at++] - '0');
        return value;
    };
    DateTime date{number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(14, 2), number(17, 2), 0};
    if (text.size() == 23) date.millisecond = number(20, 3);
    if (date.year < 1 || date.month < 1 || date.month > 12 || date.day < 1 ||
        date.day > daysInMonth(date.year, date.month) || date.hour > 23 || date.minute > 59 || date.second > 59) {
        return std::nullopt;
    }
    return date;
}

DateTime readDate(std::string_view text, Kind to, std::string_view from, int style) {
    return DateReader(trimmed(text), to, from, style).read();
}

}  // namespace orvenmod::store::tsql
