#include <filesystem>
#include <fstream>

#include "platform/contract/contract.h"
#include "support/temporary.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign dialogWindow() {
    ControlDesign button = drawn(ControlKind::button, "cmdAdd");
    button.caption = "添加";
    return windowWith({button, {.kind = ControlKind::fileDialog, .name = "cd1"}});
}

TEST_F(ToolkitContract, everyKindOfBoxIsShownAndAnswered) {
    for (const MessageKind kind : {MessageKind::warning, MessageKind::information, MessageKind::critical}) {
        script->answer(kind, "内容", Answer::ok);
        EXPECT_EQ(toolkit.message(kind, "内容", "标题"), Answer::ok);
    }
    script->answer(MessageKind::question, "确定要移除当前行吗?", Answer::yes);
    EXPECT_EQ(toolkit.message(MessageKind::question, "确定要移除当前行吗?", "标题"), Answer::yes);
    script->answer(MessageKind::question, "确定要移除当前行吗?", Answer::no);
    EXPECT_EQ(toolkit.message(MessageKind::question, "确定要移除当前行吗?", "标题"), Answer::no);
    ASSERT_EQ(script->messages().size(), 5U);
    EXPECT_EQ(script->messages()[0], (ShownMessage{MessageKind::warning, "内容", "标题"}));
    EXPECT_EQ(script->messages()[3].kind, MessageKind::question);
}

TEST_F(ToolkitContract, aBoxShowsTextAsItStands) {
    const std::string text = "<b>A&B</b> 's\n第二行";
    script->answer(MessageKind::information, text, Answer::ok);
    toolkit.message(MessageKind::information, text, "");
    EXPECT_EQ(script->messages().at(0).text, text);
}

TEST_F(ToolkitContract, boxesShownByAnEventAreAnsweredInTheirOrder) {
    std::vector<Answer> answers;
    use(
        dialogWindow(),
        [&](Window& window) {
            window.get<Button>("cmdAdd").click = [&] {
                answers.push_back(toolkit.message(MessageKind::question, "甲", ""));
                answers.push_back(toolkit.message(MessageKind::question, "乙", ""));
            };
        },
        [](User& user) {
            user.answer(MessageKind::question, "甲", Answer::yes);
            user.answer(MessageKind::question, "乙", Answer::no);
            user.click("cmdAdd");
        });
    EXPECT_EQ(answers, (std::vector<Answer>{Answer::yes, Answer::no}));
}

TEST_F(ToolkitContract, aFailureIsShownInTheCriticalBoxUnderTheTitleOfTheMoment) {
    std::string title = "甲";
    toolkit.setFailureTitle([&title] { return title; });
    script->answer(MessageKind::critical, "错误", Answer::ok);
    toolkit.showEscaped("错误");
    title = "乙";
    script->answer(MessageKind::critical, "错误", Answer::ok);
    toolkit.showEscaped("错误");
    EXPECT_EQ(script->messages().at(0).title, "甲");
    EXPECT_EQ(script->messages().at(1).title, "乙");
}

TEST_F(ToolkitContract, aFileDialogGivesThePathAndItsTitle) {
    const TemporaryFolder folder;
    const std::string path = folder.file("单价 表.xls");
    std::ofstream(path) << "x";
    use(dialogWindow(), [&](User& user) {
        auto& dialog = user.control<FileDialog>("cd1");
        EXPECT_EQ(dialog.fileName(), "");
        EXPECT_EQ(dialog.fileTitle(), "");
        dialog.setFilter("Excel文件(*.xls)|*.xls");
        user.chooseFile(path);
        EXPECT_TRUE(dialog.showOpen());
        EXPECT_EQ(dialog.fileName(), path);
        EXPECT_EQ(dialog.fileTitle(), "单价 表.xls");
    });
}

TEST_F(ToolkitContract, aFileDialogSavesUnderANameThatIsNew) {
    const TemporaryFolder folder;
    const std::string path = folder.file("new.xls");
    use(dialogWindow(), [&](User& user) {
        user.chooseFile(path);
        EXPECT_TRUE(user.control<FileDialog>("cd1").showSave());
        EXPECT_EQ(user.control<FileDialog>("cd1").fileName(), path);
    });
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ToolkitContract, aFileDialogRefusesToReplaceWhatIsReadOnlyAndAsksAgain) {
    const TemporaryFolder folder;
    const std::string locked = folder.file("locked.xls");
    std::ofstream(locked) << "old";
    std::filesystem::permissions(locked, std::filesystem::perms::owner_read);
    use(dialogWindow(), [&](User& user) {
        auto& dialog = user.control<FileDialog>("cd1");
        user.chooseFile(locked);
        user.answer(MessageKind::warning, "“locked.xls”是只读文件，不能替换。");
        user.chooseFile(folder.file("other.xls"));
        EXPECT_TRUE(dialog.showSave());
        EXPECT_EQ(dialog.fileName(), folder.file("other.xls"));
        user.chooseFile(locked);
        EXPECT_TRUE(dialog.showOpen()) << "to read it is no matter";
    });
    EXPECT_EQ(script->messages().at(0).title, "另存为");
}

TEST_F(ToolkitContract, aFileDialogReplacesWhatMayBeReplaced) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("old.xls")) << "old";
    use(dialogWindow(), [&](User& user) {
        user.chooseFile(folder.file("old.xls"));
        EXPECT_TRUE(user.control<FileDialog>("cd1").showSave());
        EXPECT_EQ(user.control<FileDialog>("cd1").fileName(), folder.file("old.xls"));
    });
}

TEST_F(ToolkitContract, aCancelledFileDialogGivesFalse) {
    use(dialogWindow(), [](User& user) {
        user.chooseFile("");
        EXPECT_FALSE(user.control<FileDialog>("cd1").showOpen());
        user.chooseFile("");
        EXPECT_FALSE(user.control<FileDialog>("cd1").showSave());
        EXPECT_EQ(user.control<FileDialog>("cd1").fileName(), "");
    });
}

TEST_F(ToolkitContract, aDocumentIsOpenedWithTheDesktopsProgram) {
    const TemporaryFolder folder;
    const std::string path = folder.file("说明.txt");
    std::ofstream(path) << "x";
    toolkit.openDocument(path);
    EXPECT_EQ(script->documents(), (std::vector<std::string>{path}));
}

TEST_F(ToolkitContract, aDocumentThatIsMissingCannotBeOpened) {
    const TemporaryFolder folder;
    EXPECT_THROW(toolkit.openDocument(folder.file("missing.txt")), std::runtime_error);
    EXPECT_TRUE(script->documents().empty());
}

TEST_F(ToolkitContract, aWarningMayOfferAFurtherButton) {
    for (const Answer answer : {Answer::ok, Answer::further}) {
        script->answer(MessageKind::warning, "已经使用", answer);
        EXPECT_EQ(toolkit.warnOffering("已经使用", "标题", "使用情况(&S)"), answer == Answer::further);
        EXPECT_EQ(script->messages().back(), (ShownMessage{MessageKind::warning, "已经使用", "标题"}));
    }
}

}  // namespace
}  // namespace orvenmod::test
