#include "sales/lists.h"

#include "common/text.h"

namespace sales {

using database::choices;
using database::Connection;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

// Only shops made with this program have these tables of names; other shops show the numbers.
std::vector<common::Choice> optional_choices(Connection& connection, database::Fragment statement) {
    try {
        return choices(connection.query(statement));
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        return {};
    }
}

std::string shown_moment(const Row& row, std::string_view column) {
    return row.null(column) ? std::string() : common::moment_text(row.moment(column));
}

}  // namespace

std::string group_name(const Lists& lists, std::int64_t item_type) {
    if (item_type == 0) return {};
    return contains(lists.item_types, item_type) ? name_of(lists.item_types, item_type)
                                                 : std::to_string(item_type);
}

Lists load_lists(Connection& connection) {
    Lists lists;
    lists.stores = database::load_stores(connection);
    lists.users = choices(connection.query("select * from [users]"));
    lists.banks =
        choices(connection.query("select * from bankdata where isnull(mob,0) = 0 "), "bcode", "bname");
    lists.workers = database::load_workers(connection);
    lists.item_types = optional_choices(connection, "select * from item_types");
    lists.makers = optional_choices(connection, "select * from makers");
    reload_parties(connection, lists);
    return lists;
}

std::vector<common::Choice> load_user_filter(Connection& connection) {
    std::vector<common::Choice> filter = choices(connection.query("select * from users"));
    filter.push_back({all_users, std::string(all_users_name)});
    return filter;
}

void reload_parties(Connection& connection, Lists& lists) {
    lists.account_customers =
        choices(connection.query("select * from custdata order by ccode"), "ccode", "cname");
    lists.tips_receivers =
        choices(connection.query("select * from boundata order by ccode"), "ccode", "cname");
}

std::string account_name(Connection& connection, std::int64_t code) {
    return database::text_of(connection.scalar(Sql("select cname from custdata where ccode = ") + code));
}

std::vector<ShiftRow> load_shifts(Connection& connection, const signin::Session& session) {
    std::vector<ShiftRow> shifts;
    for (const Row& row : connection.query(Sql("select * FROM shift  where stcode = ") + session.store_code +
                                           " and cash_no = " + session.cash_point + "  Order By scode"))
        shifts.push_back({row.integer("scode"), shown_moment(row, "s_date"), shown_moment(row, "e_date")});
    return shifts;
}

std::set<std::int64_t> shifts_of_user(Connection& connection, const signin::Session& session,
                                      std::int64_t user) {
    std::set<std::int64_t> shifts;
    for (const auto& row :
         connection.query(Sql("select distinct [Shift] from sales where stcode = ") + session.store_code +
                          " and ptype = " + session.cash_point + " and [User] = " + user)) {
        if (!row.null("Shift")) shifts.insert(row.integer("Shift"));
    }
    return shifts;
}

std::vector<std::string> load_news(Connection& connection) {
    std::vector<std::string> news;
    for (const Row& row : connection.query("select * from news"))
        if (std::string line(common::trim(row.text("nname"))); !line.empty()) news.push_back(std::move(line));
    return news;
}

std::optional<std::int64_t> sale_period_of(Connection& connection, const common::Date& today) {
    const auto periods = connection.query(Sql("select * from sal_prd where sale_from <=") + quoted(today) +
                                          " and sale_to >= " + quoted(today));
    if (periods.empty()) return std::nullopt;
    return periods.front().integer("sale_no");
}

std::optional<std::int64_t> load_sale_period(Connection& connection, const common::Date& today) {
    connection.execute("delete from tmp_price");
    const auto period = sale_period_of(connection, today);
    if (period)
        connection.execute(Sql("INSERT INTO tmp_price (icode,p_per,s_price) select "
                               "icode,isnull(p_per,0),s_price from sale_price where sale_prd = ") +
                           *period);
    connection.make_durable();
    return period;
}

}  // namespace sales
