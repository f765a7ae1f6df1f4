#include "sampledata.h"

#include "samplewriter.h"

namespace orvenmod::sample {

void fillSampleData(store::Connection& connection, int goods) {
    connection.beginTrans();
    try {
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
        connection.commitTrans();
    } catch (...) {
        if (connection.inTransaction()) connection.rollbackTrans();
        throw;
    }
}

}  // namespace orvenmod::sample
