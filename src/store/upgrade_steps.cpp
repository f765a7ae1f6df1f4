// What each version of the schema added. A step that is out in the world is never changed: what comes later is a
// further step behind the last. The tables of schema_own.cpp and schema_suite.cpp hold the shape that all steps lead
// to.
#include "store/upgrade.h"

namespace orvenmod::store {
namespace {

constexpr int kTableExists = 2714;
constexpr int kNoSuchIndex = 3701;

}  // namespace

const std::vector<UpgradeStep>& upgradeSteps() {
    static const std::vector<UpgradeStep> kSteps = {
        {1, {{"create table tblOrvenmodVersion(fVersion int not null)", kTableExists}}},
        // The tree needs no codes and names; a smaller index serves a million items better.
        {2,
         {{"drop index tblItem.ix_tblItem_5", kNoSuchIndex},
          {"create index ix_tblItem_5 on tblItem(fItemClassId,fIsDetail,fDepth)"}}},
        // The test of an item's name read all items of its class.
        {3,
         {{"drop index tblItem.ix_tblItem_2", kNoSuchIndex},
          {"create index ix_tblItem_2 on tblItem(fItemClassId,fName,fIsDetail)"}}},
        // The next short code read a row for each item of its category.
        {4,
         {{"drop index tblItem.ix_tblItem_4", kNoSuchIndex},
          {"create index ix_tblItem_4 on tblItem(fItemClassId,fParentId) include (fShortNumber)"}}},
    };
    return kSteps;
}

}  // namespace orvenmod::store
