// A file that is brought in: a workbook or a text of separated values, read whole into rows.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "transfer/sheetrows.h"

namespace orvenmod {

class Package;

/// Why a file can't be read, for the user.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class TextEncoding { detected, utf8, gb18030 };

/// What the user tells of the file.
struct FileChoice {
    std::string path;
    int sheet = 0;
    TextEncoding encoding = TextEncoding::detected;
    char separator = 0;  ///< of the values of a text; 0 to detect it
};

struct SheetFile {
    std::vector<std::string> sheets;  ///< the names of all; none for a text
    SheetRows rows;                   ///< of the chosen one
};

/// Thrown out of a reading that its user has cancelled.
class CancelledReading : public std::runtime_error {
public:
    CancelledReading() : std::runtime_error("cancelled") {}
};

/// Called now and then with how much of the whole is read; a CancelledReading ends the reading.
using WhileReading = std::function<void(std::uint64_t done, std::uint64_t whole)>;

/// Whether the file is a text of separated values, by its name.
bool isTextFile(const std::string& path);

/// Throws UnreadableFile, CancelledReading.
SheetFile readSheetFile(const FileChoice& choice, const WhileReading& meanwhile);

// Each for its own kind of file, called by readSheetFile alone.
SheetFile readWorkbook(const FileChoice& choice, const WhileReading& meanwhile);     ///< .xlsx, .ods
SheetFile readOldWorkbook(const FileChoice& choice, const WhileReading& meanwhile);  ///< .xls
SheetFile readText(const FileChoice& choice, const WhileReading& meanwhile);         ///< .csv, .txt

void readOpenXml(const Package& package, SheetFile& file, int chosen, const WhileReading& meanwhile);
void readOpenDocument(const Package& package, SheetFile& file, int chosen, const WhileReading& meanwhile);

}  // namespace orvenmod
