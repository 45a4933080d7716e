#include "database/tds_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <bit>
#include <cstring>
#include <stdexcept>

#include "database/odbc_text.h"

namespace test {

namespace {

template <typename T>
std::string little(T value) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    static_assert(std::endian::native == std::endian::little);
    return bytes;
}

std::string byte(int value) {
    return std::string(1, static_cast<char>(value));
}

std::string short_text(std::string_view utf8) {
    const std::string text = tds::wide(utf8);
    return byte(static_cast<int>(text.size() / 2)) + text;
}

std::string text_of_wide(std::string_view bytes) {
    std::vector<SQLWCHAR> characters(bytes.size() / 2);
    if (!characters.empty()) std::memcpy(characters.data(), bytes.data(), characters.size() * 2);
    return database::from_wide(characters.data(), characters.size());
}

bool read_all(int connection, std::string& bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const ssize_t got = recv(connection, bytes.data() + at, bytes.size() - at, 0);
        if (got <= 0) return false;
        at += static_cast<std::size_t>(got);
    }
    return true;
}

struct Message {
    int kind = 0;
    std::string body;
};

// A whole message of one or more packets; kind 0 at the end of the connection.
Message read_message(int connection) {
    Message message;
    while (true) {
        std::string header(8, '\0');
        if (!read_all(connection, header)) return {};
        message.kind = static_cast<unsigned char>(header[0]);
        const auto length = static_cast<std::size_t>(static_cast<unsigned char>(header[2]) << 8 |
                                                     static_cast<unsigned char>(header[3]));
        std::string body(length - 8, '\0');
        if (!read_all(connection, body)) return {};
        message.body += body;
        if ((header[1] & 1) != 0) return message;
    }
}

void answer(int connection, const std::string& body) {
    constexpr std::size_t room = 4096 - 8;
    for (std::size_t at = 0; at < body.size() || at == 0; at += room) {
        const std::string piece = body.substr(at, room);
        const auto length = static_cast<int>(piece.size() + 8);
        const bool last = at + room >= body.size();
        const std::string packet =
            byte(4) + byte(last) + byte(length >> 8) + byte(length & 0xFF) + std::string(4, '\0') + piece;
        if (send(connection, packet.data(), packet.size(), MSG_NOSIGNAL) < 0) return;
    }
}

int listen_on_loopback(std::uint16_t& port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 16) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        throw std::runtime_error("no socket on the loopback");
    port = ntohs(address.sin_port);
    return listener;
}

constexpr int prelogin = 0x12;
constexpr int login = 0x10;
constexpr int batch = 0x01;

// Version and "no encryption", the two options that a client waits for.
const std::string prelogin_answer = std::string("\x00\x00\x0b\x00\x06\x01\x00\x11\x00\x01\xff", 11) +
                                    std::string("\x0b\x00\x0f\xa0\x00\x00", 6) + "\x02";

std::string login_answer() {
    const std::string program = short_text("Microsoft SQL Server");
    const std::string token = byte(1) + std::string("\x74\x00\x00\x04", 4) + program + std::string(4, '\x0b');
    return byte(0xAD) + little(static_cast<std::uint16_t>(token.size())) + token + tds::done();
}

// A text of the log-in message: its offset and its length in characters stand at `place`.
std::string login_text(const std::string& body, std::size_t place) {
    std::uint16_t at = 0;
    std::uint16_t characters = 0;
    std::memcpy(&at, body.data() + place, sizeof at);
    std::memcpy(&characters, body.data() + place + sizeof at, sizeof characters);
    return body.substr(at, characters * std::size_t{2});
}

// Passwords go over the wire with the halves of every byte swapped and a mask on them.
std::string unmasked(std::string bytes) {
    for (char& c : bytes) {
        const int plain = static_cast<unsigned char>(c) ^ 0xA5;
        c = static_cast<char>((plain << 4 | plain >> 4) & 0xFF);
    }
    return bytes;
}

}  // namespace

namespace tds {

std::string wide(std::string_view utf8) {
    const auto characters = database::to_wide(utf8);  // with a zero at the end
    return {reinterpret_cast<const char*>(characters.data()), (characters.size() - 1) * 2};
}

std::string done(std::uint64_t rows) {
    constexpr std::uint16_t has_count = 0x10;
    return byte(0xFD) + little(has_count) + little(std::uint16_t{0xC1}) + little(rows);
}

std::string error(int number, int severity, std::string_view text) {
    const std::string message = wide(text);
    const std::string token = little(number) + byte(1) + byte(severity) +
                              little(static_cast<std::uint16_t>(message.size() / 2)) + message +
                              short_text("SHOP") + byte(0) + little(1);
    constexpr std::uint16_t with_error = 0x02;
    return byte(0xAA) + little(static_cast<std::uint16_t>(token.size())) + token + byte(0xFD) +
           little(with_error) + little(std::uint16_t{0xC1}) + little(std::uint64_t{0});
}

std::string row(const std::vector<std::pair<std::string, database::Value>>& cells) {
    const std::string collation("\x01\x04\xd0\x00\x34", 5);
    std::string shape = byte(0x81) + little(static_cast<std::uint16_t>(cells.size()));
    std::string content = byte(0xD1);
    for (const auto& [name, value] : cells) {
        shape += little(std::uint32_t{0}) + little(std::uint16_t{1});  // of any user type, nullable
        if (const auto* integer = std::get_if<std::int64_t>(&value)) {
            shape += byte(0x26) + byte(8);
            content += byte(8) + little(*integer);
        } else if (const auto* number = std::get_if<double>(&value)) {
            shape += byte(0x6D) + byte(8);
            content += byte(8) + little(*number);
        } else if (const auto* moment = std::get_if<common::Moment>(&value)) {
            const long days =
                common::days_from_epoch(moment->date) - common::days_from_epoch(common::Date{1900, 1, 1});
            const int seconds = (moment->time.hour * 60 + moment->time.minute) * 60 + moment->time.second;
            shape += byte(0x6F) + byte(8);
            content += byte(8) + little(static_cast<std::int32_t>(days)) + little(seconds * 300);
        } else {
            shape += byte(0xE7) + little(std::uint16_t{8000}) + collation;
            const auto* text = std::get_if<std::string>(&value);
            const std::string bytes = text == nullptr ? "" : wide(*text);
            content +=
                little(text == nullptr ? std::uint16_t{0xFFFF} : static_cast<std::uint16_t>(bytes.size()));
            content += bytes;
        }
        shape += short_text(name);
    }
    return shape + content + done(1);
}

}  // namespace tds

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

TdsServer::Login TdsServer::last_login() {
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
        if (message.kind == 0) return;
        if (message.kind == prelogin) {
            answer(connection, prelogin_answer);
            continue;
        }
        if (message.kind == login) {
            {
                const std::lock_guard guard(lock_);
                last_login_ = {text_of_wide(login_text(message.body, 40)),
                               text_of_wide(unmasked(login_text(message.body, 44))),
                               text_of_wide(login_text(message.body, 68))};
            }
            ++logins_;
            if (login_ == hang_up) break;
            answer(connection, login_.empty() ? login_answer() : login_);
            continue;
        }
        std::string request = message.body;
        if (message.kind == batch) {
            std::uint32_t headers = 0;
            std::memcpy(&headers, request.data(), sizeof headers);
            request = text_of_wide(std::string_view(request).substr(headers));
        }
        {
            const std::lock_guard guard(lock_);
            requests_.push_back(request);
        }
        const std::string reply = answer_(request);
        if (reply == hang_up) break;
        if (!reply.empty()) answer(connection, reply);
    }
    shutdown(connection, SHUT_RDWR);
}

SilentServer::SilentServer() : listener_(listen_on_loopback(port_)) {}
SilentServer::~SilentServer() {
    close(listener_);
}

std::uint16_t unused_port() {
    std::uint16_t port = 0;
    close(listen_on_loopback(port));
    return port;
}

}  // namespace test
