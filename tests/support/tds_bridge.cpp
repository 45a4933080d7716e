#include "support/tds_bridge.h"

#include <sys/socket.h>
#include <unistd.h>

#include "common/text.h"
#include "database/embedded/open.h"
#include "support/tds_bytes.h"
#include "support/tds_talk.h"

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
    for (std::thread& talk : talks_)
        talk.join();
    if (listener_ >= 0) close(listener_);
}

std::string TdsBridge::place() const {
    return "127.0.0.1;" + std::to_string(port_) + ";" + account_.database + ";" + account_.user + ";" +
           account_.password;
}

void TdsBridge::set_mood(Mood mood) {
    const std::lock_guard guard(lock_);
    if (mood_ == mood) return;
    mood_ = mood;
    if (mood == Mood::away) {
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

void TdsBridge::doom(std::string text, Fate fate) {
    const std::lock_guard guard(lock_);
    doomed_ = common::lower_ascii(text);
    fate_ = fate;
}

std::vector<TdsBridge::Heard> TdsBridge::heard() {
    const std::lock_guard guard(lock_);
    return heard_;
}

TdsBridge::Fate TdsBridge::hear(int connection, std::string_view text) {
    const std::lock_guard guard(lock_);
    heard_.push_back({connection, std::string(text)});
    if (doomed_.empty() || common::lower_ascii(text).find(doomed_) == std::string::npos) return Fate::run;
    doomed_.clear();
    return fate_;
}

void TdsBridge::serve() {
    while (!ending_) {
        const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        std::unique_lock guard(lock_);
        if (socket < 0) {
            // Shut: for good, or until the server is back on its port.
            close(listener_);
            listener_ = -1;
            back_.wait(guard, [this] { return ending_ || mood_ != Mood::away; });
            if (!ending_) listener_ = tds::listen_on_loopback(port_);
            continue;
        }
        const int number = ++connections_;
        open_[number] = socket;
        talks_.emplace_back([this, number, socket] {
            tds::Talk(*this, number, socket).run();
            const std::lock_guard held(lock_);
            open_.erase(number);
            close(socket);
        });
    }
}

}  // namespace test
