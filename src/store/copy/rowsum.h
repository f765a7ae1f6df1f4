// A checksum of a table's rows that is the same on every store: of the values, whatever text a store has for them, and
// of no order, since rows have none.
//
//   row   1 | 'a ' | null | 2.50     hashed, each value with its column and its length
//   sum   of the rows' hashes, modulo 2^64
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "store/outline.h"
#include "store/recordset.h"

namespace orvenmod::store {

class RowSum {
public:
    /// The columns are those of the recordsets that come, in their order.
    explicit RowSum(const std::vector<ColumnOutline>& columns);

    void add(const Recordset& rows);

    std::int64_t rows() const { return rows_; }
    std::uint64_t sum() const { return sum_; }
    bool operator==(const RowSum& other) const { return rows_ == other.rows_ && sum_ == other.sum_; }

private:
    /// How stores may differ in the text of one value.
    enum class Form { exact, decimal, real, singleReal, padded, identifier };

    static Form formOf(const std::string& type);
    static std::string_view uniform(std::string_view value, Form form, std::string& scratch);

    std::vector<Form> forms_;
    std::int64_t rows_ = 0;
    std::uint64_t sum_ = 0;
};

}  // namespace orvenmod::store
