#include "support/tds_control.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace test {

TdsControl::TdsControl(TdsBridge& bridge, std::filesystem::path path)
    : bridge_(bridge), path_(std::move(path)), listener_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = path_.string();
    if (name.size() >= sizeof address.sun_path) throw std::runtime_error("the folder's name is too long");
    std::memcpy(address.sun_path, name.c_str(), name.size() + 1);
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, 4) != 0)
        throw std::runtime_error("no socket " + name);
    thread_ = std::thread([this] { serve(); });
}

TdsControl::~TdsControl() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
}

void TdsControl::serve() {
    for (int client; (client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0; close(client)) {
        std::string line;
        for (char c; recv(client, &c, 1, 0) == 1 && c != '\n';)
            line += c;
        const std::string answer = answer_to(line) + "\n";
        send(client, answer.data(), answer.size(), MSG_NOSIGNAL);
    }
}

std::string TdsControl::answer_to(std::string_view line) {
    using Network = TdsBridge::Network;
    using Failure = TdsBridge::Failure;
    const auto rest_after = [&](std::string_view word) {
        return line.starts_with(word) ? std::string(line.substr(word.size())) : std::string();
    };
    if (line == "well") {
        bridge_.set_network(Network::up);
    } else if (line == "silent") {
        bridge_.set_network(Network::silent);
    } else if (line == "away") {
        bridge_.set_network(Network::down);
    } else if (line == "drop") {
        bridge_.drop();
    } else if (const std::string cut = rest_after("cut "); !cut.empty()) {
        bridge_.fail_next(cut, Failure::cut);
    } else if (const std::string run = rest_after("run and cut "); !run.empty()) {
        bridge_.fail_next(run, Failure::run_and_cut);
    } else if (const std::string silence = rest_after("silence "); !silence.empty()) {
        bridge_.fail_next(silence, Failure::silence);
    } else if (const std::string text = rest_after("heard "); !text.empty()) {
        const auto received = bridge_.received();
        return std::to_string(std::count_if(
            received.begin(), received.end(),
            [&](const TdsBridge::Received& one) { return one.text.find(text) != std::string::npos; }));
    } else if (line == "logins") {
        return std::to_string(bridge_.logins());
    } else if (line == "opening") {
        // The first statement of the latest connection.
        const auto received = bridge_.received();
        if (received.empty()) return "";
        const auto latest =
            std::max_element(received.begin(), received.end(),
                             [](const auto& a, const auto& b) { return a.connection < b.connection; });
        return latest->text;  // the first of the largest
    } else {
        return "?";
    }
    return "ok";
}

}  // namespace test
