// The messages about a statement: its text, names, types and conversions; messagetable.h tells how one is written.
//
// They are the server's own sentences and not ours, in both of its languages, because suites show them as they come,
// and clerks know them. So each stands here as a whole, long as it may be; none is put together from parts.
//
//   {kUnknownPrefix, noSuchObject, "列前缀 '%1' ..."} with {"x"}   107: 列前缀 'x' 与查询中所用的表名或别名不匹配。
#include <algorithm>

#include "store/tsql/failurenumbers.h"
#include "store/tsql/messagetable.h"

namespace orvenmod::store::tsql {

namespace {

using enum FailureKind;

// clang-format off
constexpr Message kMessages[] = {
    {kSyntaxNear, syntax,
     "'%1' 附近有语法错误。",
     "Incorrect syntax near '%1'."},
    {kNameTooLong, syntax,
     "以 '%1' 开头的标识符太长。最大长度为 %2。",
     "The identifier that starts with '%1' is too long. Maximum length is %2."},
    {kOrderNotInUnion, other,
     "如果语句包含 UNION、INTERSECT 或 EXCEPT 运算符，则 ORDER BY 项必须出现在选择列表中。",
     "ORDER BY items must appear in the select list if the statement contains a UNION, INTERSECT or EXCEPT"
     " operator."},
    {kUnclosedQuote, syntax,
     "字符串 '%1' 后的引号不完整。",
     "Unclosed quotation mark after the character string '%1'."},
    {kTooManyTables, other,
     "查询中使用的表名太多。允许的最大数目为 %1。",
     "Too many table names in the query. The maximum allowable is %1."},
    {kUnknownPrefix, noSuchObject,
     "列前缀 '%1' 与查询中所用的表名或别名不匹配。",
     "The column prefix '%1' does not match with a table name or alias name used in the query."},
    {kOrderPositionOutOfRange, other,
     "ORDER BY 位置号 %1 超出了选择列表中项数的范围。",
     "The ORDER BY position number %1 is out of range of the number of items in the select list."},
    {kFewerValuesThanColumns, other,
     "INSERT 语句中列的数目大于 VALUES 子句中指定的值的数目。VALUES 子句中值的数目必须与 INSERT 语句中指定"
     "的列的数目匹配。",
     "There are more columns in the INSERT statement than values specified in the VALUES clause. The numbe"
     "r of values in the VALUES clause must match the number of columns specified in the INSERT statement."},
    {kMoreValuesThanColumns, other,
     "INSERT 语句中列的数目小于 VALUES 子句中指定的值的数目。VALUES 子句中值的数目必须与 INSERT 语句中指定"
     "的列的数目匹配。",
     "There are fewer columns in the INSERT statement than values specified in the VALUES clause. The numb"
     "er of values in the VALUES clause must match the number of columns specified in the INSERT statement"
     "."},
    {kNotFirstInBatch, syntax,
     "此语句必须是查询批次中的第一个语句。",
     "This statement must be the first statement in a query batch."},
    {kUnclosedComment, syntax,
     "缺少注释结束标记 '*/'。",
     "Missing end comment mark '*/'."},
    {kSubqueryColumns, other,
     "当没有用 EXISTS 引入子查询时，在选择列表中只能指定一个表达式。",
     "Only one expression can be specified in the select list when the subquery is not introduced with EXI"
     "STS."},
    {kInsertSelectsFewer, other,
     "INSERT 语句的选择列表包含的项少于插入列表。SELECT 值的数目必须与 INSERT 列的数目匹配。",
     "The select list for the INSERT statement contains fewer items than the insert list. The number of SE"
     "LECT values must match the number of INSERT columns."},
    {kInsertSelectsMore, other,
     "INSERT 语句的选择列表包含的项多于插入列表。SELECT 值的数目必须与 INSERT 列的数目匹配。",
     "The select list for the INSERT statement contains more items than the insert list. The number of SEL"
     "ECT values must match the number of INSERT columns."},
    {kNegativeTop, other,
     "TOP N 或 FETCH 行计数值不能为负。",
     "A TOP N or FETCH rowcount value may not be negative."},
    {kNameNotPermitted, noSuchObject,
     "在此上下文中不允许使用名称 \"%1\"。有效表达式包括常量、常量表达式和(在某些上下文中)变量。不允许使用列"
     "名。",
     "The name \"%1\" is not permitted in this context. Valid expressions are constants, constant expression"
     "s, and (in some contexts) variables. Column names are not permitted."},
    {kAggregateOfAggregate, other,
     "不能对包含聚合或子查询的表达式执行聚合函数。",
     "Cannot perform an aggregate function on an expression containing an aggregate or a subquery."},
    {kSizeTooLarge, other,
     "为 %1 '%2' 给定的大小(%3)超出了任意数据类型的最大允许值(%4)。",
     "The size (%3) given to the %1 '%2' exceeds the maximum allowed for any data type (%4)."},
    {kUndeclaredVariable, noSuchObject,
     "必须声明标量变量 \"%1\"。",
     "Must declare the scalar variable \"%1\"."},
    {kAggregateInGroupBy, other,
     "不能在用于 GROUP BY 子句的分组依据列表的表达式中使用聚合或子查询。",
     "Cannot use an aggregate or a subquery in an expression used for the group by list of a GROUP BY clau"
     "se."},
    {kOrderNotInDistinct, other,
     "如果指定了 SELECT DISTINCT，那么 ORDER BY 子句中的项就必须出现在选择列表中。",
     "ORDER BY items must appear in the select list if SELECT DISTINCT is specified."},
    {kAggregateInWhere, other,
     "聚合不应出现在 WHERE 子句中，除非该聚合位于 HAVING 子句或选择列表所包含的子查询中，并且要对其进行聚"
     "合的列是外部引用。",
     "An aggregate may not appear in the WHERE clause unless it is in a subquery contained in a HAVING cla"
     "use or a select list, and the column being aggregated is an outer reference."},
    {kUnknownOption, syntax,
     "'%1' 不是可以识别的 %2 选项。",
     "'%1' is not a recognized %2 option."},
    {kSyntaxNearKeyword, syntax,
     "关键字 '%1' 附近有语法错误。",
     "Incorrect syntax near the keyword '%1'."},
    {kAggregateInSet, other,
     "聚合不应出现在 UPDATE 语句的集合列表中。",
     "An aggregate may not appear in the set list of an UPDATE statement."},
    {kGroupByConstant, other,
     "每个 GROUP BY 表达式都必须至少包含一个不是外部引用的列。",
     "Each GROUP BY expression must contain at least one column that is not an outer reference."},
    {kSyntaxNearOnLine, syntax,
     "'%1' 附近有语法错误。",
     "Incorrect syntax near '%1'."},
    {kArgumentCount, other,
     "%1 函数要求有 %2 个参数。",
     "The %1 function requires %2 argument(s)."},
    {kArgumentRange, other,
     "%1 函数要求有 %2 到 %3 个参数。",
     "The %1 function requires %2 to %3 arguments."},
    {kUnknownFunction, noSuchObject,
     "'%1' 不是可以识别的内置函数名称。",
     "'%1' is not a recognized built-in function name."},
    {kMissingParameter, other,
     "过程或函数 '%1' 需要参数 '%2'，但未提供该参数。",
     "Procedure or function '%1' expects parameter '%2', which was not supplied."},
    {kUnionColumns, other,
     "使用 UNION、INTERSECT 或 EXCEPT 运算符合并的所有查询必须在其目标列表中有相同数目的表达式。",
     "All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of expres"
     "sions in their target lists."},
    {kTypeClash, conversion,
     "操作数类型冲突: %1 与 %2 不兼容",
     "Operand type clash: %1 is incompatible with %2"},
    {kUnknownColumn, noSuchObject,
     "列名 '%1' 无效。",
     "Invalid column name '%1'."},
    {kUnknownObject, noSuchObject,
     "对象名 '%1' 无效。",
     "Invalid object name '%1'."},
    {kAmbiguousColumn, other,
     "列名 '%1' 不明确。",
     "Ambiguous column name '%1'."},
    {kInsertColumns, other,
     "列名或所提供值的数目与表定义不匹配。",
     "Column name or number of supplied values does not match table definition."},
    {kParameterType, other,
     "过程的参数类型不正确。",
     "A procedure's parameter is not of the expected type."},
    {kIntegerOverflow, overflow,
     "数据类型 %1 的算术溢出错误，值 = %2。",
     "Arithmetic overflow error for data type %1, value = %2."},
    {kNoRight, other,
     "在数据库 '%1' 中没有所需的权限: %2",
     "The permission was denied in database '%1': %2"},
    {kFloatOverflow, overflow,
     "类型 %1 的算术溢出错误，值 = %2。",
     "Arithmetic overflow error for type %1, value = %2."},
    {kMoneySyntax, conversion,
     "无法将 char 值转换为 money。该 char 值的语法有误。",
     "Cannot convert a char value to money. The char value has incorrect syntax."},
    {kMoneyOverflow, overflow,
     "从 char 数据类型转换为 money 数据类型时，产生了一个超出范围的 money 值。",
     "The conversion from char data type to money resulted in a money overflow error."},
    {kDateSyntax, conversion,
     "从字符串转换日期和/或时间时，转换失败。",
     "Conversion failed when converting date and/or time from character string."},
    {kDateOutOfRange, conversion,
     "从 %1 数据类型到 %2 数据类型的转换产生一个超出范围的值。",
     "The conversion of a %1 data type to a %2 data type resulted in an out-of-range value."},
    {kUnknownCastType, noSuchObject,
     "类型 %1 不是已定义的系统类型。",
     "Type %1 is not a defined system type."},
    {kTextBeyondSmallInteger, overflow,
     "%1 值 '%2' 的转换溢出了 %3 列。请使用较大的整数列。",
     "The conversion of the %1 value '%2' overflowed an %3 column. Use a larger integer column."},
    {kTextIsNoInteger, conversion,
     "在将 %1 值 '%2' 转换成数据类型 %3 时失败。",
     "Conversion failed when converting the %1 value '%2' to data type %3."},
    {kTextBeyondInteger, overflow,
     "%1 值 '%2' 的转换溢出了 int 列。",
     "The conversion of the %1 value '%2' overflowed an int column."},
    {kFunctionType, other,
     "数据类型 %1 对于 %2 函数无效。允许使用的数据类型为: char/varchar、nchar/nvarchar 和 binary/varbinary"
     "。",
     "The data type %1 is invalid for the %2 function. Allowed types are: char/varchar, nchar/nvarchar, an"
     "d binary/varbinary."},
    {kNoImplicitConversion, conversion,
     "不允许从数据类型 %1 到 %2 的隐式转换。请使用 CONVERT 函数来运行此查询。",
     "Implicit conversion from data type %1 to %2 is not allowed. Use the CONVERT function to run this que"
     "ry."},
    {kNoImplicitAssignment, conversion,
     "不允许从数据类型 %1 到数据类型 %2 的隐式转换(表 '%3'，列 '%4')。请使用 CONVERT 函数来运行此查询。",
     "Disallowed implicit conversion from data type %1 to data type %2, table '%3', column '%4'. Use the C"
     "ONVERT function to run this query."},
    {kNoTableForStar, syntax,
     "必须指定要从中进行选择的表。",
     "Must specify table to select from."},
    {kColumnAssignedTwice, duplicate,
     "在 SET 子句或 INSERT 的列列表中多次指定了列名 '%1'。在同一子句中，不能为一个列分配多个值。请修改该子"
     "句，以确保一个列仅更新一次。",
     "The column name '%1' is specified more than once in the SET clause or column list of an INSERT. A co"
     "lumn cannot be assigned more than one value in the same clause. Modify the clause to make sure that "
     "a column is updated only once."},
    {kComputedColumn, other,
     "不能修改列 \"%1\"，因为它是计算列，或者是 UNION 运算符的结果。",
     "The column \"%1\" cannot be modified because it is either a computed column or is the result of a UNIO"
     "N operator."},
    {kNoDateStyle, conversion,
     "%1 不是从 %2 转换为字符串时的有效样式号。",
     "%1 is not a valid style number when converting from %2 to a character string."},
    {kDateParts, other,
     "无法构造数据类型 date，某些参数具有无效值。",
     "Cannot construct data type date, some of the arguments have values which are not valid."},
    {kSmallDateSyntax, conversion,
     "从字符串转换为 smalldatetime 数据类型时，转换失败。",
     "Conversion failed when converting character string to smalldatetime data type."},
    {kSmallDateOutOfRange, overflow,
     "从 char 数据类型到 smalldatetime 数据类型的转换产生一个超出范围的 smalldatetime 值。",
     "The conversion of char data type to smalldatetime data type resulted in an out-of-range smalldatetim"
     "e value."},
    {kLargeTypeCompared, other,
     "不能比较或排序 text、ntext 和 image 数据类型，除非使用 IS NULL 或 LIKE 运算符。",
     "The text, ntext, and image data types cannot be compared or sorted, except when using IS NULL or LIK"
     "E operator."},
    {kOperandTypes, other,
     "数据类型 %1 和 %2 在 %3 运算符中不兼容。",
     "The data types %1 and %2 are incompatible in the %3 operator."},
    {kOperatorType, other,
     "对于数据类型而言运算符无效。运算符为 %2，类型为 %1。",
     "Invalid operator for data type. Operator equals %2, type equals %1."},
    {kConstantOrder, other,
     "在 ORDER BY 列表中遇到常量表达式。",
     "A constant expression was encountered in the ORDER BY list."},
    {kEscapeCharacter, other,
     "在 LIKE 谓词中指定的转义字符 \"%1\" 无效。",
     "The invalid escape character \"%1\" was specified in a LIKE predicate."},
    {kSubqueryRows, other,
     "子查询返回的值不止一个。当子查询跟随在 =、!=、<、<=、>、>= 之后，或子查询用作表达式时，这种情况是不"
     "允许的。",
     "Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <= , "
     ">, >= or when the subquery is used as an expression."},
    {kNullRefused, FailureKind::null,
     "不能将值 NULL 插入列 '%1'，表 '%2'；列不允许有 Null 值。%3 失败。",
     "Cannot insert the value NULL into column '%1', table '%2'; column does not allow nulls. %3 fails."},
    {kDateAddOverflow, overflow,
     "将值添加到 '%1' 列会导致溢出。",
     "Adding a value to a '%1' column caused an overflow."},
    {kCannotConvert, conversion,
     "无法将数据类型 %1 转换为 %2。",
     "Cannot convert data type %1 to %2."},
    {kNoExplicitConversion, conversion,
     "不允许从数据类型 %1 到 %2 的显式转换。",
     "Explicit conversion from data type %1 to %2 is not allowed."},
    {kDateDifferenceOverflow, overflow,
     "datediff 函数导致溢出。分隔两个日期/时间实例的日期部分太大。请尝试使用日期部分不太精确的 datediff。",
     "The datediff function resulted in an overflow. The number of dateparts separating two date/time inst"
     "ances is too large. Try to use datediff with a less precise datepart."},
    {kNegativeLength, other,
     "传递给 %1 函数的长度参数无效。",
     "Invalid length parameter passed to the %1 function."},
    {kNegativeSubstringLength, other,
     "传递给 %1 函数的长度参数无效。",
     "Invalid length parameter passed to the %1 function."},
    {kIdentityInserted, other,
     "当 IDENTITY_INSERT 设置为 OFF 时，不能为表 '%1' 中的标识列插入显式值。",
     "Cannot insert explicit value for identity column in table '%1' when IDENTITY_INSERT is set to OFF."},
    {kConstraintConflict, other,
     "%1 语句与 %2 约束\"%3\"冲突。该冲突发生于表\"%4\"。",
     "The %1 statement conflicted with the %2 constraint \"%3\". The conflict occurred in table \"%4\"."},
};
// clang-format on
static_assert(std::ranges::is_sorted(kMessages, {}, &Message::number));

}  // namespace

std::span<const Message> statementMessages() { return kMessages; }

}  // namespace orvenmod::store::tsql
