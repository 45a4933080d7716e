#include "startup/shop_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

#include "common/files.h"
#include "startup/messages.h"
#include "support/child.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

namespace fs = std::filesystem;
namespace message = startup::message;
using common::read_file;
using startup::StartUpError;

void write(const fs::path& file, std::string_view bytes) {
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

// The reason for the cashier; "" if there was no error.
template <typename Work>
std::string reason(Work work) {
    try {
        work();
    } catch (const StartUpError& error) {
        EXPECT_STRNE(error.what(), "");
        return error.reason();
    }
    return {};
}

class ShopFilesTest : public testing::Test {
  protected:
    test::TemporaryFolder folder_;
    const fs::path& folder = folder_.path();
};

TEST_F(ShopFilesTest, FindsNamesInAnyCase) {
    EXPECT_EQ(startup::find_file(folder, "Data.dat"), std::nullopt);
    write(folder / "DATA.DAT", "1");
    EXPECT_EQ(startup::find_file(folder, "Data.dat"), folder / "DATA.DAT");
    write(folder / "data.dat", "2");
    EXPECT_EQ(startup::find_file(folder, "Data.dat"), folder / "DATA.DAT");  // the first by the alphabet
    write(folder / "Data.dat", "3");
    EXPECT_EQ(startup::find_file(folder, "Data.dat"), folder / "Data.dat");  // the exact name is preferred
    EXPECT_EQ(startup::find_file(folder / "none", "x"), std::nullopt);
}

TEST_F(ShopFilesTest, ConnectionFileKeepsItsFieldsAndItsName) {
    write(folder / "DATACON24.STK", "old");
    const startup::ConnectionRecord record{"متجر\\SQL", "بيانات", "10.1.2.3"};
    EXPECT_EQ(startup::write_connection_file(folder, record), folder / "DATACON24.STK");
    EXPECT_EQ(startup::read_connection_file(folder), record);
    startup::write_server_address(folder, "10.9.9.9");
    EXPECT_EQ(startup::read_connection_file(folder),
              (startup::ConnectionRecord{"متجر\\SQL", "بيانات", "10.9.9.9"}));
    EXPECT_EQ(read_file(folder / "DATACON24.STK").size(), 200U);
    // A text that does not fit is refused and the file does not change.
    EXPECT_NE(reason([&] { startup::write_connection_file(folder, {std::string(60, 'x'), "b", "c"}); }), "");
    EXPECT_EQ(startup::read_connection_file(folder).address, "10.9.9.9");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

TEST_F(ShopFilesTest, BadFilesEachGetTheirReason) {
    using enum fs::perms;
    const auto connection = [&] { startup::read_connection_file(folder); };
    const auto version = [&] { startup::read_version_file(folder); };
    const std::string stk = "datacon24.stk";
    const std::string ver = "merlo-ver.txt";
    EXPECT_EQ(reason(connection), std::string(message::file_missing) + stk);
    EXPECT_EQ(reason(version), std::string(message::file_missing) + ver);
    for (const std::size_t length : {0U, 1U, 199U}) {
        write(folder / stk, std::string(length, 'x'));
        EXPECT_EQ(reason(connection), std::string(message::connection_file_short) + stk) << length;
    }
    write(folder / stk, std::string(200, ' '));
    EXPECT_EQ(reason(connection), std::string(message::connection_file_damaged) + stk);
    for (const std::string& bytes : {std::string(), std::string(50, ' '), std::string("\n1.0.0"),
                                     std::string(51, '1'), std::string(100, '1')}) {
        write(folder / ver, bytes);
        EXPECT_EQ(reason(version), std::string(message::version_file_length) + ver) << bytes;
    }
    write(folder / stk, std::string(2'000'000, 'x'));
    EXPECT_EQ(reason(connection), std::string(message::file_unreadable) + stk);
    fs::remove(folder / stk);
    fs::create_directory(folder / stk);
    EXPECT_EQ(reason(connection), std::string(message::file_unreadable) + stk);
    EXPECT_EQ(reason([&] {
                  startup::write_connection_file(folder, {"a", "b", "c"});
              }),
              std::string(message::file_unwritable) + stk);
    fs::remove(folder / stk);
    ASSERT_EQ(mkfifo((folder / stk).c_str(), 0600), 0);
    EXPECT_EQ(reason(connection), std::string(message::file_unreadable) + stk);
    fs::permissions(folder, all);
    fs::permissions(folder / ver, none);
    EXPECT_TRUE(test::in_child([&] {
        return test::become_nobody() && reason(version) == std::string(message::file_unreadable) + ver;
    }));
}

TEST_F(ShopFilesTest, VersionIsARecordOfFiftyCharacters) {
    startup::write_version_file(folder, "2026/11/21 إصدار");
    EXPECT_EQ(read_file(folder / "merlo-ver.txt").size(), 50U);
    EXPECT_EQ(startup::read_version_file(folder), "2026/11/21 إصدار");
    // Written with an editor, on this system or another.
    const std::string record = "2026/11/21" + std::string(40, ' ');
    for (const std::string& bytes : {"1.1.0\n" + std::string(), "  1.1.0  \r\n" + std::string(),
                                     "\xEF\xBB\xBF"
                                     "1.1.0" +
                                         std::string()}) {
        write(folder / "merlo-ver.txt", bytes);
        EXPECT_EQ(startup::read_version_file(folder), "1.1.0") << bytes;
    }
    write(folder / "merlo-ver.txt", record + "\r\n");
    EXPECT_EQ(startup::read_version_file(folder), "2026/11/21");
    startup::write_version_file(folder, std::string(50, '7'));
    EXPECT_EQ(startup::read_version_file(folder), std::string(50, '7'));
    EXPECT_NE(reason([&] { startup::write_version_file(folder, std::string(51, '8')); }), "");
    EXPECT_EQ(startup::read_version_file(folder), std::string(50, '7'));
}

TEST_F(ShopFilesTest, ReadsCreditLinesOfAnySystem) {
    const struct {
        std::string bytes;
        startup::CreditLines lines;
    } cases[] = {
        {"", {"", "", ""}},
        {"one\ntwo\n", {"one", "two", ""}},
        {"one\r\ntwo", {"one", "two", ""}},
        {"1\n2\n3\n4\n5\n", {"1", "2", "3"}},
        {"\n\nthird", {"", "", "third"}},
        {"شركة\nتوريد\n", {"شركة", "توريد", ""}},
        {"\xEF\xBB\xBFشركة\n", {"شركة", "", ""}},
        {"\xC8\xC9\r\n\xC7\xC8", {"بة", "اب", ""}},  // written on the other system, in its code page
    };
    EXPECT_EQ(startup::read_credit_file(folder), startup::CreditLines());
    for (const auto& c : cases) {
        write(folder / "data.DAT", c.bytes);
        EXPECT_EQ(startup::read_credit_file(folder), c.lines);
    }
    startup::write_credit_file(folder, {"س", "", "ص"});
    EXPECT_EQ(startup::read_credit_file(folder), (startup::CreditLines{"س", "", "ص"}));
}

TEST_F(ShopFilesTest, OnlyItsOwnerMayUseThePasswordFile) {
    unsetenv("TALLVEX_SA_PASSWORD");
    const auto read = [&] { startup::read_sa_password(folder); };
    EXPECT_EQ(reason(read), message::no_password);
    startup::write_sa_password(folder, "p;w=d ");
    EXPECT_EQ(startup::read_sa_password(folder), "p;w=d ");
    const fs::path file = folder / "sa.pwd";
    for (const mode_t mode : {0640U, 0604U, 0620U, 0602U, 0601U, 0777U}) {
        ASSERT_EQ(chmod(file.c_str(), mode), 0);
        EXPECT_EQ(reason(read), message::password_file_open) << std::oct << mode;
    }
    ASSERT_EQ(chmod(file.c_str(), 0644), 0);
    setenv("TALLVEX_SA_PASSWORD", "from the environment", 1);
    EXPECT_EQ(startup::read_sa_password(folder), "from the environment");
    unsetenv("TALLVEX_SA_PASSWORD");
}

TEST_F(ShopFilesTest, AppendsLogLines) {
    test::FixedClock clock;
    startup::ActivityLog log(folder, clock);
    log.log_event("lost", "1");  // no folder yet: nothing happens
    fs::create_directory(folder / "logs");
    EXPECT_EQ(startup::ensure_logs_folder(folder), folder / "logs");
    log.log_event("بدء التشغيل", "222");
    clock.moment = {{2026, 1, 2}, {3, 4, 59, 0}};
    log.log_event("two\r\nlines", "x\ny");
    EXPECT_EQ(read_file(folder / "logs" / "hm_log.qzv"),
              "بدء التشغيل  ----  222  ----  2026/11/21 10:42\n"
              "two  lines  ----  x y  ----  2026/01/02 03:04\n");
    EXPECT_FALSE(fs::exists(folder / "Logs"));

    // A log that was taken away begins anew.
    fs::remove(folder / "logs" / "hm_log.qzv");
    log.log_event("again", "1");
    EXPECT_EQ(read_file(folder / "logs" / "hm_log.qzv"), "again  ----  1  ----  2026/01/02 03:04\n");
    fs::rename(folder / "logs", folder / "LOGS");
    log.log_event("more", "1");
    EXPECT_TRUE(
        read_file(folder / "LOGS" / "hm_log.qzv").ends_with("more  ----  1  ----  2026/01/02 03:04\n"));
}

TEST_F(ShopFilesTest, ALogThatCannotBeWrittenStopsNothing) {
    test::FixedClock clock;
    startup::ActivityLog log(folder, clock);
    fs::create_directories(folder / "Logs" / "hm_log.qzv");
    EXPECT_NO_THROW(log.log_event("x", "1"));
    fs::remove(folder / "Logs" / "hm_log.qzv");
    ASSERT_EQ(mkfifo((folder / "Logs" / "hm_log.qzv").c_str(), 0600), 0);
    EXPECT_NO_THROW(log.log_event("x", "1"));
    fs::remove_all(folder / "Logs");
    write(folder / "Logs", "a file in its place");
    EXPECT_NO_THROW(log.log_event("x", "1"));
    EXPECT_NE(reason([&] { startup::ensure_logs_folder(folder); }), "");
    EXPECT_TRUE(reason([&] { startup::ensure_logs_folder(folder / "nowhere"); }).ends_with("nowhere"));
}

TEST_F(ShopFilesTest, TheFatalRecordIsOverwritten) {
    startup::write_fatal_error(folder, std::string(300, 'a'));
    EXPECT_EQ(read_file(folder / "prg_.err"), std::string(100, 'a') + std::string(300, ' '));
    startup::write_fatal_error(folder, "خطأ");
    const std::string record = read_file(folder / "prg_.err");
    ASSERT_EQ(record.size(), 400U);
    EXPECT_EQ(record.substr(0, 4), "\xCE\xD8\xC3 ");
    EXPECT_EQ(record.find_first_not_of(' ', 3), std::string::npos);
}

// A killed writer leaves one complete record or the other.
TEST_F(ShopFilesTest, AKilledWriterLeavesACompleteFile) {
    startup::write_connection_file(folder, {"SHOP", "db", "10.0.0.1"});
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (int i = 0;; ++i)
                startup::write_server_address(folder, "10.0.0." + std::to_string(i % 200));
        }
        usleep(static_cast<useconds_t>(500 + 700 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const auto record = startup::read_connection_file(folder);
        ASSERT_EQ(record.server, "SHOP");
        ASSERT_TRUE(record.address.starts_with("10.0.0.")) << record.address;
    }
}

}  // namespace
