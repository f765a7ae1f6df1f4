#include "editor/fieldrow.h"

#include "frame/conversion.h"

namespace orvenmod {

bool FieldRow::isReference() const { return !trim(sourceClass).empty() && trim(sourceClass) != "0"; }

std::string readCell(const platform::EntryGrid& fps1, int column, int row) {
    return row >= 1 && row <= fps1.rowCount() ? fps1.text(column, row) : "";
}

void writeCell(platform::EntryGrid& fps1, int column, int row, const std::string& text) {
    if (row >= 1 && row <= fps1.rowCount()) fps1.setText(column, row, text);
}

FieldRow fieldRow(const platform::EntryGrid& fps1, int row) {
    return {.value = fps1.text(kValue, row),
            .fieldName = fps1.text(kFieldName, row),
            .fieldType = fps1.text(kFieldType, row),
            .sourceClass = fps1.text(kSourceClass, row),
            .chosenId = fps1.text(kChosenId, row)};
}

std::string categoryText(int depth, const std::string& name, const std::string& code) {
    std::string text;
    for (int level = 1; level < depth; ++level)
        text += "    ";
    return text + name + "(" + code + ")";
}

}  // namespace orvenmod
