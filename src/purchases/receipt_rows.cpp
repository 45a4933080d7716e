#include "purchases/receipt_rows.h"

#include "accounts/voucher_rows.h"
#include "common/numbers.h"
#include "database/bulk_insert.h"
#include "database/next_number.h"
#include "purchases/messages.h"
#include "purchases/new_prices.h"
#include "purchases/receipt_saving.h"

namespace purchases {

using accounts::PartyKind;
using common::Amount;
using database::Connection;
using database::Null;
using database::quoted;
using database::Row;
using database::Sql;
using database::Value;

namespace {

// Costs are finer than prices, and no finer than anybody writes them.
constexpr int cost_decimals = 4;

// "code in (1,2,3)" of the items of a document that were not read yet.
template <typename Known>
std::optional<Sql> new_items(const Receipt& receipt, const Known& known) {
    std::set<std::int64_t> items;
    for (const Line& line : receipt.lines)
        if (!known.contains(line.item)) items.insert(line.item);
    if (items.empty()) return std::nullopt;
    Sql list(" in (");
    for (auto item = items.begin(); item != items.end(); ++item) {
        if (item != items.begin()) list += ",";
        list += *item;
    }
    return list + ")";
}

Value date_value(const common::Date& date) {
    return common::Moment{date, {}};
}

Value text_or_null(const std::string& text) {
    return text.empty() ? Value(Null{}) : Value(text);
}

}  // namespace

ReceiptRows::ReceiptRows(Connection& connection, const signin::Session& session, const common::Moment& now)
    : connection_(connection), session_(session), now_(now) {
    database::hold_numbers(connection);
}

void ReceiptRows::read_stock(const Receipt& receipt) {
    const auto items = new_items(receipt, stock_);
    if (!items) return;
    for (Row& row : connection_.query(Sql("select * from items where code") + *items).release()) {
        const std::int64_t code = row.integer("code");
        stock_[code].cost = row.number("price11");
        cards_.emplace(code, std::move(row));
    }
    for (const Row& row : connection_.query(Sql("select icode,sum(quan) as held from stk where icode") +
                                            *items + " group by icode"))
        stock_[row.integer("icode")].quantity = row.number("held");
    for (const Line& line : receipt.lines)
        if (!cards_.contains(line.item))
            throw Refused({"", line.name + ": " + std::string(message::no_such_item)});
}

void ReceiptRows::check_batches(const Receipt& receipt) {
    std::map<std::pair<std::int64_t, common::Date>, double> held;
    for (const Row& row : connection_.query(
             Sql("select icode,edate,sum(quan) as held from stk where stcode = ") + receipt.store +
             " and icode" + *new_items(receipt, std::set<std::int64_t>()) + " group by icode,edate"))
        held[{row.integer("icode"), row.null("edate") ? common::no_expiry : row.moment("edate").date}] +=
            row.number("held");
    for (const Line& line : receipt.lines) {
        double& left = held[{line.item, line.batch()}];
        if (line.base_quantity() > left + 1e-9)
            throw Refused(
                {"line_quantity", std::string(message::batch_holds_before) + line.name +
                                      std::string(message::batch_holds_between) +
                                      common::shortest_text(common::round_decimals(left / line.factor, 3))});
        left -= line.base_quantity();
    }
}

std::int64_t ReceiptRows::write(const Receipt& receipt, Batches batches) {
    read_stock(receipt);
    if (receipt.is_return() && batches == Batches::must_hold) check_batches(receipt);
    const std::int64_t number =
        database::integer_of(connection_.scalar(Sql("select max(pnum) from purchase where ctype = ") +
                                                static_cast<int>(receipt.kind))) +
        1;
    write_header(receipt, number);
    write_lines(receipt, number);
    move_stock(receipt);
    const double net = receipt.net().value();
    accounts::move_balance(connection_, PartyKind::vendor, *receipt.supplier,
                           receipt.is_return() ? -net : net);
    return number;
}

void ReceiptRows::write_header(const Receipt& receipt, std::int64_t number) {
    database::Recordset row(connection_, "select * from purchase");
    row.add();
    row.set("pnum", number);
    row.set("vcode", *receipt.supplier);
    row.set("date", receipt.date);
    row.set("ctype", static_cast<int>(receipt.kind));
    row.set("ptot", receipt.total().value());
    row.set("pdis", receipt.discount.value());
    row.set("ptax", receipt.tax.value());
    row.set("stcode", receipt.store);
    row.set("user", session_.user_code);
    row.set("perm_no", text_or_null(receipt.invoice));
    row.set("notes", text_or_null(receipt.note));
    if (receipt.source != 0) row.set("inv_ser", receipt.source);
    if (receipt.id != 0) row.set("op_n", receipt.id);
    row.update();
}

void ReceiptRows::write_lines(const Receipt& receipt, std::int64_t number) {
    database::BulkInsert rows(connection_,
                              Sql("insert into purdata (pnum,vcode,[date],ctype,stcode,serial,icode,quan,"
                                  "price,disc,discp,unit1,scode,quan1,edate,note,inv_ser,ser,av_price)"),
                              19, database::BulkRows::many);
    const std::vector<Amount> costs = receipt.costs();
    std::int64_t serial = 0;
    for (const Line& line : receipt.lines) {
        const double cost = costs[static_cast<std::size_t>(serial)].value();
        Valued& stock = stock_[line.item];
        stock = receipt.is_return() ? without_goods(stock, line.base_quantity(), cost)
                                    : with_goods(stock, line.base_quantity(), cost);
        stock.cost = common::round_decimals(stock.cost, cost_decimals);
        moved_.insert(line.item);
        if (!receipt.is_return())
            for (const auto& price : new_prices(line, cost / line.base_quantity(), cards_.at(line.item)))
                add_price(price);
        const bool from_receipt = receipt.source != 0;
        rows.add({number, *receipt.supplier, date_value(receipt.date),
                  std::int64_t{static_cast<int>(receipt.kind)}, receipt.store, ++serial, line.item,
                  line.quantity, line.price, line.discount,
                  line.gross() > 0 ? line.discount * 100 / line.gross() : 0.0, line.factor,
                  std::int64_t{line.unit_level}, line.base_quantity(), date_value(line.batch()),
                  line.expiry ? Value(common::date_text(*line.expiry)) : Value(Null{}),
                  from_receipt ? Value(receipt.source) : Value(Null{}),
                  from_receipt ? Value(line.source) : Value(Null{}), stock.cost});
    }
    rows.finish();
}

void ReceiptRows::move_stock(const Receipt& receipt) {
    std::set<std::int64_t> items;
    for (const Line& line : receipt.lines)
        items.insert(line.item);
    sales::StockBatches batches(connection_, receipt.store, items);
    sales::StockPlan plan;
    for (const Line& line : receipt.lines)
        batches.add(line.item, receipt.is_return() ? -line.base_quantity() : line.base_quantity(),
                    line.batch(), plan);
    connection_.run_all(plan.commands);
}

// Of two prices for the same unit and level, the later one counts.
void ReceiptRows::add_price(const goods::NewPrice& price) {
    prices_[{price.item, price.unit_level, price.price_level}] = price.price;
}

void ReceiptRows::write_costs() {
    for (const std::int64_t item : moved_)
        for (const goods::NewPrice& cost : goods::costs_of_units(cards_.at(item), stock_[item].cost))
            add_price(cost);
    std::vector<goods::NewPrice> prices;
    for (const auto& [place, price] : prices_) {
        const auto& [item, unit_level, price_level] = place;
        const goods::NewPrice next{item, unit_level, price_level, price};
        prices.push_back(next);
        for (const auto& lowered :
             goods::lowered_with(next, goods::level_prices(cards_.at(item), unit_level)))
            prices.push_back(lowered.price);
    }
    goods::change_prices(connection_, session_, now_, prices, goods::why::receipt);
}

void ReceiptRows::pay(const Receipt& receipt, std::int64_t number) {
    using namespace accounts;
    const Amount net = receipt.net();
    const VoucherKind kind = receipt.is_return() ? VoucherKind::receipt : VoucherKind::payment;
    VoucherRecord record{kind, PartyKind::vendor, Method::cash, {}, now_};
    record.fields.number = propose_number(connection_, kind);
    record.fields.date = receipt.date;
    record.fields.party = receipt.supplier;
    record.fields.amount = record.fields.second_amount = net.text();
    record.fields.store = receipt.store;
    record.fields.drawer = receipt.drawer;
    record.fields.note = std::string(receipt.is_return() ? message::refund_note : message::payment_note) +
                         std::to_string(number);
    insert_voucher(connection_, record, next_voucher_id(connection_));
    move_balance(connection_, PartyKind::vendor, *receipt.supplier,
                 effect_on_balance(record.kind, record.party_kind, record.method, net.value()));
}

}  // namespace purchases
