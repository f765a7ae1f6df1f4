#include "platform/sheet/sharedstrings.h"

#include <algorithm>

#include "platform/sheet/biffrecords.h"
#include "platform/sheet/utf16.h"

namespace orvenmod::platform {

namespace {

constexpr std::size_t kTextHead = 3;  // bytes: count and flags

// Fills SST and CONTINUE records one after the other.
class Filler {
public:
    explicit Filler(std::string& stream) : stream_(stream) {}

    void head(std::uint32_t uses, std::uint32_t texts) { payload_.u32(uses).u32(texts); }

    void text(std::u16string_view units) {
        // A head needs a unit behind it, or the reader meets an empty rest.
        if (room() < kTextHead + (units.empty() ? 0 : 2)) flush();
        payload_.u16(static_cast<unsigned>(units.size())).u8(1);
        while (!units.empty()) {
            const std::size_t part = std::min(units.size(), room() / 2);
            payload_.units(units.substr(0, part));
            units.remove_prefix(part);
            if (units.empty()) return;
            flush();
            payload_.u8(1);
        }
    }

    /// Ends the record begun.
    void flush() {
        if (payload_.bytes().empty()) return;
        addRecord(stream_, id_, payload_);
        id_ = Biff::continued;
        payload_ = {};
    }

private:
    std::size_t room() const { return kLongestPayload - payload_.bytes().size(); }

    std::string& stream_;
    Biff id_ = Biff::sharedStrings;
    Payload payload_;
};

}  // namespace

std::uint32_t SharedStrings::place(std::string_view text) {
    ++uses_;
    const std::string_view cut = cutToUnits(text);
    if (const auto known = places_.find(cut); known != places_.end()) return known->second;
    const auto place = static_cast<std::uint32_t>(texts_.size());
    places_.emplace(texts_.emplace_back(cut), place);
    return place;
}

void SharedStrings::write(std::string& stream) const {
    Filler filler(stream);
    filler.head(uses_, static_cast<std::uint32_t>(texts_.size()));
    for (const std::string& text : texts_)
        filler.text(toUtf16(text));
    filler.flush();
}

}  // namespace orvenmod::platform
