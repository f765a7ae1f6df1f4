#include "store/upgrade.h"

#include <algorithm>
#include <optional>

#include "store/itemclass.h"
#include "store/transaction.h"

namespace orvenmod::store {
namespace {

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

bool hasTable(Connection& connection, std::string_view table) {
    try {
        connection.openTable(table);
        return true;
    } catch (const Failure& failure) {
        if (failure.kind() != FailureKind::noSuchObject) throw;
        return false;
    }
}

class Upgrade {
public:
    explicit Upgrade(Connection& connection) : connection_(connection) {}

    void run() {
        while (!runAsOne()) {
        }
    }

private:
    /// A statement that failed, which may have meant that there was nothing to do.
    struct Doubt {
        const StepStatement* statement;  // two steps may have the same text
        Failure failure;
    };
    struct TransactionEnded {};

    /// False where a doubtful failure has ended the transaction; the statement is left out from then on.
    bool runAsOne() {
        doubt_.reset();
        try {
            transact(connection_, [this] { runMissingSteps(); });
            return true;
        } catch (const TransactionEnded&) {
            needless_.push_back(*doubt_);
            return false;
        }
    }

    void runMissingSteps() {
        // Whoever comes second waits at this row of a server, as it has waited for the beginning in the embedded store.
        run({"update tblItemClass set fItemType=fItemType where " + fixedRow()});
        const int version = upgradableVersion(connection_);
        if (version == newestSchemaVersion()) return;
        for (const UpgradeStep& step : upgradeSteps()) {
            if (step.version <= version) continue;
            for (const StepStatement& statement : step.statements)
                run(statement);
        }
        run({"delete from tblOrvenmodVersion"});
        run({versionRow(newestSchemaVersion())});
    }

    void run(const StepStatement& statement) {
        if (const Doubt* known = needless(statement)) {
            doubt_ = *known;
            return;
        }
        try {
            const bool made = !statement.madeTable.empty() && hasTable(connection_, statement.madeTable);
            if (!made) connection_.execute(statement.sql);
            doubt_.reset();
        } catch (const Failure& failure) {
            judge(statement, failure);
        }
    }

    void judge(const StepStatement& statement, const Failure& failure) {
        if (doubt_) {
            if (failure.kind() == FailureKind::transaction && needless(*doubt_->statement) == nullptr)
                throw TransactionEnded();
            // That it is there still says no more than that it could not be dropped.
            if (failure.kind() == FailureKind::duplicate) throw doubt_->failure;
            throw failure;
        }
        const bool tellsNothing = statement.failure == StepFailure::tellsNothing &&
                                  (failure.kind() == FailureKind::noSuchObject || failure.kind() == FailureKind::other);
        if (!tellsNothing) throw failure;
        doubt_ = Doubt{&statement, failure};
    }

    const Doubt* needless(const StepStatement& statement) const {
        const auto found = std::find_if(needless_.begin(), needless_.end(),
                                        [&](const Doubt& doubt) { return doubt.statement == &statement; });
        return found == needless_.end() ? nullptr : &*found;
    }

    Connection& connection_;
    std::vector<Doubt> needless_;
    std::optional<Doubt> doubt_;  // of the statement before
};

}  // namespace

int newestSchemaVersion() { return upgradeSteps().back().version; }

int schemaVersion(Connection& connection) {
    connection.open("select fItemClassId from tblItemClass where " + fixedRow());
    if (!hasTable(connection, kVersionTable)) return 0;
    const Recordset row =
        connection.open("select cast(isnull(max(fVersion),0) as int) as fVersion from tblOrvenmodVersion");
    return std::stoi(row.text("fVersion"));
}

std::string versionRow(int version) {
    return "insert into tblOrvenmodVersion(fVersion) values(" + std::to_string(version) + ")";
}

void upgradeSchema(Connection& connection) {
    if (upgradableVersion(connection) == newestSchemaVersion()) return;
    Upgrade(connection).run();
}

}  // namespace orvenmod::store
