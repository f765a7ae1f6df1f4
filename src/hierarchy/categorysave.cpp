#include "hierarchy/categorysave.h"

#include "frame/mdlMain.h"
#include "frame/services.h"
#include "hierarchy/categoryinsert.h"
#include "hierarchy/categorymove.h"

namespace orvenmod {

namespace {

/// True where there is a refusal.
bool isTold(std::optional<CategoryRefusal> refusal) {
    if (!refusal) return false;
    showWarning(*refusal == CategoryRefusal::codeTaken ? "代码不能重复!"
                                                       : "新分类设置不正确，不能设置在原有分类及其以下分类，请检查！");
    return true;
}

}  // namespace

bool insertCategory(const CategoryChange& wanted) {
    return trapped([&] {
        openDB();
        return !isTold(storeCategory(wanted));
    });
}

bool moveCategory(const CategoryChange& wanted) {
    return trappedTransaction([&] {
        openDB();
        return !isTold(storeMove(wanted, [] { services().toolkit.paintPending(); }));
    });
}

}  // namespace orvenmod
