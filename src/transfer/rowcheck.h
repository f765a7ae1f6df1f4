// Checks the rows of a file against the editor's own rules and what the class holds, without writing anything. A row is
// checked anew whenever it is asked for, so that a million of them cost nine bytes each.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "editor/itemsave.h"
#include "platform/date.h"
#include "transfer/importfields.h"
#include "transfer/sheetrows.h"
#include "transfer/storeditems.h"

namespace orvenmod {

enum class WhenFound { change, leave };
enum class WhenCategoryMissing { refuse, make };
enum class WhenRowFails { storeOthers, storeNothing };
enum class WhenNameDoubled { store, refuse };
enum class WhenCodeIsNumber { refuse, take };

/// What the user chose for the whole file.
struct ImportOptions {
    WhenFound found = WhenFound::change;
    WhenCategoryMissing category = WhenCategoryMissing::refuse;
    WhenRowFails failing = WhenRowFails::storeOthers;
    WhenNameDoubled doubledName = WhenNameDoubled::store;
    WhenCodeIsNumber numberCode = WhenCodeIsNumber::refuse;
};

enum class RowState : std::uint8_t { added, changed, same, refused };
inline constexpr std::size_t kRowStates = 4;

/// What is wrong with a row, and in which field.
struct CellReason {
    std::size_t field = 0;
    std::string text;
};

struct CheckedRow {
    RowState state = RowState::refused;
    std::int32_t itemId = 0;  ///< of the item that has the code
    ItemDraft draft;          ///< a category that is to be made has a number below 0
    std::vector<CellReason> reasons;
};

class RowCheck {
public:
    /// `match` gives each column of the file its field, or -1. What is referred to
    /// must outlive the check.
    RowCheck(const SheetRows& rows, const std::vector<ImportField>& fields, const std::vector<int>& match,
             const ImportOptions& options, const platform::Date& today);

    /// Reads what the class holds, on gConn, which is open; what fails goes to the caller.
    void readStored();
    /// Notes the row's code, by which later rows of it are doubled. For every row, in their order, before any check.
    void noteCode(std::size_t row);
    /// All rows are noted.
    void sortCodes();

    CheckedRow check(std::size_t row);
    const ImportOptions& options() const { return options_; }
    const std::vector<ImportField>& fields() const { return fields_; }
    /// The file's column of a field, -1 for none.
    int columnOf(std::size_t field) const { return columnOf_[field]; }
    const ImportCategories& categories() const { return categories_; }

private:
    struct Codes {
        std::string code, shortCode;
        const ImportCategory* category = nullptr;
        bool categoryTold = false;
    };

    /// A code's place in eight bytes; the row itself tells whether it has that code.
    struct NotedCode {
        std::uint32_t hash = 0;
        std::uint32_t row = 0;

        bool operator<(const NotedCode& other) const {
            return hash != other.hash ? hash < other.hash : row < other.row;
        }
    };

    /// The row that is the first of the code, where that is another one.
    std::optional<std::size_t> otherFirst(const std::string& code, std::size_t row);
    SheetCell cellOf(std::size_t row, std::size_t field) const;
    std::string valueOf(std::size_t row, std::size_t field, CheckedRow& checked) const;
    /// Why a category that is to be made can't be.
    std::string plannedRefusal(const ImportCategory& category) const;
    Codes codesOf(std::size_t row, CheckedRow& checked);
    void checkFields(std::size_t row, CheckedRow& checked, const Codes& codes);
    void doubtNumber(std::size_t row, std::size_t field, std::size_t before, CheckedRow& checked) const;
    void checkValue(std::size_t field, std::string text, FieldRow& into, CheckedRow& checked) const;
    void takeStored(std::size_t field, std::int32_t itemId, FieldRow& into) const;
    bool differs(std::size_t field, std::int32_t itemId, const FieldRow& wanted) const;
    std::size_t categoryField() const { return fields_.size() - 1; }

    const SheetRows& rows_;
    const std::vector<ImportField>& fields_;
    std::vector<int> columnOf_;
    ImportOptions options_;
    platform::Date today_;
    StoredItems stored_;
    ImportCategories categories_;
    std::vector<NotedCode> noted_;
};

}  // namespace orvenmod
