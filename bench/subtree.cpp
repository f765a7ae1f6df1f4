#include "subtree.h"

#include <stdexcept>

#include "frame/appstate.h"
#include "hierarchy/categorysave.h"

namespace orvenmod::bench {
namespace {

constexpr int kBelowOne = 100;  // items of a category

enum class Row { category, item };

void addRow(store::Connection& connection, int id, const std::string& code, int parent, int depth,
            const std::string& path, Row row) {
    const std::string key = std::to_string(id);
    connection.execute(
        "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,"
        "fShortNumber) values(" +
        key + ",'" + code + "','移动" + key + "',3," + std::to_string(parent) + "," + (row == Row::item ? "1" : "0") +
        "," + std::to_string(depth) + ",0,'" + path + key + ".','" + code.substr(code.rfind('.') + 1) + "')");
    if (row == Row::category) return;
    connection.execute("insert into ICItem(fItemId,fNumber,fName) values(" + key + ",'" + code + "','移动" + key +
                       "')");
}

void move(int category, const CategoryChange& change) {
    appState().gCurItemId = category;
    if (!moveCategory(change)) throw std::runtime_error("a move was refused");
}

}  // namespace

void addMoveTarget(store::Connection& connection) { addRow(connection, kMoveTarget, "80", 0, 1, ".", Row::category); }

void addSubtree(store::Connection& connection, const Subtree& subtree) {
    const std::string top = "." + std::to_string(subtree.id) + ".";
    addRow(connection, subtree.id, subtree.shortCode, 0, 1, ".", Row::category);
    int category = 0;
    std::string path;
    std::string code;
    for (int row = 1; row < subtree.rows; ++row) {
        const int id = subtree.id + row;
        const bool detail = row % (kBelowOne + 1) != 1;
        if (!detail) {
            category = id;
            path = top + std::to_string(id) + ".";
            code = subtree.shortCode + "." + std::to_string(row);
            addRow(connection, id, code, subtree.id, 2, top, Row::category);
        } else {
            addRow(connection, id, code + "." + std::to_string(row), category, 3, path, Row::item);
        }
    }
}

void moveThere(const Subtree& subtree) {
    move(subtree.id, {"移动", subtree.shortCode, "80." + subtree.shortCode, std::to_string(kMoveTarget)});
}

void moveBack(const Subtree& subtree) { move(subtree.id, {"移动", subtree.shortCode, subtree.shortCode, "0"}); }

}  // namespace orvenmod::bench
