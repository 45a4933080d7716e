#include "sales/invoice_rows.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <ranges>
#include <set>
#include <utility>

#include "common/json.h"
#include "common/text.h"
#include "database/next_number.h"
#include "database/recordset.h"
#include "database/transaction.h"
#include "sales/return_links.h"
#include "sales/stock_check.h"
#include "stock/transfer.h"

namespace stock {

TALLVEX_JSON(TransferredBatch, expiry, quantity)
TALLVEX_JSON(Transfer, number, batches)

}  // namespace stock

namespace sales {

using database::quoted;
using database::Recordset;
using database::Sql;

TALLVEX_JSON(StockChange, item, expiry, quantity, adds_batch)

namespace {

// Each supplied line is a step of its own, so each step has that many numbers.
constexpr int transfer_steps = 100'000;

// Between the values of SaveStep.
constexpr int step_distance = 10;

bool takes_from_stock(const Invoice& invoice, const Line& line) {
    return !invoice.is_return() && line.moves_stock();
}

std::set<std::int64_t> items_moved(const Invoice& invoice) {
    std::set<std::int64_t> items;
    for (const Line& line : invoice.lines)
        if (line.moves_stock()) items.insert(*line.item_code);
    return items;
}

bool moves_balance(const Invoice& invoice) {
    return invoice.payment == PaymentOption::account;
}

stock::TransferOrder transfer_of(const Invoice& invoice, const Line& line) {
    return {*line.item_code,   line.quantity, line.factor, line.unit_code,
            line.source_store, invoice.store, invoice.date};
}

// A reservation whose quantity a sale lowered, and the quantity before.
struct Lowered {
    std::int64_t item = 0;
    std::int64_t reservation = 0;  // rnum
    double before = 0;
    double by = 0;
};
TALLVEX_JSON(Lowered, item, reservation, before, by)

}  // namespace

std::string_view name_of(SaveStep step) {
    switch (step) {
        case SaveStep::none:
            return "لا شيء";  // nothing
        case SaveStep::receipt:
            return "طباعة البون";  // the receipt
        case SaveStep::account_balance:
            return "رصيد العميل";  // the account balance
        case SaveStep::header:
            return "رأس البون";  // the header
        case SaveStep::bank:
            return "حركة البنك";  // the bank row
        case SaveStep::lines:
            return "أصناف البون";  // the lines
        case SaveStep::transfers:
            return "التحويل من مخزن آخر";  // transfers from another store
        case SaveStep::stock:
            return "أرصدة المخزن";  // the stock
        case SaveStep::craftsman_lines:
            return "أعمال الصنايعية";  // the craftsman lines
        case SaveStep::reservations:
            return "الحجوزات";  // the reservations
    }
    return "";
}

int step_number(SaveStep step) {
    return static_cast<int>(step) * transfer_steps;
}

SaveStep step_of_number(int number) {
    return static_cast<SaveStep>(number / transfer_steps);
}

InvoiceRows::InvoiceRows(database::Connection& connection, database::Journal& journal,
                         const InvoiceToSave& save)
    : connection_(connection),
      journal_(journal),
      save_(save),
      invoice_(save.invoice),
      batches_(connection, save.invoice.store, items_moved(save.invoice)) {}

void InvoiceRows::write(const Commands& at_end) {
    database::until_unchanged([&] {
        try {
            try_to_write(at_end);
        } catch (...) {
            batches_.forget();
            throw;
        }
    });
}

void InvoiceRows::try_to_write(const Commands& at_end) {
    const auto any = [this](auto condition) { return std::ranges::any_of(invoice_.lines, condition); };
    planned_.clear();
    if (is_to_do(SaveStep::account_balance, moves_balance(invoice_)))
        plan(SaveStep::account_balance, move_account_balance(false));
    if (is_to_do(SaveStep::header, true)) plan(SaveStep::header, header());
    if (is_to_do(SaveStep::bank, invoice_.payment == PaymentOption::card)) plan_bank_row();
    if (is_to_do(SaveStep::lines, true)) plan(SaveStep::lines, lines());
    if (any([this](const Line& line) { return !invoice_.is_return() && line.is_supplied(); }))
        fetch_from_other_stores();
    if (is_to_do(SaveStep::stock, any([](const Line& line) { return line.moves_stock(); }))) plan_stock();
    if (is_to_do(SaveStep::craftsman_lines, any([](const Line& line) { return line.salver_code != 0; })))
        plan(SaveStep::craftsman_lines, move_craftsman_lines(false));
    // A return does not reserve again.
    if (is_to_do(SaveStep::reservations, moves_balance(invoice_) && !invoice_.is_return()) &&
        !connection_.query(Sql("select top 1 rnum") + reservations()).empty()) {
        do_planned(SaveStep::craftsman_lines);
        journal_.once(step_number(SaveStep::reservations), [this] { return take_off_reservations(); });
    }
    Commands ending = leaving_the_screen(save_.draft);
    ending.insert(ending.end(), at_end.begin(), at_end.end());
    do_planned(SaveStep::reservations, [&] { journal_.end(planned_, std::move(ending)); });
}

bool InvoiceRows::is_to_do(SaveStep step, bool applies) const {
    return applies && !journal_.has_done(step_number(step));
}

void InvoiceRows::plan(SaveStep step, Commands commands, std::string noted) {
    planned_.push_back({step_number(step), std::move(commands), std::move(noted)});
}

template <typename Run>
void InvoiceRows::do_planned(SaveStep last, const Run& run) {
    try {
        run();
    } catch (...) {
        // The step before the first that is not done.
        finished_ = last;
        const auto left = std::ranges::find_if(
            planned_, [this](const database::PlannedStep& step) { return !journal_.has_done(step.number); });
        if (left != planned_.end())
            finished_ = static_cast<SaveStep>(static_cast<int>(step_of_number(left->number)) - step_distance);
        throw;
    }
    finished_ = last;
    planned_.clear();
}

void InvoiceRows::do_planned(SaveStep last) {
    do_planned(last, [this] { journal_.run(planned_); });
}

const Line* InvoiceRows::first_short_line() {
    Goods levels = goods_taken(invoice_);
    for (auto& [place, quantity] : levels)
        quantity = place.second == invoice_.store ? batches_.held(place.first) : 0;
    return sales::first_short_line(invoice_, levels);
}

void InvoiceRows::undo() {
    journal_.undo([this](int step, const std::string& noted) { take_back(step, noted); });
}

void InvoiceRows::take_back(int number, const std::string& noted) {
    switch (step_of_number(number)) {
        case SaveStep::none:
        case SaveStep::receipt:
            break;
        case SaveStep::account_balance:
            connection_.run_all(move_account_balance(true));
            break;
        case SaveStep::header:
            remove_header();
            break;
        case SaveStep::bank:
            remove_bank_row(std::stoll(noted));
            break;
        case SaveStep::lines:
            connection_.execute(
                "delete from saledata where pnum = ? and ctype = ? and vcode = ? and stcode = ? and "
                "[date] = ? and time_ = ?",
                values_of(identity()));
            break;
        case SaveStep::transfers: {
            const auto row = static_cast<std::size_t>(number % transfer_steps);
            stock::undo_transfer(connection_, common::from_json_text<stock::Transfer>(noted),
                                 transfer_of(invoice_, invoice_.lines.at(row)));
            break;
        }
        case SaveStep::stock:
            for (const StockChange& change : common::from_json_text<StockChanges>(noted))
                sales::undo(connection_, invoice_.store, change);
            break;
        case SaveStep::craftsman_lines:
            connection_.run_all(move_craftsman_lines(true));
            break;
        case SaveStep::reservations:
            reserve_again(noted);
            break;
    }
}

InvoiceRows::Commands InvoiceRows::move_account_balance(bool back) const {
    Sql statement("update custdata set cacc = [cacc] ");
    if (invoice_.is_return() != back)
        statement += "- ";
    else
        statement += "+ ";
    return {statement + invoice_.net() + " where ccode = " + invoice_.customer};
}

InvoiceRows::Commands InvoiceRows::header() {
    Recordset sales(connection_, "select * from sales");
    sales.add();
    sales.set("pnum", invoice_.number);
    sales.set("vcode", invoice_.vcode());
    sales.set("Date", invoice_.date);
    sales.set("ctype", ctype_of(invoice_.kind));
    sales.set("ptot", invoice_.total().value());
    sales.set("pdis", invoice_.discount().value());
    sales.set("ptax", 0);
    sales.set("stcode", invoice_.store);
    sales.set("User", save_.user);
    sales.set("wCode", invoice_.worker);
    if (invoice_.payment == PaymentOption::account && invoice_.permit_opened)
        sales.set("perm_no", common::trim(invoice_.permit_number));
    sales.set("types", 0);
    sales.set("Shift", save_.shift);
    if (invoice_.payment == PaymentOption::tips) sales.set("link", invoice_.tips_receiver);
    sales.set("time_", database::Value(common::on_day_zero(save_.moment.time)));
    sales.set("stype", stype_of(invoice_.payment));
    sales.set("ptype", save_.cash_point);
    sales.set("inv_type", static_cast<int>(invoice_.kind));
    if (!invoice_.note.empty()) sales.set("note", invoice_.note);
    if (invoice_.has_walk_in()) sales.set("cust_c", invoice_.walk_in->code);
    if (invoice_.payment == PaymentOption::card) {
        sales.set("credit_name", invoice_.card.holder);
        sales.set("ref_no", invoice_.card.reference);
        sales.set("bcode", invoice_.card.bank_code);
        sales.set("safe", 1);
    }
    if (invoice_.payment == PaymentOption::tips) sales.set("disboun", invoice_.discount().value());
    if (invoice_.original) sales.set("inv_o", invoice_.original->number);
    Commands commands = {sales.take_update()};
    if (invoice_.is_return() && invoice_.original && invoice_.original->identity) {
        const auto link = link_of_return(connection_, identity(), *invoice_.original->identity);
        if (link) commands.push_back(*link);
    }
    return commands;
}

void InvoiceRows::remove_header() {
    unlink_return(connection_, identity());
    std::vector<database::Value> values = values_of(identity());
    values.emplace_back(save_.cash_point);
    connection_.execute(
        "delete from sales where pnum = ? and ctype = ? and vcode = ? and stcode = ? and [date] = ? and "
        "time_ = ? and ptype = ?",
        values);
}

// If another till has taken the number meanwhile, nothing is written, and everything is planned anew.
void InvoiceRows::plan_bank_row() {
    const std::int64_t number =
        database::integer_of(connection_.scalar("select max(ser) as xmax from btran ")) + 1;
    Sql statement = Sql("INSERT INTO btran (ser,bcode,[date],quan,type,type1,stcode,note1) select ") +
                    number + " , " + invoice_.card.bank_code + " , " + quoted(invoice_.date) + " , " +
                    invoice_.net();
    if (invoice_.is_return())
        statement += " , 0, 0, 0 , ";
    else
        statement += " , 1, 0, 0 , ";
    statement += quoted(card_note(!invoice_.is_return(), invoice_.card.reference));
    statement += Sql(" where not exists (select ser from btran where ser >= ") + number + ")";
    Commands commands = database::numbers_hold(connection_);
    commands.push_back(database::Command(statement).that_must_change());
    plan(SaveStep::bank, std::move(commands), std::to_string(number));
}

void InvoiceRows::remove_bank_row(std::int64_t number) {
    connection_.execute(Sql("delete from btran where ser = ") + number +
                        " and type1 = 0 and bcode = " + invoice_.card.bank_code +
                        " and note1 = " + quoted(card_note(!invoice_.is_return(), invoice_.card.reference)));
}

InvoiceRows::Commands InvoiceRows::lines() {
    Commands commands;
    Recordset rows(connection_, "select * from saledata");
    int serial = 0;
    for (const Line& line : invoice_.lines) {
        ++serial;
        rows.add();
        rows.set("pnum", invoice_.number);
        rows.set("vcode", invoice_.vcode());
        rows.set("Date", invoice_.date);
        rows.set("ctype", ctype_of(invoice_.kind));
        rows.set("stcode", invoice_.store);
        rows.set("stype", stype_of(invoice_.payment));
        rows.set("serial", serial);
        rows.set("Sid", serial);
        if (line.item_code) rows.set("icode", *line.item_code);
        rows.set("note", line.name);
        rows.set("quan", line.quantity);
        rows.set("price", line.price);
        rows.set("disc", line.discount);
        rows.set("unit1", line.factor);
        rows.set("scode", line.unit_code);
        rows.set("quan1", line.base_quantity());
        if (line.salver_code != 0) rows.set("salvcode", line.salver_code);
        if (line.expiry) {
            rows.set("edate", *line.expiry);
        } else if (takes_from_stock(invoice_, line)) {
            // The batch that the first piece comes from; a return goes back to it.
            if (const auto oldest = batches_.oldest(*line.item_code)) rows.set("edate", *oldest);
        }
        rows.set("time_", database::Value(common::on_day_zero(save_.moment.time)));
        if (invoice_.payment == PaymentOption::tips) rows.set("link", invoice_.tips_receiver);
        rows.set("inv_type", static_cast<int>(invoice_.kind));
        commands.push_back(rows.take_update());
    }
    return commands;
}

void InvoiceRows::fetch_from_other_stores() {
    do_planned(SaveStep::lines);
    for (std::size_t row = 0; row < invoice_.lines.size(); ++row) {
        const Line& line = invoice_.lines[row];
        if (!line.is_supplied() || !line.item_code) continue;
        journal_.once(step_number(SaveStep::transfers) + static_cast<int>(row), [&] {
            return common::json_text(stock::transfer_for_line(connection_, transfer_of(invoice_, line)));
        });
    }
    finished_ = SaveStep::transfers;
    batches_.forget();
}

void InvoiceRows::plan_stock() {
    StockPlan movement = stock_movement();
    if (!movement.adds_batch())
        return plan(SaveStep::stock, std::move(movement.commands), common::json_text(movement.changes));
    // Plan again while no other till can add the batch.
    do_planned(SaveStep::transfers);
    journal_.once(step_number(SaveStep::stock), [this] {
        database::hold_numbers(connection_);
        batches_.forget();
        const StockPlan moved = stock_movement();
        connection_.run_all(moved.commands);
        return common::json_text(moved.changes);
    });
    finished_ = SaveStep::stock;
}

// In the order of the items, so that no two tills wait for each other.
StockPlan InvoiceRows::stock_movement() {
    std::vector<const Line*> moved;
    for (const Line& line : invoice_.lines)
        if (line.moves_stock()) moved.push_back(&line);
    std::ranges::stable_sort(moved, {}, [](const Line* line) { return *line->item_code; });
    StockPlan movement;
    for (const Line* line : moved) {
        if (invoice_.is_return())
            batches_.put(*line->item_code, line->base_quantity(), line->expiry, movement);
        else
            batches_.take(*line->item_code, line->base_quantity(), movement);
    }
    return movement;
}

InvoiceRows::Commands InvoiceRows::move_craftsman_lines(bool back) const {
    Commands commands;
    for (const Line& line : invoice_.lines) {
        if (line.salver_code == 0) continue;
        Sql statement("update salver set cqty = [cqty] ");
        if (invoice_.is_return() != back)
            statement += "+ ";
        else
            statement += "- ";
        commands.emplace_back(statement + line.quantity + " where scode = " + line.salver_code);
    }
    return commands;
}

// What the customer has reserved of the items sold.
Sql InvoiceRows::reservations() const {
    Sql from = Sql(" from reservd where quan1 > 0 and ccode = ") + invoice_.customer + " and icode in (0";
    for (const Line& line : invoice_.lines)
        if (line.item_code) from += Sql(", ") + *line.item_code;
    return from + ")";
}

// What an account customer buys is taken off his reservations.
std::string InvoiceRows::take_off_reservations() {
    std::map<std::int64_t, std::vector<Lowered>> reserved;
    for (const auto& row : connection_.query(Sql("select icode, rnum, quan1") + reservations()))
        reserved[row.integer("icode")].push_back(
            {row.integer("icode"), row.integer("rnum"), row.number("quan1"), 0});
    std::vector<Lowered> lowered;
    Commands commands;
    for (const Line& line : invoice_.lines) {
        if (!line.item_code) continue;
        const double by = line.base_quantity();
        commands.emplace_back(Sql("Update reservd set quan1 = quan1 - ") + by + " , quan = quan - " + by +
                              " Where quan1 > 0 and icode = " + *line.item_code +
                              " and ccode = " + invoice_.customer);
        for (Lowered& one : reserved[*line.item_code]) {
            if (one.before <= 0) continue;
            lowered.push_back({one.item, one.reservation, one.before, by});
            one.before -= by;
        }
    }
    connection_.run_all(commands);
    return common::json_text(lowered);
}

// Two lines may have lowered the same reservation: the last one is taken back first.
void InvoiceRows::reserve_again(std::string_view noted) {
    auto lowered = common::from_json_text<std::vector<Lowered>>(noted);
    std::ranges::reverse(lowered);
    for (const Lowered& one : lowered) {
        Recordset rows(connection_, Sql("select * from reservd where icode = ") + one.item +
                                        " and ccode = " + invoice_.customer);
        for (; !rows.at_end(); rows.move_next()) {
            const double missing = one.before - one.by - rows.number("quan1");
            if (rows.integer("rnum") != one.reservation || std::abs(missing) > 1e-6) continue;
            rows.set("quan1", rows.number("quan1") + one.by);
            rows.set("quan", rows.number("quan") + one.by);
            rows.update();
            break;
        }
    }
}

std::string card_note(bool is_sale, std::string_view reference) {
    return (is_sale ? " مبيعات إئتمان رقم مرجعي " : " مرتجع إئتمان رقم مرجعي ") + std::string(reference);
}

}  // namespace sales
