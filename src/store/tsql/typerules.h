// Which type an operation has, and which conversions the server makes silently.
#pragma once

#include "store/tsql/ast.h"
#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

/// Types of one class compare with each other without a conversion.
enum class TypeClass { null, text, number, date, binary, identifier };

TypeClass classOf(const Type& type);

/// The type of case, coalesce, union and of a comparison: the operand of lower precedence is converted.
/// Throws Error 206 for two that have none.
Type commonType(const Type& left, const Type& right);

/// The type of + - * / % & | ^. Text plus text concatenates.
/// Throws Error 8117, 402, 206 for operands that the operator doesn't take.
Type arithmeticType(Operator op, const Type& left, const Type& right);

/// Throws Error 257 or 206 where the server wants an explicit conversion or has none.
void checkImplicit(const Type& from, const Type& to);
/// Throws Error 529 where there is no conversion at all.
void checkExplicit(const Type& from, const Type& to);

/// The text that a value becomes where a text is wanted.
Type textOf(const Type& type);

/// An integer type or money as the decimal that holds all its values.
Type asDecimal(const Type& type);

}  // namespace orvenmod::store::tsql
