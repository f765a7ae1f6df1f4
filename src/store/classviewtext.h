// The statements that create the view of an item class: of a class just made as a skeleton, later put together field by
// field. A new database and the designer of classes word the latter alike, so that the first save in field setup
// changes nothing:
//
//   create view vtblSelfA1  as  SELECT {the item's place in the tree},{the class's own},{a column or three a field}
//    from tblSelfA1 AS a LEFT JOIN tblItem AS b ...  LEFT JOIN tblItem AS c ... {a join a lookup}
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::store {

/// A view that was made again for a new field is worded otherwise than one that field setup made; it gives the same.
enum class ViewWording { newField, setup };

class ClassViewText {
public:
    ClassViewText(std::string_view view, std::string_view table, ViewWording wording);

    /// The balance of a customer, a supplier or an account.
    void addAmount();
    /// The place of the stock of goods, which the list fills.
    void addStock();
    /// By its tblTableInfo.fFieldType; a field that is neither date nor text nor number has no column.
    void addField(std::string_view name, std::string_view type);
    /// Resolved to code and name by the table `source`.
    void addLookup(std::string_view name, std::string_view source);

    std::string text() const { return columns_ + opening_ + joins_; }

private:
    struct Wording;

    const Wording& wording_;
    std::string columns_;
    std::string opening_;
    std::string joins_;
    int lookups_ = 0;
};

/// The view until the first field or field setup: it holds no field of the user's.
std::string classViewSkeleton(std::string_view view, std::string_view table);

}  // namespace orvenmod::store
