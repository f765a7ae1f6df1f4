#include "platform/qt/chinesetexts.h"

#include <QHash>

namespace orvenmod::platform::qt {

namespace {

const QHash<QByteArray, QString>& texts() {
    static const QHash<QByteArray, QString> known = {
        {"OK", QStringLiteral("确定")},
        {"&OK", QStringLiteral("确定(&O)")},
        {"Cancel", QStringLiteral("取消")},
        {"&Cancel", QStringLiteral("取消(&C)")},
        {"&Yes", QStringLiteral("是(&Y)")},
        {"&No", QStringLiteral("否(&N)")},
        {"Close", QStringLiteral("关闭")},
        {"&Open", QStringLiteral("打开(&O)")},
        {"Open", QStringLiteral("打开")},
        {"&Save", QStringLiteral("保存(&S)")},
        {"Save", QStringLiteral("保存")},
        {"Save As", QStringLiteral("另存为")},
        {"Look in:", QStringLiteral("查找范围：")},
        {"File &name:", QStringLiteral("文件名(&N)：")},
        {"Files of type:", QStringLiteral("文件类型：")},
        {"Directory:", QStringLiteral("文件夹：")},
        {"&Choose", QStringLiteral("选择(&C)")},
        {"Back", QStringLiteral("后退")},
        {"Forward", QStringLiteral("前进")},
        {"Parent Directory", QStringLiteral("上级文件夹")},
        {"Create New Folder", QStringLiteral("新建文件夹")},
        {"&New Folder", QStringLiteral("新建文件夹(&N)")},
        {"List View", QStringLiteral("列表")},
        {"Detail View", QStringLiteral("详细信息")},
        {"Go back", QStringLiteral("后退")},
        {"Go forward", QStringLiteral("前进")},
        {"Go to the parent directory", QStringLiteral("转到上级文件夹")},
        {"Create a New Folder", QStringLiteral("新建文件夹")},
        {"Change to list view mode", QStringLiteral("以列表显示")},
        {"Change to detail view mode", QStringLiteral("显示详细信息")},
        {"Sidebar", QStringLiteral("侧栏")},
        {"List of places and bookmarks", QStringLiteral("位置和书签")},
        {"Files", QStringLiteral("文件")},
        {"Computer", QStringLiteral("计算机")},
        {"My Computer", QStringLiteral("计算机")},
        {"Name", QStringLiteral("名称")},
        {"Size", QStringLiteral("大小")},
        {"Type", QStringLiteral("类型")},
        {"Kind", QStringLiteral("类型")},
        {"Date Modified", QStringLiteral("修改日期")},
        {"Show &hidden files", QStringLiteral("显示隐藏文件(&H)")},
        {"&Rename", QStringLiteral("重命名(&R)")},
        {"&Delete", QStringLiteral("删除(&D)")},
        {"All Files (*)", QStringLiteral("所有文件 (*)")},
        {"%1 already exists.\nDo you want to replace it?", QStringLiteral("%1 已存在。\n要替换它吗？")},
        {"%1\nFile not found.\nPlease verify the correct file name was given.",
         QStringLiteral("%1\n找不到文件。\n请检查文件名是否正确。")},
        {"&Undo", QStringLiteral("撤消(&U)")},
        {"&Redo", QStringLiteral("重做(&R)")},
        {"Cu&t", QStringLiteral("剪切(&T)")},
        {"&Copy", QStringLiteral("复制(&C)")},
        {"&Paste", QStringLiteral("粘贴(&P)")},
        {"Delete", QStringLiteral("删除")},
        {"Select All", QStringLiteral("全选")},
    };
    return known;
}

}  // namespace

QString ChineseTexts::translate(const char*, const char* source, const char*, int) const {
    return texts().value(QByteArray::fromRawData(source, static_cast<qsizetype>(qstrlen(source))));
}

}  // namespace orvenmod::platform::qt
