// Views on a server, which the dialect lets outlive what they read.
#include "store/postgres/suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

class Views : public OnTheServer {
protected:
    Views() : connection_(connect()) {
        connection_->execute("insert into t values(1,5,'x')");
        connection_->execute("create view vBase as select id,n,c from t");
        connection_->execute("create view vOver as select id,n*2 as fDouble from vBase");
    }

    std::string natively(const std::string& sql) const { return database_.run(sql); }

    std::unique_ptr<Connection> connection_;
};

TEST_F(Views, AreReadUnderPlainNamesAndKeepTheirOwnText) {
    EXPECT_EQ(natively("select fdouble from vover"), "10");
    EXPECT_EQ(natively("select obj_description('vover'::regclass)"),
              "create view vOver as select id,n*2 as fDouble from vBase");
}

TEST_F(Views, AreMadeAgainWithTheirTextAndRightsWhenTheOneBeneathThemIs) {
    foreignly("grant select on vover to public");
    connection_->execute("drop view vBase");
    EXPECT_EQ(failureOf([&] { connection_->open("select * from vOver"); }).number(), 208);
    EXPECT_ANY_THROW(natively("select * from vover"));
    connection_->execute("create view vBase as select id,n+1 as n from t");
    EXPECT_EQ(value(*connection_, "select fDouble from vOver"), "12");
    EXPECT_EQ(natively("select has_table_privilege('pg_monitor','vover','select')"), "t");
    EXPECT_EQ(natively("select obj_description('vover'::regclass)"),
              "create view vOver as select id,n*2 as fDouble from vBase");
}

TEST_F(Views, KeepWhatTheyHaveWhenAColumnGoesThatTheyDoNotRead) {
    connection_->execute("alter table t add m int");
    connection_->execute("alter table t drop column m");
    EXPECT_EQ(value(*connection_, "select fDouble from vOver"), "10");
}

TEST_F(Views, FailByTheDialectsNumberWhileAColumnIsGone) {
    connection_->execute("alter table t drop column n");
    EXPECT_EQ(failureOf([&] { connection_->open("select id from vOver"); }).number(), 207);
    connection_->execute("alter table t add n int");
    EXPECT_EQ(value(*connection_, "select id from vOver"), "1");
}

TEST_F(Views, AreAsBeforeWhenADefinitionIsRolledBack) {
    connection_->beginTrans();
    connection_->execute("drop table t");
    EXPECT_EQ(failureOf([&] { connection_->open("select id from vOver"); }).number(), 208);
    connection_->rollbackTrans();
    EXPECT_EQ(value(*connection_, "select fDouble from vOver"), "10");
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
