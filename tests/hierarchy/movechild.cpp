// Moves a category of the database named by its argument and writes one byte to its output for each statement, so that
// a test can end it at any moment.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "frame/appstate.h"
#include "hierarchy/categorysave.h"
#include "store/trace.h"
#include "support/childclerk.h"
#include "support/site.h"

namespace orvenmod::test {
namespace {

/// No window opens; a box tells that the move was refused.
class Mover : public ChildClerk {
public:
    platform::Answer onMessage(platform::MessageKind, const std::string&, const std::string&) override {
        std::_Exit(2);
    }

private:
    void work(User&) override {}
};

int move(const std::string& connectionString) {
    Mover mover;
    store::TracingStore store(stores(), [](const store::TraceRecord&) {
        if (::write(STDOUT_FILENO, ".", 1) != 1) std::_Exit(3);
    });
    return runChild(mover, store, [&connectionString] {
        AppState& state = appState();
        state.gConnStr = connectionString;
        state.gItemClassId = 3;
        state.gItemTable = "ICItem";
        state.gCurItemId = 200;
        EXPECT_TRUE(moveCategory({"大类", "90", "02.90", "14"}));
    });
}

}  // namespace
}  // namespace orvenmod::test

int main(int count, char** arguments) {
    ::testing::InitGoogleTest(&count, arguments);
    return count == 2 ? orvenmod::test::move(arguments[1]) : 2;
}
