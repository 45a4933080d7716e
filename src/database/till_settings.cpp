#include "database/till_settings.h"

#include "common/typed.h"
#include "database/till_tables.h"

namespace database {

namespace {

std::optional<std::string> read_day(std::string_view typed) {
    const auto date = common::read_date(typed);
    return date ? std::optional(common::date_text(*date)) : std::nullopt;
}

constexpr TillSetting settings[] = {
    {setting::net_from,
     "from this day on a drawer is to hold the net of its cash invoices: their discounts are taken off the "
     "expected cash. Leave it unset where another program adds up the cash of this shop without them",
     "a day, yyyy/mm/dd", read_day},
};

}  // namespace

std::span<const TillSetting> till_settings() {
    return settings;
}

std::optional<std::string> till_setting(Connection& connection, std::string_view name) {
    Value value = Null{};
    unless_table_is_missing([&] {
        value = connection.scalar(Sql("select value from till_setting where name = ") + quoted(name));
    });
    return is_null(value) ? std::nullopt : std::optional(text_of(value));
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
