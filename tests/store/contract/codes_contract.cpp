// The longest and the greatest of many codes, with an index that carries them and without one.
#include <random>

#include "contract.h"

namespace orvenmod::store::test {
namespace {

class CodesContract : public StoreContract {
protected:
    static constexpr int kParents = 12;

    void SetUp() override {
        StoreContract::SetUp();
        if (IsSkipped()) return;
        NEEDS_THE_DIALECT();
        connection_->execute("create table plain(id int not null primary key,p int,k int,code varchar(20))");
        connection_->execute("create table served(id int not null primary key,p int,k int,code varchar(20))");
        connection_->execute("create index by_code on served(k,p) include(code)");
    }

    void add(int parent, const std::string& code) {
        const std::string values =
            " values(" + std::to_string(++id_) + "," + std::to_string(parent) + ",3," + code + ")";
        connection_->execute("insert into plain" + values);
        connection_->execute("insert into served" + values);
    }

    // Of texts that differ in their trailing blanks alone either may be the greatest.
    std::string bare(const std::string& sql) {
        std::string text = value(sql);
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    }
    void expectSame(const std::string& before, const std::string& behind) {
        EXPECT_EQ(bare(before + " served " + behind), bare(before + " plain " + behind)) << before << "|" << behind;
    }

    void expectSameProposals(int parent) {
        const std::string siblings = "where k=3 and p=" + std::to_string(parent);
        expectSame("select isnull(max(len(code)),1) as code from", siblings);
        for (int length = 0; length <= 6; ++length) {
            const std::string sought = siblings + " and len(code)=" + std::to_string(length);
            expectSame("select isnull(max(cast(code as varchar(10))),0) as code from", sought);
            expectSame("select max(cast(code as varchar(2))) from", sought);
            expectSame("select max(code) from", sought + " and code<>'77'");
            expectSame("select 'a'+rtrim(max(code))+'z' from", sought + " and id>40 or id=1");
            expectSame("select max(code) from",
                       siblings + " and id>40 and 2+" + std::to_string(length - 2) + "=len(code)");
        }
        expectSame("select max(code) from", siblings);
        expectSame("select min(code) from", siblings + " and len(code)=3");
        expectSame("select max(code)+min(code) from", siblings + " and len(code)=3");
        expectSame("select count(*) from", siblings + " and len(code)=3 having max(code)>'5'");
    }

private:
    int id_ = 0;
};

TEST_F(CodesContract, AreTheSameWhateverSignsTheyHave) {
    const auto seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
    const std::vector<std::string> signs = {"0", "1", "2", "5", "9", "9", "7", "a", "B", "-", ".", " ", "中", "啊"};
    for (int parent = 0; parent < kParents; ++parent) {
        // Of some all are digits, and some have none.
        const int first = parent % 3 == 1 ? 7 : 0;
        const int count = parent % 3 == 0 ? 7 : static_cast<int>(signs.size()) - first;
        for (int row = below(25); row > 0; --row) {
            std::string code = "'";
            for (int left = 1 + below(4); left > 0; --left)
                code += signs[static_cast<std::size_t>(first + below(count))];
            code += below(8) == 0 ? "  '" : "'";
            add(parent, below(12) == 0 ? "null" : code);
        }
    }
    for (int parent = 0; parent <= kParents; ++parent)
        expectSameProposals(parent);
}

TEST_F(CodesContract, AreTheSameWithinAnotherQuery) {
    for (const char* code : {"'7'", "'070'", "'A1'", "'1  '", "null", "'999'"})
        add(1, code);
    add(2, "'12'");
    for (const char* table : {"plain", "served"}) {
        const std::string from = std::string(" from ") + table;
        const std::string greatest = "(select max(b.code)" + from + " b where b.k=a.k and b.p=1 and len(b.code)=3)";
        const std::string inner = "(select max(code)" + from + " where k=3 and p=1 and len(code)=3)";
        EXPECT_EQ(value("select code" + from + " where code=" + inner), "999");
        EXPECT_EQ(value("select " + greatest + from + " a where a.p=2"), "999");
        EXPECT_EQ(value("select m from (select max(code) as m" + from + " where k=3 and p=1 and len(code)=1) as z"),
                  "7");
        EXPECT_EQ(value("select max(code)" + from + " where k=3 and p=1 and len(code)=2 union all select '8'"), "A1");
        EXPECT_EQ(value("select max(code) as m" + from + " where k=3 and p=1 and len(code)=3 order by max(id)"), "999");
    }
}

}  // namespace
}  // namespace orvenmod::store::test
