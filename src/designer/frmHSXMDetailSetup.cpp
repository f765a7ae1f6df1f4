#include "designer/frmHSXMDetailSetup.h"

#include "designer/classview.h"
#include "designer/frmHSXMDetailSetup_design.h"
#include "designer/frmItem.h"
#include "designer/saving.h"
#include "designer/stockview.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/lockedcolour.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

enum Column { caption = 1, shown, width, interId };

// The rows above are the base fields; what is changed in them is dropped.
int firstSavedRow() { return appState().gItemClassId == store::kGoods ? 5 : 3; }

// A check box knows two values. Nothing counts as 0, and what is neither 0 nor 1 shows the field as 1 does.
std::string checkMark(const std::string& visible) { return visible.empty() || visible == "0" ? visible : "1"; }

std::string orZero(const std::string& text) { return text.empty() ? "0" : text; }

}  // namespace

frmHSXMDetailSetup& frmHSXMDetailSetup::instance() {
    static auto& window = *new frmHSXMDetailSetup;  // the process may end while it is shown
    return window;
}

void frmHSXMDetailSetup::show() { showModal(hsxmDetailSetupDesign()); }

void frmHSXMDetailSetup::connectEvents() {
    window().unload = [this] { Form_Unload(); };
    window().get<platform::Menu>("MenuUnLock").click = [this] { MenuUnLock_Click(); };
    window().get<platform::Menu>("MenuFileExit").click = [this] { window().close(); };
    window().get<platform::Toolbar>("Toolbar1").buttonClick = [this](const std::string& key) {
        Toolbar1_ButtonClick(key);
    };
}

void frmHSXMDetailSetup::Form_Load() {
    fps1().setLockedColour(kLockedColour);
    fps1().setItems(Column::shown, 0, {"显示"});
    fps1().setNumberRule(Column::width, 0, {0, 1, 9999});
    loadFieldList();
}

void frmHSXMDetailSetup::Form_Unload() { frmItem::instance().unload(); }

bool frmHSXMDetailSetup::loadFieldList() {
    openDB();
    return trapped([&] {
        platform::EntryGrid& grid = fps1();
        grid.setRowCount(0);
        auto rows = openRows("select finterid,fname,fisvisible from tbltableinfo  where fitemclassid=" +
                             frmItem::instance().txtFItemClassId + " order by finterid ");
        for (int row = 1; !rows.eof(); rows.moveNext(), ++row) {
            grid.setRowCount(row);
            grid.setText(Column::caption, row, rows.text("fName"));
            grid.setText(Column::shown, row, checkMark(rows.text("fisvisible")));
            grid.setText(Column::interId, row, rows.text("finterid"));
        }
        return true;
    });
}

bool frmHSXMDetailSetup::saveFieldSetup() {
    const std::string itemClass = frmItem::instance().txtFItemClassId;
    openDB();
    appState().gItemClassId = toInt16(itemClass);
    return saved([&] {
        store::Connection& connection = *appState().gConn;
        connection.beginTrans();
        store::Flight flight(connection);
        flight.run([&] {
            updateFields(flight, itemClass);
            const ClassObjects objects = readClassObjects(flight, itemClass);
            regenerateClassView(flight, objects, ClassViewMode::setup);
            rebuildStockView(flight);
        });
        connection.commitTrans();
    });
}

void frmHSXMDetailSetup::updateFields(store::Flight& flight, const std::string& itemClass) {
    const platform::EntryGrid& grid = fps1();
    for (int row = firstSavedRow(); row <= grid.rowCount(); ++row) {
        flight.execute("update tbltableinfo set fisvisible=" + orZero(grid.text(Column::shown, row)) + ",fname='" +
                       trim(grid.text(Column::caption, row)) + "' where finterid=" +
                       orZero(grid.text(Column::interId, row)) + " and fitemclassid=" + itemClass + " ");
    }
}

void frmHSXMDetailSetup::MenuUnLock_Click() {
    if (fps1().activeRow() > 0) fps1().setLocked(Column::caption, fps1().activeRow(), false);
}

void frmHSXMDetailSetup::Toolbar1_ButtonClick(const std::string& key) {
    if (key == "Exit") window().close();
    if (key == "Save" && saveFieldSetup()) showInformation("数据保存成功!");
}

}  // namespace orvenmod
