#include "store/copy/vieworder.h"

#include <gtest/gtest.h>

namespace orvenmod::store {
namespace {

using Names = std::vector<std::string>;

Names order(const std::vector<ViewOutline>& views) {
    Names names;
    for (const ViewOutline& view : inOrderOfMaking(views))
        names.push_back(view.name);
    return names;
}

TEST(ViewOrder, StaysWhereNoneReadsAnother) {
    EXPECT_EQ(order({{"b", "create view b as select 1 as n"}, {"a", "create view a as select n from t"}}),
              (Names{"b", "a"}));
}

TEST(ViewOrder, PutsAViewBehindThoseThatItReads) {
    EXPECT_EQ(order({{"vAll", "create view vAll as select * from vHalf join [V Part] p on p.n=vHalf.n"},
                     {"vHalf", "create view vHalf as select n from t, dbo.VLEAST"},
                     {"V Part", "create view [V Part] as select n from VHALF"},
                     {"vLeast", "create view vLeast as select n from t"}}),
              (Names{"vLeast", "vHalf", "V Part", "vAll"}));
}

TEST(ViewOrder, IsNotMisledByColumnsAndTextsOfThatName) {
    EXPECT_EQ(
        order({{"a", "create view a as select b, 'from b' as c from t"}, {"b", "create view b as select b from a"}}),
        (Names{"a", "b"}));
}

TEST(ViewOrder, KeepsAViewThatCannotBeRead) {
    EXPECT_EQ(order({{"a", "create view a as select 'x from t"}, {"b", "create view b as select n from a"}}),
              (Names{"a", "b"}));
}

}  // namespace
}  // namespace orvenmod::store
