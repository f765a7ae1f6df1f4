#include "readydatabase.h"
#include "store/contract/contract.h"

namespace orvenmod::store::test {
namespace {

class ServerStore : public StoreUnderTest {
public:
    std::unique_ptr<Connection> freshDatabase() override {
        postgres::PostgresStore::dropIdleSessions();
        database_.empty();
        return again();
    }
    std::unique_ptr<Connection> again() override { return store_.connect(database_.connectionString()); }
    bool speaksTheDialect() const override { return true; }
    std::string binaryType() const override { return "image"; }
    bool hasTransactionalDefinitions() const override { return true; }

private:
    postgres::test::ReadyDatabase database_;
    postgres::PostgresStore store_;
};

}  // namespace

StoreUnderTest* storeUnderTest(std::string&) {
    static ServerStore store;
    return &store;
}

}  // namespace orvenmod::store::test
