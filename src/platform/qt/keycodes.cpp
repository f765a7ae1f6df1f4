#include "platform/qt/keycodes.h"

#include <QKeyEvent>
#include <array>
#include <utility>

#include "platform/keys.h"

namespace orvenmod::platform::qt {

namespace {

constexpr std::array<std::pair<int, int>, 17> kSpecialKeys = {{{Qt::Key_Return, kKeyEnter},
                                                               {Qt::Key_Enter, kKeyEnter},
                                                               {Qt::Key_Backspace, 8},
                                                               {Qt::Key_Tab, 9},
                                                               {Qt::Key_Shift, 16},
                                                               {Qt::Key_Control, 17},
                                                               {Qt::Key_Escape, 27},
                                                               {Qt::Key_PageUp, 33},
                                                               {Qt::Key_PageDown, 34},
                                                               {Qt::Key_End, 35},
                                                               {Qt::Key_Home, 36},
                                                               {Qt::Key_Left, 37},
                                                               {Qt::Key_Up, kKeyUp},
                                                               {Qt::Key_Right, 39},
                                                               {Qt::Key_Down, kKeyDown},
                                                               {Qt::Key_Insert, 45},
                                                               {Qt::Key_Delete, 46}}};

constexpr int kFirstFunctionKey = 112;

bool isOwnCode(int key) {
    return key == Qt::Key_Space || (key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z);
}

}  // namespace

int keyCodeOf(const QKeyEvent& event) {
    const int key = event.key();
    for (const auto& [qtKey, code] : kSpecialKeys) {
        if (qtKey == key) return code;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return kFirstFunctionKey + key - Qt::Key_F1;
    return isOwnCode(key) ? key : 0;
}

int keyOfCode(int code) {
    for (const auto& [qtKey, own] : kSpecialKeys) {
        if (own == code) return qtKey;
    }
    if (code >= kFirstFunctionKey && code < kFirstFunctionKey + 12) return Qt::Key_F1 + code - kFirstFunctionKey;
    return isOwnCode(code) ? code : 0;
}

}  // namespace orvenmod::platform::qt
