// Statements of a routine that wait for no answer are gathered and go out together; a query first sends what stands
// before it. So the order is that in which the routine has them:
//
//   flight.execute(a)   waits
//   flight.execute(b)   waits
//   flight.open(c)      a and b in one flight, then c
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/connection.h"

namespace orvenmod::store {

class Flight {
public:
    explicit Flight(Connection& connection) : connection_(connection) {}

    void execute(std::string sql) { waiting_.push_back(std::move(sql)); }
    Recordset open(std::string_view sql) {
        send();
        return connection_.open(sql);
    }
    /// Throws what the first one that fails throws; none of those behind it is sent any more.
    void send() {
        if (!waiting_.empty()) connection_.executeAll(std::exchange(waiting_, {}));
    }

    /// Does the work and sends what waits behind it. Where the work itself fails, what stood before that has gone out.
    template <typename Work>
    void run(Work work) {
        try {
            work();
        } catch (...) {
            send();
            throw;
        }
        send();
    }

private:
    Connection& connection_;
    std::vector<std::string> waiting_;
};

}  // namespace orvenmod::store
