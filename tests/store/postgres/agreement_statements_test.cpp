// That both translated stores answer alike: whole statements, in an order in which each builds on what was before.
#include <gtest/gtest.h>

#include <string>

#include "store/postgres/agreement.h"

namespace orvenmod::store::postgres::test {
namespace {

TEST_F(Agreement, IsThereForQueries) {
    for (const char* sql : {
             "select c from u order by c desc,id",
             "select distinct c from u order by c",
             "select distinct c,n from u order by 2,1",
             "select distinct upper(c) as k from u order by k desc",
             "select top 2 distinct c from u",
             "select distinct top 2 c from u order by c",
             "select c,count(*) from u group by c order by c",
             "select c+'x',count(*),sum(n) from u group by c order by c",
             "select c+'x' as k from u group by c+'x' order by c+'x'",

             "select c from u group by c having count(*)>1",
             "select c,(select max(n) from t where t.c=u.c) from u group by c order by c",
             "select c,(select count(*) from u b where b.c=u.c and b.c like u.c) from u group by c order by c",
             "select n/3,count(*) from t group by n/3 order by 1",
             "select n+1,n+1 from t group by n+1 order by n+1",
             "select count(distinct c),count(c),count(*) from u",
             "select min(c),max(c),min(w),max(d) from t",
             "select sum(n),avg(n),avg(m),sum(m),avg(f),sum(q),avg(i),sum(s),avg(y) from t",
             "select sum(n) from t where 1=0",
             "select avg(n),count(*) from t where 1=0",
             "select c from u union select c from t order by c",
             "select c,id from u union all select c,id+9 from t order by 1,2",
             "select c,n from u union select w,n from t order by 2,1",
             "select c from u except select c from t order by c",
             "select c from u intersect select c from t order by c",
             "select n from u union select m from t order by 1",

             "select null as a union all select 'x' order by a",
             "select top 3 with ties c from u order by c",
             "select top 50 percent id from u order by id desc",
             "select top 0 id from u",
             "select id from u where n in (select n from t) order by id",
             "select id from u where c in (select c from t) order by id",
             "select id from u where c not in (select c from t where c is not null) order by id",
             "select id from u where n=(select n from t)",
             "select (select c from u where id=1) as a,(select c from u where 1=0) as b",
             "select id from u where c=any(select c from t) order by id",
             "select id from u where n>all(select n from t where n is not null) order by id",
             "select id from u where c>any(select c from t) order by id",
             "select id from u where exists(select * from t where t.c=u.c) order by id",
             "select a.id,b.id from t a left join u b on a.c=b.c order by a.id,b.id",
             "select a.id,b.id from t a right join u b on a.c=b.c and b.n>5 order by b.id,a.id",
             "select a.id,b.id from t a full join u b on a.c=b.c order by a.id,b.id",
             "select a.id,b.id from t a cross join u b where a.id<b.id order by a.id,b.id",
             "select a.id from t a,u b,(select c as k from u) as z where a.c=b.c and z.k=b.c order by a.id",
             "select c,case when n>0 then c else 'none' end as k from t order by k,id",
             "select id from t where c between 'a' and 'b' order by id",
             "select id from t where n between '-5' and 5 order by id",
             "select id from t where c in ('ABC','12 ',null) order by id",
             "select id from t where n in (10,'0') order by id",
             "select id from t where d in ('2026-01-02 03:04:05.120','1900-01-01') order by id",
             "select id from t where case when n=0 then 0 else 10/n end>0 order by id",
             "select case when 1=0 then 1/0 else 5 end",
             "select case when id>0 then 1 else convert(int,'abc') end from u order by id",
             "select isnull(n,1/0) from u where id<3",
             "select 1/0",
             "select case when id>0 then 1 else len(left('abc',-1)) end from u order by id",
             "select case when id>0 then 1 else convert(int,'a'+'b') end from u order by id",
             "select isnull(n,convert(datetime,'nonsense',103)) from u where n is not null order by id",
             "select id from t where isnumeric(c)=1 and convert(int,c)>5",
             "select id from t where d>convert(datetime,'01/02/1999',103) order by id",
             "select id from t where n<>0 and 10/n>1",
             "select n/0 from u",
             "select 2147483647+n from u",
             "select convert(int,c) from t",
             "select id from t where c=5",
             "select id from t order by x",
             "select c,n from u group by c",
             "select nosuch from u",
             "select * from nosuch",
             "select 'a' as k,N'客' as l,1 as m,2.50 as n,1e5 as o,$1.5 as p,0x41 as q,null as r",
             "select '' as k,' ' as l where ''=' '",

             "select upper(w),lower(w) from t order by id",
             "select m*m,m/k,m+k,m-k,k/m,q*m,q/3 from t where id=1",
             "select convert(decimal(5,2),m),convert(int,m),convert(int,-2.7),convert(int,f) from t where id<3",
             "select * from u order by id",
             "select u.*,1 as one from u where id=1",
         }) {
        both(sql);
    }
}

TEST_F(Agreement, IsThereForChanges) {
    for (const char* sql : {
             "update t set n=n+1 where c='ABC'",
             "update a set n=b.n from t a join u b on a.c=b.c where b.id=1",
             "update t set n=b.id from t,u b where t.c=b.c and b.id=2",
             "update a set c=b.c from t a left join u b on a.id=b.id",
             "update top (1) u set n=99",
             "update u set c='12345678901' where id=1",
             "update u set n='x' where id=1",
             "update u set n=2147483647+1",
             "update u set c=null where id=2",
             "delete a from u a left join t b on a.id=b.n where b.id is null",
             "select id,n,c from t order by id",
             "select id,n,c from u order by id",
             "insert into u select id,c,n from t where id<3",
             "insert into u(id) select null union select 7",
             "insert into u(id,c) select distinct n,c from t",
             "insert into u default values",
             "insert into u values(1,'a',2),(3,'b',null)",
             "insert into u values(1,'a')",
             "insert into u(c) values('客户客户客户')",
             "insert into t(id) values(1)",
             "insert into t(id) values(null)",
             "insert into t(id,y) values(9,256)",
             "insert into t(id,s) values(9,40000)",
             "insert into t(id,m) values(9,'123456789012345678')",
             "insert into t(id,d) values(9,'nonsense')",
             "insert into t(id,g,e,l) values(10,'12:30','2026-05-06','2026-05-06 10:20:31')",
             "select g,e,l from t where id=10",
             "delete from u where c='a'",
             "select id,c,n from u order by id,c,n",
             "delete from u",
             "select c,d into w from t where id<3",
             "select * from w order by c",
             "insert into w(c) values('toolongtoolongtoolong')",
             "truncate table w",
             "select count(*) from w",
         }) {
        both(sql);
    }
}

TEST_F(Agreement, IsThereForDefinitions) {
    for (const char* sql : {
             "create table k2(fItemId int,x int)",
             "alter table k2 drop column fitemid",
             "select * from k2",
             "create table k(a int identity(5,1), b varchar(10) default 'x', c decimal(9,2) not null default 1.5, "
             "d datetime default '2026-01-02', constraint pk_k primary key(a), constraint uq_k unique(b), "
             "constraint ck_k check(c>0 and b<>'no'))",
             "insert into k(b) values('one')",
             "insert into k(b) values('ONE ')",

             "insert into k(b,c) values('two',null)",
             "insert into k default values",
             "insert into k(a,b) values(1,'q')",
             "select b,c,d from k order by a",
             "alter table k add e int not null default 7",
             "alter table k add f varchar(5) default 'f'",
             "insert into k(b) values('three')",
             "select b,e,f from k order by a",
             "alter table k drop constraint uq_k",
             "insert into k(b) values('one')",
             "create index ix on k(b)",
             "create index IX on k(e)",
             "drop index k.ix",
             "drop index k.ix",

             "create view v as select b,c*2 as c2,isnull(f,'') as f from k where e=7",
             "create view w as select b,c2 from v where b like 'o%'",
             "create view V as select 1 as a",
             "select * from w order by b",
             "alter table k drop column f",
             "select b,c,d,e from k order by a",
             "select * from v",
             "select * from w",
             "alter table k add f varchar(5)",
             "select * from w order by b",
             "drop view v",
             "select * from w",
             "create view v as select b,c as c2 from k",
             "select * from w order by b",
             "alter view v as select b,c as c2,e from k",
             "select * from v order by b",
             "select * from w order by b",
             "drop table k",
             "select * from w",
             "create table k(b nvarchar(20),c int,e int)",
             "insert into k values('only',3,4)",
             "select * from w",
             "drop view w",
             "drop view w",
             "drop table k,u",
             "select count(*) from u",
             "create table k(a varchar(5),b varchar(5),primary key(a,b))",

             "insert into k values('a','b')",
             "insert into k values('A ','B')",
             "insert into k values('A ',null)",
             "drop table if exists k",
             "drop table if exists k",
         }) {
        both(sql);
    }
}

TEST_F(Agreement, IsThereForColumnsThatAreInUse) {
    for (const char* sql : {
             "create table k(a int primary key,b varchar(10),c int,d int default 5,e int,constraint ck check(e>0))",
             "create index ix on k(b,c)",
             "insert into k(a,b) values(1,'x')",
             "alter table k drop column d",
             "select * from k",
             "alter table k drop column nosuch",
             "alter table k drop constraint nosuch",
             "alter table k drop constraint ck",
             "create view v as select * from k",
             "alter table k add f int",
             "select f from k",
             "create table m(b varchar(10) unique,c text)",
             "alter table m drop column c",
             "create index iy on nosuch(b)",
             "create index iy on v(b)",
             "create table v(a int)",
             "drop table v",
             "drop view k",
             "create view q as select a as x,b as X from k",
             "create view q(x,y) as select a,b from k",
             "select x,y from q",
             "alter view q as select a from k",
             "select * from q",
         }) {
        both(sql);
    }
}

TEST_F(Agreement, IsNotThereForAColumnInUseWhichTheServerRefusesByTheDialectsNumber) {
    for (const char* sql :
         {"create table k(a int,b varchar(10) unique,c int,d int primary key,constraint ck check(c>0))",
          "create index ix on k(a)"}) {
        both(sql);
    }
    for (const char* column : {"a", "b", "c", "d"}) {
        const std::string refused = answer(*server_, std::string("alter table k drop column ") + column);
        EXPECT_EQ(refused.substr(0, 5), "5074 ") << refused;
    }
    EXPECT_EQ(answer(*server_, "select * from k"), "");
}

TEST_F(Agreement, IsThereForWhatIsLong) {
    std::string name = "名";
    for (int i = 0; i < 24; ++i)
        name += "称";
    both("create table " + name + "(a int," + name + "甲 varchar(10)," + name + "乙 int)");
    both("create index " + name + "甲 on " + name + "(" + name + "甲)");
    both("create index " + name + "乙 on " + name + "(a)");
    both("create index " + name + "甲 on " + name + "(a)");
    both("insert into " + name + "(a," + name + "甲) values(1,'x')");
    both("select " + name + "甲," + name + "乙," + name + ".a as " + name + "丙 from " + name + " where " + name +
         "甲='X'");
    both("create view v as select " + name + "甲 from " + name);
    both("select * from v");
    both("drop index " + name + "." + name + "乙");
    both("alter table " + name + " drop column " + name + "乙");
    both("drop table " + name);
    std::string sql = "select id from u";
    for (int i = 0; i < 600; ++i)
        sql += " union all select id from u";
    both(sql);
    sql = "select a0.id from t a0";
    for (int i = 1; i < 61; ++i)
        sql += " left join t a" + std::to_string(i) + " on a" + std::to_string(i) + ".id=a0.n";
    both(sql + " order by a0.id");
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
