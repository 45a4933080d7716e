#include "sales/saving.h"

#include "common/date_time.h"
#include "common/text.h"
#include "database/recordset.h"
#include "sales/invoice_key.h"
#include "sales/messages.h"
#include "sales/return_links.h"
#include "sales/stock_movement.h"
#include "stock/transfer.h"

namespace sales {

using database::quoted;
using database::Recordset;
using database::Sql;

namespace {

// The log's code of lines about saving.
constexpr std::string_view log_code = "250";

// `tallvex-admin check` finds the saves that never ended by these lines of the log.
std::string in_log(const Invoice& invoice) {
    return "save of " + log_name(key_of(invoice));
}

bool takes_from_stock(const Invoice& invoice, const Line& line) {
    return !invoice.is_return() && line.moves_stock();
}

// A statement whose answer never came may have been carried out.
bool may_have_run(const std::exception& error) {
    const auto* failure = dynamic_cast<const database::Error*>(&error);
    return failure != nullptr && (failure->is_connection_lost() || failure->sqlstate() == "HYT00");
}

printing::Kind kind_of(KindOption kind) {
    switch (kind) {
        case KindOption::return_:
            return printing::Kind::return_;
        case KindOption::third:
            return printing::Kind::third;
        case KindOption::sale:
            break;
    }
    return printing::Kind::sale;
}

printing::Payment payment_of(PaymentOption payment) {
    switch (payment) {
        case PaymentOption::account:
            return printing::Payment::account;
        case PaymentOption::card:
            return printing::Payment::card;
        case PaymentOption::tips:
            return printing::Payment::tips;
        case PaymentOption::cash:
            break;
    }
    return printing::Payment::cash;
}

// Marks a running save, so that a second press while a message or the printer is waiting does nothing.
class RunningMark {
  public:
    explicit RunningMark(bool& flag) : flag_(flag) { flag_ = true; }
    ~RunningMark() { flag_ = false; }
    RunningMark(const RunningMark&) = delete;
    RunningMark& operator=(const RunningMark&) = delete;

  private:
    bool& flag_;
};

}  // namespace

printing::Receipt receipt_of(const Invoice& invoice, const PaymentTaken& payment,
                             const signin::Session& session, std::int64_t shift,
                             const common::TimeOfDay& time) {
    printing::Receipt receipt;
    receipt.store_name = session.settings.aname;
    receipt.second_store_name = session.settings.ename;
    receipt.telephone = session.settings.tel;
    receipt.credit_lines = session.credit_lines;
    receipt.logo = session.settings.logo;
    receipt.cash_point = session.cash_point;
    receipt.user_name = session.user_name;
    receipt.shift_number = shift;
    receipt.salesman = invoice.worker_name;
    if (invoice.payment == PaymentOption::account)
        receipt.customer = invoice.customer_name;
    else if (invoice.walk_in)
        receipt.customer = invoice.walk_in->name;
    receipt.number = invoice.number;
    receipt.date = invoice.date;
    receipt.time = time;
    receipt.kind = kind_of(invoice.kind);
    receipt.payment = payment_of(invoice.payment);
    for (const Line& line : invoice.lines) {
        receipt.lines.push_back({line.item_code ? std::to_string(*line.item_code) : std::string(), line.name,
                                 line.unit_name, line.quantity, line.price, line.discount, line.total()});
    }
    receipt.total = invoice.total();
    receipt.discount = invoice.discount();
    receipt.net = invoice.net();
    receipt.paid = payment.paid;
    receipt.remaining = payment.change;
    return receipt;
}

std::string_view name_of(SaveStep step) {
    constexpr std::string_view names[] = {
        "لا شيء",               // nothing
        "العميل النقدي",        // the walk-in customer
        "طباعة البون",          // the receipt
        "رصيد العميل",          // the account balance
        "رأس البون",            // the header
        "حركة البنك",           // the bank row
        "أصناف البون",          // the lines
        "التحويل من مخزن آخر",  // transfers from another store
        "أرصدة المخزن",         // the stock
        "أعمال الصنايعية",      // the craftsman lines
        "الحجوزات",             // the reservations
    };
    return names[static_cast<std::size_t>(step)];
}

SaveOutcome Saving::save(Invoice& invoice, const PaymentTaken& payment) {
    if (is_running_) return SaveOutcome::refused;
    const RunningMark mark(is_running_);
    finished_ = SaveStep::none;
    has_written_ = false;
    sold_elsewhere_.clear();
    moment_ = services_.clock.now();
    try {
        const auto shift = check_before_saving(connection_, session_, services_.prompts, invoice, &claims_);
        if (!shift) return SaveOutcome::refused;
        shift_ = *shift;
        invoice.number = claims_.number();
        log_begin(invoice);
        write_all(invoice, payment);
        claims_.release();
        connection_.make_durable();
        services_.log.log_event(in_log(invoice) + " finished", log_code);
        if (!sold_elsewhere_.empty()) {
            services_.prompts.message(std::string(message::sold_elsewhere) + sold_elsewhere_ +
                                          std::string(message::sold_elsewhere_advice),
                                      common::Icon::exclamation);
        }
        return SaveOutcome::saved;
    } catch (const std::exception& error) {
        if (!may_have_run(error)) claims_.release();
        const std::string number = std::to_string(invoice.number);
        const bool nothing = !has_written_ && !(finished_ >= SaveStep::receipt && may_have_run(error));
        services_.log.log_event(in_log(invoice) + " stopped, " + (nothing ? "nothing saved, " : "") +
                                    "last finished step: " + std::string(name_of(finished_)) + ": " +
                                    error.what(),
                                log_code);
        if (nothing) {
            services_.prompts.message(database::with_reason(message::not_saved, error),
                                      common::Icon::critical);
            return SaveOutcome::refused;
        }
        services_.prompts.message(std::string(message::partly_number) + number +
                                      std::string(message::partly_saved) + std::string(name_of(finished_)) +
                                      "\n" + std::string(database::cause_of(error)) +
                                      std::string(message::partly_advice),
                                  common::Icon::critical);
        return SaveOutcome::partly_saved;
    }
}

void Saving::log_begin(const Invoice& invoice) {
    services_.log.log_event(in_log(invoice) + " begins, lines " + std::to_string(invoice.lines.size()),
                            log_code);
}

void Saving::write_all(Invoice& invoice, const PaymentTaken& payment) {
    const auto done = [this](SaveStep step) { finished_ = step; };
    write_walk_in_customer(invoice);
    done(SaveStep::walk_in);
    print_receipts(invoice, payment);
    while (claims_.number_taken(invoice)) {
        take_another_number(invoice);
        print_receipts(invoice, payment);
    }
    done(SaveStep::receipt);
    // The batches are read before the first row is written, and after the printer, which may be slow.
    StockBatches batches(connection_, invoice.store);
    for (const Line& line : invoice.lines)
        if (takes_from_stock(invoice, line)) batches.oldest(*line.item_code);
    find_goods_sold_elsewhere(invoice, batches);
    move_account_balance(invoice);
    done(SaveStep::account_balance);
    write_header(invoice);
    done(SaveStep::header);
    write_bank_row(invoice);
    done(SaveStep::bank);
    write_lines(invoice, batches);
    done(SaveStep::lines);
    fetch_from_other_stores(invoice, batches);
    done(SaveStep::transfers);
    move_stock(invoice, batches);
    done(SaveStep::stock);
    move_craftsman_lines(invoice);
    done(SaveStep::craftsman_lines);
    move_reservations(invoice);
    done(SaveStep::reservations);
}

// A walk-in customer's row is no part of the invoice: after an error the invoice can be saved again.
void Saving::write_walk_in_customer(Invoice& invoice) {
    if (invoice.has_walk_in()) accounts::store_walk_in_customer(connection_, *invoice.walk_in);
}

void Saving::print_receipts(const Invoice& invoice, const PaymentTaken& payment) {
    const auto basic = connection_.query("select * from basic ");
    const auto setting = [&](std::string_view column) {
        return basic.empty() ? 0 : basic.front().integer(column);
    };
    const printing::Receipt receipt = receipt_of(invoice, payment, session_, shift_, moment_.time);
    if (setting("inv_p") == 1) {
        printer_.print(receipt,
                       setting("csh_inv") != 0 ? printing::Form::cash_page : printing::Form::standard_page);
        return;
    }
    const bool wanted = !invoice.suppress_receipt || printer_.prints_text();
    const bool reachable = !wanted || printer_.print(receipt, printing::Form::full);
    // Shops with a second print point get a copy without the telephone. A printer that has just failed is not
    // tried again, because that would make the cashier wait twice.
    if (setting("cust_n") == 1 && reachable) printer_.print(receipt, printing::Form::no_telephone);
}

// A till that knows no claims may have saved the number while the receipt was printing.
void Saving::take_another_number(Invoice& invoice) {
    services_.log.log_event(in_log(invoice) + " stopped, nothing saved, another till used its number",
                            log_code);
    services_.prompts.message(std::string(message::partly_number) + std::to_string(invoice.number) +
                                  std::string(message::number_taken),
                              common::Icon::exclamation);
    claims_.claim_number(invoice);
    log_begin(invoice);
}

// It may have sold the goods as well. They lie on the counter and are paid for, so the sale goes on.
void Saving::find_goods_sold_elsewhere(const Invoice& invoice, StockBatches& batches) {
    Goods levels = goods_taken(invoice);
    for (auto& [place, quantity] : levels)
        quantity = place.second == invoice.store ? batches.held(place.first) : 0;
    const Line* line = first_short_line(invoice, levels);
    if (line == nullptr) return;
    sold_elsewhere_ = line->name;
    services_.log.log_event(log_name(key_of(invoice)) + " sells more than the stock: another till sold \"" +
                                line->name + "\" while the receipt was printing",
                            log_code);
}

void Saving::move_account_balance(const Invoice& invoice) {
    if (invoice.payment != PaymentOption::account) return;
    Sql statement("update custdata set cacc = [cacc] ");
    if (invoice.is_return())
        statement += "- ";
    else
        statement += "+ ";
    connection_.execute(statement + invoice.net() + " where ccode = " + invoice.customer);
    has_written_ = true;
}

void Saving::write_header(const Invoice& invoice) {
    Recordset sales(connection_, "select * from sales");
    sales.add();
    sales.set("pnum", invoice.number);
    sales.set("vcode", invoice.vcode());
    sales.set("Date", invoice.date);
    sales.set("ctype", ctype_of(invoice.kind));
    sales.set("ptot", invoice.total().value());
    sales.set("pdis", invoice.discount().value());
    sales.set("ptax", 0);
    sales.set("stcode", invoice.store);
    sales.set("User", session_.user_code);
    sales.set("wCode", invoice.worker);
    if (invoice.payment == PaymentOption::account && invoice.permit_opened)
        sales.set("perm_no", common::trim(invoice.permit_number));
    sales.set("types", 0);
    sales.set("Shift", shift_);
    if (invoice.payment == PaymentOption::tips) sales.set("link", invoice.tips_receiver);
    sales.set("time_", database::Value(common::on_day_zero(moment_.time)));
    sales.set("stype", stype_of(invoice.payment));
    sales.set("ptype", session_.cash_point);
    sales.set("inv_type", static_cast<int>(invoice.kind));
    if (!invoice.note.empty()) sales.set("note", invoice.note);
    if (invoice.has_walk_in()) sales.set("cust_c", invoice.walk_in->code);
    if (invoice.payment == PaymentOption::card) {
        sales.set("credit_name", invoice.card.holder);
        sales.set("ref_no", invoice.card.reference);
        sales.set("bcode", invoice.card.bank_code);
        sales.set("safe", 1);
    }
    if (invoice.payment == PaymentOption::tips) sales.set("disboun", invoice.discount().value());
    if (invoice.original) sales.set("inv_o", invoice.original->number);
    sales.update();
    has_written_ = true;
    if (invoice.is_return() && invoice.original && invoice.original->identity)
        link_return(connection_, {key_of(invoice), moment_.time}, *invoice.original->identity);
}

void Saving::write_bank_row(const Invoice& invoice) {
    if (invoice.payment != PaymentOption::card) return;
    const std::int64_t number =
        database::integer_of(connection_.scalar("select max(ser) as xmax from btran ")) + 1;
    Sql statement = Sql("INSERT INTO btran (ser,bcode,[date],quan,type,type1,stcode,note1) select ") +
                    number + " , " + invoice.card.bank_code + " , " + quoted(invoice.date) + " , " +
                    invoice.net();
    if (invoice.is_return())
        statement += " , 0, 0, 0 , ";
    else
        statement += " , 1, 0, 0 , ";
    statement += quoted(card_note(!invoice.is_return(), invoice.card.reference));
    connection_.execute(statement);
}

void Saving::write_lines(const Invoice& invoice, StockBatches& batches) {
    Recordset rows(connection_, "select * from saledata");
    int serial = 0;
    for (const Line& line : invoice.lines) {
        ++serial;
        rows.add();
        rows.set("pnum", invoice.number);
        rows.set("vcode", invoice.vcode());
        rows.set("Date", invoice.date);
        rows.set("ctype", ctype_of(invoice.kind));
        rows.set("stcode", invoice.store);
        rows.set("stype", stype_of(invoice.payment));
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
        } else if (takes_from_stock(invoice, line)) {
            // The batch that the first piece comes from, for a return to go back to.
            if (const auto oldest = batches.oldest(*line.item_code)) rows.set("edate", *oldest);
        }
        rows.set("time_", database::Value(common::on_day_zero(moment_.time)));
        if (invoice.payment == PaymentOption::tips) rows.set("link", invoice.tips_receiver);
        rows.set("inv_type", static_cast<int>(invoice.kind));
        rows.update();
    }
}

void Saving::fetch_from_other_stores(const Invoice& invoice, StockBatches& batches) {
    if (invoice.is_return()) return;
    for (const Line& line : invoice.lines) {
        if (!line.is_supplied() || !line.item_code) continue;
        batches.forget(*line.item_code);
        stock::transfer_for_line(connection_, {*line.item_code, line.quantity, line.factor, line.unit_code,
                                               line.source_store, invoice.store, invoice.date});
    }
}

void Saving::move_stock(const Invoice& invoice, StockBatches& batches) {
    for (const Line& line : invoice.lines) {
        if (!line.moves_stock()) continue;
        if (invoice.is_return())
            put_into_stock(connection_, *line.item_code, invoice.store, line.base_quantity(), line.expiry);
        else
            batches.take(*line.item_code, line.base_quantity());
    }
}

void Saving::move_craftsman_lines(const Invoice& invoice) {
    for (const Line& line : invoice.lines) {
        if (line.salver_code == 0) continue;
        Sql statement("update salver set cqty = [cqty] ");
        if (invoice.is_return())
            statement += "+ ";
        else
            statement += "- ";
        connection_.execute(statement + line.quantity + " where scode = " + line.salver_code);
    }
}

// What an account customer buys is taken off his reservations. A return does not reserve again.
void Saving::move_reservations(const Invoice& invoice) {
    if (invoice.payment != PaymentOption::account || invoice.is_return()) return;
    for (const Line& line : invoice.lines) {
        if (!line.item_code) continue;
        connection_.execute(Sql("Update reservd set quan1 = quan1 - ") + line.base_quantity() +
                            " , quan = quan - " + line.base_quantity() + " Where quan1 > 0 and icode = " +
                            *line.item_code + " and ccode = " + invoice.customer);
    }
}

std::string card_note(bool is_sale, std::string_view reference) {
    return (is_sale ? " مبيعات إئتمان رقم مرجعي " : " مرتجع إئتمان رقم مرجعي ") + std::string(reference);
}

}  // namespace sales
