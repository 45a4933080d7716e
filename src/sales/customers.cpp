#include "sales/customers.h"

#include <algorithm>

#include "common/text.h"
#include "database/recordset.h"

namespace sales {

using database::Connection;
using database::Recordset;
using database::Row;
using database::Sql;

namespace {

bool is_same(const Row& row, const WalkInCustomer& customer) {
    const auto equal = [&row](std::string_view column, std::string_view typed) {
        return common::trim_right(row.text(column)) == common::trim_right(typed);
    };
    return equal("zname", customer.name) && equal("zphone", customer.phone) && equal("zmail", customer.mail);
}

// Other tills may have given out the proposed code and those after it. If one of these rows is this customer
// to the letter, an attempt whose answer was lost wrote it, and he is not added a second time.
void choose_code(Connection& connection, WalkInCustomer& customer) {
    std::int64_t last = 0;
    for (const Row& row : connection.query(Sql("select * from cust_cash where zcode >= ") + customer.code)) {
        last = std::max(last, row.integer("zcode"));
        if (!is_same(row, customer)) continue;
        customer.code = row.integer("zcode");
        customer.is_new = false;
        return;
    }
    if (last != 0) customer.code = last + 1;
}

}  // namespace

std::string account_name(Connection& connection, std::int64_t code) {
    return database::text_of(connection.scalar(Sql("select cname from custdata where ccode = ") + code));
}

void store_walk_in_customer(Connection& connection, WalkInCustomer& customer) {
    if (customer.is_new) choose_code(connection, customer);
    Recordset rows =
        customer.is_new
            ? Recordset(connection, "select * from cust_cash ")
            : Recordset(connection, Sql("select * from cust_cash where zcode = ") + customer.code);
    if (customer.is_new) {
        rows.add();
        rows.set("zcode", customer.code);
    }
    rows.set("zname", customer.name);
    rows.set("zphone", customer.phone);
    rows.set("zmail", customer.mail);
    rows.update();
    customer.is_new = false;
}

}  // namespace sales
