#include "transfer/package.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile-zip.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>

#include <memory>
#include <string_view>

namespace orvenmod {

namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

template <class Kind>
using Owned = std::unique_ptr<Kind, Unref>;

std::uint64_t sizeBelow(GsfInfile* folder) {
    std::uint64_t bytes = 0;
    for (int i = 0; i < gsf_infile_num_children(folder); ++i) {
        const Owned<GsfInput> part(gsf_infile_child_by_index(folder, i));
        if (!part) continue;
        const bool inner = GSF_IS_INFILE(part.get()) && gsf_infile_num_children(GSF_INFILE(part.get())) > 0;
        bytes += inner ? sizeBelow(GSF_INFILE(part.get())) : static_cast<std::uint64_t>(gsf_input_size(part.get()));
    }
    return bytes;
}

bool hasEncryptedParts(GsfInfile* package) {
    const char* names[] = {"META-INF", "manifest.xml", nullptr};
    const Owned<GsfInput> manifest(gsf_infile_child_by_aname(package, names));
    if (!manifest) return false;
    const auto length = static_cast<std::size_t>(gsf_input_size(manifest.get()));
    const guint8* bytes = gsf_input_read(manifest.get(), length, nullptr);
    return bytes && std::string_view(reinterpret_cast<const char*>(bytes), length).find("encryption-data") !=
                        std::string_view::npos;
}

}  // namespace

bool isEncryptedPackage(const std::string& path) {
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    if (!file) return false;
    if (const Owned<GsfInfile> zip{gsf_infile_zip_new(file.get(), nullptr)}; zip) return hasEncryptedParts(zip.get());
    gsf_input_seek(file.get(), 0, G_SEEK_SET);
    const Owned<GsfInfile> compound(gsf_infile_msole_new(file.get(), nullptr));
    return compound && Owned<GsfInput>(gsf_infile_child_by_name(compound.get(), "EncryptedPackage"));
}

bool hasPart(const std::string& path, const char* name) {
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    if (!file) return false;
    const Owned<GsfInfile> zip(gsf_infile_zip_new(file.get(), nullptr));
    return zip && Owned<GsfInput>(gsf_infile_child_by_name(zip.get(), name));
}

std::uint64_t unpackedSize(const std::string& path) {
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    if (!file) return 0;
    const Owned<GsfInfile> zip(gsf_infile_zip_new(file.get(), nullptr));
    return zip ? sizeBelow(zip.get()) : 0;
}

}  // namespace orvenmod
