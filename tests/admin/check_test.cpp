#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/checks.h"
#include "admin/shop.h"
#include "admin/workbench.h"
#include "support/tds_bytes.h"

namespace {

using test::Workbench;
using testing::HasSubstr;
using testing::Not;

TEST(Check, AGoodShopPasses) {
    for (const bool demo : {false, true}) {
        Workbench bench;
        bench.make_shop(demo);
        const auto run = bench.run({"check"});
        EXPECT_EQ(run.code, 0) << run.out << run.err;
        EXPECT_THAT(run.out, Not(HasSubstr("WRONG")));
        for (const char* subject : {"connection", "schema", "settings", "store", "drawer", "users", "disk",
                                    "unfinished saves", "invoices", "stock", "log"}) {
            EXPECT_THAT(run.out, HasSubstr(std::string("ok     ") + subject + ": ")) << run.out;
        }
        // The finding depends on this machine.
        EXPECT_THAT(run.out, HasSubstr("   printer: ")) << run.out;
    }
}

TEST(Check, AShortDiskIsNamed) {
    constexpr std::uintmax_t hundred_megabytes = 104'857'600;
    EXPECT_EQ(admin::check_disk(hundred_megabytes).front().verdict, admin::Verdict::good);
    EXPECT_THAT(admin::check_disk(hundred_megabytes - 1).front().text, HasSubstr("99 MB are free"));
    EXPECT_EQ(admin::check_disk(hundred_megabytes - 1).front().verdict, admin::Verdict::wrong);
}

TEST(Check, NamesWhatIsWrongWithTheShop) {
    const struct {
        const char* statement;
        const char* said;
        int code = 1;
    } cases[] = {
        {"update basic set st_d = 9", "store (st_d) is 9"},
        {"delete from cash", "no drawer"},
        {"insert into cash (code,[name],stcode,copen,salary1) values (2,'x',1,0,0)",
         "ok     drawer: 1, 2 in store 1; ", 0},
        {"update basic set mcash = 7", "main drawer (mst 1, mcash 7)"},
        {"update basic set max_dis = 110", "max_dis is 110"},
        {"update basic set cr_v = 'older'", "last used by version \"older\""},
        {"delete from basic", "has no row"},
        {"insert into basic (aname) values ('ثان')", "has 2 rows"},
        {"delete from users", "there is no user"},
        {"drop table saledata", "the table saledata is missing"},
        {"drop table saledata", "invoices: cannot be looked at"},
        {"drop table basic", "ok     users: 1"},
        {"drop table till_claim", "note   schema: the table till_claim is missing; a till whose", 0},
        {"insert into till_journal (cash_no, num, id, moment, hash) values (2, 1, 5, '2026/11/21', 'x')",
         "WRONG  journal: row 1 of till 2 (2026/11/21 00:00:00) was changed"},
        {"alter table items drop column price15", "no column price15"},
        {"update basic set [print] = '/no/such/port'", "/no/such/port is not there"},
        {"update basic set [print] = 'lpt9x/port'", "is not there"},
        {"update basic set [print] = 'shop.db'", "WRONG  printer: shop.db is no device and no receipt file"},
        {"update basic set [print] = '\\\\till\\roll'",
         "WRONG  printer: \\\\till\\roll is a printer of another"},
        {"update basic set cash = 'lpt4'", "WRONG  drawer port: lpt4 stands for no device"},
        {"update basic set cash = 'merlo-ver.txt'", "WRONG  drawer port: merlo-ver.txt is no device"},
    };
    for (const auto& c : cases) {
        Workbench bench;
        bench.make_shop();
        bench.sql(c.statement);
        const auto run = bench.run({"check"});
        EXPECT_EQ(run.code, c.code) << c.statement;
        EXPECT_THAT(run.out + run.err, HasSubstr(c.said)) << c.statement;
    }
}

TEST(Check, AddsThePrintersCodesOfLatinLetters) {
    Workbench bench;
    bench.make_shop(false);
    EXPECT_THAT(bench.run({"check"}).out,
                testing::AllOf(HasSubstr("ok     printer codes: "),
                               HasSubstr("shop.db, in the folder " + bench.folder().string())));
    // The codes of a shop of an earlier version, with one that the shop keeper added.
    bench.sql("delete from codes where wc >= 33 and wc <= 126 and wc <> 65");
    bench.sql("update codes set pc = 66, pc1 = 66 where wc = 65");
    EXPECT_THAT(bench.run({"check"}).out,
                HasSubstr("note   printer codes: the table codes has no row for 93"));
    EXPECT_THAT(bench.run({"check", "--add-codes"}).out, HasSubstr("93 rows added"));
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     printer codes: "));
    EXPECT_EQ(bench.cell("select pc from codes where wc = 65"), "66");
    EXPECT_EQ(bench.cell("select pc1 from codes where wc = 126"), "126");
}

TEST(Check, NamesWhyItCannotLook) {
    const struct {
        const char* what;
        void (*apply)(Workbench& bench);
        const char* said;
        const char* looked_at;  // all the same
    } cases[] = {
        {"no shop file", [](Workbench& b) { std::filesystem::remove(b.file("shop.db")); },
         "WRONG  connection: embedded, shop.db", ""},
        {"a folder in the log's place",
         [](Workbench& b) { std::filesystem::create_directories(admin::log_file(b.folder())); },
         "WRONG  log: cannot be read", "ok     stock: "},
        {"garbage", [](Workbench& b) { b.write("shop.db", std::string(5000, 'x')); },
         "restore the newest backup", ""},
        {"no version file", [](Workbench& b) { std::filesystem::remove(b.file("merlo-ver.txt")); },
         "WRONG  version file: ", "ok     stock: "},
        {"a silent server",
         [](Workbench& b) {
             b.run({"connect", "--server", "127.0.0.1," + std::to_string(test::tds::unused_port()),
                    "--database", "x", "--keep-password"},
                   "p\n");
         },
         "look whether the server is on", ""},
        {"no password of the login",
         [](Workbench& b) {
             b.run({"connect", "--server", "127.0.0.1", "--database", "x"});
         },
         "tallvex-admin connect --keep-password", ""},
        {"an address that leads to a server",
         [](Workbench& b) {
             b.run({"connect", "--server", "embedded", "--address", "127.0.0.1", "--database", "shop.db"});
         },
         "tallvex-admin connect --keep-password", ""},
    };
    for (const auto& c : cases) {
        Workbench bench;
        bench.make_shop();
        c.apply(bench);
        const auto run = bench.run({"check"});
        EXPECT_EQ(run.code, 1) << c.what;
        EXPECT_THAT(run.out, HasSubstr(c.said)) << c.what;
        EXPECT_THAT(run.out, HasSubstr(c.looked_at)) << c.what;
    }
}

// Rows as a save writes them; each case leaves some of them out.
class Saves : public testing::Test {
  protected:
    void SetUp() override {
        bench.make_shop();
        bench.sql("insert into custdata (ccode,cname,copen,cacc) values (7,'عميل',100,100)");
        bench.sql("insert into bankdata (bcode,bname) values (1,'بنك')");
    }
    void header(int number, int customer, int kind, double total, double discount = 0) {
        bench.sql("insert into sales (pnum,vcode,[date],ctype,ptot,pdis,stcode,stype,safe) values (" +
                  std::to_string(number) + "," + std::to_string(customer) + ",'2026/11/20'," +
                  std::to_string(kind) + "," + std::to_string(total) + "," + std::to_string(discount) +
                  ",1,0,0)");
    }
    void line(int number, int customer, int kind, int serial, double quantity, double price,
              double discount = 0) {
        bench.sql("insert into saledata (pnum,vcode,[date],ctype,stcode,serial,quan,price,disc) values (" +
                  std::to_string(number) + "," + std::to_string(customer) + ",'2026/11/20'," +
                  std::to_string(kind) + ",1," + std::to_string(serial) + "," + std::to_string(quantity) +
                  "," + std::to_string(price) + "," + std::to_string(discount) + ")");
    }
    void card(int number, double total, const std::string& reference) {
        header(number, -1, 0, total);
        line(number, -1, 0, 1, 1, total);
        bench.sql("update sales set stype = 1, safe = 1, bcode = 1, ref_no = '" + reference +
                  "' where pnum = " + std::to_string(number));
    }
    void bank_row(double amount, const std::string& reference) {
        bench.sql(
            "insert into btran (ser,bcode,[date],quan,[type],type1,stcode,note1) select 1,1,'2026/11/20'," +
            std::to_string(amount) + ",1,0,0,' مبيعات إئتمان رقم مرجعي " + reference + "'");
    }
    std::string wrong() {
        const auto run = bench.run({"check"});
        std::string lines;
        std::istringstream all(run.out);
        for (std::string line; std::getline(all, line);) {
            if (line.starts_with("WRONG")) lines += line + '\n';
        }
        EXPECT_EQ(run.code, lines.empty() ? 0 : 1) << run.out;
        return lines;
    }
    Workbench bench;
};

TEST_F(Saves, CompleteInvoicesPass) {
    header(1, -1, 0, 14.5, 1.45);
    line(1, -1, 0, 1, 2, 5);
    line(1, -1, 0, 2, 0.45, 10, 0);
    header(1, 7, 0, 30, 3);  // the account series has its own number 1
    line(1, 7, 0, 1, 3, 10);
    header(1, 7, 2, 10);
    line(1, 7, 2, 1, 1, 10);
    bench.sql("insert into vencuspay (vcode,ptype,ztype,quan) values (7,2,2,20)");
    bench.sql("update custdata set cacc = 100 + 27 - 10 - 20 where ccode = 7");
    card(2, 50, "R1");
    bank_row(50, "R1");
    EXPECT_EQ(wrong(), "");
}

TEST_F(Saves, HeaderWithoutLines) {
    header(15, -1, 0, 42);
    EXPECT_THAT(wrong(),
                HasSubstr("sale 15 of 2026/11/20 (store 1), total 42.00, has a header and no lines"));
}

TEST_F(Saves, LinesMissing) {
    header(15, -1, 0, 42);
    line(15, -1, 0, 1, 2, 10);
    header(3, -1, 2, 20);
    line(3, -1, 2, 2, 2, 10);  // the first line is not there
    const std::string said = wrong();
    EXPECT_THAT(
        said,
        HasSubstr("sale 15 of 2026/11/20 (store 1) has a total of 42.00 but its 1 lines add up to 20.00"));
    EXPECT_THAT(said, HasSubstr("return 3 of 2026/11/20"));
}

TEST_F(Saves, LinesWithoutHeader) {
    line(15, 7, 0, 1, 2, 10);
    EXPECT_THAT(wrong(),
                HasSubstr("sale 15 of 2026/11/20 (store 1, account customer 7) has 1 lines but no header"));
}

TEST_F(Saves, BalanceMovedWithoutHeader) {
    bench.sql("update custdata set cacc = cacc + 60 where ccode = 7");
    EXPECT_THAT(wrong(), HasSubstr("account customer 7 (عميل) owes 160.00"));
}

TEST_F(Saves, CardPaymentWithoutBankRow) {
    card(4, 50, "R1");
    card(5, 50, "R1");  // the same reference twice wants two rows
    bank_row(50, "R1");
    card(6, 20, "");
    const std::string said = wrong();
    EXPECT_THAT(said,
                HasSubstr("sale 5 of 2026/11/20 (store 1) was paid by card (bank 1, reference R1, 50.00)"));
    EXPECT_THAT(said, HasSubstr("sale 6 of"));
    EXPECT_THAT(said, Not(HasSubstr("sale 4 of")));
}

// Items opened with 10 pieces each at 10:42 of the day.
class StockMoves : public Saves {
  protected:
    void SetUp() override {
        Saves::SetUp();
        bench.write("items.csv", "code,name,price12,stock\n1,أ,5,10\n2,ب,5,10\n");
        ASSERT_EQ(bench.run({"import-items", "items.csv"}).code, 0);
        bench.sql("insert into stocks (code,[name]) values (2,'ثان')");
    }
    // A sale or return of one item, with or without its stock moved.
    void sell(int number, int kind, int item, double quantity, bool moved,
              const std::string& time = "11:00:00") {
        header(number, -1, kind, quantity * 5);
        line(number, -1, kind, 1, quantity, 5);
        const std::string at =
            " where pnum = " + std::to_string(number) + " and ctype = " + std::to_string(kind);
        bench.sql("update sales set [date] = '2026/11/21'" + at);
        bench.sql("update saledata set [date] = '2026/11/21', icode = " + std::to_string(item) +
                  ", quan1 = quan, time_ = '" + time + "'" + at);
        if (!moved) return;
        bench.sql("update stk set quan = quan " + std::string(kind < 2 ? "- " : "+ ") +
                  std::to_string(quantity) + " where icode = " + std::to_string(item));
    }
};

TEST_F(StockMoves, AgreeWithSalesReturnsAndTransfers) {
    sell(1, 0, 1, 2.5, true);
    sell(2, 0, 2, 12, true);  // below stock
    sell(1, 2, 1, 1, true);
    sell(3, 0, 1, 4, false, "10:00:00");  // before the stock was counted
    bench.sql("insert into transdata (tnum,tdate,icode,quan,stcode,stcode1) values (1,'2026/11/21',1,3,1,2)");
    bench.sql("update stk set quan = quan - 3 where icode = 1");
    bench.sql("insert into modify (icode,stcode,[date],quan) values (1,1,'2026/11/21 12:00:00',-2)");
    bench.sql("insert into bad_data (icode,stcode,[date],quan) values (1,1,'2026/11/21',1)");
    bench.sql("insert into bad_data (icode,stcode,[date],quan) values (1,1,'2026/11/21 10:00:00',1)");
    bench.sql("update stk set quan = quan - 3 where icode = 1");
    EXPECT_EQ(wrong(), "");
    bench.sql("insert into modify (icode,stcode,[date],quan) values (2,1,'2026/11/21 12:00:00',5)");
    EXPECT_THAT(wrong(), HasSubstr("item 2 (ب) in store 1: -2.000 pieces"));
}

TEST_F(StockMoves, NameTheInvoiceThatDidNotMoveIt) {
    sell(1, 0, 1, 2, false);
    sell(2, 0, 1, 3, true);
    sell(3, 2, 2, 1, false);
    const std::string said = wrong();
    EXPECT_THAT(said, HasSubstr("item 1 (أ) in store 1: 7.000 pieces, but opening stock, sales, goods in, "
                                "transfers and corrections make "
                                "5.000; most likely sale 1 of 2026/11/21 did not move it"));
    EXPECT_THAT(said, HasSubstr("item 2 (ب) in store 1: 10.000 pieces, but opening stock, sales, goods in, "
                                "transfers and corrections make "
                                "11.000; most likely return 3"));
    ASSERT_EQ(bench.run({"check", "--accept-stock"}).code, 0);
    bench.sql("update saledata set time_ = '09:00:00'");
    EXPECT_EQ(wrong(), "");
}

// Goods in have the date of the supplier's invoice, so older ones may have come before or after the opening.
TEST_F(StockMoves, AgreeWithGoodsIn) {
    bench.sql("insert into purchase (pnum,ctype,stcode,op_n) select 1,1,1,5 union all select 1,3,1,6");
    bench.sql(
        "insert into purdata (pnum,ctype,stcode,[date],icode,quan1) select 1,1,1,'2026/11/22',1,24 union all "
        "select 1,3,1,'2026/11/23',1,6 union all select 1,1,1,'2026/11/20',2,7");
    bench.sql("update stk set quan = 28 where icode = 1");
    for (const int held : {10, 17}) {
        bench.sql("update stk set quan = " + std::to_string(held) + " where icode = 2");
        EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     stock: ")) << held;
    }
    bench.sql("update stk set quan = 34 where icode = 1");
    EXPECT_THAT(wrong(), HasSubstr("item 1 (أ) in store 1: 34.000 pieces"));
}

TEST_F(StockMoves, OtherProgramsMayMoveItToo) {
    bench.sql("update stk set quan = 30 where icode = 1");
    bench.sql("insert into purdata (pnum,icode,quan) values (1,1,20)");
    EXPECT_EQ(wrong(), "");
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("note   stock: item 1"));
}

TEST_F(Saves, AVendorIsOwedForGoodsLessReturnsAndPayments) {
    for (const char* statement :
         {"insert into vendata (vcode,vname,vopen,vacc) select 3,N'مورد',100,152.5",
          "insert into purchase (pnum,vcode,ctype,ptot,pdis,ptax,op_n) select 1,3,1,90,10,2.5,5",
          "insert into purchase (pnum,vcode,ctype,ptot,op_n) select 1,3,3,20,6",
          "insert into vencuspay (vcode,ztype,ptype,[type],quan) select 3,1,1,1,10"})
        bench.sql(statement);
    EXPECT_EQ(wrong(), "");
    bench.sql("update vendata set vacc = 150 where vcode = 3");
    EXPECT_THAT(wrong(), HasSubstr("vendor 3 (مورد) is owed 150.00"));
    bench.sql("update purchase set op_n = null");  // another program's, which may count otherwise
    EXPECT_EQ(wrong(), "");
}

TEST_F(Saves, OldInvoicesAreLookedAtWhenAsked) {
    header(15, -1, 0, 42);
    bench.sql("update sales set [date] = '2026/01/05'");
    EXPECT_EQ(wrong(), "");
    EXPECT_EQ(bench.run({"check", "--days", "365"}).code, 1);
}

TEST_F(Saves, TheLogTellsWhichSaveStoppedOrWasCutOff) {
    const std::filesystem::path log = admin::log_file(bench.folder());
    std::filesystem::create_directories(log.parent_path());
    const auto write = [&](std::initializer_list<const char*> lines) {
        std::ofstream file(log);
        for (const char* line : lines)
            file << line << '\n';
    };
    const char* begun =
        "save of invoice 9 (kind 0, customer -1, store 1) begins, lines 2  ----  250  ----  "
        "2026/11/20 10:14";
    write(
        {"start  ----  222  ----  2026/11/20 09:00", begun,
         "save of invoice 9 (kind 0, customer -1, store 1) stopped, last finished step: x: disk full  ----  "
         "250  "
         "----  2026/11/20 10:15",
         "save of invoice 8 (kind 0) stopped, last finished step: x: y  ----  250  ----  2025/01/01 10:15"});
    std::string said = wrong();
    EXPECT_THAT(said, HasSubstr("2026/11/20 10:15: save of invoice 9"));
    EXPECT_THAT(said, Not(HasSubstr("invoice 8")));

    // Cut off before its header, reported to the cashier and saved again, or finished.
    write({begun});
    EXPECT_EQ(wrong(), "");
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("note   log: 2026/11/20 10:14: save of invoice 9"));
    write({begun,
           "save of invoice 9 (kind 0, customer -1, store 1) stopped, nothing saved, last finished step: x: y"
           "  ----  250  ----  2026/11/20 10:15"});
    EXPECT_EQ(wrong(), "");
    write({begun,
           "save of invoice 9 (kind 0, customer -1, store 1) finished  ----  250  ----  2026/11/20 10:15"});
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     log: "));

    // Once the stock is corrected by hand, only later saves are reported.
    write({begun,
           "save of invoice 9 (kind 0, customer -1, store 1) stopped, last finished step: x: y  ----  250  "
           "----  2026/11/20 10:15"});
    EXPECT_EQ(bench.run({"check", "--mended"}).code, 0);
    EXPECT_EQ(wrong(), "");
    std::ofstream(log, std::ios::app) << "save of invoice 10 (kind 0, customer -1, store 1) stopped, last "
                                         "finished step: x: y  ----  250  ----  "
                                         "2026/11/21 10:50\n";
    EXPECT_THAT(wrong(), HasSubstr("invoice 10"));
}

}  // namespace
