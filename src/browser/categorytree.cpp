#include "browser/categorytree.h"

#include "frame/treenodes.h"

namespace orvenmod {

std::string categoryStatement(std::int16_t itemClassId) {
    return "select fitemid,fname,fparentid,fdepth,fNBNumber,fnumber from tblItem where fisdetail=0 and fitemclassid=" +
           std::to_string(itemClassId) + " order by fdepth,fnumber,fname";
}

void fillTree(platform::Tree& tree, const std::string& rootText, store::Recordset& rows) {
    tree.clear();
    tree.add("", kRootKey, rootText, kNodeIcon);
    for (; !rows.eof(); rows.moveNext()) {
        const std::string key = nodeKey(rows.text("fitemid"));
        tree.add(nodeKey(rows.text("fparentid")), key, rows.text("fname") + "(" + rows.text("fnumber") + ")",
                 kNodeIcon);
        tree.ensureVisible(key);
    }
    // Showing each node has left the last one in view; the user starts at the top.
    tree.ensureVisible(kRootKey);
}

}  // namespace orvenmod
