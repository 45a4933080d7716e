#include "common/ports.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include "common/file_devices.h"
#include "common/files.h"
#include "support/child.h"
#include "support/shop.h"

namespace {

namespace fs = std::filesystem;
using common::FileDevices;
using common::PortFault;
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

TEST(Ports, ReceiptsAreAppendedToAFile) {
    const test::TemporaryFolder folder;
    FileDevices devices(folder.path());
    const fs::path file = folder.path() / "receipt.bin";
    const std::string receipt("\x1B@\0\r\n", 5);
    EXPECT_EQ(devices.write_port(file.string(), receipt), PortFault::none);
    EXPECT_EQ(devices.write_port("./receipt.bin", "\x07"), PortFault::none);
    EXPECT_EQ(read_file(file), receipt + "\x07");
    EXPECT_EQ(fs::status(file).permissions() & fs::perms::others_all, fs::perms::none);
    EXPECT_TRUE(devices.write_file("xx.txt", "a long text"));
    EXPECT_TRUE(devices.write_file("xx.txt", "12.50"));
    EXPECT_EQ(read_file(folder.path() / "xx.txt"), "12.50");
}

// Size and last change of everything below a folder; nothing is opened.
std::map<std::string, std::pair<std::uintmax_t, fs::file_time_type>> contents(const fs::path& folder) {
    std::map<std::string, std::pair<std::uintmax_t, fs::file_time_type>> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            found[entry.path().string()] = {entry.file_size(), entry.last_write_time()};
    }
    return found;
}

// Whether this process holds a lock on a file; only another process can see that.
bool is_locked(const fs::path& file) {
    return test::in_child([&file] {
        const int opened = open(file.c_str(), O_RDWR);
        struct flock wanted {};
        wanted.l_type = F_WRLCK;
        return opened >= 0 && fcntl(opened, F_GETLK, &wanted) == 0 && wanted.l_type != F_UNLCK;
    });
}

TEST(Ports, NeverWriteToAFileThatIsNoReceipt) {
    test::Shop shop;
    const fs::path here = shop.file().parent_path();
    if (here.empty()) GTEST_SKIP() << test::needs_shop_files;
    ASSERT_EQ(shop.file().filename(), "shop.db");
    ASSERT_EQ(shop.cell("select count(*) from basic"), "1");
    std::ofstream(here / "backup.db") << "SQLite format 3";
    const auto write = [&here](const char* name, std::string_view text) {
        std::ofstream(here / name) << text;
    };
    write("datacon24.stk", "\x07QRSltilkklk");  // scrambled with the key 7
    write("letter.txt", "not ours");
    write("empty", "");
    write("empty.db-wal", "");
    write("empty.prn", "");
    write("old receipts", "\x1B@\r\n\x1BT0864\r\n");
    write("old drawer.dat", "\x07\x07");
    write("lpt4", "\x1B@\r\n");
    write("drawer and receipts", "\x07\x07\x1B@\r\n");
    fs::create_directories(here / "folder.txt");
    fs::create_symlink("shop.db", here / "link.txt");
    fs::create_symlink("nothing.txt", here / "leads nowhere.txt");
    fs::create_symlink("old receipts", here / "link to receipts");
    fs::create_symlink("/dev/null", here / "printer");
    fs::create_hard_link(here / "shop.db", here / "hard.txt");
    ASSERT_EQ(mkfifo((here / "pipe").c_str(), 0600), 0);
    const int reader = open((here / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
    if (mknod((here / "disk").c_str(), S_IFBLK | 0600, makedev(8, 0)) != 0)
        fs::create_directories(here / "disk");  // only root makes devices
    const fs::path elsewhere = here / "folder.txt" / "new";
    const struct {
        std::string port;
        PortFault fault;
    } cases[] = {
        {"shop.db", PortFault::not_a_port},
        {"./shop.db", PortFault::not_a_port},
        {(here / "folder.txt/../shop.db").string(), PortFault::not_a_port},
        {"shop.db-wal", PortFault::not_a_port},
        {"shop.db-shm", PortFault::not_a_port},
        {"backup.db-journal", PortFault::not_a_port},
        {"link.txt", PortFault::not_a_port},
        {"hard.txt", PortFault::not_a_port},
        {"backup.db", PortFault::not_a_port},
        {"datacon24.stk", PortFault::not_a_port},
        {"letter.txt", PortFault::not_a_port},
        {"empty", PortFault::not_a_port},
        {"empty.db-wal", PortFault::not_a_port},
        {"folder.txt", PortFault::not_a_port},
        {".", PortFault::not_a_port},
        {"disk", PortFault::not_a_port},
        {"/dev/mem", fs::exists("/dev/mem") ? PortFault::not_a_port : PortFault::missing},
        {"/proc/version", PortFault::missing},
        {"SHOP.DB", PortFault::not_a_port},
        {"com10", PortFault::unknown_name},
        {"LPT4:", PortFault::unknown_name},
        {"prn", PortFault::unknown_name},
        {"C:\\receipts.txt", PortFault::unknown_name},
        {"C:receipts.txt", PortFault::unknown_name},
        {"old\\receipts.txt", PortFault::unknown_name},
        {"\\\\till\\roll.txt", PortFault::shared_printer},
        {"lpt4", PortFault::unknown_name},
        {"leads nowhere.txt", PortFault::missing},
        {"old receipts", PortFault::none},
        {"link to receipts", PortFault::none},
        {"old drawer.dat", PortFault::none},
        {"drawer and receipts", PortFault::none},
        {"empty.prn", PortFault::none},
        {"New.TXT", PortFault::none},
        {elsewhere.string(), PortFault::none},
        {"pipe", PortFault::none},
        {"printer", PortFault::none},
        {"/dev/null", PortFault::none},
    };
    FileDevices devices(here);
    for (const auto& c : cases) {
        const auto before = contents(here);
        EXPECT_EQ(common::port_fault(c.port, here), c.fault) << c.port;
        EXPECT_EQ(contents(here), before) << c.port << ": judged without writing";
        EXPECT_EQ(devices.write_port(c.port, "\x1B@ receipt"), c.fault) << c.port;
        if (c.fault != PortFault::none) {
            EXPECT_EQ(contents(here), before) << c.port;
        }
    }
    close(reader);
    EXPECT_TRUE(is_locked(here / "shop.db")) << "the database keeps its locks";
    EXPECT_FALSE(is_locked(here / "backup.db"));
    EXPECT_EQ(shop.cell("select count(*) from basic"), "1");
}

TEST(Ports, AreTheSameThroughEveryName) {
    const test::TemporaryFolder folder;
    setenv("TALLVEX_COM3", "/dev/null", 1);
    fs::create_symlink("/dev/null", folder.path() / "drawer");
    for (const char* one : {"com3", "COM3:", "/dev/null", "/dev/../dev/null", "drawer", "./drawer"})
        EXPECT_TRUE(common::is_same_port(one, "com3", folder.path())) << one;
    EXPECT_FALSE(common::is_same_port("com1", "com3", folder.path()));
    unsetenv("TALLVEX_COM3");
}

// A full disk is named in a message, and what was in the file stays.
TEST(Ports, AFullDiskIsNamed) {
    const test::TemporaryFolder folder;
    FileDevices devices(folder.path());
    ASSERT_EQ(devices.write_port("receipts.txt", "\x1B@ first"), PortFault::none);
    EXPECT_TRUE(test::in_child([&] {
        test::fill_disk(64);
        return devices.write_port("receipts.txt", std::string(100, 'x')) == PortFault::disk_full;
    }));
    EXPECT_TRUE(read_file(folder.path() / "receipts.txt").starts_with("\x1B@ first"));
    EXPECT_EQ(devices.write_port("/dev/full", "x"), PortFault::disk_full);
}

TEST(Ports, MissingDevicesAreRefusedAndNeverCreated) {
    const test::TemporaryFolder folder;
    FileDevices devices(folder.path());
    for (const std::string_view port :
         {"/dev/no-such-printer", "/dev/../dev/no-such-printer.txt", "", " ", "no/such/folder/x"}) {
        EXPECT_EQ(devices.write_port(port, "x"), PortFault::missing) << port;
    }
    EXPECT_FALSE(fs::exists("/dev/no-such-printer"));
    EXPECT_EQ(devices.write_port(std::string_view("a\0b", 3), "x"), PortFault::missing);
}

TEST(Ports, APipeWithoutAReaderIsRefusedAtOnce) {
    const test::TemporaryFolder folder;
    const std::string pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    FileDevices devices(folder.path());
    EXPECT_LT(seconds([&] { EXPECT_EQ(devices.write_port(pipe, "x"), PortFault::missing); }), 1.0);
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

std::string titles(const std::vector<common::PortDocument>& documents) {
    std::string all;
    for (const auto& document : documents)
        all += document.title + (document.fault == PortFault::silent ? " silent " : " ");
    return all;
}

void wait_until_out(const FileDevices& devices) {
    while (!devices.port_report().under_way.empty())
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

// A printer at 9,600 baud takes longer than 3 s for a receipt and is waited for. One that takes nothing is
// given up; it delays no other and prints nothing later.
TEST(Ports, ASlowPortIsWrittenToInTheBackground) {
    const test::TemporaryFolder folder;
    int readers[2];
    for (const char* name : {"slow", "stuck"}) {
        const fs::path pipe = folder.path() / name;
        ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
        readers[*name == 's' && name[1] == 't'] = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    }
    fs::create_symlink("stuck", folder.path() / "xx.txt");
    const Terminal terminal;
    const std::string receipt(4000, 'r');
    std::string printed;
    std::atomic<bool> is_over = false;
    std::thread printer([&] {
        for (char bytes[48]; !is_over; std::this_thread::sleep_for(std::chrono::milliseconds(50))) {
            if (const ssize_t count = read(readers[0], bytes, sizeof bytes); count > 0)
                printed.append(bytes, static_cast<std::size_t>(count));
        }
    });
    FileDevices devices(folder.path());
    EXPECT_LT(seconds([&] {
                  for (const char* pipe : {"slow", "stuck"}) {
                      EXPECT_EQ(devices.write_port(pipe, receipt, std::string(pipe) + "1"), PortFault::none);
                      EXPECT_EQ(devices.write_port(pipe, "\x07"), PortFault::none);
                      EXPECT_EQ(devices.write_port(pipe, "second", std::string(pipe) + "2"), PortFault::none);
                  }
                  EXPECT_EQ(devices.write_port(terminal.name, std::string(200'000, 'x'), "terminal"),
                            PortFault::none);
                  EXPECT_TRUE(devices.write_file("xx.txt", "12.50"));
              }),
              0.5);
    EXPECT_EQ(devices.port_report().under_way.size(), 5u);
    const double waited = seconds([&] { wait_until_out(devices); });
    is_over = true;
    printer.join();
    EXPECT_GT(waited, 3.5);
    EXPECT_LT(waited, 6.0);
    EXPECT_EQ(printed, receipt + "\x07second");
    const std::string failed = titles(devices.port_report().failed);
    EXPECT_NE(failed.find("stuck1 silent stuck2 silent "), failed.npos) << failed;
    EXPECT_NE(failed.find("terminal silent "), failed.npos) << failed;
    char left = 0;
    EXPECT_LE(read(readers[1], &left, 1), 0) << "nothing is printed later";

    devices.send_again();
    std::string again;
    while (again.size() < receipt.size() + 6) {
        char bytes[512];
        if (const ssize_t count = read(readers[1], bytes, sizeof bytes); count > 0)
            again.append(bytes, static_cast<std::size_t>(count));
    }
    EXPECT_EQ(again, receipt + "second") << "and the drawer stays closed";
    devices.forget_failed();
    EXPECT_NE(titles(devices.port_report().under_way).find("terminal"), std::string::npos);
    devices.forget_unsent();
    EXPECT_TRUE(devices.port_report().failed.empty() && devices.port_report().under_way.empty());
    for (const int reader : readers)
        close(reader);
}

TEST(Ports, ATerminalTakesItsBytes) {
    const Terminal terminal;
    FileDevices devices("/");
    EXPECT_EQ(devices.write_port(terminal.name, "\x07"), PortFault::none);
    char got = 0;
    EXPECT_EQ(read(terminal.master, &got, 1), 1);
    EXPECT_EQ(got, '\x07');
}

}  // namespace
