#include "signin/blocked.h"

#include "database/sql.h"

namespace signin {

using database::quoted;
using database::Sql;

void ask_blocked(database::Reads& reads, BlockedUsers& blocked) {
    reads.add_optional("select user_code from till_blocked", [&blocked](const database::Result& rows) {
        blocked.clear();
        for (const database::Row& row : rows)
            blocked.insert(row.integer("user_code"));
    });
}

BlockedUsers blocked_users(database::Connection& connection) {
    BlockedUsers blocked;
    database::Reads reads;
    ask_blocked(reads, blocked);
    reads.run(connection);
    return blocked;
}

void set_blocked(database::Connection& connection, std::int64_t user, bool blocked,
                 const common::Moment& now) {
    connection.execute(Sql("delete from till_blocked where user_code = ") + user);
    if (blocked)
        connection.execute(Sql("insert into till_blocked (user_code, moment) select ") + user + ", " +
                           quoted(now));
}

}  // namespace signin
