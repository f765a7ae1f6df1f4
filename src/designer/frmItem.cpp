#include "designer/frmItem.h"

namespace orvenmod {

frmItem& frmItem::instance() {
    static frmItem record;
    return record;
}

}  // namespace orvenmod
