#include "accounts/parties.h"

#include <algorithm>

#include "database/choices.h"
#include "database/reads.h"
#include "database/recordset.h"

namespace accounts {

using database::Sql;

namespace {

Sql party_row(PartyKind kind, std::int64_t code) {
    return kind == PartyKind::vendor ? Sql("select * from vendata where vcode = ") + code
                                     : Sql("select * from custdata where ccode = ") + code;
}

std::string_view balance_column(PartyKind kind) {
    return kind == PartyKind::vendor ? "vacc" : "cacc";
}

}  // namespace

std::optional<Party> find_party(database::Connection& connection, PartyKind kind, std::int64_t code) {
    const auto rows = connection.query(party_row(kind, code));
    if (rows.empty()) return std::nullopt;
    return Party{rows.front().text(kind == PartyKind::vendor ? "vname" : "cname"),
                 rows.front().number(balance_column(kind))};
}

std::vector<common::Choice> load_parties(database::Connection& connection, PartyKind kind) {
    const Sql statement =
        kind == PartyKind::vendor ? Sql(" select vcode as x1,vname as x2 from vendata")
        : kind == PartyKind::customer
            ? Sql("select ccode as x1,cname as x2 from custdata where isnull(ctype,0) = 0 order by ccode")
            : Sql("select ccode as x1,cname as x2 from custdata where ctype = 1 order by ccode");
    return database::choices(connection.query(statement), "x1", "x2");
}

std::int64_t next_party_code(database::Connection& connection) {
    std::int64_t highest = 0;
    database::Reads reads;
    const auto look = [&](database::Fragment statement) {
        reads.add(statement, [&](const database::Result& result) {
            highest = std::max(highest, database::integer_of(database::first_cell(result)));
        });
    };
    look("select max(ccode) from custdata");
    look("select max(vcode) from vendata");
    reads.run(connection);
    return highest + 1;
}

common::Amount move_balance(database::Connection& connection, PartyKind kind, std::int64_t code, double by) {
    database::Recordset party(connection, party_row(kind, code));
    if (party.empty())
        throw database::Error("02000", "the party of the balance has no row", party_row(kind, code).text());
    const double before = party.number(balance_column(kind));
    if (by != 0) {
        party.set(balance_column(kind), before + by);
        party.update();
    }
    return common::Amount(before + by);
}

std::vector<CustomerRow> list_customers(database::Connection& connection) {
    std::vector<CustomerRow> customers;
    for (const auto& row : connection.query("select * from custdata order by ccode")) {
        CustomerRow customer{row.integer("ccode"), row.text("cname"), row.text("cphone"), row.number("cacc")};
        if (customer.phone.empty()) customer.phone = row.text("mob");
        customers.push_back(std::move(customer));
    }
    return customers;
}

}  // namespace accounts
