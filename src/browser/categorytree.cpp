#include "browser/categorytree.h"

namespace orvenmod {

namespace {
constexpr const char* kImage = "Folder";
}

std::string categoryStatement(std::int16_t itemClassId) {
    return "select fitemid,fname,fparentid,fdepth,fNBNumber,fnumber from tblItem where fisdetail=0 and fitemclassid=" +
           std::to_string(itemClassId) + " order by fdepth,fnumber,fname";
}

void fillTree(platform::Tree& tree, const std::string& rootText, store::Recordset& rows) {
    tree.clear();
    tree.add("", "D0", rootText, kImage);
    for (; !rows.eof(); rows.moveNext()) {
        const std::string key = "D" + rows.text("fitemid");
        tree.add("D" + rows.text("fparentid"), key, rows.text("fname") + "(" + rows.text("fnumber") + ")", kImage);
        tree.ensureVisible(key);
    }
    // Showing each node has left the last one in view; the user starts at the top.
    tree.ensureVisible("D0");
}

}  // namespace orvenmod
