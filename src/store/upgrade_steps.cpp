// What each version of the schema added. A step that is out in the world is never changed: what comes later is a
// further step behind the last. The tables of schema_own.cpp and schema_suite.cpp hold the shape that all steps lead
// to.
#include "store/upgrade.h"

namespace orvenmod::store {

const std::vector<UpgradeStep>& upgradeSteps() {
    static const std::vector<UpgradeStep> kSteps = {
        {1, {{.sql = "create table tblOrvenmodVersion(fVersion int not null)", .madeTable = kVersionTable}}},
        // The tree needs no codes and names; a smaller index serves a million items better.
        {2,
         {{"drop index tblItem.ix_tblItem_5", StepFailure::tellsNothing},
          {"create index ix_tblItem_5 on tblItem(fItemClassId,fIsDetail,fDepth)"}}},
        // The test of an item's name read all items of its class.
        {3,
         {{"drop index tblItem.ix_tblItem_2", StepFailure::tellsNothing},
          {"create index ix_tblItem_2 on tblItem(fItemClassId,fName,fIsDetail)"}}},
        // The next short code read a row for each item of its category.
        {4,
         {{"drop index tblItem.ix_tblItem_4", StepFailure::tellsNothing},
          {"create index ix_tblItem_4 on tblItem(fItemClassId,fParentId) include (fShortNumber)"}}},
        // It still read each sibling's short code; what a store carries in an index it can serve by the index as well.
        {5,
         {{"drop index tblItem.ix_tblItem_4", StepFailure::tellsNothing},
          {"create index ix_tblItem_4 on tblItem(fItemClassId,fParentId) include (fShortNumber)"}}},
        // The keys of a category's list were read a row of the table each.
        {6,
         {{"drop index tblItem.ix_tblItem_7", StepFailure::tellsNothing},
          {"create index ix_tblItem_7 on tblItem(fNBNumber,fItemId)"},
          {"drop index ICItem.ix_ICItem_1", StepFailure::tellsNothing},
          {"create index ix_ICItem_1 on ICItem(fNumber,fItemId)"}}},
    };
    return kSteps;
}

}  // namespace orvenmod::store
