#include "relay.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace orvenmod::bench {
namespace {

using Clock = std::chrono::steady_clock;

sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) throw std::runtime_error("the path of a socket is too long: " + path);
    std::copy(path.begin(), path.end(), address.sun_path);
    return address;
}

int openSocket() {
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0) throw std::runtime_error("no socket for the slow line");
    return handle;
}

struct Parcel {
    Clock::time_point due;
    std::vector<char> bytes;
};

}  // namespace

/// One connection of a client: two handles, and what is on its way in each direction.
class Relay::Line {
public:
    Line(int client, int server) : handles_{client, server} {}
    ~Line() {
        for (const int handle : handles_)
            close(handle);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    int handle(std::size_t side) const { return handles_[side]; }

    /// Takes what the side has to say. False where it has hung up.
    bool take(std::size_t side, std::chrono::microseconds delay, std::atomic<int>& roundTrips) {
        constexpr std::size_t kMost = 1 << 16;
        std::vector<char> bytes(kMost);
        const ssize_t size = read(handles_[side], bytes.data(), bytes.size());
        if (size <= 0) return false;
        bytes.resize(static_cast<std::size_t>(size));
        if (side == kClient && !clientSpoke_) ++roundTrips;
        clientSpoke_ = side == kClient;
        travelling_[side].push_back({Clock::now() + delay, std::move(bytes)});
        return true;
    }

    /// Gives the other side what has arrived. False where it no longer listens.
    bool deliver(std::size_t side, Clock::time_point now) {
        std::deque<Parcel>& parcels = travelling_[side];
        for (; !parcels.empty() && parcels.front().due <= now; parcels.pop_front()) {
            const std::vector<char>& bytes = parcels.front().bytes;
            for (std::size_t sent = 0; sent < bytes.size();) {
                const ssize_t size = send(handles_[1 - side], bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
                if (size <= 0) return false;
                sent += static_cast<std::size_t>(size);
            }
        }
        return true;
    }

    std::optional<Clock::time_point> next() const {
        std::optional<Clock::time_point> least;
        for (const auto& parcels : travelling_) {
            if (!parcels.empty() && (!least || parcels.front().due < *least)) least = parcels.front().due;
        }
        return least;
    }

private:
    static constexpr std::size_t kClient = 0;

    std::array<int, 2> handles_;
    std::array<std::deque<Parcel>, 2> travelling_;
    bool clientSpoke_ = false;
};

Relay::Relay(const std::string& socket, std::string server, std::chrono::microseconds delay)
    : socket_(socket), server_(std::move(server)), delay_(delay), listener_(openSocket()) {
    const sockaddr_un address = addressOf(socket_);
    constexpr int kWaiting = 64;
    if (bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, kWaiting) != 0 || pipe(wake_) != 0) {
        close(listener_);
        throw std::runtime_error("the slow line can't listen on " + socket_);
    }
    thread_ = std::thread([this] { run(); });
}

Relay::~Relay() {
    close(wake_[1]);
    thread_.join();
    close(wake_[0]);
    close(listener_);
    unlink(socket_.c_str());
}

void Relay::run() {
    std::vector<std::unique_ptr<Line>> lines;
    for (;;) {
        std::vector<pollfd> watched = {{wake_[0], POLLIN, 0}, {listener_, POLLIN, 0}};
        std::optional<Clock::time_point> next;
        for (const auto& line : lines) {
            watched.push_back({line->handle(0), POLLIN, 0});
            watched.push_back({line->handle(1), POLLIN, 0});
            if (const auto due = line->next(); due && (!next || *due < *next)) next = due;
        }
        timespec wait{};
        if (next) {
            const auto left = std::max(std::chrono::nanoseconds(0), std::chrono::nanoseconds(*next - Clock::now()));
            wait.tv_nsec = static_cast<long>(left.count() % 1000000000);
            wait.tv_sec = static_cast<time_t>(left.count() / 1000000000);
        }
        ppoll(watched.data(), watched.size(), next ? &wait : nullptr, nullptr);
        if (watched[0].revents != 0) return;
        const auto now = Clock::now();
        for (std::size_t i = 0, w = 2; i < lines.size(); w += 2) {
            bool alive = lines[i]->deliver(0, now) && lines[i]->deliver(1, now);
            for (const std::size_t side : {std::size_t{0}, std::size_t{1}}) {
                if (alive && watched[w + side].revents != 0) alive = lines[i]->take(side, delay_, roundTrips_);
            }
            if (alive) {
                ++i;
            } else {
                lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        if (watched[1].revents == 0) continue;
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const int server = openSocket();
        const sockaddr_un address = addressOf(server_);
        if (client >= 0 && connect(server, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
            lines.push_back(std::make_unique<Line>(client, server));
        } else {
            close(client);
            close(server);
        }
    }
}

}  // namespace orvenmod::bench
