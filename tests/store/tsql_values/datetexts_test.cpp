#include "conversions.h"
#include "store/tsql/dates.h"

namespace orvenmod::store::tsql::test {
namespace {

std::string styled(int style) { return toText(text("2026-01-02 15:04:05.500"), "datetime", "varchar(40)", style); }

TEST(DateToText, HasTheServersFormWithoutAStyle) {
    EXPECT_EQ(styled(0), "Jan  2 2026  3:04PM");
    EXPECT_EQ(toText(text("2026-11-20 00:00:00"), "datetime", "varchar(30)"), "Nov 20 2026 12:00AM");
    EXPECT_EQ(toText(text("2026-11-20 00:00:00"), "date", "varchar(30)"), "2026-11-20");
}

TEST(DateToText, HasEveryStyleOfConvert) {
    EXPECT_EQ(styled(1), "01/02/26");
    EXPECT_EQ(styled(8), "15:04:05");
    EXPECT_EQ(styled(12), "260102");
    EXPECT_EQ(styled(20), "2026-01-02 15:04:05");
    EXPECT_EQ(styled(21), "2026-01-02 15:04:05.500");
    EXPECT_EQ(styled(23), "2026-01-02");
    EXPECT_EQ(styled(101), "01/02/2026");
    EXPECT_EQ(styled(102), "2026.01.02");
    EXPECT_EQ(styled(103), "02/01/2026");
    EXPECT_EQ(styled(104), "02.01.2026");
    EXPECT_EQ(styled(105), "02-01-2026");
    EXPECT_EQ(styled(106), "02 Jan 2026");
    EXPECT_EQ(styled(107), "Jan 02, 2026");
    EXPECT_EQ(styled(108), "15:04:05");
    EXPECT_EQ(styled(109), "Jan  2 2026  3:04:05:500PM");
    EXPECT_EQ(styled(110), "01-02-2026");
    EXPECT_EQ(styled(111), "2026/01/02");
    EXPECT_EQ(styled(112), "20260102");
    EXPECT_EQ(styled(113), "02 Jan 2026 15:04:05:500");
    EXPECT_EQ(styled(114), "15:04:05:500");
    EXPECT_EQ(styled(120), "2026-01-02 15:04:05");
    EXPECT_EQ(styled(121), "2026-01-02 15:04:05.500");
    EXPECT_EQ(styled(126), "2026-01-02T15:04:05.500");
}

TEST(DateToText, RefusesAStyleThatIsNone) {
    EXPECT_EQ(failureOf([] { styled(999); }), 281);
}

TEST(DateToText, IsCutByALengthTooShort) {
    EXPECT_EQ(toText(text("2026-01-02 15:04:05"), "datetime", "varchar(10)", 120), "2026-01-02");
}

TEST(StoredDate, IsReadOnlyInItsOwnForm) {
    EXPECT_EQ(readStored("2026-01-02 03:04:05"), (DateTime{2026, 1, 2, 3, 4, 5, 0}));
    EXPECT_EQ(readStored("2026-01-02 03:04:05.070"), (DateTime{2026, 1, 2, 3, 4, 5, 70}));
    EXPECT_EQ(readStored("2026-02-30 00:00:00"), std::nullopt);
    EXPECT_EQ(readStored("2026-01-02"), std::nullopt);
    EXPECT_EQ(readStored("2026-01-02T03:04:05"), std::nullopt);
}

}  // namespace
}  // namespace orvenmod::store::tsql::test
