// The disk of the server is full.
#include <random>

#include "losses.h"

namespace orvenmod::test {
namespace {

namespace tsql = store::tsql;

PostgresServer::Settings fillable() {
    PostgresServer::Settings settings;
    settings.fillable = true;
    return settings;
}

// Neither fits into what is there nor can be packed.
std::string large() {
    constexpr std::size_t kSize = 500000;
    std::mt19937 random(1);
    std::string bytes(kSize, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

TEST(FullDisk, IsToldOnceStoresNothingAndTheSaveCanBeDoneAgain) {
    PostgresServer server(fillable());
    LossStage stage(server);
    const std::string before = stage.stored();
    stage.openNew([&](User& user) {
        stage.fillIn(user);
        user.chooseTab("SSTab1", 1);
        user.chooseFile(stage.makeFile("large.pdf", large()));
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 2, "全套图纸");
        const Texts typed = values(user);
        server.fillDisk();
        const auto told = stage.saveWith(user, 0, {});
        ASSERT_EQ(told.size(), 1U);
        EXPECT_EQ(told[0].number, tsql::kNoSpace) << told[0].text;
        EXPECT_EQ(stage.stored(), before);
        EXPECT_EQ(values(user), typed);
        server.clearDisk();
        stage.save(user);
    });
    EXPECT_NE(stage.stored(), before);
}

}  // namespace
}  // namespace orvenmod::test
