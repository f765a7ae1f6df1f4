#include "store/contract/contract.h"
#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"

namespace orvenmod::store::test {
namespace {

class EmbeddedStore : public StoreUnderTest {
public:
    std::unique_ptr<Connection> freshDatabase() override {
        sqlite::SqliteStore::dropIdleHandles();
        folder_ = std::make_unique<orvenmod::test::TemporaryFolder>();
        return store_.connect(connectionString() + ";Mode=Create");
    }
    std::unique_ptr<Connection> again() override { return store_.connect(connectionString()); }
    bool speaksTheDialect() const override { return true; }
    std::string binaryType() const override { return "image"; }
    bool hasTransactionalDefinitions() const override { return true; }

private:
    std::string connectionString() const { return "Provider=SQLite;Data Source=" + folder_->file("test.db"); }

    sqlite::SqliteStore store_;
    std::unique_ptr<orvenmod::test::TemporaryFolder> folder_;
};

}  // namespace

StoreUnderTest* storeUnderTest(std::string&) {
    static EmbeddedStore store;
    return &store;
}

}  // namespace orvenmod::store::test
