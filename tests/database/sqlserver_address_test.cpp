// Data sources as shops write them, and the browser service that knows the ports of instances.
#include "database/sqlserver/address.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include "database/tds_server.h"

namespace {

using database::ask_instance_port;
using database::parse_data_source;
using namespace std::chrono_literals;

TEST(DataSource, ReadsEveryForm) {
    const struct {
        const char* text;
        const char* host;
        const char* instance;
        int port;  // 0 for none
    } cases[] = {
        {"SHOPP", "SHOPP", "", 0},
        {" 192.168.1.5 ", "192.168.1.5", "", 0},
        {"192.168.1.5\\SQLEXPRESS", "192.168.1.5", "SQLEXPRESS", 0},
        {"SHOPP,1434", "SHOPP", "", 1434},
        {"tcp:SHOPP, 1434", "SHOPP", "", 1434},
        {"SHOPP\\SQLEXPRESS,1435", "SHOPP", "", 1435},
        {"SHOPP\\mssqlserver", "SHOPP", "", 0},
        {".\\SQLEXPRESS", "localhost", "SQLEXPRESS", 0},
        {"(local)", "localhost", "", 0},
        {"SHOPP,99999", "SHOPP", "", 0},
        {"", "", "", 0},
    };
    for (const auto& [text, host, instance, port] : cases) {
        SCOPED_TRACE(text);
        const auto source = parse_data_source(text);
        EXPECT_EQ(source.host, host);
        EXPECT_EQ(source.instance, instance);
        EXPECT_EQ(source.port.value_or(0), port);
    }
}

// A browser service that answers the next question.
class Browser {
  public:
    explicit Browser(std::string answer) : socket_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
        getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this, answer = std::move(answer)] {
            std::array<char, 256> buffer;
            sockaddr_in from{};
            socklen_t from_size = sizeof from;
            const ssize_t length = recvfrom(socket_, buffer.data(), buffer.size(), 0,
                                            reinterpret_cast<sockaddr*>(&from), &from_size);
            if (length <= 0) return;
            question_.assign(buffer.data(), static_cast<std::size_t>(length));
            sendto(socket_, answer.data(), answer.size(), 0, reinterpret_cast<sockaddr*>(&from), from_size);
        });
    }
    ~Browser() {
        shutdown(socket_, SHUT_RDWR);
        if (thread_.joinable()) thread_.join();
        close(socket_);
    }
    std::uint16_t port() const { return port_; }
    std::string question() {
        thread_.join();
        return question_;
    }

  private:
    int socket_;
    std::uint16_t port_ = 0;
    std::string question_;
    std::thread thread_;
};

TEST(Browser, TellsThePortOfAnInstance) {
    const std::string header("\x05\x60\x00", 3);
    const struct {
        const char* answer;
        int port;  // 0 for none
    } cases[] = {
        {"ServerName;SHOPP;InstanceName;SQLEXPRESS;IsClustered;No;Version;15.0.2000.5;tcp;49172;np;x;;",
         49172},
        {"ServerName;SHOPP;InstanceName;SQLEXPRESS;IsClustered;No;Version;15.0.2000.5;;", 0},
        {"ServerName;tcp;InstanceName;99;IsClustered;No;tcp;x;;", 0},
        {"", 0},
    };
    for (const auto& [answer, port] : cases) {
        SCOPED_TRACE(answer);
        Browser browser(header + answer);
        EXPECT_EQ(ask_instance_port("127.0.0.1", "SQLEXPRESS", 200ms, browser.port()).value_or(0), port);
        EXPECT_EQ(browser.question(), std::string("\x04SQLEXPRESS\0", 12));
    }
}

// A name service that answers late, and still after the caller has gone on.
TEST(Names, TheirSilenceEndsInTime) {
    static std::atomic<bool> answered = false;
    const auto late = [](const char*, const char*, const addrinfo*, addrinfo** found) {
        std::this_thread::sleep_for(600ms);
        answered = true;
        return getaddrinfo("127.0.0.1", "1433", nullptr, found);
    };
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(database::addresses_of("SHOPP", 1433, SOCK_STREAM, 100ms, late), nullptr);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 400ms);
    EXPECT_NE(database::addresses_of("SHOPP", 1433, SOCK_STREAM, 5s, late), nullptr);
    EXPECT_TRUE(answered);
    EXPECT_NE(database::addresses_of("127.0.0.1", 1433, SOCK_STREAM, 5s), nullptr);
    EXPECT_EQ(database::addresses_of("", 1433, SOCK_STREAM, 5s), nullptr);
}

TEST(Browser, ItsSilenceEndsInTime) {
    const test::SilentServer nobody;  // on TCP; the UDP port of its number is closed
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(ask_instance_port("127.0.0.1", "SQLEXPRESS", 300ms, nobody.port()));
    EXPECT_FALSE(ask_instance_port("no-such-host.invalid", "SQLEXPRESS", 300ms, 1434));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
}

}  // namespace
