// The databases of a copy's test: an empty one of each store, from which it may come and to which it may go.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "store/copy/copy.h"

namespace orvenmod::store::test {

enum class SideKind { embedded, postgres, server };

/// An empty database of the test's own.
class Side {
public:
    virtual ~Side() = default;
    virtual std::unique_ptr<Connection> connect() = 0;
    virtual std::string connectionString() = 0;
    /// Does to a file of the embedded store what another program may do to it.
    virtual void spoil(const std::string& native);
};

/// Null where there is none on this machine: a server of the dialect is one that ORVEN_TDS_SERVER names.
std::unique_ptr<Side> makeSide(SideKind kind);

struct Road {
    SideKind from;
    SideKind to;
};

/// A case of it runs for each pair of stores.
class CopyRoad : public ::testing::TestWithParam<Road> {
protected:
    void SetUp() override;

    CopyReport copy(const CopyWatch& watch = {}) { return copySuite(*source_, *target_, watch); }
    static std::string value(Connection& connection, const std::string& sql) {
        const Recordset rows = connection.open(sql);
        return rows.eof() ? "no row" : std::string(rows.cell(0, 0).value_or("NULL"));
    }
    /// Every cell of a query on both sides is the same text.
    void expectSame(const std::string& sql);

    std::unique_ptr<Side> from_;
    std::unique_ptr<Side> to_;
    std::unique_ptr<Connection> source_;
    std::unique_ptr<Connection> target_;
};

/// Those of this binary.
std::vector<Road> roads();
std::string nameOf(const ::testing::TestParamInfo<Road>& road);

/// An outline as lines, in an order of their own: what a copy must not change.
std::vector<std::string> shapeOf(Connection& connection);

}  // namespace orvenmod::store::test
