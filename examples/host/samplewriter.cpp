#include "samplewriter.h"

namespace orvenmod::sample {

Literal Literal::hundredths(std::int64_t value) {
    Literal literal(0);
    literal.text_ = std::to_string(value / 100) + "." + padded(static_cast<int>(value % 100), 2);
    return literal;
}

std::string padded(int number, int width) {
    std::string text = std::to_string(number);
    if (text.size() < static_cast<std::size_t>(width)) {
        text.insert(0, static_cast<std::size_t>(width) - text.size(), '0');
    }
    return text;
}

void SampleWriter::insert(std::string_view table, std::string_view columns, std::initializer_list<Literal> values) {
    std::string sql = "insert into " + std::string(table) + "(" + std::string(columns) + ") values(";
    for (const Literal& value : values) {
        sql += value.text();
        sql += ',';
    }
    sql.back() = ')';
    execute(sql);
}

Node SampleWriter::addRow(int itemClass, const Node& parent, const std::string& shortNumber, const std::string& name,
                          Row row) {
    Node node;
    node.id = ++lastItem_;
    node.number = parent.id == 0 ? shortNumber : parent.number + "." + shortNumber;
    node.path = (parent.id == 0 ? "." : parent.path) + std::to_string(node.id) + ".";
    node.depth = parent.depth + 1;
    insert("tblItem", "fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,fShortNumber",
           {node.id, node.number, name, itemClass, parent.id, row == Row::item ? 1 : 0, node.depth, 0, node.path,
            shortNumber});
    return node;
}

Node SampleWriter::addCategory(int itemClass, const Node& parent, const std::string& shortNumber,
                               const std::string& name) {
    return addRow(itemClass, parent, shortNumber, name, Row::category);
}

Node SampleWriter::addItem(int itemClass, const Node& parent, const std::string& shortNumber, const std::string& name) {
    return addRow(itemClass, parent, shortNumber, name, Row::item);
}

int SampleWriter::addDictionaryEntry(int dictionary, const std::string& number, const std::string& name) {
    insert("tblSubType", "fItemId,fNumber,fName,fItemClassId", {++lastEntry_, number, name, dictionary});
    return lastEntry_;
}

void SampleWriter::saveCounters() {
    insert("tblMaxNum", "fTableName,fMaxNum", {"tblItem", lastItem_});
    insert("tblMaxNum", "fTableName,fMaxNum", {"tblSubType", lastEntry_});
}

}  // namespace orvenmod::sample
