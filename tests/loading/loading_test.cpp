// The component by name, from a program that links nothing of it.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <orvenmod/component.h>
#include <orvenmod/create.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>

#include "support/childprogram.h"
#include "support/temporary.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kItems = "Orvenmod.clsBasicInfo";

class Loading : public ::testing::Test {
protected:
    Loading() {
        setenv("XDG_CONFIG_HOME", folder.file("user").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", folder.file("machine").c_str(), 1);
    }

    static int registering(std::vector<std::string> arguments) {
        ChildProgram program(ORVENREGISTER, arguments);
        while (program.line()) {
        }
        return program.end();
    }
    static int creating(const std::string& name) {
        try {
            CreateObject(name);
        } catch (const ObjectFailure& failure) {
            return failure.number();
        }
        return 0;
    }

    const TemporaryFolder folder;
};

class Library {
public:
    explicit Library(const char* file = ORVENMOD_LIBRARY) : loaded_(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
        if (loaded_ == nullptr) ADD_FAILURE() << dlerror();
    }
    template <class Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(dlsym(loaded_, name));
    }
    void letGo() const { EXPECT_EQ(dlclose(loaded_), 0); }

private:
    void* loaded_;
};

TEST_F(Loading, thisProgramHasNothingOfTheComponent) {
    for (const char* name : {"DllGetClassObject", "orvenmod_create"})
        EXPECT_EQ(dlsym(RTLD_DEFAULT, name), nullptr) << name;
}

TEST_F(Loading, theLibraryHasItsFourExports) {
    const Library library;
    const auto registerServer = library.find<std::int32_t()>("DllRegisterServer");
    const auto unregisterServer = library.find<std::int32_t()>("DllUnregisterServer");
    const auto canUnload = library.find<std::int32_t()>("DllCanUnloadNow");
    const auto getClass = library.find<std::int32_t(const char*, const ClassObject**)>("DllGetClassObject");
    ASSERT_TRUE(registerServer && unregisterServer && canUnload && getClass);
    EXPECT_EQ(registerServer(), kSuccess);
    EXPECT_TRUE(fs::equivalent(RegisteredFile(kItems), ORVENMOD_LIBRARY));
    EXPECT_EQ(unregisterServer(), kSuccess);
    EXPECT_EQ(RegisteredFile(kItems), "");
    const ClassObject* object = nullptr;
    EXPECT_EQ(getClass("Orvenmod.clsNone", &object), kClassNotAvailable);
    ASSERT_EQ(getClass(kItems, &object), kSuccess);
    EXPECT_EQ(canUnload(), kSuccess);
    std::shared_ptr<void> items = object->createInstance();
    EXPECT_EQ(canUnload(), kNo);
    items.reset();
    EXPECT_EQ(canUnload(), kSuccess);
}

TEST_F(Loading, theLibraryStaysOnceItIsLoaded) {
    if (dlopen(ORVENMOD_LIBRARY, RTLD_NOW | RTLD_NOLOAD) != nullptr) return;  // another case holds it
    const Library library;
    library.letGo();
    EXPECT_NE(dlopen(ORVENMOD_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(Loading, aLibraryOfTheCurrentFolderIsRegisteredWhereverThatIsLater) {
    const fs::path before = fs::current_path();
    const fs::path file = ORVENMOD_LIBRARY;
    fs::current_path(file.parent_path());
    const Library library(("./" + file.filename().string()).c_str());
    fs::current_path(folder.path());
    EXPECT_EQ(library.find<std::int32_t()>("DllRegisterServer")(), kSuccess);
    EXPECT_TRUE(fs::equivalent(RegisteredFile(kItems), file));
    fs::current_path(before);
}

TEST_F(Loading, aClassThatIsNotRegisteredCannotBeCreated) { EXPECT_EQ(creating(kItems), ORVENMOD_E_CANNOT_CREATE); }

TEST_F(Loading, aClassIsCreatedByTheNameItIsRegisteredWith) {
    ASSERT_EQ(registering({ORVENMOD_LIBRARY}), 0);
    Object items = CreateObject("orvenmod.CLSbasicinfo");
    items.put("Status", "3");
    EXPECT_EQ(items.get("status"), Variant(std::int16_t{3}));
    items.put("UserRight", 2.5);
    EXPECT_EQ(items.get("UserRight"), Variant(2.5));
    const auto members = items.members();
    EXPECT_NE(std::find(members.begin(), members.end(),
                        std::pair{std::int32_t{ORVENMOD_METHOD}, std::string("mainInterface")}),
              members.end());
    try {
        items.call("mainInterface", {3, "", "", "Provider=SQLite;Data Source=" + folder.file("none.db"), 1});
        FAIL() << "a window without a database";
    } catch (const ObjectFailure& failure) {
        EXPECT_NE(failure.number(), 0);
        EXPECT_NE(std::string(failure.what()), "");
    }
    Object moved = std::move(items);
    moved = CreateObject("Orvenmod.clsJCZL");
    EXPECT_EQ(moved.get("fItemId"), Variant(""));
}

TEST_F(Loading, whatDoesNotFitFailsAsItDoesWithin) {
    ASSERT_EQ(registering({ORVENMOD_LIBRARY}), 0);
    Object items = CreateObject(kItems);
    const auto number = [](const auto& use) {
        try {
            use();
        } catch (const ObjectFailure& failure) {
            return failure.number();
        }
        return 0;
    };
    EXPECT_EQ(number([&] { items.put("Status", "abc"); }), ORVENMOD_E_TYPE_MISMATCH);
    EXPECT_EQ(number([&] { items.put("Status", 40000); }), ORVENMOD_E_OVERFLOW);
    EXPECT_EQ(number([&] { items.put("UserRight", std::make_shared<int>(1)); }), ORVENMOD_E_TYPE_MISMATCH);
    EXPECT_EQ(number([&] { items.put("fName", std::string("a\0b", 3)); }), ORVENMOD_E_INVALID_CALL);
    EXPECT_EQ(number([&] { items.call("mainInterface"); }), ORVENMOD_E_ARGUMENT_REQUIRED);
    EXPECT_EQ(number([&] { items.get("fNone"); }), ORVENMOD_E_NO_SUCH_MEMBER);
}

TEST_F(Loading, aRegistrationIsTakenAway) {
    ASSERT_EQ(registering({ORVENMOD_LIBRARY}), 0);
    ASSERT_EQ(registering({"--remove", ORVENMOD_LIBRARY}), 0);
    EXPECT_EQ(creating(kItems), ORVENMOD_E_CANNOT_CREATE);
}

TEST_F(Loading, aFileThatIsGoneOrBrokenIsTakenAwayByItsPath) {
    const std::string file = folder.file("moved.so");
    for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--machine"}}) {
        const auto with = [&options](std::vector<std::string> arguments) {
            arguments.insert(arguments.begin(), options.begin(), options.end());
            return registering(arguments);
        };
        fs::copy_file(ORVENMOD_LIBRARY, file);
        ASSERT_EQ(with({file}), 0);
        fs::remove(file);
        EXPECT_EQ(with({"--remove", folder.file("other.so")}), 1) << "another file";
        EXPECT_EQ(RegisteredFile(kItems), file);
        EXPECT_EQ(with({"--remove", fs::relative(file).string()}), 0);
        EXPECT_EQ(RegisteredFile(kItems), "");
        EXPECT_EQ(with({"--remove", file}), 1) << "nothing is registered";

        fs::copy_file(ORVENMOD_LIBRARY, file);
        ASSERT_EQ(with({file}), 0);
        std::ofstream(file, std::ios::trunc) << "no library any more";
        EXPECT_EQ(with({"--remove", file}), 0);
        EXPECT_EQ(RegisteredFile(kItems), "");
        fs::remove(file);
    }
}

TEST_F(Loading, aFileThatIsGoneIsTakenAwayByItsNameAlone) {
    const std::string file = folder.file("moved.so");
    fs::copy_file(ORVENMOD_LIBRARY, file);
    ASSERT_EQ(registering({file}), 0);
    fs::remove(file);
    EXPECT_EQ(registering({"--remove", "moved.so"}), 0);
    EXPECT_EQ(RegisteredFile(kItems), "");
}

TEST_F(Loading, theUsersRegistrationGoesBeforeTheMachines) {
    ASSERT_EQ(registering({"--machine", ORVENMOD_LIBRARY}), 0);
    EXPECT_FALSE(fs::exists(folder.file("user")));
    EXPECT_EQ(creating(kItems), 0);
    fs::create_directories(folder.file("user/orvenmod"));
    std::ofstream(folder.file("user/orvenmod/orvenmod.ini")) << "[Classes]\nOrvenmod.clsBasicInfo = /none%20here.so\n";
    EXPECT_EQ(RegisteredFile(kItems), "/none here.so");
    EXPECT_EQ(creating(kItems), ObjectFailure::kLibraryNotLoaded);
    EXPECT_EQ(creating("Orvenmod.clsJCZL"), 0);
    ASSERT_EQ(registering({"--machine", "--remove", ORVENMOD_LIBRARY}), 0);
    EXPECT_EQ(creating("Orvenmod.clsJCZL"), ORVENMOD_E_CANNOT_CREATE);
}

TEST_F(Loading, everyUserMayReadTheMachinesRegistration) {
    ASSERT_EQ(registering({"--machine", ORVENMOD_LIBRARY}), 0);
    struct stat found {};
    ASSERT_EQ(::stat(folder.file("machine/orvenmod").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0755U);
    ASSERT_EQ(::stat(folder.file("machine/orvenmod/orvenmod.ini").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0644U);
}

TEST_F(Loading, whatCannotBeRegisteredIsToldByTheExitStatus) {
    EXPECT_EQ(registering({folder.file("none.so")}), 1);
    EXPECT_EQ(registering({"libc.so.6"}), 1) << "a library, and no component";
    EXPECT_EQ(registering({}), 2);
    EXPECT_EQ(registering({"--none", ORVENMOD_LIBRARY}), 2);
    std::ofstream(folder.file("user")) << "a file where the folder should be";
    EXPECT_EQ(registering({ORVENMOD_LIBRARY}), 1);
}

}  // namespace
}  // namespace orvenmod::test
