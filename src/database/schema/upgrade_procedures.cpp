// The three entries of the upgrade list that are more than a statement. A failing operation in them is
// skipped and the rest goes on.
#include "database/recordset.h"
#include "database/schema/upgrade_list.h"

namespace database {

void add_store_columns(Connection& connection) {
    const Result stores = connection.query(" select * from stocks");
    for (const Row& store : stores)
        ignoring_failure([&] {
            connection.execute(Sql("ALTER TABLE items add p_") + store.integer("code") +
                               " nvarchar(20) null");
        });
}

void copy_shifts_to_drawers(Connection& connection) {
    const Result drawers = connection.query("select * from cash");
    Recordset shifts(connection, "select * from shift");
    for (const Row& drawer : drawers) {
        ignoring_failure([&] {
            const Result without_drawer = connection.query("select * from shift where cash_no is null ");
            for (const Row& row : without_drawer)
                ignoring_failure([&] {
                    shifts.cancel();  // of a copy that failed
                    shifts.add();
                    shifts.set("stcode", drawer.value("stcode"));
                    shifts.set("cash_no", drawer.value("code"));
                    for (const char* column : {"scode", "s_date", "e_date", "man_", "dep"})
                        shifts.set(column, row.value(column));
                    shifts.update();
                });
        });
    }
}

void number_vouchers(Connection& connection) {
    std::int64_t next = integer_of(connection.scalar("select max(pay_id) as xl from vencuspay ")) + 1;
    Recordset vouchers(connection, "select * from vencuspay where pay_id is null");
    for (vouchers.move_first(); !vouchers.at_end(); vouchers.move_next()) {
        ignoring_failure([&] {
            vouchers.set("pay_id", Value(next));
            vouchers.update();
        });
        vouchers.cancel();  // of a row that could not be written
        ++next;
    }
}

}  // namespace database
