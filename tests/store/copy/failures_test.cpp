// Whatever goes wrong, the target is as it was, and the place is told.
#include "store/copy/sides.h"
#include "store/fault.h"
#include "support/otherprocess.h"

namespace orvenmod::store::test {
namespace {

class CopyFailures : public CopyRoad {
protected:
    /// Some of everything that a copy goes through.
    void fillSource() {
        source_->execute("create table a(id int identity(1,1) primary key, c varchar(20) default 'x', p image)");
        source_->execute("create table b(n decimal(9,2), d datetime, unique(n))");
        source_->execute("create index ix on b(d)");
        source_->execute("create view v as select id,c from a");
        source_->execute("create view w as select count(*) as n from v");
        for (int i = 0; i < 3; ++i) {
            source_->execute("insert into a(c) values('a" + std::to_string(i) + "')");
            source_->execute("insert into b(n,d) values(" + std::to_string(i) + ",'2026-01-02')");
        }
    }
    void expectNothingThere() {
        const Outline outline = to_->connect()->outline();
        EXPECT_TRUE(outline.tables.empty());
        EXPECT_TRUE(outline.views.empty());
    }
    void emptyTarget() {
        const Outline outline = target_->outline();
        for (auto view = outline.views.rbegin(); view != outline.views.rend(); ++view)
            target_->execute("drop view " + view->name);
        for (const TableOutline& table : outline.tables)
            target_->execute("drop table " + table.name);
    }
    CopyFailure::Place placeOfFailure() {
        try {
            copy();
        } catch (const CopyFailure& failure) {
            number_ = failure.number();
            return failure.place();
        }
        ADD_FAILURE() << "it was copied";
        return {};
    }

    int number_ = 0;
};

std::vector<Road> fromTheEmbeddedStore() {
    return {{SideKind::embedded, SideKind::embedded}, {SideKind::embedded, SideKind::postgres}};
}
INSTANTIATE_TEST_SUITE_P(Stores, CopyFailures, ::testing::ValuesIn(fromTheEmbeddedStore()), nameOf);

/// A store of one side, so that its operations can be made to fail.
class StoreOfSide : public Store {
public:
    explicit StoreOfSide(Side& side) : side_(side) {}
    std::unique_ptr<Connection> connect(const std::string&) override { return side_.connect(); }

private:
    Side& side_;
};

TEST_P(CopyFailures, LeaveTheTargetEmptyWhicheverOperationFailsThere) {
    fillSource();
    target_->close();
    StoreOfSide store(*to_);
    int failures = 0;
    for (FaultPlan plan{.failAt = 1};; plan = {.failAt = plan.failAt + 1}) {
        FaultyStore faulty(store, plan);
        try {
            const auto target = faulty.connect("");
            copySuite(*source_, *target);
            break;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), plan.number) << "operation " << plan.failAt;
            ++failures;
        }
        expectNothingThere();
        EXPECT_FALSE(source_->inTransaction()) << "operation " << plan.failAt;
    }
    EXPECT_GE(failures, 15);
    EXPECT_EQ(to_->connect()->outline().tables.size(), 2U);
}

TEST_P(CopyFailures, LeaveTheTargetEmptyWhicheverOperationFailsAtTheSource) {
    fillSource();
    source_->close();
    StoreOfSide store(*from_);
    int failures = 0;
    for (FaultPlan plan{.failAt = 1}; plan.count + 1 >= plan.failAt;
         plan = {.count = plan.count, .failAt = plan.failAt + 1}) {
        plan.count = 0;
        FaultyStore faulty(store, plan);
        try {
            const auto source = faulty.connect("");
            copySuite(*source, *target_);
            emptyTarget();  // what holds the source may fail: a copy goes without
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number(), plan.number) << "operation " << plan.failAt;
            ++failures;
        }
        expectNothingThere();
    }
    EXPECT_GT(failures, 5);
}

TEST_P(CopyFailures, TellTableColumnAndKeyOfAValueThatTheTargetRefuses) {
    source_->execute("create table t(id int not null primary key, made datetime)");
    source_->execute("insert into t(id,made) values(1,'2026-01-02')");
    source_->execute("insert into t(id) values(2)");
    from_->spoil("UPDATE t SET made = 'soon' WHERE id = 2");
    const CopyFailure::Place place = placeOfFailure();
    EXPECT_EQ(number_, 241);
    EXPECT_EQ(place.table, "t");
    EXPECT_EQ(place.column, "made");
    EXPECT_EQ(place.key, "id=2");
    expectNothingThere();
}

TEST_P(CopyFailures, TellWhatAConstraintOfTheTargetRefuses) {
    source_->execute("create table t(id int not null primary key, n int check(n>0))");
    source_->execute("insert into t(id,n) values(7,5)");
    from_->spoil("PRAGMA ignore_check_constraints = ON; UPDATE t SET n = -5");
    const CopyFailure::Place place = placeOfFailure();
    EXPECT_EQ(number_, 547);
    EXPECT_EQ(place.table, "t");
    EXPECT_EQ(place.key, "id=7");
    expectNothingThere();
}

TEST_P(CopyFailures, TellAViewThatNoLongerHolds) {
    source_->execute("create table t(id int, gone int)");
    source_->execute("create view v as select gone from t");
    source_->execute("create view fine as select id from t");
    source_->execute("alter table t drop column gone");
    EXPECT_EQ(placeOfFailure().object, "v");
    expectNothingThere();
}

TEST_P(CopyFailures, TellWhatTheDialectHasNoWordsFor) {
    source_->execute("create table t(id int)");
    from_->spoil(
        "CREATE TRIGGER tr AFTER INSERT ON t BEGIN DELETE FROM t WHERE id = 5; END; CREATE INDEX x ON t(abs(id))");
    const CopyReport report = copy();
    EXPECT_EQ(report.leftOut, (std::vector<std::string>{"index x of t", "trigger tr"}));
}

TEST_P(CopyFailures, LeaveTheTargetEmptyWhenCancelledAtAnyTime) {
    fillSource();
    for (int allowed = 0;; ++allowed) {
        int asked = 0;
        try {
            copy({nullptr, [&] { return ++asked > allowed; }});
            break;
        } catch (const CopyCancelled&) {
            expectNothingThere();
        }
        EXPECT_FALSE(target_->inTransaction());
        ASSERT_LT(allowed, 1000);
    }
    EXPECT_EQ(target_->outline().tables.size(), 2U);
}

TEST_P(CopyFailures, TellWhenSomebodyWroteToTheSourceMeanwhile) {
    fillSource();
    int more = 0;
    const auto write = [&](const CopyProgress& progress) {
        if (progress.stage != CopyProgress::Stage::indexing || more++ > 0) return;
        // As on a server, which nobody holds.
        source_->execute("insert into a(c) values('late')");
    };
    try {
        copy({write, nullptr});
        ADD_FAILURE() << "it was copied";
    } catch (const CopyFailure& failure) {
        EXPECT_EQ(failure.number(), kSidesDiffer);
        EXPECT_EQ(failure.place().table, "a");
    }
    expectNothingThere();
}

TEST_P(CopyFailures, LeaveTheTargetEmptyWhenTheProgramIsKilled) {
    fillSource();
    source_->close();
    target_->close();
    orvenmod::test::OtherProcess child([&](orvenmod::test::OtherProcess& self) {
        const auto source = from_->connect();
        const auto target = to_->connect();
        copySuite(*source, *target,
                  {[&](const CopyProgress& progress) {
                       if (progress.stage != CopyProgress::Stage::comparing) return;
                       self.tell();
                       self.await();
                   },
                   nullptr});
        return 0;
    });
    child.await();
    child.kill();
    expectNothingThere();
}

}  // namespace
}  // namespace orvenmod::store::test
