// binarychild CONNECTION FILE FOLDER: saves a new item with FILE as its photo and its attachment, opens it again, takes
// both out to FOLDER, and saves it once more with a second attachment. Tells the most memory that each of the three
// took beyond what was held before it:
//   insert 123   load 123   update 123   (a line each, bytes)
#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "support/childclerk.h"
#include "support/watchedmemory.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class Clerk : public ChildClerk {
public:
    Clerk(std::string file, std::string folder) : ChildClerk(std::move(file)), folder_(std::move(folder)) {}

    Steps steps;

    Answer onMessage(MessageKind kind, const std::string& text, const std::string&) override {
        if (kind != MessageKind::information) ADD_FAILURE() << text;
        return Answer::ok;
    }
    void onDocument(const std::string& path) override { fs::copy_file(path, folder_ + "/attachment"); }

private:
    void work(User& user) override { steps(user); }

    std::string folder_;
};

void measured(const char* name, const std::function<void()>& work) {
    const std::int64_t before = heldBytes();
    forgetMost();
    work();
    std::cout << name << " " << mostHeldBytes() - before << std::endl;
}

void attach(User& user) {
    user.chooseTab("SSTab1", 1);
    user.click("cmdAddFJ");
    user.typeCell("fps2", 3, user.control<EntryGrid>("fps2").rowCount(), "附件");
}

void play(Clerk& clerk, const std::string& folder) {
    clerk.steps = [](User& user) {
        typeName(user, "垫圈");
        attach(user);
        user.chooseTab("SSTab1", 2);
        user.click("cmdAdd");
        measured("insert", [&] { user.clickTool("Save"); });
    };
    frmBasicInfo::instance().show(nullptr);

    appState().gEditMode = 1;
    clerk.steps = [&](User& user) {
        fs::copy_file(appState().gPhotoPath, folder + "/photo");
        user.chooseTab("SSTab1", 1);
        user.clickCell("fps2", 2, 1);
    };
    measured("load", [] { frmBasicInfo::instance().show(nullptr); });

    clerk.steps = [](User& user) {
        attach(user);
        measured("update", [&] { user.clickTool("Save"); });
    };
    frmBasicInfo::instance().show(nullptr);
}

int run(const std::string& connectionString, const std::string& file, const std::string& folder) {
    Clerk clerk(file, folder);
    return runChild(clerk, stores(), [&] {
        chooseGoods(connectionString);
        play(clerk, folder);
    });
}

}  // namespace
}  // namespace orvenmod::test

int main(int count, char** arguments) {
    if (count != 4) return 2;
    orvenmod::test::watchEngineMemory();
    ::testing::InitGoogleTest(&count, arguments);
    return orvenmod::test::run(arguments[1], arguments[2], arguments[3]);
}
