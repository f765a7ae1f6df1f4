// A slow line: a socket that passes on what it gets to a server's socket, and back, a told time later. It counts the
// round trips, which are what a real network makes dear.
//
//   client  --- folder/.s.PGSQL.5432 ---  1 ms  --->  server's socket
//           <--------------------------   1 ms  ----
#pragma once

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

namespace orvenmod::bench {

class Relay {
public:
    /// Listens on `socket`, a path that is not taken yet, for what goes to the path `server`.
    /// Throws std::runtime_error where it can't.
    Relay(const std::string& socket, std::string server, std::chrono::microseconds delay);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    /// How often a client spoke to the server after the server had spoken to it, or for the first time.
    int roundTrips() const { return roundTrips_; }

private:
    class Line;
    void run();

    std::string socket_;
    std::string server_;
    std::chrono::microseconds delay_;
    int listener_ = -1;
    int wake_[2] = {-1, -1};
    std::atomic<int> roundTrips_ = 0;
    std::thread thread_;
};

}  // namespace orvenmod::bench
