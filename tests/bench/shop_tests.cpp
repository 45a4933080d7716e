// The measured shop has the rows that its page states, numbered in their series and ordered by time.
#include <map>
#include <set>

#include "bench/invoices.h"

namespace {

using bench::InvoiceMaker;
using bench::Sizes;

TEST(MeasuredShop, HasFiveLinesToAnInvoiceAndRunningNumbers) {
    const Sizes sizes{10'000};
    InvoiceMaker maker(sizes);
    int lines = 0;
    std::map<std::pair<bool, bool>, std::int64_t> last;
    common::Moment before{{2000, 1, 1}, {}};
    for (int i = 0; i < sizes.invoices; ++i) {
        const auto invoice = maker.next();
        lines += static_cast<int>(invoice.lines.size());
        ASSERT_FALSE(invoice.lines.empty());
        ASSERT_GE(invoice.moment, before);
        ASSERT_LE(invoice.moment, (common::Moment{bench::last_day, {12, 0, 0, 0}}));
        ASSERT_GE(invoice.shift, 1);
        before = invoice.moment;
        // All returns are one series.
        const bool back = invoice.ctype == 2;
        ASSERT_EQ(invoice.number, ++last[std::make_pair(back, !back && invoice.vcode != -1)]);
    }
    EXPECT_EQ(lines, sizes.lines());
    EXPECT_EQ(before.date, bench::last_day);
}

TEST(MeasuredShop, RingsUpEveryItemBeforeOneComesAgain) {
    for (const int invoices : {1'000, 100'000, 1'000'000}) {
        const Sizes sizes{invoices};
        std::set<std::int64_t> seen;
        for (int n = 0; n < sizes.items(); ++n) {
            const std::int64_t item = bench::rung_up_item(sizes, n);
            ASSERT_TRUE(item >= 1 && item <= sizes.items());
            seen.insert(item);
        }
        EXPECT_EQ(seen.size(), static_cast<std::size_t>(sizes.items()));
    }
}

TEST(MeasuredShop, HasItemsToFindOnTheTenthAsWell) {
    int found = 0;
    for (int code = 1; code <= Sizes{100'000}.items(); ++code)
        found += bench::item_name(code).starts_with(bench::searched_prefix) ? 1 : 0;
    EXPECT_TRUE(found > 50 && found < 500) << found;
}

}  // namespace
