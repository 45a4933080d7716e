#include "support/tds_bytes.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "database/sqlserver/odbc_text.h"

namespace test::tds {

namespace {

constexpr std::size_t header_size = 8;
constexpr int answer_kind = 4;

bool read_all(int connection, std::string& bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const ssize_t got = recv(connection, bytes.data() + at, bytes.size() - at, 0);
        if (got <= 0) return false;
        at += static_cast<std::size_t>(got);
    }
    return true;
}

bool send_all(int connection, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

}  // namespace

std::string wide(std::string_view utf8) {
    const auto characters = database::to_wide(utf8);  // with a zero at the end
    return {reinterpret_cast<const char*>(characters.data()), (characters.size() - 1) * 2};
}

std::string narrow(std::string_view bytes) {
    std::vector<SQLWCHAR> characters(bytes.size() / 2);
    if (!characters.empty()) std::memcpy(characters.data(), bytes.data(), characters.size() * 2);
    return database::from_wide(characters.data(), characters.size());
}

std::string short_text(std::string_view utf8) {
    const std::string text = wide(utf8);
    return byte(static_cast<int>(text.size() / 2)) + text;
}

std::string long_text(std::string_view utf8) {
    const std::string text = wide(utf8);
    return little(static_cast<std::uint16_t>(text.size() / 2)) + text;
}

Message read_message(int connection) {
    Message message;
    while (true) {
        std::string header(header_size, '\0');
        if (!read_all(connection, header)) return {};
        message.kind = static_cast<unsigned char>(header[0]);
        const auto length = static_cast<std::size_t>(static_cast<unsigned char>(header[2]) << 8 |
                                                     static_cast<unsigned char>(header[3]));
        if (length < header_size) return {};
        std::string body(length - header_size, '\0');
        if (!read_all(connection, body)) return {};
        message.body += body;
        if ((header[1] & 1) != 0) return message;
    }
}

bool send_answer(int connection, std::string_view body) {
    constexpr std::size_t packet = 4096;
    constexpr std::size_t room = packet - header_size;
    std::string packets;
    for (std::size_t at = 0; at < body.size() || at == 0; at += room) {
        const std::string_view piece = body.substr(at, room);
        const auto length = static_cast<int>(piece.size() + header_size);
        const bool last = at + room >= body.size();
        packets += byte(answer_kind) + byte(last ? 1 : 0) + byte(length >> 8) + byte(length & 0xFF) +
                   std::string(4, '\0');
        packets += piece;
    }
    return send_all(connection, packets);
}

int listen_on_loopback(std::uint16_t& port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    socklen_t size = sizeof address;
    if (bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 || listen(listener, 16) != 0 ||
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        close(listener);
        throw std::runtime_error("no socket on the loopback");
    }
    port = ntohs(address.sin_port);
    return listener;
}

std::uint16_t unused_port() {
    std::uint16_t port = 0;
    close(listen_on_loopback(port));
    return port;
}

}  // namespace test::tds
