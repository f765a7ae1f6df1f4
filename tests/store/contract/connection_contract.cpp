#include "contract.h"

namespace orvenmod::store::test {

void StoreContract::SetUp() {
    std::string reason;
    store_ = storeUnderTest(reason);
    if (store_ == nullptr) GTEST_SKIP() << reason;
    const auto* running = ::testing::UnitTest::GetInstance()->current_test_info();
    const char* differs = store_->differsIn(std::string(running->test_suite_name()) + "." + running->name());
    if (differs != nullptr) GTEST_SKIP() << "this server answers in its own way: " << differs;
    connection_ = store_->freshDatabase();
    connection_->execute("create table t(id int, c varchar(10), d datetime)");
    connection_->execute("insert into t(id,c,d) values(1,'甲','2026-01-02 03:04:05')");
    connection_->execute("insert into t(id,c,d) values(2,null,null)");
}

namespace {

TEST_F(StoreContract, GivesTheRowsOfAQueryInTheirOrder) {
    const Recordset rows = connection_->open("select id,c from t order by id desc");
    ASSERT_EQ(rows.rowCount(), 2U);
    EXPECT_EQ(rows.columns()[0].name, "id");
    EXPECT_EQ(rows.cell(0, 0), "2");
    EXPECT_EQ(rows.cell(1, 1), "甲");
}

TEST_F(StoreContract, GivesNullAsNullAndTheEmptyTextAsText) {
    connection_->execute("insert into t(id,c) values(3,'')");
    const Recordset rows = connection_->open("select c from t where id>1 order by id");
    EXPECT_EQ(rows.cell(0, 0), std::nullopt);
    EXPECT_EQ(rows.cell(1, 0), "");
}

TEST_F(StoreContract, GivesNoRowsButTheColumnsOfAnEmptyResult) {
    const Recordset rows = connection_->open("select id,c from t where id=99");
    EXPECT_TRUE(rows.eof());
    EXPECT_EQ(rows.columnCount(), 2);
}

TEST_F(StoreContract, CountsTheRowsThatAStatementTouches) {
    EXPECT_EQ(connection_->execute("update t set c='x'"), 2);
    EXPECT_EQ(connection_->execute("delete from t where id=1"), 1);
    EXPECT_EQ(connection_->execute("delete from t where id=1"), 0);
}

TEST_F(StoreContract, KeepsARecordsetAfterItsConnectionIsClosed) {
    const Recordset rows = connection_->open("select c from t where id=1");
    connection_->close();
    EXPECT_EQ(rows.text("C"), "甲");
}

TEST_F(StoreContract, ShowsWhatIsStoredToASecondConnection) {
    const auto other = store_->again();
    EXPECT_EQ(other->open("select id from t where id=1").rowCount(), 1U);
}

TEST_F(StoreContract, FailsForATextThatIsNoStatement) {
    EXPECT_NE(numberOf([&] { connection_->execute("nonsense"); }), 0);
    EXPECT_NE(numberOf([&] { connection_->open("select from where"); }), 0);
    EXPECT_EQ(value("select id from t where id=1"), "1");
}

TEST_F(StoreContract, RefusesASecondStatementAndComments) {
    EXPECT_EQ(numberOf([&] { connection_->open("select id from t where c=''; delete from t"); }), 102);
    EXPECT_EQ(numberOf([&] { connection_->open("select id from t where c='' delete from t where ''=''"); }), 156);
    EXPECT_EQ(numberOf([&] { connection_->execute("update t set c='x' where c='' delete from t"); }), 156);
    EXPECT_EQ(numberOf([&] { connection_->open("select id from t where id=1edelete from t"); }), 102);
    EXPECT_EQ(numberOf([&] { connection_->execute("delete from t -- where id=1"); }), 102);
    EXPECT_EQ(numberOf([&] { connection_->open("select id from t where c='"); }), 105);
    EXPECT_EQ(value("select count(*) from t where c is null or c='甲'"), "2");
}

TEST_F(StoreContract, TellsAnUnknownTableAndColumn) {
    NEEDS_THE_DIALECT();
    EXPECT_TRUE(fails(208, [&] { connection_->open("select * from nosuch"); }));
    EXPECT_TRUE(fails(207, [&] { connection_->open("select nosuch from t"); }));
}

TEST_F(StoreContract, RefusesWhatItsColumnsDoNotTake) {
    NEEDS_THE_DIALECT();
    EXPECT_TRUE(fails(245, [&] { connection_->execute("insert into t(id) values('abc')"); }));
    EXPECT_TRUE(fails(2628, [&] { connection_->execute("insert into t(c) values('12345678901')"); }));
    EXPECT_TRUE(fails(242, [&] { connection_->execute("insert into t(d) values('2026-02-30')"); }));
    EXPECT_EQ(value("select count(*) from t"), "2");
}

TEST_F(StoreContract, GivesDatesInOneForm) {
    NEEDS_THE_DIALECT();
    EXPECT_EQ(value("select d from t where id=1"), "2026-01-02 03:04:05");
}

TEST_F(StoreContract, RefusesEveryCallOnceItIsClosed) {
    connection_->close();
    EXPECT_NE(numberOf([&] { connection_->execute("delete from t"); }), 0);
    EXPECT_NE(numberOf([&] { connection_->open("select id from t"); }), 0);
    EXPECT_NE(numberOf([&] { connection_->openTable("t"); }), 0);
    EXPECT_NE(numberOf([&] { connection_->beginTrans(); }), 0);
    EXPECT_FALSE(connection_->inTransaction());
    connection_->close();
    connection_ = store_->again();
    EXPECT_EQ(value("select count(*) from t"), "2");
}

}  // namespace
}  // namespace orvenmod::store::test
