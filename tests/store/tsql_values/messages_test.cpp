#include "store/tsql/messages.h"

#include <gtest/gtest.h>

#include "store/tsql/messagetable.h"

namespace orvenmod::store::tsql {
namespace {

Failure chinese(int number, std::vector<std::string> arguments = {}) {
    return worded(Language::chinese, number, arguments);
}

TEST(Messages, AreWordedAsTheChineseEditionWordsThem) {
    EXPECT_EQ(chinese(245, {"varchar", "abc", "int"}).text(), "在将 varchar 值 'abc' 转换成数据类型 int 时失败。");
    EXPECT_EQ(chinese(208, {"tblNo"}).text(), "对象名 'tblNo' 无效。");
    EXPECT_EQ(chinese(207, {"fNo"}).text(), "列名 'fNo' 无效。");
    EXPECT_EQ(chinese(102, {"x"}).text(), "'x' 附近有语法错误。");
    EXPECT_EQ(chinese(8134).text(), "遇到以零作除数错误。");
    EXPECT_EQ(chinese(3903).text(), "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。");
    EXPECT_EQ(chinese(3701, {"drop", "table", "t"}).text(),
              "无法对表“t”执行删除，因为它不存在，或者您没有所需的权限。");
}

TEST(Messages, AreEnglishOnDemand) {
    const Failure failure = worded(Language::english, Error(3701, {"drop", "view", "v"}));
    EXPECT_EQ(failure.text(), "Cannot drop the view 'v', because it does not exist or you do not have permission.");
}

TEST(Messages, KeepAPercentSignOfAnArgument) { EXPECT_EQ(chinese(207, {"100%1"}).text(), "列名 '100%1' 无效。"); }

TEST(Messages, HaveTheKindsOfTheShell) {
    EXPECT_EQ(kindOf(102), FailureKind::syntax);
    EXPECT_EQ(kindOf(208), FailureKind::noSuchObject);
    EXPECT_EQ(kindOf(195), FailureKind::noSuchObject);
    EXPECT_EQ(kindOf(2714), FailureKind::duplicate);
    EXPECT_EQ(kindOf(2705), FailureKind::duplicate);
    EXPECT_EQ(kindOf(241), FailureKind::conversion);
    EXPECT_EQ(kindOf(242), FailureKind::conversion);
    EXPECT_EQ(kindOf(8114), FailureKind::conversion);
    EXPECT_EQ(kindOf(248), FailureKind::overflow);
    EXPECT_EQ(kindOf(2628), FailureKind::truncation);
    EXPECT_EQ(kindOf(2601), FailureKind::key);
    EXPECT_EQ(kindOf(515), FailureKind::null);
    EXPECT_EQ(kindOf(8134), FailureKind::divide);
    EXPECT_EQ(kindOf(3902), FailureKind::transaction);
    EXPECT_EQ(kindOf(kBusy), FailureKind::busy);
    EXPECT_EQ(kindOf(kNoFile), FailureKind::connection);
    EXPECT_EQ(kindOf(kConnectionLost), FailureKind::connection);
    EXPECT_EQ(kindOf(110), FailureKind::other);
    EXPECT_EQ(kindOf(999999), FailureKind::other);
}

TEST(Messages, StandSortedWithBothWordingsAndTheSamePlaces) {
    int last = 0;
    for (const auto messages : {statementMessages(), dataMessages()}) {
        for (const Message& message : messages) {
            EXPECT_GT(message.number, last);
            last = message.number;
            EXPECT_FALSE(message.chinese.empty());
            for (const char* place : {"1", "2", "3", "4"}) {
                const auto has = [place](std::string_view wording) {
                    return wording.find(std::string("%") + place) != std::string_view::npos ||
                           wording.find(std::string("%w") + place) != std::string_view::npos;
                };
                EXPECT_EQ(has(message.chinese), has(message.english)) << message.number << " place " << place;
            }
        }
    }
}

TEST(Messages, ShowAnUnknownNumberWithItsArguments) { EXPECT_EQ(chinese(77777, {"a", "b"}).text(), "77777: a: b"); }

}  // namespace
}  // namespace orvenmod::store::tsql
