#include "database/till_settings.h"

#include "common/typed.h"

namespace database {

namespace {

constexpr std::string_view no_such_table = "42S02";

}  // namespace

std::optional<std::string> till_setting(Connection& connection, std::string_view name) {
    try {
        const Value value =
            connection.scalar(Sql("select value from till_setting where name = ") + quoted(name));
        if (is_null(value)) return std::nullopt;
        return text_of(value);
    } catch (const Error& error) {
        if (error.sqlstate() != no_such_table) throw;
        return std::nullopt;
    }
}

void set_till_setting(Connection& connection, std::string_view name, std::string_view value) {
    const std::int64_t changed = connection.execute(Sql("update till_setting set value = ") + quoted(value) +
                                                    " where name = " + quoted(name));
    if (changed > 0) return;
    connection.execute(Sql("insert into till_setting (name, value) select ") + quoted(name) + ", " +
                       quoted(value));
}

std::optional<common::Date> net_from(Connection& connection) {
    const auto text = till_setting(connection, setting::net_from);
    return text ? common::read_date(*text) : std::nullopt;
}

}  // namespace database
