// What a store under the contract gives the tests. Each binary defines storeUnderTest().
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

#include "store/connection.h"

namespace orvenmod::store::test {

class StoreUnderTest {
public:
    virtual ~StoreUnderTest() = default;
    /// A connection to a new, empty database.
    virtual std::unique_ptr<Connection> freshDatabase() = 0;
    /// A second connection to the database of the last freshDatabase().
    virtual std::unique_ptr<Connection> again() = 0;
    /// Whether the store refuses what the server refuses (conversions, lengths) by the server's numbers.
    virtual bool speaksTheDialect() const = 0;
    /// The name of its type for binary contents of any size.
    virtual std::string binaryType() const = 0;
    /// Whether a statement of the dialect's DDL is undone by a rollback.
    virtual bool hasTransactionalDefinitions() const = 0;
    /// Whether a failure of that number is the one that the dialect numbers `wanted`.
    virtual bool isNumber(int number, int wanted) const { return number == wanted; }
    /// Whether that number stands for failures of several kinds, which the server's text alone tells apart.
    virtual bool isOwnNumber(int) const { return false; }
    /// Why the server answers that case of the dialect in its own way; null where it doesn't.
    virtual const char* answersOtherwise(int) const { return nullptr; }
    /// Likewise of a case of this contract, by its name, "Moving.LoadsRowsAsTheyAre".
    virtual const char* differsIn(std::string_view) const { return nullptr; }
    /// Whether failures read as the dialect documents them.
    virtual bool wordsAsTheDialect() const { return true; }
    /// Whether a transaction outlives a statement of it that fails.
    virtual bool keepsTransactions() const { return true; }
};

/// The store of this binary; null, and a reason, where it can't be reached on this machine.
StoreUnderTest* storeUnderTest(std::string& reason);

class StoreContract : public ::testing::Test {
protected:
    void SetUp() override;

    /// The number of the failure that `work` throws, 0 for none.
    template <typename Work>
    static int numberOf(Work work) {
        try {
            work();
            return 0;
        } catch (const Failure& failure) {
            EXPECT_FALSE(failure.text().empty());
            return failure.number();
        }
    }
    /// Likewise, for a failure that the dialect gives that number.
    template <typename Work>
    ::testing::AssertionResult fails(int wanted, Work work) {
        const int number = numberOf(work);
        if (store_->isNumber(number, wanted)) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "the number is " << number << ", not " << wanted;
    }
    std::string value(const std::string& sql) {
        const Recordset rows = connection_->open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }

    StoreUnderTest* store_ = nullptr;
    std::unique_ptr<Connection> connection_;
};

#define NEEDS_THE_DIALECT() \
    if (!store_->speaksTheDialect()) GTEST_SKIP() << "this store's driver does not speak the dialect"

#define NEEDS_KEPT_TRANSACTIONS() \
    if (!store_->keepsTransactions()) GTEST_SKIP() << "this store's server ends a transaction with a failed statement"

}  // namespace orvenmod::store::test

#define NEEDS_THE_DIALECTS_WORDS() \
    if (!store_->wordsAsTheDialect()) GTEST_SKIP() << "this store's server words its failures itself"
