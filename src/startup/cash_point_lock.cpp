#include "startup/cash_point_lock.h"

#include <fmt/format.h>
#include <poll.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <functional>
#include <thread>

#include "common/files.h"

namespace startup {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::string_view shown_answer = "shown";
constexpr std::string_view user_answer = "user ";

// An address that is not a file; the system forgets it when the last socket closes.
struct Address {
    explicit Address(std::string_view name) {
        unix_address.sun_family = AF_UNIX;
        const std::size_t length = std::min(name.size(), sizeof unix_address.sun_path - 1);
        std::copy_n(name.begin(), length, unix_address.sun_path + 1);
        size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    }
    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&unix_address); }
    sockaddr_un unix_address{};
    socklen_t size = 0;
};

std::string own_user() {
    const passwd* entry = getpwuid(getuid());
    return entry != nullptr ? entry->pw_name : std::to_string(getuid());
}

}  // namespace

CashPointLock::CashPointLock(std::string_view shop, std::int64_t cash_point)
    : name_(fmt::format("tallvex/{:016x}/{}", std::hash<std::string_view>()(shop), cash_point)) {}

std::optional<CashPointLock::Holder> CashPointLock::take(milliseconds patience) {
    const Address address(name_);
    const auto deadline = steady_clock::now() + patience;
    while (true) {
        const int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        if (made < 0) return std::nullopt;
        if (bind(made, address.get(), address.size) == 0 && listen(made, SOMAXCONN) == 0) {
            listener_ = made;
            return std::nullopt;
        }
        const bool is_taken = errno == EADDRINUSE;
        close(made);
        if (!is_taken) return std::nullopt;
        if (auto holder = ask(deadline)) return holder;
        if (steady_clock::now() >= deadline) return Holder{};
        std::this_thread::sleep_for(milliseconds(50));
    }
}

void CashPointLock::release() {
    if (listener_ >= 0) close(listener_);
    listener_ = -1;
}

// What the holder answers; nothing if it has ended.
std::optional<CashPointLock::Holder> CashPointLock::ask(steady_clock::time_point deadline) const {
    const Address address(name_);
    const common::Descriptor asking(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!asking.is_open() || connect(asking.get(), address.get(), address.size) != 0) return std::nullopt;
    const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now()).count();
    pollfd ready{asking.get(), POLLIN, 0};
    if (poll(&ready, 1, static_cast<int>(std::max<std::int64_t>(left, 0))) <= 0) return Holder{};
    std::array<char, 256> bytes{};
    const ssize_t got = recv(asking.get(), bytes.data(), bytes.size(), 0);
    if (got <= 0) return std::nullopt;
    const std::string_view said(bytes.data(), static_cast<std::size_t>(got));
    if (said == shown_answer) return Holder{true, {}};
    return Holder{false, said.starts_with(user_answer) ? std::string(said.substr(user_answer.size())) : ""};
}

void CashPointLock::answer(const std::function<void()>& show) {
    while (listener_ >= 0) {
        const common::Descriptor asking(accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!asking.is_open()) return;
        ucred peer{};
        socklen_t size = sizeof peer;
        const bool is_own =
            getsockopt(asking.get(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == getuid();
        if (is_own) show();
        const std::string said = is_own ? std::string(shown_answer) : std::string(user_answer) + own_user();
        send(asking.get(), said.data(), said.size(), MSG_NOSIGNAL);
    }
}

}  // namespace startup
