#include "database/next_number.h"

#include "database/till_tables.h"

namespace database {

// On a server the only row of till_number is what the tills wait for; the embedded engine lets one
// transaction write at a time. Whether the table is there is asked of the catalogue, since a statement that
// fails might end the transaction.
void hold_numbers(Connection& connection) {
    if (connection.is_embedded()) return;
    unless_table_is_missing([&] {
        connection.description("till_number");
        connection.execute("update till_number set drawn = getdate()");
    });
}

std::int64_t next_number(Connection& connection, Fragment highest) {
    hold_numbers(connection);
    return integer_of(connection.scalar(highest)) + 1;
}

}  // namespace database
