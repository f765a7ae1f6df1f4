#include "support/serverdifferences.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <regex>
#include <string_view>

namespace orvenmod::test {

namespace {

// Patterns of both. Names come back in small letters there.
struct Wording {
    const char* told;
    const char* expected;
};
constexpr Wording kWordings[] = {
    {R"(relation "[^"]*" does not exist)", "对象名 '.*' 无效。"},
    {R"(column [^ ]*( of relation "[^"]*")? does not exist)", "列名 '.*' 无效。"},
    {R"(column "[^"]*" of relation "[^"]*" already exists)", "各表中的列名必须唯一。.*"},
    {R"(column "[^"]*" specified more than once)", "各视图或函数中的列名必须唯一。.*"},
    {R"(missing FROM-clause entry for table "[^"]*")", "无法绑定由多个部分组成的标识符 .*"},
    {R"(view "[^"]*" does not exist)", "无法对视图“.*”执行删除.*"},
    {R"(relation "[^"]*" already exists)", "数据库中已存在名为 '.*' 的对象。"},
    {R"(value too long for type character varying\(\d+\))", "将在表“.*”的列“.*”中截断字符串或二进制数据。(.|\n)*"},
    {R"((integer|smallint|value "[^"]*" is) out of range( for type \w+)?)", ".*溢出.*"},
    {R"(invalid input syntax for type \w+: (.|\n)*)", ".*转换.*时(出错|失败)。"},
    {R"(date/time field value out of range: .*)", ".*转换产生一个超出范围的值。"},
    {R"(duplicate key value violates unique constraint .*)", ".*插入重复键.*"},
    {R"(已超过了锁请求超时时段。\n(.|\n)*)", "已超过了锁请求超时时段。"},
    {R"(syntax error near (.|\n)*)", "(.|\n)*(附近有语法错误|后的引号不完整)。"},
    {R"(unterminated quoted string (.|\n)*)", "(.|\n)*(附近有语法错误|后的引号不完整)。"},
};

// A server that is ended while it sends can't always say farewell.
constexpr const char* kLoss =
    "与服务器“.*”的连接已中断，没有完成的操作已经撤销。请重试。\n(会话已被管理员终止。|服务器关闭了连接。)\n.*";

bool bothTellALoss(const std::string& told, const std::string& expected) {
    const std::regex loss(kLoss);
    return std::regex_match(told, loss) && std::regex_match(expected, loss);
}

bool isOverOdbc() {
    const char* store = std::getenv("ORVEN_TEST_STORE");
    return store != nullptr && std::string_view(store) == "tds";
}

}  // namespace

bool isServersWordingOf(const std::string& told, const std::string& expected) {
    if (bothTellALoss(told, expected)) return true;
    return isOverOdbc() && std::any_of(std::begin(kWordings), std::end(kWordings), [&](const Wording& wording) {
               return std::regex_match(told, std::regex(wording.told)) &&
                      std::regex_match(expected, std::regex(wording.expected));
           });
}

}  // namespace orvenmod::test
