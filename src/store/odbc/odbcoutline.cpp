// The outline of a server's database. Only what stands in the schema dbo is the suite's.
//
//   sys.columns       int, varchar 30, decimal 18,4     "int", "varchar(30)", "decimal(18,4)"
//   nvarchar 60       bytes, of which a character has two                     "nvarchar(30)"
//   varchar -1                                                                "varchar(max)"
#include "store/odbc/odbcoutline.h"

#include <algorithm>
#include <map>

#include "store/tsql/type.h"

namespace orvenmod::store::odbc {

namespace {

std::string quoted(std::string_view text) {
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("''") : std::string(1, c);
    return result + "'";
}

/// The text of a type out of its name and the sizes that a server notes for every column.
std::string declaredType(const Recordset& row) {
    const std::string name = row.text("type_name");
    const int bytes = std::stoi(row.text("max_length", "0"));
    const auto bare = tsql::parseType(name);
    if (!bare) return name;
    if (bare->kind == tsql::Kind::decimal) return name + "(" + row.text("precision") + "," + row.text("scale") + ")";
    const bool unsized = bare->kind == tsql::Kind::text || bare->kind == tsql::Kind::ntext ||
                         bare->kind == tsql::Kind::image || (!bare->isText() && !bare->isBinary());
    if (unsized) return name;
    if (bytes < 0) return name + "(max)";
    return name + "(" + std::to_string(bare->isNationalText() ? bytes / 2 : bytes) + ")";
}

class Reader {
public:
    explicit Reader(Connection& connection) : connection_(connection) {}

    Outline read() {
        readTables();
        readColumns();
        readIndexes();
        readChecks();
        readViews();
        readOthers();
        return std::move(outline_);
    }

private:
    template <typename Work>
    void forEach(const std::string& sql, Work work) {
        for (Recordset rows = connection_.open(sql); !rows.eof(); rows.moveNext())
            work(rows);
    }

    TableOutline& table(const Recordset& row) { return outline_.tables[places_.at(row.text("object_id"))]; }

    void readTables() {
        forEach(
            "select t.object_id,t.name from sys.tables t where t.schema_id=schema_id('dbo') and t.is_ms_shipped=0 "
            "order by t.object_id",
            [this](const Recordset& row) {
                places_.emplace(row.text("object_id"), outline_.tables.size());
                outline_.tables.emplace_back().name = row.text("name");
            });
    }

    void readColumns() {
        forEach(
            "select c.object_id,c.name,y.name as "
            "type_name,c.max_length,c.precision,c.scale,c.is_nullable,c.is_identity,"
            "d.definition,case when c.is_identity=1 then ident_current('dbo.'+t.name) end as last_number,"
            "case when c.is_identity=1 then (select count(*) from sys.identity_columns i where i.object_id=c.object_id "
            "and i.last_value is not null) end as counted from sys.columns c join sys.tables t on "
            "t.object_id=c.object_id join sys.types y on y.user_type_id=c.system_type_id left join "
            "sys.default_constraints d on d.object_id=c.default_object_id "
            "where t.schema_id=schema_id('dbo') and t.is_ms_shipped=0 order by c.object_id,c.column_id",
            [this](const Recordset& row) {
                TableOutline& owner = table(row);
                ColumnOutline column;
                column.name = row.text("name");
                column.type = declaredType(row);
                column.nullable = row.text("is_nullable") == "1";
                column.identity = row.text("is_identity") == "1";
                if (!row.isNull("definition")) column.defaultValue = row.text("definition");
                if (column.identity) {
                    const std::int64_t last = std::stoll(row.text("last_number", "0"));
                    owner.nextIdentity = row.text("counted") == "0" ? std::max<std::int64_t>(last, 1) : last + 1;
                }
                owner.columns.push_back(std::move(column));
            });
    }

    void readIndexes() {
        std::string last;
        IndexOutline index;
        KeyOutline key;
        TableOutline* owner = nullptr;
        const auto finish = [&] {
            if (owner == nullptr) return;
            if (!key.columns.empty()) {
                owner->keys.push_back(std::move(key));
            } else {
                owner->indexes.push_back(std::move(index));
            }
        };
        forEach(
            "select i.object_id,i.index_id,i.name,i.is_unique,i.is_primary_key,i.is_unique_constraint,i.has_filter,"
            "c.name as column_name,x.is_descending_key,x.is_included_column from sys.indexes i join sys.index_columns "
            "x "
            "on x.object_id=i.object_id and x.index_id=i.index_id join sys.columns c on c.object_id=x.object_id and "
            "c.column_id=x.column_id join sys.tables t on t.object_id=i.object_id where t.schema_id=schema_id('dbo') "
            "and "
            "t.is_ms_shipped=0 order by i.object_id,i.index_id,x.is_included_column,x.key_ordinal,x.index_column_id",
            [&](const Recordset& row) {
                const std::string id = row.text("object_id") + "." + row.text("index_id");
                if (id != last) {
                    finish();
                    last = id;
                    owner = &table(row);
                    index = {row.text("name"), row.text("is_unique") == "1", {}, {}};
                    key = {row.text("name"), row.text("is_primary_key") == "1", {}};
                }
                const KeyPart part{row.text("column_name"), row.text("is_descending_key") == "1"};
                const bool constraint = key.primary || row.text("is_unique_constraint") == "1";
                if (row.text("is_included_column") == "1") {
                    index.included.push_back(part.column);
                } else {
                    (constraint ? key.columns : index.columns).push_back(part);
                }
            });
        finish();
    }

    void readChecks() {
        forEach(
            "select k.parent_object_id as object_id,k.name,k.definition from sys.check_constraints k join sys.tables t "
            "on "
            "t.object_id=k.parent_object_id where t.schema_id=schema_id('dbo') and t.is_ms_shipped=0",
            [this](const Recordset& row) {
                table(row).checks.push_back({row.text("name"), row.text("definition")});
            });
    }

    void readViews() {
        forEach(
            "select v.name,m.definition from sys.views v join sys.sql_modules m on m.object_id=v.object_id where "
            "v.schema_id=schema_id('dbo') and v.is_ms_shipped=0 order by v.object_id",
            [this](const Recordset& row) {
                outline_.views.push_back({row.text("name"), row.text("definition")});
            });
    }

    void readOthers() {
        forEach(
            "select o.name,o.type_desc from sys.objects o where o.schema_id=schema_id('dbo') and o.is_ms_shipped=0 and "
            "o.type in ('TR','P','FN','IF','TF','SN','F') order by o.object_id",
            [this](const Recordset& row) {
                outline_.others.push_back(row.text("type_desc") + " " + row.text("name"));
            });
    }

    Connection& connection_;
    Outline outline_;
    std::map<std::string, std::size_t> places_;  // among the tables, by the object's number
};

}  // namespace

Outline outlineOf(Connection& connection) { return Reader(connection).read(); }

bool hasIdentity(Connection& connection, std::string_view table, const std::vector<std::string>& fields) {
    std::string names;
    for (const std::string& field : fields)
        names += (names.empty() ? "" : ",") + quoted(field);
    const Recordset count = connection.open("select count(*) from sys.columns where object_id=object_id(" +
                                            quoted(table) + ") and is_identity=1 and name in (" + names + ")");
    return count.cell(0, 0).value_or("0") != "0";
}

}  // namespace orvenmod::store::odbc
