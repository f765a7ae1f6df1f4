// Where a test's database lies. The tests run on the embedded store; ORVEN_TEST_STORE puts the same tests on a server:
//
//     sqlite     a file of the test's own folder; also where nothing is named
//     postgres   a database of the server that the tests share
//     tds        a database of the server that ORVEN_TDS_SERVER names, whose login may create databases
//
// The schema is made once a process; each test works on what is as good as a copy.
#pragma once

#include <memory>
#include <string>

#include "store/connection.h"

namespace orvenmod::test {

enum class TestStore { sqlite, postgres, tds };
TestStore testStore();

/// What connects the tests, whatever the string names.
store::Store& stores();

/// A database with the suite's schema, for one test, gone or made anew after it.
class Site {
public:
    virtual ~Site() = default;
    virtual std::string connectionString() const = 0;
    /// Every object's definition and every table's rows, in a fixed order, to compare before and after.
    virtual std::string dump() const = 0;
};

/// `file` is where the embedded store puts it.
std::unique_ptr<Site> newSite(const std::string& file);

std::unique_ptr<Site> newFileSite(const std::string& file);
std::unique_ptr<Site> newPostgresSite();
std::unique_ptr<Site> newTdsSite();

}  // namespace orvenmod::test

/// For what only a database in a file has. Use in a test's body or in SetUp().
#define NEEDS_A_FILE()                                                        \
    if (::orvenmod::test::testStore() != ::orvenmod::test::TestStore::sqlite) \
    GTEST_SKIP() << "only a database in a file has this"
