#include "store/tsql/viewtext.h"

#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {
namespace {

constexpr std::string_view kOpening = "/*orven ";
constexpr std::string_view kClosing = "*/ ";

}  // namespace

std::string keptViewText(std::string_view sql) {
    std::string text(kOpening);
    for (std::size_t i = 0; i < sql.size(); ++i) {
        text += sql[i];
        if (sql[i] == '\\' || (sql[i] == '*' && i + 1 < sql.size() && sql[i + 1] == '/')) {
            text += '\\';
        }
    }
    return text + "*/";
}

std::string storedViewText(std::string_view storedSql) {
    const std::size_t opening = storedSql.find(kOpening);
    const std::size_t closing = storedSql.find("*/", opening == std::string_view::npos ? 0 : opening);
    if (opening == std::string_view::npos || closing == std::string_view::npos) {
        return "";
    }
    const std::string_view kept = storedSql.substr(opening + kOpening.size(), closing - opening - kOpening.size());
    std::string text;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        text += kept[i];
        const bool escaped = kept[i] == '\\' || (kept[i] == '*' && kept.substr(i + 1, 2) == "\\/");
        i += escaped ? 1 : 0;
    }
    return text;
}

std::string storedViewQuery(std::string_view storedSql) {
    const std::size_t opening = storedSql.find(kOpening);
    const std::size_t closing = storedSql.find(kClosing, opening == std::string_view::npos ? 0 : opening);
    if (opening == std::string_view::npos || closing == std::string_view::npos) {
        return "";
    }
    return std::string(storedSql.substr(closing + kClosing.size()));
}

}  // namespace orvenmod::store::tsql
