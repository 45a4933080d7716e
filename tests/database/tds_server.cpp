#include "database/tds_server.h"

#include <sys/socket.h>
#include <unistd.h>

namespace test {

using namespace tds;

TdsServer::TdsServer(Answer answer, std::string login_answer)
    : answer_(std::move(answer)), login_(std::move(login_answer)), listener_(listen_on_loopback(port_)) {
    thread_ = std::thread([this] { serve(); });
}

TdsServer::~TdsServer() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    for (const int connection : open_)
        shutdown(connection, SHUT_RDWR);
    for (std::thread& talk : talks_)
        talk.join();
    for (const int connection : open_)
        close(connection);
    close(listener_);
}

std::vector<std::string> TdsServer::requests() {
    const std::lock_guard guard(lock_);
    return requests_;
}

Login TdsServer::last_login() {
    const std::lock_guard guard(lock_);
    return last_login_;
}

void TdsServer::serve() {
    while (true) {
        const int connection = accept(listener_, nullptr, nullptr);
        if (connection < 0) return;
        open_.push_back(connection);
        talks_.emplace_back([this, connection] { talk(connection); });
    }
}

void TdsServer::talk(int connection) {
    while (true) {
        const Message message = read_message(connection);
        if (message.kind == closed) return;
        if (message.kind == prelogin) {
            send_answer(connection, prelogin_answer);
            continue;
        }
        if (message.kind == login) {
            {
                const std::lock_guard guard(lock_);
                last_login_ = read_login(message.body);
            }
            ++logins_;
            if (login_ == hang_up) break;
            if (login_ == silence) continue;
            send_answer(connection, login_.empty() ? login_answer("shop") : login_);
            continue;
        }
        const std::string request = message.kind == batch ? read_batch(message.body) : message.body;
        {
            const std::lock_guard guard(lock_);
            requests_.push_back(request);
        }
        const std::string reply = answer_(request);
        if (reply.ends_with(hang_up)) {
            const std::string last_words = reply.substr(0, reply.size() - std::string(hang_up).size());
            if (!last_words.empty()) send_answer(connection, last_words);
            break;
        }
        if (!reply.empty()) send_answer(connection, reply);
    }
    shutdown(connection, SHUT_RDWR);
}

SilentServer::SilentServer() : listener_(listen_on_loopback(port_)) {}
SilentServer::~SilentServer() {
    close(listener_);
}

}  // namespace test
