// What is typed into the editor's cells, for each toolkit: a binary instantiates the suite with its own script.
#pragma once

#include "editor/roads.h"

namespace orvenmod::test {

class EditorCellRoads : public EditorRoads {
protected:
    void setField(const std::string& field, const std::string& values) {
        database().execute("update tblTableInfo set " + values + " where fItemClassId=3 and fFieldName='" + field +
                           "'");
    }
    std::string stored(const std::string& column, int item) {
        return database().value("select " + column + " from ICItem where fItemId=" + std::to_string(item));
    }
};

}  // namespace orvenmod::test
