// What hosts reach by name: a row a member, as the public headers declare them.
#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>

#include "entry/binding.h"

namespace orvenmod {

namespace {

using binding::method;
using binding::property;

constexpr Member kBasicInfo[] = {
    method<&clsBasicInfo::mainInterface>("mainInterface", "intFitemClassId", "strFindField", "strFindValue",
                                         "strDBConn", "intIsReturn", "intItemCalled", "strParamSQL"),
    property<&clsBasicInfo::fItemId>("fItemId"),
    property<&clsBasicInfo::fNumber>("fNumber"),
    property<&clsBasicInfo::fName>("fName"),
    property<&clsBasicInfo::fItemClassId>("fItemClassId"),
    property<&clsBasicInfo::UserRight>("UserRight"),
    property<&clsBasicInfo::strFindValue>("strFindValue"),
    property<&clsBasicInfo::DBConnection>("DBConnection"),
    property<&clsBasicInfo::strFindSql>("strFindSql"),
    property<&clsBasicInfo::fItemName>("fItemName"),
    property<&clsBasicInfo::fTableName>("fTableName"),
    property<&clsBasicInfo::Status>("Status"),
};

constexpr Member kDictionary[] = {
    method<&clsJCZL::mainInterface>("mainInterface", "strDBConnection"),
    method<&clsJCZL::mainSingleInterface>("mainSingleInterface", "intIsReturn", "intFitemClassId", "strDBConnection"),
    property<&clsJCZL::UserRight>("UserRight"),
    property<&clsJCZL::fItemId>("fItemId"),
    property<&clsJCZL::fName>("fName"),
    property<&clsJCZL::fNumber>("fNumber"),
};

constexpr Member kDesigner[] = {
    method<&clsHSXMManage::mainInterface>("mainInterface"),
    property<&clsHSXMManage::UserRight>("UserRight"),
    property<&clsHSXMManage::DBConnection>("DBConnection"),
};

template <class Class>
std::shared_ptr<void> make() {
    return std::make_shared<Class>();
}

constexpr BoundClass kClasses[] = {
    {"Orvenmod.clsBasicInfo", make<clsBasicInfo>, kBasicInfo},
    {"Orvenmod.clsJCZL", make<clsJCZL>, kDictionary},
    {"Orvenmod.clsHSXMManage", make<clsHSXMManage>, kDesigner},
};

}  // namespace

std::span<const BoundClass> boundClasses() { return kClasses; }

}  // namespace orvenmod
