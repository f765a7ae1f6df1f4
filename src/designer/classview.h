// The view of an item class, dropped and created again from the class's visible fields. It joins in the tree's values
// and resolves each lookup to code and name, so that no reader joins anything itself:
//
//   create view vtblSelfA1  as  SELECT {the item's place in the tree},{the class's own},{a column or three a field}
//    from ((tblSelfA1 AS a LEFT JOIN tblItem AS b ...)  LEFT JOIN tblItem AS c ...)  {a join a lookup}
//
// The two modes make the same columns. Their other differences are kept: either text works for every reader.
#pragma once

#include <string>

#include "store/flight.h"

namespace orvenmod {

/// View and table of a class.
struct ClassObjects {
    std::string view;
    std::string table;
};

/// A null reads as "". Failure 3021 where the class is gone.
ClassObjects readClassObjects(store::Flight& flight, const std::string& itemClass);

enum class ClassViewMode {
    newField,  ///< adds the description and search rows of one field
    setup      ///< writes all description rows anew
};

/// Regenerates the view of class gItemClassId within the caller's transaction. `newField` is the column just added, in
/// its mode. Throws what the store throws, and ConversionFailure 6 in the mode newField for a class whose search rows
/// would be filed beyond 16 bits.
void regenerateClassView(store::Flight& flight, const ClassObjects& objects, ClassViewMode mode,
                         const std::string& newField = "");

}  // namespace orvenmod
