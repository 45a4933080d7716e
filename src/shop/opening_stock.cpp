#include "shop/opening_stock.h"

namespace shop {

using database::Connection;
using database::quoted;
using database::Sql;

void remember_opening_stock(Connection& connection, const common::Moment& moment) {
    connection.execute("delete from stk_f_q where B_no = 'opening'");
    connection.execute(
        Sql("insert into stk_f_q (icode,stcode,quan,edate,[date],f_q,B_no) select icode,stcode,quan,"
            "isnull(edate,'3000/01/01'),") +
        quoted(moment) + ",1,'opening' from stk");
}

}  // namespace shop
