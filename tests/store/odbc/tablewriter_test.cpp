// The table writer, against a driver that the test plays.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <vector>

#include "store/odbc/odbcstore.h"
#include "store/odbc/sessionpool.h"
#include "store/tsql/failurenumbers.h"
#include "support/scripteddriver/installeddrivers.h"
#include "support/scripteddriver/scriptedserver.h"

namespace orvenmod::store::odbc {
namespace {

using orvenmod::test::Answer;
using orvenmod::test::oneRow;
using orvenmod::test::Session;

class OdbcWriter : public ::testing::Test {
protected:
    OdbcWriter() {
        dropIdleSessions();
        orvenmod::test::freshServer().onStatement = [](Session&, const std::string& sql) {
            if (sql.starts_with("tables")) return oneRow({"db", "dbo", "order"});
            if (sql.starts_with("select '²'")) return oneRow({"?"});
            if (!sql.starts_with("select *")) return Answer{};
            Answer columns;
            columns.columns = {{.name = "key", .type = SQL_VARCHAR}, {.name = "a]b", .type = SQL_WVARCHAR}};
            return columns;
        };
        connection_ = OdbcStore().connect("Driver=Scripted");
    }
    // The server that the test plays goes before the pool does.
    ~OdbcWriter() override { dropIdleSessions(); }
    static void SetUpTestSuite() { static const orvenmod::test::InstalledDrivers installed({"Scripted"}); }

    int refusal(const std::string& table) {
        try {
            connection_->openTable(table);
        } catch (const Failure& failure) {
            return failure.number();
        }
        return 0;
    }

    orvenmod::test::ScriptedServer& server_ = orvenmod::test::ScriptedServer::get();
    std::unique_ptr<Connection> connection_;
};

TEST_F(OdbcWriter, WritesNamesInBracketsSinceTheyMayBeWordsOfTheLanguage) {
    const auto writer = connection_->openTable("dbo.[Order]");
    EXPECT_EQ(server_.catalogue.back(), "tables dbo.Order");
    writer->addNew();
    writer->set("KEY", "1");
    writer->set("a]b", "客²");
    writer->update();
    EXPECT_EQ(server_.sessions.back().statements.back(), "insert into [dbo].[Order]([key],[a]]b]) values(?,?)");
}

TEST_F(OdbcWriter, FindsATableAmongOthersThatTheCatalogueGives) {
    EXPECT_EQ(refusal("order"), 0);
    EXPECT_EQ(refusal("ord_r"), tsql::kUnknownObject);
    EXPECT_EQ(refusal("order;x"), tsql::kUnknownObject);
    EXPECT_EQ(refusal("[order"), tsql::kUnknownObject);
    EXPECT_EQ(refusal(""), tsql::kUnknownObject);
}

TEST_F(OdbcWriter, RefusesCharactersThatAColumnOfTheCodePageLacks) {
    const auto writer = connection_->openTable("order");
    writer->addNew();
    writer->set("key", "²");
    try {
        writer->update();
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kBeyondCodePage);
    }
    EXPECT_TRUE(server_.parameters.empty());
    writer->addNew();
    writer->set("a]b", "²");
    writer->update();
    EXPECT_EQ(server_.parameters.size(), 1U);
}

// Its contents are the caller's, who may let go of them then.
TEST_F(OdbcWriter, LeavesAPhotoToADeafServerThatIsGivenUp) {
    constexpr std::size_t kSize = 300'000;
    const auto writer = connection_->openTable("order");
    server_.onStatement = [](Session&, const std::string&) {
        Answer waiting;
        waiting.waits = true;
        return waiting;
    };
    server_.deaf = true;
    auto photo = std::make_unique<std::vector<std::byte>>(kSize, std::byte{7});
    writer->addNew();
    writer->setBinary("key", *photo);
    connection_->setProgress([] { throw std::runtime_error("stop"); });
    EXPECT_THROW(writer->update(), std::runtime_error);
    photo.reset();
    connection_->close();
    EXPECT_EQ(idleSessions(), 0U);
    server_.release();
    server_.awaitClosed();
}

}  // namespace
}  // namespace orvenmod::store::odbc
