#include "store/tsql/shape.h"

#include <algorithm>

#include "store/tsql/lexer.h"
#include "store/tsql/like.h"

namespace orvenmod::store::tsql {
namespace {

// Marks a literal's place in the key; it can't stand in a statement outside of quotes.
constexpr char kMark = '\x01';

/// As patterns, texts are translated by two properties: no index serves one that begins with a wildcard, and a plain
/// one needs less to be matched. So "like 'A%'", "like '%A'" and "like '%A%'" are three kinds.
char textKind(std::string_view text, std::string_view kinds) {
    const bool wildcard = !text.empty() && (text[0] == '%' || text[0] == '_' || text[0] == '[');
    return kinds[(wildcard ? 1U : 0U) + (isPlainPattern(text) ? 2U : 0U)];
}

void appendKind(std::string& key, const Literal& literal) {
    // A decimal's digits decide the type of what is calculated with it, so that 1.5 and 1.25 are two kinds.
    const auto append = [&key](char kind) {
        const char marked[] = {kMark, kind, kMark};
        key.append(marked, sizeof marked);
    };
    switch (literal.kind) {
        case LiteralKind::integer:
            return append('i');
        case LiteralKind::decimal:
            key += kMark;
            key += 'd';
            key += std::to_string(literal.precision);
            key += '.';
            key += std::to_string(literal.scale);
            key += kMark;
            return;
        case LiteralKind::real:
            return append('r');
        case LiteralKind::money:
            return append('$');
        case LiteralKind::text:
            return append(textKind(literal.text, "swpq"));
        case LiteralKind::nationalText:
            return append(textKind(literal.text, "nmuv"));
        case LiteralKind::binary:
            return append('b');
    }
}

int characters(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

}  // namespace

std::string Literal::value() const {
    if (!doubledQuotes) {
        return std::string(text);
    }
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        if (text[i] == '\'') {
            ++i;
        }
    }
    return result;
}

Type Literal::type() const {
    const std::string plain = kind == LiteralKind::text || kind == LiteralKind::nationalText ? value() : std::string();
    const int count = characters(plain);
    const int wide = static_cast<int>(
        std::count_if(plain.begin(), plain.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xC0; }));
    switch (kind) {
        case LiteralKind::integer:
            return typeOf(Kind::integer);
        case LiteralKind::decimal:
            return decimalType(precision, scale);
        case LiteralKind::real:
            return typeOf(Kind::floating);
        case LiteralKind::money:
            return typeOf(Kind::money);
        case LiteralKind::text:
            return textType(Kind::varchar, std::max(1, count + wide));
        case LiteralKind::nationalText:
            return textType(Kind::nvarchar, std::max(1, count));
        case LiteralKind::binary:
            return textType(Kind::varbinary, std::max(1, static_cast<int>(text.size() + 1) / 2));
    }
    return {};
}

void Shape::scan(std::string_view sql) {
    key.clear();
    literals.clear();
    Lexer lexer(sql);
    std::size_t copied = 0;
    while (true) {
        // Most of a text is no literal and is never made a token.
        lexer.skipPlain();
        const Token token = lexer.next();
        if (token.kind == Token::Kind::end) {
            key.append(sql, copied, token.offset - copied);
            return;
        }
        if (token.kind == Token::Kind::literal) {
            key.append(sql, copied, token.offset - copied);
            appendKind(key, token.literal);
            literals.push_back(token.literal);
            copied = token.offset + token.text.size();
        }
    }
}

}  // namespace orvenmod::store::tsql
