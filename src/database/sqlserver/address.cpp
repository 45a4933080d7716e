#include "database/sqlserver/address.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include "common/text.h"

namespace database {

namespace {

std::optional<std::uint16_t> port_of(std::string_view text) {
    text = common::trim(text);
    std::uint16_t port = 0;
    const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (failed != std::errc() || end != text.data() + text.size() || port == 0) return {};
    return port;
}

// The value after "tcp" in the browser's answer "ServerName;PC;InstanceName;SQLEXPRESS;…;tcp;49172;;".
std::optional<std::uint16_t> tcp_port_in(std::string_view answer) {
    std::vector<std::string_view> words;
    while (true) {
        const auto end = answer.find(';');
        words.push_back(answer.substr(0, end));
        if (end == answer.npos) break;
        answer.remove_prefix(end + 1);
    }
    for (std::size_t i = 0; i + 1 < words.size(); i += 2)
        if (common::equal_ignoring_case(words[i], "tcp")) return port_of(words[i + 1]);
    return {};
}

class Socket {
  public:
    explicit Socket(const addrinfo& address)
        : descriptor_(socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC, address.ai_protocol)) {
        if (descriptor_ >= 0 && ::connect(descriptor_, address.ai_addr, address.ai_addrlen) != 0) close();
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() { close(); }
    int get() const { return descriptor_; }

  private:
    void close() {
        if (descriptor_ >= 0) ::close(descriptor_);
        descriptor_ = -1;
    }
    int descriptor_;
};

}  // namespace

DataSource parse_data_source(std::string_view text) {
    text = common::trim(text);
    if (common::equal_ignoring_case(text.substr(0, 4), "tcp:")) text.remove_prefix(4);
    DataSource source;
    if (const auto comma = text.find(','); comma != text.npos) {
        source.port = port_of(text.substr(comma + 1));
        text = text.substr(0, comma);
    }
    if (const auto stroke = text.find('\\'); stroke != text.npos) {
        source.instance = common::trim(text.substr(stroke + 1));
        text = text.substr(0, stroke);
    }
    source.host = common::trim(text);
    if (source.host == "." || common::equal_ignoring_case(source.host, "(local)")) source.host = "localhost";
    if (source.port || common::equal_ignoring_case(source.instance, "MSSQLSERVER")) source.instance.clear();
    return source;
}

Addresses addresses_of(const std::string& host, std::uint16_t port, int socket_kind,
                       std::chrono::milliseconds within, LookUp look_up) {
    // The thread outlives its caller if the name service does not answer, so it uses only data of its own.
    auto promise = std::make_shared<std::promise<Addresses>>();
    std::future<Addresses> found = promise->get_future();
    std::thread([promise, host, port = std::to_string(port), socket_kind, look_up] {
        addrinfo hints{};
        hints.ai_socktype = socket_kind;
        addrinfo* list = nullptr;
        const bool known = look_up(host.c_str(), port.c_str(), &hints, &list) == 0 && list != nullptr;
        promise->set_value(known ? Addresses(list, freeaddrinfo) : nullptr);
    }).detach();
    return found.wait_for(within) == std::future_status::ready ? found.get() : nullptr;
}

std::optional<std::uint16_t> ask_instance_port(const std::string& host, const std::string& instance,
                                               std::chrono::milliseconds within, std::uint16_t browser_port) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + within;

    const Addresses addresses = addresses_of(host, browser_port, SOCK_DGRAM, within);
    if (addresses == nullptr) return {};

    constexpr char ask_for_instance = 0x04;
    const std::string question = ask_for_instance + instance + '\0';
    constexpr auto patience = std::chrono::milliseconds(1000);  // then the question may have been lost
    bool refused = false;  // by every address: nobody listens there, so waiting is no use
    while (!refused && Clock::now() < deadline) {
        refused = true;
        for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
            const Socket socket(*address);
            if (socket.get() < 0 || send(socket.get(), question.data(), question.size(), MSG_NOSIGNAL) < 0)
                continue;
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
            pollfd waiting{socket.get(), POLLIN, 0};
            const bool answered =
                poll(&waiting, 1, static_cast<int>(std::clamp(left, {}, patience).count())) > 0;
            std::array<char, 4096> answer;
            const ssize_t length = answered ? recv(socket.get(), answer.data(), answer.size(), 0) : 0;
            if (length < 0) continue;
            refused = false;
            constexpr std::size_t header = 3;
            const auto size = static_cast<std::size_t>(length);
            if (size > header)
                if (const auto port = tcp_port_in({answer.data() + header, size - header})) return port;
        }
    }
    return {};
}

}  // namespace database
