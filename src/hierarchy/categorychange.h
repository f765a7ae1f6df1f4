// A category as its dialog gives it, and what can speak against storing it.
//
//   path   fNBNumber   .1.2.5.     the ids from the top down, each fenced by full stops
//   code   fNumber     01.02.005   the parent's code, a full stop, the short code
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod {

/// What the dialog holds, without outer blanks.
struct CategoryChange {
    std::string name;
    std::string shortCode;
    std::string code;
    std::string parentId;  ///< a number, 0 for none; "" (no parent was listed) is a failure
};

enum class CategoryRefusal {
    codeTaken,
    belowItself  ///< the new parent is the category itself or lies below it
};

/// Where a category stands.
struct CategoryPlace {
    std::string path;
    std::int32_t depth = 0;
};

/// The place of category `id` under that parent, 0 for none. Without the parent's row depth and path stay empty, as
/// they are then written.
CategoryPlace placeBelow(std::int32_t parentId, const std::string& id);

/// Whether the class has the code already; `others` narrows the search by a condition that brings its own " and ".
bool isCodeTaken(const std::string& code, const std::string& others = "");

}  // namespace orvenmod
