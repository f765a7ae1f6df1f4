// How failures read: their numbers, and the names and values that their texts tell.
#include "contract.h"

namespace orvenmod::store::test {
namespace {

class Failures : public StoreContract {
protected:
    void SetUp() override {
        StoreContract::SetUp();
        if (IsSkipped()) return;
        NEEDS_THE_DIALECT();
        connection_->execute("delete from t");
        connection_->execute("alter table t add n int");
    }

    template <typename Work>
    static Failure failureOf(Work work) {
        try {
            work();
        } catch (const Failure& failure) {
            return failure;
        }
        return {FailureKind::other, 0, "no failure"};
    }
    Failure failing(const std::string& sql) {
        return failureOf([&] { connection_->execute(sql); });
    }
};

TEST_F(Failures, OfAPrimaryKeyTellTheKey) {
    connection_->execute("create table p(a int primary key, b varchar(5) not null)");
    connection_->execute("insert into p values(1,'x')");
    const Failure failure = failing("insert into p values(1,'y')");
    EXPECT_EQ(failure.number(), 2627);
    EXPECT_EQ(failure.kind(), FailureKind::key);
    NEEDS_THE_DIALECTS_WORDS();
    EXPECT_NE(failure.text().find("(1)"), std::string::npos) << failure.text();
    EXPECT_NE(failure.text().find("PRIMARY KEY"), std::string::npos) << failure.text();
}

TEST_F(Failures, OfAKeyOfTwoColumnsTellBoth) {
    connection_->execute("create table p(a int not null, b varchar(5) not null, primary key(a,b))");
    connection_->execute("insert into p(a,b) values(1,'x')");
    const Failure failure = failing("insert into p(a,b) values(1,'X ')");
    EXPECT_EQ(failure.number(), 2627);
    NEEDS_THE_DIALECTS_WORDS();
    EXPECT_NE(failure.text().find("(1, X )"), std::string::npos) << failure.text();
    EXPECT_NE(failure.text().find("p"), std::string::npos);
}

TEST_F(Failures, OfAUniqueIndexNameIt) {
    connection_->execute("create unique index ixC on t(c)");
    connection_->execute("insert into t(id,c) values(1,'abc')");
    const Failure failure = failing("insert into t(id,c) values(2,'ABC')");
    EXPECT_TRUE(store_->isNumber(failure.number(), 2601)) << failure.number();
    NEEDS_THE_DIALECTS_WORDS();
    EXPECT_NE(failure.text().find("ixC"), std::string::npos) << failure.text();
    EXPECT_NE(failure.text().find("(ABC)"), std::string::npos) << failure.text();
}

TEST_F(Failures, OfANullTellColumnAndTable) {
    connection_->execute("create table p(a int not null)");
    const Failure failure = failing("insert into p(a) values(null)");
    EXPECT_EQ(failure.number(), 515);
    EXPECT_EQ(failure.kind(), FailureKind::null);
    NEEDS_THE_DIALECTS_WORDS();
    EXPECT_NE(failure.text().find("'a'"), std::string::npos);
    EXPECT_NE(failure.text().find("INSERT"), std::string::npos);
    connection_->execute("insert into p(a) values(1)");
    EXPECT_NE(failing("update p set a=null").text().find("UPDATE"), std::string::npos);
}

TEST_F(Failures, OfFunctionsComeThroughTheStatement) {
    connection_->execute("insert into t(id,n,c) values(1,0,'abc')");
    EXPECT_EQ(failing("update t set n=1/n").number(), 8134);
    EXPECT_TRUE(fails(245, [&] { connection_->execute("update t set n=c"); }));
    NEEDS_THE_DIALECTS_WORDS();
    EXPECT_EQ(failureOf([&] { connection_->open("select 10/n from t"); }).text(), "遇到以零作除数错误。");
}

TEST_F(Failures, OfASecondStatementOrACommentHaveNoEffect) {
    for (const char* sql : {"delete from t; delete from t", "delete from t -- all", "delete from t /* all */",
                            "delete from t where c='it's'"}) {
        connection_->execute("insert into t(id) values(1)");
        EXPECT_EQ(failing(sql).kind(), FailureKind::syntax) << sql;
    }
    EXPECT_EQ(value("select count(*) from t"), "4");
}

TEST_F(Failures, OfAQueryThatChangesAreTold) {
    EXPECT_NE(failureOf([&] { connection_->open("insert into t(id) values(1)"); }).number(), 0);
    EXPECT_EQ(value("select count(*) from t"), "0");
}

TEST_F(Failures, LeaveTheConnectionUsable) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(fails(245, [&] { connection_->execute("insert into t(id) values('abc')"); }));
        EXPECT_EQ(connection_->execute("insert into t(id) values('7')"), 1);
    }
    EXPECT_EQ(value("select count(*) from t"), "3");
}

TEST_F(Failures, OfATableWriterTellTheKey) {
    connection_->execute("create table p(a int primary key, b varchar(5) not null)");
    connection_->execute("insert into p values(1,'x')");
    const auto writer = connection_->openTable("p");
    writer->addNew();
    writer->set("a", "1");
    writer->set("b", "y");
    const Failure key = failureOf([&] { writer->update(); });
    EXPECT_EQ(key.number(), 2627);
    writer->addNew();
    writer->set("a", "2");
    EXPECT_EQ(failureOf([&] { writer->update(); }).number(), 515);
    NEEDS_THE_DIALECTS_WORDS();
    EXPECT_NE(key.text().find("(1)"), std::string::npos);
}

}  // namespace
}  // namespace orvenmod::store::test
