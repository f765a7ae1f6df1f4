// Fills the editor with the stored item gCurItemId.
#pragma once

#include "editor/attachments.h"
#include "editor/fieldgrid.h"
#include "editor/photo.h"

namespace orvenmod {

/// Fields and category from the class's view, the photo, the list of attachments. Shows its own failures; false then,
/// and for an item that isn't there. What was filled stays.
bool getBasicInfo(FieldGrid& fields, Photo& photo, Attachments& attachments);

}  // namespace orvenmod
