// The greatest code among a million siblings.
//
// The next short code is sought by the longest and the greatest code below a category. An index finds the longest, but
// not the greatest: texts are ordered in a way that no index keeps. Codes, though, are digits, and texts of digits
// compare as their bytes do. So an index that carries a text has it in four parts
//
//   create index i on tblItem(fItemClassId,fParentId) include (fShortNumber)
//   CREATE INDEX "tblItem.i" ON "tblItem"("fItemClassId", "fParentId",
//     length(rtrim("fShortNumber")), "fShortNumber" GLOB '*[^0-9]*', "fShortNumber")
//
// and where the greatest text of one length is asked for, the rows are the one of the greatest digits, which is the
// last in its part of the index, and those of other signs, of which there are few.
//
//   select max(fshortnumber) from tblItem where fitemclassid=3 and fparentid=13 and len(fshortnumber)=3
//   SELECT max(..) FROM (SELECT max("fshortnumber") AS "fshortnumber" FROM .. WHERE .. AND .. GLOB '*[^0-9]*' = 0
//                        UNION ALL SELECT "fshortnumber" FROM .. WHERE .. AND .. GLOB '*[^0-9]*' > 0) AS "tblItem"
#include <algorithm>

#include "store/tsql/emitter.h"

namespace orvenmod::store::tsql {
namespace {

using Parts = std::vector<const Expression*>;

bool isLengthLimited(const Type& type) {
    return (type.kind == Kind::varchar || type.kind == Kind::nvarchar) && type.length > 0;
}

/// What the condition's parts say to be equal to a value that is given.
void addGiven(const Expression& condition, Parts& given) {
    if (condition.kind == ExpressionKind::logical && condition.op == Operator::logicalAnd) {
        addGiven(*condition.operands[0], given);
        addGiven(*condition.operands[1], given);
    }
    if (condition.kind != ExpressionKind::comparison || condition.op != Operator::equal) return;
    const Expression* left = condition.operands[0].get();
    const Expression* right = condition.operands[1].get();
    if (isConstantExpression(*right)) given.push_back(left);
    if (isConstantExpression(*left)) given.push_back(right);
}

/// The aggregates of an expression; false where it has other columns or queries as well.
bool takeAggregates(const Expression& expression, Parts& aggregates) {
    if (expression.aggregate) {
        aggregates.push_back(&expression);
        return true;
    }
    if (expression.kind == ExpressionKind::column || expression.query) return false;
    return std::all_of(expression.operands.begin(), expression.operands.end(),
                       [&](const ExpressionPtr& operand) { return !operand || takeAggregates(*operand, aggregates); });
}

/// The column of max(column), also where that is cut: digits keep their order then. Null for anything else.
const Expression* greatestOf(const Expression& aggregate) {
    if (aggregate.name != "max" || !aggregate.type.isText()) return nullptr;
    const Expression* operand = aggregate.operands[0].get();
    const bool cut = operand->kind == ExpressionKind::cast && operand->operands.size() == 1 && !operand->attempt &&
                     isLengthLimited(operand->type);
    if (cut) operand = operand->operands[0].get();
    return operand->kind == ExpressionKind::column && isLengthLimited(operand->type) ? operand : nullptr;
}

bool isColumn(const Expression& expression, const Expression& column) {
    return expression.kind == ExpressionKind::column && expression.source == column.source &&
           expression.column == column.column;
}

bool isLengthOf(const Expression& expression, const Expression& column) {
    return expression.kind == ExpressionKind::function && expression.name == "len" &&
           isColumn(*expression.operands[0], column);
}

}  // namespace

std::string lengthOf(const std::string& text) { return "length(rtrim(" + text + "))"; }

bool isCodeIndex(const CreateIndexStatement& statement) {
    const auto typeOf = [&](const IndexColumn& column) -> const Type& {
        return findColumn(statement.object->columns, column.name)->type;
    };
    return !statement.unique && statement.included.size() == 1 && isLengthLimited(typeOf(statement.included[0])) &&
           std::none_of(statement.columns.begin(), statement.columns.end(),
                        [&](const IndexColumn& column) { return typeOf(column).isText(); });
}

std::string Emitter::codeKeys(const std::string& text) const {
    return lengthOf(text) + ", (" + signsBesideDigits(text) + "), " + inByteOrder(text);
}

std::string Emitter::nameOf(const Expression& column) const {
    return columnName(column.source->columns[static_cast<std::size_t>(column.column)]);
}

/// The column whose greatest text of a given length is asked for where an index has it; null where it isn't so.
const Expression* Emitter::soughtCode(const Query& query) const {
    const Select& select = *query.select;
    if (stored_ || select.from.size() != 1 || select.from[0]->kind != Source::Kind::table || !select.where ||
        !select.groupBy.empty() || select.having || !query.orderBy.empty()) {
        return nullptr;
    }
    Parts aggregates;
    const bool alone = std::all_of(select.items.begin(), select.items.end(), [&](const SelectItem& item) {
        return takeAggregates(*item.expression, aggregates);
    });
    const Expression* code = alone && aggregates.size() == 1 ? greatestOf(*aggregates[0]) : nullptr;
    if (code == nullptr) return nullptr;
    Parts given;
    addGiven(*select.where, given);
    const auto isGiven = [&](const std::string& name) {
        return std::any_of(given.begin(), given.end(), [&](const Expression* part) {
            return part->kind == ExpressionKind::column && part->source == code->source &&
                   nameOf(*part) == quoteName(name);
        });
    };
    const bool lengthGiven =
        std::any_of(given.begin(), given.end(), [&](const Expression* part) { return isLengthOf(*part, *code); });
    const auto& indexes = select.from[0]->object->codeIndexes;
    const bool served = std::any_of(indexes.begin(), indexes.end(), [&](const CodeIndex& index) {
        return quoteName(index.code) == nameOf(*code) && std::all_of(index.within.begin(), index.within.end(), isGiven);
    });
    return lengthGiven && served ? code : nullptr;
}

/// The rows among which the greatest code is, where `rows` are those of the statement.
std::string Emitter::codeCandidates(const Expression& code, const std::string& rows) {
    const std::string text = column(code);
    const std::string others = rows + " AND (" + signsBesideDigits(text) + ")";
    return " FROM (SELECT max(" + inByteOrder(text) + ") AS " + nameOf(code) + others + " = 0 UNION ALL SELECT " +
           text + others + " > 0) AS " + quoteName(aliasOf(*code.source));
}

}  // namespace orvenmod::store::tsql
