#include "audit/trail.h"

#include <fstream>

#include "support/services.h"
#include "support/shop.h"

namespace {

using audit::Kind;

class Trail : public testing::Test {
  protected:
    Trail() { open(); }
    // As a till does at its start.
    void open() {
        trail = {};
        trail.open(3, place, clock);
    }
    void note(const std::string& what) {
        trail.note({.kind = Kind::line_deleted,
                    .what = what,
                    .amount = common::Amount(12.5),
                    .item = 501,
                    .approver = audit::Person{1, "مدير"}},
                   {2, "كاشير"}, 1);
    }
    void write() { trail.write(shop.connection()); }
    // The breaks as "till number missing".
    std::string breaks() {
        std::string text;
        audit::verify(shop.connection(), place, [&](const audit::Break& found) {
            text += std::to_string(found.till) + " " + std::to_string(found.number) + " " +
                    std::to_string(found.missing) + ";";
        });
        return text;
    }

    test::Shop shop;
    test::FixedClock clock;
    test::TemporaryFolder folder;
    audit::Place place{folder.path(), "Shop"};
    audit::Trail trail;
};

TEST_F(Trail, EventsOutliveTheProgramAndAreWrittenOnce) {
    note("الأول");
    EXPECT_EQ(shop.number("select count(*) from till_journal"), 0);
    open();
    note("ثان 'x'");
    write();
    // Its answer is lost: the rows are there, and the till does not know.
    note("الثالث");
    audit::Batch batch = trail.batch();
    batch.write(shop.connection());
    open();
    note("الرابع");
    write();
    EXPECT_EQ(shop.cell("select count(*) from till_journal"), "4");
    EXPECT_EQ(shop.cell("select what from till_journal where num = 2"), "ثان 'x'");
    EXPECT_EQ(shop.cell("select what from till_journal where num = 4"), "الرابع");
    EXPECT_EQ(
        shop.cell("select min(amount) from till_journal where kind = 'line_deleted' and icode = 501 and "
                  "user_code = 2 and approver_name = 'مدير' and moment = '2026/11/21 10:42:00'"),
        "12.5");
    open();
    EXPECT_FALSE(trail.has_pending());
    EXPECT_EQ(breaks(), "");
}

TEST_F(Trail, TheChainShowsWhatWasChangedOrRemoved) {
    for (int i = 0; i < 6; ++i)
        note("x");
    write();
    const struct {
        const char* change;
        const char* back;
        const char* found;
    } cases[] = {
        {"update till_journal set amount = 12.49 where num = 2",
         "update till_journal set amount = 12.5 where num = 2", "3 2 0;"},
        {"update till_journal set what = 'y' where num = 6",
         "update till_journal set what = 'x' where num = 6", "3 6 0;"},
        {"update till_journal set approver = null where num = 1",
         "update till_journal set approver = 1 where num = 1", "3 1 0;"},
        {"update till_journal set num = 9 where num = 3", "update till_journal set num = 3 where num = 9",
         "3 4 1;"},
        {"delete from till_journal where num in (2, 3)", nullptr, "3 4 2;"},
        {"delete from till_journal where num > 4", nullptr, "3 4 2;"},
        {"delete from till_journal", nullptr, "3 7 6;"},
    };
    EXPECT_EQ(breaks(), "");
    for (const auto& c : cases) {
        shop.sql(c.change);
        EXPECT_EQ(breaks(), c.found) << c.change;
        if (c.back) shop.sql(c.back);
    }
    // The till continues from its own file, so the gap at the end stays visible everywhere.
    open();
    note("x");
    write();
    EXPECT_EQ(shop.cell("select num from till_journal"), "7");
    place.folder /= "elsewhere";
    EXPECT_EQ(breaks(), "3 7 6;");
}

TEST_F(Trail, HalfALineInTheFileCostsNoMoreThanItself) {
    note("x");
    std::ofstream(place.file_of(3), std::ios::app) << R"({"entry":{"id":5,"what)";
    open();
    note("y");
    open();
    write();
    EXPECT_EQ(shop.cell("select count(*) from till_journal where what in ('x', 'y')"), "2");
}

TEST_F(Trail, AShopWithoutTheTableKeepsNoJournal) {
    shop.sql("drop table till_journal");
    note("x");
    write();
    EXPECT_FALSE(trail.has_pending());
    EXPECT_EQ(breaks(), "");
}

}  // namespace
