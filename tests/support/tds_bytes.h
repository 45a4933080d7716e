// Bytes of the server's protocol (TDS 7.4), both ways: packets on a socket, numbers and texts in messages.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace test::tds {

static_assert(std::endian::native == std::endian::little, "the protocol's byte order");

template <typename T>
std::string little(T value) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

inline std::string byte(int value) {
    return std::string(1, static_cast<char>(value));
}

// UTF-8 as the protocol's 16-bit characters, and back.
std::string wide(std::string_view utf8);
std::string narrow(std::string_view bytes);
// A text with the number of its characters in one byte, or in two, before it.
std::string short_text(std::string_view utf8);
std::string long_text(std::string_view utf8);

// Kinds of messages that a client sends.
enum Kind : std::uint8_t {
    closed = 0,
    batch = 0x01,
    call = 0x03,
    attention = 0x06,
    login = 0x10,
    prelogin = 0x12
};

struct Message {
    int kind = closed;
    std::string body;
};
// A whole message of one or more packets. At the end of the connection the kind is "closed".
Message read_message(int connection);
// Sends an answer in packets of a size that every client accepts. Returns false if the client is gone.
bool send_answer(int connection, std::string_view body);

// Reads a message from its beginning. Throws Malformed if the message ends too early.
struct Malformed : std::runtime_error {
    Malformed() : std::runtime_error("a malformed message") {}
};
class Reader {
  public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}
    template <typename T>
    T number() {
        T value{};
        std::memcpy(&value, take(sizeof value).data(), sizeof value);
        return value;
    }
    std::string_view take(std::size_t bytes) {
        if (bytes > rest_.size()) throw Malformed();
        const std::string_view taken = rest_.substr(0, bytes);
        rest_.remove_prefix(bytes);
        return taken;
    }
    bool at_end() const { return rest_.empty(); }
    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

// A listening socket on a free port of the loopback.
int listen_on_loopback(std::uint16_t& port);
// A port of the loopback on which nobody listens.
std::uint16_t unused_port();

}  // namespace test::tds
