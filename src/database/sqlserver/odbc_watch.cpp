#include "database/sqlserver/odbc_watch.h"

#include <netinet/in.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

namespace database {

namespace {

std::set<int> open_descriptors() {
    std::set<int> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", ignored)) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == name.npos) found.insert(std::stoi(name));
    }
    return found;
}

// The port of an address, or 0 if it is not an IP address.
std::uint16_t port_of(const sockaddr_storage& address) {
    if (address.ss_family == AF_INET) return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
    if (address.ss_family == AF_INET6) return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
    return 0;
}

using AddressOf = int (*)(int, sockaddr*, socklen_t*);
sockaddr_storage address_by(AddressOf ask, int descriptor) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (ask(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return {};
    return address;
}

sockaddr_storage own_address(int descriptor) {
    return address_by([](int d, sockaddr* a, socklen_t* s) { return getsockname(d, a, s); }, descriptor);
}

}  // namespace

SocketsBefore::SocketsBefore() : known_(open_descriptors()) {}

std::optional<SocketsBefore::Found> SocketsBefore::new_one(std::uint16_t port) const {
    std::optional<Found> found;
    for (const int descriptor : open_descriptors()) {
        if (known_.contains(descriptor)) continue;
        const auto peer =
            address_by([](int d, sockaddr* a, socklen_t* s) { return getpeername(d, a, s); }, descriptor);
        if (port == 0 || port_of(peer) != port) continue;
        if (found) return {};
        found = Found{descriptor, own_address(descriptor)};
    }
    return found;
}

OdbcWatch::~OdbcWatch() {
    {
        const std::lock_guard guard(lock_);
        ending_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void OdbcWatch::look_after(std::optional<SocketsBefore::Found> socket) {
    const std::lock_guard guard(lock_);
    socket_ = socket;
}

bool OdbcWatch::has_cut() {
    const std::lock_guard guard(lock_);
    return cut_;
}

void OdbcWatch::begin(std::chrono::milliseconds most) {
    const std::lock_guard guard(lock_);
    cut_ = false;
    if (!socket_) return;
    deadline_ = Clock::now() + most;
    if (!thread_.joinable()) thread_ = std::thread([this] { keep_watch(); });
    // Usually the thread wakes up in time anyway, at the deadline of an earlier wait.
    if (asleep_until_ > deadline_) changed_.notify_one();
}

void OdbcWatch::end() {
    const std::lock_guard guard(lock_);
    deadline_ = Clock::time_point::max();
}

void OdbcWatch::keep_watch() {
    std::unique_lock guard(lock_);
    while (!ending_) {
        if (deadline_ == Clock::time_point::max()) {
            asleep_until_ = deadline_;
            changed_.wait(guard);
        } else if (Clock::now() < deadline_) {
            asleep_until_ = deadline_;
            changed_.wait_until(guard, asleep_until_);
        } else {
            const sockaddr_storage now = own_address(socket_->descriptor);
            if (std::memcmp(&now, &socket_->own, sizeof now) == 0) ::shutdown(socket_->descriptor, SHUT_RDWR);
            cut_ = true;
            deadline_ = Clock::time_point::max();
        }
    }
}

}  // namespace database
