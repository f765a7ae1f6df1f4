// The part of the tour that keeps items: editor, categories, a delete that is refused, export, print preview,
// dictionaries.
#pragma once

#include "guide.h"

namespace orvenmod::sample {

void keepItems(Guide& guide);
/// Sorts and narrows the list, and shows who uses an item.
void arrangeItems(Guide& guide);
void keepCategories(Guide& guide);
/// Leaves the list of goods as a workbook in the folder.
void exportItems(Guide& guide, const std::string& folder);
/// Leaves the list of goods as a PDF file in the folder.
void printItems(Guide& guide, const std::string& folder);
void keepDictionaries(Guide& guide);

}  // namespace orvenmod::sample
