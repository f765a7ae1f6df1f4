#include "options.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "sampledata.h"

namespace orvenmod::sample {
namespace {

std::string mistakeIn(const std::vector<std::string>& arguments) {
    try {
        readOptions(arguments);
    } catch (const std::invalid_argument& mistake) {
        return mistake.what();
    }
    return "";
}

TEST(Options, readsWhatTheDemoPasses) {
    const Options options = readOptions({"--database", "a.db", "--create", "--items", "1000000"});
    EXPECT_EQ(options.database, "a.db");
    EXPECT_TRUE(options.create);
    EXPECT_EQ(options.goods, 1000000);
    EXPECT_EQ(options.tour, "");
}

TEST(Options, makesTheUsualNumberOfGoodsWhereNoneIsTold) {
    EXPECT_EQ(readOptions({"--database", "a.db"}).goods, kUsualGoods);
}

TEST(Options, takesTheTablesFromAServerWhereOneIsNamed) {
    EXPECT_EQ(readOptions({"--database", "a.db"}).server, "");
    EXPECT_EQ(readOptions({"--database", "a.db", "--server", "Provider=PostgreSQL"}).server, "Provider=PostgreSQL");
}

TEST(Options, upgradesOnlyWhereItIsTold) {
    EXPECT_TRUE(readOptions({"--database", "a.db", "--upgrade"}).upgrade);
    EXPECT_FALSE(readOptions({"--database", "a.db"}).upgrade);
}

TEST(Options, refusesANumberOfGoodsThatIsNoneOrTooLarge) {
    const std::string told = "--items takes a number from 1 to 1000000";
    for (const char* number : {"0", "-5", "12x", "", "1000001", "99999999999999"}) {
        EXPECT_EQ(mistakeIn({"--database", "a.db", "--items", number}), told) << number;
    }
}

TEST(Options, tellsWhatIsMissingOrUnknown) {
    EXPECT_EQ(mistakeIn({}), "--database is missing");
    EXPECT_EQ(mistakeIn({"--database"}), "--database needs a value");
    EXPECT_EQ(mistakeIn({"--database", "a.db", "--speed"}), "unknown argument --speed");
}

}  // namespace
}  // namespace orvenmod::sample
