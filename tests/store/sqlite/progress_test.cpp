#include <gtest/gtest.h>

#include <stdexcept>

#include "embeddeddatabase.h"

namespace orvenmod::store::sqlite::test {
namespace {

class Progress : public EmbeddedDatabase {
protected:
    Progress() : connection_(connect()) {
        connection_->beginTrans();
        for (int i = 0; i < 400; ++i)
            connection_->execute("insert into t(id,n) values(" + std::to_string(i) + ",1)");
        connection_->commitTrans();
    }

    // Some seconds of work, unless something ends it.
    static constexpr const char* kLong = "select count(*) from t a, t b, t c where a.n+b.n+c.n>5 and a.id%7=b.id%5";

    std::unique_ptr<Connection> connection_;
};

TEST_F(Progress, IsReportedWhileAStatementTakesLong) {
    int calls = 0;
    connection_->setProgress([&calls] { ++calls; });
    connection_->open(kLong);
    EXPECT_GE(calls, 1);
}

TEST_F(Progress, IsNotReportedForAShortStatement) {
    int calls = 0;
    connection_->setProgress([&calls] { ++calls; });
    connection_->open("select top 1 id from t");
    EXPECT_EQ(calls, 0);
}

TEST_F(Progress, ThatThrowsEndsTheStatementAndGoesToItsCaller) {
    connection_->setProgress([] { throw std::runtime_error("stop"); });
    EXPECT_THROW(connection_->open(kLong), std::runtime_error);
    connection_->setProgress({});
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "400");
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
