// Changes of items that the office makes in one transaction: a card, prices of several items, an imported
// file.
#include <gtest/gtest.h>

#include "goods/item_card.h"
#include "goods/item_import.h"
#include "goods/price_plan.h"
#include "stocked_shop.h"
#include "support/faulty_connection.h"

namespace {

using test::FaultyConnection;
using Faulty = FaultyConnection::Fault;

class OfficeWork : public test::StockedShop {
  public:
    // Names and prices, how many barcodes, groups and makers there are, the stock, the prices' history.
    std::string figures() {
        std::string text = prices(501) + " " + prices(502);
        for (const char* query :
             {"select [name] from items where code = 501", "select price12 from items where code = 503",
              "select price12 from items where code = 900", "select count(*) from barcode",
              "select count(*) from item_types", "select count(*) from makers", "select sum(quan) from stk",
              "select count(*) from stk_f_q", "select count(*) from till_price"})
            text += " " + shop.cell(query);
        return text;
    }
    void save_card(FaultyConnection& connection) {
        goods::ItemCard item(connection, session, services.prompts, services.clock);
        ASSERT_FALSE(item.open(501));
        item.card.name = "شاي ناعم";
        item.card.group = "مشروبات";
        item.card.prices[0][1] = "11";
        item.card.barcodes = {{"555", 1}, {"556", 1}};
        services.prompts.answers = {true};  // the group is new
        item.save();
    }
    void raise_prices(FaultyConnection& connection) {
        goods::PricePlan plan(connection, session, services.prompts, services.clock);
        plan.choice.percent = "10";
        plan.choice.step = 25;
        ASSERT_FALSE(plan.work_out());
        plan.apply();
    }
    void import_file(FaultyConnection& connection) {
        const auto plan = goods::plan_import(connection,
                                             "code,name,maker,group,price12,barcode,stock\n"
                                             "501,,الوادي,,10.5,777,\n900,جديد,,حلوى,3,888,4\n",
                                             true);
        ASSERT_TRUE(plan.problems.empty());
        goods::write_import(connection, session, plan, services.clock.now());
    }
};

TEST(OfficeWork, IsDoneWholeOrNotAtAll) {
    const struct {
        void (OfficeWork::*work)(FaultyConnection&);
        const char* done;
        int least;  // statements
    } cases[] = {
        {&OfficeWork::save_card, "8 11 9.5 96 115 7 7.35 7.35   شاي ناعم 20  2 2 1 3 0 1", 12},
        {&OfficeWork::raise_prices, "8 11 9.5 96 126.5 7 8 7.35   شاي 22  1 1 1 3 0 4", 6},
        {&OfficeWork::import_file, "8 10.5 9.5 96 115 7 7.35 7.35   شاي 20 3 3 2 2 7 1 1", 5},
    };
    for (const auto& [work, done, least] : cases) {
        for (const Faulty fault : {Faulty::passing, Faulty::lost}) {
            OfficeWork office;
            const std::string before = office.figures();
            int statement = 0;
            std::string after = before;
            for (bool has_failed = true; has_failed && after == before;) {
                FaultyConnection faulty(office.shop.connection());
                faulty.fail_at(++statement, fault);
                try {
                    (office.*work)(faulty);
                } catch (const database::Error&) {
                }
                has_failed = faulty.has_failed();
                after = office.figures();
            }
            EXPECT_EQ(after, done) << "statement " << statement;
            // If a statement fails, an import tries again line by line.
            if (fault == Faulty::lost) {
                EXPECT_GT(statement, least);
            }
        }
    }
}

}  // namespace
