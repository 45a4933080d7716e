// The shop file: opened or refused with a reason, shared by several programs, and durable.

#include <fstream>
#include <random>

#include "database/embedded/connection.h"
#include "database/engine.h"
#include "startup/connection_file.h"
#include "support/child.h"

namespace {

namespace fs = std::filesystem;
using database::Error;

class ShopFile : public test::Engine {
  protected:
    // The reason why a file does not open; empty if it opens.
    std::string refusal(const fs::path& path, bool create = false) {
        try {
            database::open_embedded(path, create);
        } catch (const Error& error) {
            EXPECT_EQ(error.sqlstate(), "08001") << error.what();
            return error.what();
        }
        return {};
    }
    static void write(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    static std::string read(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

TEST_F(ShopFile, WhatIsNoShopIsRefusedWithAReason) {
    run("create table t (a int)");
    connection.reset();
    const fs::path dir = folder.path();
    write(dir / "empty", "");
    write(dir / "text", std::string(5000, 'x'));
    write(dir / "short", "SQLite format 3");
    fs::create_directory(dir / "sub");
    fs::create_symlink(dir / "gone", dir / "dangling");
    // Another program's database.
    std::string foreign = read(file);
    foreign.replace(68, 4, std::string(4, '\0'));
    write(dir / "foreign", foreign);
    // A shop whose tables cannot be read.
    std::string torn = read(file);
    torn.replace(100, 400, std::string(400, '\x7f'));
    write(dir / "torn", torn);
    const struct {
        const char* name;
        const char* reason;
    } cases[] = {{"none.db", "does not exist"},  {"dangling", "does not exist"},
                 {"sub", "is a folder"},         {"empty", "is empty"},
                 {"text", "not a database"},     {"short", "not a database"},
                 {"foreign", "another program"}, {"torn", "damaged"}};
    for (const auto& [name, reason] : cases) {
        const std::string before = fs::is_regular_file(dir / name) ? read(dir / name) : "";
        EXPECT_NE(refusal(dir / name).find(reason), std::string::npos) << name << ": " << refusal(dir / name);
        EXPECT_NE(refusal(dir / name).find(name), std::string::npos) << "the reason names the file";
        if (!before.empty()) {
            EXPECT_EQ(read(dir / name), before) << name << " is left as it was";
        }
    }
    EXPECT_NE(refusal(dir / "no" / "shop.db", true).find("folder does not exist"), std::string::npos);
    EXPECT_FALSE(fs::exists(dir / "none.db")) << "opening makes no file";
    EXPECT_EQ(refusal(file), "");
    EXPECT_EQ(refusal(dir / "made", true), "");
    EXPECT_EQ(refusal(dir / "made"), "");
}

TEST_F(ShopFile, WhatMayNotBeWrittenIsRefused) {
    connection.reset();
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(file, fs::perms(0444));
    const auto is_refused = [&](const fs::path& path, bool create, const char* reason) {
        return test::in_child(
            [&] { return test::become_nobody() && refusal(path, create).find(reason) != std::string::npos; });
    };
    EXPECT_TRUE(is_refused(file, false, "is read-only"));
    fs::permissions(file, fs::perms::none);
    EXPECT_TRUE(is_refused(file, false, "cannot be read"));
    fs::permissions(file, fs::perms(0666));
    fs::permissions(folder.path(), fs::perms(0555));
    EXPECT_TRUE(is_refused(file, false, "is in a folder that is read-only"));
    fs::permissions(folder.path(), fs::perms(0755));
    if (geteuid() == 0) {
        EXPECT_TRUE(is_refused(folder.path() / "new.db", true, "its folder is read-only"));
    }
}

TEST_F(ShopFile, DamageWithinIsAnErrorNotACrash) {
    run("create table t (a int not null primary key, b nvarchar(200))");
    run("begin transaction");
    for (int i = 0; i < 2000; ++i) {
        run("insert into t values (?,?)",
            {database::Value(std::int64_t{i}), database::Value(std::string(100, 'b'))});
    }
    run("commit");
    connection.reset();
    const std::string whole = read(file);
    std::mt19937 random(7);
    for (int round = 0; round < 30; ++round) {
        std::string bytes = whole;
        for (int i = 0; i < 200; ++i)
            bytes[100 + random() % (bytes.size() - 100)] = static_cast<char>(random());
        if (round % 3 == 0) bytes.resize(4096 + random() % (bytes.size() - 4096));
        const fs::path damaged = folder.path() / "damaged";
        write(damaged, bytes);
        fs::remove(folder.path() / "damaged-wal");
        try {
            const auto opened = database::open_embedded(damaged);
            opened->query("select count(*), max(b) from t");
            opened->execute("update t set b = 'x' where a < 100");
            opened->execute("delete from t where a > 1000");
        } catch (const Error& error) {
            EXPECT_FALSE(std::string(error.what()).empty());
        }
    }
}

TEST_F(ShopFile, AFullDiskIsAnErrorAndLosesNothing) {
    run("create table t (a int, b nvarchar(max))");
    run("insert into t values (1,'kept')");
    connection.reset();
    EXPECT_TRUE(test::in_child([&] {
        const auto opened = database::open_embedded(file);
        test::fill_disk(200'000);
        try {
            for (int i = 0; i < 100; ++i)
                opened->run("insert into t values (2,?)", {database::Value(std::string(50'000, 'x'))});
        } catch (const Error& error) {
            return error.kind() == Error::Kind::disk_full && !error.is_connection_lost() &&
                   opened->query("select * from t where a = 1").size() == 1;
        }
        return false;
    }));
    // The smaller limits leave no room for the memory map beside the file, the last none for its log.
    for (const rlim_t bytes : {100, 5'000, 33'000}) {
        EXPECT_TRUE(test::in_child([&] {
            test::fill_disk(bytes);
            try {
                const auto opened = database::open_embedded(file);
                for (int i = 0; i < 20; ++i)
                    opened->run("insert into t values (2,?)", {database::Value(std::string(4000, '1'))});
            } catch (const Error& error) {
                return error.kind() == Error::Kind::disk_full;
            }
            return false;
        })) << bytes;
    }
    connection = database::open_embedded(file);
    EXPECT_EQ(rows("select b from t where a = 1"), "kept");
}

TEST_F(ShopFile, TwoProgramsWriteAtOnce) {
    run("create table t (who int, n int)");
    run("create table total (n int)");
    run("insert into total values (0)");
    connection.reset();
    constexpr int each = 300;
    std::vector<pid_t> children;
    for (int who = 1; who <= 3; ++who) {
        children.push_back(test::start_child([&] {
            const auto mine = database::open_embedded(file);
            for (std::int64_t n = 0; n < each; ++n) {
                mine->run("insert into t values (?,?)",
                          {database::Value(std::int64_t{who}), database::Value(n)});
                mine->execute("update total set n = n + 1 where n >= 0");
                if (n % 50 == 0) mine->make_durable();
            }
            return true;
        }));
    }
    for (const pid_t child : children)
        EXPECT_EQ(test::wait_for(child), 0);
    connection = database::open_embedded(file);
    EXPECT_EQ(rows("select count(*) from t"), "900");
    EXPECT_EQ(rows("select n from total"), "900");
    EXPECT_EQ(rows("select count(*) from (select who, n from t group by who, n) d"), "900");
}

TEST_F(ShopFile, NothingWaitsOrRunsForEver) {
    run("create table t (a int)");
    for (int i = 0; i < 500; ++i)
        run("insert into t values (1)");
    database::embedded::EmbeddedConnection second(file, false);
    second.set_timeout(std::chrono::milliseconds(100));
    const auto state_of = [&](const char* statement) {
        try {
            second.run(statement, {});
        } catch (const Error& error) {
            return error.sqlstate();
        }
        return std::string("ran");
    };
    EXPECT_EQ(state_of("select count(*) from t a, t b, t c, t d where a.a + b.a + c.a = d.a"), "HYT00");
    run("begin transaction");
    run("insert into t values (2)");
    EXPECT_EQ(state_of("insert into t values (3)"), "HYT00");
    EXPECT_EQ(state_of("alter table t add b int"), "HYT00");
    EXPECT_EQ(state_of("select count(*) from t"), "ran") << "reading waits for nobody";
    run("commit");
    EXPECT_EQ(state_of("insert into t values (3)"), "ran");
    EXPECT_EQ(rows("select count(*) from t"), "502");
}

TEST_F(ShopFile, WhatAKilledProgramWroteIsThere) {
    run("create table t (a int)");
    connection.reset();
    for (int round = 0; round < 3; ++round) {
        const int status = test::wait_for(test::start_child([&] {
            const auto mine = database::open_embedded(file);
            for (int i = 0; i < 10; ++i)
                mine->execute("insert into t values (1)");
            mine->make_durable();
            ::raise(SIGKILL);
            return false;
        }));
        EXPECT_TRUE(WIFSIGNALED(status));
        connection = database::open_embedded(file);
        EXPECT_EQ(rows("select count(*) from t"), std::to_string((round + 1) * 10));
        connection.reset();
    }
}

// After make_durable() a copy of the file and its log has every row.
TEST_F(ShopFile, SettledRowsAreInTheFileAndItsLog) {
    run("create table t (a int)");
    connection->make_durable();
    for (int i = 1; i <= 5; ++i) {
        run("insert into t values (1)");
        connection->make_durable();
        ASSERT_TRUE(fs::exists(file.string() + "-wal"));
        const fs::path copy = folder.path() / ("copy" + std::to_string(i));
        fs::copy_file(file, copy);
        fs::copy_file(file.string() + "-wal", copy.string() + "-wal");
        EXPECT_EQ(database::number_of(database::open_embedded(copy)->scalar("select count(*) from t")), i);
    }
}

// A second connection of one program leaves the first one's locks in place. Without them another program
// takes itself for the last one when it closes, and removes the log that the first connection goes on writing
// to.
TEST_F(ShopFile, ASecondConnectionKeepsTheLocksOfTheFirst) {
    run("create table t (a int)");
    connection.reset();
    // Other programs, each waiting for its turn. They must not inherit a connection.
    const auto start_waiting = [](int(&turn)[2], const std::function<bool()>& body) {
        EXPECT_EQ(pipe(turn), 0);
        return test::start_child([&] {
            char word = 0;
            return ::read(turn[0], &word, 1) == 1 && body();
        });
    };
    int to_write[2];
    int to_count[2];
    const pid_t writer = start_waiting(to_write, [&] {
        database::open_embedded(file)->execute("insert into t values (2)");
        return true;
    });
    const pid_t counter = start_waiting(
        to_count, [&] { return database::open_embedded(file)->query("select * from t").size() == 4; });
    connection = database::open_embedded(file);
    run("insert into t values (1)");
    database::open_embedded(file)->execute("insert into t values (1)");
    ASSERT_EQ(::write(to_write[1], "g", 1), 1);
    EXPECT_EQ(test::wait_for(writer), 0);
    EXPECT_TRUE(fs::exists(file.string() + "-wal"));
    run("insert into t values (3)");
    ASSERT_EQ(::write(to_count[1], "g", 1), 1);
    EXPECT_EQ(test::wait_for(counter), 0) << "what the first connection wrote is lost";
    for (const int end : {to_write[0], to_write[1], to_count[0], to_count[1]})
        ::close(end);
}

TEST_F(ShopFile, TheConnectionStringNamesIt) {
    connection.reset();
    const std::string before =
        "Provider=SQLOLEDB.1;Password=x;Persist Security Info=True;User ID=sa;Initial Catalog= ";
    for (const char* after : {"engine.db;Data Source=embedded", "engine.db ;data source = EMBEDDED ;"}) {
        EXPECT_TRUE(startup::open_connection(before + after, folder.path())->is_embedded());
    }
    EXPECT_TRUE(
        startup::open_connection(before + file.string() + ";Data Source=embedded", "/")->is_embedded());
    EXPECT_THROW(startup::open_connection(before + "none.db;Data Source=embedded", folder.path()), Error);
    EXPECT_THROW(startup::open_connection(before + ";Data Source=embedded", folder.path()), Error);
}

}  // namespace
