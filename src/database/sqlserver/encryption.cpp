#include "database/sqlserver/encryption.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "common/files.h"

namespace database {

namespace {

using Clock = std::chrono::steady_clock;

// The first message to a server: its header, then a version and what the client wants encrypted.
constexpr char question[] =
    "\x12\x01\x00\x1A\x00\x00\x00\x00"
    "\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF"
    "\x00\x00\x00\x00\x00\x00";
enum Wish : unsigned char { log_in_alone = 0, all_of_it = 1, not_supported = 2, required = 3 };
constexpr std::size_t header_size = 8;

bool wait_until(int socket, short event, Clock::time_point end) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd waiting{socket, event, 0};
    return poll(&waiting, 1, static_cast<int>(std::max<long>(left, 0))) > 0;
}

bool is_connected(int socket, const addrinfo& address, Clock::time_point end) {
    if (::connect(socket, address.ai_addr, address.ai_addrlen) == 0) return true;
    int failure = 0;
    socklen_t size = sizeof failure;
    return errno == EINPROGRESS && wait_until(socket, POLLOUT, end) &&
           getsockopt(socket, SOL_SOCKET, SO_ERROR, &failure, &size) == 0 && failure == 0;
}

std::size_t number_at(std::string_view bytes, std::size_t at) {
    return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                    static_cast<unsigned char>(bytes[at + 1]));
}

// A whole answer without its header; empty if it does not come in time.
std::string answer_of(int socket, Clock::time_point end) {
    std::string bytes;
    char piece[512];
    while (wait_until(socket, POLLIN, end)) {
        const ssize_t got = recv(socket, piece, sizeof piece, 0);
        if (got <= 0) break;
        bytes.append(piece, static_cast<std::size_t>(got));
        if (bytes.size() >= header_size && bytes.size() >= number_at(bytes, 2))
            return bytes.substr(header_size);
    }
    return {};
}

// The list gives the number, place and length of each option; 0xFF ends it.
std::optional<Wish> read_answer(std::string_view body) {
    constexpr unsigned char encryption_option = 1;
    for (std::size_t at = 0; at + 5 <= body.size() && static_cast<unsigned char>(body[at]) != 0xFF; at += 5) {
        const std::size_t place = number_at(body, at + 1);
        if (static_cast<unsigned char>(body[at]) == encryption_option && place < body.size())
            return static_cast<Wish>(body[place]);
    }
    return std::nullopt;
}

}  // namespace

std::optional<bool> can_encrypt(const addrinfo* addresses, bool all, std::chrono::milliseconds within) {
    const std::string asked =
        std::string(question, sizeof question - 1) + static_cast<char>(all ? all_of_it : log_in_alone);
    const auto end = Clock::now() + within;
    for (const addrinfo* address = addresses; address != nullptr; address = address->ai_next) {
        const common::Descriptor connection(socket(
            address->ai_family, address->ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, address->ai_protocol));
        if (!connection.is_open() || !is_connected(connection.get(), *address, end)) continue;
        if (send(connection.get(), asked.data(), asked.size(), MSG_NOSIGNAL) < 0) continue;
        if (const auto said = read_answer(answer_of(connection.get(), end)))
            return all ? *said == all_of_it || *said == required : *said != not_supported;
    }
    return std::nullopt;
}

}  // namespace database
