// What the database holds beside the model: a query a table, since a server's answer is waited for after every step.
#include <algorithm>
#include <iterator>

#include "torture/model.h"

namespace orvenmod::test {

namespace {

Rows sorted(Rows rows) {
    std::sort(rows.begin(), rows.end());
    return rows;
}

std::string textOf(const Rows& rows) {
    std::string text;
    for (const auto& row : rows) {
        for (const std::string& cell : row)
            text += cell + "|";
        text += "\n";
    }
    return text;
}

std::string compared(const std::string& what, const Rows& found, const Rows& expected) {
    const Rows one = sorted(found);
    const Rows other = sorted(expected);
    if (one == other) return {};
    Rows more;
    Rows less;
    std::set_difference(one.begin(), one.end(), other.begin(), other.end(), std::back_inserter(more));
    std::set_difference(other.begin(), other.end(), one.begin(), one.end(), std::back_inserter(less));
    return what + " holds\n" + textOf(more) + "instead of\n" + textOf(less);
}

std::string joined(const std::vector<std::string>& parts, const std::string& between) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : between) + part;
    return text;
}

}  // namespace

Rows Model::itemRows() const {
    Rows rows;
    for (const auto& [itemClass, its] : classes_) {
        for (auto row : its.tree.items()) {
            const Node& node = its.tree.nodes.at(std::stoi(row[0]));
            row.push_back(std::to_string(itemClass));
            row.push_back(node.detail ? "1" : "0");
            row.push_back(node.locked ? "1" : "0");
            rows.push_back(row);
        }
    }
    return rows;
}

std::vector<std::string> Model::descriptionsOf(const Class& its) {
    std::vector<std::string> all = {"代码", "名称"};
    // A save of the field setup describes it no more.
    if (!its.wasSetUp) all.insert(all.begin(), "短代码");
    for (const Field& field : its.fields) {
        if (!field.shown) continue;
        for (const char* part : field.lookup ? std::vector{"代码", "名称"} : std::vector{""})
            all.push_back(field.caption + part);
    }
    return all;
}

std::string Model::entryDifference() {
    Rows entries;
    for (const auto& [id, entry] : entries_)
        entries.push_back({std::to_string(id), entry.code, entry.name});
    return compared("tblSubType", database_.rows("select fitemid,fnumber,fname from tblSubType"), entries);
}

std::string Model::fieldDifference() {
    Rows classes;
    Rows fields = goodsFields_;
    for (const auto& [itemClass, its] : classes_) {
        const std::string key = std::to_string(itemClass);
        classes.push_back({key, its.name, its.table, its.view});
        if (itemClass == kGoods) continue;
        std::vector<Field> all = {{"短代码"}, {"代码"}, {"名称"}};
        all.insert(all.end(), its.fields.begin(), its.fields.end());
        for (std::size_t at = 0; at < all.size(); ++at)
            fields.push_back({key, std::to_string(at + 1), all[at].caption, all[at].shown ? "1" : "0"});
    }
    return compared("tblItemClass",
                    database_.rows("select fItemClassId,fItemName,fItemTable,fViewName from tblItemClass "
                                   "where fItemClassId=3 or fItemClassId between 51 and 99"),
                    classes) +
           compared("tblTableInfo", fieldRows(), fields);
}

Rows Model::fieldRows() {
    return database_.rows(
        "select fItemClassId,fInterId,fName,fIsVisible from tblTableInfo "
        "where fItemClassId=3 or fItemClassId between 51 and 99");
}

// A view that lacks a described column fails here.
std::string Model::detailDifference() {
    std::map<std::string, std::vector<std::string>> columns;
    Rows described;
    for (const auto& row : database_.rows("select fTypeId,fFieldName,fFieldDesc from tblViewDesc where fTypeId>6050")) {
        columns[row[0]].push_back(row[1] + " is null");
        described.push_back({row[0], row[2]});
    }
    Rows descriptions;
    Rows details;
    std::vector<std::string> tables;
    std::vector<std::string> views;
    for (const auto& [itemClass, its] : classes_) {
        const std::string key = std::to_string(itemClass);
        const std::string type = std::to_string(6000 + itemClass);
        if (itemClass != kGoods) {
            for (const std::string& description : descriptionsOf(its))
                descriptions.push_back({type, description});
        }
        for (const auto& [id, node] : its.tree.nodes)
            if (node.detail) details.push_back({key, std::to_string(id), node.code, node.name});
        const std::string items = "select " + key + ",fitemid,fnumber,fname from ";
        tables.push_back(items + its.table);
        const auto holes = columns.find(type);
        views.push_back(items + its.view +
                        (holes == columns.end() ? "" : " where not (" + joined(holes->second, " or ") + ")"));
    }
    return compared("tblViewDesc", described, descriptions) +
           compared("the tables", database_.rows(joined(tables, " union all ")), details) +
           compared("the views", database_.rows(joined(views, " union all ")), details);
}

std::string Model::differenceNow() {
    std::string all = compared("tblItem",
                               database_.rows("select fitemid,fnumber,fnbnumber,fdepth,fparentid,fshortnumber,fname,"
                                              "fitemclassid,fisdetail,fislock from tblItem"),
                               itemRows());
    all += entryDifference() + fieldDifference() + detailDifference();
    if (lastId_ > 0) {
        all += compared("the counter", database_.rows("select fMaxNum from tblMaxNum where fTableName='tblItem'"),
                        {{std::to_string(lastId_)}});
    }
    return all;
}

}  // namespace orvenmod::test
