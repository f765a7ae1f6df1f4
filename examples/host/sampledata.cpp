#include "sampledata.h"

#include "samplewriter.h"
#include "store/transaction.h"

namespace orvenmod::sample {

void fillSampleData(store::Connection& connection, int goods) {
    store::transact(connection, [&] {
        SampleWriter writer(connection);
        SampleIds ids;
        addDictionaries(writer, ids);
        addPartners(writer, ids);
        addWarehouses(writer, ids);
        addGoods(writer, ids, goods);
        addBills(writer, ids);
        addSettingsAndStockView(writer);
        addUsers(writer);
        writer.saveCounters();
    });
}

}  // namespace orvenmod::sample
