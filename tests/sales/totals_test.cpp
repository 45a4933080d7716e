// Totals that follow, and the discount on the whole invoice.
#include "sales/counter.h"
#include "sales/messages.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using test::Counter;
using testing::ElementsAre;
using testing::IsEmpty;

// One line of the delivery service at the given total, at no cost.
sales::SalesScreen& line_of(Counter& counter, const char* price) {
    auto& screen = counter.open();
    EXPECT_TRUE(screen.EnterItem("300"));
    EXPECT_TRUE(screen.commit_edit(0, column::price, price));
    return screen;
}

TEST(Totals, DiscountFollowsThePercent) {
    Counter counter;
    auto& screen = line_of(counter, "50");
    ASSERT_TRUE(screen.CommitDiscountPercent("10"));
    EXPECT_EQ(screen.figures().discount_value, "5.00");
    EXPECT_EQ(screen.figures().net, "45.00");
    ASSERT_TRUE(screen.EnterItem("*"));
    ASSERT_TRUE(screen.commit_edit(1, column::quantity, "1"));
    ASSERT_TRUE(screen.commit_edit(1, column::price, "10"));
    EXPECT_EQ(screen.figures().total, "60.00");
    EXPECT_EQ(screen.figures().discount_value, "6.00");
    EXPECT_EQ(screen.figures().net, "54.00");
    screen.delete_line(1);
    screen.delete_line(0);
    EXPECT_EQ(screen.figures().total, "0.00");
    EXPECT_EQ(screen.figures().discount_value, "0.00");
    EXPECT_EQ(screen.figures().net, "0.00");
    EXPECT_EQ(screen.figures().discount_percent, "10.00") << "the percent outlives the lines";
    EXPECT_FALSE(screen.current_row().has_value());
}

TEST(Totals, DeletingALineRenumbersAndKeepsTheCursorInside) {
    Counter counter;
    auto& screen = counter.open();
    for (const char* code : {"300", "400", "410"})
        ASSERT_TRUE(screen.EnterItem(code));
    screen.delete_line(1);
    EXPECT_EQ(counter.cell(1, column::number), "2");
    EXPECT_EQ(counter.cell(1, column::code), "410");
    EXPECT_EQ(screen.current_row(), 1u);
    screen.delete_line(1);
    EXPECT_EQ(screen.current_row(), 0u);
    screen.delete_line(7);
    EXPECT_EQ(screen.invoice().lines.size(), 1u);
}

TEST(Totals, InvoiceDiscountAtItsEdges) {
    struct Case {
        bool by_percent;
        const char* typed;
        bool above_ceiling_allowed;
        const char* said;  // nullptr: taken in silence
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
        auto& screen = line_of(counter, "100");
        EXPECT_TRUE(screen.CommitDiscountPercent("3"));  // what a refusal must wipe out
        const bool taken =
            c.by_percent ? screen.CommitDiscountPercent(c.typed) : screen.CommitDiscountValue(c.typed);
        EXPECT_EQ(taken, c.said == nullptr);
        if (c.said != nullptr)
            EXPECT_THAT(counter.said(), ElementsAre(c.said));
        else
            EXPECT_THAT(counter.said(), IsEmpty());
        EXPECT_EQ(screen.figures().discount_value, c.value);
        EXPECT_EQ(screen.figures().discount_percent, c.percent);
        EXPECT_EQ(screen.figures().net, c.net);
    }
}

TEST(Totals, AValueIsShownAsTypedHoweverOddItsPercent) {
    for (const char* value : {"0.01", "0.33", "1.00", "2.35", "2.99"}) {
        Counter counter;
        auto& screen = line_of(counter, "30.03");
        ASSERT_TRUE(screen.CommitDiscountValue(value));
        EXPECT_EQ(screen.figures().discount_value, value);
    }
}

TEST(Totals, LossOfTheWholeInvoiceIsWarnedOf) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("410"));  // 12.00, cost 10
    EXPECT_TRUE(screen.CommitDiscountValue("2"));
    EXPECT_THAT(counter.said(), IsEmpty());
    EXPECT_TRUE(screen.CommitDiscountValue("2.01"));
    EXPECT_THAT(counter.said(), ElementsAre(std::string(message::discount_loses)));
    EXPECT_EQ(screen.figures().net, "9.99");
}

TEST(Totals, CellsComeBackFromTheirTexts) {
    Counter counter;
    auto& screen = counter.open();
    ASSERT_TRUE(screen.EnterItem("6221000400029"));
    ASSERT_TRUE(screen.commit_edit(0, column::quantity, "2.5"));
    ASSERT_TRUE(screen.commit_edit(0, column::discount_value, "1.5"));
    ASSERT_TRUE(screen.EnterItem("*"));
    for (std::size_t row = 0; row < 2; ++row)
        EXPECT_EQ(sales::Line::from_cells(screen.cells(row)).cells(static_cast<int>(row) + 1),
                  screen.cells(row));
    std::array<std::string, column::count> broken;
    broken.fill("'; x 🍎");
    const auto line = sales::Line::from_cells(broken);
    EXPECT_TRUE(line.is_general());
    EXPECT_EQ(line.total(), 0);
    EXPECT_EQ(line.factor, 1);
}

}  // namespace
