// The store on a server that speaks the dialect.
#include <algorithm>

#include "store/contract/contract.h"
#include "store/tsql/failurenumbers.h"
#include "support/tdsserver.h"

namespace orvenmod::store::test {
namespace {

// A case that the servers at hand answer in another way, by its id.
struct Otherwise {
    int id;
    const char* reason;
};
constexpr Otherwise kOtherwise[] = {
    {1032, "a date out of range overflows instead of failing to convert"},
    {1081, "blanks at a text's end count in like"},
    {1145, "the quotient of decimals keeps more places"},
    {1153, "datalength counts the bytes of another encoding"},
    {1234, "a date may be multiplied"},
    {1239, "a case of nulls alone has a type"},
    {1242, "it knows the global variable"},
    {1254, "it has no percent behind top"},
    {1255, "it has no ties without a list behind top"},
    {1268, "a difference comes in an order of its own"},
    {1269, "an intersection shows the other of two equal texts"},
    {1275, "a derived table may be ordered"},
    {1298, "a union comes in an order of its own"},
    {1304, "it has procedures"},
    {1305, "it has variables"},
    {1306, "it has row_number"},
    {1308, "a view's column needs no name"},
    {1310, "a view may be ordered"},
    {1317, "it has no alter view"},
    {1323, "a column's default reaches the rows that are there"},
    {1324, "one column at a time is added"},
    {1419, "money and a decimal in one expression end the session"},
    {1423, "money that is converted is padded"},
};

// Likewise a case of the contract, by its name.
struct Differing {
    std::string_view name;
    const char* reason;
};
constexpr Differing kDiffering[] = {
    {"Moving.TellsNamesAsTheyWereDeclared", "names come back in small letters, those of indexes with a sum behind"},
    {"Moving.TellsTheNumberThatAnIdentityColumnGivesFirst", "it doesn't tell whether a number was given yet"},
    {"Moving.TellsTheDefaultsOfDecimalsWithTheirPlaces", "it tells a decimal's default as one without places"},
    {"Moving.TellsAViewInItsLastWordsAfterItWasAltered", "it has no alter view"},
    {"Moving.CountsOnAtTheBeginningOfAnIdentityColumnAfterLowerNumbersWereLoaded",
     "a number that was given counts, whatever it was"},
};

class ServerUnderTest : public StoreUnderTest {
public:
    explicit ServerUnderTest(const orvenmod::test::TdsDatabase& database) : database_(database) { ask(); }

    std::unique_ptr<Connection> freshDatabase() override {
        database_.clear();
        return database_.connect();
    }
    std::unique_ptr<Connection> again() override { return database_.connect(); }
    bool speaksTheDialect() const override { return true; }
    std::string binaryType() const override { return "image"; }
    bool hasTransactionalDefinitions() const override { return true; }
    // A server that numbers unknown names and what fails to convert by one number of its own, and keys and unique
    // indexes alike. Texts that are too long had a number without a column before the dialect told it.
    bool isNumber(int number, int wanted) const override {
        return number == wanted || isOwnNumber(number) ||
               (wanted == tsql::kTextTruncated && number == tsql::kTruncated) ||
               (own_ && wanted == tsql::kDuplicateInIndex && number == tsql::kDuplicateKey);
    }
    bool wordsAsTheDialect() const override { return !own_; }
    const char* differsIn(std::string_view name) const override {
        const auto* found = std::find_if(std::begin(kDiffering), std::end(kDiffering),
                                         [name](const Differing& known) { return known.name == name; });
        return !own_ || found == std::end(kDiffering) ? nullptr : found->reason;
    }
    bool isOwnNumber(int number) const override { return own_ && number == kOwnNumber; }
    const char* answersOtherwise(int id) const override {
        const auto* found = std::find_if(std::begin(kOtherwise), std::end(kOtherwise),
                                         [id](const Otherwise& known) { return known.id == id; });
        return !own_ || found == std::end(kOtherwise) ? nullptr : found->reason;
    }
    bool keepsTransactions() const override { return keeps_; }

private:
    static constexpr int kOwnNumber = 33557097;

    // What the server does with a failure tells of which kind it is: some end the transaction, with a number of their
    // own.
    void ask() {
        const auto connection = database_.connect();
        connection->beginTrans();
        try {
            connection->open("select * from nosuch");
        } catch (const Failure& failure) {
            own_ = failure.number() == kOwnNumber;
        }
        try {
            connection->open("select 1");
        } catch (const Failure&) {
            keeps_ = false;
        }
    }

    const orvenmod::test::TdsDatabase& database_;
    bool own_ = false;
    bool keeps_ = true;
};

}  // namespace

StoreUnderTest* storeUnderTest(std::string& reason) {
    static const orvenmod::test::TdsDatabase* database = orvenmod::test::TdsDatabase::get(reason);
    if (database == nullptr) return nullptr;
    static ServerUnderTest store(*database);
    return &store;
}

}  // namespace orvenmod::store::test
