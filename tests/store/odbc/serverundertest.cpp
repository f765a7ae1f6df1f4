// The store on a server that speaks the dialect.
#include "store/contract/contract.h"
#include "support/tdsserver.h"

namespace orvenmod::store::test {
namespace {

class ServerUnderTest : public StoreUnderTest {
public:
    explicit ServerUnderTest(const orvenmod::test::TdsDatabase& database) : database_(database) {}

    std::unique_ptr<Connection> freshDatabase() override {
        database_.clear();
        return database_.connect();
    }
    std::unique_ptr<Connection> again() override { return database_.connect(); }
    bool speaksTheDialect() const override { return true; }
    std::string binaryType() const override { return "image"; }
    bool hasTransactionalDefinitions() const override { return true; }

private:
    const orvenmod::test::TdsDatabase& database_;
};

}  // namespace

StoreUnderTest* storeUnderTest(std::string& reason) {
    static const orvenmod::test::TdsDatabase* database = orvenmod::test::TdsDatabase::get(reason);
    if (database == nullptr) return nullptr;
    static ServerUnderTest store(*database);
    return &store;
}

}  // namespace orvenmod::store::test
