#include "dictionary/entrylist.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "dictionary/deljczl.h"
#include "dictionary/frmJCZL.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

// A dictionary's entries as the list takes a row: id, code and name joined by tabs. A tab that somebody's code or name
// holds parts it over two columns, and what is behind the third stays empty.
class EntryRows : public platform::RowSource {
public:
    EntryRows(store::Recordset rows, int columns)
        : rows_(std::move(rows)),
          columns_(columns),
          shown_{rows_.column("fitemid"), rows_.column("fnumber"), rows_.column("fname")} {}

    std::size_t rowCount() const override { return rows_.rowCount(); }
    int columnCount() const override { return columns_; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        int before = column;
        for (const int field : shown_) {
            std::string_view text = rows_.cell(row, field).value_or("");
            for (std::size_t tab = text.find('\t'); tab != text.npos; tab = text.find('\t')) {
                if (before-- == 0) return text.substr(0, tab);
                text.remove_prefix(tab + 1);
            }
            if (before-- == 0) return text;
        }
        return std::nullopt;
    }

private:
    store::Recordset rows_;
    int columns_;
    std::array<int, 3> shown_;
};

}  // namespace

void EntryList::read(std::int32_t itemClassId) {
    store::Recordset rows =
        openRows("select fitemid,fname,fnumber from tblSubType where fitemclassid=" + std::to_string(itemClassId) +
                 " order by fnumber ");
    vsf1_.bind(std::make_shared<EntryRows>(std::move(rows), vsf1_.columnCount()));
}

bool EntryList::hasCurrentRow() const { return vsf1_.rowCount() > 1 && vsf1_.currentRow() >= 1; }

void EntryList::takeCurrentId() const { appState().gCurItemId = toInt32(vsf1_.text(vsf1_.currentRow(), kIdColumn)); }

void EntryList::updateRow() {
    if (!hasCurrentRow()) return;
    takeCurrentId();
    appState().gEditMode = 1;
    frmJCZL().show();
}

void EntryList::deleteRow() {
    if (!hasCurrentRow() || !askQuestion("确定要删除吗？")) return;
    takeCurrentId();
    const int row = vsf1_.currentRow();
    if (!delJCZL()) return;
    showInformation("数据删除成功！");
    vsf1_.removeRow(row);
    if (vsf1_.rowCount() < 2) return;
    vsf1_.setSelected(row == vsf1_.rowCount() ? row - 1 : row, true);
}

void EntryList::markRow(int row) {
    if (row < 1 || row >= vsf1_.rowCount()) return;
    vsf1_.setCurrentRow(row);
    vsf1_.setSelected(row, true);
}

}  // namespace orvenmod
