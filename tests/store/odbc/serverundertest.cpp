// The store on a server that speaks the dialect.
#include "store/contract/contract.h"
#include "store/tsql/failurenumbers.h"
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
    // A server that numbers unknown names and what fails to convert by one number of its own. Texts that are too long
    // had a number without a column before the dialect told it.
    bool isNumber(int number, int wanted) const override {
        return number == wanted || number == kOwnNumber ||
               (wanted == tsql::kTextTruncated && number == tsql::kTruncated);
    }
    bool keepsTransactions() const override { return keeps_; }

private:
    static constexpr int kOwnNumber = 33557097;

    // There are servers that end a transaction with whatever fails, others do so with a few failures.
    bool askKeepsTransactions() const {
        const auto connection = database_.connect();
        connection->beginTrans();
        try {
            connection->open("select * from nosuch");
        } catch (const Failure&) {
            try {
                connection->open("select 1");
            } catch (const Failure&) {
                return false;
            }
        }
        return true;
    }

    const orvenmod::test::TdsDatabase& database_;
    bool keeps_ = askKeepsTransactions();
};

}  // namespace

StoreUnderTest* storeUnderTest(std::string& reason) {
    static const orvenmod::test::TdsDatabase* database = orvenmod::test::TdsDatabase::get(reason);
    if (database == nullptr) return nullptr;
    static ServerUnderTest store(*database);
    return &store;
}

}  // namespace orvenmod::store::test
