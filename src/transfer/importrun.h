// Stores the checked rows, each by what the editor's own save asks and sends, many in a transaction. A row that fails
// takes no other with it: its transaction is undone, and the rows of it are stored again one by one.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/progress.h"
#include "transfer/rowcheck.h"

namespace orvenmod {

/// What became of a row.
struct RowOutcome {
    std::size_t row = 0;
    RowState state = RowState::refused;
    std::int32_t itemId = 0;
};

struct ImportResult {
    std::vector<RowOutcome> rows;                ///< what was stored or refused, in the file's order
    std::map<std::size_t, std::string> reasons;  ///< of the rows that the store refused
    std::vector<std::int32_t> categories;        ///< that were made, those within before those around them
    bool cancelled = false;
    std::string failure;  ///< what ended it before its end: nothing behind that row was tried
};

class ImportRun {
public:
    ImportRun(RowCheck& check, platform::Progress& progress) : check_(check), progress_(progress) {}

    /// Stores the rows on gConn, which is open. Where everything is to be stored or nothing, the first that fails ends
    /// it, and nothing is stored.
    ImportResult store(const std::vector<std::size_t>& rows);

private:
    using Rows = std::vector<std::size_t>;

    void storeApart(const Rows& rows);
    void storeTogether(const Rows& rows);
    void storePart(Rows::const_iterator begin, Rows::const_iterator end);
    bool tryPart(Rows::const_iterator begin, Rows::const_iterator& end);
    RowOutcome storeRow(std::size_t row);
    std::int32_t insertItem(const ItemDraft& item);
    void updateItem(const ItemDraft& item, std::int32_t itemId);
    std::string storedCategory(const std::string& id);
    bool advance();
    void undo();
    void keepMade();
    void refuse(std::size_t row, const std::string& reason);

    RowCheck& check_;
    platform::Progress& progress_;
    ImportResult result_;
    std::map<std::int32_t, std::int32_t> made_;  // categories, by the numbers of the plan: inner ones have lower ones
    std::map<std::int32_t, std::int32_t> openMade_;  // of the open transaction
    int done_ = 0;
};

}  // namespace orvenmod
