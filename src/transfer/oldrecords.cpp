#include "transfer/oldrecords.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>

#include <cstdint>

namespace orvenmod {

namespace {

constexpr unsigned kFormat = 0x041E;
constexpr unsigned kLabel = 0x0204;
constexpr unsigned kTexts = 0x00FC;

/// Whether the text whose length stands there, in one byte or two, lies within the record.
bool holdsText(const OldRecord& record, std::size_t at, std::size_t lengthBytes, bool marked) {
    const std::size_t size = record.payload.size();
    if (size < at + lengthBytes + (marked ? 1 : 0)) return false;
    const std::size_t length = lengthBytes == 1 ? record.payload[at] : record.u16(at);
    const std::size_t characters = at + lengthBytes + (marked ? 1 : 0);
    const bool wide = marked && (record.payload[characters - 1] & 1U) != 0;
    return length * (wide ? 2 : 1) <= size - characters;
}

bool holds(const OldRecord& record, bool marked, std::uint64_t whole) {
    constexpr std::size_t kLeastText = 3;
    switch (record.id) {
        case kSheet:
            return holdsText(record, 6, 1, marked);
        case kFormat:
            return marked ? holdsText(record, 2, 2, true) : holdsText(record, 2, 1, false);
        case kLabel:
            return holdsText(record, 6, 2, marked);
        case kTexts:
            return (record.u16(4) | static_cast<std::uint64_t>(record.u16(6)) << 16U) <= whole / kLeastText;
        default:
            return true;
    }
}

/// Names within a container are told apart without regard to case.
Owned<GsfInput> childNamed(GsfInfile* container, const char* name) {
    for (int at = 0; at < gsf_infile_num_children(container); ++at) {
        const char* each = gsf_infile_name_by_index(container, at);
        if (each != nullptr && g_ascii_strcasecmp(each, name) == 0)
            return Owned<GsfInput>(gsf_infile_child_by_index(container, at));
    }
    return nullptr;
}

}  // namespace

bool readRecord(GsfInput* stream, OldRecord& record) {
    unsigned char head[4];
    if (!gsf_input_read(stream, sizeof head, head)) return false;
    record.id = head[0] | static_cast<unsigned>(head[1]) << 8U;
    record.payload.resize(head[2] | static_cast<unsigned>(head[3]) << 8U);
    return record.payload.empty() || gsf_input_read(stream, record.payload.size(), record.payload.data());
}

Owned<GsfInput> openRecords(const std::string& path) {
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    const Owned<GsfInfile> compound(file ? gsf_infile_msole_new(file.get(), nullptr) : nullptr);
    if (!compound) return nullptr;
    Owned<GsfInput> stream = childNamed(compound.get(), kWorkbook);
    return stream ? std::move(stream) : childNamed(compound.get(), kEarlierWorkbook);
}

bool recordsHold(GsfInput* stream) {
    const auto whole = static_cast<std::uint64_t>(gsf_input_size(stream));
    bool marked = false;
    OldRecord record;
    while (gsf_input_remaining(stream) >= 4) {
        if (!readRecord(stream, record)) return false;
        if (record.id == kBegin) marked = record.u16(0) >= kMarkedSince;
        if (!holds(record, marked, whole)) return false;
    }
    return true;
}

}  // namespace orvenmod
