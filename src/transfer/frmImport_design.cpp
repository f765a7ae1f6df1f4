// Twips; 15 are a pixel. One of the four frames shows at a time.
//
//   FrameFile     txtFile [cmdBrowse] / cmbSheet / cmbEncoding / cmbSeparator / [cmdTemplate]
//   FrameColumns  fpsColumns / cmbFound cmbCategory cmbFailing cmbName cmbNumber
//   FrameCheck    lblCounts [cmbShow] / vsfCheck / [cmdMend][cmdSaveRefused]
//   FrameResult   lblResult / vsfResult / [cmdTakeBack][cmdSaveFailed]
//                                                        [cmdBack][cmdNext][cmdClose]
#include "transfer/frmImport_design.h"

namespace orvenmod {

using platform::CellType;
using platform::ControlDesign;
using platform::ControlKind;

namespace {

constexpr float kWidth = 16500;
constexpr float kHeight = 9300;
constexpr float kMargin = 180;
constexpr float kFrameWidth = kWidth - 2 * kMargin;
constexpr float kFrameHeight = 8310;
constexpr float kInset = 240;
constexpr float kInnerWidth = kFrameWidth - 2 * kInset;
constexpr float kFirstLine = 480;
constexpr float kLineStep = 510;
constexpr float kLabelDrop = 45;
constexpr float kLabelWidth = 1650;
constexpr float kLabelHeight = 240;
constexpr float kFieldHeight = 315;
constexpr float kFieldLeft = kInset + kLabelWidth;
constexpr float kFieldWidth = 3000;
constexpr float kButtonHeight = 375;
constexpr float kButtonWidth = 2100;
constexpr float kButtonGap = 120;
constexpr float kButtonTop = kFrameHeight - kButtonHeight - kInset;
constexpr float kListTop = 960;
constexpr float kListHeight = kButtonTop - kListTop - kInset / 2;
constexpr float kColumnsHeight = 5850;
constexpr float kOptionsTop = kFirstLine + kColumnsHeight + kInset;
constexpr float kOptionsStep = 5250;

class Designer {
public:
    platform::WindowDesign take() { return std::move(design_); }

    void frame(std::string_view name, std::string_view caption, bool visible) {
        parent_ = name;
        design_.controls.push_back({.kind = ControlKind::frame,
                                    .name = name,
                                    .caption = caption,
                                    .left = kMargin,
                                    .top = kMargin,
                                    .width = kFrameWidth,
                                    .height = kFrameHeight,
                                    .visible = visible});
    }

    ControlDesign& add(ControlKind kind, std::string_view name, std::string_view caption, float left, float top,
                       float width, float height) {
        return design_.controls.emplace_back(ControlDesign{.kind = kind,
                                                           .name = name,
                                                           .caption = caption,
                                                           .left = left,
                                                           .top = top,
                                                           .width = width,
                                                           .height = height,
                                                           .parent = parent_});
    }

    void line(ControlKind kind, std::string_view label, std::string_view caption, std::string_view field, float left,
              float top, float width) {
        add(ControlKind::label, label, caption, left, top + kLabelDrop, kLabelWidth, kLabelHeight);
        add(kind, field, "", left + kLabelWidth, top, width, kFieldHeight).accessibleName = caption;
    }

    void button(std::string_view name, std::string_view caption, float left, float top) {
        add(ControlKind::button, name, caption, left, top, kButtonWidth, kButtonHeight);
    }

    void list(std::string_view name, std::string_view accessibleName) {
        add(ControlKind::listGrid, name, "", kInset, kListTop, kInnerWidth, kListHeight).accessibleName =
            accessibleName;
    }

    void outside() { parent_ = ""; }
    platform::WindowDesign& design() { return design_; }

private:
    platform::WindowDesign design_;
    std::string_view parent_;
};

void addFile(Designer& to) {
    constexpr float kPathWidth = 9000;
    to.frame("FrameFile", "第一步：选文件", true);
    to.line(ControlKind::edit, "LabelFile", "文件：", "txtFile", kInset, kFirstLine, kPathWidth);
    to.button("cmdBrowse", "浏览(&B)…", kFieldLeft + kPathWidth + kButtonGap, kFirstLine - 2 * 15);
    to.line(ControlKind::combo, "LabelSheet", "工作表：", "cmbSheet", kInset, kFirstLine + kLineStep, kFieldWidth);
    to.line(ControlKind::combo, "LabelEncoding", "文字编码：", "cmbEncoding", kInset, kFirstLine + 2 * kLineStep,
            kFieldWidth);
    to.line(ControlKind::combo, "LabelSeparator", "分隔符：", "cmbSeparator", kInset, kFirstLine + 3 * kLineStep,
            kFieldWidth);
    to.add(ControlKind::label, "LabelHint", "可以导入 .xlsx、.ods、.xls 和 .csv 文件，第一行是各栏的名称。", kInset,
           kFirstLine + 5 * kLineStep, kInnerWidth, kLabelHeight);
    to.add(ControlKind::label, "LabelTemplate", "还没有文件时，先存一份导入模板，填好后再导入。", kInset,
           kFirstLine + 6 * kLineStep, kInnerWidth, kLabelHeight);
    to.button("cmdTemplate", "导入模板(&T)…", kInset, kFirstLine + 7 * kLineStep);
}

void addColumns(Designer& to) {
    to.frame("FrameColumns", "第二步：各栏存入的字段", false);
    ControlDesign& grid =
        to.add(ControlKind::entryGrid, "fpsColumns", "", kInset, kFirstLine, kInnerWidth, kColumnsHeight);
    grid.accessibleName = "各栏存入的字段";
    grid.columns = {{.title = "文件里的栏", .width = 3300, .locked = true},
                    {.title = "前几个值", .width = 7000, .locked = true, .stretches = true},
                    {.title = "存入字段", .width = 3300, .type = CellType::combo}};
    const auto option = [&to](std::string_view label, std::string_view caption, std::string_view field, int column,
                              int row) {
        to.line(ControlKind::combo, label, caption, field, kInset + static_cast<float>(column) * kOptionsStep,
                kOptionsTop + static_cast<float>(row) * kLineStep, kFieldWidth);
    };
    option("LabelFound", "代码已有的：", "cmbFound", 0, 0);
    option("LabelCategory", "没有的分类：", "cmbCategory", 1, 0);
    option("LabelFailing", "有行存不进时：", "cmbFailing", 2, 0);
    option("LabelName", "名称重复的：", "cmbName", 0, 1);
    option("LabelNumber", "数字格式的代码：", "cmbNumber", 1, 1);
}

void addCheck(Designer& to) {
    to.frame("FrameCheck", "第三步：核对", false);
    to.add(ControlKind::label, "lblCounts", "", kInset, kFirstLine + kLabelDrop, kInnerWidth - 4800, kLabelHeight);
    to.line(ControlKind::combo, "LabelShow", "显示：", "cmbShow", kInset + kInnerWidth - 4650, kFirstLine, kFieldWidth);
    to.list("vsfCheck", "核对");
    to.button("cmdMend", "修改此行(&M)…", kInset, kButtonTop);
    to.button("cmdSaveRefused", "另存拒绝的行(&S)…", kInset + kButtonWidth + kButtonGap, kButtonTop);
}

void addResult(Designer& to) {
    to.frame("FrameResult", "第四步：结果", false);
    to.add(ControlKind::label, "lblResult", "", kInset, kFirstLine + kLabelDrop, kInnerWidth, kLabelHeight);
    to.list("vsfResult", "结果");
    to.button("cmdTakeBack", "撤回新增的行(&U)…", kInset, kButtonTop);
    to.button("cmdSaveFailed", "另存拒绝的行(&S)…", kInset + kButtonWidth + kButtonGap, kButtonTop);
}

platform::WindowDesign makeDesign() {
    Designer to;
    to.design().name = "frmImport";
    to.design().caption = "导入";
    to.design().width = kWidth;
    to.design().height = kHeight;
    to.design().resizable = false;
    addFile(to);
    addColumns(to);
    addCheck(to);
    addResult(to);
    to.outside();
    constexpr float kTop = kHeight - kButtonHeight - 135;
    constexpr float kLeft = kWidth - kMargin - 3 * kButtonWidth - 2 * kButtonGap;
    to.button("cmdBack", "上一步(&P)", kLeft, kTop);
    to.button("cmdNext", "下一步(&N)", kLeft + kButtonWidth + kButtonGap, kTop);
    to.button("cmdClose", "关闭(&C)", kLeft + 2 * (kButtonWidth + kButtonGap), kTop);
    to.add(ControlKind::fileDialog, "cd1", "", 0, 0, 0, 0);
    return to.take();
}

}  // namespace

const platform::WindowDesign& importDesign() {
    static const platform::WindowDesign design = makeDesign();
    return design;
}

}  // namespace orvenmod
