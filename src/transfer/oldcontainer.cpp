#include "transfer/oldcontainer.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <vector>

#include "transfer/oldrecords.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

// A shorter stream lies in pieces within another one.
constexpr gsf_off_t kLeastOwnStream = 4096;
constexpr std::size_t kBlock = 65536;

bool copyBytes(GsfInput* from, GsfOutput* to) {
    std::vector<guint8> block(kBlock);
    for (gsf_off_t left = gsf_input_remaining(from); left > 0; left = gsf_input_remaining(from)) {
        const auto size = std::min(static_cast<std::size_t>(left), block.size());
        if (!gsf_input_read(from, size, block.data()) || !gsf_output_write(to, size, block.data())) return false;
    }
    const gsf_off_t missing = kLeastOwnStream - gsf_output_tell(to);
    const std::vector<guint8> nothing(static_cast<std::size_t>(std::max<gsf_off_t>(missing, 0)));
    return nothing.empty() || gsf_output_write(to, nothing.size(), nothing.data());
}

bool writeContainer(const std::string& path, GsfInput* stream) {
    const Owned<GsfOutput> file(gsf_output_stdio_new(path.c_str(), nullptr));
    if (!file) return false;
    const Owned<GsfOutfile> container(gsf_outfile_msole_new(file.get()));
    const bool earlier = g_ascii_strcasecmp(gsf_input_name(stream), kEarlierWorkbook) == 0;
    const Owned<GsfOutput> copy(gsf_outfile_new_child(container.get(), earlier ? kEarlierWorkbook : kWorkbook, FALSE));
    bool written = copyBytes(stream, copy.get());
    written = gsf_output_close(copy.get()) && written;
    written = gsf_output_close(GSF_OUTPUT(container.get())) && written;
    return (gsf_output_is_closed(file.get()) || gsf_output_close(file.get())) && written;
}

std::string newTemporaryFile() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    // Otherwise it would stand wherever the host happens to be.
    if (error) folder = P_tmpdir;
    std::string path = (folder / "orvenmod-workbook-XXXXXX").string();
    const int file = ::mkstemp(path.data());
    if (file < 0) throw UnreadableFile("文件无法写入：" + path);
    ::close(file);
    return path;
}

}  // namespace

OldContainerCopy::OldContainerCopy(const std::string& path) {
    const Owned<GsfInput> stream = openRecords(path);
    if (!stream || !recordsHold(stream.get())) throw UnreadableFile("文件已损坏或不是电子表格：" + path);
    path_ = newTemporaryFile();
    if (!gsf_input_seek(stream.get(), 0, G_SEEK_SET) && writeContainer(path_, stream.get())) return;
    std::error_code none;
    std::filesystem::remove(path_, none);
    throw UnreadableFile("文件无法写入：" + path_);
}

OldContainerCopy::~OldContainerCopy() {
    std::error_code none;
    std::filesystem::remove(path_, none);
}

}  // namespace orvenmod
