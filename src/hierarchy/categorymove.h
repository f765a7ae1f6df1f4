// Stores a change of a category: the category and all below it get new paths, depths and codes, in one transaction.
//
//   path   fNBNumber   .1.2.5.     the ids from the top down, each fenced by full stops
//   code   fNumber     01.02.005   the parent's code, a full stop, the short code
#pragma once

#include <string>

namespace orvenmod {

/// What the dialog holds, without outer blanks.
struct CategoryChange {
    std::string name;
    std::string shortCode;
    std::string code;
    std::string parentId;  ///< a number, 0 for none; "" (no parent was listed) is a failure
};

/// Changes the category gCurItemId. False where it was refused or failed, which the user has been told. A failure
/// before the transaction begins is shown, then the rollback fails in its turn: that second failure goes to the caller
/// and leaves the store open.
bool moveCategory(const CategoryChange& wanted);

}  // namespace orvenmod
