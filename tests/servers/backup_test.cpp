// What the server's own tools save and bring back is the whole suite: names, types and views as they were declared, the
// run-time functions, the rows.
#include "losses.h"
#include "store/connection.h"
#include "support/rows.h"

namespace orvenmod::test {
namespace {

class Backup : public ::testing::Test {
protected:
    Backup() {
        stage.openNew([this](User& user) {
            stage.fillIn(user);
            stage.save(user);
        });
        // Somebody's own objects.
        stage.database().execute(
            "create table tblOwn(fId int identity(7,1), fName varchar(20) default '无', fSum money)");
        stage.database().execute("insert into tblOwn(fSum) values(1.5)");
        stage.database().execute("create view vOwn as select fName+'!' as fLoud, fSum/3 as fThird from tblOwn");
    }
    ~Backup() override { store::postgres::PostgresStore::dropIdleSessions(); }

    PostgresServer& server = PostgresServer::shared();
    LossStage stage{server};
};

TEST_F(Backup, BringsBackTheSuiteAsItWas) {
    const std::string restored = server.makeDatabase();
    const std::string file = stage.name() + ".dump";
    server.command(server.tool("pg_dump") + " --format=custom --file=" + file + " " + stage.name());
    server.command(server.tool("pg_restore") + " --exit-on-error --dbname=" + restored + " " + file);
    server.command("rm " + file);
    const auto again = postgresSiteOf(server, restored);
    EXPECT_EQ(again->dump(), stage.database().dump());

    // The role of the suite works on it; numbers go on, names are found.
    const auto connection = stores().connect(again->connectionString());
    connection->execute("insert into TBLOWN(fSum) values(2)");
    EXPECT_EQ(rowsOf(*connection, "select fId,fName,fSum from tblOwn order by fId"),
              (Rows{{"7", "无", "1.5"}, {"8", "无", "2"}}));
    EXPECT_EQ(rowsOf(*connection, "select fLoud,fThird from vOwn where fThird>0.6"), (Rows{{"无!", "0.6666"}}));
    EXPECT_EQ(rowsOf(*connection, "select fName from tblItem where fItemId>202"), (Rows{{"垫圈"}}));
    connection->execute("alter table tblOwn add fMore varchar(10)");
    connection->close();
}

}  // namespace
}  // namespace orvenmod::test
