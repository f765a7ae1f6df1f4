// Categories of goods with all below them, that are hung elsewhere and back.
#pragma once

#include <string>

#include "store/connection.h"

namespace orvenmod::bench {

/// The category that others move to and away from; ids from it on are above the sample's.
inline constexpr int kMoveTarget = 5000000;

struct Subtree {
    int id;
    int rows;
    std::string shortCode;
};

void addMoveTarget(store::Connection& connection);
/// A category at the top, others below it, and items below those.
void addSubtree(store::Connection& connection, const Subtree& subtree);
/// Below the target, by the dialog's routine. Throws std::runtime_error where it is refused.
void moveThere(const Subtree& subtree);
/// Back to the top.
void moveBack(const Subtree& subtree);

}  // namespace orvenmod::bench
