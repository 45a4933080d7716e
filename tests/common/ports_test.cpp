#include "common/ports.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "common/files.h"
#include "support/shop.h"

namespace {

namespace fs = std::filesystem;
using common::FileDevices;
using common::read_file;

// The seconds that a write takes.
template <typename Work>
double seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(Ports, DosNamesAreDeviceNodes) {
    const struct {
        const char* port;
        const char* path;
    } cases[] = {
        {"com1", "/dev/ttyS0"},      {"COM3", "/dev/ttyS2"},   {"com9:", "/dev/ttyS8"},
        {" LPT1: ", "/dev/usb/lp0"}, {"lpt3", "/dev/usb/lp2"}, {"com10", "com10"},
        {"/dev/lp0", "/dev/lp0"},    {"com", "com"},           {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(common::port_path(c.port), c.path) << c.port;
    for (const auto& name : common::known_ports())
        EXPECT_TRUE(common::port_path(name).starts_with("/dev/"));
}

TEST(Ports, TheEnvironmentCanNameOtherDevices) {
    setenv("TALLVEX_LPT1", "/dev/till/printer", 1);
    setenv("TALLVEX_COM3", "", 1);
    EXPECT_EQ(common::port_path("Lpt1:"), "/dev/till/printer");
    EXPECT_EQ(common::port_path("lpt2"), "/dev/usb/lp1");
    EXPECT_EQ(common::port_path("com3"), "/dev/ttyS2") << "nothing given";
    unsetenv("TALLVEX_LPT1");
    unsetenv("TALLVEX_COM3");
}

TEST(Ports, FilesAreCreatedAndReplaced) {
    const test::TemporaryFolder folder;
    FileDevices devices(folder.path());
    const fs::path file = folder.path() / "receipt.bin";
    EXPECT_TRUE(devices.write_port(file.string(), "first and long"));
    EXPECT_TRUE(devices.write_port(file.string(), std::string_view("\x1B\0\x07", 3)));
    EXPECT_EQ(read_file(file), std::string("\x1B\0\x07", 3));
    EXPECT_TRUE(devices.write_file("xx.txt", "12.50"));
    EXPECT_EQ(read_file(folder.path() / "xx.txt"), "12.50");
}

TEST(Ports, MissingDevicesAreRefusedAndNeverCreated) {
    const test::TemporaryFolder folder;
    FileDevices devices(folder.path());
    for (const char* port : {"/dev/no-such-printer", "/dev/../dev/no-such-printer", "", " ",
                             "no/such/folder/x", "/proc/version"}) {
        EXPECT_FALSE(devices.write_port(port, "x")) << port;
    }
    EXPECT_FALSE(fs::exists("/dev/no-such-printer"));
    EXPECT_FALSE(devices.write_port(folder.path().string(), "x"));
    EXPECT_FALSE(devices.write_port("/dev/full", "x"));
    EXPECT_FALSE(devices.write_port(std::string_view("a\0b", 3), "x"));
}

TEST(Ports, APipeWithoutAReaderIsRefusedAtOnce) {
    const test::TemporaryFolder folder;
    const std::string pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    FileDevices devices(folder.path());
    EXPECT_LT(seconds([&] { EXPECT_FALSE(devices.write_port(pipe, "x")); }), 1.0);
}

TEST(Ports, APipeWhoseReaderStopsFailsInTime) {
    const test::TemporaryFolder folder;
    const std::string pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    FileDevices devices(folder.path());
    EXPECT_TRUE(devices.write_port(pipe, "drawer"));
    const double waited =
        seconds([&] { EXPECT_FALSE(devices.write_port(pipe, std::string(1'000'000, 'x'))); });
    EXPECT_GT(waited, 2.5);
    EXPECT_LT(waited, 4.0);
    close(reader);
}

// A pseudo terminal in place of a serial port.
struct Terminal {
    int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    std::string name;
    int keep = -1;
    Terminal() {
        grantpt(master);
        unlockpt(master);
        name = ptsname(master);
        keep = open(name.c_str(), O_RDWR | O_NOCTTY);
        termios raw{};
        tcgetattr(keep, &raw);
        cfmakeraw(&raw);
        tcsetattr(keep, TCSANOW, &raw);
    }
    ~Terminal() {
        close(keep);
        close(master);
    }
};

TEST(Ports, ATerminalTakesItsBytesOrFailsInTime) {
    Terminal terminal;
    FileDevices devices("/");
    EXPECT_TRUE(devices.write_port(terminal.name, "\x07"));
    char got = 0;
    EXPECT_EQ(read(terminal.master, &got, 1), 1);
    EXPECT_EQ(got, '\x07');
    // Nobody reads: the line fills up and the sale goes on.
    EXPECT_LT(seconds([&] { EXPECT_FALSE(devices.write_port(terminal.name, std::string(200'000, 'x'))); }),
              4.0);
}

}  // namespace
