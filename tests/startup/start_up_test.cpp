#include "startup/start_up.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "common/files.h"
#include "database/embedded/open.h"
#include "database/error.h"
#include "database/schema/schema.h"
#include "startup/messages.h"
#include "startup/reasons.h"
#include "startup/shop_files.h"
#include "startup/workstation.h"
#include "support/child.h"
#include "support/faulty_connection.h"
#include "support/services.h"
#include "support/shop.h"

namespace {

namespace fs = std::filesystem;
namespace message = startup::message;
using common::read_file;
using startup::Environment;
using startup::StartUp;

// Opens nothing: the server answers with this error.
startup::OpenConnection refusing(const database::Error& error) {
    return [error](const std::string&, const fs::path&) -> std::unique_ptr<database::Connection> {
        throw database::Error(error);
    };
}
const database::Error unreachable("08001", "SQL Server does not exist or access denied.", "");

// A workstation with its files, and a shop in a file.
class StartUpTest : public testing::Test {
  protected:
    void SetUp() override {
        if (test::test_server()) GTEST_SKIP() << test::needs_shop_files;
        setenv("TALLVEX_SA_PASSWORD", "secret", 1);
        program = folder.path() / "program";
        working = folder.path() / "working";
        fs::create_directory(program);
        fs::create_directory(working);
        fs::copy_file(shop.file(), working / "shop.db");
        startup::write_version_file(program, "2026/11/21");
        startup::write_connection_file(working, {"embedded", "shop.db", "Not Found"});
    }
    ~StartUpTest() override { unsetenv("TALLVEX_SA_PASSWORD"); }

    Environment environment() const { return {"3", program, working, "TILL3", {}, {}, {}, {}}; }

    // A connection file that names a server. Opening it opens the shop in the file.
    Environment server_environment(const startup::ConnectionRecord& record, std::string computer) {
        startup::write_connection_file(working, record);
        Environment made = environment();
        made.computer_name = std::move(computer);
        made.open = [this](const std::string& text, const fs::path&) {
            connection_string = text;
            return database::open_embedded(working / "shop.db");
        };
        return made;
    }

    bool run(const Environment& on) {
        StartUp start(on, services.all());
        return start.run([this](database::Connection& connection, signin::Session& session) {
            reached = session;
            users = static_cast<int>(connection.query("select * from [users]").size());
        });
    }

    std::string stamped() {
        return database::text_of(
            database::open_embedded(working / "shop.db")->scalar("select cr_v from basic"));
    }
    bool logged(std::string_view text) const {
        return std::any_of(services.log.lines.begin(), services.log.lines.end(),
                           [text](const std::string& line) { return line.find(text) != line.npos; });
    }
    void expect_failure(const std::string& reason) {
        EXPECT_EQ(users, 0) << "sign-in was reached";
        ASSERT_EQ(services.prompts.messages.size(), 2U) << reason;
        EXPECT_EQ(services.prompts.messages[0], "مسار قاعدة البيانات غير صحيح ");
        EXPECT_EQ(services.prompts.messages[1], reason);
        EXPECT_EQ(read_file(program / "prg_.err").size(), 400U);
        services.prompts.messages.clear();
        services.log.lines.clear();
    }

    test::Shop shop;
    test::TemporaryFolder folder;
    fs::path program;
    fs::path working;
    test::RememberedServices services;
    std::string connection_string;
    signin::Session reached;
    int users = 0;
};

TEST_F(StartUpTest, ReachesSignInWithAFilledSession) {
    startup::write_credit_file(working, {"سطر", "ثان", ""});
    EXPECT_TRUE(run(environment()));
    EXPECT_EQ(users, 1);
    EXPECT_EQ(reached.cash_point, 3);
    EXPECT_EQ(reached.computer_name, "TILL3");
    EXPECT_EQ(reached.version, "2026/11/21");
    EXPECT_EQ(reached.credit_lines, (startup::CreditLines{"سطر", "ثان", ""}));
    EXPECT_EQ(reached.program_folder, program);
    EXPECT_EQ(reached.working_folder, working);
    EXPECT_TRUE(fs::is_directory(program / "Logs"));
    EXPECT_TRUE(services.prompts.messages.empty());
    EXPECT_TRUE(std::all_of(services.log.lines.begin(), services.log.lines.end(),
                            [](const std::string& line) { return line.ends_with("----  222"); }));
    // A shop in a file is stamped by its till and needs no password. A second start works the same.
    EXPECT_EQ(stamped(), "2026/11/21");
    unsetenv("TALLVEX_SA_PASSWORD");
    EXPECT_TRUE(run(environment()));
}

TEST_F(StartUpTest, TheCommandLinesFirstCharacterIsTheCashPoint) {
    const struct {
        const char* line;
        int number;
    } cases[] = {{"3", 3}, {"", 0}, {"07", 0}, {"42", 4}, {"x9", 0}, {" 5", 0}, {"-1", 0}, {"٣", 0}};
    for (const auto& c : cases)
        EXPECT_EQ(startup::cash_point_of(c.line), c.number) << c.line;
    EXPECT_EQ(Environment::here("3").command_line, "3");
}

TEST_F(StartUpTest, TheConnectionStringIsSpelledOut) {
    ASSERT_TRUE(run(server_environment({"PC1\\SQLEXPRESS", "متجر", "192.168.1.5"}, "PC1\\sqlexpress")));
    EXPECT_EQ(connection_string,
              "Provider=SQLOLEDB.1;Password=secret;Persist Security Info=True;User ID=sa;"
              "Initial Catalog= متجر;Data Source=192.168.1.5\\SQLEXPRESS");
}

TEST_F(StartUpTest, AServersShopThatIsNotWholeIsTold) {
    const auto on = server_environment({"PC1", "shop", "Not Found"}, "PC1");
    const auto shop_on_server = database::open_embedded(working / "shop.db");
    shop_on_server->execute("alter table basic drop column tel");
    shop_on_server->execute("drop table transdata");
    EXPECT_TRUE(run(on));
    EXPECT_EQ(services.prompts.last(),
              std::string(message::schema_incomplete) + "\n\u200Ebasic.tel\n\u200Etransdata");
    EXPECT_TRUE(logged("missing in the database: basic.tel transdata"));
    // Without its stock nothing can be sold.
    users = 0;
    shop_on_server->execute("drop table stk");
    EXPECT_FALSE(run(on));
    EXPECT_EQ(users, 0);
    EXPECT_EQ(services.prompts.last(),
              std::string(message::schema_unusable) + "\n\u200Estk\n\u200Ebasic.tel\n\u200Etransdata");
}

TEST_F(StartUpTest, TheServersTillStampsAndTheOthersMustMatch) {
    const startup::ConnectionRecord record{"SHOPSRVc", "db", "Not Found"};
    // Another till is refused before the server stamps; then the date is empty.
    EXPECT_FALSE(run(server_environment(record, "TILL3")));
    EXPECT_EQ(services.prompts.messages,
              std::vector<std::string>{
                  "لا يمكن تشغيل البرنامج لوجود اختلاف في اصدار البرنامج    الاصدار الحالي بتاريخ "});
    EXPECT_EQ(users, 0);
    services.prompts.messages.clear();
    // The server, whatever the case of its name.
    EXPECT_TRUE(run(server_environment(record, "shopsrv")));
    EXPECT_EQ(stamped(), "2026/11/21");
    // A till of the same version, then one of another.
    EXPECT_TRUE(run(server_environment(record, "TILL3")));
    startup::write_version_file(program, "2026/12/01");
    EXPECT_FALSE(run(server_environment(record, "TILL3")));
    EXPECT_EQ(services.prompts.last(), std::string(message::version_differs) + "2026/11/21");
    EXPECT_TRUE(logged("differs"));
    EXPECT_EQ(stamped(), "2026/11/21");
    // A server named with its instance knows itself, and takes the new version.
    EXPECT_TRUE(run(server_environment({"SHOPSRV\\SQLEXPRESS", "db", "10.0.0.5"}, "shopsrv")));
    EXPECT_EQ(stamped(), "2026/12/01");
}

TEST_F(StartUpTest, AnOlderProgramIsRefusedByWords) {
    const startup::ConnectionRecord embedded{"embedded", "shop.db", "Not Found"};
    const startup::ConnectionRecord server{"SHOPSRV", "db", "Not Found"};
    for (const auto& record : {embedded, server}) {
        database::open_embedded(working / "shop.db")->execute("update basic set cr_v = '2026/12/01'");
        EXPECT_FALSE(run(server_environment(record, "SHOPSRV")));
        ASSERT_EQ(services.prompts.messages.size(), 1U);
        EXPECT_EQ(services.prompts.last(), std::string(message::version_differs) + "2026/12/01\n" +
                                               std::string(message::program_older) + "2026/11/21");
        EXPECT_EQ(stamped(), "2026/12/01");
        services.prompts.messages.clear();
    }
    const struct {
        const char* version;
        const char* shop;
        bool older;
    } cases[] = {
        {"1.9.0", "1.10.0", true},      {"1.10.0", "1.9.0", false},     {"1.1", "1.1.0", false},
        {"1.1.0", "1.1", false},        {"1.1", "1.1.1", true},         {"2026/11/21", "2026/12/01", true},
        {"1.0.0", "2026/11/21", false}, {"2026/11/21", "1.0.0", false}, {"", "1.0.0", false},
        {"1.0.0", "", false},           {"v1.0 إصدار", "v1.2", true},   {"99999999999999999999", "1", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(startup::is_older(c.version, c.shop), c.older) << c.version << " than " << c.shop;
}

TEST_F(StartUpTest, AShopIsCopiedBeforeItIsUpdated) {
    const auto copies = [this] {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(working)) {
            const std::string name = entry.path().filename();
            if (name.starts_with("before-update-")) names.push_back(name);
        }
        std::sort(names.begin(), names.end());
        return names;
    };
    services.clock.may_set = false;
    const auto start_as = [&](const char* version, int minute) {
        startup::write_version_file(program, version);
        services.clock.moment.time.minute = minute;
        return run(environment());
    };
    // Nothing to do: a new shop, and each further start.
    EXPECT_TRUE(start_as("1.0.0", 0));
    EXPECT_TRUE(start_as("1.0.0", 1));
    EXPECT_TRUE(copies().empty());
    // A new version, which adds a column. The copy has the shop as it was.
    database::open_embedded(working / "shop.db")->execute("alter table items drop column list_per");
    EXPECT_TRUE(start_as("1.1.0", 2));
    EXPECT_EQ(copies(), std::vector<std::string>{"before-update-20261121-100200-1.0.0.backup"});
    {
        fs::copy_file(working / copies().front(), working / "copy.db");
        const auto copy = database::open_embedded(working / "copy.db");
        EXPECT_EQ(database::text_of(copy->scalar("select cr_v from basic")), "1.0.0");
        EXPECT_THROW(copy->query("select list_per from items"), database::Error);
    }
    // Going back to it: the old program works, and the new one updates it again.
    fs::rename(working / "copy.db", working / "shop.db");
    fs::remove(working / "shop.db-wal");
    EXPECT_TRUE(start_as("1.0.0", 3));
    EXPECT_TRUE(start_as("1.1.0", 4));
    // The same version with something to add, and the last three of five.
    database::open_embedded(working / "shop.db")->execute("drop table elec_inv");
    EXPECT_TRUE(start_as("1.1.0", 5));
    // The last of them is shown to the cashier while it runs.
    Environment showing = environment();
    int most = 0;
    showing.show_copying = [&](const Environment::Copying& copying) {
        copying([&](int done) { most = std::max(most, done); });
    };
    startup::write_version_file(program, "1.2.0");
    services.clock.moment.time.minute = 6;
    EXPECT_TRUE(run(showing));
    EXPECT_EQ(most, 100);
    EXPECT_EQ(copies(), (std::vector<std::string>{"before-update-20261121-100400-1.0.0.backup",
                                                  "before-update-20261121-100500-1.1.0.backup",
                                                  "before-update-20261121-100600-1.1.0.backup"}));
    // No room for the copy, so no update.
    startup::write_version_file(program, "1.3.0");
    users = 0;
    const auto size = fs::file_size(working / "shop.db");
    EXPECT_TRUE(test::in_child([&] {
        test::fill_disk(size / 2);
        if (run(environment())) return false;
        expect_failure(std::string(message::no_copy_before_update));
        return !HasFailure();
    }));
    EXPECT_EQ(stamped(), "1.2.0");
    EXPECT_EQ(copies().size(), 3U);
    EXPECT_TRUE(start_as("1.3.0", 7));
}

// A program that is killed in the middle of an update leaves the shop as it was.
TEST_F(StartUpTest, AKilledUpdateLeavesTheShopAsItWas) {
    EXPECT_TRUE(run(environment()));
    const auto open = [this] { return database::open_embedded(working / "shop.db"); };
    open()->execute("update basic set cr_v = '2026/01/01'");
    open()->execute("alter table items drop column list_per");
    open()->execute("insert into shift (scode, stcode, s_date) values (1, 1, '2026/11/21')");
    const std::string before = database::schema_text(*open());
    for (const std::int64_t statement : {6, 60, 120, 230, 305}) {
        EXPECT_FALSE(test::in_child([&] {
            Environment on = environment();
            std::unique_ptr<database::Connection> inner;
            on.open = [&](const std::string&, const fs::path&) {
                inner = open();
                auto made = std::make_unique<test::FaultyConnection>(*inner);
                made->call_before(statement, [] { _exit(1); });
                return made;
            };
            return run(on);
        })) << statement;
        EXPECT_EQ(database::schema_text(*open()), before) << statement;
        EXPECT_EQ(stamped(), "2026/01/01");
        EXPECT_EQ(database::number_of(open()->scalar("select count(*) from shift")), 1) << statement;
    }
    EXPECT_TRUE(run(environment()));
    EXPECT_EQ(users, 1);
    EXPECT_NE(database::schema_text(*open()), before);
}

TEST_F(StartUpTest, AShopWithoutAPlaceForTheStampGetsItFromTheList) {
    database::open_embedded(working / "shop.db")->execute("alter table basic drop column cr_v");
    EXPECT_TRUE(run(environment()));
    EXPECT_EQ(users, 1);
    EXPECT_EQ(stamped(), "2026/11/21");
}

TEST_F(StartUpTest, TheClockFollowsTheServerOrTheDifferenceIsLogged) {
    const common::Moment before = services.clock.moment;
    common::SystemClock real;
    ASSERT_TRUE(run(environment()));
    EXPECT_NE(services.clock.moment, before);
    EXPECT_EQ(services.clock.moment.date, real.now().date);
    services.clock = {};
    services.clock.may_set = false;
    ASSERT_TRUE(run(environment()));
    EXPECT_EQ(services.clock.moment, before);
    EXPECT_TRUE(logged("clock may not be set"));
}

TEST_F(StartUpTest, ABadFileIsReported) {
    fs::remove(working / "datacon24.stk");
    EXPECT_FALSE(run(environment()));
    EXPECT_TRUE(logged("datacon24.stk: cannot be opened"));
    expect_failure(std::string(message::file_missing) + "datacon24.stk");
}

TEST_F(StartUpTest, EveryBadShopFileHasItsMessage) {
    startup::write_connection_file(working, {"embedded", "other.db", "Not Found"});
    const fs::path file = working / "other.db";
    EXPECT_FALSE(run(environment()));
    EXPECT_TRUE(logged("other.db"));
    expect_failure(std::string(message::shop_file_missing) + "other.db");
    EXPECT_FALSE(fs::exists(file));
    fs::create_directory(file);
    EXPECT_FALSE(run(environment()));
    expect_failure(std::string(message::shop_file_is_folder) + "other.db");
    fs::remove(file);
    std::ofstream(file) << std::string(5000, 'x');
    EXPECT_FALSE(run(environment()));
    expect_failure(std::string(message::shop_file_corrupt) + "other.db");
    EXPECT_EQ(read_file(file), std::string(5000, 'x'));
    // A good file with damaged pages.
    fs::copy_file(shop.file(), file, fs::copy_options::overwrite_existing);
    {
        std::fstream out(file, std::ios::in | std::ios::out | std::ios::binary);
        out.seekp(100);
        out << std::string(200'000, '\xEE');
    }
    EXPECT_FALSE(run(environment()));
    expect_failure(std::string(message::shop_file_corrupt) + "other.db");
}

TEST_F(StartUpTest, AShopThatCannotBeWrittenHasItsMessage) {
    for (const fs::path& path : {folder.path(), program, working}) {
        fs::permissions(path, fs::perms::all);
    }
    const fs::path file = working / "shop.db";
    const auto reason_of_nobody = [&] {
        return test::in_child([&] {
            if (!test::become_nobody() || run(environment())) return false;
            expect_failure(std::string(message::shop_file_read_only) + "shop.db");
            return !HasFailure();
        });
    };
    fs::permissions(file, fs::perms(0444));
    EXPECT_TRUE(reason_of_nobody());
    fs::permissions(file, fs::perms(0666));
    fs::permissions(working, fs::perms(0555));
    EXPECT_TRUE(reason_of_nobody());
    fs::permissions(working, fs::perms(0755));
    for (const rlim_t bytes : {1'000, 20'000}) {
        EXPECT_TRUE(test::in_child([&] {
            test::fill_disk(bytes);
            if (run(environment())) return false;
            expect_failure(std::string(message::disk_full));
            return !HasFailure();
        })) << bytes;
    }
    EXPECT_TRUE(run(environment()));
    EXPECT_EQ(users, 1);
}

TEST_F(StartUpTest, TheSettingsRowIsNeeded) {
    database::open_embedded(working / "shop.db")->execute("delete from basic");
    EXPECT_FALSE(run(environment()));
    expect_failure(std::string(message::settings_missing));
}

TEST_F(StartUpTest, EveryRefusalOfTheServerHasItsReason) {
    using Kind = database::Error::Kind;
    const struct {
        const char* sqlstate;
        const char* said;
        std::string reason;
        Kind kind;
    } cases[] = {
        {"08001", "SQL Server does not exist or access denied.", std::string(message::server_unreachable),
         Kind::server_missing},
        {"28000", "Login failed for user 'sa'.", std::string(message::wrong_password), Kind::login_refused},
        {"42000", "Cannot open database \"db\" requested by the login. The login failed.",
         std::string(message::database_missing) + "db", Kind::database_missing},
        {"08S01", "Write to the server failed", std::string(message::connection_lost), Kind::connection_lost},
        {"HYT00", "The server did not answer in time.", std::string(message::connection_lost),
         Kind::timed_out},
        {"IM003", "The ODBC driver cannot be used: x", std::string(message::no_driver), Kind::no_driver},
        {"HY000", "something else", std::string(message::see_log), Kind::other},
    };
    for (const auto& c : cases) {
        Environment on = server_environment({"SHOPSRV", "db", "Not Found"}, "TILL3");
        on.get_ip = [](std::string_view) { return "Not Found"; };
        on.open = refusing({c.sqlstate, c.said, "", c.kind});
        EXPECT_FALSE(run(on));
        EXPECT_TRUE(logged(c.said));
        EXPECT_EQ(read_file(program / "prg_.err").substr(0, 10), std::string(c.said).substr(0, 10));
        expect_failure(c.reason);
    }
}

TEST_F(StartUpTest, OnlyAServerNeedsThePassword) {
    unsetenv("TALLVEX_SA_PASSWORD");
    EXPECT_FALSE(run(server_environment({"SHOPSRV", "db", "Not Found"}, "TILL3")));
    expect_failure(std::string(message::no_password));
    startup::write_sa_password(program, "from the file");
    EXPECT_TRUE(run(server_environment({"SHOPSRV", "db", "Not Found"}, "SHOPSRV")));
    EXPECT_NE(connection_string.find("Password=from the file;"), std::string::npos);
    fs::permissions(program / "sa.pwd", fs::perms::group_read, fs::perm_options::add);
    users = 0;
    EXPECT_FALSE(run(server_environment({"SHOPSRV", "db", "Not Found"}, "SHOPSRV")));
    expect_failure(std::string(message::password_file_open));
    for (const std::string& line : services.log.lines)
        EXPECT_EQ(line.find("from the file"), line.npos);
}

TEST_F(StartUpTest, AServerThatMovedIsFoundForTheNextStart) {
    const startup::ConnectionRecord record{"SHOPSRVC\\SQL", "db", "10.0.0.1"};
    std::vector<std::string> asked;
    Environment on = server_environment(record, "TILL3");
    on.open = refusing(unreachable);
    on.get_ip = [&asked](std::string_view server) {
        asked.emplace_back(server);
        return "10.0.0.9";
    };
    // The address is kept in the file of the program folder, if there is one.
    EXPECT_FALSE(run(on));
    EXPECT_EQ(asked, std::vector<std::string>{"SHOPSRVC\\SQL"});
    expect_failure(std::string(message::server_unreachable));

    startup::write_connection_file(program, record);
    EXPECT_FALSE(run(on));
    expect_failure(std::string(message::address_renewed));
    EXPECT_EQ(startup::read_connection_file(program),
              (startup::ConnectionRecord{"SHOPSRVC\\SQL", "db", "10.0.0.9"}));

    // Any other error leaves the address alone.
    asked.clear();
    on.open = refusing({"28000", "Login failed for user 'sa'.", ""});
    EXPECT_FALSE(run(on));
    EXPECT_TRUE(asked.empty());
}

TEST_F(StartUpTest, OnlyANewAddressIsReported) {
    const struct {
        const char* server;
        const char* address;
        const char* found;
        bool is_new;
    } cases[] = {
        {"10.0.0.9", "Not Found", "10.0.0.9", false}, {"10.0.0.9,1435", "Not Found", "10.0.0.9,1435", false},
        {"PC1", "10.0.0.9", "10.0.0.9", false},       {"PC1\\SQL", "10.0.0.9", "10.0.0.9", false},
        {"PC1", "10.0.0.1", "10.0.0.9", true},        {"10.0.0.9", "10.0.0.1", "10.0.0.9", true},
        {"PC1", "Not Found", "10.0.0.9", true},
    };
    for (const auto& c : cases) {
        const startup::ConnectionRecord record{c.server, "db", c.address};
        startup::write_connection_file(program, record);
        Environment on = server_environment(record, "TILL3");
        on.open = refusing(unreachable);
        on.get_ip = [&c](std::string_view) { return c.found; };
        EXPECT_FALSE(run(on));
        expect_failure(std::string(c.is_new ? message::address_renewed : message::server_unreachable));
        EXPECT_EQ(startup::read_connection_file(program).address, c.found);
    }
}

TEST_F(StartUpTest, AnAddressThatIsNotFoundIsNotKept) {
    const startup::ConnectionRecord record{"SHOPC", "db", "10.0.0.1"};
    startup::write_connection_file(program, record);
    std::vector<std::string> asked;
    Environment on = server_environment(record, "TILL3");
    on.open = refusing(unreachable);
    on.get_ip = [&asked](std::string_view server) {
        asked.emplace_back(server);
        return "Not Found";
    };
    EXPECT_FALSE(run(on));
    EXPECT_EQ(asked, (std::vector<std::string>{"SHOPC", "SHOP"}));
    expect_failure(std::string(message::server_unreachable));
    EXPECT_EQ(startup::read_connection_file(program), record);
}

// Any statement before the upgrade list may fail or lose the server; the next start works.
TEST_F(StartUpTest, AnyStatementMayFailAndTheNextStartWorks) {
    using test::FaultyConnection;
    std::unique_ptr<database::Connection> inner;
    FaultyConnection* faulty = nullptr;
    std::vector<std::string> statements;
    const auto start = [&](std::int64_t n, FaultyConnection::Fault fault) {
        Environment on = environment();
        on.open = [&](const std::string&, const fs::path&) {
            inner = database::open_embedded(working / "shop.db");
            auto made = std::make_unique<FaultyConnection>(*inner);
            faulty = made.get();
            faulty->fail_at(n, fault);
            return made;
        };
        StartUp start_up(on, services.all());
        const bool came_back = start_up.run([](database::Connection&, signin::Session&) {});
        statements = faulty->statements();
        return came_back;
    };
    for (std::int64_t n = 1; n <= 4; ++n) {
        EXPECT_FALSE(start(n, FaultyConnection::Fault::passing)) << n;
        EXPECT_EQ(statements.size(), static_cast<std::size_t>(n)) << "went on after the failure";
        EXPECT_TRUE(logged(statements.back()));
        expect_failure(std::string(message::see_log));
        EXPECT_FALSE(start(n, FaultyConnection::Fault::lost)) << n;
        expect_failure(std::string(message::connection_lost));
    }
    EXPECT_EQ(statements, (std::vector<std::string>{"select getdate()", "set dateformat ymd",
                                                    "select * from basic", "begin transaction"}));
    EXPECT_FALSE(start(5, FaultyConnection::Fault::passing));
    expect_failure(std::string(message::see_log));
    EXPECT_EQ(statements[4], "Update basic set   cr_v = '2026/11/21'");
    // The upgrade list tolerates failures, but not a lost server.
    EXPECT_TRUE(start(7, FaultyConnection::Fault::passing));
    EXPECT_FALSE(start(7, FaultyConnection::Fault::lost));
    expect_failure(std::string(message::connection_lost));
    inner.reset();  // with the transaction that a lost connection cannot roll back
    EXPECT_TRUE(run(environment()));
}

TEST_F(StartUpTest, ASilentServerIsWaitedFor) {
    const startup::ConnectionRecord record{"SHOPSRV", "db", "10.0.0.1"};
    startup::write_connection_file(program, record);
    int answers = 0;  // the attempt that reaches the server
    std::string asked;
    std::vector<std::string> sources;
    Environment on = server_environment(record, "SHOPSRV");
    on.get_ip = [](std::string_view) { return "10.0.0.9"; };
    on.open = [&, opened = on.open](const std::string& text, const fs::path& place) {
        sources.push_back(text.substr(text.rfind('=') + 1));
        if (answers == 0) throw database::Error("28000", "Login failed for user 'sa'.", "");
        if (static_cast<int>(sources.size()) < answers) throw database::Error(unreachable);
        return opened(text, place);
    };
    bool patient = true;
    on.wait_for_server = [&](const std::string& server, const std::function<bool()>& attempt) {
        asked = server;
        bool ended = attempt();
        while (!ended && patient)
            ended = attempt();
        return ended;
    };
    // It goes on by itself when the server answers, here at its new address.
    answers = 3;
    EXPECT_TRUE(run(on));
    EXPECT_EQ(users, 1);
    EXPECT_EQ(asked, "SHOPSRV");
    EXPECT_EQ(sources, (std::vector<std::string>{"10.0.0.1", "10.0.0.9", "10.0.0.9"}));
    EXPECT_TRUE(services.prompts.messages.empty());
    // Leaving needs no answers; any other failure is shown as usual.
    users = 0;
    patient = false;
    answers = 99;
    EXPECT_TRUE(run(on)) << "a supervising session would start the till again";
    EXPECT_EQ(users, 0);
    EXPECT_TRUE(services.prompts.messages.empty());
    EXPECT_TRUE(logged("the cashier left"));
    answers = 0;
    EXPECT_FALSE(run(on));
    expect_failure(std::string(message::wrong_password));
}

TEST_F(StartUpTest, ACashPointRunsOnOneMachineOfAServer) {
    const startup::ConnectionRecord record{"SHOPSRV", "db", "Not Found"};
    Environment other = server_environment(record, "SHOPSRV");
    other.working_folder = folder.path();
    startup::write_connection_file(folder.path(), record);
    StartUp first(server_environment(record, "SHOPSRV"), services.all());
    EXPECT_TRUE(first.run([&](database::Connection& connection, signin::Session&) {
        EXPECT_FALSE(first.claim()->claim(connection));
        EXPECT_FALSE(run(other));
        EXPECT_NE(services.prompts.last().find("SHOPSRV " + working.string()), std::string::npos);
        other.command_line = "4";
        EXPECT_TRUE(run(other));
        other.command_line = "3";
    }));
    EXPECT_TRUE(run(other)) << "the first gave it free";
}

TEST_F(StartUpTest, AnErrorInSignInIsReportedLikeAnyOther) {
    StartUp start(environment(), services.all());
    EXPECT_FALSE(
        start.run([](database::Connection&, signin::Session&) { throw std::runtime_error("boom"); }));
    EXPECT_TRUE(logged("boom"));
    expect_failure(std::string(message::see_log));
}

TEST(Workstation, FindsAddressesWithinItsTime) {
    EXPECT_EQ(startup::get_ip("localhost"), "127.0.0.1");
    EXPECT_EQ(startup::get_ip("127.0.0.1\\SQLEXPRESS"), "127.0.0.1");
    EXPECT_EQ(startup::get_ip("localhost,1435"), "127.0.0.1,1435");
    EXPECT_EQ(startup::get_ip(" localhost,1435\\SQL "), "127.0.0.1,1435");
    EXPECT_EQ(startup::get_ip(",1435"), "Not Found");
    EXPECT_EQ(startup::get_ip(""), "Not Found");
    EXPECT_EQ(startup::get_ip("\\SQL"), "Not Found");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(startup::get_ip("no-such-machine.invalid", std::chrono::seconds(1)), "Not Found");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    EXPECT_FALSE(startup::computer_name().empty());
}

TEST(Workstation, TheServersMachineKnowsItself) {
    const struct {
        const char* server;
        const char* computer;
        bool same;
    } cases[] = {
        {"PC1", "pc1", true},
        {"PC1\\SQLEXPRESS", "PC1", true},
        {"PC1,1533", "pc1", true},
        {"tcp:PC1\\SQL,1533", "pc1", true},
        {" pc1 ", "PC1", true},
        {"pc1.shop.lan\\SQL", "PC1", true},
        {"pc1", "pc1.shop.lan", true},
        {".\\SQLEXPRESS", "TILL3", true},
        {"(local)", "TILL3", true},
        {"localhost,1433", "TILL3", true},
        {"127.0.0.1\\SQLEXPRESS", "TILL3", true},
        {"PC1", "PC10", false},
        {"PC1\\TILL3", "TILL3", false},
        {"pc1.shop.lan", "pc1.other.lan", false},
        {"10.0.0.5", "10", false},
        {"", "", false},
        {"PC1", "", false},
    };
    for (const auto& c : cases)
        EXPECT_EQ(startup::is_this_machine(c.server, c.computer), c.same) << c.server << " on " << c.computer;
}

TEST(Workstation, TheShopsFolderIsNamedOrTheWorkingDirectory) {
    const test::TemporaryFolder root;
    const fs::path former = fs::current_path();
    for (const char* name : {"home", "work", "conf", "none"})
        fs::create_directory(root.path() / name);
    for (const char* name : {"home", "work", "conf"})
        startup::write_connection_file(root.path() / name, {"embedded", "shop.db", "Not Found"});
    const struct {
        const char* home;
        const char* working;
        const char* found;
    } cases[] = {
        {"../home", "work", "home"}, {"home", ".", "home"},       {"", "work", "work"},
        {"../none", "work", "work"}, {"../none", "none", "none"}, {"", "none", "conf"},
    };
    setenv("TALLVEX_SHOP", (root.path() / "conf").c_str(), 1);
    for (const auto& c : cases) {
        fs::current_path(root.path() / c.working);
        setenv("TALLVEX_HOME", c.home, 1);
        EXPECT_EQ(startup::shop_folder(), root.path() / c.found) << c.home << " from " << c.working;
    }
    unsetenv("TALLVEX_SHOP");
    EXPECT_EQ(startup::shop_folder(), root.path() / "none");
    unsetenv("TALLVEX_HOME");
    fs::current_path(former);
}

TEST(Workstation, TheProgramFolderCanBeNamed) {
    unsetenv("TALLVEX_HOME");
    EXPECT_EQ(startup::program_folder(), fs::read_symlink("/proc/self/exe").parent_path());
    setenv("TALLVEX_HOME", "/somewhere/else", 1);
    EXPECT_EQ(startup::program_folder(), "/somewhere/else");
    unsetenv("TALLVEX_HOME");
}

}  // namespace
