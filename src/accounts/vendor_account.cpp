#include "accounts/vendor_account.h"

#include <algorithm>

#include "accounts/messages.h"
#include "accounts/millionths.h"
#include "accounts/voucher_records.h"
#include "database/reads.h"

namespace accounts {

using database::quoted;
using database::Row;
using database::Sql;

Sql effect_of_purchase() {
    return Sql("case when ctype = 1 then ") + net_of_purchase + " when ctype = 3 then 0 - (" +
           net_of_purchase + ") else 0 end";
}

namespace {

struct Movement {
    common::Moment moment;
    Millionths amount = 0;  // added to what the vendor is owed
    std::string description;
    std::string notes;
};

Movement movement_of_purchase(const Row& row) {
    const bool is_supply = row.integer("ctype") == static_cast<int>(PurchaseKind::supply);
    Movement movement{row.moment("date"),
                      millionths(row.number("effect")),
                      std::string(is_supply ? message::supply_number : message::vendor_return_number) +
                          std::to_string(row.integer("pnum")),
                      {}};
    if (!row.text("perm_no").empty())
        movement.notes = std::string(message::vendor_invoice_number) + row.text("perm_no");
    return movement;
}

Movement movement_of_voucher(const Row& row) {
    const auto kind = static_cast<VoucherKind>(row.integer("ptype"));
    return {row.moment("date"), -millionths(row.number("effect")),
            voucher_title(kind, method_of(row)) + std::string(message::numbered) + row.text("chkno"),
            row.text("note")};
}

StatementRow row_of(const Movement& movement, Millionths balance) {
    const bool is_credit = movement.amount >= 0;
    return {common::date_text(movement.moment.date),
            shown(is_credit ? movement.amount : 0),
            shown(is_credit ? 0 : -movement.amount),
            shown(balance),
            movement.description,
            movement.notes};
}

StatementRow balance_row(Millionths balance, const common::Date& date) {
    return {"", {}, {}, shown(balance), std::string(message::balance_on) + common::date_text(date), ""};
}

}  // namespace

VendorStatement vendor_statement(database::Connection& connection, std::int64_t vendor,
                                 const common::Date& start, const common::Date& end) {
    const Sql of_vendor = Sql(" where vcode = ") + vendor;
    const Sql vouchers = Sql(" from vencuspay") + of_vendor + " and ztype = 1";
    const Sql before = Sql(" and [date] < ") + quoted(start);
    const Sql within =
        Sql(" and [date] >= ") + quoted(start) + " and [date] <= " + quoted(end) + " order by [date]";
    Millionths balance = 0;
    const auto add = [&](const database::Result& sum) {
        balance += millionths(database::number_of(database::first_cell(sum)));
    };
    const auto subtract = [&](const database::Result& sum) {
        balance -= millionths(database::number_of(database::first_cell(sum)));
    };
    std::vector<Movement> movements;
    database::Reads reads;
    reads.add(Sql("select vopen from vendata") + of_vendor, add);
    reads.add(Sql("select sum(") + effect_of_purchase() + ") from purchase" + of_vendor + before, add);
    reads.add(Sql("select sum(") + effect_on_customer + ")" + vouchers + before, subtract);
    reads.add(Sql("select [date],ctype,pnum,perm_no,") + effect_of_purchase() + " as effect from purchase" +
                  of_vendor + " and (ctype = 1 or ctype = 3)" + within,
              [&](const database::Result& rows) {
                  for (const Row& row : rows)
                      movements.push_back(movement_of_purchase(row));
              });
    reads.add(
        Sql("select [date],ptype,[type],chkno,note,") + effect_on_customer + " as effect" + vouchers + within,
        [&](const database::Result& rows) {
            for (const Row& row : rows)
                movements.push_back(movement_of_voucher(row));
        });
    reads.run(connection);
    std::ranges::stable_sort(movements, {}, &Movement::moment);

    VendorStatement statement;
    statement.brought_forward = shown(balance);
    statement.rows.push_back(balance_row(balance, start));
    Millionths credits = 0;
    Millionths debits = 0;
    for (const Movement& movement : movements) {
        balance += movement.amount;
        (movement.amount >= 0 ? credits : debits) += std::abs(movement.amount);
        statement.rows.push_back(row_of(movement, balance));
    }
    statement.credits = shown(credits);
    statement.debits = shown(debits);
    statement.closing = shown(balance);
    statement.rows.push_back(balance_row(balance, end));
    return statement;
}

}  // namespace accounts
