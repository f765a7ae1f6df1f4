// The statements of the dialect that make what an outline tells of.
//
//   create table [t]([id] int identity(1001,1) not null,[c] varchar(10) null default 'x',primary key([id]))
//   create unique index [i] on [t]([c] desc) include([d])
#pragma once

#include <string>
#include <string_view>

#include "store/outline.h"

namespace orvenmod::store {

/// The table with its keys and checks. The identity column begins with the number that it would give next.
std::string createTableText(const TableOutline& table);
std::string createIndexText(const TableOutline& table, const IndexOutline& index);

/// Every row and column of the table.
std::string selectText(const TableOutline& table);

}  // namespace orvenmod::store
