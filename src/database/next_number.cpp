#include "database/next_number.h"

#include "database/till_tables.h"

namespace database {

// A till that adds a row whose key another transaction has just added waits until that one ends; nothing of
// the row remains. The embedded engine lets one transaction write at a time anyway. The catalogue says
// whether the table exists, because a failed statement might end the transaction.
std::vector<Command> numbers_hold(Connection& connection) {
    std::vector<Command> commands;
    if (connection.is_embedded()) return commands;
    unless_table_is_missing([&] {
        connection.description("till_number");
        commands = {Sql("insert into till_number (id) values (1)"), Sql("delete from till_number")};
    });
    return commands;
}

void hold_numbers(Connection& connection) {
    connection.run_all(numbers_hold(connection));
}

std::int64_t next_number(Connection& connection, const Sql& highest) {
    hold_numbers(connection);
    return integer_of(connection.scalar(highest)) + 1;
}

}  // namespace database
