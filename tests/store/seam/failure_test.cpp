#include "store/failure.h"

#include <gtest/gtest.h>

namespace orvenmod::store {
namespace {

TEST(Failure, CarriesTextNumberAndKind) {
    const Failure failure(FailureKind::conversion, 245, "转换失败");
    EXPECT_EQ(failure.text(), "转换失败");
    EXPECT_EQ(failure.number(), 245);
    EXPECT_EQ(failure.kind(), FailureKind::conversion);
}

TEST(Failure, HasAWordForEveryKind) {
    EXPECT_STREQ(kindWord(FailureKind::syntax), "syntax");
    EXPECT_STREQ(kindWord(FailureKind::noSuchObject), "no such object");
    EXPECT_STREQ(kindWord(FailureKind::duplicate), "duplicate");
    EXPECT_STREQ(kindWord(FailureKind::conversion), "conversion");
    EXPECT_STREQ(kindWord(FailureKind::overflow), "overflow");
    EXPECT_STREQ(kindWord(FailureKind::truncation), "truncation");
    EXPECT_STREQ(kindWord(FailureKind::key), "key");
    EXPECT_STREQ(kindWord(FailureKind::null), "null");
    EXPECT_STREQ(kindWord(FailureKind::divide), "division by zero");
    EXPECT_STREQ(kindWord(FailureKind::transaction), "transaction");
    EXPECT_STREQ(kindWord(FailureKind::busy), "busy");
    EXPECT_STREQ(kindWord(FailureKind::connection), "connection");
    EXPECT_STREQ(kindWord(FailureKind::other), "other");
}

}  // namespace
}  // namespace orvenmod::store
