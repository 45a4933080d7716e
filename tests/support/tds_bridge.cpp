#include "support/tds_bridge.h"

#include <sys/socket.h>
#include <unistd.h>

#include "common/text.h"
#include "database/embedded/open.h"
#include "support/tds_bytes.h"
#include "support/tds_session.h"

namespace test {

TdsBridge::TdsBridge(std::filesystem::path folder, Account account)
    : folder_(std::move(folder)), account_(std::move(account)) {
    std::filesystem::create_directories(folder_);
    database::open_embedded(file(), true);
    listener_ = tds::listen_on_loopback(port_);
    thread_ = std::thread([this] { serve(); });
}

TdsBridge::~TdsBridge() {
    {
        const std::lock_guard guard(lock_);
        ending_ = true;
        if (listener_ >= 0) shutdown(listener_, SHUT_RDWR);
    }
    back_.notify_all();
    thread_.join();
    cut_all();
    for (std::thread& session : sessions_)
        session.join();
    if (listener_ >= 0) close(listener_);
}

std::string TdsBridge::place() const {
    return "127.0.0.1;" + std::to_string(port_) + ";" + account_.database + ";" + account_.user + ";" +
           account_.password;
}

void TdsBridge::set_network(Network network) {
    const std::lock_guard guard(lock_);
    if (network_ == network) return;
    network_ = network;
    if (network == Network::down) {
        shutdown(listener_, SHUT_RDWR);
        for (const auto& [number, socket] : open_)
            shutdown(socket, SHUT_RDWR);
    } else {
        back_.notify_all();
    }
}

void TdsBridge::drop() {
    cut_all();
}

void TdsBridge::cut_all() {
    const std::lock_guard guard(lock_);
    for (const auto& [number, socket] : open_)
        shutdown(socket, SHUT_RDWR);
}

void TdsBridge::fail_next(std::string text, Failure failure) {
    const std::lock_guard guard(lock_);
    failing_ = common::lower_ascii(text);
    failure_ = failure;
}

std::vector<TdsBridge::Received> TdsBridge::received() {
    const std::lock_guard guard(lock_);
    return received_;
}

TdsBridge::Failure TdsBridge::receive(int connection, std::string_view text) {
    const std::lock_guard guard(lock_);
    received_.push_back({connection, std::string(text)});
    if (failing_.empty() || common::lower_ascii(text).find(failing_) == std::string::npos)
        return Failure::none;
    failing_.clear();
    return failure_;
}

void TdsBridge::serve() {
    while (!ending_) {
        const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        std::unique_lock guard(lock_);
        if (socket < 0) {
            // The socket was shut down: for good, or until the network is up again.
            close(listener_);
            listener_ = -1;
            back_.wait(guard, [this] { return ending_ || network_ != Network::down; });
            if (!ending_) listener_ = tds::listen_on_loopback(port_);
            continue;
        }
        const int number = ++connections_;
        open_[number] = socket;
        sessions_.emplace_back([this, number, socket] {
            tds::Session(*this, number, socket).run();
            const std::lock_guard held(lock_);
            open_.erase(number);
            close(socket);
        });
    }
}

}  // namespace test
