#include "sales/return_links.h"

#include "database/error.h"
#include "database/recordset.h"

namespace sales {

using database::Sql;

namespace {

// Runs an operation on the table, if the shop has it.
template <typename Operation>
void if_there(Operation operation) {
    constexpr std::string_view no_such_table = "42S02";
    try {
        operation();
    } catch (const database::Error& error) {
        if (error.sqlstate() != no_such_table) throw;
    }
}

database::Value time_value(const common::TimeOfDay& time) {
    return common::Moment{{1900, 1, 1}, time};
}

}  // namespace

void link_return(database::Connection& connection, const InvoiceIdentity& back, const InvoiceIdentity& sale) {
    if_there([&] {
        database::Recordset links(connection, "select * from till_return");
        links.add();
        links.set("pnum", back.key.number);
        links.set("ctype", back.key.ctype);
        links.set("vcode", back.key.vcode);
        links.set("stcode", back.key.store);
        links.set("date", back.key.date);
        links.set("time_", time_value(back.time));
        links.set("sale_pnum", sale.key.number);
        links.set("sale_ctype", sale.key.ctype);
        links.set("sale_vcode", sale.key.vcode);
        links.set("sale_stcode", sale.key.store);
        links.set("sale_date", sale.key.date);
        links.set("sale_time", time_value(sale.time));
        links.update();
    });
}

std::optional<InvoiceIdentity> linked_sale(database::Connection& connection, const InvoiceIdentity& back) {
    std::optional<InvoiceIdentity> sale;
    if_there([&] {
        for (const auto& row : connection.query(Sql("select * from till_return") + where(back.key))) {
            if (identity_of(row) != back) continue;
            sale = {{row.integer("sale_pnum"), row.integer("sale_ctype"), row.integer("sale_vcode"),
                     row.integer("sale_stcode"), row.moment("sale_date").date},
                    row.moment("sale_time").time};
        }
    });
    return sale;
}

}  // namespace sales
