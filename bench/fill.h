// Inserts many rows into a shop.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "database/connection.h"

namespace bench {

using Cells = std::vector<database::Value>;

inline database::Value whole(std::int64_t number) {
    return database::Value(number);
}
inline database::Value text(std::string value) {
    return database::Value(std::move(value));
}
inline database::Value day(const common::Moment& moment) {
    return database::Value(common::Moment{moment.date, {}});
}
// Times of day have the server's day zero as their date.
inline database::Value time_of(const common::Moment& moment) {
    return database::Value(common::Moment{{1900, 1, 1}, moment.time});
}

// Inserts the rows 1 to `count`, a fixed number in each transaction.
inline void fill(database::Connection& connection, database::Fragment insert, std::int64_t count,
                 const std::function<Cells(std::int64_t)>& row) {
    constexpr int rows_per_transaction = 20'000;
    for (std::int64_t number = 1; number <= count;) {
        connection.execute("begin transaction");
        for (int i = 0; i < rows_per_transaction && number <= count; ++i, ++number)
            connection.execute(insert, row(number));
        connection.execute("commit transaction");
    }
}

}  // namespace bench
