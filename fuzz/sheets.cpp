// A file that is brought in: workbooks old and new, texts of separated values. Any bytes are rows, or refused in words.
#include <glib.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "fuzz/fuzz.h"
#include "transfer/sheetfile.h"

namespace {

using namespace orvenmod;

/// The one file that is written again and again, gone with the process's end.
class File {
public:
    File() {
        const int file = ::mkstemps(name_.data(), 4);
        fuzz::check(file >= 0, "there is a place for the file");
        ::close(file);
    }
    ~File() { ::unlink(name_.c_str()); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const std::string& holding(std::string_view bytes) {
        std::ofstream(name_, std::ios::binary | std::ios::trunc) << bytes;
        return name_;
    }

private:
    std::string name_ = "/tmp/orvenmod-fuzz-XXXXXX.csv";
};

// The library's own words go to the terminal otherwise.
bool quietLibrary() {
    g_log_set_default_handler([](const char*, GLogLevelFlags, const char*, void*) {}, nullptr);
    g_set_printerr_handler([](const char*) {});
    return true;
}

void lookAt(const SheetRows& rows) {
    constexpr std::size_t kFirst = 50;
    const int columns = std::min(rows.columnCount(), kMostColumns);
    for (std::size_t row = 0; row < std::min(rows.rowCount(), kFirst); ++row) {
        bool holds = false;
        for (int column = 0; column < columns; ++column)
            holds = holds || !rows.cell(row, column).text.empty();
        fuzz::check(!holds || !rows.isBlank(row), "a row that holds a text isn't blank");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static File file;
    [[maybe_unused]] static const bool kQuiet = quietLibrary();
    const auto meanwhile = [](std::uint64_t, std::uint64_t) {};
    FileChoice choice{.path = file.holding(fuzz::textOf(data, size))};
    try {
        const SheetFile first = readSheetFile(choice, meanwhile);
        lookAt(first.rows);
        choice.sheet = static_cast<int>(first.sheets.size()) - 1;
        if (choice.sheet > 0) lookAt(readSheetFile(choice, meanwhile).rows);
    } catch (const UnreadableFile& refusal) {
        fuzz::check(*refusal.what() != '\0', "a refusal has words");
    }
    return 0;
}
