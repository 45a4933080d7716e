#include "shop/period_prices.h"

#include "common/amount.h"
#include "common/numbers.h"
#include "common/typed.h"
#include "database/transaction.h"
#include "shop/messages.h"
#include "signin/permissions.h"

namespace shop {

using common::Refusal;
using database::Sql;

namespace {

// What the till charges for the unit in the period.
std::optional<double> price_in_period(sales::Item item, double percent) {
    item.period_percent = percent;
    return sales::entry_price(item, sales::retail_level);
}

std::string price_text(std::optional<double> price) {
    return price ? common::format_amount(*price) : std::string();
}

}  // namespace

std::array<std::string, 5> PeriodPrice::cells() const {
    sales::Item of_card;
    of_card.prices[sales::retail_level - 1] = card;
    return {std::to_string(item), name, price_text(card),
            common::shortest_text(common::round_decimals(percent, 4)),
            price_text(price_in_period(of_card, percent))};
}

void PeriodPrices::open() {
    rows_.clear();
    for (const database::Row& row :
         connection_.query(Sql("select sale_price.icode, sale_price.p_per, items.name, items.price12 from "
                               "sale_price left join "
                               "items on items.code = sale_price.icode where sale_price.icode is not null "
                               "and sale_prd = ") +
                           period_ + " order by sale_price.icode"))
        rows_.push_back({row.integer("icode"), row.text("name"),
                         row.null("price12") ? std::nullopt : std::optional(row.number("price12")),
                         row.number("p_per")});
}

std::optional<Refusal> PeriodPrices::set(const sales::Item& item, std::string_view percent,
                                         std::string_view price) {
    const auto card = item.prices[sales::retail_level - 1];
    if (!card || *card <= 0) return Refusal("period_price", message::no_card_price);
    double wanted = 0;
    if (!price.empty()) {
        const auto typed = common::read_amount(price);
        if (!typed.refusal.empty()) return Refusal("period_price", typed.refusal);
        if (typed.value.value() <= 0 || typed.value.value() >= *card)
            return Refusal("period_price", message::price_not_lower);
        wanted = (1 - typed.value.value() / *card) * 100;
    } else {
        const auto typed = common::parse_number(percent);
        if (!typed || *typed <= 0 || *typed >= 100) return Refusal("period_percent", message::wrong_percent);
        wanted = *typed;
    }
    return write(item.code, wanted, price_in_period(item, wanted),
                 item.name + " " + common::shortest_text(common::round_decimals(wanted, 4)) + "%");
}

std::optional<Refusal> PeriodPrices::remove(std::int64_t item) {
    return write(item, std::nullopt, std::nullopt, "حذف " + std::to_string(item));
}

std::optional<Refusal> PeriodPrices::write(std::int64_t item, std::optional<double> percent,
                                           std::optional<double> price, std::string_view about) {
    if (!signin::authorise_change(session_, services_.prompts, signin::Action::edit_lists))
        return Refusal({}, {});
    database::in_transaction(connection_, [&] {
        connection_.execute(Sql("delete from sale_price where sale_prd = ") + period_ +
                            " and icode = " + item);
        if (percent)
            connection_.execute(
                "insert into sale_price (sale_prd, icode, p_per, s_price) values (?, ?, ?, ?)",
                {period_, item, *percent, price ? database::Value(*price) : database::Null{}});
    });
    connection_.make_durable();
    session_.note({.kind = audit::Kind::list_changed,
                   .what = "أسعار الفترة " + name_ + ": " + std::string(about),
                   .item = item});
    open();
    return std::nullopt;
}

}  // namespace shop
