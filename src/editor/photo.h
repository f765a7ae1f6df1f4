// The item's photo: the picture pict1 and the file that a save is to store, gPhotoPath. Only goods have one.
#pragma once

#include <cstdint>

#include "platform/controls.h"
#include "store/itemclass.h"

namespace orvenmod {

/// The class whose items can have a photo.
inline constexpr std::int16_t kPhotoClass = store::kGoods;

class Photo {
public:
    Photo(platform::Picture& pict1, platform::FileDialog& cd1) : pict1_(pict1), cd1_(cd1) {}

    /// Takes the stored photo of gCurItemId out to a private file and shows it.
    void load();
    /// Stores the file of gPhotoPath for the item, within the open transaction; nothing without one.
    void store(std::int32_t itemId) const;
    void clear() { pict1_.clear(); }

    void cmdAdd_Click();
    void cmdClear_Click();

private:
    platform::Picture& pict1_;
    platform::FileDialog& cd1_;
};

}  // namespace orvenmod
