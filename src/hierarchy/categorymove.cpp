#include "hierarchy/categorymove.h"

#include <utility>
#include <vector>

#include "frame/conversion.h"
#include "frame/openrows.h"
#include "platform/replaceall.h"

namespace orvenmod {

namespace {

// Two a row. Few enough that windows are painted several times a second, many enough that a server's round trips don't
// count.
constexpr std::size_t kMostInAFlight = 200;

// The code from the place of the old one on, with the old one replaced. A code that doesn't hold it has no such place.
std::string movedCode(const std::string& code, const std::string& oldCode, const std::string& newCode) {
    const auto at = code.find(oldCode);
    if (code.empty() || at == std::string::npos)
        throw ConversionFailure(ConversionFailure::kInvalidCall, "无效的过程调用或参数");
    if (oldCode.empty()) return code;
    return newCode + code.substr(at + oldCode.size());
}

class Move {
public:
    explicit Move(const CategoryChange& wanted)
        : wanted_(wanted),
          id_(std::to_string(appState().gCurItemId)),
          class_(std::to_string(appState().gItemClassId)) {}

    std::optional<CategoryRefusal> refusal() {
        if (isCodeTaken(wanted_.code, " and fitemid<>" + id_)) return CategoryRefusal::codeTaken;
        readPlaces();
        if (isBelowItself()) return CategoryRefusal::belowItself;
        return std::nullopt;
    }

    void store(const std::function<void()>& rowsMoved) const {
        store::Connection& connection = *appState().gConn;
        connection.beginTrans();
        connection.execute("update tblItem set fDepth=fDepth+" + std::to_string(new_.depth - old_.depth) +
                           " where fNBNumber like '" + old_.path + "%' and fitemclassid=" + class_);
        moveRows(rowsMoved);
        connection.execute(" update tblItem set fname='" + wanted_.name + "'," + "fParentid=" + parentId_ +
                           ",fNBNumber='" + new_.path + "',fDepth=" + std::to_string(new_.depth) + ",fShortNumber='" +
                           wanted_.shortCode + "',fnumber='" + wanted_.code + "'" + " where fitemid=" + id_);
        connection.commitTrans();
    }

private:
    void readPlaces() {
        const store::Recordset rows = openRows("select fNBNumber,fDepth,fNumber  from tblItem where fitemid=" + id_);
        old_ = {required(rows.field("fNBNumber")), toInt32(required(rows.field("fDepth")))};
        oldCode_ = required(rows.field("fNumber"));
        const std::int32_t parentId = toInt32(wanted_.parentId);
        parentId_ = std::to_string(parentId);
        new_ = placeBelow(parentId, id_);
    }

    bool isBelowItself() const {
        if (parentId_ == "0") return false;
        return !openRows("select fNBNumber from tblItem where fitemid=" + parentId_ +
                         " and fDepth>=" + std::to_string(old_.depth) + " and fNBNumber like '" + old_.path + "%'")
                    .eof();
    }

    // The category's own row is among them; the statement that ends the move has the last word on it.
    void moveRows(const std::function<void()>& rowsMoved) const {
        store::Recordset rows = openRows("select fNBNumber,fitemid,fnumber from tblItem where fitemclassid=" + class_ +
                                         "  and fNBNumber like '" + old_.path + "%'");
        std::vector<std::string> flight;
        try {
            for (; !rows.eof(); rows.moveNext()) {
                addRow(rows, flight);
                if (flight.size() < kMostInAFlight) continue;
                appState().gConn->executeAll(std::exchange(flight, {}));
                rowsMoved();
            }
        } catch (const ConversionFailure&) {
            // The rows before the one without a place go out as they would one by one.
            appState().gConn->executeAll(flight);
            throw;
        }
        appState().gConn->executeAll(flight);
    }

    void addRow(const store::Recordset& row, std::vector<std::string>& flight) const {
        const std::string code = movedCode(required(row.field("fnumber")), oldCode_, wanted_.code);
        const std::string path = platform::replaceAll(required(row.field("fNBNumber")), old_.path, new_.path);
        const std::string id = row.text("fitemid");
        flight.push_back("update tblItem set fNBNumber='" + path + "' ,fNumber='" + code + "' where fitemid=" + id);
        flight.push_back("update " + appState().gItemTable + " set " + " fNumber='" + code + "' where fitemid=" + id);
    }

    const CategoryChange& wanted_;
    const std::string id_;
    const std::string class_;
    std::string parentId_;
    std::string oldCode_;
    CategoryPlace old_;
    CategoryPlace new_;
};

}  // namespace

std::optional<CategoryRefusal> storeMove(const CategoryChange& wanted, const std::function<void()>& rowsMoved) {
    Move move(wanted);
    const auto refusal = move.refusal();
    if (!refusal) move.store(rowsMoved);
    return refusal;
}

}  // namespace orvenmod
