#include "designer/proposedname.h"

#include "designer/frmItem.h"
#include "frame/conversion.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

std::string nextName(const std::string& head, const store::Recordset& counter) {
    if (counter.eof()) return head + "A1";
    const std::int16_t last = toInt16(required(counter.field("fbillno")));
    return head + counter.text("fpreletter") + std::to_string(toInt16(last + 1.0));
}

}  // namespace

std::string proposedTableName() {
    const store::Recordset counter = openRows("select fpreletter,fbillno from tblMaxbillno where ftypeid=100");
    if (counter.eof()) {
        appState().gConn->execute("insert into tblMaxbillno(ftypeid,fpreletter,fbillno) values(100,'A',0)");
    }
    return nextName("tblSelf", counter);
}

std::string proposedFieldName() {
    return nextName("FSelf" + frmItem::instance().txtFItemClassId,
                    openRows("select fpreletter,fbillno from tblmaxbillno where ftypeid=1001 "));
}

void countFieldName(store::Flight& flight) {
    const bool counted = !flight.open("select * from tblMaxbillno where ftypeid=1001").eof();
    flight.execute(counted ? "update tblMaxbillno set fbillno=fbillno+1 where ftypeid=1001 "
                           : "insert into tblmaxbillno(fpreletter,ftypeid,fbillno) values('A',1001,1) ");
}

}  // namespace orvenmod
