// Keys and indexes serve the statements of the windows: on a million items none of these may scan a table that grows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "store/classviewtext.h"
#include "store/itemclass.h"
#include "store/schema.h"
#include "store/schema/windowstatements.h"
#include "store/sqlite/binding.h"
#include "store/sqlite/database.h"
#include "store/sqlite/sqlitestore.h"
#include "store/tsql/keyedlist.h"
#include "store/tsql/shape.h"
#include "support/database.h"

namespace orvenmod::test {
namespace {

/// How the embedded store would run statements on the schema, without rows.
class Plans : public testing::Test {
protected:
    Plans() {
        const std::string target = connectionStringFor(folder_.file("suite.db"));
        store::sqlite::SqliteStore store;
        const auto connection = store.connect(target + ";Mode=Create");
        store::createSchema(*connection);
        connection->close();
        store::sqlite::SqliteStore::dropIdleHandles();
        database_ = std::make_unique<store::sqlite::Database>(store::sqlite::DatabaseFile::parse(target));
    }

    /// The steps of the plan, such as "SEARCH a USING INDEX ix_tblItem_1 (...)".
    std::vector<std::string> plan(const std::string& sql) {
        store::tsql::Shape shape;
        shape.scan(sql);
        const auto& translated = database_->prepare(sql, shape).translation.statements.at(0);
        const auto explained = database_->prepareNative("explain query plan " + translated);
        std::vector<std::string> steps;
        while (sqlite3_step(explained.get()) == SQLITE_ROW) {
            steps.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(explained.get(), 3)));
        }
        return steps;
    }

    /// How many steps of its program a statement takes, on the rows that there are.
    int stepsOf(const std::string& sql) {
        store::tsql::Shape shape;
        shape.scan(sql);
        const auto& entry = database_->prepare(sql, shape);
        store::sqlite::bindLiterals(entry.statement.get(), entry.translation, shape);
        const store::sqlite::ResetStatement reset(entry.statement.get());
        while (sqlite3_step(entry.statement.get()) == SQLITE_ROW) {
        }
        return sqlite3_stmt_status(entry.statement.get(), SQLITE_STMTSTATUS_VM_STEP, 1);
    }

    /// Goods below category 13.
    void addSiblings(int count) {
        const auto added = database_->prepareNative(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(count) +
            ") INSERT INTO tblItem(fItemId, fItemClassId, fParentId, fIsDetail, fShortNumber, fNumber, fName) "
            "SELECT k, 3, 13, 1, printf('%06d', k), printf('01.%06d', k), 'n' || k FROM (SELECT i + (SELECT "
            "ifnull(max(fItemId), 1000) FROM tblItem) AS k FROM n)");
        EXPECT_EQ(sqlite3_step(added.get()), SQLITE_DONE);
    }

    std::string scans(const std::string& sql) {
        std::string found;
        for (const std::string& step : plan(sql)) {
            // What a part of the statement gave is no table.
            const bool ofPart = step.find("CONSTANT ROW") != std::string::npos || step.rfind("SCAN (", 0) == 0;
            if (step.rfind("SCAN", 0) == 0 && !ofPart) found += step + "; ";
        }
        return found;
    }

    TemporaryFolder folder_;
    std::unique_ptr<store::sqlite::Database> database_;
};

TEST_F(Plans, codesNamesAndPathsOfItemsAreFoundByIndex) {
    for (const char* sql : kItemStatements) {
        EXPECT_EQ(scans(sql), "") << sql;
    }
}

// Saving an item tests its code and name and proposes the next code among a million of its class: each step names the
// index that serves it, and no class or category but its own is looked at.
TEST_F(Plans, aSaveOfTheEditorIsServedByTheseIndexes) {
    for (const Served& statement : kSaveStatements) {
        std::string steps;
        for (const std::string& step : plan(statement.sql))
            steps += (steps.empty() ? "" : "; ") + step;
        EXPECT_EQ(steps, statement.by) << statement.sql;
    }
}

// No plan tells whether an index is only entered or read on.
TEST_F(Plans, aSaveTakesAsManyStepsAmongManySiblingsAsAmongFew) {
    addSiblings(20);
    std::vector<int> few;
    for (const Served& statement : kSaveStatements)
        few.push_back(stepsOf(statement.sql));
    addSiblings(3000);
    for (std::size_t i = 0; i < std::size(kSaveStatements); ++i)
        EXPECT_LE(stepsOf(kSaveStatements[i].sql), few[i] + 5) << kSaveStatements[i].sql;
}

TEST_F(Plans, theTreeReadsTheCategoriesOfItsClassAlone) {
    EXPECT_EQ(scans(kTreeStatement), "");
    EXPECT_NE(plan(kTreeStatement).at(0).find("fIsDetail=?"), std::string::npos) << plan(kTreeStatement).at(0);
}

TEST_F(Plans, aUsersRowsAreFoundByIndex) {
    for (const char* sql : kUserStatements) {
        EXPECT_EQ(scans(sql), "") << sql;
    }
}

TEST_F(Plans, aDeleteProbesBillsAndBalancesByIndex) {
    for (const char* sql : kProbes) {
        EXPECT_EQ(scans(sql), "") << sql;
    }
}

// A list must read its class's table; everything that it joins comes by key.
TEST_F(Plans, aListScansItsOwnTableAndNothingElse) { EXPECT_EQ(scans(kListStatement), "SCAN a; "); }

TEST_F(Plans, theStockOfAWarehouseIsSummedFromAnIndexAlone) {
    const auto steps = plan(kStockStatement);
    ASSERT_EQ(steps.size(), 1U);
    EXPECT_NE(steps[0].find("USING COVERING INDEX"), std::string::npos) << steps[0];
}

TEST_F(Plans, ReadTheListOfEveryClassByItsKeys) {
    const auto keyed = [this](const std::string& condition, const std::string& view) {
        database_->catalog().refresh();
        return store::tsql::keyedList(
            "select fItemId,fNumber,fName from  " + view + " where 1=1 " + condition + " order by fnumber ",
            database_->catalog());
    };
    for (const char* view : {"vtblCustomer", "vtblSupplier", "vICItem", "vtblAccount"}) {
        const auto list = keyed("", view);
        ASSERT_TRUE(list) << view;
        EXPECT_EQ(list->order, store::tsql::KeyedList::Order::ascii) << view;
        const auto category = keyed(" and fNBNumber like '.1.%'", view);
        ASSERT_TRUE(category) << view;
        EXPECT_EQ(category->order, store::tsql::KeyedList::Order::none) << view;
    }
}

TEST_F(Plans, ReadTheListOfAClassThatAUserMadeByItsKeys) {
    const auto run = [this](const std::string& sql) {
        store::tsql::Shape shape;
        shape.scan(sql);
        for (const std::string& text : database_->prepare(sql, shape).translation.statements) {
            const auto statement = database_->prepareNative(text);
            while (sqlite3_step(statement.get()) == SQLITE_ROW) {
            }
        }
    };
    run("create table tblUser1(fItemId int not null,fNumber varchar(100),fName varchar(100),fA int)");
    store::ClassViewText text("vUser1", "tblUser1", store::ViewWording::newField);
    text.addField("fNumber", store::kTextField);
    text.addField("fName", store::kTextField);
    text.addLookup("fA", "tblSubType");
    for (const std::string& view : {text.text(), store::classViewSkeleton("vUser2", "tblUser1")}) {
        run(view);
    }
    database_->catalog().refresh();
    for (const char* list : {"select fNumber,fAName from vUser1 where fAName<>'' order by fNumber",
                             "select fNumber,fName from vUser2 order by fNumber"}) {
        EXPECT_TRUE(store::tsql::keyedList(list, database_->catalog())) << list;
    }
}

}  // namespace
}  // namespace orvenmod::test
