#include "store/copy/copy.h"

#include <algorithm>
#include <utility>

#include "store/copy/definitiontexts.h"
#include "store/copy/rowsum.h"
#include "store/copy/vieworder.h"
#include "store/transaction.h"
#include "store/tsql/objectname.h"

namespace orvenmod::store {

namespace {

using Stage = CopyProgress::Stage;

/// Runs the work; its failure gets the place.
template <typename Work>
void placed(const CopyFailure::Place& place, Work work) {
    try {
        work();
    } catch (const CopyFailure&) {
        throw;
    } catch (const Failure& failure) {
        throw CopyFailure(failure, place);
    }
}

/// Keeps a source as it is while it is read, where the store can: the embedded one lets nobody else write.
class HeldSource {
public:
    explicit HeldSource(Connection& source) : source_(source) {
        try {
            source_.beginTrans();
        } catch (const Failure& failure) {
            // A file that may only be read can't be held; the counts tell in the end whether somebody wrote to it.
            if (failure.kind() == FailureKind::busy) throw;
        }
    }
    ~HeldSource() {
        try {
            if (source_.inTransaction()) source_.rollbackTrans();
        } catch (const std::exception&) {
            // Nothing was written to it, and closing lets go of it too.
            return;
        }
    }
    HeldSource(const HeldSource&) = delete;
    HeldSource& operator=(const HeldSource&) = delete;

private:
    Connection& source_;
};

/// The columns that tell a row from the others, for a message.
std::vector<std::size_t> keyColumns(const TableOutline& table) {
    std::vector<std::string> names;
    for (const KeyOutline& key : table.keys) {
        if (!names.empty() && !key.primary) continue;
        names.clear();
        for (const KeyPart& part : key.columns)
            names.push_back(part.column);
    }
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (std::find(names.begin(), names.end(), table.columns[i].name) != names.end()) places.push_back(i);
    }
    return places.empty() ? std::vector<std::size_t>{0} : places;
}

std::string keyOf(const TableOutline& table, const Recordset& rows, std::size_t row) {
    std::string text;
    for (const std::size_t column : keyColumns(table)) {
        text += text.empty() ? "" : ", ";
        text += table.columns[column].name + "=";
        text += rows.cell(row, static_cast<int>(column)).value_or("null");
    }
    return text;
}

class Copier {
public:
    Copier(Connection& source, Connection& target, const CopyWatch& watch)
        : source_(source), target_(target), watch_(watch) {
        if (!watch_.cancelled) return;
        const auto stop = [this] { stopIfCancelled(); };
        source_.setProgress(stop);
        target_.setProgress(stop);
    }
    ~Copier() {
        if (!watch_.cancelled) return;
        for (Connection* connection : {&source_, &target_}) {
            try {
                connection->setProgress(nullptr);
            } catch (const Failure&) {
                continue;  // a lost connection reports nothing any more
            }
        }
    }
    Copier(const Copier&) = delete;
    Copier& operator=(const Copier&) = delete;

    CopyReport run() {
        const HeldSource hold(source_);
        outline_ = source_.outline();
        report_.leftOut = outline_.others;
        countRows();
        transact(target_, [this] {
            refuseUnlessEmpty();
            for (const TableOutline& table : outline_.tables)
                placed({.table = table.name}, [&] { target_.execute(createTableText(table)); });
            for (const TableOutline& table : outline_.tables)
                sums_.push_back(copyRows(table));
            makeIndexes();
            makeViews();
            compare();
            stopIfCancelled();
        });
        return std::move(report_);
    }

private:
    void stopIfCancelled() const {
        if (watch_.cancelled && watch_.cancelled()) throw CopyCancelled();
    }

    void tell(Stage stage, const std::string& table, std::int64_t rows, std::int64_t total) const {
        stopIfCancelled();
        if (watch_.progress) watch_.progress({stage, table, rows, total});
    }

    static std::int64_t countOf(Connection& connection, const TableOutline& table) {
        const Recordset rows = connection.open("select count(*) as n from " + tsql::bracketed(table.name));
        return std::stoll(rows.text("n", "0"));
    }

    void countRows() {
        for (const TableOutline& table : outline_.tables)
            placed({.table = table.name}, [&] { total_ += countOf(source_, table); });
    }

    void refuseUnlessEmpty() {
        const Outline there = target_.outline();
        if (there.tables.empty() && there.views.empty()) return;
        const std::string name = there.tables.empty() ? there.views.front().name : there.tables.front().name;
        throw Failure(FailureKind::duplicate, kTargetNotEmpty, "目标数据库不是空的，其中已有 " + name + "。");
    }

    RowSum copyRows(const TableOutline& table) {
        RowSum sum(table.columns);
        std::vector<std::string> fields;
        for (const ColumnOutline& column : table.columns)
            fields.push_back(column.name);
        placed({.table = table.name}, [&] {
            const auto loader = target_.openLoader(tsql::bracketed(table.name), fields);
            source_.read(selectText(table), [&](const Recordset& rows) {
                load(table, *loader, rows);
                sum.add(rows);
                copied_ += static_cast<std::int64_t>(rows.rowCount());
                tell(Stage::copying, table.name, copied_, total_);
            });
        });
        return sum;
    }

    static void load(const TableOutline& table, TableLoader& loader, const Recordset& rows) {
        try {
            loader.add(rows);
        } catch (const RowFailure& failure) {
            CopyFailure::Place place{.table = table.name, .key = keyOf(table, rows, failure.row())};
            if (failure.column() != RowFailure::kUnknown)
                place.column = table.columns[static_cast<std::size_t>(failure.column())].name;
            throw CopyFailure(failure, place);
        }
    }

    void makeIndexes() {
        std::int64_t total = 0;
        for (const TableOutline& table : outline_.tables)
            total += static_cast<std::int64_t>(table.indexes.size());
        std::int64_t made = 0;
        for (const TableOutline& table : outline_.tables) {
            for (const IndexOutline& index : table.indexes) {
                placed({.table = table.name, .object = index.name},
                       [&] { target_.execute(createIndexText(table, index)); });
                tell(Stage::indexing, table.name, ++made, total);
            }
        }
    }

    void makeViews() {
        for (const ViewOutline& view : inOrderOfMaking(outline_.views)) {
            stopIfCancelled();
            placed({.object = view.name}, [&] { target_.execute(view.text); });
            report_.views.push_back(view.name);
        }
    }

    void compare() {
        std::int64_t compared = 0;
        for (std::size_t i = 0; i < outline_.tables.size(); ++i) {
            const TableOutline& table = outline_.tables[i];
            RowSum there(table.columns);
            placed({.table = table.name}, [&] {
                target_.read(selectText(table), [&](const Recordset& rows) {
                    there.add(rows);
                    compared += static_cast<std::int64_t>(rows.rowCount());
                    tell(Stage::comparing, table.name, compared, total_);
                });
                if (there.rows() != countOf(source_, table) || !(there == sums_[i])) throw differing(table, there, i);
            });
            report_.tables.push_back({table.name, there.rows(), there.sum()});
        }
    }

    Failure differing(const TableOutline& table, const RowSum& there, std::size_t i) {
        const std::int64_t here = countOf(source_, table);
        const bool counts = here != there.rows();
        return {FailureKind::other, kSidesDiffer,
                counts
                    ? "两边的行数不同：来源 " + std::to_string(here) + "，目标 " + std::to_string(there.rows()) + "。"
                    : "两边的内容不同：" + std::to_string(sums_[i].rows()) + " 行的校验和不一致。"};
    }

    Connection& source_;
    Connection& target_;
    const CopyWatch& watch_;
    Outline outline_;
    CopyReport report_;
    std::vector<RowSum> sums_;  // of the source's tables
    std::int64_t total_ = 0;
    std::int64_t copied_ = 0;
};

}  // namespace

CopyReport copySuite(Connection& source, Connection& target, const CopyWatch& watch) {
    return Copier(source, target, watch).run();
}

}  // namespace orvenmod::store
