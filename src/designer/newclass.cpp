#include "designer/newclass.h"

#include <string_view>

#include "designer/filled.h"
#include "store/classrights.h"
#include "store/classviewtext.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

constexpr std::string_view kDuplicates =
    "select * from tblItemClass where fitemclassid={id} or fitemname='{name}' or fitemtable='{table}'";

constexpr std::string_view kClassStatements[] = {
    "insert into tblItemClass(fitemclassid,fItemName,fItemtable,fItemType,fViewName) "
    "values('{id}','{name}','{table}','0','v{table}')",
    "create table {table}(fitemid int,fnumber varchar(100),fname varchar(100) ) ",
    "insert into tblTableInfo(finterid,fitemclassid,fname,fFieldName,fFieldType,fisNull,fisvisible,fislock) "
    "values(1,{id},'短代码','fShortNumber',1,1,1,0)",
    "insert into tblTableInfo(finterid,fitemclassid,fname,fFieldName,fFieldType,fisNull,fisvisible,fislock) "
    "values(2,{id},'代码','fNumber',1,1,1,1)",
    "insert into tblTableInfo(finterid,fitemclassid,fname,fFieldName,fFieldType,fisNull,fisvisible,fislock) "
    "values(3,{id},'名称','fName',1,1,1,0)",
    "update tblMaxbillno set fbillno=fbillno+1 where ftypeid=100"};

constexpr std::string_view kClassRows[] = {
    "insert into tblFindinfoentry(ftypeid,fentryid,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,fIsMerge,"
    "fIsDefault,fWidth) values({t},1,'fNumber','代码',1,'',1,0,0,1,2000)",
    "insert into tblFindinfoentry(ftypeid,fentryid,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,fIsMerge,"
    "fIsDefault,fWidth) values({t},2,'fName','名称',1,'',1,0,0,1,4000)",
    "insert into tblFindinfoEntry2(ftypeid,fFieldname,ftitleName,fNumType,fItemclassid,fIsDefault,fEntryid,"
    "fNumberName) values({t},'fNumber','代码',2,0,1,1,0)",
    "insert into tblFindinfoEntry2(ftypeid,fFieldname,ftitleName,fNumType,fItemclassid,fIsDefault,fEntryid,"
    "fNumberName) values({t},'fShortNumber','短代码',2,0,1,1,0)",
    "insert into tblFindinfoEntry2(ftypeid,fFieldname,ftitleName,fNumType,fItemclassid,fIsDefault,fEntryid,"
    "fNumberName) values({t},'fName','名称',2,0,1,2,0)",
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'fShortNumber','短代码',0)",
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'fNumber','代码',0)",
    "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values({t},'fName','名称',0)"};

}  // namespace

std::string duplicateQuery(const NewClass& made) {
    return filled(kDuplicates, {{"id", made.id}, {"name", made.name}, {"table", made.table}});
}

std::vector<std::string> classStatements(const NewClass& made) {
    std::vector<std::string> statements;
    for (const std::string_view sql : kClassStatements)
        statements.push_back(filled(sql, {{"id", made.id}, {"name", made.name}, {"table", made.table}}));
    statements.push_back(store::classViewSkeleton("v" + made.table, made.table));
    return statements;
}

std::vector<std::string> classRows(const NewClass& made, std::int32_t id) {
    const std::string type = store::listType(id);
    std::vector<std::string> rows;
    for (const std::string_view sql : kClassRows)
        rows.push_back(filled(sql, {{"t", type}}));
    for (const std::string& row : store::classRightRows(id, made.name))
        rows.push_back(row);
    return rows;
}

}  // namespace orvenmod
