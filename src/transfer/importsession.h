// One import from the file to its result, free of windows: what was read, how its columns go into fields, how each row
// was judged, what became of it. What it asks of the store runs on gConn, which the caller opens and closes.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/date.h"
#include "transfer/importrun.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

/// What of a new item was kept when the run was taken back, and why.
struct KeptItem {
    std::size_t row = 0;
    std::string reason;
};

enum class MadeCategories { keep, takeBack };

class ImportSession {
public:
    explicit ImportSession(const platform::Date& today) : today_(today) {}

    /// Reads the class's fields; asks the store. What fails goes to the caller.
    void readFields() { fields_ = readImportFields(); }
    /// Reads the file. Throws UnreadableFile, CancelledReading; what was read before stays then.
    void readFile(const FileChoice& choice, const WhileReading& meanwhile);
    /// Whether the file is another than the one that was read.
    bool fileChanged() const;

    const std::vector<std::string>& sheets() const { return file_.sheets; }
    const std::vector<ImportField>& fields() const { return fields_; }
    const std::vector<std::string>& headings() const { return headings_; }
    /// The first values below a heading.
    std::string sample(std::size_t column) const;
    std::size_t rowCount() const { return rows_.size(); }

    /// The field of each column, -1 for none.
    std::vector<int> match;
    ImportOptions options;
    /// Gives the columns their fields, as it went the last time.
    void matchColumns(const std::string& remembered) { match = matchHeadings(headings_, fields_, remembered); }
    std::string remembered() const { return rememberedMatch(headings_, fields_, match); }

    /// Judges every row; asks the store. False where the user cancelled: what was judged before stays then, with its
    /// result, as it does where the store fails.
    bool check(platform::Progress& progress);
    std::size_t count(RowState state) const { return counts_[static_cast<std::size_t>(state)]; }
    RowState state(std::size_t place) const { return states_[place]; }
    /// The file's row at that place among those that hold anything.
    std::size_t row(std::size_t place) const { return rows_[place]; }
    std::size_t placeOf(std::size_t row) const;
    CheckedRow checked(std::size_t place) const { return check_->check(rows_[place]); }
    /// What the file holds for the field.
    std::string text(std::size_t place, std::size_t field) const;
    /// Whether the file's column goes into a code.
    bool isCode(int column) const;
    int columnOf(std::size_t field) const { return check_->columnOf(field); }
    /// Takes what was typed in place of the file's; rejudge() tells what that changes.
    void mend(std::size_t place, std::size_t field, const std::string& text);
    /// Judges one row anew. Where its code changed, others may be doubled or no longer: check() then.
    void rejudge(std::size_t place);

    /// Stores what is new or changed; asks the store.
    void run(platform::Progress& progress);
    const ImportResult& result() const { return result_; }
    /// The refused rows' places and why, of the check and of the run.
    std::vector<std::size_t> refused() const;
    std::string reasonOf(std::size_t place) const;
    /// Deletes what the run has added, each item behind the guard of the delete, and where `categories` wants it those
    /// it has made and that are empty then; asks the store. What stays remains in the result.
    std::vector<KeptItem> takeBack(platform::Progress& progress, MadeCategories categories);

    const SheetRows& rows() const { return file_.rows; }

private:
    void findHeading();

    platform::Date today_;
    FileChoice choice_;
    std::int64_t readTime_ = 0;
    std::uint64_t readSize_ = 0;
    SheetFile file_;
    std::size_t heading_ = 0;
    std::vector<std::string> headings_;
    std::vector<std::size_t> rows_;
    std::vector<ImportField> fields_;
    std::unique_ptr<RowCheck> check_;
    std::vector<RowState> states_;
    std::array<std::size_t, kRowStates> counts_{};
    ImportResult result_;
};

/// The reasons of a row in one line, each behind its field.
std::string reasonText(const std::vector<CellReason>& reasons, const std::vector<ImportField>& fields);

}  // namespace orvenmod
