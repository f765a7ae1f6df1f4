// Workbooks of the older kind, .xls.
#include <freexl.h>

#include <memory>

#include "platform/numberformat.h"
#include "transfer/oldcontainer.h"
#include "transfer/oldformulas.h"
#include "transfer/package.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr unsigned kRowsAStep = 500;

struct CloseBook {
    void operator()(const void* book) const { freexl_close(book); }
};
using Book = std::unique_ptr<const void, CloseBook>;

Book openBook(const std::string& path) {
    const UnreadableFile locked("文件有密码，请先去掉密码：" + path);
    if (isEncryptedCompound(path)) throw locked;
    const OldContainerCopy copy(path);
    const void* handle = nullptr;
    const int result = freexl_open(copy.path().c_str(), &handle);
    Book book(handle);
    unsigned password = FREEXL_BIFF_PLAIN;
    if (book) freexl_get_info(book.get(), FREEXL_BIFF_PASSWORD, &password);
    if (password == FREEXL_BIFF_OBFUSCATED) throw locked;
    if (result != FREEXL_OK) throw UnreadableFile("文件已损坏或不是电子表格：" + path);
    return book;
}

SheetCell cellOf(const FreeXL_CellValue& value) {
    switch (value.type) {
        case FREEXL_CELL_INT:
            return {CellKind::number, std::to_string(value.value.int_value)};
        case FREEXL_CELL_DOUBLE:
            return {CellKind::number, platform::plainNumber(value.value.double_value)};
        case FREEXL_CELL_TEXT:
        case FREEXL_CELL_SST_TEXT:
        case FREEXL_CELL_TIME:
            return {CellKind::text, value.value.text_value};
        case FREEXL_CELL_DATE:
        case FREEXL_CELL_DATETIME:
            return {CellKind::date, value.value.text_value};
        default:
            return {};
    }
}

void readRows(const Book& book, SheetRows& rows, const WhileReading& meanwhile) {
    unsigned height = 0;
    unsigned short width = 0;
    freexl_worksheet_dimensions(book.get(), &height, &width);
    for (unsigned row = 0; row < height; ++row) {
        if (row % kRowsAStep == 0) meanwhile(row, height);
        for (unsigned short column = 0; column < width; ++column) {
            FreeXL_CellValue value{};
            if (freexl_get_cell_value(book.get(), row, column, &value) != FREEXL_OK) continue;
            SheetCell cell = cellOf(value);
            if (!cell.isEmpty()) rows.put(row, column, std::move(cell));
        }
    }
    rows.finish();
}

}  // namespace

SheetFile readOldWorkbook(const FileChoice& choice, const WhileReading& meanwhile) {
    const Book book = openBook(choice.path);
    SheetFile file;
    unsigned sheets = 0;
    freexl_get_info(book.get(), FREEXL_BIFF_SHEET_COUNT, &sheets);
    // The library tells no sheets of a book that it knows no way through.
    if (sheets == 0) throw UnreadableFile("旧格式的文件读不出，请另存为 .xlsx 再导入：" + choice.path);
    for (unsigned short sheet = 0; sheet < sheets; ++sheet) {
        const char* name = nullptr;
        freexl_get_worksheet_name(book.get(), sheet, &name);
        file.sheets.emplace_back(name ? name : "");
    }
    if (freexl_select_active_worksheet(book.get(), static_cast<unsigned short>(choice.sheet)) == FREEXL_OK)
        readRows(book, file.rows, meanwhile);
    addOldFormulas(choice.path, choice.sheet, file.rows);
    return file;
}

}  // namespace orvenmod
