#include "signin/badges.h"

#include "audit/hash.h"
#include "common/numbers.h"
#include "common/random.h"
#include "common/text.h"
#include "database/till_tables.h"

namespace signin {

namespace {

using database::Sql;

// Slow on purpose, because short numbers could be found by trying them all.
std::string hash_of(const std::string& salt, std::string_view digits) {
    constexpr int rounds = 10'000;
    std::string hash = salt + std::string(digits);
    for (int round = 0; round < rounds; ++round)
        hash = audit::sha256(salt + hash);
    return hash;
}

}  // namespace

std::optional<std::string> read_badge(std::string_view typed) {
    std::string digits = common::western_digits(common::trim_blanks(typed));
    const bool fits = digits.size() >= shortest_badge && digits.size() <= longest_badge;
    if (!fits || !common::all_digits(digits)) return std::nullopt;
    return digits;
}

std::string new_badge() {
    return common::random_digits(16);
}

bool give_badge(database::Connection& connection, common::Clock& clock, std::int64_t user,
                std::string_view digits) {
    const auto owner = badge_owner(connection, digits);
    if (owner && *owner != user) return false;
    const std::string salt = common::random_digits(16);
    database::Transaction transaction(connection);
    connection.execute(Sql("delete from till_badge where user_code = ") + user);
    connection.execute("insert into till_badge (user_code, salt, hash, given) values (?, ?, ?, ?)",
                       {user, salt, hash_of(salt, digits), clock.now()});
    transaction.commit();
    connection.make_durable();
    return true;
}

bool take_badge(database::Connection& connection, std::int64_t user) {
    std::int64_t taken = 0;
    database::unless_table_is_missing(
        [&] { taken = connection.execute(Sql("delete from till_badge where user_code = ") + user); });
    connection.make_durable();
    return taken > 0;
}

std::optional<std::int64_t> badge_owner(database::Connection& connection, std::string_view digits) {
    std::optional<std::int64_t> owner;
    database::unless_table_is_missing([&] {
        for (const database::Row& row : connection.query("select user_code, salt, hash from till_badge"))
            if (row.text("hash") == hash_of(row.text("salt"), digits)) owner = row.integer("user_code");
    });
    return owner;
}

}  // namespace signin
