#include "sampledata.h"

#include "samplewriter.h"

namespace orvenmod::sample {

void writeSample(const std::function<void(const std::string& sql)>& execute, int goods) {
    SampleWriter writer(execute);
    SampleIds ids;
    addDictionaries(writer, ids);
    addPartners(writer, ids);
    addWarehouses(writer, ids);
    addGoods(writer, ids, goods);
    addBills(writer, ids);
    addSettingsAndStockView(writer);
    addUsers(writer);
    writer.saveCounters();
}

}  // namespace orvenmod::sample
