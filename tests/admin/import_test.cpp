#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"
#include "common/code_page.h"
#include "goods/barcodes.h"

namespace {

using test::Workbench;

class Import : public testing::Test {
  protected:
    void SetUp() override { bench.make_shop(); }
    test::Run import(const std::string& csv) {
        bench.write("items.csv", csv);
        return bench.run({"import-items", "items.csv"});
    }
    Workbench bench;
};

TEST_F(Import, WritesItemsBarcodesStockMakersAndGroups) {
    const auto run = import(
        "code;name;maker;group;pack;carton;price11;price12;price13;price22;barcode;carton_barcode;stock;"
        "expiry\n"
        "10;جبنة بيضاء;ندوان;ألبان;6;12;20;25.50;24;150;6229413700114;6229413700237;48;2027/03/01\n"
        "11;خبز \"صاج\";خبيزون;مخبوزات;;;;٥٫٧٥;;;A-7|B-8;;;\n"
        "12;لبن;ندوان;ألبان;;;;3;;;;;5;\n");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "3 items, 4 barcodes and 2 rows of stock imported\n");
    const struct {
        std::string query;
        std::string answer;
    } answers[] = {
        {"select [name] from items where code = 11", "خبز \"صاج\""},
        {"select price12 from items where code = 10", "25.5"},
        {"select price14 from items where code = 10", "25.5"},  // no price: the retail price
        {"select price22 from items where code = 10", "150"},   // as given
        {"select price32 from items where code = 10", "306"},   // no price: the unit's, twelve times
        {"select price12 from items where code = 11", "5.75"},  // Arabic digits and decimal mark
        {"select num1 from items where code = 11", "1"},
        {"select num2 from items where code = 11", ""},
        {"select count(*) from makers", "2"},
        {"select g.[name] from items i inner join item_types g on i.itype = g.code where i.code = 12",
         "ألبان"},
        {"select scode from barcode where bar = '6229413700237'", "3"},
        {"select code from barcode where bar = 'B-8'", "11"},
        {"select edate from stk where icode = 10", "2027/03/01 00:00:00"},
        {"select edate from stk where icode = 12", "3000/01/01 00:00:00"},
        {"select stcode from stk where icode = 12", "1"},
    };
    for (const auto& a : answers)
        EXPECT_EQ(bench.cell(a.query), a.answer) << a.query;
}

TEST_F(Import, NamesEveryBadLineAndImportsNothing) {
    bench.sql("insert into items (code,[name]) values (5,'قديم')");
    bench.sql("insert into barcode (bar,code,scode) values ('OLD1',5,1)");
    const auto run = import(
        "code,name,price12,pack,barcode,pack_barcode,stock,store,expiry,service\n"
        "1,سليم,5,,,,,,,\n"  // line 2: good
        "x,اسم,5,,,,,,,\n"
        "0,اسم,5,,,,,,,\n"
        "5,اسم,5,,,,,,,\n"
        "1,اسم,5,,,,,,,\n"
        "6,,5,,,,,,,\n"
        "7,اسم,,,,,,,,\n"
        "8,اسم,abc,,,,,,,\n"
        "9,اسم,-1,,,,,,,\n"
        "10,اسم,5,0,,,,,,\n"
        "11,اسم,5,,6229413700115,,,,,\n"
        "12,اسم,5,,old1,,,,,\n"
        "13,اسم,5,,5,,,,,\n"
        "14,اسم,5,,2000123004500,,,,,\n"
        "15,اسم,5,,,P1,,,,\n"
        "16,اسم,5,,Q|Q,,,,,\n"
        "17,اسم,5,,,,1,9,,\n"
        "18,اسم,5,,,,1,1,2027/02/30,\n"
        "19,اسم,5,,,,3,,,1\n"
        "20,\xff\xfe,5,,,,,,,\n"
        "21,اسم,5\n"
        "22," +
        std::string(101, 'n') +
        ",5,,,,,,,\n"
        "99999999999,اسم,5,,,,,,,\n"
        "23,اسم,1e400,,,,,,,\n"
        "24,اسم'); drop table items;--,5,,,,,,,yes\n"
        "25,اسم,\"1,250.00\",,,,,,,\n"
        "26,اسم,5,,'622,,,,,\n"
        "27,اسم,5,,622 103,,,,,\n"
        "28,اسم,5,,622 ,,,,,\n"
        "29,اسم,5,,622||7,,,,,\n"
        "30,اسم,0,,,,,,,\n"
        "31,اسم,5,,,,1,,05/26,\n"
        "32,اسم,5,,,,1,,10:30,\n");
    EXPECT_EQ(run.code, 1);
    const std::vector<std::pair<int, std::string>> expected = {{3, "code \"x\" is no whole number"},
                                                               {4, "code \"0\""},
                                                               {5, "the shop has an item 5 already"},
                                                               {6, "code 1 is in the file twice"},
                                                               {7, "name is empty"},
                                                               {8, "price12 (the retail price) is empty"},
                                                               {9, "price12 \"abc\" is no number"},
                                                               {10, "price12 \"-1\" is below 0"},
                                                               {11, "pack must be more than 0"},
                                                               {12, "wrong check digit"},
                                                               {13, "belongs to another item"},
                                                               {14, "also the code of an item"},
                                                               {15, "label of the scale"},
                                                               {16, "without its number of base units"},
                                                               {17, "barcode Q is there twice"},
                                                               {18, "no store \"9\""},
                                                               {19, "expiry \"2027/02/30\" is no date"},
                                                               {20, "a service has no stock"},
                                                               {21, "not UTF-8"},
                                                               {22, "has 3 cells"},
                                                               {23, "name is too long"},
                                                               {24, "is no whole number"},
                                                               {25, "is no number"},
                                                               {26, "service is neither 0 nor 1"},
                                                               {27, "price12 \"1,250.00\" has a comma"},
                                                               {28, "\"'622\" has an apostrophe"},
                                                               {29, "\"622 103\" has a blank"},
                                                               {30, "\"622 \" has a blank"},
                                                               {31, "a barcode is empty"},
                                                               {32, "price12 is 0"},
                                                               {33, "expiry \"05/26\" is no date"},
                                                               {34, "expiry \"10:30\" is no date"}};
    std::istringstream lines(run.err);
    std::string line;
    for (const auto& [number, reason] : expected) {
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_THAT(line, testing::StartsWith("items.csv:" + std::to_string(number) + ": "));
        EXPECT_THAT(line, testing::HasSubstr(reason));
    }
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_THAT(line, testing::HasSubstr("mend the 32 lines"));
    EXPECT_EQ(bench.cell("select count(*) from items"), "1");
    EXPECT_EQ(bench.cell("select count(*) from barcode"), "1");
    EXPECT_EQ(bench.cell("select count(*) from stk"), "0");
}

TEST_F(Import, NotesWhatShouldBeLookedAt) {
    bench.sql("insert into items (code,[name]) values (5,'Tea')");
    const auto run = import(
        "code,name,price11,price12,pack,price21,price22,price32,expiry,stock\n"
        "1,لبن,34,41.5,6,,,0,01/05/2027,2\n"  // no carton: its price 0 means nothing
        "2,tea,5,4.75,,,,,,\n"
        "3,لبن,34,41.5,6,204,203.99,,,\n"
        "4,\"جبنة\nرومي\",0,9,,,,,,\n"
        "6, عسل ,0,9,,,,,,\n");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err,
              "items.csv:3: note: name is also that of item 5\n"
              "items.csv:3: note: price12 4.75 is below the cost 5\n"
              "items.csv:4: note: name is also that of item 1\n"
              "items.csv:4: note: price22 203.99 is below the cost 204\n"
              "items.csv:5: note: name becomes \"جبنة رومي\", on one line and without the blanks around it\n"
              "items.csv:7: note: name becomes \"عسل\", on one line and without the blanks around it\n");
    EXPECT_EQ(bench.cell("select count(*) from items"), "6");
    EXPECT_EQ(bench.cell("select edate from stk where icode = 1"), "2027/05/01 00:00:00");
}

TEST_F(Import, RefusesOtherFiles) {
    std::string olives;  // 51 of them fill 102 places of a column
    for (int i = 0; i < 51; ++i)
        olives += "🫒";
    const struct {
        std::string csv;
        std::string reason;
    } cases[] = {
        {"", "items.csv:1: the file is empty"},
        {"code,name\n1,a\n", "the column \"price12\" is missing"},
        {"code,name,price12,colour\n", "\"colour\" is no column"},
        {"1,شاي,5\n2,بن,6\n", "items.csv:1: the first line must hold the names of the columns"},
        {"code,name,price12,name\n", "the column \"name\" is there twice"},
        {"code,name,price12\n1,\"a,2\n", "items.csv:2: a quoted cell is never closed"},
        {"code,name,price12\n", "there is no item below the first line"},
        {std::string("\xFF\xFE"
                     "c\0o\0d\0e\0",
                     10),
         "UTF-16"},
        {"code,name,price12\n1,a\x1b"
         "b,2\n",
         "name has a control character"},
        {"code,name,price12\n1," + olives + ",2\n", "name is too long"},
        {"code,name,price12,barcode\n1,a,2,6.22941E+12\n", "rounded by the spreadsheet"},
        {"code,name,price12,barcode\n1,a,2,\n3,a,2,1\n",
         "items.csv:3: barcode 1 is also the code of an item"},
        {"code,name,price12,barcode\n1,a,2,3\n3,a,2,\n",
         "items.csv:3: code 3 is also a barcode of another line"},
        {"code,name,price12\n1,\xe1\xc8\xe4,2\n", "give --code-page-1256"},
    };
    for (const auto& c : cases) {
        const auto run = import(c.csv);
        EXPECT_EQ(run.code, 1) << c.csv;
        EXPECT_THAT(run.err, testing::HasSubstr(c.reason)) << c.csv;
    }
    EXPECT_EQ(bench.run({"import-items", "missing.csv"}).code, 1);
    EXPECT_EQ(bench.run({"import-items", "."}).code, 1);
}

TEST_F(Import, ReadsFilesOfSpreadsheets) {
    // Old line ends, emptied rows, a name on two lines, Arabic digits everywhere.
    auto run =
        import("code,name,price12,stock,expiry,barcode\r,,,,,\r\r١,\"لبن\nكامل\",٥,٢,٢٠٢٧/٠٣/٠١,٦٢٢\r");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(bench.cell("select [name] from items where code = 1"), "لبن كامل");
    EXPECT_EQ(bench.cell("select edate from stk where icode = 1"), "2027/03/01 00:00:00");
    EXPECT_EQ(bench.cell("select code from barcode where bar = '622'"), "1");
    bench.write("windows.csv", common::to_code_page_1256("الكود,اسم الصنف,سعر بيع\n2,جبنة,5\n"));
    run = bench.run({"import-items", "windows.csv", "--code-page-1256"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "1 item, 0 barcodes and 0 rows of stock imported\n");
    EXPECT_EQ(bench.cell("select [name] from items where code = 2"), "جبنة");
}

TEST_F(Import, AFailureInTheMiddleUndoesWhatWasWritten) {
    bench.sql("drop table stk");
    const auto run = import("code,name,maker,price12,barcode,stock\n1,أ,م,2,X,\n2,ب,م,2,Y,4\n");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(bench.cell("select count(*) from items"), "0");
    EXPECT_EQ(bench.cell("select count(*) from barcode"), "0");
    EXPECT_EQ(bench.cell("select count(*) from makers"), "0");
    EXPECT_THAT(run.err, testing::HasSubstr("items.csv:3: the database says: "));
}

TEST_F(Import, TakesALargeFileWithAProgressBar) {
    std::string csv = "code,name,maker,price12,barcode,stock\n";
    constexpr int count = 5000;
    for (int i = 1; i <= count; ++i) {
        const std::string n = std::to_string(i);
        csv += n + ",صنف رقم " + n + ",مصنع " + std::to_string(i % 50) + ",2.5,C-" + n + ",10\n";
    }
    bench.write("items.csv", csv);
    std::ostringstream out;
    std::ostringstream err;
    std::istringstream in;
    test::FixedClock clock;
    admin::Tool tool{out, err, in, bench.folder(), clock, &err};
    ASSERT_EQ(admin::run_tool({admin::add_import_items}, {"import-items", "items.csv"}, tool), 0)
        << err.str();
    EXPECT_EQ(out.str(), "5000 items, 5000 barcodes and 5000 rows of stock imported\n");
    EXPECT_THAT(err.str(), testing::AllOf(testing::HasSubstr("reading ["), testing::HasSubstr("writing ["),
                                          testing::HasSubstr("] 50%"), testing::HasSubstr("] 100%"),
                                          testing::EndsWith("\r\x1b[K")));
    EXPECT_EQ(bench.cell("select count(distinct fact) from items"), "50");
}

TEST(Ean13, KnowsTheCheckDigit) {
    for (const std::string_view good : {"4006381333931", "6229413700114", "0000000000000"}) {
        EXPECT_TRUE(goods::is_true_ean(good)) << good;
    }
    for (const std::string_view bad :
         {"4006381333932", "400638133393", "40063813339310", "400638133393x", ""}) {
        EXPECT_FALSE(goods::is_true_ean(bad)) << bad;
    }
}

}  // namespace
