// tallvex-admin settings, and what the check says about them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "admin/workbench.h"
#include "startup/shop_files.h"

namespace {

using test::Workbench;
using testing::HasSubstr;
using testing::Not;

TEST(Settings, AreShownAndSetAfterChecking) {
    Workbench bench;
    bench.make_shop();
    EXPECT_THAT(bench.run({"settings"}).out, HasSubstr("net_from = 1900/01/01\n"));
    const auto set = bench.run({"settings", "net_from", "١/١٢/٢٠٢٦"});
    EXPECT_EQ(set.code, 0);
    EXPECT_EQ(set.out, "net_from = 2026/12/01, was 1900/01/01\n");
    const struct {
        std::vector<std::string> line;
        int code;
        std::string said;
    } cases[] = {
        {{"settings", "net_from", "2026/13/01"}, 1, "net_from cannot be \"2026/13/01\"; give it: a day"},
        {{"settings", "net_from", "10:30"}, 1, "net_from cannot be"},
        {{"settings", "net_from", "' or 1=1"}, 1, "net_from cannot be"},
        {{"settings", "net_form", "2026/12/01"}, 1, "there is no setting \"net_form\""},
        {{"settings", "display_greeting", "أهلا"}, 1, "give it: up to 40 Latin letters"},
        {{"settings", "screen_greeting", "a\nb"}, 1, "screen_greeting cannot be"},
        {{"settings", "denominations", "20 -5"}, 1, "denominations cannot be"},
        {{"settings", "net_from"}, 2, "value is required"},
    };
    for (const auto& c : cases) {
        const auto run = bench.run(c.line);
        EXPECT_EQ(run.code, c.code) << c.said;
        EXPECT_THAT(run.err, HasSubstr(c.said));
    }
    EXPECT_EQ(bench.cell("select value from till_setting where name = 'net_from'"), "2026/12/01");
    // A stick that is not plugged in yet is a note.
    const auto stick = bench.run({"settings", "backup_to", bench.folder().string() + "; /nowhere/stick"});
    EXPECT_EQ(stick.code, 0);
    EXPECT_THAT(stick.err, testing::StartsWith("note: there is no folder /nowhere/stick now;"));
    EXPECT_THAT(bench.cell("select value from till_setting where name = 'backup_to'"), HasSubstr("/stick"));
    bench.sql("drop table till_setting");
    EXPECT_THAT(bench.run({"settings"}).out, HasSubstr("net_from = (not set)\n"));
    const auto none = bench.run({"settings", "net_from", "2026/12/01"});
    EXPECT_EQ(none.code, 1);
    EXPECT_THAT(none.err, HasSubstr("start the till once"));
}

TEST(Settings, AreLookedAtByTheCheck) {
    Workbench bench;
    bench.make_shop();
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     settings: net_from 1900/01/01\n"));
    bench.sql("update till_setting set value = 'tomorrow'");
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("WRONG  settings: net_from is \"tomorrow\""));
    bench.sql("delete from till_setting");
    const auto sale = [&](int number, int customer, int kind, int payment, const char* discount,
                          const char* day) {
        bench.sql("insert into sales (pnum,vcode,ctype,stype,ptot,pdis,stcode,ptype,[date]) values (" +
                  std::to_string(number) + "," + std::to_string(customer) + "," + std::to_string(kind) + "," +
                  std::to_string(payment) + ",100," + discount + ",1,1,'" + day + "')");
    };
    // On account, by card, a return, too long ago, without a discount.
    sale(1, 7, 0, 0, "5", "2026/11/20");
    sale(2, -1, 0, 1, "5", "2026/11/20");
    sale(3, -1, 2, 0, "5", "2026/11/20");
    sale(4, -1, 0, 0, "5", "2026/10/20");
    sale(5, -1, 0, 0, "0", "2026/11/20");
    EXPECT_THAT(bench.run({"check"}).out, Not(HasSubstr("settings: 1 cash")));
    sale(6, -1, 0, 0, "4.50", "2026/11/21");
    sale(7, -1, 0, 0, "2.08", "2026/10/21");
    EXPECT_THAT(bench.run({"check"}).out,
                HasSubstr("note   settings: 2 cash sales since 2026/10/21 have an invoice discount, 6.58 in "
                          "all"));
    ASSERT_EQ(bench.run({"settings", "net_from", "2026/11/21"}).code, 0);
    EXPECT_THAT(bench.run({"check"}).out, HasSubstr("ok     settings: net_from 2026/11/21\n"));
}

TEST(Stamp, WritesTheVersionOfTheVersionFile) {
    test::Workbench bench;
    bench.make_shop();
    startup::write_version_file(bench.folder(), "9.1.0");
    auto said = bench.run({"stamp"});
    EXPECT_EQ(said.code, admin::done) << said.err;
    EXPECT_EQ(bench.cell("select cr_v from basic"), "9.1.0");
    EXPECT_EQ(said.err, "");
    // Back to an older one, and in a shop that was never stamped.
    startup::write_version_file(bench.folder(), "9.0.0");
    EXPECT_NE(bench.run({"stamp"}).err.find("tills of the newer version"), std::string::npos);
    bench.open()->execute("alter table basic drop column cr_v");
    EXPECT_EQ(bench.run({"stamp"}).code, admin::done);
    EXPECT_EQ(bench.cell("select cr_v from basic"), "9.0.0");
}

}  // namespace
