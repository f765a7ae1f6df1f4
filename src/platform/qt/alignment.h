// A column's alignment as Qt's.
#pragma once

#include <QtCore/qnamespace.h>

#include "platform/design.h"

namespace orvenmod::platform::qt {

inline Qt::Alignment toQt(Alignment alignment) {
    switch (alignment) {
        case Alignment::centre:
            return Qt::AlignCenter;
        case Alignment::right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case Alignment::general:
        case Alignment::left:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

}  // namespace orvenmod::platform::qt
