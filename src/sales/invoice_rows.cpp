#include "sales/invoice_rows.h"

#include <algorithm>
#include <cmath>
#include <ranges>

#include "common/json.h"
#include "common/text.h"
#include "database/recordset.h"
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

SaveStep step_of_number(int number) {
    return static_cast<SaveStep>(number / transfer_steps);
}

bool takes_from_stock(const Invoice& invoice, const Line& line) {
    return !invoice.is_return() && line.moves_stock();
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

template <typename Write>
void InvoiceRows::step(SaveStep step, bool applies, const Write& write) {
    if (applies) journal_.once(step_number(step), write);
    finished_ = step;
}

void InvoiceRows::write() {
    const auto& lines = invoice_.lines;
    const auto any = [&lines](auto condition) { return std::ranges::any_of(lines, condition); };
    read_batches();
    step(SaveStep::account_balance, moves_balance(invoice_), [this] {
        move_account_balance(false);
        return std::string();
    });
    step(SaveStep::header, true, [this] {
        write_header();
        return std::string();
    });
    step(SaveStep::bank, invoice_.payment == PaymentOption::card,
         [this] { return std::to_string(write_bank_row()); });
    step(SaveStep::lines, true, [this] {
        write_lines();
        return std::string();
    });
    fetch_from_other_stores();
    step(SaveStep::stock, any([](const Line& line) { return line.moves_stock(); }),
         [this] { return common::json_text(move_stock()); });
    step(SaveStep::craftsman_lines, any([](const Line& line) { return line.salver_code != 0; }), [this] {
        move_craftsman_lines(false);
        return std::string();
    });
    // A return does not reserve again.
    step(SaveStep::reservations, moves_balance(invoice_) && !invoice_.is_return(),
         [this] { return take_off_reservations(); });
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
            move_account_balance(true);
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
            move_craftsman_lines(true);
            break;
        case SaveStep::reservations:
            reserve_again(noted);
            break;
    }
}

// Before the first row is written, so that a server that is away is noticed here.
void InvoiceRows::read_batches() {
    for (const Line& line : invoice_.lines)
        if (takes_from_stock(invoice_, line)) batches_.oldest(*line.item_code);
}

void InvoiceRows::move_account_balance(bool back) {
    Sql statement("update custdata set cacc = [cacc] ");
    if (invoice_.is_return() != back)
        statement += "- ";
    else
        statement += "+ ";
    connection_.execute(statement + invoice_.net() + " where ccode = " + invoice_.customer);
}

void InvoiceRows::write_header() {
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
    sales.update();
    if (invoice_.is_return() && invoice_.original && invoice_.original->identity)
        link_return(connection_, identity(), *invoice_.original->identity);
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

std::int64_t InvoiceRows::write_bank_row() {
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
    connection_.execute(statement);
    return number;
}

void InvoiceRows::remove_bank_row(std::int64_t number) {
    connection_.execute(Sql("delete from btran where ser = ") + number +
                        " and type1 = 0 and bcode = " + invoice_.card.bank_code +
                        " and note1 = " + quoted(card_note(!invoice_.is_return(), invoice_.card.reference)));
}

void InvoiceRows::write_lines() {
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
            // The batch that the first piece comes from, for a return to go back to.
            if (const auto oldest = batches_.oldest(*line.item_code)) rows.set("edate", *oldest);
        }
        rows.set("time_", database::Value(common::on_day_zero(save_.moment.time)));
        if (invoice_.payment == PaymentOption::tips) rows.set("link", invoice_.tips_receiver);
        rows.set("inv_type", static_cast<int>(invoice_.kind));
        rows.update();
    }
}

void InvoiceRows::fetch_from_other_stores() {
    for (std::size_t row = 0; !invoice_.is_return() && row < invoice_.lines.size(); ++row) {
        const Line& line = invoice_.lines[row];
        if (!line.is_supplied() || !line.item_code) continue;
        batches_.forget(*line.item_code);
        journal_.once(step_number(SaveStep::transfers) + static_cast<int>(row), [&] {
            return common::json_text(stock::transfer_for_line(connection_, transfer_of(invoice_, line)));
        });
    }
    finished_ = SaveStep::transfers;
}

// In the order of the items, so that no two tills wait for each other.
StockChanges InvoiceRows::move_stock() {
    std::vector<const Line*> moved;
    for (const Line& line : invoice_.lines)
        if (line.moves_stock()) moved.push_back(&line);
    std::ranges::stable_sort(moved, {}, [](const Line* line) { return *line->item_code; });
    StockChanges done;
    try {
        for (const Line* line : moved) {
            if (invoice_.is_return())
                done.push_back(put_into_stock(connection_, *line->item_code, invoice_.store,
                                              line->base_quantity(), line->expiry));
            else
                batches_.take(*line->item_code, line->base_quantity(), done);
        }
    } catch (...) {
        batches_.forget_all();
        throw;
    }
    return done;
}

void InvoiceRows::move_craftsman_lines(bool back) {
    for (const Line& line : invoice_.lines) {
        if (line.salver_code == 0) continue;
        Sql statement("update salver set cqty = [cqty] ");
        if (invoice_.is_return() != back)
            statement += "+ ";
        else
            statement += "- ";
        connection_.execute(statement + line.quantity + " where scode = " + line.salver_code);
    }
}

// What an account customer buys is taken off his reservations.
std::string InvoiceRows::take_off_reservations() {
    std::vector<Lowered> lowered;
    for (const Line& line : invoice_.lines) {
        if (!line.item_code) continue;
        const Sql reserved =
            Sql(" Where quan1 > 0 and icode = ") + *line.item_code + " and ccode = " + invoice_.customer;
        for (const auto& row : connection_.query(Sql("select rnum, quan1 from reservd") + reserved))
            lowered.push_back(
                {*line.item_code, row.integer("rnum"), row.number("quan1"), line.base_quantity()});
        connection_.execute(Sql("Update reservd set quan1 = quan1 - ") + line.base_quantity() +
                            " , quan = quan - " + line.base_quantity() + reserved);
    }
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
