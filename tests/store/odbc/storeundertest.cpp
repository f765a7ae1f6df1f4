// The contract over ODBC, by the SQLite driver: the one that needs no server. It does not speak the dialect, so that
// the cases that need it are skipped.
#include "store/contract/contract.h"
#include "store/odbc/odbcstore.h"
#include "support/temporary.h"

namespace orvenmod::store::test {
namespace {

class OdbcUnderTest : public StoreUnderTest {
public:
    std::unique_ptr<Connection> freshDatabase() override {
        folder_ = std::make_unique<orvenmod::test::TemporaryFolder>();
        return store_.connect(connectionString());
    }
    std::unique_ptr<Connection> again() override { return store_.connect(connectionString()); }
    bool speaksTheDialect() const override { return false; }
    std::string binaryType() const override { return "longvarbinary"; }
    bool hasTransactionalDefinitions() const override { return false; }

private:
    std::string connectionString() const { return "Driver=SQLite3;Database=" + folder_->file("test.db"); }

    odbc::OdbcStore store_;
    std::unique_ptr<orvenmod::test::TemporaryFolder> folder_;
};

}  // namespace

StoreUnderTest* storeUnderTest(std::string& reason) {
    static OdbcUnderTest store;
    static const std::string failure = [] {
        try {
            store.freshDatabase();
            return std::string();
        } catch (const Failure& refused) {
            return "the ODBC driver SQLite3 is not installed: " + refused.text();
        }
    }();
    reason = failure;
    return failure.empty() ? &store : nullptr;
}

}  // namespace orvenmod::store::test
