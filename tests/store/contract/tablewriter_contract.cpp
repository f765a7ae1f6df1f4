#include <vector>

#include "contract.h"

namespace orvenmod::store::test {
namespace {

TEST_F(StoreContract, AddsRowsFieldByField) {
    const auto writer = connection_->openTable("t");
    for (const char* id : {"7", "8"}) {
        writer->addNew();
        writer->set("ID", id);
        writer->set("c", "它's");
        writer->setNull("d");
        writer->update();
    }
    EXPECT_EQ(value("select count(*) from t where c='它''s'"), "2");
    EXPECT_EQ(value("select d from t where id=7"), "NULL");
}

TEST_F(StoreContract, DropsARowThatWasNotUpdated) {
    const auto writer = connection_->openTable("t");
    writer->addNew();
    writer->set("id", "7");
    writer->addNew();
    writer->set("id", "8");
    writer->update();
    EXPECT_EQ(value("select count(*) from t where id=7"), "0");
    EXPECT_EQ(value("select c from t where id=8"), "NULL");
}

TEST_F(StoreContract, RefusesToUpdateARowThatHasNotBegun) {
    const auto writer = connection_->openTable("t");
    EXPECT_NE(numberOf([&] { writer->update(); }), 0);
    EXPECT_NE(numberOf([&] { writer->set("id", "1"); }), 0);
}

TEST_F(StoreContract, RefusesATableThatDoesNotExist) {
    EXPECT_EQ(numberOf([&] { connection_->openTable("nosuch"); }), 208);
}

TEST_F(StoreContract, TakesATableByItsNameInBracketsAndWithItsOwner) {
    NEEDS_THE_DIALECT();
    connection_->execute("create table [a table](id int,[order] varchar(30))");
    for (const char* name : {"[a table]", "dbo.[a table]", "[dbo].[a table]"}) {
        const auto writer = connection_->openTable(name);
        writer->addNew();
        writer->set("order", name);
        writer->update();
    }
    EXPECT_EQ(value("select count(*) from [a table] where [order] like '%a t%'"), "3");
    for (const char* name : {"", "nosuch.t", "t;x", "t u", "'t'", "[t", "t_"})
        EXPECT_EQ(numberOf([&] { connection_->openTable(name); }), 208) << name;
}

TEST_F(StoreContract, RefusesAFieldThatDoesNotExist) {
    const auto writer = connection_->openTable("t");
    writer->addNew();
    EXPECT_EQ(numberOf([&] { writer->set("nosuch", "1"); }), 207);
}

TEST_F(StoreContract, RefusesARowThatItsColumnsDoNotTakeAndLeavesTheTable) {
    NEEDS_THE_DIALECT();
    const auto writer = connection_->openTable("t");
    writer->addNew();
    writer->set("id", "abc");
    EXPECT_TRUE(fails(245, [&] { writer->update(); }));
    writer->addNew();
    writer->set("c", "12345678901");
    EXPECT_TRUE(fails(2628, [&] { writer->update(); }));
    EXPECT_EQ(value("select count(*) from t"), "2");
}

TEST_F(StoreContract, TakesBinaryContentsOfEverySizeAndGivesThemBack) {
    connection_->execute("create table p(id int, f " + store_->binaryType() + ")");
    const auto writer = connection_->openTable("p");
    std::vector<std::size_t> sizes = {0, 1, 300, 64UL << 20};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        std::vector<std::byte> bytes(sizes[i]);
        for (std::size_t at = 0; at < bytes.size(); ++at)
            bytes[at] = static_cast<std::byte>(at * 31 % 251);
        writer->addNew();
        writer->set("id", std::to_string(i));
        writer->setBinary("f", bytes);
        writer->update();
    }
    const Recordset rows = connection_->open("select id,f from p order by id");
    ASSERT_EQ(rows.rowCount(), sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        const Value contents = rows.cell(i, 1);
        ASSERT_TRUE(contents.has_value());
        ASSERT_EQ(contents->size(), sizes[i]);
        for (std::size_t at = 0; at < contents->size(); at += 4099) {
            ASSERT_EQ(static_cast<unsigned char>((*contents)[at]), at * 31 % 251) << at;
        }
    }
}

}  // namespace
}  // namespace orvenmod::store::test
