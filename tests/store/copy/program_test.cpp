#include "tools/orvencopy/program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "entry/storefactory.h"
#include "store/copy/sides.h"

namespace orvenmod::tools {
namespace {

using nlohmann::json;
using store::test::SideKind;

class CopyProgram : public ::testing::Test {
protected:
    CopyProgram() {
        const auto connection = from_->connect();
        connection->execute("create table t(id int not null primary key, c varchar(10))");
        connection->execute("insert into t(id,c) values(1,'甲')");
        connection->execute("create view v as select c from t");
    }

    int run(const std::vector<std::string>& arguments, Terminal terminal = Terminal::no) {
        output_.str("");
        messages_.str("");
        return runCopyProgram(arguments, {stores_, output_, messages_, terminal, nullptr});
    }
    std::vector<json> lines() const {
        std::vector<json> result;
        std::istringstream text(output_.str());
        for (std::string line; std::getline(text, line);)
            result.push_back(json::parse(line));
        return result;
    }

    std::unique_ptr<store::test::Side> from_ = store::test::makeSide(SideKind::embedded);
    std::unique_ptr<store::test::Side> to_ = store::test::makeSide(SideKind::embedded);
    StoreFactory stores_;
    std::ostringstream output_;
    std::ostringstream messages_;
};

TEST_F(CopyProgram, TellsEachTableAndTheWholeInJsonLines) {
    EXPECT_EQ(run({from_->connectionString(), to_->connectionString()}), exitcode::kDone);
    ASSERT_EQ(lines().size(), 2U);
    EXPECT_EQ(lines()[0]["table"], "t");
    EXPECT_EQ(lines()[0]["rows"], 1);
    EXPECT_EQ(lines()[0]["checksum"].get<std::string>().size(), 16U);
    EXPECT_EQ(lines()[1]["tables"], 1);
    EXPECT_EQ(lines()[1]["views"], 1);
    EXPECT_EQ(lines()[1]["same"], true);
    EXPECT_EQ(messages_.str(), "copying   100 %\ncomparing 100 %\n");
}

TEST_F(CopyProgram, DrawsABarOnATerminalAndTakesItAway) {
    run({from_->connectionString(), to_->connectionString()}, Terminal::yes);
    EXPECT_NE(messages_.str().find("\rcopying    t"), std::string::npos);
    EXPECT_NE(messages_.str().find("############################] 100 %"), std::string::npos);
    EXPECT_TRUE(messages_.str().ends_with(" \r"));
    EXPECT_EQ(messages_.str().find('\n'), std::string::npos);
}

TEST_F(CopyProgram, RefusesATargetThatIsNotEmptyWithACodeOfItsOwn) {
    run({from_->connectionString(), to_->connectionString()});
    EXPECT_EQ(run({from_->connectionString(), to_->connectionString()}), exitcode::kTargetNotEmpty);
    ASSERT_EQ(lines().size(), 1U);
    EXPECT_EQ(lines()[0]["error"]["number"], store::kTargetNotEmpty);
}

TEST_F(CopyProgram, TellsAFailureWithItsPlace) {
    from_->spoil("UPDATE t SET c = 'longer than ten characters'");
    EXPECT_EQ(run({from_->connectionString(), to_->connectionString()}), exitcode::kFailed);
    const json error = lines().at(0)["error"];
    EXPECT_EQ(error["number"], 2628);
    EXPECT_EQ(error["kind"], "truncation");
    EXPECT_EQ(error["table"], "t");
    EXPECT_EQ(error["column"], "c");
    EXPECT_EQ(error["key"], "id=1");
}

TEST_F(CopyProgram, FailsForADatabaseThatIsNotThere) {
    EXPECT_EQ(run({"Provider=SQLite;Data Source=/nowhere/at.all", to_->connectionString()}), exitcode::kFailed);
    EXPECT_EQ(lines().at(0)["error"]["kind"], "connection");
}

TEST_F(CopyProgram, ExplainsItself) {
    EXPECT_EQ(run({"--help"}), exitcode::kDone);
    EXPECT_NE(output_.str().find("EXIT STATUS"), std::string::npos);
    EXPECT_EQ(run({}), exitcode::kUsage);
    EXPECT_EQ(run({"one"}), exitcode::kUsage);
    EXPECT_NE(messages_.str().find("usage: orvencopy FROM TO"), std::string::npos);
}

class SignalledProgram : public CopyProgram {
protected:
    /// Starts the program on a source that another connection holds, so that it waits, and sends it the signal.
    int codeAfter(int signal) {
        const auto holder = from_->connect();
        holder->beginTrans();
        const std::string from = from_->connectionString() + ";Busy Timeout=60000";
        const std::string to = to_->connectionString();
        const pid_t child = ::fork();
        if (child == 0) {
            ::execl(ORVENCOPY, "orvencopy", from.c_str(), to.c_str(), nullptr);
            ::_exit(99);
        }
        awaitHandler(child, signal);
        ::kill(child, signal);
        int status = 0;
        ::waitpid(child, &status, 0);
        holder->rollbackTrans();
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    /// Until the process catches the signal; before, it would just end by it.
    static void awaitHandler(pid_t child, int signal) {
        for (;;) {
            std::ifstream state("/proc/" + std::to_string(child) + "/status");
            for (std::string line; std::getline(state, line);) {
                if (!line.starts_with("SigCgt:")) continue;
                const auto caught = std::stoull(line.substr(7), nullptr, 16);
                if ((caught >> (signal - 1) & 1U) != 0) return;
            }
            std::this_thread::yield();
        }
    }
};

TEST_F(SignalledProgram, EndsACancelledCopyWithTheShellsCode) {
    EXPECT_EQ(codeAfter(SIGINT), 130);
    EXPECT_EQ(codeAfter(SIGTERM), 143);
    EXPECT_TRUE(to_->connect()->outline().tables.empty());
}

}  // namespace
}  // namespace orvenmod::tools
