#include "sales/numbering.h"

namespace sales {

using database::Sql;

std::int64_t next_invoice_number(database::Connection& connection, KindOption kind, PaymentOption payment,
                                 std::int64_t store) {
    const Sql statement = [&] {
        if (kind != KindOption::sale)
            return Sql(" select max(pnum) as last_i from sales where (ctype = 2 or ctype = 3) and stcode =") +
                   store;
        if (payment == PaymentOption::account)
            return Sql(
                " select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1)  and vcode <> -1 ");
        return Sql(" select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1) and vcode = -1");
    }();
    return database::integer_of(connection.scalar(statement)) + 1;
}

}  // namespace sales
