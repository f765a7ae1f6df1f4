// savechild CONNECTION CLERK FIRST COUNT FILE: a clerk who saves so many new items, one after the other, in one window
// of the editor. Each has a name of his own, the next of his short codes from FIRST on, and FILE as its attachment.
// Says "ready" when the window is open and waits for a line; then tells each save that was refused as
//   refused TAB kind TAB title TAB text TAB kept|lost
// and presses on until the item is stored, which it tells as
//   stored TAB name
// or until its code exists, since a save that was told as refused has been stored, which it tells as
//   known TAB name
// FILE may be empty for no attachments.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "support/childclerk.h"

namespace orvenmod::test {
namespace {

constexpr std::chrono::minutes kPatience{2};

struct Task {
    std::string clerk;
    int firstCode = 0;
    int count = 0;
    std::string file;
};

const std::string kCodeExists = "代码已经存在,保存不成功!";

class Clerk : public ChildClerk {
public:
    explicit Clerk(const Task& task) : ChildClerk(task.file), task_(task) {}

    Answer onMessage(MessageKind kind, const std::string& text, const std::string& title) override {
        box_ = {kind, text, title};
        // A server that goes while the next item is proposed has its box behind the one that tells of the save.
        if (kind == MessageKind::information) stored_ = true;
        return Answer::ok;
    }

private:
    void work(User& user) override {
        std::cout << "ready" << std::endl;
        std::string go;
        std::getline(std::cin, go);
        for (int item = 0; item < task_.count; ++item)
            saveOne(user, item);
    }

    void saveOne(User& user, int item) {
        user.chooseTab("SSTab1", 0);
        const std::string name = task_.clerk + std::to_string(item);
        user.typeCell("fps1", kValue, kShortCodeRow, std::to_string(task_.firstCode + item));
        typeName(user, name);
        user.typeCell("fps1", kValue, kModelRow, task_.clerk);
        user.pickCell("fps1", kValue, kSupplierRow, item % 2);
        if (!task_.file.empty()) {
            user.chooseTab("SSTab1", 1);
            user.click("cmdAddFJ");
            user.typeCell("fps2", 3, 1, name);
        }
        const Texts typed = screen(user);
        const auto end = std::chrono::steady_clock::now() + kPatience;
        while (std::chrono::steady_clock::now() < end) {
            stored_ = false;
            user.clickTool("Save");
            if (stored_ || box_.text == kCodeExists) {
                std::cout << (stored_ ? "stored\t" : "known\t") << name << std::endl;
                return;
            }
            const bool kept = screen(user) == typed;
            std::cout << "refused\t" << describeBox(box_.kind, "") << "\t" << box_.title << "\t" << oneLine(box_.text)
                      << "\t" << (kept ? "kept" : "lost") << std::endl;
            if (!kept) break;
        }
        ADD_FAILURE() << "never stored: " << box_.text;
    }

    // What is told to the test is a line each.
    static std::string oneLine(std::string text) {
        std::replace(text.begin(), text.end(), '\n', ' ');
        return text;
    }

    // All that was typed, chosen and added.
    static Texts screen(User& user) {
        Texts all = values(user);
        for (int row = 1; row <= user.control<EntryGrid>("fps1").rowCount(); ++row)
            all.push_back(chosenId(user, row));
        const auto& attachments = user.control<EntryGrid>("fps2");
        for (int row = 1; row <= attachments.rowCount(); ++row)
            all.push_back(attachments.text(3, row) + attachments.text(5, row));
        all.push_back(user.window().caption());
        all.push_back(std::to_string(appState().gEditMode));
        return all;
    }

    Task task_;
    ShownMessage box_;
    bool stored_ = false;
};

int run(const std::string& connectionString, const Task& task) {
    Clerk clerk(task);
    return runChild(clerk, stores(), [&connectionString] {
        chooseGoods(connectionString);
        appState().gCurParentId = 13;
        frmBasicInfo::instance().show(nullptr);
    });
}

}  // namespace
}  // namespace orvenmod::test

int main(int count, char** arguments) {
    if (count != 6) return 2;
    ::testing::InitGoogleTest(&count, arguments);
    return orvenmod::test::run(arguments[1],
                               {arguments[2], std::stoi(arguments[3]), std::stoi(arguments[4]), arguments[5]});
}
