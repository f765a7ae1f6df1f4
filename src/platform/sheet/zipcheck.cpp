#include "platform/sheet/zipcheck.h"

#include <gsf/gsf-infile-zip.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace orvenmod::platform {

namespace {

constexpr std::size_t kChunk = 1 << 16;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

template <class Kind>
using Owned = std::unique_ptr<Kind, Unref>;

/// Reads all of a part and counts its cells; nothing where it can't be read, or has lost its beginning or its end.
std::optional<std::size_t> cellsOf(GsfInput* part) {
    constexpr std::string_view kBegin = "<?xml";
    constexpr std::string_view kCell = "<c r=";
    std::string text;  // a chunk, behind the end of the one before
    std::size_t cells = 0;
    bool begins = false;
    for (auto left = static_cast<std::size_t>(gsf_input_remaining(part)); left > 0;) {
        const std::size_t step = std::min(left, kChunk);
        const guint8* bytes = gsf_input_read(part, step, nullptr);
        if (!bytes) return std::nullopt;
        text.append(reinterpret_cast<const char*>(bytes), step);
        begins = begins || text.starts_with(kBegin);
        for (std::size_t at = text.find(kCell); at != std::string::npos; at = text.find(kCell, at + 1))
            ++cells;
        text.erase(0, text.size() - std::min(text.size(), kCell.size() - 1));
        left -= step;
    }
    if (text.ends_with('\n')) text.pop_back();
    return begins && text.ends_with('>') ? std::optional(cells) : std::nullopt;
}

/// Whether every part can be read.
bool isWhole(GsfInfile* folder) {
    for (int i = 0; i < gsf_infile_num_children(folder); ++i) {
        const Owned<GsfInput> part(gsf_infile_child_by_index(folder, i));
        if (!part) return false;
        const bool inner = GSF_IS_INFILE(part.get()) && gsf_infile_num_children(GSF_INFILE(part.get())) > 0;
        const bool sheet = std::string_view(gsf_input_name(part.get())).starts_with("sheet");
        if (inner ? !isWhole(GSF_INFILE(part.get())) : !sheet && !cellsOf(part.get())) return false;
    }
    return true;
}

}  // namespace

void checkWorkbookWhole(const std::string& path, const std::vector<std::size_t>& cells) {
    const std::runtime_error broken("文件没有完整写入，磁盘可能已满：" + path);
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    if (!file) throw broken;
    const Owned<GsfInfile> package(gsf_infile_zip_new(file.get(), nullptr));
    if (!package) throw broken;
    if (!isWhole(package.get())) throw broken;
    for (std::size_t i = 1; i <= cells.size(); ++i) {
        const std::string name = "sheet" + std::to_string(i) + ".xml";
        const char* names[] = {"xl", "worksheets", name.c_str(), nullptr};
        const Owned<GsfInput> part(gsf_infile_child_by_aname(package.get(), names));
        if (!part || cellsOf(part.get()) != cells[i - 1]) throw broken;
    }
}

}  // namespace orvenmod::platform
