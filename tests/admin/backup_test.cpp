#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

#include "admin/workbench.h"
#include "backup/automatic.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "support/child.h"

namespace {

namespace fs = std::filesystem;
using test::Workbench;
using testing::HasSubstr;

std::string scalar(const fs::path& file, const std::string& query) {
    return database::text_of(database::open_embedded(file)->scalar(database::Sql::from_administrator(query)));
}

// Runs statements of the engine on a file, as a program other than the till would.
void engine(const fs::path& file, const char* statements) {
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &raw), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(raw, statements, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
    sqlite3_close(raw);
}

TEST(Backup, IsTheShopAtOneMomentWhileATillWrites) {
    Workbench bench;
    bench.make_shop(true);
    std::atomic<bool> stop = false;
    std::atomic<int> written = 0;
    std::thread till([&] {
        const auto shop = bench.open();
        while (!stop) {
            // Header first, then its line, as a save writes them.
            const int number = written + 1;
            shop->execute(database::Sql("insert into sales (pnum) values (") + number + ")");
            shop->execute(database::Sql("insert into saledata (pnum) values (") + number + ")");
            written = number;
        }
    });
    while (written < 50)
        std::this_thread::yield();
    const auto run = bench.run({"backup", "copy.backup"});
    const int at_least = 50;
    stop = true;
    till.join();
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("invoices, checked"));
    const int headers = std::stoi(scalar(bench.file("copy.backup"), "select count(*) from sales"));
    const int lines = std::stoi(scalar(bench.file("copy.backup"), "select count(*) from saledata"));
    EXPECT_GE(headers, at_least);
    EXPECT_LE(headers, written + 1);
    EXPECT_TRUE(headers == lines || headers == lines + 1) << headers << " headers, " << lines << " lines";
    EXPECT_EQ(bench.cell("select count(*) from sales"), std::to_string(written));
    for (const auto& entry : fs::directory_iterator(bench.folder())) {
        const std::string name = entry.path().filename();
        EXPECT_EQ(name.find(".making"), std::string::npos) << name;
        EXPECT_EQ(name.find(".trial"), std::string::npos) << name;
    }
}

TEST(Backup, GetsItsNameFromTheClockInAnExistingFolder) {
    Workbench bench;
    bench.make_shop();
    ASSERT_EQ(bench.run({"backup"}).code, 0);
    EXPECT_TRUE(fs::exists(bench.file("shop-20261121-104200.backup")));
    EXPECT_THAT(bench.run({"backup"}).err, HasSubstr("exists already"));
    fs::create_directory(bench.file("stick"));
    ASSERT_EQ(bench.run({"backup", "stick"}).code, 0);
    EXPECT_TRUE(fs::exists(bench.file("stick/shop-20261121-104200.backup")));
    const auto run = bench.run({"backup", "unplugged/shop.backup"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("there is no folder"));
    // Two restores within one second each keep the shop that they replaced.
    for (const char* kept :
         {"before-restore-20261121-104200.backup", "before-restore-20261121-104200-2.backup"}) {
        ASSERT_EQ(bench.run({"restore", "stick/shop-20261121-104200.backup"}).code, 0);
        EXPECT_TRUE(fs::exists(bench.file(kept))) << kept;
    }
}

TEST(Backup, AFullDiskIsReportedAndLeavesNothing) {
    Workbench bench;
    bench.make_shop();
    EXPECT_TRUE(test::in_child([&bench] {
        test::fill_disk(100'000);
        const auto run = bench.run({"backup", "copy.backup"});
        std::fprintf(stderr, "%s", run.err.c_str());
        return run.code == 1 && run.err.find("tallvex-admin: ") == 0;
    }));
    for (const auto& entry : fs::directory_iterator(bench.folder()))
        EXPECT_EQ(entry.path().filename().string().find("copy.backup"), std::string::npos) << entry.path();
    EXPECT_EQ(bench.run({"check"}).code, 0);
}

TEST(Backup, RefusesADamagedShop) {
    Workbench bench;
    bench.make_shop(true);
    const auto size = fs::file_size(bench.file("shop.db"));
    {
        std::fstream file(bench.file("shop.db"), std::ios::in | std::ios::out | std::ios::binary);
        for (std::uintmax_t at = 8192; at + 4096 < size; at += 4096) {
            file.seekp(static_cast<std::streamoff>(at));
            file << std::string(64, '\xee');
        }
    }
    const auto run = bench.run({"backup", "copy.backup"});
    EXPECT_EQ(run.code, 1);
    EXPECT_FALSE(fs::exists(bench.file("copy.backup")));
    bench.write("full", "");
    EXPECT_EQ(bench.run({"backup", "full/copy.backup"}).code, 1);
}

TEST(AutomaticBackup, KeepsDaysWeeksAndMonths) {
    // Twice a day for 40 days back from 2026/11/21, then the first and last day of each month of two years.
    std::vector<std::string> names = {"shop-20240101-000000.backup", "shop-auto-20261121.backup",
                                      "other.txt"};
    common::Date day{2026, 11, 21};
    for (int i = 0; i < 40; ++i, day = common::add_days(day, -1)) {
        names.push_back(backup::name_at("shop-auto-", {day, {9, 0, 0}}));
        names.push_back(backup::name_at("shop-auto-", {day, {21, 0, 0}}));
    }
    for (int month = 1; month <= 9; ++month) {
        names.push_back(backup::name_at("shop-auto-", {{2026, month, 1}, {9, 0, 0}}));
        names.push_back(backup::name_at("shop-auto-", {{2026, month, 28}, {9, 0, 0}}));
        names.push_back(backup::name_at("shop-auto-", {{2025, month, 28}, {9, 0, 0}}));
    }
    std::set<std::string> left(names.begin(), names.end());
    for (const std::string& name : backup::superfluous(names, "shop-auto-"))
        left.erase(name);
    // Weeks begin on Saturday, as 2026/11/21 does: the newest copies of the weeks before are of Fridays.
    const std::set<std::string> wanted = {"other.txt",
                                          "shop-20240101-000000.backup",
                                          "shop-auto-20261121.backup",
                                          "shop-auto-20261121-210000.backup",
                                          "shop-auto-20261120-210000.backup",
                                          "shop-auto-20261119-210000.backup",
                                          "shop-auto-20261118-210000.backup",
                                          "shop-auto-20261117-210000.backup",
                                          "shop-auto-20261116-210000.backup",
                                          "shop-auto-20261115-210000.backup",
                                          "shop-auto-20261113-210000.backup",
                                          "shop-auto-20261106-210000.backup",
                                          "shop-auto-20261031-210000.backup",
                                          "shop-auto-20260928-090000.backup",
                                          "shop-auto-20260828-090000.backup",
                                          "shop-auto-20260728-090000.backup",
                                          "shop-auto-20260628-090000.backup",
                                          "shop-auto-20260528-090000.backup",
                                          "shop-auto-20260428-090000.backup",
                                          "shop-auto-20260328-090000.backup",
                                          "shop-auto-20260228-090000.backup",
                                          "shop-auto-20260128-090000.backup",
                                          "shop-auto-20250928-090000.backup"};
    EXPECT_EQ(left, wanted);
}

TEST(AutomaticBackup, GoesToEveryFolderAndTellsWhereItCouldNot) {
    Workbench bench;
    bench.make_shop();
    EXPECT_THAT(bench.run({"backup", "--automatic"}).err,
                HasSubstr("tallvex-admin settings backup_to FOLDER"));
    EXPECT_THAT(bench.run({"settings", "backup_to", "stick"}).err, HasSubstr("backup_to cannot be"));
    fs::create_directory(bench.file("a"));
    fs::create_directory(bench.file("stick"));
    const std::string folders = bench.file("a").string() + "; " + bench.file("stick").string();
    ASSERT_EQ(bench.run({"settings", "backup_to", folders}).code, 0);
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("note   backups: none has been made yet"));
    bench.write("a/shop-auto-20251101-090000.backup.making", "cut off");
    fs::last_write_time(bench.file("a/shop-auto-20251101-090000.backup.making"),
                        fs::file_time_type::clock::now() - std::chrono::hours(7));
    ASSERT_EQ(bench.run({"backup", "--automatic"}).code, 0);
    for (const char* folder : {"a", "stick"}) {
        const fs::path copy = bench.file(folder) / "shop-auto-20261121-104200.backup";
        EXPECT_EQ(fs::status(copy).permissions(), fs::perms(0660)) << copy;
        EXPECT_EQ(scalar(copy, "select count(*) from users"), "1");
    }
    EXPECT_FALSE(fs::exists(bench.file("a/shop-auto-20251101-090000.backup.making")));
    const auto words = [&](const common::Date& today) {
        return backup::age_words(*backup::state_of(*bench.open()), today);
    };
    EXPECT_EQ(words({2026, 11, 21}), "آخر نسخة احتياطية: اليوم 10:42");
    EXPECT_EQ(words({2026, 11, 22}), "آخر نسخة احتياطية: أمس 10:42");
    EXPECT_EQ(words({2026, 11, 23}), "آخر نسخة احتياطية: منذ يومين");
    EXPECT_EQ(words({2026, 11, 24}), "آخر نسخة احتياطية: منذ 3 أيام");
    EXPECT_EQ(words({2026, 12, 2}), "آخر نسخة احتياطية: منذ 11 يوما");

    // The stick is pulled out, and the other copy of this second is there already.
    fs::remove_all(bench.file("stick"));
    const auto run = bench.run({"backup", "--automatic"});
    EXPECT_EQ(run.code, 1);
    EXPECT_THAT(run.err, HasSubstr("there is no folder " + bench.file("stick").string()));
    EXPECT_EQ(words({2026, 11, 21}), "آخر نسخة احتياطية: اليوم 10:42");
    EXPECT_EQ(backup::failure_words(*backup::state_of(*bench.open())),
              "لم تحفظ النسخة في: \u200E" + bench.file("a").string() + ", " + bench.file("stick").string());
    const auto check = bench.run({"check"});
    EXPECT_EQ(check.code, 1);
    EXPECT_THAT(check.out, HasSubstr("WRONG  backups: the last one did not get to"));
    // A shop without the table has no backups, and says so only when asked to make some.
    bench.sql("drop table till_setting");
    EXPECT_FALSE(backup::state_of(*bench.open()));
    EXPECT_THAT(bench.run({"backup", "--automatic"}).err,
                HasSubstr("tallvex-admin settings backup_to FOLDER"));
}

TEST(Restore, ATillSeesTheRestoredShopWithItsNextStatement) {
    Workbench bench;
    bench.make_shop();
    ASSERT_EQ(bench.run({"backup", "old.backup"}).code, 0);
    const auto till = bench.open();
    till->execute("insert into makers (code,[name]) values (1,'بعد')");
    ASSERT_EQ(database::integer_of(till->scalar("select count(*) from makers")), 1);
    const auto run = bench.run({"restore", "old.backup"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(database::integer_of(till->scalar("select count(*) from makers")), 0);
    till->execute("insert into makers (code,[name]) values (2,'يعمل')");
    till->make_durable();
    EXPECT_EQ(bench.cell("select max(code) from makers"), "2");
    // The former shop is kept.
    EXPECT_EQ(scalar(bench.file("before-restore-20261121-104200.backup"), "select [name] from makers"),
              "بعد");
    EXPECT_EQ(bench.run({"check"}).code, 0);
}

TEST(Restore, BringsALostOrDamagedShopBack) {
    for (const bool damaged : {false, true}) {
        Workbench bench;
        bench.make_shop();
        ASSERT_EQ(bench.run({"backup", "good.backup"}).code, 0);
        fs::remove(bench.file("shop.db"));
        if (damaged) bench.write("shop.db", std::string(9000, 'x'));
        bench.write("shop.db-wal", "of the lost file");
        ASSERT_EQ(bench.run({"restore", "good.backup"}).code, 0);
        EXPECT_EQ(bench.cell("select aname from basic"), "المحل");
        EXPECT_EQ(bench.run({"check"}).code, 0);
        EXPECT_EQ(fs::exists(bench.file("before-restore-20261121-104200.backup")), damaged);
    }
}

TEST(Restore, BringsAnOlderBackupUpToDate) {
    Workbench bench;
    bench.make_shop();
    {
        const auto old = database::open_embedded(bench.file("old.backup"), true);
        database::create_base_schema(*old);
        old->execute("insert into basic (aname,st_d,mst,mcash,max_dis) values ('قديم',1,1,1,10)");
        old->execute("insert into stocks (code,[name]) values (4,'رابع')");
    }
    ASSERT_EQ(bench.run({"restore", "old.backup"}).code, 0);
    EXPECT_EQ(bench.cell("select aname from basic"), "قديم");
    EXPECT_EQ(bench.cell("select count(price15) from items"), "0");
    EXPECT_EQ(bench.cell("select count(p_4) from items"), "0");
}

TEST(Restore, RefusesOtherFilesAndKeepsTheShop) {
    Workbench bench;
    bench.make_shop();
    bench.sql("update basic set aname = 'باق'");
    bench.write("empty", "");
    bench.write("garbage", std::string(10000, 'g'));
    {
        const auto other = database::open_embedded(bench.file("other.db"), true);
        other->execute("create table basic (aname nvarchar(100) null)");
    }
    engine(bench.file("foreign.db"), "create table basic (aname text); insert into basic values ('x')");
    const std::pair<const char*, const char*> refused[] = {
        {"missing", "there is no backup"},
        {"empty", "empty is empty"},
        {"garbage", "garbage is no shop"},
        {"foreign.db", "foreign.db is the database of another program"},
        {"other.db", "other.db is not a shop"},
        {"shop.db", "is the shop file itself"},
        {".", "there is no backup"}};
    for (const auto& [file, why] : refused) {
        const auto run = bench.run({"restore", file});
        EXPECT_EQ(run.code, 1) << file;
        EXPECT_THAT(run.err, HasSubstr(why));
        EXPECT_EQ(bench.cell("select aname from basic"), "باق") << file;
    }
}

TEST(Restore, NamesWhatAStrangerPutIntoTheFile) {
    Workbench bench;
    bench.make_shop();
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     files: shop.db"));
    engine(
        bench.file("shop.db"),
        "create trigger helper after insert on sales begin delete from saledata; end;"
        "create trigger [own.orphans 9] after insert on items begin delete from users; update items set code "
        "= 1; end;"
        "create view spy as select pass from users;"
        "insert into makers (code, name) values (1, printf('%.300c', 'x'))");
    fs::permissions(bench.file("shop.db"), fs::perms(0664));
    ASSERT_EQ(bench.run({"backup", "strange.backup"}).code, 0);
    const auto restored = bench.run({"restore", "strange.backup"});
    ASSERT_EQ(restored.code, 0) << restored.err;
    const auto check = bench.run({"check"});
    EXPECT_EQ(check.code, 1);
    for (const char* named :
         {"the trigger helper on sales is not the program's", "the trigger own.orphans 9 on items is not",
          "the view spy is not the program's",
          "the table makers has texts of up to 300 characters in name"}) {
        EXPECT_THAT(restored.err, HasSubstr(named));
        EXPECT_THAT(check.out, HasSubstr(std::string("WRONG  files: ") + named));
    }
    EXPECT_THAT(check.out, HasSubstr("may be used by everybody on this machine: chmod o= shop.db"));
    // Following the advice helps.
    fs::permissions(bench.file("shop.db"), fs::perms(0660));
    for (const char* statement : {"drop trigger [helper]", "drop trigger [own.orphans 9]", "drop view [spy]",
                                  "delete from makers where code = 1"})
        EXPECT_EQ(bench.run({"sql", "--yes", statement}).code, 0) << statement;
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     files: shop.db"));
}

TEST(Restore, AShopOnAServerNeedsTheServersTools) {
    Workbench bench;
    ASSERT_EQ(bench.run({"connect", "--server", "PC1", "--database", "shop"}).code, 0);
    EXPECT_THAT(bench.run({"backup"}).err, HasSubstr("server's own tools"));
}

}  // namespace
