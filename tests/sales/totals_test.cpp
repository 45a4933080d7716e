// The totals after every change, and the discount on the whole invoice.
#include "sales/counter.h"
#include "sales/messages.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

// One line of the delivery service at the given total, at no cost.
sales::SalesDesk& line_of(Counter& counter, const char* price) {
    auto& desk = counter.open();
    EXPECT_TRUE(counter.enter("300"));
    EXPECT_TRUE(desk.lines().commit_edit(0, column::price, price));
    return desk;
}

TEST(Totals, DiscountFollowsThePercent) {
    Counter counter;
    auto& desk = line_of(counter, "50");
    ASSERT_TRUE(desk.lines().CommitDiscountPercent("10"));
    EXPECT_EQ(desk.sale().figures.discount_value, "5.00");
    EXPECT_EQ(desk.sale().figures.net, "45.00");
    ASSERT_TRUE(counter.enter("*"));
    ASSERT_TRUE(desk.lines().commit_edit(1, column::quantity, "1"));
    ASSERT_TRUE(desk.lines().commit_edit(1, column::price, "10"));
    EXPECT_EQ(desk.sale().figures.total, "60.00");
    EXPECT_EQ(desk.sale().figures.discount_value, "6.00");
    EXPECT_EQ(desk.sale().figures.net, "54.00");
    desk.lines().delete_line(1);
    desk.lines().delete_line(0);
    EXPECT_EQ(desk.sale().figures.total, "0.00");
    EXPECT_EQ(desk.sale().figures.discount_value, "0.00");
    EXPECT_EQ(desk.sale().figures.net, "0.00");
    EXPECT_EQ(desk.sale().figures.discount_percent, "10.00") << "the percent outlives the lines";
    EXPECT_FALSE(desk.sale().current_row.has_value());
}

TEST(Totals, DeletingALineRenumbersAndKeepsTheCursorInside) {
    Counter counter;
    auto& desk = counter.open();
    for (const char* code : {"300", "400", "410"})
        ASSERT_TRUE(counter.enter(code));
    desk.lines().delete_line(1);
    EXPECT_EQ(counter.cell(1, column::number), "2");
    EXPECT_EQ(counter.cell(1, column::code), "410");
    EXPECT_EQ(desk.sale().current_row, 1u);
    desk.lines().delete_line(1);
    EXPECT_EQ(desk.sale().current_row, 0u);
    desk.lines().delete_line(7);
    EXPECT_EQ(desk.invoice().lines.size(), 1u);
}

TEST(Totals, InvoiceDiscountAtItsEdges) {
    struct Case {
        bool by_percent;
        const char* typed;
        bool above_ceiling_allowed;
        const char* said;  // nullptr: accepted without a message
        const char* value;
        const char* percent;
        const char* net;
    };
    const char* check = "تأكد من قيمة الخصم";
    const char* refused = "غير مسموح بهذا الخصم";
    const Case cases[] = {
        {false, "10", false, nullptr, "10.00", "10.00", "90.00"},
        {false, "10.01", false, refused, "0.00", "0.00", "100.00"},
        {false, "10.01", true, nullptr, "10.01", "10.01", "89.99"},
        {false, "100", true, check, "0.00", "0.00", "100.00"},
        {false, "100", false, check, "0.00", "0.00", "100.00"},
        {false, "99.99", true, nullptr, "99.99", "99.99", "0.01"},
        {false, "0", false, nullptr, "0.00", "0.00", "100.00"},
        {false, "", false, nullptr, "0.00", "0.00", "100.00"},
        {false, "-1", true, check, "0.00", "0.00", "100.00"},
        {false, "ألف", true, check, "0.00", "0.00", "100.00"},
        {true, "10", false, nullptr, "10.00", "10.00", "90.00"},
        {true, "10.01", false, refused, "0.00", "0.00", "100.00"},
        {true, "١٠٫٠١", true, nullptr, "10.01", "10.01", "89.99"},
        {true, "100", true, check, "0.00", "0.00", "100.00"},
        {true, "1e308", true, check, "0.00", "0.00", "100.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.typed) + (c.by_percent ? " %" : ""));
        Counter counter;
        if (!c.above_ceiling_allowed) counter.forbid({301});
        auto& desk = line_of(counter, "100");
        EXPECT_TRUE(desk.lines().CommitDiscountPercent("3"));  // a refusal must remove it
        const bool taken = c.by_percent ? desk.lines().CommitDiscountPercent(c.typed)
                                        : desk.lines().CommitDiscountValue(c.typed);
        EXPECT_EQ(taken, c.said == nullptr);
        if (c.said != nullptr)
            EXPECT_THAT(counter.said(), ElementsAre(c.said));
        else
            EXPECT_THAT(counter.said(), IsEmpty());
        EXPECT_EQ(desk.sale().figures.discount_value, c.value);
        EXPECT_EQ(desk.sale().figures.discount_percent, c.percent);
        EXPECT_EQ(desk.sale().figures.net, c.net);
    }
}

TEST(Totals, AValueIsShownAsTypedHoweverOddItsPercent) {
    for (const char* value : {"0.01", "0.33", "1.00", "2.35", "2.99"}) {
        Counter counter;
        auto& desk = line_of(counter, "30.03");
        ASSERT_TRUE(desk.lines().CommitDiscountValue(value));
        EXPECT_EQ(desk.sale().figures.discount_value, value);
    }
}

TEST(Totals, LossOfTheWholeInvoiceIsWarnedOf) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("410"));  // 12.00, cost 10
    EXPECT_TRUE(desk.lines().CommitDiscountValue("2"));
    EXPECT_THAT(counter.said(), IsEmpty());
    EXPECT_TRUE(desk.lines().CommitDiscountValue("2.01"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::discount_loses)));
    EXPECT_EQ(desk.sale().figures.net, "9.99");
}

TEST(Totals, CellsComeBackFromTheirTexts) {
    Counter counter;
    auto& desk = counter.open();
    ASSERT_TRUE(counter.enter("6221000400029"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::quantity, "2.5"));
    ASSERT_TRUE(desk.lines().commit_edit(0, column::discount_value, "1.5"));
    desk.lines().set_supplier(0, 2);
    ASSERT_TRUE(counter.enter("*"));
    EXPECT_EQ(sales::Line::from_cells(desk.invoice().cells(0)).source_store, 2);
    for (std::size_t row = 0; row < 2; ++row)
        EXPECT_EQ(sales::Line::from_cells(desk.invoice().cells(row)).cells(static_cast<int>(row) + 1),
                  desk.invoice().cells(row));
    std::array<std::string, column::count> broken;
    broken.fill("'; x 🍎");
    const auto line = sales::Line::from_cells(broken);
    EXPECT_TRUE(line.is_general());
    EXPECT_EQ(line.total(), 0);
    EXPECT_EQ(line.factor, 1);
}

}  // namespace
