#include "store/tsql/viewtext.h"

#include <gtest/gtest.h>

#include "store/tsql/fakecatalog.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::tsql {
namespace {

TEST(ViewText, ComesBackFromTheStoredView) {
    const std::string sql = "create view  x  as select id from t where c='*/' or c='C:\\a\\*/' or c='客户'";
    EXPECT_EQ(storedViewText(emitted(sql)), sql);
}

TEST(ViewText, NeverEndsItsCommentEarly) {
    const std::string kept = keptViewText("a */ b *\\/ c **/ \\*/");
    EXPECT_EQ(kept.find("*/"), kept.size() - 2);
    EXPECT_EQ(storedViewText(kept), "a */ b *\\/ c **/ \\*/");
}

TEST(ViewText, IsEmptyForAViewMadeElsewhere) {
    EXPECT_EQ(storedViewText("CREATE VIEW v AS SELECT 1 /* x */"), "");
    EXPECT_EQ(storedViewText(""), "");
}

}  // namespace
}  // namespace orvenmod::store::tsql
