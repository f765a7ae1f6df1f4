// The workbook's globals: fonts, number formats, cell formats, the list of sheets.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/sheet/sheetwriter.h"

namespace orvenmod::platform {

/// Cell formats: kHeadingXf the titles', kFirstColumnXf + i that of column i.
inline constexpr unsigned kDefaultXf = 15;
inline constexpr unsigned kHeadingXf = 16;
inline constexpr unsigned kFirstColumnXf = 17;

enum class Substream : unsigned { globals = 0x0005, sheet = 0x0010 };

void addBof(std::string& stream, Substream kind);

/// Everything before the list of sheets.
std::string globalsHead(const SheetLayout& layout);

/// One entry of the list of sheets; `position` is where the sheet's BOF stands in the stream.
std::string boundSheet(std::uint32_t position, const std::string& name);

/// The names of so many sheets: the layout's, then with a number behind. Characters that no sheet may have are left
/// out.
std::vector<std::string> sheetNames(const std::string& name, std::size_t count);

}  // namespace orvenmod::platform
