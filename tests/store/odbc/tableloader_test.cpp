// The table loader, against a driver that the test plays.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include <algorithm>

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

const std::string kInsert = "insert into [t]([id],[c]) values(?,?)";

class OdbcLoader : public ::testing::Test {
protected:
    OdbcLoader() {
        dropIdleSessions();
        orvenmod::test::freshServer().onStatement = [this](Session&, const std::string& sql) {
            if (sql.starts_with("tables")) return oneRow({"db", "dbo", "t"});
            if (sql.starts_with("select count(*) from sys.columns")) return oneRow({"0"});
            if (sql.starts_with("select '²'")) return oneRow({"?"});
            if (sql.starts_with("insert")) return inserted_;
            if (!sql.starts_with("select *")) return Answer{};
            Answer columns;
            columns.columns = {{.name = "id", .type = SQL_INTEGER},
                               {.name = "c", .type = SQL_VARCHAR},
                               {.name = "n", .type = SQL_WVARCHAR},
                               {.name = "p", .type = SQL_LONGVARBINARY}};
            return columns;
        };
        connection_ = OdbcStore().connect("Driver=Scripted");
    }
    // The server that the test plays goes before the pool does.
    ~OdbcLoader() override { dropIdleSessions(); }
    static void SetUpTestSuite() { static const orvenmod::test::InstalledDrivers installed({"Scripted"}); }

    static Recordset rows(const std::vector<std::pair<std::string, std::string>>& cells) {
        Recordset result({{"id", ColumnType::integer}, {"c"}});
        for (const auto& [id, text] : cells) {
            result.addText(id);
            result.addText(text);
            result.endRow();
        }
        return result;
    }
    std::size_t inserts() const {
        const auto& sent = server_.sessions.back().statements;
        return static_cast<std::size_t>(std::count(sent.begin(), sent.end(), kInsert));
    }
    void load(const Recordset& rows) { connection_->openLoader("t", {"id", "c"})->add(rows); }
    RowFailure refusal(const Recordset& rows) {
        try {
            load(rows);
        } catch (const RowFailure& failure) {
            return failure;
        }
        return {Failure(FailureKind::other, 0, "no failure"), 0};
    }

    orvenmod::test::ScriptedServer& server_ = orvenmod::test::ScriptedServer::get();
    Answer inserted_;
    std::unique_ptr<Connection> connection_;
};

TEST_F(OdbcLoader, SendsManyRowsAtOnce) {
    load(rows({{"1", "one"}, {"2", ""}, {"3", "three"}}));
    EXPECT_EQ(inserts(), 1U);
    ASSERT_EQ(server_.parameters.size(), 3U);
    EXPECT_EQ(server_.parameters[0], (orvenmod::test::ScriptedRow{"1", "one"}));
    EXPECT_EQ(server_.parameters[1], (orvenmod::test::ScriptedRow{"2", ""}));
    EXPECT_EQ(server_.parameters[2], (orvenmod::test::ScriptedRow{"3", "three"}));
}

TEST_F(OdbcLoader, SendsNullsAndBytesAlong) {
    Recordset cells({{"id", ColumnType::integer}, {"p", ColumnType::binary}});
    cells.addText("1");
    cells.addNull();
    cells.endRow();
    cells.addNull();
    cells.addText(std::string("\0\xFF", 2));
    cells.endRow();
    connection_->openLoader("t", {"id", "p"})->add(cells);
    ASSERT_EQ(server_.parameters.size(), 2U);
    EXPECT_EQ(server_.parameters[0], (orvenmod::test::ScriptedRow{"1", std::nullopt}));
    EXPECT_EQ(server_.parameters[1], (orvenmod::test::ScriptedRow{std::nullopt, std::string("\0\xFF", 2)}));
}

TEST_F(OdbcLoader, SendsARowWithALongValueAloneAndInItsPlace) {
    load(rows({{"1", "a"}, {"2", "b"}, {"3", std::string(5000, 'x')}, {"4", "d"}}));
    EXPECT_EQ(inserts(), 3U);
    ASSERT_EQ(server_.parameters.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(server_.parameters[i][0], std::to_string(i + 1));
}

TEST_F(OdbcLoader, SendsEachRowAloneToADriverThatTakesNoMore) {
    server_.oneSetAtATime = true;
    load(rows({{"1", "one"}, {"2", "two"}, {"3", "three"}}));
    EXPECT_EQ(inserts(), 3U);
    EXPECT_EQ(server_.parameters.size(), 3U);
}

TEST_F(OdbcLoader, TellsTheRowThatTheServerRefused) {
    inserted_.diagnostics = {{"23000", tsql::kDuplicateKey, "[Scripted]it is there"}};
    inserted_.failedSet = 2;
    const RowFailure failure = refusal(rows({{"1", "one"}, {"2", "two"}, {"1", "three"}, {"4", "four"}}));
    EXPECT_EQ(failure.number(), tsql::kDuplicateKey);
    EXPECT_EQ(failure.row(), 2U);
}

TEST_F(OdbcLoader, TellsRowAndColumnOfACharacterThatTheDatabaseLacks) {
    const RowFailure failure = refusal(rows({{"1", "one"}, {"2", "m²"}}));
    EXPECT_EQ(failure.number(), tsql::kBeyondCodePage);
    EXPECT_EQ(failure.row(), 1U);
    EXPECT_EQ(failure.column(), 1);
    EXPECT_EQ(inserts(), 0U);
}

TEST_F(OdbcLoader, RefusesAFieldThatIsNotThere) {
    try {
        connection_->openLoader("t", {"id", "nosuch"});
        ADD_FAILURE() << "it was opened";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kUnknownColumn);
    }
}

}  // namespace
}  // namespace orvenmod::store::odbc
