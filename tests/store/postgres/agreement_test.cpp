// That both translated stores answer alike. The statements are put together from all operands, operators, functions and
// types.
#include <gtest/gtest.h>

#include <string>

#include "store/postgres/agreement.h"

namespace orvenmod::store::postgres::test {
namespace {

const Texts kOperands = {"n",   "i",   "s",     "y",     "b",   "c",    "w",    "h",  "x",           "f",
                         "r",   "m",   "k",     "q",     "d",   "e",    "l",    "g",  "z",           "3",
                         "2.5", "'7'", "'abc'", "N'客'", "1e2", "$2.5", "null", "''", "'2026-01-02'"};

const Texts kTypes = {
    "bit",        "tinyint",       "smallint", "int",     "bigint",       "decimal(9,3)",    "decimal(5,0)", "money",
    "smallmoney", "real",          "float",    "char(5)", "varchar(4)",   "varchar(40)",     "nvarchar(3)",  "text",
    "datetime",   "smalldatetime", "date",     "time",    "varbinary(4)", "uniqueidentifier"};

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

TEST_F(Agreement, IsThereForTheLastDigitOfDecimals) {
    const Texts columns = {"a", "b", "c", "e", "m"};
    both("create table w(id int,a decimal(18,6),b decimal(18,2),c decimal(38,12),e decimal(9,3),m money)");
    const Texts values = {"0",        "1",       "-1.5",   "99999999999.999999", "-99999999999.999998",
                          "0.000001", "12345.6", "333.33", "4503599627.370497",  "123456789012.5",
                          "-0.1"};
    const auto valueAt = [&](std::size_t i) { return "," + values[i % values.size()]; };
    for (std::size_t i = 0; i < values.size(); ++i) {
        both("insert into w values(" + std::to_string(i) + valueAt(i) + valueAt(i + 1) + valueAt(i + 3) + "," +
             std::to_string(i) + ".125" + valueAt(i + 6) + ")");
    }
    const auto exactly = [this](const std::string& sql) { both(sql, Digits::all); };
    for (const std::string& left : columns) {
        for (const std::string& right : columns) {
            for (const char* op : {"+", "-", "*", "/", "%"})
                exactly("select id," + left + op + right + " from w where " + right + "<>0 order by id");
            for (const char* op : {"=", "<", ">=", "<>"})
                exactly("select id," + left + "," + right + " from w where " + left + op + right + " order by id," +
                        left);
        }
        for (const char* name : {"sum", "avg", "min", "max", "count"})
            exactly("select " + std::string(name) + "(" + left + ") from w");
        for (const char* call :
             {"abs(@)", "-@", "floor(@)", "ceiling(@)", "round(@,1)", "round(@,3,1)", "sign(@)",
              "convert(varchar(60),@)", "convert(decimal(20,3),@)", "isnull(@,0.5)", "convert(money,@)",
              "try_convert(int,@)", "@+1", "@*3", "@/7", "@-0.5", "nullif(@,1)", "@*@", "@+@"}) {
            std::string text = call;
            for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + 1))
                text.replace(at, 1, left);
            exactly("select id," + text + " from w order by id," + left);
        }
        exactly("select " + left + ",count(*) from w group by " + left + " order by " + left);
        exactly("select distinct " + left + " from w order by " + left + " desc");
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

}  // namespace
}  // namespace orvenmod::store::postgres::test
