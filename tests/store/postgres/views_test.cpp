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

// What somebody else may do with the views.
class RightsOnViews : public Views {
protected:
    RightsOnViews() {
        database_.run("CREATE ROLE " + reader_ + "; CREATE ROLE " + lender_);
        foreignly("GRANT SELECT, UPDATE ON vbase TO " + lender_ +
                  " WITH GRANT OPTION; GRANT SELECT (id, n), UPDATE (c) " + "ON vbase TO " + reader_ +
                  "; GRANT SELECT (fdouble) ON vover TO " + reader_);
    }
    ~RightsOnViews() override {
        const std::string roles = reader_ + ", " + lender_;
        database_.run("DROP OWNED BY " + roles + "; DROP ROLE " + roles);
    }

    bool may(const std::string& role, const std::string& right, const std::string& view, const std::string& column) {
        return natively("SELECT has_column_privilege('" + role + "','" + view + "','" + column + "','" + right +
                        "')") == "t";
    }
    void expectWhatWasGiven() {
        EXPECT_TRUE(may(lender_, "SELECT WITH GRANT OPTION", "vbase", "id"));
        EXPECT_TRUE(may(lender_, "UPDATE WITH GRANT OPTION", "vbase", "id"));
        EXPECT_TRUE(may(reader_, "SELECT", "vbase", "n"));
        EXPECT_TRUE(may(reader_, "UPDATE", "vbase", "c"));
        EXPECT_FALSE(may(reader_, "SELECT", "vbase", "c"));
        EXPECT_FALSE(may(reader_, "SELECT WITH GRANT OPTION", "vbase", "id"));
        EXPECT_FALSE(may(reader_, "UPDATE", "vbase", "id"));
        EXPECT_TRUE(may(reader_, "SELECT", "vover", "fdouble"));
        EXPECT_FALSE(may(reader_, "SELECT", "vover", "id"));
    }

    // All databases of the server share them.
    const std::string reader_ = "reader_" + database_.name();
    const std::string lender_ = "lender_" + database_.name();
};

TEST_F(RightsOnViews, StayWhenTheViewIsAltered) {
    connection_->execute("alter view vBase as select n,c,id from t");
    expectWhatWasGiven();
    natively("SET ROLE " + reader_ + "; select id,n from vbase");
    EXPECT_ANY_THROW(natively("SET ROLE " + reader_ + "; select c from vbase"));
}

TEST_F(RightsOnViews, StayWhenAViewThatNoOtherReadsIsAltered) {
    connection_->execute("alter view vOver as select id,n*3 as fDouble from vBase");
    expectWhatWasGiven();
}

TEST_F(RightsOnViews, GoWithTheColumnThatTheAlteredViewHasNotGotAnyMore) {
    connection_->execute("alter view vBase as select id,c from t");
    EXPECT_TRUE(may(reader_, "SELECT", "vbase", "id"));
    EXPECT_TRUE(may(reader_, "UPDATE", "vbase", "c"));
}

TEST_F(RightsOnViews, StayWhileAColumnOfTheTableIsGone) {
    connection_->execute("alter table t drop column n");
    EXPECT_ANY_THROW(natively("select * from vbase"));
    connection_->execute("alter table t add m int");
    connection_->execute("alter table t add n int");
    expectWhatWasGiven();
}

TEST_F(RightsOnViews, AreNoOthersWhereNewViewsHaveSomeByThemselves) {
    foreignly("ALTER DEFAULT PRIVILEGES IN SCHEMA public GRANT SELECT, DELETE ON TABLES TO " + reader_);
    connection_->execute("alter view vBase as select n,c,id from t");
    expectWhatWasGiven();
    EXPECT_EQ(natively("SELECT has_table_privilege('" + reader_ + "','vbase','delete')"), "f");
}

TEST_F(RightsOnViews, AreAsBeforeWhenTheAlterationIsRolledBack) {
    connection_->beginTrans();
    connection_->execute("alter view vBase as select id from t");
    connection_->rollbackTrans();
    expectWhatWasGiven();
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
