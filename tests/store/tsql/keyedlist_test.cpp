// Which queries are read by keys, and what becomes of them.
#include "store/tsql/keyedlist.h"

#include <gtest/gtest.h>

#include "plannedtables.h"

namespace orvenmod::store::tsql {
namespace {

class KeyedLists : public PlannedTables {
protected:
    KeyedLists() {
        run("create table tblItem(fItemId int not null,fNumber varchar(100),fName varchar(100),fParentId int,"
            "fNBNumber varchar(200),constraint PK_item primary key(fItemId))");
        run("create table goods(fItemId int,fNumber varchar(100),fName varchar(100),fH int,fPrice decimal(18,4))");
        run("create index number on goods(fNumber)");
        run("create view vGoods as select a.fItemId,b.fNBNumber,isnull(c.fName,'') as fParent,"
            "isnull(a.fNumber,'') as fNumber,isnull(a.fPrice,0) as fPrice,0 as fQty,isnull(s.fName,'') as fHName "
            "from goods as a left join tblItem as b on a.fItemId=b.fItemId left join tblItem as c on "
            "c.fItemId=b.fParentId left outer join tblItem as s on s.fItemId=a.fH");
    }

    std::optional<KeyedList> list(const std::string& sql) {
        catalog_.refresh();
        return keyedList(sql, catalog_);
    }
    bool isKeyed(const std::string& sql) { return list(sql).has_value(); }
    bool viewIsKeyed(const std::string& select) {
        run("create view v as " + select);
        const bool keyed = isKeyed("select fNumber from v order by fNumber");
        run("drop view v");
        return keyed;
    }
};

TEST_F(KeyedLists, TakeTheKeysFromTheIndexOfTheOrderWithoutASort) {
    const auto keyed = list("select fItemId,fNumber,fHName from vGoods where 1=1 order by fnumber");
    ASSERT_TRUE(keyed);
    EXPECT_EQ(keyed->order, KeyedList::Order::ascii);
    const std::string plan = nativePlan(keyed->keys.statements.at(0));
    EXPECT_NE(plan.find("INDEX goods.number"), std::string::npos) << plan;
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
}

TEST_F(KeyedLists, LeaveOutTheTablesThatNothingNeeds) {
    const auto keyed = list("select fNumber,fHName from vGoods where fNBNumber like '.1.%' order by fNumber");
    ASSERT_TRUE(keyed);
    EXPECT_EQ(keyed->order, KeyedList::Order::none);
    EXPECT_EQ(keyed->keys.statements.at(0).find("\"s\""), std::string::npos) << keyed->keys.statements[0];
    EXPECT_EQ(keyed->keys.statements.at(0).find("\"c\""), std::string::npos);
    EXPECT_NE(keyed->keys.statements.at(0).find("\"b\""), std::string::npos);
    const std::string plan = nativePlan(keyed->rows.statements.at(0));
    EXPECT_NE(plan.find("SEARCH a USING INTEGER PRIMARY KEY"), std::string::npos) << plan;
    EXPECT_NE(plan.find("SEARCH s USING INDEX"), std::string::npos) << plan;
    EXPECT_EQ(plan.find(" b "), std::string::npos) << plan;
}

TEST_F(KeyedLists, AreWalkedThroughByAColumnOverTheTablesThatItNeeds) {
    const std::string sql =
        "select fNumber,fPrice,fHName,fParent from vGoods where fNBNumber like '.1.%' order by fNumber";
    ASSERT_TRUE(list(sql));
    const auto planOf = [&](const std::vector<int>& columns) {
        return nativePlan(keyedWalk(sql, catalog_, columns).statements.at(0));
    };
    EXPECT_EQ(planOf({1}), "SEARCH a USING INTEGER PRIMARY KEY (rowid>? AND rowid<?)\n");
    EXPECT_EQ(planOf({1, 0}), planOf({1}));
    EXPECT_EQ(planOf({2}).find("SEARCH a USING INTEGER PRIMARY KEY (rowid>? AND rowid<?)"), 0U) << planOf({2});
    EXPECT_NE(planOf({2}).find("SEARCH s USING"), std::string::npos) << planOf({2});
    EXPECT_EQ(planOf({2}).find("TEMP B-TREE"), std::string::npos) << planOf({2});
    EXPECT_EQ(planOf({2}).find(" c "), std::string::npos) << planOf({2});
    EXPECT_NE(planOf({3}).find("SEARCH b USING"), std::string::npos) << "by which c is joined: " << planOf({3});
    const Translation walk = keyedWalk(sql, catalog_, std::vector{3, 1});
    ASSERT_EQ(walk.columns.size(), 2U);
    EXPECT_EQ(walk.columns[0].name, "fParent");
    EXPECT_TRUE(walk.columns[1].type.isDecimal());
}

constexpr const char* kCategory =
    "select fNumber,fHName from vGoods where 1=1  and fNBNumber like '.1.%' order by fNumber";

TEST_F(KeyedLists, PassThroughTheTextsOfACategoryWithoutASort) {
    const auto keyed = list(kCategory);
    ASSERT_TRUE(keyed);
    EXPECT_FALSE(keyed->partner);
    for (const std::string& text : {keyed->texts.all, keyed->texts.from, keyed->texts.before}) {
        const std::string plan = nativePlan(text);
        EXPECT_NE(plan.find("INDEX goods.number"), std::string::npos) << plan;
        EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << plan;
    }
}

TEST_F(KeyedLists, AskTheTableOfACategorysPathsAloneWhereTheIndexOfTheCodeHasTheReferenceToIt) {
    run("create index path on tblItem(fNBNumber) include (fItemId)");
    run("drop index goods.number");
    run("create index number on goods(fNumber) include (fItemId)");
    const auto keyed = list(kCategory);
    ASSERT_TRUE(keyed && keyed->partner);
    const std::string& marks = keyed->partner->marks.statements.at(0);
    EXPECT_EQ(marks.find("ts_like"), std::string::npos) << marks;
    const std::string plan = nativePlan(marks);
    EXPECT_EQ(plan.find("SEARCH b USING INDEX tblItem.path (<expr>>? AND <expr><?)"), 0U) << plan;
    EXPECT_EQ(plan.find("goods"), std::string::npos) << plan;
    for (const std::string& text :
         {keyed->partner->order.all, keyed->partner->order.from, keyed->partner->order.before}) {
        EXPECT_EQ(nativePlan(text).find("TEMP B-TREE"), std::string::npos) << nativePlan(text);
    }
    EXPECT_FALSE(keyed->partner->order.oneRowEach);
    run("create unique index one on goods(fItemId)");
    EXPECT_TRUE(list(kCategory)->partner->order.oneRowEach);
}

TEST_F(KeyedLists, MatchAPatternThatItsBoundsDoNotSay) {
    run("drop index goods.number");
    run("create index number on goods(fNumber) include (fItemId)");
    for (const char* pattern : {".1%2.%", ".1_%", ".1.", "A%", ".1.[2]%"}) {
        const auto keyed =
            list(std::string("select fNumber from vGoods where fNBNumber like '") + pattern + "' order by fNumber");
        ASSERT_TRUE(keyed && keyed->partner) << pattern;
        EXPECT_NE(keyed->partner->marks.statements.at(0).find("ts_like"), std::string::npos) << pattern;
    }
}

TEST_F(KeyedLists, AskNoOtherTableForRowsThatMayHaveNoneThere) {
    run("drop index goods.number");
    run("create index number on goods(fNumber) include (fItemId)");
    for (const char* condition :
         {"fNBNumber is null", "not fNBNumber like '.1.%'", "fNBNumber not like '.1.%'",
          "fNBNumber like '.1.%' or fNBNumber is null", "fParent like 'a%'", "fNBNumber like '.1.%' and fHName='x'"}) {
        const auto keyed = list(std::string("select fNumber from vGoods where ") + condition + " order by fNumber");
        ASSERT_TRUE(keyed) << condition;
        EXPECT_FALSE(keyed->partner) << condition;
    }
}

TEST_F(KeyedLists, KeepATableThatAnotherOnesJoinNeeds) {
    const auto keyed = list("select fParent from vGoods order by fNumber desc");
    ASSERT_TRUE(keyed);
    EXPECT_NE(keyed->rows.statements.at(0).find("\"b\""), std::string::npos) << keyed->rows.statements[0];
}

TEST_F(KeyedLists, ComeInTheirOrderWhereTheConditionReadsTheirOwnTable) {
    for (const char* condition : {"fNumber like '%1%'", "fPrice>1 and fNBNumber like '.1.%'", "fQty=0"}) {
        const auto keyed = list(std::string("select fNumber from vGoods where ") + condition + " order by fNumber");
        ASSERT_TRUE(keyed);
        EXPECT_EQ(keyed->order, KeyedList::Order::told) << condition;
    }
}

TEST_F(KeyedLists, HaveTheColumnsAndTypesOfTheQuery) {
    const std::string sql = "select fPrice as p,fNumber from vGoods order by fNumber";
    const auto keyed = list(sql);
    ASSERT_TRUE(keyed);
    const auto whole = translateForSqlite(sql, catalog_).columns;
    ASSERT_EQ(keyed->rows.columns.size(), whole.size());
    for (std::size_t i = 0; i < whole.size(); ++i) {
        EXPECT_EQ(keyed->rows.columns[i].name, whole[i].name);
        EXPECT_EQ(keyed->rows.columns[i].type, whole[i].type);
    }
    EXPECT_TRUE(keyed->rows.parameters.empty());
}

TEST_F(KeyedLists, AreMadeOfATableToo) {
    EXPECT_TRUE(isKeyed("select fName,fNumber from goods where fPrice>1 order by fName,fNumber desc"));
}

TEST_F(KeyedLists, AreNotMadeOfARowThatIsNoRowOfOneTable) {
    EXPECT_FALSE(isKeyed("select distinct fNumber from vGoods order by fNumber"));
    EXPECT_FALSE(isKeyed("select top 5 fNumber from vGoods order by fNumber"));
    EXPECT_FALSE(isKeyed("select fNumber from goods group by fNumber order by fNumber"));
    EXPECT_FALSE(isKeyed("select count(*) as n from goods order by n"));
    EXPECT_FALSE(isKeyed("select fNumber from goods union select fNumber from tblItem order by fNumber"));
    EXPECT_FALSE(isKeyed("select a.fNumber from goods as a,tblItem as b order by a.fNumber"));
    EXPECT_FALSE(isKeyed("select fNumber from goods"));
}

TEST_F(KeyedLists, AreNotMadeOfWhatMayFailOrChange) {
    EXPECT_FALSE(isKeyed("select fPrice*2 as p,fNumber from goods order by fNumber"));
    EXPECT_FALSE(isKeyed("select getdate() as d,fNumber from goods order by fNumber"));
    EXPECT_FALSE(isKeyed("select fNumber from goods where fItemId in (select fItemId from vGoods) order by fNumber"));
    EXPECT_FALSE(viewIsKeyed("select convert(int,fName) as n,fNumber from goods"));
}

TEST_F(KeyedLists, AreNotMadeOfAViewThatSomebodyMadeOtherwise) {
    EXPECT_TRUE(viewIsKeyed("select a.fNumber from goods as a left join tblItem as b on b.fItemId=a.fItemId"));
    EXPECT_FALSE(viewIsKeyed("select a.fNumber from goods as a left join tblItem as b on b.fParentId=a.fItemId"));
    EXPECT_FALSE(viewIsKeyed("select a.fNumber from goods as a inner join tblItem as b on b.fItemId=a.fItemId"));
    EXPECT_FALSE(viewIsKeyed("select a.fNumber from goods as a left join tblItem as b on b.fItemId<>a.fItemId"));
    EXPECT_FALSE(viewIsKeyed("select fNumber from goods where fPrice>1"));
    EXPECT_FALSE(viewIsKeyed("select fNumber from vGoods"));
    EXPECT_FALSE(viewIsKeyed("select distinct fNumber from goods"));
    native("CREATE VIEW foreignView AS SELECT fNumber FROM goods");
    EXPECT_FALSE(isKeyed("select fNumber from foreignView order by fNumber"));
    native("CREATE VIEW changed AS /*orven create view changed as select fNumber from goods*/ SELECT 'x' AS fNumber");
    EXPECT_FALSE(isKeyed("select fNumber from changed order by fNumber"));
}

TEST_F(KeyedLists, AreNotMadeWhereAColumnHidesTheKey) {
    native("CREATE TABLE hidden(rowid int, fNumber varchar(10))");
    EXPECT_FALSE(isKeyed("select fNumber from hidden order by fNumber"));
    EXPECT_FALSE(viewIsKeyed("select fItemId as [Orven.Key],fNumber from goods"));
}

}  // namespace
}  // namespace orvenmod::store::tsql
