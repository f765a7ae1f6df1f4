#include "store/postgres/failures.h"

#include <gtest/gtest.h>

namespace orvenmod::store::postgres::test {
namespace {

TEST(PlacesInACopy, AreReadInWhateverLanguageTheServerTellsThem) {
    for (const char* context :
         {"COPY t2, line 13, column my name: \"soon\"", "COPY t2, 行 13, 列 my name: \"soon\"",
          "COPY t2, Zeile 13, Spalte my name: »soon«", "COPY t2, ligne 13, colonne my name : « soon »",
          "t2のCOPY、行 13、列 my name: \"soon\""}) {
        const auto place = placeInCopy(context, "t2");
        ASSERT_TRUE(place) << context;
        EXPECT_EQ(place->line, 13U) << context;
        EXPECT_EQ(place->column, "my name") << context;
    }
}

TEST(PlacesInACopy, MayBeARowAlone) {
    for (const char* context : {"COPY t2, line 13", "COPY t2, line 13: \"1, 2: x\"", "COPY t2, 行 13: \"1\""}) {
        const auto place = placeInCopy(context, "t2");
        ASSERT_TRUE(place) << context;
        EXPECT_EQ(place->line, 13U) << context;
        EXPECT_EQ(place->column, "") << context;
    }
}

TEST(PlacesInACopy, MayBeNone) {
    EXPECT_FALSE(placeInCopy("", "t2"));
    EXPECT_FALSE(placeInCopy("COPY t2", "t2"));
    EXPECT_FALSE(placeInCopy("SQL function \"f\" statement 1", "t2"));
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
