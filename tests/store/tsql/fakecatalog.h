// A catalog from "name(column type, ...)" lines, and shorthands over the translator.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "store/tsql/catalog.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::tsql {

class FakeCatalog : public Catalog {
public:
    /// t(id int, n int, c varchar(10), f float, d datetime, m decimal(18,4)), u(id int, c varchar(10)) and the view
    /// v(id int, c varchar(10)).
    FakeCatalog();

    void add(ObjectInfo object);
    const ObjectInfo* find(std::string_view name) const override;

private:
    std::map<std::string, ObjectInfo> objects_;
};

/// The table of that text: "t(id int, c varchar(10))".
ObjectInfo tableOf(const std::string& text);

/// The only statement of a translation.
std::string emitted(const std::string& sql);
Translation translated(const std::string& sql);
/// The failure's number, 0 for none.
int failureOf(const std::string& sql);
/// The failure's arguments joined by '|'.
std::string failureTextOf(const std::string& sql);

}  // namespace orvenmod::store::tsql
