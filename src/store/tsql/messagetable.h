// The catalogue behind messages.h: number, kind and both wordings, sorted by number. %1 .. %9 stand for the
// arguments in the order that failurenumbers.h tells, %w1 for one that is a word of the language.
#pragma once

#include <span>
#include <string_view>

#include "store/failure.h"

namespace orvenmod::store::tsql {

struct Message {
    int number;
    FailureKind kind;
    std::string_view chinese;
    std::string_view english;
};

/// Numbers below 1000: the statement and its conversions.
std::span<const Message> statementMessages();
/// Numbers from 1000 on: objects, keys, transactions, and the store's own.
std::span<const Message> dataMessages();

}  // namespace orvenmod::store::tsql
