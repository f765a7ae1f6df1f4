#include "store/upgrade.h"

#include "store/itemclass.h"
#include "store/transaction.h"

namespace orvenmod::store {
namespace {

constexpr int kNoSuchTable = 208;

/// A row that every database has.
std::string fixedRow() { return "fItemClassId=" + std::to_string(kGoods); }

/// The version; throws where no step leads from it to ours.
int upgradableVersion(Connection& connection) {
    const int version = schemaVersion(connection);
    if (version > newestSchemaVersion()) {
        throw Failure(FailureKind::other, kNewerDatabase,
                      "数据库的版本是 " + std::to_string(version) + "，本程序最高支持版本 " +
                          std::to_string(newestSchemaVersion()) + "，请先升级本程序。");
    }
    return version;
}

void run(Connection& connection, const StepStatement& statement) {
    try {
        connection.execute(statement.sql);
    } catch (const Failure& failure) {
        if (statement.nothingToDo == 0 || failure.number() != statement.nothingToDo) throw;
    }
}

void runStepsAfter(Connection& connection, int version) {
    for (const UpgradeStep& step : upgradeSteps()) {
        if (step.version <= version) continue;
        for (const StepStatement& statement : step.statements)
            run(connection, statement);
    }
    connection.execute("delete from tblOrvenmodVersion");
    connection.execute(versionRow(newestSchemaVersion()));
}

}  // namespace

int newestSchemaVersion() { return upgradeSteps().back().version; }

int schemaVersion(Connection& connection) {
    connection.open("select fItemClassId from tblItemClass where " + fixedRow());
    try {
        const Recordset row =
            connection.open("select cast(isnull(max(fVersion),0) as int) as fVersion from tblOrvenmodVersion");
        return std::stoi(row.text("fVersion"));
    } catch (const Failure& failure) {
        if (failure.number() != kNoSuchTable) throw;
        return 0;
    }
}

std::string versionRow(int version) {
    return "insert into tblOrvenmodVersion(fVersion) values(" + std::to_string(version) + ")";
}

void upgradeSchema(Connection& connection) {
    if (upgradableVersion(connection) == newestSchemaVersion()) return;
    transact(connection, [&] {
        // Whoever comes second waits at this row of a server, as it has waited for the beginning in the embedded store.
        connection.execute("update tblItemClass set fItemType=fItemType where " + fixedRow());
        const int version = upgradableVersion(connection);
        if (version < newestSchemaVersion()) runStepsAfter(connection, version);
    });
}

}  // namespace orvenmod::store
