#include "store/sqlite/createtext.h"

#include <algorithm>
#include <span>
#include <utility>

#include "store/tsql/lexer.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::sameName;

/// A word, a quoted name or a bracket with all in it: what stands at the top of a text.
struct Piece {
    enum class Kind { word, quoted, bracket, symbol };

    Kind kind = Kind::symbol;
    std::string_view text;  ///< of a quoted name and of a bracket without the signs around it

    bool isWord(std::string_view word) const { return kind == Kind::word && sameName(text, word); }
    bool isComma() const { return kind == Kind::symbol && text == ","; }
    bool isName() const { return kind == Kind::word || kind == Kind::quoted; }
};
using Pieces = std::vector<Piece>;

constexpr std::string_view kBlanks = " \t\r\n";

bool isNamePart(char c) {
    return static_cast<unsigned char>(c) >= 0x80 || c == '_' || c == '$' || (c >= '0' && c <= '9') ||
           (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Behind the sign that ends what begins at `at`; a doubled one is part of it.
std::size_t behindQuoted(std::string_view text, std::size_t at, char closing) {
    for (++at; at < text.size(); ++at) {
        if (text[at] != closing) continue;
        const bool doubled = closing != ']' && at + 1 < text.size() && text[at + 1] == closing;
        if (!doubled) return at + 1;
        ++at;
    }
    return text.size();
}

/// Behind a comment or a quoted text that begins at `at`; `at` itself where none does.
std::size_t behindOpaque(std::string_view text, std::size_t at) {
    const auto behind = [&](std::string_view end) {
        const std::size_t found = text.find(end, at + 2);
        return found == std::string_view::npos ? text.size() : found + end.size();
    };
    if (text.substr(at).starts_with("/*")) return behind("*/");
    if (text.substr(at).starts_with("--")) return behind("\n");
    const char c = text[at];
    if (c == '"' || c == '\'' || c == '`' || c == '[') return behindQuoted(text, at, c == '[' ? ']' : c);
    return at;
}

std::size_t behindBracket(std::string_view text, std::size_t at) {
    int depth = 0;
    while (at < text.size()) {
        const std::size_t behind = behindOpaque(text, at);
        if (behind > at) {
            at = behind;
            continue;
        }
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        ++at;
        if (depth == 0) break;
    }
    return at;
}

std::string_view inner(std::string_view text) { return text.substr(1, text.size() < 2 ? 0 : text.size() - 2); }

Pieces piecesOf(std::string_view text) {
    Pieces pieces;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (kBlanks.find(c) != std::string_view::npos) {
            ++at;
            continue;
        }
        std::size_t end = behindOpaque(text, at);
        if (end > at) {
            const bool comment = c == '/' || c == '-';
            const auto kind = c == '\'' ? Piece::Kind::symbol : Piece::Kind::quoted;
            if (!comment) pieces.push_back({kind, inner(text.substr(at, end - at))});
        } else if (c == '(') {
            end = behindBracket(text, at);
            pieces.push_back({Piece::Kind::bracket, inner(text.substr(at, end - at))});
        } else if (isNamePart(c)) {
            end = at;
            while (end < text.size() && isNamePart(text[end]))
                ++end;
            pieces.push_back({Piece::Kind::word, text.substr(at, end - at)});
        } else {
            end = at + 1;
            pieces.push_back({Piece::Kind::symbol, text.substr(at, 1)});
        }
        at = end;
    }
    return pieces;
}

std::vector<Pieces> separated(const Pieces& pieces) {
    std::vector<Pieces> items(1);
    for (const Piece& piece : pieces) {
        if (piece.isComma()) {
            items.emplace_back();
        } else {
            items.back().push_back(piece);
        }
    }
    return items;
}

std::string nameOf(const Piece& piece) {
    std::string name;
    for (std::size_t i = 0; i < piece.text.size(); ++i) {
        name += piece.text[i];
        const bool doubled = piece.kind == Piece::Kind::quoted && piece.text.substr(i).starts_with("\"\"");
        i += doubled ? 1 : 0;
    }
    return name;
}

/// The text of the first bracket; "" for none.
std::string_view firstBracket(std::span<const Piece> pieces) {
    const auto found = std::find_if(pieces.begin(), pieces.end(),
                                    [](const Piece& piece) { return piece.kind == Piece::Kind::bracket; });
    return found == pieces.end() ? std::string_view() : found->text;
}

/// length(rtrim("a")), ("a" GLOB '*[^0-9]*')
bool isLengthOrSigns(const Pieces& pieces) {
    if (pieces.size() == 2 && pieces[0].isWord("length")) return pieces[1].kind == Piece::Kind::bracket;
    if (pieces.size() != 1 || pieces[0].kind != Piece::Kind::bracket) return false;
    const Pieces compared = piecesOf(pieces[0].text);
    return compared.size() == 3 && compared[1].isWord("glob");
}

/// What begins a constraint of the table's own.
bool isConstraintWord(const Piece& piece) {
    return piece.isWord("constraint") || piece.isWord("primary") || piece.isWord("unique") || piece.isWord("check") ||
           piece.isWord("foreign");
}

IndexPart partOf(const Pieces& pieces) {
    IndexPart part;
    part.compared = pieces.size() > 1 && pieces[0].isWord("rtrim") && pieces[1].kind == Piece::Kind::bracket;
    part.derived = isLengthOrSigns(pieces);
    const Pieces wrapped = part.compared ? piecesOf(pieces[1].text) : pieces;
    part.key.column = wrapped.empty() ? "" : nameOf(wrapped.front());
    part.key.descending =
        std::any_of(pieces.begin(), pieces.end(), [](const Piece& piece) { return piece.isWord("desc"); });
    return part;
}

std::vector<KeyPart> keyParts(std::string_view bracket) {
    std::vector<KeyPart> parts;
    for (const Pieces& pieces : separated(piecesOf(bracket)))
        parts.push_back(partOf(pieces).key);
    return parts;
}

/// The constraints of one column or the table's own one.
void readItem(const Pieces& pieces, std::vector<ConstraintText>& constraints) {
    std::string name;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const std::span<const Piece> rest = std::span(pieces).subspan(i + 1);
        if (pieces[i].isWord("constraint") && !rest.empty() && rest.front().isName()) {
            name = nameOf(rest.front());
            ++i;
        } else if (pieces[i].isWord("check")) {
            constraints.push_back(
                {ConstraintText::Kind::check, std::exchange(name, ""), {}, std::string(firstBracket(rest))});
        } else if (pieces[i].isWord("references")) {
            constraints.push_back({ConstraintText::Kind::foreign, std::exchange(name, ""), {}, {}});
            return;
        } else if (pieces[i].isWord("primary") || pieces[i].isWord("unique")) {
            const bool primary = pieces[i].isWord("primary");
            const std::size_t words = primary ? 1 : 0;
            const bool bracketed = rest.size() > words && rest[words].kind == Piece::Kind::bracket;
            constraints.push_back({primary ? ConstraintText::Kind::primary : ConstraintText::Kind::unique,
                                   std::exchange(name, ""),
                                   bracketed ? keyParts(rest[words].text) : std::vector<KeyPart>{{nameOf(pieces[0])}},
                                   {}});
        }
    }
}

}  // namespace

std::vector<ConstraintText> constraintsOf(std::string_view createTable) {
    std::vector<ConstraintText> constraints;
    for (const Pieces& item : separated(piecesOf(firstBracket(piecesOf(createTable)))))
        readItem(item, constraints);
    return constraints;
}

std::size_t endOfColumns(std::string_view createTable) {
    const Pieces pieces = piecesOf(createTable);
    // "CREATE TABLE" name bracket
    if (pieces.size() != 4 || pieces.back().kind != Piece::Kind::bracket) return 0;
    const std::string_view all = pieces.back().text;
    const char* end = all.data() + all.size();
    const Piece* comma = nullptr;
    const Pieces inside = piecesOf(all);
    for (const Piece& piece : inside) {
        if (comma != nullptr && isConstraintWord(piece)) {
            end = comma->text.data();
            break;
        }
        comma = piece.isComma() ? &piece : nullptr;
    }
    return static_cast<std::size_t>(end - createTable.data());
}

std::vector<IndexPart> indexPartsOf(std::string_view createIndex) {
    std::vector<IndexPart> parts;
    for (const Pieces& pieces : separated(piecesOf(firstBracket(piecesOf(createIndex)))))
        parts.push_back(partOf(pieces));
    return parts;
}

std::optional<tsql::CodeIndex> codeIndexOf(std::string_view createIndex) {
    if (createIndex.find(" GLOB ") == std::string_view::npos) return std::nullopt;
    const std::vector<IndexPart> parts = indexPartsOf(createIndex);
    const auto derived = std::find_if(parts.begin(), parts.end(), [](const IndexPart& part) { return part.derived; });
    // Both derived ones and the code itself.
    if (parts.end() - derived != 3 || !(derived + 1)->derived) return std::nullopt;
    tsql::CodeIndex index;
    for (auto part = parts.begin(); part != derived; ++part)
        index.within.push_back(part->key.column);
    index.code = parts.back().key.column;
    return index;
}

}  // namespace orvenmod::store::sqlite
