#include "store/classrights.h"

namespace orvenmod::store {
namespace {

struct Right {
    std::string_view suffix;
    std::string_view name;
};

// 08 isn't issued.
constexpr Right kRights[] = {{right::kNewCategory, "分类新增"},    {right::kUpdateCategory, "分类修改"},
                             {right::kDeleteCategory, "分类删除"}, {right::kNewDetail, "明细新增"},
                             {right::kUpdateDetail, "明细修改"},   {right::kDeleteDetail, "明细删除"},
                             {right::kNewAttachment, "附件新增"},  {right::kDeleteAttachment, "附件删除"},
                             {right::kOpenAttachment, "附件查看"}, {right::kViewDetail, "明细查看"}};

std::string row(const std::string& number, std::string_view name, std::string_view isDetail, std::string_view group) {
    std::string text = "insert into  tblsystemprivillenge(fnumber,fname,fisdetail,fParentNumber) values('";
    text.append(number).append("','").append(name).append("',").append(isDetail);
    return text.append(",'").append(group).append("')");
}

}  // namespace

std::vector<std::string> classRightRows(std::int32_t itemClass, std::string_view name) {
    const std::string group = kClassRights + std::to_string(itemClass);
    std::vector<std::string> rows{row(group, name, "0", "")};
    for (const Right& right : kRights)
        rows.push_back(row(group + std::string(right.suffix), right.name, "1", group));
    return rows;
}

}  // namespace orvenmod::store
