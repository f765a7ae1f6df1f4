// Functions of texts, as translated statements call them.
//
// What a server does with a text stands in tsql/functions_text.cpp, for any target; here its arguments are unpacked,
// and two things are decided that belong to the call: whether a null makes the result null, and which arguments may be
// left out. Most functions are strict and never see a null; an open one does.
//
//   ts_left('abc', null)       null, and leftPart isn't asked
//   ts_concat('a', null, 'b')  ab
//   ts_isnumeric(null)         0
#include <cstdio>
#include <random>

#include "store/sqlite/functioncall.h"
#include "store/tsql/functions.h"
#include "store/tsql/like.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::sqlite {

namespace {

std::int64_t optional(const FunctionCall& call, int i, std::int64_t fallback) {
    return call.count() > i ? call.integer(i) : fallback;
}

void like(FunctionCall& call) {
    char32_t escape = 0;
    if (call.count() > 2) {
        const std::string_view text = call.text(2);
        std::size_t at = 0;
        if (!text.empty()) escape = tsql::nextCharacter(text, at);
        if (at != text.size() || text.empty()) throw tsql::Error(tsql::kEscapeCharacter, {std::string(text)});
    }
    call.give(std::int64_t{tsql::like(call.text(0), call.text(1), escape)});
}

void left(FunctionCall& call) { call.give(tsql::leftPart(call.text(0), call.integer(1))); }
void right(FunctionCall& call) { call.give(tsql::rightPart(call.text(0), call.integer(1))); }
void substring(FunctionCall& call) { call.give(tsql::substring(call.text(0), call.integer(1), call.integer(2))); }
void replace(FunctionCall& call) {
    call.give(std::string_view(tsql::replaceAll(call.text(0), call.text(1), call.text(2))));
}
void charIndex(FunctionCall& call) { call.give(tsql::charIndex(call.text(0), call.text(1), optional(call, 2, 1))); }
void patternIndex(FunctionCall& call) {
    call.give(static_cast<std::int64_t>(tsql::patternIndex(call.text(0), call.text(1))));
}
void reverse(FunctionCall& call) { call.give(std::string_view(tsql::reversed(call.text(0)))); }
void replicate(FunctionCall& call) {
    if (call.integer(1) < 0) return call.giveNull();
    call.give(std::string_view(tsql::replicated(call.text(0), call.integer(1))));
}
void space(FunctionCall& call) {
    if (call.integer(0) < 0) return call.giveNull();
    call.give(std::string_view(tsql::replicated(" ", call.integer(0))));
}
void stuff(FunctionCall& call) {
    if (call.isNull(0) || call.isNull(1) || call.isNull(2)) return call.giveNull();
    const auto result = tsql::stuffed(call.text(0), call.integer(1), call.integer(2), call.text(3));
    if (!result) return call.giveNull();
    call.give(std::string_view(*result));
}
void str(FunctionCall& call) {
    call.give(std::string_view(tsql::strOf(call.real(0), optional(call, 1, 10), optional(call, 2, 0))));
}
void upper(FunctionCall& call) { call.give(std::string_view(tsql::upperText(call.text(0)))); }
void lower(FunctionCall& call) { call.give(std::string_view(tsql::lowerText(call.text(0)))); }

void unicode(FunctionCall& call) {
    const std::string_view text = call.text(0);
    if (text.empty()) return call.giveNull();
    std::size_t at = 0;
    call.give(static_cast<std::int64_t>(tsql::nextCharacter(text, at)));
}

// Beyond ASCII the code page would decide; '?' is what it gives for a character that it lacks.
void ascii(FunctionCall& call) {
    const std::string_view text = call.text(0);
    if (text.empty()) return call.giveNull();
    call.give(std::int64_t{static_cast<unsigned char>(text[0]) < 0x80 ? text[0] : '?'});
}

void character(FunctionCall& call, std::int64_t greatest) {
    const std::int64_t code = call.integer(0);
    if (code < 0 || code > greatest) return call.giveNull();
    std::string text;
    tsql::appendCharacter(text, static_cast<char32_t>(code));
    call.give(std::string_view(text));
}
void charOf(FunctionCall& call) { character(call, 255); }
void ncharOf(FunctionCall& call) { character(call, 65535); }

void quoteName(FunctionCall& call) {
    const auto result = tsql::quotedName(call.text(0), call.count() > 1 ? call.text(1) : "[");
    if (!result) return call.giveNull();
    call.give(std::string_view(*result));
}

void concat(FunctionCall& call) {
    std::string result;
    for (int i = 0; i < call.count(); ++i) {
        if (!call.isNull(i)) result.append(call.text(i));
    }
    call.give(std::string_view(result));
}

void isNumeric(FunctionCall& call) { call.give(std::int64_t{!call.isNull(0) && tsql::isNumeric(call.text(0))}); }
void isDate(FunctionCall& call) { call.give(std::int64_t{!call.isNull(0) && tsql::isDate(call.text(0))}); }
void soundex(FunctionCall& call) { call.give(std::string_view(tsql::soundex(call.text(0)))); }
void difference(FunctionCall& call) {
    const std::string first = tsql::soundex(call.text(0));
    const std::string second = tsql::soundex(call.text(1));
    std::int64_t same = 0;
    for (std::size_t i = 0; i < first.size(); ++i)
        same += first[i] == second[i];
    call.give(same);
}

void newId(FunctionCall& call) {
    std::random_device random;
    const auto part = [&random](unsigned mask) { return static_cast<unsigned>(random()) & mask; };
    char text[40];
    const int length = std::snprintf(text, sizeof text, "%08X-%04X-4%03X-%04X-%08X%04X", part(0xFFFFFFFF), part(0xFFFF),
                                     part(0xFFF), part(0x3FFF) | 0x8000, part(0xFFFFFFFF), part(0xFFFF));
    call.give(std::string_view(text, static_cast<std::size_t>(length)));
}

constexpr FunctionEntry kEntries[] = {
    strict<like>("ts_like", 2),
    strict<like>("ts_like", 3),
    strict<left>("ts_left", 2),
    strict<right>("ts_right", 2),
    strict<substring>("ts_substring", 3),
    strict<replace>("ts_replace", 3),
    strict<charIndex>("ts_charindex", 2),
    strict<charIndex>("ts_charindex", 3),
    strict<patternIndex>("ts_patindex", 2),
    strict<reverse>("ts_reverse", 1),
    strict<replicate>("ts_replicate", 2),
    strict<space>("ts_space", 1),
    open<stuff>("ts_stuff", 4),
    strict<str>("ts_str", -1),
    strict<upper>("ts_upper", 1),
    strict<lower>("ts_lower", 1),
    strict<ascii>("ts_ascii", 1),
    strict<charOf>("ts_char", 1),
    strict<unicode>("ts_unicode", 1),
    strict<ncharOf>("ts_nchar", 1),
    strict<quoteName>("ts_quotename", -1),
    open<concat>("ts_concat", -1),
    open<isNumeric>("ts_isnumeric", 1),
    open<isDate>("ts_isdate", 1),
    strict<soundex>("ts_soundex", 1),
    strict<difference>("ts_difference", 2),
    strict<newId>("ts_newid", 0, Results::varying),
};

}  // namespace

void registerTextFunctions(sqlite3* database, Runtime& runtime) { registerEntries(database, runtime, kEntries); }

}  // namespace orvenmod::store::sqlite
