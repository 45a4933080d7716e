#include "sales/return_links.h"

#include "database/recordset.h"
#include "database/till_tables.h"

namespace sales {

using database::Sql;

std::optional<database::Command> link_of_return(database::Connection& connection, const InvoiceIdentity& back,
                                                const InvoiceIdentity& sale) {
    std::optional<database::Command> link;
    database::unless_table_is_missing([&] {
        database::Recordset links(connection, "select * from till_return");
        links.add();
        links.set("pnum", back.key.number);
        links.set("ctype", back.key.ctype);
        links.set("vcode", back.key.vcode);
        links.set("stcode", back.key.store);
        links.set("date", back.key.date);
        links.set("time_", common::on_day_zero(back.time));
        links.set("sale_pnum", sale.key.number);
        links.set("sale_ctype", sale.key.ctype);
        links.set("sale_vcode", sale.key.vcode);
        links.set("sale_stcode", sale.key.store);
        links.set("sale_date", sale.key.date);
        links.set("sale_time", common::on_day_zero(sale.time));
        link = links.take_update();
    });
    return link;
}

void unlink_return(database::Connection& connection, const InvoiceIdentity& back) {
    database::unless_table_is_missing([&] {
        connection.execute(
            "delete from till_return where pnum = ? and ctype = ? and vcode = ? and stcode = ? and [date] = "
            "? "
            "and time_ = ?",
            values_of(back));
    });
}

std::optional<InvoiceIdentity> linked_sale(database::Connection& connection, const InvoiceIdentity& back) {
    std::optional<InvoiceIdentity> sale;
    database::unless_table_is_missing([&] {
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
