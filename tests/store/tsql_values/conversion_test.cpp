#include "conversions.h"

namespace orvenmod::store::tsql::test {
namespace {

TEST(TextToInteger, ReadsWholeNumbersWithBlanksAndSigns) {
    EXPECT_EQ(toInteger("12", "int"), 12);
    EXPECT_EQ(toInteger("  12 ", "int"), 12);
    EXPECT_EQ(toInteger("-7", "int"), -7);
    EXPECT_EQ(toInteger("+7", "int"), 7);
    EXPECT_EQ(toInteger("007", "int"), 7);
    EXPECT_EQ(toInteger("2147483647", "int"), 2147483647);
    EXPECT_EQ(toInteger("9223372036854775807", "bigint"), INT64_MAX);
}

TEST(TextToInteger, TakesTheEmptyTextForZero) {
    EXPECT_EQ(toInteger("", "int"), 0);
    EXPECT_EQ(toInteger("   ", "int"), 0);
    EXPECT_EQ(toInteger("", "tinyint"), 0);
    EXPECT_EQ(toInteger("", "bit"), 0);
}

TEST(TextToInteger, RefusesWhatIsNoWholeNumber) {
    for (const char* value : {"abc", "12a", "12.5", "1e3", "1,000", "--5", "+-5", "+", "-", "0x10", "1 2", "１２"}) {
        EXPECT_EQ(refused(value, "int"), 245) << value;
    }
}

TEST(TextToInteger, RefusesWhatIsOutOfRangeWithTheNumberOfTheType) {
    EXPECT_EQ(refused("3000000000", "int"), 248);
    EXPECT_EQ(refused("-2147483649", "int"), 248);
    EXPECT_EQ(refused("32768", "smallint"), 244);
    EXPECT_EQ(refused("256", "tinyint"), 244);
    EXPECT_EQ(refused("-1", "tinyint"), 244);
    EXPECT_EQ(refused("9223372036854775808", "bigint"), 8115);
}

TEST(TextToBit, ReadsNumbersAndTheTwoWords) {
    EXPECT_EQ(toInteger("5", "bit"), 1);
    EXPECT_EQ(toInteger("0", "bit"), 0);
    EXPECT_EQ(toInteger("True", "bit"), 1);
    EXPECT_EQ(toInteger("FALSE", "bit"), 0);
    EXPECT_EQ(refused("yes", "bit"), 245);
}

TEST(TextToFloat, ReadsEveryFormOfANumber) {
    EXPECT_DOUBLE_EQ(toNumber("1.5", "float"), 1.5);
    EXPECT_DOUBLE_EQ(toNumber("1e3", "float"), 1000);
    EXPECT_DOUBLE_EQ(toNumber(" -2 ", "float"), -2);
    EXPECT_DOUBLE_EQ(toNumber(".5", "float"), 0.5);
    EXPECT_DOUBLE_EQ(toNumber("5.", "float"), 5);
    EXPECT_DOUBLE_EQ(toNumber("", "float"), 0);
}

TEST(TextToFloat, RefusesWhatIsNoNumber) {
    for (const char* value : {"abc", "1,5", "nan", "inf", "1e", "1.2.3", "0x1p3"}) {
        EXPECT_EQ(refused(value, "float"), 8114) << value;
    }
    EXPECT_EQ(refused("1e400", "float"), 8115);
    EXPECT_EQ(refused("1e39", "real"), 8115);
}

TEST(TextToDecimal, RoundsHalfAwayFromZero) {
    EXPECT_DOUBLE_EQ(toNumber("2.675", "decimal(10,2)"), 2.68);
    EXPECT_DOUBLE_EQ(toNumber("-2.675", "decimal(10,2)"), -2.68);
    EXPECT_DOUBLE_EQ(toNumber("9.995", "decimal(10,2)"), 10);
    EXPECT_DOUBLE_EQ(toNumber(" 12.5 ", "decimal(18,4)"), 12.5);
}

TEST(TextToDecimal, RefusesWhatIsNoDecimal) {
    EXPECT_EQ(refused("abc", "decimal(18,4)"), 8114);
    EXPECT_EQ(refused("1e3", "decimal(18,4)"), 8114);
    EXPECT_EQ(refused("", "decimal(18,4)"), 8114);
    EXPECT_EQ(refused("1000", "decimal(5,2)"), 8115);
    EXPECT_EQ(refused("999.995", "decimal(5,2)"), 8115);
}

TEST(TextToMoney, ReadsSignsAndThousands) {
    EXPECT_DOUBLE_EQ(toNumber("$1,234.5", "money"), 1234.5);
    EXPECT_DOUBLE_EQ(toNumber("￥5", "money"), 5);
    EXPECT_DOUBLE_EQ(toNumber("", "money"), 0);
    EXPECT_EQ(refused("abc", "money"), 235);
    EXPECT_EQ(refused("999999999999999999", "money"), 236);
}

TEST(TextToMoney, ReachesTheExtremesOfItsType) {
    EXPECT_DOUBLE_EQ(toNumber("214748.3647", "smallmoney"), 214748.3647);
    EXPECT_DOUBLE_EQ(toNumber("-214748.3648", "smallmoney"), -214748.3648);
    EXPECT_EQ(refused("214748.3648", "smallmoney"), 236);
    EXPECT_EQ(refused("-214748.3649", "smallmoney"), 236);
    EXPECT_DOUBLE_EQ(toNumber("-922337203685477.5808", "money"), -922337203685477.5808);
    EXPECT_EQ(refused("922337203685477.5808", "money"), 236);
}

TEST(NumberToInteger, CutsADecimalAndAFloat) {
    EXPECT_EQ(converted(real(12.7), "decimal(10,1)", "int").integer, 12);
    EXPECT_EQ(converted(real(-12.7), "decimal(10,1)", "int").integer, -12);
    EXPECT_EQ(converted(real(12.7), "float", "int").integer, 12);
    EXPECT_EQ(converted(real(-0.9), "float", "int").integer, 0);
}

TEST(NumberToInteger, RoundsMoney) { EXPECT_EQ(converted(real(12.5), "money", "int").integer, 13); }

TEST(NumberToInteger, RefusesWhatIsOutOfRangeWithTheNumberOfTheSource) {
    EXPECT_EQ(refused(real(3e9), "decimal(18,0)", "int"), 8115);
    EXPECT_EQ(refused(real(3e9), "float", "int"), 232);
    EXPECT_EQ(refused(real(1e300), "float", "bigint"), 8115);
    EXPECT_EQ(refused(integer(300), "int", "tinyint"), 220);
    EXPECT_EQ(refused(integer(40000), "int", "smallint"), 220);
    EXPECT_EQ(refused(integer(3000000000), "bigint", "int"), 8115);
}

TEST(NumberToDecimal, RefusesMoreDigitsThanItHas) {
    EXPECT_EQ(refused(integer(1000), "int", "decimal(5,2)"), 8115);
    EXPECT_EQ(refused(real(1e20), "float", "decimal(18,4)"), 8115);
    EXPECT_EQ(converted(integer(999), "int", "decimal(5,2)").integer, 999);
}

TEST(NumberToBit, IsOneUnlessItIsZero) {
    EXPECT_EQ(converted(integer(-3), "int", "bit").integer, 1);
    EXPECT_EQ(converted(real(0.2), "float", "bit").integer, 1);
    EXPECT_EQ(converted(integer(0), "int", "bit").integer, 0);
}

TEST(NumberToText, KeepsADecimalsScale) {
    EXPECT_EQ(toText(integer(10), "decimal(18,4)", "varchar(30)"), "10.0000");
    EXPECT_EQ(toText(real(2.5), "decimal(18,4)", "varchar(30)"), "2.5000");
    EXPECT_EQ(toText(real(-0.5), "decimal(18,2)", "varchar(30)"), "-0.50");
    EXPECT_EQ(toText(integer(5), "decimal(18,0)", "varchar(30)"), "5");
}

TEST(NumberToText, GivesAFloatSixDigits) {
    EXPECT_EQ(toText(real(1.5), "float", "varchar(30)"), "1.5");
    EXPECT_EQ(toText(real(1234567), "float", "varchar(30)"), "1.23457e+006");
    EXPECT_EQ(toText(real(0.1), "float", "varchar(30)"), "0.1");
    EXPECT_EQ(toText(real(100), "float", "varchar(30)"), "100");
    EXPECT_EQ(toText(real(0.00001), "float", "varchar(30)"), "1e-005");
}

TEST(NumberToText, GivesMoneyTwoDigitsOrWhatTheStyleSays) {
    EXPECT_EQ(toText(real(1234567.891), "money", "varchar(30)"), "1234567.89");
    EXPECT_EQ(toText(real(1234567.891), "money", "varchar(30)", 1), "1,234,567.89");
    EXPECT_EQ(toText(real(-1234.5), "money", "varchar(30)", 1), "-1,234.50");
    EXPECT_EQ(toText(real(123), "money", "varchar(30)", 2), "123.0000");
}

TEST(NumberToText, WithoutRoomIsAStarOrAFailure) {
    EXPECT_EQ(toText(integer(12345), "int", "varchar(3)"), "*");
    EXPECT_EQ(refused(integer(12345), "int", "nvarchar(3)"), 8115);
    EXPECT_EQ(refused(integer(12345), "bigint", "varchar(3)"), 8115);
    EXPECT_EQ(refused(real(1.5), "decimal(18,4)", "varchar(3)"), 8115);
    EXPECT_EQ(refused(real(1.25), "float", "varchar(2)"), 8115);
}

TEST(Identifier, IsReadInBothFormsAndWrittenInUpperCase) {
    const std::string plain = "6f9619ff-8b86-d011-b42d-00c04fc964ff";
    EXPECT_EQ(converted(text(plain), "varchar(50)", "uniqueidentifier").text, "6F9619FF-8B86-D011-B42D-00C04FC964FF");
    EXPECT_EQ(converted(text("{" + plain + "}"), "varchar(50)", "uniqueidentifier").text.front(), '6');
    EXPECT_EQ(refused("no identifier", "uniqueidentifier"), 8169);
}

TEST(Binary, HoldsAnIntegersBytes) {
    EXPECT_EQ(converted(integer(258), "int", "varbinary(10)").text, std::string("\0\0\1\2", 4));
    Datum blob;
    blob.kind = Datum::Kind::blob;
    blob.text = std::string("\0\0\1\2", 4);
    EXPECT_EQ(converted(blob, "varbinary(10)", "int").integer, 258);
    EXPECT_EQ(refused(blob, "varbinary(10)", "float"), 529);
}

TEST(Conversion, LeavesNullNull) { EXPECT_EQ(converted(Datum(), "varchar(5)", "int").kind, Datum::Kind::null); }

TEST(Conversion, TellsTheValueAndBothTypes) {
    try {
        converted(text("abc"), "nvarchar(10)", "int");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.arguments(), (std::vector<std::string>{"nvarchar", "abc", "int"}));
    }
}

TEST(Conversion, TakesATextThatStandsInANumberColumnForAText) {
    EXPECT_EQ(converted(text("12"), "int", "int").integer, 12);
    EXPECT_EQ(refused(text("abc"), "int", "int"), 245);
}

}  // namespace
}  // namespace orvenmod::store::tsql::test
