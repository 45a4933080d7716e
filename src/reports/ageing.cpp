#include "reports/ageing.h"

#include <algorithm>
#include <map>

#include "accounts/vendor_account.h"
#include "accounts/voucher_records.h"
#include "sales/invoice_key.h"

namespace reports {

using accounts::PartyKind;
using common::Date;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

constexpr long days_of_an_age = 30;

// The documents that raise what a party owes, or is owed: party, date, what it is, number, amount.
Sql debts(PartyKind kind, const Sql& condition) {
    if (kind == PartyKind::vendor) {
        return Sql("select vcode as party, [date] as day, 1 as what, convert(nvarchar(50),pnum) as "
                   "number, ") +
               accounts::net_of_purchase + " as amount from purchase where ctype = 1" + condition +
               " union all select vcode as party, [date] as day, 2 as what, chkno as number, 0 - (" +
               accounts::effect_on_customer + ") as amount from vencuspay where ztype = 1 and (" +
               accounts::effect_on_customer + ") < 0" + condition;
    }
    return Sql("select vcode as party, [date] as day, 0 as what, convert(nvarchar(50),pnum) as number, "
               "isnull(ptot,0) - isnull(pdis,0) as amount from sales where ") +
           sales::counts_as_sale + " and vcode <> -1" + condition +
           " union all select vcode as party, [date] as day, 2 as what, chkno as number, " +
           accounts::effect_on_customer + " as amount from vencuspay where (ztype = 2 or ztype = 3) and (" +
           accounts::effect_on_customer + ") > 0" + condition;
}

// receipt, goods in, voucher
constexpr std::string_view documents[] = {"بون آجل", "فاتورة مورد", "إيصال"};

struct Balance {
    std::int64_t code;
    std::string name;
    double amount;
};

std::vector<Balance> balances(database::Connection& connection, PartyKind kind) {
    std::vector<Balance> list;
    const bool is_vendor = kind == PartyKind::vendor;
    for (const Row& row : connection.query(
             is_vendor
                 ? Sql("select vcode as code, vname as [name], vacc as balance from vendata order by vcode")
                 : Sql("select ccode as code, cname as [name], cacc as balance from custdata order by "
                       "ccode")))
        list.push_back({row.integer("code"), row.text("name"), row.number("balance")});
    return list;
}

std::size_t age_of(long days) {
    if (days <= days_of_an_age) return 0;
    return std::min<std::size_t>(static_cast<std::size_t>((days - 1) / days_of_an_age), age_count - 1);
}

}  // namespace

std::vector<AgedParty> aged_parties(database::Connection& connection, PartyKind kind, const Date& today) {
    // The sums of debts by age. The oldest need no sum, because they are what is left of the balance.
    std::map<std::int64_t, std::array<double, age_count>> debts_of;
    const Date oldest = common::add_days(today, -days_of_an_age * static_cast<long>(age_count - 1));
    for (const Row& row : connection.query(debts(kind, Sql(" and [date] >= ") + quoted(oldest)))) {
        const long days = common::days_from_epoch(today) - common::days_from_epoch(row.moment("day").date);
        debts_of[row.integer("party")][age_of(days)] += row.number("amount");
    }
    std::vector<AgedParty> parties;
    for (Balance& balance : balances(connection, kind)) {
        if (common::Amount(balance.amount).is_zero()) continue;
        AgedParty party{balance.code, std::move(balance.name), balance.amount};
        double left = std::max(0.0, balance.amount);
        for (std::size_t age = 0; age + 1 < age_count; ++age) {
            party.by_age[age] = std::min(left, debts_of[party.code][age]);
            left -= party.by_age[age];
        }
        party.by_age.back() = left;
        parties.push_back(std::move(party));
    }
    return parties;
}

std::vector<OpenDebt> open_debts(database::Connection& connection, PartyKind kind, std::int64_t code,
                                 const Date& today) {
    std::vector<OpenDebt> open;
    const auto party = accounts::find_party(connection, kind, code);
    double left = party ? std::max(0.0, party->balance) : 0;
    for (const Row& row : connection.query(Sql("select * from (") + debts(kind, Sql(" and vcode = ") + code) +
                                           ") as debts order by day desc, number desc")) {
        if (common::Amount(left) <= common::Amount()) break;
        OpenDebt debt{row.moment("day").date, std::string(documents[row.integer("what")]), row.text("number"),
                      row.number("amount"),   std::min(left, row.number("amount")),        0};
        debt.age = common::days_from_epoch(today) - common::days_from_epoch(debt.date);
        left -= debt.open;
        open.push_back(std::move(debt));
    }
    // No document explains the rest: it is an opening balance.
    if (common::Amount(left) > common::Amount()) open.push_back({{}, "رصيد سابق", "", left, left, 0});
    return open;
}

}  // namespace reports
