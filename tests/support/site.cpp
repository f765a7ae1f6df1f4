#include "support/site.h"

#include <cstdlib>
#include <stdexcept>

#include "entry/storefactory.h"

namespace orvenmod::test {

TestStore testStore() {
    static const TestStore store = [] {
        const char* named = std::getenv("ORVEN_TEST_STORE");
        const std::string name = named == nullptr ? "sqlite" : named;
        if (name == "sqlite") return TestStore::sqlite;
        if (name == "postgres") return TestStore::postgres;
        if (name == "tds") return TestStore::tds;
        throw std::runtime_error("ORVEN_TEST_STORE is none of sqlite, postgres, tds: " + name);
    }();
    return store;
}

store::Store& stores() {
    static StoreFactory factory;
    return factory;
}

std::unique_ptr<Site> newSite(const std::string& file) {
    switch (testStore()) {
        case TestStore::postgres:
            return newPostgresSite();
        case TestStore::tds:
            return newTdsSite();
        case TestStore::sqlite:
            break;
    }
    return newFileSite(file);
}

}  // namespace orvenmod::test
