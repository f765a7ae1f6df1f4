// The fields that a file's columns can go into: those of the editor, in its order, and the category behind them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "editor/fieldrow.h"
#include "platform/entrygrid.h"

namespace orvenmod {

/// The entries that a reference chooses from, by code and by name.
class Entries {
public:
    void add(const std::string& id, const std::string& code, const std::string& name);

    /// The id that the text means, "" with `refusal` where it means none or several.
    std::string idOf(std::string_view text, std::string& refusal) const;
    /// Whether a spreadsheet makes the number out of another entry's code, as 12 out of "0012".
    bool isNumberOfOther(const std::string& number) const { return madeNumbers_.count(number) != 0; }
    const std::vector<std::string>& names() const { return names_; }

private:
    static constexpr const char* kSeveral = "*";

    std::unordered_map<std::string, std::string> byCode_;
    std::unordered_map<std::string, std::string> byName_;
    std::unordered_set<std::string> madeNumbers_;
    std::vector<std::string> names_;
};

struct ImportField {
    std::string caption;
    std::string column = {};  ///< "" for the category
    std::string type = {};
    std::string sourceClass = {};
    bool required = false;
    int longest = 0;        ///< letters; where it isn't national a Chinese one counts as two. 0 where it isn't known
    bool national = false;  ///< the column takes every language
    platform::NumberRule rule = {};
    std::shared_ptr<const Entries> entries = {};  ///< of a reference

    bool isReference() const { return entries != nullptr; }
    bool isNumber() const;
    bool isDate() const;
};

inline constexpr std::size_t kShortCodeField = 0;
inline constexpr std::size_t kCodeField = 1;
inline constexpr std::size_t kNameField = 2;

/// Whether the field is a code or composes one, as the category does.
inline bool isCodeField(const std::vector<ImportField>& fields, std::size_t field) {
    return field == kShortCodeField || field == kCodeField || fields[field].column.empty();
}

/// Reads on gConn, which is open, for class gItemClassId; what fails goes to the caller, as it does for the editor.
std::vector<ImportField> readImportFields();

/// How texts are looked up: as the store compares them, without regard to case and outer blanks.
std::string lookupKey(std::string_view text);

/// For each heading the place of its field, -1 for none: as it went the last time, else by caption or column name. No
/// field is given twice.
std::vector<int> matchHeadings(const std::vector<std::string>& headings, const std::vector<ImportField>& fields,
                               const std::string& remembered);

/// What matchHeadings is told the next time.
std::string rememberedMatch(const std::vector<std::string>& headings, const std::vector<ImportField>& fields,
                            const std::vector<int>& match);

}  // namespace orvenmod
