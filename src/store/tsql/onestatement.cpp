#include "store/tsql/onestatement.h"

#include <algorithm>
#include <array>

#include "store/tsql/error.h"
#include "store/tsql/parser.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {
namespace {

// Words that open a statement, sorted. `add` and `trigger` do so behind a word that is none: add signature, disable
// trigger.
constexpr std::array kOpening = std::to_array<std::string_view>(
    {"add",      "alter",      "backup", "begin",      "break",    "bulk",        "checkpoint", "close",   "commit",
     "continue", "create",     "dbcc",   "deallocate", "declare",  "delete",      "deny",       "drop",    "dump",
     "exec",     "execute",    "fetch",  "goto",       "grant",    "if",          "insert",     "kill",    "load",
     "merge",    "open",       "print",  "raiserror",  "readtext", "reconfigure", "restore",    "return",  "revert",
     "revoke",   "rollback",   "save",   "select",     "set",      "setuser",     "shutdown",   "trigger", "truncate",
     "update",   "updatetext", "use",    "waitfor",    "while",    "writetext"});
static_assert(std::is_sorted(kOpening.begin(), kOpening.end()));

constexpr std::size_t kShortestOpening = 2;
constexpr std::size_t kLongestOpening = 11;

enum class Times { once, any };

/// Where such a word belongs within a statement: the word, which statement, what stands in front. Empty for any.
struct Place {
    std::string_view word;
    std::string_view first;
    std::string_view previous;
    Times times = Times::any;
    std::string_view second{};          ///< of the statement
    std::string_view beforePrevious{};  ///< two in front
};

constexpr Place kPlaces[] = {
    {"select", "", "union"},
    {"select", "", "all", Times::any, "", "union"},
    {"select", "", "except"},
    {"select", "", "intersect"},
    {"select", "insert", "", Times::once},
    {"set", "update", "", Times::once},
    {"select", "with", ")", Times::once},
    {"insert", "with", ")", Times::once},
    {"update", "with", ")", Times::once},
    {"delete", "with", ")", Times::once},
    {"fetch", "", "row"},
    {"fetch", "", "rows"},
    // create or alter; the body of a view
    {"alter", "create", "or"},
    {"", "create", "as"},
    {"", "alter", "as"},
    {"trigger", "create", "create"},
    {"trigger", "create", "alter"},
    {"trigger", "alter", "alter"},
    {"trigger", "drop", "drop"},
    {"trigger", "enable", "enable"},
    {"trigger", "disable", "disable"},
    // references t(id) on delete set null
    {"delete", "alter", "on", Times::any, "table"},
    {"update", "alter", "on", Times::any, "table"},
    {"set", "alter", "delete", Times::any, "table"},
    {"set", "alter", "update", Times::any, "table"},
    {"if", "drop", "table"},
    {"if", "drop", "view"},
    {"if", "drop", "index"},
    {"if", "drop", "procedure"},
    {"if", "alter", "column"},
    {"if", "alter", "constraint"},
    // grant select, insert on t to u with grant option
    {"", "grant", "grant"},
    {"", "grant", ","},
    {"grant", "grant", "with"},
    {"", "deny", "deny"},
    {"", "deny", ","},
    {"", "revoke", "revoke"},
    {"", "revoke", ","},
    {"", "revoke", "for"},
};

// alter table t add .., drop .., alter column ..: right behind the name, or behind its with check.
constexpr std::string_view kAlterActions[] = {"add", "alter", "drop", "set"};

// What leaves nothing in the session behind.
constexpr std::string_view kPlainStatements[] = {"select", "insert",   "update", "delete", "create",   "alter",
                                                 "drop",   "truncate", "begin",  "commit", "rollback", "("};

constexpr std::string_view kChanges[] = {"insert", "update",   "delete", "create", "alter",
                                         "drop",   "truncate", "begin",  "commit", "rollback"};

bool isOpening(const Token& token) {
    if (token.text.size() < kShortestOpening || token.text.size() > kLongestOpening) return false;
    std::array<char, kLongestOpening> lower{};
    std::transform(token.text.begin(), token.text.end(), lower.begin(), [](char c) { return asciiLower(c); });
    return std::binary_search(kOpening.begin(), kOpening.end(), std::string_view(lower.data(), token.text.size()));
}

bool is(const Token& token, std::string_view text) {
    return token.kind != Token::Kind::quotedName && token.kind != Token::Kind::literal && sameName(token.text, text);
}

bool isName(const Token& token) {
    return token.kind == Token::Kind::quotedName ||
           (token.kind == Token::Kind::word && !isReservedWord(lowerName(token.text)));
}

template <typename Words>
bool isOneOf(const Token& token, const Words& words) {
    return std::any_of(std::begin(words), std::end(words), [&](std::string_view word) { return is(token, word); });
}

bool isTransactionWord(const Token& token) { return token.isWord("tran") || token.isWord("transaction"); }

bool isTemporaryName(const Token& token) {
    return token.text.starts_with('#') || token.text.starts_with("[#") || token.text.starts_with("\"#");
}

// Blanks that are no blanks to the dialect, and so parts of a name.
bool isForeignBlank(char32_t c) {
    return c == 0x85 || c == 0xA0 || c == 0x1680 || c == 0x180E || (c >= 0x2000 && c <= 0x200F) ||
           (c >= 0x2028 && c <= 0x202F) || (c >= 0x205F && c <= 0x206F) || c == 0xFEFF;
}

bool holdsForeignBlank(std::string_view word) {
    for (std::size_t at = 0; at < word.size();) {
        if (isForeignBlank(nextCharacter(word, at))) return true;
    }
    return false;
}

// The signs of money of the dialect, beyond the dollar.
bool isCurrency(char32_t c) {
    return (c >= 0xA2 && c <= 0xA5) || c == 0x9F2 || c == 0x9F3 || c == 0xE3F || c == 0x17DB ||
           (c >= 0x20A0 && c <= 0x20CF) || c == 0xFDFC || c == 0xFE69 || c == 0xFF04 || (c >= 0xFFE0 && c <= 0xFFE6);
}

// Whether a server reads the beginning of the word as a number: 1e and a sign of money are one, without any digit
// behind them, so that it finds an opening word in 1edelete.
bool beginsAsNumber(const Token& word, const Token& previous) {
    std::size_t at = 0;
    if (isCurrency(nextCharacter(word.text, at))) return true;
    constexpr std::array kNumbers = {LiteralKind::integer, LiteralKind::decimal, LiteralKind::real, LiteralKind::money};
    const bool number = previous.kind == Token::Kind::literal &&
                        std::find(kNumbers.begin(), kNumbers.end(), previous.literal.kind) != kNumbers.end();
    return number && previous.offset + previous.text.size() == word.offset && asciiLower(word.text.front()) == 'e';
}

bool beyondAscii(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

}  // namespace

// Broken bytes must not reach a driver: one that takes a quote for the rest of a character would read another
// statement than the one that was looked at here.
void requireText(std::string_view text) {
    constexpr std::array<char32_t, 5> kLeast = {0, 1, 0x80, 0x800, 0x10000};
    constexpr char32_t kLast = 0x10FFFF;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != '\0' && (text[at] & 0x80) == 0) {
            ++at;
            continue;
        }
        const std::size_t start = at;
        const char32_t character = nextCharacter(text, at);
        const bool half = character >= 0xD800 && character <= 0xDFFF;
        if (half || character < kLeast[at - start] || character > kLast) throw Error(kNoText);
    }
}

void OneStatement::scan(std::string_view sql) {
    *this = OneStatement();
    requireText(sql);
    Lexer lexer(sql);
    for (Token token = lexer.next(); token.kind != Token::Kind::end; token = lexer.next())
        take(token);
    if (tokens_ == 0) throw Error(kSyntaxNear, {""});
}

void OneStatement::take(const Token& token) {
    if (++tokens_ == 1) {
        first_ = token;
        alters_ = is(token, "alter");
        inserts_ = is(token, "insert");
    }
    if (tokens_ == 2) second_ = token;
    // A begin or a commit with a name is one too, and would pass by the connection's own count.
    const bool begins = is(first_, "begin");
    const bool whole = tokens_ == 2 && (isTransactionWord(token) || (!begins && token.isWord("work")));
    if (tokens_ > 1 && !whole && (begins || is(first_, "commit"))) throw Error(kSyntaxNear, {std::string(token.text)});
    if (token.isSymbol("(")) ++depth_;
    if (token.isSymbol(")")) --depth_;
    if (token.kind == Token::Kind::word) takeWord(token);
    if (token.kind == Token::Kind::quotedName && tokens_ > 2 && !previous_.isSymbol(".")) ++names_;
    if (token.kind == Token::Kind::literal && token.literal.kind == LiteralKind::text &&
        beyondAscii(token.literal.text)) {
        wideTexts_.push_back(token.literal.text);
    }
    if (tokens_ == 1) touchesSession_ = !isOneOf(token, kPlainStatements);
    if (depth_ == 0 && is(token, "into")) intoTable_ = true;
    if (isTemporaryName(token)) touchesSession_ = true;
    beforePrevious_ = previous_;
    previous_ = token;
}

void OneStatement::takeWord(const Token& token) {
    // A server that takes one for a blank would find an opening word behind it.
    if (beyondAscii(token.text) && holdsForeignBlank(token.text)) throw Error(kSyntaxNear, {std::string(token.text)});
    if (beginsAsNumber(token, previous_)) throw Error(kSyntaxNear, {std::string(token.text)});
    if (isOpening(token)) {
        if (tokens_ > 1 && !belongs(token)) throw Error(kSyntaxNearKeyword, {std::string(token.text)});
        if (depth_ == 0 && is(first_, "with") && is(previous_, ")")) {
            first_ = token;  // with a as (..) insert: an insert from here on
            inserts_ = is(token, "insert");
            spent_ = false;
            return;
        }
        if (inserts_ && tokens_ > 1) spent_ = true;
        if (is(first_, "update") && is(token, "set")) spent_ = true;
    } else if (inserts_ && (is(token, "values") || is(token, "default"))) {
        spent_ = true;
    } else if (alters_ && tokens_ > 2 && !previous_.isSymbol(".") && isName(token)) {
        ++names_;
    }
}

bool OneStatement::belongs(const Token& token) const {
    // No statement ends within brackets. What changes rows there would be an insert's source.
    if (depth_ > 0) {
        constexpr std::string_view kRowChanges[] = {"insert", "update", "delete", "merge"};
        return !previous_.isSymbol("(") || !isOneOf(token, kRowChanges);
    }
    const auto agrees = [](std::string_view word, const Token& with) { return word.empty() || is(with, word); };
    return isAlterAction(token) || std::any_of(std::begin(kPlaces), std::end(kPlaces), [&](const Place& place) {
               return agrees(place.word, token) && (place.times == Times::any || !spent_) &&
                      agrees(place.first, first_) && agrees(place.second, second_) &&
                      agrees(place.previous, previous_) && agrees(place.beforePrevious, beforePrevious_);
           });
}

bool OneStatement::isAlterAction(const Token& token) const {
    if (!alters_) return false;
    if (isOneOf(token, kAlterActions))
        return names_ == 1 && (isName(previous_) || is(previous_, "check") || is(previous_, "nocheck"));
    // alter table t disable trigger x
    const bool switches = is(previous_, "enable") || is(previous_, "disable");
    return is(token, "trigger") && switches && names_ == 2 && isName(beforePrevious_);
}

bool OneStatement::mayGiveRows() const { return !isOneOf(first_, kChanges) && !(is(first_, "select") && intoTable_); }

OneStatement::Control OneStatement::control() const {
    const bool whole = tokens_ == 2 && (isTransactionWord(second_) || second_.isWord("work"));
    if (is(first_, "begin")) return tokens_ == 2 && isTransactionWord(second_) ? Control::begin : Control::none;
    if (tokens_ != 1 && !whole) return Control::none;
    if (is(first_, "commit")) return Control::commit;
    return is(first_, "rollback") ? Control::rollback : Control::none;
}

}  // namespace orvenmod::store::tsql
