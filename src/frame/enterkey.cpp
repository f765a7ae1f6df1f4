#include "frame/enterkey.h"

#include "frame/services.h"
#include "platform/keys.h"

namespace orvenmod {

void moveOnByEnter(std::initializer_list<platform::Edit*> edits) {
    for (platform::Edit* edit : edits) {
        edit->keyDown = [](int key) {
            if (key == platform::kKeyEnter) services().toolkit.sendTab();
        };
    }
}

}  // namespace orvenmod
