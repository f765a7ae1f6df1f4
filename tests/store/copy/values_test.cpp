// Every type with its extremes, nulls, empty texts and blanks at the end comes over as it was.
#include "store/copy/sides.h"

namespace orvenmod::store::test {
namespace {

class CopyValues : public CopyRoad {};

INSTANTIATE_TEST_SUITE_P(Stores, CopyValues, ::testing::ValuesIn(roads()), nameOf);

struct Values {
    std::string type;
    std::vector<std::string> literals;
};

const std::vector<Values>& extremes() {
    static const std::vector<Values> kExtremes = {
        {"bit", {"0", "1"}},
        {"tinyint", {"0", "255"}},
        {"smallint", {"-32768", "32767"}},
        {"int", {"-2147483648", "2147483647"}},
        {"bigint", {"-9223372036854775807", "9223372036854775807"}},
        {"decimal(18,4)", {"-12345678901.2345", "0.0001", "99999999999", "-12345678901234.5678"}},
        {"decimal(38,10)", {"1234567890123456789012345678.0123456789", "-0.0000000001"}},
        {"decimal(9,0)", {"-999999999", "0"}},
        {"money", {"-922337203685477.5808", "922337203685477.5807", "0.01"}},
        {"smallmoney", {"-214748.3648", "214748.3647"}},
        {"real", {"0.1", "-3.4e38", "1.5e-30"}},
        {"float", {"0.1", "1e300", "-2.5e-300", "123456789.125"}},
        {"datetime", {"'1753-01-01'", "'9999-12-31 23:59:59.997'", "'2026-01-02 03:04:05.123'"}},
        {"smalldatetime", {"'1900-01-01'", "'2079-06-06 23:59'"}},
        {"date", {"'0001-01-01'", "'9999-12-31'"}},
        {"time", {"'00:00:00'", "'23:59:59.123'"}},
        {"char(5)", {"'ab'", "''", "'12345'"}},
        {"varchar(30)",
         {"''", "' '", "'blanks   '", "'螺丝 ''M8'''", "'a' + char(9) + 'b' + char(13) + char(10)", "'\\N'",
          "'back\\slash \\. \\x41'"}},
        {"nvarchar(20)", {"N'ЖÄ한국어'", "N'二十个字的名称二十个字的名称二十个字的'"}},
        {"text", {"'long'", "replicate('长文 ',3000)"}},
        {"varchar(max)", {"''", "replicate('x',8000)"}},
        {"varbinary(10)", {"0x", "0x00FF5C0A0D00"}},
        {"image", {"0x", "0x0001020304FFFE"}},
        {"uniqueidentifier", {"'6F9619FF-8B86-D011-B42D-00C04FC964FF'"}},
    };
    return kExtremes;
}

TEST_P(CopyValues, ComeOverAsTheyWere) {
    std::string columns = "id int not null primary key";
    for (std::size_t i = 0; i < extremes().size(); ++i)
        columns += ",c" + std::to_string(i) + " " + extremes()[i].type;
    source_->execute("create table v(" + columns + ")");
    source_->execute("insert into v(id) values(0)");
    int id = 0;
    for (std::size_t i = 0; i < extremes().size(); ++i) {
        for (const std::string& literal : extremes()[i].literals)
            source_->execute("insert into v(id,c" + std::to_string(i) + ") values(" + std::to_string(++id) + "," +
                             literal + ")");
    }
    copy();
    EXPECT_EQ(value(*target_, "select count(*) from v"), std::to_string(id + 1));
    expectSame("select * from v order by id");
    if (GetParam().from == SideKind::server || GetParam().to == SideKind::server) return;
    expectSame("select id from v where c16='AB' or c17='BLANKS' order by id");
}

TEST_P(CopyValues, OfManyMegabytesComeOver) {
    source_->execute("create table photos(id int not null primary key, photo image)");
    std::string bytes(9UL << 20, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>((i * 31 + (i >> 9)) & 0xFF);
    const auto writer = source_->openTable("photos");
    for (const char* id : {"1", "2"}) {
        writer->addNew();
        writer->set("id", id);
        writer->setBinary("photo", std::as_bytes(std::span(bytes)));
        writer->update();
    }
    copy();
    const Recordset photo = target_->open("select photo from photos where id=2");
    EXPECT_TRUE(photo.cell(0, 0) == bytes);
}

}  // namespace
}  // namespace orvenmod::store::test
