// Every guarded effect, in every way it can be reached: refused without its right, allowed by that right
// alone.
#include <functional>

#include "sales/counter.h"
#include "sales/messages.h"
#include "signin/permissions.h"

namespace {

namespace column = sales::column;
namespace message = sales::message;
using sales::KindOption;
using signin::Action;
using test::Counter;

// --- what a manager left behind ---------------------------------------------------------------------

void ring_up(Counter& c, const char* quantity, const char* price = nullptr, const char* discount = nullptr) {
    ASSERT_TRUE(c.enter("400"));
    ASSERT_TRUE(c.desk.lines().commit_edit(0, column::quantity, quantity));
    ASSERT_TRUE(!price || c.desk.lines().commit_edit(0, column::price, price));
    ASSERT_TRUE(!discount || c.desk.lines().commit_edit(0, column::discount_value, discount));
}
void sold_cheaply(Counter& c) {
    ring_up(c, "2", "0.5");
    ASSERT_TRUE(c.sell());
}
void offered_cheaply(Counter& c) {
    ring_up(c, "2", "0.5");
    ASSERT_EQ(c.desk.offers().SaveOffer(), 1);
}
void sold_with_line_discount(Counter& c) {
    c.session.settings.max_dis = 50;
    ring_up(c, "4", nullptr, "4");  // 4 of 20
    ASSERT_TRUE(c.sell());
}
void sold_at_15_percent(Counter& c) {
    ring_up(c, "2");
    ASSERT_TRUE(c.desk.lines().CommitDiscountPercent("15"));
    ASSERT_TRUE(c.sell());
}
void offered_at_15_percent(Counter& c) {
    ring_up(c, "2");
    ASSERT_TRUE(c.desk.lines().CommitDiscountPercent("15"));
    ASSERT_EQ(c.desk.offers().SaveOffer(), 1);
}
void returned(Counter& c) {
    ASSERT_TRUE(c.desk.header().SwitchKind(KindOption::return_));
    ring_up(c, "1");
    ASSERT_TRUE(c.sell());
}
void offered_a_return(Counter& c) {
    ASSERT_TRUE(c.desk.header().SwitchKind(KindOption::return_));
    ring_up(c, "1");
    ASSERT_EQ(c.desk.offers().SaveOffer(), 1);
}
void sold(Counter& c) {
    ring_up(c, "2");
    ASSERT_TRUE(c.sell());
}
void rung_up(Counter& c) {
    ring_up(c, "2");
}
void rung_up_one_piece(Counter& c) {
    ASSERT_TRUE(c.enter("440"));
}
void rung_up_reserved(Counter& c) {
    ASSERT_TRUE(c.enter("450"));
    ASSERT_TRUE(c.desk.lines().commit_edit(0, column::quantity, "5"));
}
void nothing(Counter&) {}

// --- what a cashier tries ---------------------------------------------------------------------------

bool recall(Counter& c) {
    return c.desk.receipts().recall(c.desk.receipts().receipts_today().at(0));
}
// Saves, with a yes to every question.
bool save(Counter& c) {
    c.answer({true, true});
    return c.sell();
}
bool offer(Counter& c) {
    return c.desk.offers().SaveOffer() != 0;
}
bool quantity(Counter& c, const char* text) {
    c.answer({true});
    return c.desk.lines().commit_edit(0, column::quantity, text);
}
bool scan_more(Counter& c, const char* code = "400") {
    c.answer({true});
    return c.desk.lines().EnterItemForRecalled(sales::read_entry(code));
}

struct Road {
    const char* name;
    Action action;
    void (*before)(Counter&);
    bool (*attempt)(Counter&);
};

const Road roads[] = {
    {"return option", Action::return_kind, nothing,
     [](Counter& c) { return c.desk.header().SwitchKind(KindOption::return_); }},
    {"third option", Action::return_kind, nothing,
     [](Counter& c) { return c.desk.header().SwitchKind(KindOption::third); }},
    {"F4", Action::return_kind, nothing, [](Counter& c) { return c.desk.header().toggle_kind(); }},
    {"return of a recalled sale", Action::return_kind, sold,
     [](Counter& c) { return recall(c) && c.desk.receipts().start_return(); }},
    {"return of a listed sale", Action::return_kind, sold,
     [](Counter& c) { return c.desk.receipts().start_return(c.desk.receipts().receipts_today().at(0)); }},
    {"recalled return saved", Action::return_kind, returned, [](Counter& c) { return recall(c) && save(c); }},
    {"recalled return raised and saved", Action::return_kind, returned,
     [](Counter& c) { return recall(c) && quantity(c, "7") && save(c); }},
    {"recalled return offered", Action::return_kind, returned,
     [](Counter& c) { return recall(c) && offer(c); }},
    {"offered return", Action::return_kind, offered_a_return,
     [](Counter& c) { return c.desk.offers().LoadOffer(1); }},

    {"price cell", Action::edit_price, rung_up,
     [](Counter& c) { return c.desk.lines().begin_edit(0, column::price); }},
    {"typed price", Action::edit_price, rung_up,
     [](Counter& c) { return c.desk.lines().commit_edit(0, column::price, "0.5"); }},
    {"general item", Action::edit_price, nothing, [](Counter& c) { return c.enter("*شيء"); }},
    {"recalled price for more goods", Action::edit_price, sold_cheaply,
     [](Counter& c) { return recall(c) && quantity(c, "20") && save(c); }},
    {"recalled price, raised by a scan", Action::edit_price, sold_cheaply,
     [](Counter& c) { return recall(c) && scan_more(c) && save(c); }},
    {"recalled price, raised by the quick quantity", Action::edit_price, sold_cheaply,
     [](Counter& c) { return recall(c) && c.desk.lines().quick_quantity("20") && save(c); }},
    {"recalled price for more goods, offered", Action::edit_price, sold_cheaply,
     [](Counter& c) { return recall(c) && quantity(c, "20") && offer(c); }},
    {"offered price for more goods", Action::edit_price, offered_cheaply,
     [](Counter& c) { return c.desk.offers().LoadOffer(1) && quantity(c, "20") && save(c); }},

    {"discount cell", Action::edit_discount, rung_up,
     [](Counter& c) { return c.desk.lines().begin_edit(0, column::discount_value); }},
    {"typed discount", Action::edit_discount, rung_up,
     [](Counter& c) { return c.desk.lines().commit_edit(0, column::discount_value, "1"); }},
    {"typed percent", Action::edit_discount, rung_up,
     [](Counter& c) { return c.desk.lines().commit_edit(0, column::discount_percent, "1"); }},
    {"recalled line discount for fewer goods", Action::edit_discount, sold_with_line_discount,
     [](Counter& c) { return recall(c) && quantity(c, "2") && save(c); }},

    {"invoice discount", Action::discount_above_ceiling, rung_up,
     [](Counter& c) { return c.desk.lines().CommitDiscountValue("1.5"); }},
    {"invoice percent", Action::discount_above_ceiling, rung_up,
     [](Counter& c) { return c.desk.lines().CommitDiscountPercent("15"); }},
    {"recalled percent for more goods", Action::discount_above_ceiling, sold_at_15_percent,
     [](Counter& c) { return recall(c) && quantity(c, "40") && save(c); }},
    {"recalled percent for other goods", Action::discount_above_ceiling, sold_at_15_percent,
     [](Counter& c) { return recall(c) && scan_more(c, "410") && save(c); }},
    {"offered percent for more goods", Action::discount_above_ceiling, offered_at_15_percent,
     [](Counter& c) { return c.desk.offers().LoadOffer(1) && quantity(c, "40") && save(c); }},
    {"offered percent for more goods, offered again", Action::discount_above_ceiling, offered_at_15_percent,
     [](Counter& c) { return c.desk.offers().LoadOffer(1) && quantity(c, "40") && offer(c); }},

    {"scan below stock", Action::sell_below_stock, rung_up_one_piece,
     [](Counter& c) {
         c.answer({true, true});
         return c.enter("440");
     }},
    {"quantity below stock", Action::sell_below_stock, rung_up_one_piece,
     [](Counter& c) { return quantity(c, "2"); }},
    {"confirmed below stock, saved", Action::sell_below_stock,
     [](Counter& c) {
         rung_up_one_piece(c);
         ASSERT_TRUE(quantity(c, "2"));
     },
     save},
    {"quantity of reserved goods", Action::sell_reserved, rung_up_reserved,
     [](Counter& c) { return quantity(c, "6"); }},
    {"confirmed reserved goods, saved", Action::sell_reserved,
     [](Counter& c) {
         rung_up_reserved(c);
         ASSERT_TRUE(quantity(c, "6"));
     },
     save},

    {"last receipt again", Action::reprint, sold, [](Counter& c) { return c.desk.receipts().reprint(); }},
    {"recalled receipt again", Action::reprint, sold,
     [](Counter& c) { return recall(c) && c.desk.receipts().reprint(); }},
    {"listed receipt again", Action::reprint, sold,
     [](Counter& c) { return c.desk.receipts().reprint(c.desk.receipts().receipts_today().at(0)); }},
    {"drawer", Action::open_drawer, nothing,
     [](Counter& c) { return c.desk.checkout().open_drawer_by_key(); }},
    {"item information", Action::item_info, nothing,
     [](Counter& c) { return c.desk.lines().item_info(400).has_value(); }},
};

// What an effect leaves outside the screen.
std::string traces(Counter& c) {
    std::string text;
    for (const char* statement : {"select count(*) from sales", "select count(*) from saledata",
                                  "select sum(quan) from stk", "select count(*) from offer"})
        text += c.shop.cell(statement) + " ";
    for (const auto& [port, bytes] : c.services.devices.ports)
        text += port + ":" + std::to_string(bytes.size()) + " ";
    return text + std::to_string(c.printer.printed.size());
}

std::string only(Action action) {
    std::string permissions(400, '0');
    for (const signin::Permission& place : signin::guarded_actions())
        if (place.action == action) permissions[static_cast<std::size_t>(place.position) - 1] = '1';
    return permissions;
}

enum class Who { nobody, user, supervisor };  // allows it

TEST(Rights, EveryRoadToAnEffectAsksForItsRight) {
    for (const Road& road : roads) {
        SCOPED_TRACE(road.name);
        for (const auto who : {Who::nobody, Who::user, Who::supervisor}) {
            const bool allowed = who != Who::nobody;
            Counter c;
            c.open();
            road.before(c);
            c.session.permissions = who == Who::user ? only(road.action) : std::string(400, '0');
            std::vector<Action> asked;
            if (who == Who::supervisor)
                c.session.ask_supervisor = [&](const signin::Refused& refused) {
                    asked.push_back(refused.action);
                    return audit::Person{7, "مشرف"};
                };
            const std::string before = traces(c);
            c.said();
            EXPECT_EQ(road.attempt(c), allowed) << c.services.prompts.last();
            EXPECT_EQ(c.said().empty(), allowed);
            // Once, and not again at the save.
            EXPECT_EQ(asked.size(), who == Who::supervisor ? 1U : 0U);
            EXPECT_TRUE(allowed || traces(c) == before) << before << " -> " << traces(c);
        }
    }
}

TEST(Rights, WhatWasGrantedStaysGrantedForTheSameGoods) {
    const struct {
        const char* name;
        void (*before)(Counter&);
        bool (*attempt)(Counter&);
    } cases[] = {
        {"the receipt as it was", sold_cheaply, [](Counter& c) { return recall(c) && save(c); }},
        {"fewer goods", sold_cheaply, [](Counter& c) { return recall(c) && quantity(c, "1") && save(c); }},
        {"other goods at their price", sold_cheaply,
         [](Counter& c) { return recall(c) && scan_more(c, "410") && save(c); }},
        {"more goods at the card's price", sold,
         [](Counter& c) { return recall(c) && quantity(c, "20") && save(c); }},
        {"the line discount as it was", sold_with_line_discount,
         [](Counter& c) { return recall(c) && save(c); }},
        {"more goods for the same line discount", sold_with_line_discount,
         [](Counter& c) { return recall(c) && quantity(c, "8") && save(c); }},
        {"the offer as it was", offered_at_15_percent,
         [](Counter& c) { return c.desk.offers().LoadOffer(1) && save(c); }},
        {"less of the offer", offered_at_15_percent,
         [](Counter& c) { return c.desk.offers().LoadOffer(1) && quantity(c, "1") && save(c); }},
        {"more of a craftsman's goods",
         [](Counter& c) {
             ASSERT_TRUE(c.enter("W9"));
             ASSERT_TRUE(c.sell());
         },
         [](Counter& c) { return recall(c) && quantity(c, "3") && save(c); }},
        {"wholesale, after a new price",
         [](Counter& c) {
             c.desk.header().choose_price_level(3);
             rung_up(c);
         },
         [](Counter& c) {
             c.shop.sql("update items set price13 = 7 where code = 400");
             return quantity(c, "3") && save(c);
         }},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        Counter c;
        c.open();
        one.before(c);
        c.session.permissions.clear();
        c.said();
        EXPECT_TRUE(one.attempt(c)) << c.services.prompts.last();
        EXPECT_EQ(c.services.prompts.last(), "");
    }
}

TEST(Rights, ASaleBelowStockIsConfirmedForItsStore) {
    Counter c;
    c.open();
    rung_up_one_piece(c);
    ASSERT_TRUE(quantity(c, "2"));
    ASSERT_TRUE(c.desk.header().choose_store(2));
    EXPECT_FALSE(c.sell());
    EXPECT_EQ(c.services.prompts.last(), "كميه الصنف وحيد لا تكفي");
}

// A refused save names what it was refused for.
TEST(Rights, ARefusedSaveSaysWhy) {
    const struct {
        void (*before)(Counter&);
        bool (*attempt)(Counter&);
        std::string said;
    } cases[] = {
        {returned, [](Counter& c) { return recall(c) && save(c); },
         std::string(signin::denied) + "\nحفظ مرتجع"},
        {sold_cheaply, [](Counter& c) { return recall(c) && quantity(c, "3") && save(c); },
         std::string(signin::denied) + "\nسعر الصنف مياه"},
        {sold_with_line_discount, [](Counter& c) { return recall(c) && quantity(c, "3") && save(c); },
         std::string(signin::denied) + "\nخصم الصنف مياه"},
    };
    for (const auto& one : cases) {
        Counter c;
        c.open();
        one.before(c);
        c.session.permissions.clear();
        EXPECT_FALSE(one.attempt(c));
        EXPECT_EQ(c.services.prompts.last(), one.said);
    }
}

}  // namespace
