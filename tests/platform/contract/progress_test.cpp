#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

TEST_F(ToolkitContract, longWorkGoesOnWhereNobodyCancels) {
    use(windowWith({}), [this](User&) {
        const auto progress = toolkit.createProgress("正在导出", "样窗", 50);
        for (int done = 1; done <= 60; ++done)
            EXPECT_TRUE(progress->advance(done));
    });
}

TEST_F(ToolkitContract, longWorkThatIsCancelledStaysSo) {
    use(windowWith({}), [this](User& user) {
        user.cancelProgress(30);
        const auto progress = toolkit.createProgress("正在导出", "样窗", 100);
        int done = 1;
        while (progress->advance(done) && done < 100)
            ++done;
        EXPECT_GE(done, 30);
        EXPECT_LT(done, 100);
        EXPECT_FALSE(progress->advance(done + 1));
        EXPECT_FALSE(progress->advance(100));
    });
}

TEST_F(ToolkitContract, theNextLongWorkStartsAfresh) {
    use(windowWith({}), [this](User& user) {
        for (int time = 0; time < 3; ++time) {
            user.cancelProgress(1);
            const auto progress = toolkit.createProgress("正在导出", "样窗", 10);
            int done = 1;
            while (progress->advance(done) && done < 10)
                ++done;
            EXPECT_LT(done, 10);
        }
        EXPECT_TRUE(toolkit.createProgress("正在导出", "样窗", 10)->advance(10));
    });
}

TEST_F(ToolkitContract, workOfNothingIsNoWork) {
    use(windowWith({}), [this](User&) { EXPECT_TRUE(toolkit.createProgress("", "", 0)->advance(0)); });
}

}  // namespace
}  // namespace orvenmod::test
