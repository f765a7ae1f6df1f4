// What the suite asks at its start about a database of another version.
#pragma once

#include "suite.h"

namespace orvenmod::sample {

/// Offers the upgrade of an older database, and does it on a yes; one that stays as it is can be worked on. False where
/// the suite can't open the database, since it is newer: the user has been told. Needs a QApplication.
bool isReadyToOpen(const Suite& suite);

}  // namespace orvenmod::sample
