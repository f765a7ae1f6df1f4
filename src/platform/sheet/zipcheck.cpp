#include "platform/sheet/zipcheck.h"

#include <gsf/gsf-infile-zip.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>

#include <algorithm>
#include <memory>
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

// The last bytes of a part; "" where it can't be read whole.
std::string tailOf(GsfInput* part, std::size_t length) {
    std::string tail;
    for (auto left = static_cast<std::size_t>(gsf_input_remaining(part)); left > 0;) {
        const std::size_t step = std::min(left, kChunk);
        const guint8* bytes = gsf_input_read(part, step, nullptr);
        if (!bytes) return "";
        tail.append(reinterpret_cast<const char*>(bytes), step);
        if (tail.size() > length) tail.erase(0, tail.size() - length);
        left -= step;
    }
    return tail;
}

}  // namespace

void checkWorkbookWhole(const std::string& path, std::size_t sheets) {
    constexpr std::string_view kEnd = "</worksheet>";
    const std::runtime_error broken("文件没有完整写入，磁盘可能已满：" + path);
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    if (!file) throw broken;
    const Owned<GsfInfile> package(gsf_infile_zip_new(file.get(), nullptr));
    if (!package) throw broken;
    for (std::size_t i = 1; i <= sheets; ++i) {
        const std::string name = "sheet" + std::to_string(i) + ".xml";
        const char* names[] = {"xl", "worksheets", name.c_str(), nullptr};
        const Owned<GsfInput> part(gsf_infile_child_by_aname(package.get(), names));
        if (!part || !tailOf(part.get(), 64).ends_with(kEnd)) throw broken;
    }
}

}  // namespace orvenmod::platform
