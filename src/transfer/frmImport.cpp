#include "transfer/frmImport.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "frame/appstate.h"
#include "frame/classright.h"
#include "frame/mdlMain.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "platform/asciitext.h"
#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/listgrid.h"
#include "platform/window.h"
#include "store/classrights.h"
#include "transfer/frmImportRow.h"
#include "transfer/frmImport_design.h"
#include "transfer/importsession.h"
#include "transfer/previewrows.h"
#include "transfer/sheetsout.h"

namespace orvenmod {

using platform::Button;
using platform::Combo;
using platform::Label;

namespace {

constexpr const char* kSection = "Import";
constexpr const char* kFiles =
    "电子表格(*.xlsx;*.ods;*.xls;*.csv)|*.xlsx;*.ods;*.xls;*.csv;*.txt;*.tsv|所有文件(*.*)|*.*";
constexpr const char* kWorkbooks = "Excel工作簿(*.xlsx)|*.xlsx";
constexpr const char* kLeaveOut = "不导入";
constexpr int kFieldColumn = 3;

std::string mappingKey() { return "Class" + std::to_string(appState().gItemClassId); }

std::string numberText(std::size_t number) { return std::to_string(number); }

std::unique_ptr<platform::Progress> newProgress(const std::string& text, std::size_t whole) {
    return services().toolkit.createProgress(text, appState().gMsgTitle, std::max(1, static_cast<int>(whole)));
}

void fillCombo(Combo& combo, const std::vector<std::string>& texts) {
    combo.clear();
    for (const std::string& text : texts)
        combo.addRow({text});
    if (!texts.empty()) combo.select(0);
}

std::string withSuffix(const std::string& path) {
    return platform::lowerCase(path).ends_with(".xlsx") ? path : path + ".xlsx";
}

}  // namespace

struct frmImport::Shown {
    Shown(std::unique_ptr<platform::Window> made, ListWindow& behind)
        : window(std::move(made)), list(behind), session(services().clock.today()) {}

    int picked(const char* combo) const { return window->get<Combo>(combo).selected(); }
    void enable(const char* button, bool enabled) const { window->get<Button>(button).setEnabled(enabled); }

    std::unique_ptr<platform::Window> window;
    ListWindow& list;
    ImportSession session;
    Step step = Step::file;
    bool classRead = false;
    bool fileRead = false;
    FileChoice choice;
    std::shared_ptr<const CheckedRows> checkedRows;
    std::map<std::size_t, std::string> kept;
    std::string note;  ///< what the result tells beside its numbers
    bool stored = false;
};

frmImport& frmImport::instance() {
    static auto& window = *new frmImport;  // the process may end while it is shown
    return window;
}

frmImport::Shown& frmImport::shown() { return whileShown(shown_, "frmImport"); }

void frmImport::show(ListWindow& list) {
    bool stored = false;
    const auto make = [&list] {
        return std::make_unique<Shown>(services().toolkit.createWindow(importDesign()), list);
    };
    showOnce(shown_, make, [this, &stored] {
        connectEvents();
        shown_->window->showModal([this] { Form_Load(); });
        stored = shown_->stored;
    });
    if (stored) list.getListInfo(3);
}

void frmImport::connectEvents() {
    platform::Window& window = *shown().window;
    const auto onClick = [&window](const char* name, auto action) { window.get<Button>(name).click = action; };
    onClick("cmdBrowse", [this] { cmdBrowse_Click(); });
    onClick("cmdTemplate", [this] { cmdTemplate_Click(); });
    onClick("cmdNext", [this] { cmdNext_Click(); });
    onClick("cmdBack", [this] { cmdBack_Click(); });
    onClick("cmdClose", [&window] { window.close(); });
    onClick("cmdMend", [this] { cmdMend_Click(); });
    onClick("cmdSaveRefused", [this] { cmdSaveRefused_Click(); });
    onClick("cmdSaveFailed", [this] { cmdSaveRefused_Click(); });
    onClick("cmdTakeBack", [this] { cmdTakeBack_Click(); });
    auto& vsfCheck = window.get<platform::ListGrid>("vsfCheck");
    vsfCheck.doubleClick = [this] { cmdMend_Click(); };
    vsfCheck.keyDown = [this](int key) {
        if (key == platform::kKeyEnter) cmdMend_Click();
    };
    window.get<Combo>("cmbShow").selectionChange = [this] {
        if (shown().step == Step::check) fillCheck();
    };
}

void frmImport::Form_Load() {
    platform::Window& window = *shown().window;
    window.setCaption("导入" + appState().gItemName);
    const auto fill = [&window](const char* name, const std::vector<std::string>& texts) {
        fillCombo(window.get<Combo>(name), texts);
    };
    fill("cmbEncoding", {"自动", "UTF-8", "GB18030"});
    fill("cmbSeparator", {"自动", "逗号", "分号", "制表符"});
    fill("cmbFound", {"修改", "不动"});
    fill("cmbCategory", {"拒绝", "新建"});
    fill("cmbFailing", {"存入其余的行", "全部不存"});
    fill("cmbName", {"照存", "拒绝"});
    fill("cmbNumber", {"拒绝", "照数字存"});
    fill("cmbShow", {"全部", "新增", "修改", "相同", "拒绝"});
    window.get<platform::EntryGrid>("fpsColumns").setRowCount(0);
    goTo(Step::file);
    window.get<platform::Edit>("txtFile").setFocus();
}

void frmImport::goTo(Step step) {
    Shown& form = shown();
    form.step = step;
    constexpr const char* kFrames[] = {"FrameFile", "FrameColumns", "FrameCheck", "FrameResult"};
    for (int i = 0; i < 4; ++i)
        form.window->get<platform::Frame>(kFrames[i]).setVisible(i == static_cast<int>(step));
    form.window->get<Button>("cmdNext").setCaption(step == Step::check ? "导入(&I)" : "下一步(&N)");
    form.enable("cmdBack", step != Step::file);
    form.enable("cmdNext", step != Step::result);
}

bool frmImport::readClass() {
    Shown& form = shown();
    if (form.classRead) return true;
    form.classRead = trapped([&form] {
        openDB();
        form.session.readFields();
        return true;
    });
    return form.classRead;
}

bool frmImport::readFile() {
    Shown& form = shown();
    constexpr char kSeparators[] = {0, ',', ';', '\t'};
    FileChoice choice{.path = form.window->get<platform::Edit>("txtFile").text()};
    if (choice.path.empty()) {
        showWarning("请选择文件！");
        return false;
    }
    const bool same = form.fileRead && choice.path == form.choice.path;
    choice.sheet = same ? std::max(0, form.picked("cmbSheet")) : 0;
    choice.encoding = static_cast<TextEncoding>(form.picked("cmbEncoding"));
    choice.separator = kSeparators[form.picked("cmbSeparator")];
    if (same && choice.sheet == form.choice.sheet && choice.encoding == form.choice.encoding &&
        choice.separator == form.choice.separator && !form.session.fileChanged())
        return true;
    static constexpr std::uint64_t kSteps = 1000;
    const auto progress = newProgress("正在读文件，请稍候…", kSteps);
    try {
        form.session.readFile(choice, [&progress](std::uint64_t done, std::uint64_t whole) {
            const std::uint64_t step = whole == 0 ? kSteps : std::min(kSteps, done * kSteps / whole);
            if (!progress->advance(static_cast<int>(step))) throw CancelledReading();
        });
    } catch (const CancelledReading&) {
        return false;
    } catch (const UnreadableFile& unreadable) {
        showWarning(unreadable.what());
        return false;
    }
    form.choice = choice;
    form.fileRead = true;
    fillSheets();
    form.session.matchColumns(setting(kSection, mappingKey(), ""));
    fillColumns();
    return true;
}

void frmImport::fillSheets() {
    Shown& form = shown();
    auto& cmbSheet = form.window->get<Combo>("cmbSheet");
    fillCombo(cmbSheet, form.session.sheets());
    if (form.choice.sheet < cmbSheet.rowCount()) cmbSheet.select(form.choice.sheet);
}

void frmImport::fillColumns() {
    const ImportSession& session = shown().session;
    auto& grid = shown().window->get<platform::EntryGrid>("fpsColumns");
    std::vector<std::string> fields = {kLeaveOut};
    for (const ImportField& field : session.fields())
        fields.push_back(field.caption + (field.required ? "*" : ""));
    grid.setRowCount(0);
    grid.setRowCount(static_cast<int>(session.headings().size()));
    for (std::size_t i = 0; i < session.headings().size(); ++i) {
        const int row = static_cast<int>(i) + 1;
        const std::string& heading = session.headings()[i];
        grid.setText(1, row, heading.empty() ? "（第" + std::to_string(row) + "栏）" : heading);
        grid.setText(2, row, session.sample(i));
        grid.setItems(kFieldColumn, row, fields);
        grid.selectItem(kFieldColumn, row, session.match[i] + 1);
    }
    if (grid.rowCount() > 0) grid.setActiveCell(kFieldColumn, 1);
}

bool frmImport::takeColumns() {
    Shown& form = shown();
    ImportSession& session = form.session;
    const auto& grid = form.window->get<platform::EntryGrid>("fpsColumns");
    std::vector<bool> given(session.fields().size());
    for (std::size_t i = 0; i < session.match.size(); ++i) {
        session.match[i] = std::max(0, grid.selectedItem(kFieldColumn, static_cast<int>(i) + 1)) - 1;
        if (session.match[i] < 0) continue;
        const auto field = static_cast<std::size_t>(session.match[i]);
        if (given[field]) {
            showWarning("“" + session.fields()[field].caption + "”有两栏存入，请只留一栏！");
            return false;
        }
        given[field] = true;
    }
    if (!given[kShortCodeField] && !given[kCodeField]) {
        showWarning("没有存入“" + session.fields()[kShortCodeField].caption + "”或“" +
                    session.fields()[kCodeField].caption + "”的栏！");
        return false;
    }
    session.options = {.found = static_cast<WhenFound>(form.picked("cmbFound")),
                       .category = static_cast<WhenCategoryMissing>(form.picked("cmbCategory")),
                       .failing = static_cast<WhenRowFails>(form.picked("cmbFailing")),
                       .doubledName = static_cast<WhenNameDoubled>(form.picked("cmbName")),
                       .numberCode = static_cast<WhenCodeIsNumber>(form.picked("cmbNumber"))};
    if (session.options.found == WhenFound::change && !isClassRightGranted(store::right::kUpdateDetail)) return false;
    if (session.options.category == WhenCategoryMissing::make && !isClassRightGranted(store::right::kNewCategory))
        return false;
    saveSetting(kSection, mappingKey(), session.remembered());
    return true;
}

bool frmImport::check() {
    ImportSession& session = shown().session;
    const auto progress = newProgress("正在核对，请稍候…", session.rowCount());
    const bool done = trapped([&] {
        openDB();
        return session.check(*progress);
    });
    if (!done) return false;
    shown().window->get<Combo>("cmbShow").select(0);
    fillCheck();
    return true;
}

void frmImport::fillCheck() {
    Shown& form = shown();
    const ImportSession& session = form.session;
    const int wanted = form.picked("cmbShow") - 1;
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < session.rowCount(); ++place) {
        if (wanted < 0 || session.state(place) == static_cast<RowState>(wanted)) places.push_back(place);
    }
    form.checkedRows = std::make_shared<CheckedRows>(session, std::move(places));
    showRows(form.window->get<platform::ListGrid>("vsfCheck"), form.checkedRows, CheckedRows::columns(session));
    form.window->get<Label>("lblCounts")
        .setCaption("共 " + numberText(session.rowCount()) + " 行：新增 " + numberText(session.count(RowState::added)) +
                    "，修改 " + numberText(session.count(RowState::changed)) + "，相同 " +
                    numberText(session.count(RowState::same)) + "，拒绝 " +
                    numberText(session.count(RowState::refused)));
    form.enable("cmdMend", form.checkedRows->rowCount() > 0);
    form.enable("cmdSaveRefused", session.count(RowState::refused) > 0);
}

void frmImport::cmdBrowse_Click() {
    Shown& form = shown();
    auto& cd1 = form.window->get<platform::FileDialog>("cd1");
    cd1.setFilter(kFiles);
    if (!cd1.showOpen() || cd1.fileName().empty()) return;
    form.window->get<platform::Edit>("txtFile").setText(cd1.fileName());
    if (readClass()) readFile();
}

void frmImport::cmdTemplate_Click() {
    Shown& form = shown();
    if (!readClass()) return;
    auto& cd1 = form.window->get<platform::FileDialog>("cd1");
    cd1.setFilter(kWorkbooks);
    if (!cd1.showSave() || cd1.fileName().empty()) return;
    try {
        writeTemplate(withSuffix(cd1.fileName()), form.session.fields());
    } catch (const std::runtime_error& failure) {
        return showCritical(failure.what());
    }
    showInformation("模板已保存！");
}

void frmImport::cmdNext_Click() {
    Shown& form = shown();
    switch (form.step) {
        case Step::file:
            if (!readClass() || !readFile()) return;
            if (form.session.rowCount() == 0) return showWarning("文件里没有数据！");
            return goTo(Step::columns);
        case Step::columns:
            if (takeColumns() && check()) goTo(Step::check);
            return;
        case Step::check:
            return run();
        case Step::result:
            return;
    }
}

void frmImport::cmdBack_Click() {
    switch (shown().step) {
        case Step::file:
            return;
        case Step::columns:
            return goTo(Step::file);
        case Step::check:
            return goTo(Step::columns);
        case Step::result:
            // What was stored is there now.
            if (check()) goTo(Step::check);
            return;
    }
}

void frmImport::cmdMend_Click() {
    Shown& form = shown();
    auto& vsfCheck = form.window->get<platform::ListGrid>("vsfCheck");
    const int row = vsfCheck.currentRow();
    if (row < 1) return;
    const std::size_t place = form.checkedRows->place(static_cast<std::size_t>(row) - 1);
    const auto changes = frmImportRow::mend(form.session, place);
    if (changes.empty()) return;
    bool coded = false;
    for (const auto& [field, text] : changes) {
        form.session.mend(place, field, text);
        coded = coded || isCodeField(form.session.fields(), field);
    }
    if (!coded) {
        form.session.rejudge(place);
        fillCheck();
    } else if (!check()) {
        // Half a check is none.
        return goTo(Step::columns);
    }
    if (vsfCheck.rowCount() > 1) vsfCheck.setCurrentRow(std::min(row, vsfCheck.rowCount() - 1));
}

void frmImport::cmdSaveRefused_Click() {
    Shown& form = shown();
    auto& cd1 = form.window->get<platform::FileDialog>("cd1");
    cd1.setFilter(kWorkbooks);
    if (!cd1.showSave() || cd1.fileName().empty()) return;
    std::size_t cut = 0;
    try {
        cut = writeRefused(withSuffix(cd1.fileName()), form.session);
    } catch (const std::runtime_error& failure) {
        return showCritical(failure.what());
    }
    const std::string told = "其中 " + numberText(cut) + " 格太长，电子表格的一格存不下，已截短。";
    showInformation("拒绝的行已保存！" + (cut == 0 ? "" : told));
}

void frmImport::run() {
    Shown& form = shown();
    ImportSession& session = form.session;
    const std::size_t wanted = session.count(RowState::added) + session.count(RowState::changed);
    if (wanted == 0) return showWarning("没有要存入的行！");
    if (session.options.failing == WhenRowFails::storeNothing && session.count(RowState::refused) > 0)
        return showWarning("有拒绝的行，全部没有存入！");
    form.note = session.fileChanged() ? "文件在核对后改动过，存入的是核对时的内容。" : "";
    form.kept.clear();
    const auto progress = newProgress("正在导入，请稍候…", wanted);
    const bool done = trapped([&] {
        openDB();
        session.run(*progress);
        return true;
    });
    if (!done) return;
    if (!session.result().failure.empty()) showCritical(session.result().failure);
    fillResult();
    goTo(Step::result);
}

void frmImport::fillResult() {
    Shown& form = shown();
    const ImportSession& session = form.session;
    const auto count = [&session](RowState state) {
        return static_cast<std::size_t>(
            std::count_if(session.result().rows.begin(), session.result().rows.end(),
                          [state](const RowOutcome& outcome) { return outcome.state == state; }));
    };
    const std::size_t added = count(RowState::added);
    form.stored = form.stored || added + count(RowState::changed) > 0;
    const std::size_t refused = session.refused().size();
    std::string text = "新增 " + numberText(added) + " 行，修改 " + numberText(count(RowState::changed)) +
                       " 行，拒绝 " + numberText(refused) + " 行。";
    if (session.result().cancelled) text += "已取消，其余的行没有存入。";
    form.window->get<Label>("lblResult").setCaption(text + form.note);
    showRows(form.window->get<platform::ListGrid>("vsfResult"), std::make_shared<ResultRows>(session, form.kept),
             ResultRows::columns());
    form.enable("cmdTakeBack", added + session.result().categories.size() > 0);
    form.enable("cmdSaveFailed", refused > 0);
}

void frmImport::cmdTakeBack_Click() {
    Shown& form = shown();
    if (!isClassRightGranted(store::right::kDeleteDetail)) return;
    const ImportResult& result = form.session.result();
    const bool mayTake = result.categories.empty() || isClassRightGranted(store::right::kDeleteCategory);
    if (!askQuestion("确定要撤回新增的行吗？")) return;
    std::vector<KeptItem> kept;
    const auto progress = newProgress("正在撤回，请稍候…", result.rows.size());
    const bool done = trapped([&] {
        openDB();
        kept = form.session.takeBack(*progress, mayTake ? MadeCategories::takeBack : MadeCategories::keep);
        return true;
    });
    if (!done) return;
    form.kept.clear();
    for (const KeptItem& item : kept)
        form.kept[item.row] = item.reason;
    form.note = kept.empty() ? "已全部撤回。" : "有 " + numberText(kept.size()) + " 行没有撤回。";
    if (!result.categories.empty()) form.note += "留下新建的分类 " + numberText(result.categories.size()) + " 个。";
    fillResult();
}

}  // namespace orvenmod
