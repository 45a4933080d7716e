#include "database/odbc_watch.h"

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

// The socket's own address when it is connected to a server; nothing for anything else.
std::optional<sockaddr_storage> own_address(int descriptor) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getpeername(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return {};
    if (address.ss_family != AF_INET && address.ss_family != AF_INET6) return {};
    address = {};
    size = sizeof address;
    if (getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return {};
    return address;
}

}  // namespace

SocketsBefore::SocketsBefore() : known_(open_descriptors()) {}

std::optional<SocketsBefore::Found> SocketsBefore::new_one() const {
    std::optional<Found> found;
    for (const int descriptor : open_descriptors()) {
        if (known_.contains(descriptor)) continue;
        const auto address = own_address(descriptor);
        if (!address) continue;
        if (found) return {};
        found = Found{descriptor, *address};
    }
    return found;
}

OdbcWatch::~OdbcWatch() {
    {
        const std::lock_guard guard(lock_);
        ending_ = true;
    }
    news_.notify_one();
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
    // Mostly it sleeps towards the end of a wait that is over already, and then looks again.
    if (asleep_until_ > deadline_) news_.notify_one();
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
            news_.wait(guard);
        } else if (Clock::now() < deadline_) {
            asleep_until_ = deadline_;
            news_.wait_until(guard, asleep_until_);
        } else {
            const auto now = own_address(socket_->descriptor);
            if (now && std::memcmp(&*now, &socket_->own, sizeof *now) == 0)
                ::shutdown(socket_->descriptor, SHUT_RDWR);
            cut_ = true;
            deadline_ = Clock::time_point::max();
        }
    }
}

}  // namespace database
