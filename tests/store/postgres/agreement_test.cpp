// That both translated stores answer alike: the same rows to the digit, or the same number and words of a failure. The
// statements are put together from all operands, operators, functions and types.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "store/postgres/postgresstore.h"
#include "store/sqlite/sqlitestore.h"
#include "support/postgresserver.h"
#include "support/temporary.h"

namespace orvenmod::store::postgres {
namespace {

using Texts = std::vector<std::string>;

const Texts kSetup = {
    "create table t(id int not null primary key, n int, i bigint, s smallint, y tinyint, b bit, c varchar(20), "
    "w nvarchar(10), h char(6), x text, f float, r real, m decimal(18,4), k decimal(9,2), q money, d datetime, e date, "
    "l smalldatetime, g time, z varbinary(10))",
    "insert into t values(1,10,10000000000,300,7,1,'Abc','客户 a','ab','long',1.5,2.5,12.3456,3.10,'1.25',"
    "'2026-01-02 03:04:05.120','2026-02-28','2026-01-02 03:04:00','03:04:05',0x4142)",
    "insert into t values(2,-3,-7,-300,0,0,'abd  ','Ａb','客户','',-0.25,0,-4,0,-5,'1900-01-01','1899-12-31',"
    "'1900-01-01','00:00:00',0x)",
    "insert into t values(3,0,0,0,255,1,'12','3','  7','12.5',1e10,1e-5,0,99.99,0,'2024-02-29 23:59:59.997',"
    "'2024-02-29','2024-02-29 23:59:00','23:59:59',0x4344)",
    "insert into t(id) values(4)",
    "create table u(id int, c varchar(10), n int)",
    "insert into u values(1,'ABC',10)",
    "insert into u values(2,'abc ',20)",
    "insert into u values(3,'客户',null)",
    "insert into u values(4,null,5)",
};

const Texts kOperands = {"n",   "i",   "s",     "y",     "b",   "c",    "w",    "h",  "x",           "f",
                         "r",   "m",   "k",     "q",     "d",   "e",    "l",    "g",  "z",           "3",
                         "2.5", "'7'", "'abc'", "N'客'", "1e2", "$2.5", "null", "''", "'2026-01-02'"};

const Texts kTypes = {
    "bit",        "tinyint",       "smallint", "int",     "bigint",       "decimal(9,3)",    "decimal(5,0)", "money",
    "smallmoney", "real",          "float",    "char(5)", "varchar(4)",   "varchar(40)",     "nvarchar(3)",  "text",
    "datetime",   "smalldatetime", "date",     "time",    "varbinary(4)", "uniqueidentifier"};

class Agreement : public ::testing::Test {
protected:
    Agreement()
        : embedded_(sqlite::SqliteStore().connect("Provider=SQLite;Mode=Create;Data Source=" + folder_.file("a.db"))),
          server_(PostgresStore().connect(database_.connectionString())) {}
    ~Agreement() override {
        embedded_.reset();
        server_.reset();
        sqlite::SqliteStore::dropIdleHandles();
        PostgresStore::dropIdleSessions();
    }

    void SetUp() override {
        for (const std::string& sql : kSetup)
            both(sql);
    }

    // The embedded store keeps decimals as doubles: 15 digits.
    static std::string rounded(std::string_view cell) {
        const bool number = cell.find('.') != cell.npos && cell.find_first_not_of("-.0123456789") == cell.npos;
        if (!number) return std::string(cell);
        char digits[40];
        std::snprintf(digits, sizeof digits, "%.14g", std::strtod(std::string(cell).c_str(), nullptr));
        return digits;
    }

    static std::string answer(Connection& connection, const std::string& sql) {
        try {
            const bool query = sql.starts_with("select") && sql.find(" into ") == std::string::npos;
            if (!query) return std::to_string(connection.execute(sql));
            const Recordset rows = connection.open(sql);
            std::string text;
            for (std::size_t row = 0; row < rows.rowCount(); ++row) {
                for (int i = 0; i < rows.columnCount(); ++i) {
                    const Value value = rows.cell(row, i);
                    text += (value ? "'" + rounded(*value) + "'" : "null") + "|";
                }
                text += "\n";
            }
            return text;
        } catch (const Failure& failure) {
            return std::to_string(failure.number()) + " " + failure.text();
        }
    }

    void both(const std::string& sql) {
        const std::string wanted = answer(*embedded_, sql);
        const std::string got = answer(*server_, sql);
        EXPECT_EQ(got, wanted) << sql;
    }

    orvenmod::test::TemporaryFolder folder_;
    orvenmod::test::ServerDatabase database_;
    std::unique_ptr<Connection> embedded_;
    std::unique_ptr<Connection> server_;
};

TEST_F(Agreement, IsThereForOperators) {
    for (const char* op : {"+", "-", "/", "%", "&"}) {
        for (const std::string& left : kOperands) {
            for (const std::string& right : kOperands)
                both("select id," + left + op + right + " from t order by id");
        }
    }
}

TEST_F(Agreement, IsThereForComparisons) {
    for (const char* op : {"=", "<>", "<", ">="}) {
        for (const std::string& left : kOperands) {
            for (const std::string& right : kOperands)
                both("select id from t where " + left + op + right + " order by id");
        }
    }
}

TEST_F(Agreement, IsThereForConversions) {
    for (const std::string& operand : kOperands) {
        for (const std::string& type : kTypes) {
            both("select id,convert(" + type + "," + operand + ") from t order by id");
            both("select id,try_convert(" + type + "," + operand + ") from t order by id");
        }
    }
}

TEST_F(Agreement, IsThereForFunctionsOfOneArgument) {
    for (const char* name :
         {"abs",     "acos",      "ascii",   "asin",    "atan",      "ceiling", "cos",   "cot",     "datalength",
          "degrees", "exp",       "floor",   "isdate",  "isnumeric", "len",     "log",   "log10",   "lower",
          "ltrim",   "quotename", "radians", "reverse", "rtrim",     "sign",    "sin",   "soundex", "space",
          "sqrt",    "square",    "str",     "tan",     "trim",      "unicode", "upper", "eomonth", "count",
          "sum",     "avg",       "min",     "max",     "stdev",     "varp",    "-",     "~"}) {
        const std::string call = name;
        const bool aggregate = call == "count" || call == "sum" || call == "avg" || call == "min" || call == "max" ||
                               call == "stdev" || call == "varp";
        for (const std::string& operand : kOperands)
            both("select " + call + "(" + operand + ")" + (aggregate ? " from t" : ",id from t order by id"));
    }
}

TEST_F(Agreement, IsThereForFunctionsOfSeveralArguments) {
    const Texts calls = {
        "left(@,3)",
        "left(@,-1)",
        "right(@,2)",
        "substring(@,2,3)",
        "substring(@,-1,4)",
        "substring(@,1,-1)",
        "replace(@,'B','x')",
        "charindex('b',@)",
        "charindex('',@)",
        "charindex('b',@,2)",
        "patindex('%[b-c]%',@)",
        "patindex('A%',@)",
        "replicate(@,2)",
        "replicate(@,-1)",
        "stuff(@,2,1,'zz')",
        "stuff(@,9,1,'zz')",
        "str(@,8,2)",
        "str(@,2)",
        "concat(@,'|',null,5)",
        "difference(@,'abc')",
        "round(@,1)",
        "round(@,-1)",
        "round(@,1,1)",
        "power(@,2)",
        "power(@,-1)",
        "power(@,0.5)",
        "log(@,2)",
        "atn2(@,2)",
        "isnull(@,'5')",
        "isnull(@,0)",
        "coalesce(@,'5')",
        "coalesce(null,@)",
        "nullif(@,'abc')",
        "nullif(@,7)",
        "iif(@ is null,1,2)",
        "choose(2,@,@)",
        "case when @='abc' then 1 when @ like 'a%' then 2 else 3 end",
        "dateadd(day,1,@)",
        "dateadd(month,1,@)",
        "dateadd(year,-1,@)",
        "dateadd(hour,30,@)",
        "dateadd(ms,7,@)",
        "dateadd(quarter,1,@)",
        "datediff(day,@,'2026-03-01')",
        "datediff(month,'2026-03-01',@)",
        "datediff(week,@,'2026-03-01')",
        "datediff(second,@,'2026-03-01')",
        "datepart(weekday,@)",
        "datepart(week,@)",
        "datepart(dy,@)",
        "datepart(ms,@)",
        "datename(month,@)",
        "datename(dw,@)",
        "eomonth(@,1)",
        "convert(varchar(30),@,120)",
        "convert(varchar(10),@,120)",
        "convert(varchar(30),@,112)",
        "convert(varchar(30),@,1)",
        "convert(varchar(30),@,2)",
        "convert(varchar(30),@,126)",
        "convert(char(8),@,112)",
        "convert(datetime,@,103)",
        "convert(datetime,@,112)",
        "quotename(@,'\"')",
        "datefromparts(2026,@,3)",
    };
    for (const std::string& call : calls) {
        for (const std::string& operand : kOperands) {
            std::string text = call;
            for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + operand.size()))
                text.replace(at, 1, operand);
            both("select " + text + ",id from t order by id");
        }
    }
}

TEST_F(Agreement, IsThereForPatterns) {
    for (const char* pattern : {"''",
                                "'%'",
                                "'a%'",
                                "'A%'",
                                "'%c'",
                                "'%b%'",
                                "'abc'",
                                "'abc '",
                                "'abd_'",
                                "'abd__'",
                                "'a_c'",
                                "'[a-c]%'",
                                "'[^a]%'",
                                "'%[0-9]'",
                                "'客%'",
                                "'%户'",
                                "'客户'",
                                "'[客]_%'",
                                "'a[b'",
                                "'\\%'",
                                "'a.c'",
                                "'%(%'",
                                "'1[12]'",
                                "'%5'",
                                "N'客%'",
                                "c",
                                "null",
                                "'a!%' escape '!'",
                                "'%!_' escape '!'",
                                "'_%'",
                                "'__'",
                                "'  7%'",
                                "'abd %'"}) {
        for (const char* column : {"c", "w", "h", "x", "n", "d"}) {
            both(std::string("select id from t where ") + column + " like " + pattern + " order by id");
            both(std::string("select id from t where ") + column + " not like " + pattern + " order by id");
        }
    }
}

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

}  // namespace
}  // namespace orvenmod::store::postgres
