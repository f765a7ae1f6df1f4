#include "store/tsql/objectname.h"

#include "store/tsql/error.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {

std::vector<std::string> objectNameParts(std::string_view text) {
    std::vector<std::string> parts(1);
    try {
        Lexer lexer(text);
        for (Token token = lexer.next(); token.kind != Token::Kind::end; token = lexer.next()) {
            const bool name = token.kind == Token::Kind::word || token.kind == Token::Kind::quotedName;
            if (token.isSymbol(".")) {
                parts.emplace_back();
            } else if (name && parts.back().empty()) {
                parts.back() = token.name();
            } else {
                return {};
            }
        }
    } catch (const Error&) {
        return {};
    }
    return parts.back().empty() ? std::vector<std::string>() : parts;
}

std::string bracketed(std::string_view name) {
    std::string result = "[";
    for (const char c : name)
        result += c == ']' ? std::string("]]") : std::string(1, c);
    return result + "]";
}

}  // namespace orvenmod::store::tsql
