#include "sales/lists.h"

#include "common/text.h"

namespace sales {

using database::choices;
using database::Connection;
using database::Reads;
using database::Result;
using database::Row;
using database::Sql;

namespace {

std::string shown_moment(const Row& row, std::string_view column) {
    return row.null(column) ? std::string() : common::moment_text(row.moment(column));
}

}  // namespace

std::string group_name(const Lists& lists, std::int64_t item_type) {
    if (item_type == 0) return {};
    return contains(lists.item_types, item_type) ? name_of(lists.item_types, item_type)
                                                 : std::to_string(item_type);
}

void ask_lists(Reads& reads, Lists& lists) {
    using database::into;
    database::ask_stores(reads, lists.stores);
    reads.add("select * from [users]", into(lists.users));
    reads.add("select * from bankdata where isnull(mob,0) = 0 ", into(lists.banks, "bcode", "bname"));
    database::ask_workers(reads, lists.workers);
    // Only shops made with this program have these tables of names; other shops show the numbers.
    reads.add_optional("select * from item_types", into(lists.item_types));
    reads.add_optional("select * from makers", into(lists.makers));
    ask_parties(reads, lists);
    reads.add("select * from users", [&lists](const Result& rows) {
        lists.user_filter = choices(rows);
        lists.user_filter.push_back({all_users, std::string(all_users_name)});
    });
}

void ask_parties(Reads& reads, Lists& lists) {
    using database::into;
    reads.add("select * from custdata order by ccode", into(lists.account_customers, "ccode", "cname"));
    reads.add("select * from boundata order by ccode", into(lists.tips_receivers, "ccode", "cname"));
}

std::string account_name(Connection& connection, std::int64_t code) {
    return database::text_of(connection.scalar(Sql("select cname from custdata where ccode = ") + code));
}

void ask_shifts(Reads& reads, const signin::Session& session, std::vector<ShiftRow>& shifts) {
    reads.add(Sql("select * FROM shift  where stcode = ") + session.store_code +
                  " and cash_no = " + session.cash_point + "  Order By scode",
              [&shifts](const Result& rows) {
                  shifts.clear();
                  for (const Row& row : rows)
                      shifts.push_back(
                          {row.integer("scode"), shown_moment(row, "s_date"), shown_moment(row, "e_date")});
              });
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

void ask_news(Reads& reads, std::vector<std::string>& news) {
    reads.add("select * from news", [&news](const Result& rows) {
        news.clear();
        for (const Row& row : rows)
            if (std::string line(common::trim(row.text("nname"))); !line.empty())
                news.push_back(std::move(line));
    });
}

}  // namespace sales
