#include "designer/saving.h"

#include "frame/mdlMain.h"

namespace orvenmod {

bool saved(const std::function<void()>& work) {
    return trappedTransaction([&work] {
        work();
        return true;
    });
}

}  // namespace orvenmod
