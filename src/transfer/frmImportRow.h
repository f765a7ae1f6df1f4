// The dialog in which a row of an import is mended: the file's values, and beside each why it was refused.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/window.h"
#include "transfer/importsession.h"

namespace orvenmod {

class frmImportRow {
public:
    /// Shows the row modally. The values that were changed, by their fields; none where the user gave up.
    static std::map<std::size_t, std::string> mend(const ImportSession& session, std::size_t place);
};

}  // namespace orvenmod
