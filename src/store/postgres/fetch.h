// Copies the rows of a result into a recordset, every value as the embedded store would give it.
#pragma once

#include <libpq-fe.h>

#include <string_view>
#include <vector>

#include "store/recordset.h"
#include "store/server/progress.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::postgres {

/// Puts the rows of a result into a recordset, one by one.
class RowReader {
public:
    explicit RowReader(const std::vector<tsql::ResultColumn>& columns);

    void add(Recordset& rows, const PGresult* result, int row) const;

private:
    using AddCell = void (*)(Recordset&, std::string_view);

    std::vector<AddCell> add_;
};

/// What the progress throws passes on.
Recordset fetchRows(const PGresult* result, const std::vector<tsql::ResultColumn>& columns, server::Progress& progress);

}  // namespace orvenmod::store::postgres
