#include "store/failure.h"

namespace orvenmod::store {

const char* kindWord(FailureKind kind) {
    switch (kind) {
        case FailureKind::syntax:
            return "syntax";
        case FailureKind::noSuchObject:
            return "no such object";
        case FailureKind::duplicate:
            return "duplicate";
        case FailureKind::conversion:
            return "conversion";
        case FailureKind::overflow:
            return "overflow";
        case FailureKind::truncation:
            return "truncation";
        case FailureKind::key:
            return "key";
        case FailureKind::null:
            return "null";
        case FailureKind::divide:
            return "division by zero";
        case FailureKind::transaction:
            return "transaction";
        case FailureKind::busy:
            return "busy";
        case FailureKind::connection:
            return "connection";
        case FailureKind::other:
            break;
    }
    return "other";
}

}  // namespace orvenmod::store
