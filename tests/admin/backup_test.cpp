#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "admin/workbench.h"
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
    // Two restores in one second keep what each found.
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
        EXPECT_EQ(bench.cell("select aname from basic"), "متجري");
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
    for (const char* file : {"missing", "empty", "garbage", "other.db", "shop.db", "."}) {
        const auto run = bench.run({"restore", file});
        EXPECT_EQ(run.code, 1) << file;
        EXPECT_EQ(bench.cell("select aname from basic"), "باق") << file;
    }
}

TEST(Restore, AShopOnAServerNeedsTheServersTools) {
    Workbench bench;
    ASSERT_EQ(bench.run({"connect", "--server", "PC1", "--database", "shop"}).code, 0);
    EXPECT_THAT(bench.run({"backup"}).err, HasSubstr("server's own tools"));
}

}  // namespace
