// Requests of a client, read from their messages: its log-in, statements and calls.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/tds_values.h"

namespace test::tds {

struct Login {
    std::string computer;
    std::string user;
    std::string password;
    std::string program;
    std::string database;
};
Login read_login(std::string_view body);

// The text of a batch.
std::string read_batch(std::string_view body);

// A call of one of the server's procedures by name, even if the client called it by number.
struct Call {
    std::string procedure;
    std::vector<std::pair<std::string, database::Value>> arguments;  // by name, "@P1"; the name may be empty

    const database::Value& at(std::size_t position) const;
    // The argument of a name, else the one at the position, as text; empty if there is neither.
    std::string text(std::string_view name, std::size_t position) const;
};
Call read_call(std::string_view body);

// A statement with "@P1" in place of values as the program has it, with "?", and the values in their order.
struct Statement {
    std::string text;
    std::vector<database::Value> values;
};
// The values are the arguments from `first` on.
Statement with_values(std::string_view text, const Call& call, std::size_t first);

}  // namespace test::tds
