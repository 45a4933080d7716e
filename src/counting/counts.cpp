#include "counting/counts.h"

#include "counting/messages.h"
#include "database/form.h"
#include "database/next_number.h"
#include "database/till_tables.h"
#include "database/transaction.h"

namespace counting {

using common::FieldKind;
using common::Refusal;
using database::Connection;
using database::quoted;
using database::Sql;

namespace {

constexpr std::string_view everything = "كل الأصناف";                // all items
constexpr std::string_view only_scanned = "ما يمرر على الماسح فقط";  // only what is scanned

constexpr common::FormField<NewCount> new_count_fields[] = {
    {&NewCount::store,
     {.name = "count_store",
      .caption = "الم&خزن",
      .kind = FieldKind::choice,
      .place = {0, 0, 2},
      .missing = common::message::choose_store}},
    {&NewCount::what,
     {.name = "count_scope",
      .caption = "ما &يعد",
      .kind = FieldKind::choice,
      .place = {1, 0, 2},
      .missing = message::choose_scope}},
    {&NewCount::title,
     {.name = "count_title", .caption = "&بيان", .place = {2, 0, 2}, .column = "title", .longest = 100}},
    {&NewCount::by_date,
     {.name = "count_by_date",
      .caption = "كل &تاريخ صلاحية يعد وحده",
      .kind = FieldKind::check,
      .place = {3, 0, 2}}},
};

Count count_of(const database::Row& row) {
    Count count;
    count.number = row.integer("num");
    count.store = row.integer("stcode");
    count.store_name = row.text("store_name");
    count.scope = static_cast<Scope>(row.integer("scope"));
    count.group = row.integer("itype");
    count.group_name = row.text("group_name");
    count.by_date = row.integer("by_date") != 0;
    count.title = row.text("title");
    count.opened = row.moment("opened");
    count.opened_by = row.text("opener");
    if (!row.null("closed")) count.state = row.integer("booked") != 0 ? State::booked : State::given_up;
    count.closed = row.moment("closed");
    count.closed_by = row.text("closer");
    return count;
}

Sql counts_statement() {
    return Sql(
        "select till_count.*, stocks.[name] as store_name, item_types.[name] as group_name, "
        "o.[name] as opener, c.[name] as closer from till_count left join stocks on till_count.stcode = "
        "stocks.code left join item_types on till_count.itype = item_types.code left join users o on "
        "till_count.opened_by = o.code left join users c on till_count.closed_by = c.code");
}

}  // namespace

std::string_view name_of(State state) {
    switch (state) {
        case State::open:
            return "مفتوح";  // open
        case State::booked:
            return "مرحل";  // booked
        case State::given_up:
            return "ملغى";  // given up
    }
    return "";
}

std::string Count::scope_name() const {
    if (scope == Scope::group) return group_name;
    return std::string(scope == Scope::everything ? everything : only_scanned);
}

std::vector<Count> read_counts(Connection& connection) {
    std::vector<Count> counts;
    database::unless_table_is_missing([&] {
        for (const auto& row : connection.query(counts_statement() + " order by till_count.num desc"))
            counts.push_back(count_of(row));
    });
    return counts;
}

std::optional<Count> read_count(Connection& connection, std::int64_t number) {
    const auto rows = connection.query(counts_statement() + " where till_count.num = " + number);
    if (rows.empty()) return std::nullopt;
    return count_of(rows.front());
}

common::FormTable<NewCount> new_count_form() {
    return new_count_fields;
}

std::vector<common::Choice> read_scopes(Connection& connection) {
    std::vector<common::Choice> scopes = {{all_items, std::string(everything)},
                                          {what_is_scanned, std::string(only_scanned)}};
    for (auto& group :
         database::choices(connection.query("select code, [name] from item_types order by [name]")))
        scopes.push_back(std::move(group));
    return scopes;
}

std::variant<std::int64_t, Refusal> open_count(Connection& connection, const signin::Session& session,
                                               common::Clock& clock, const NewCount& fields) {
    if (auto refusal = database::check(new_count_form(), fields, {connection, "till_count"})) return *refusal;
    const bool is_group = *fields.what >= 0;
    const Scope scope = is_group                          ? Scope::group
                        : *fields.what == what_is_scanned ? Scope::scanned
                                                          : Scope::everything;
    std::int64_t number = 0;
    database::in_transaction(connection, [&] {
        number = database::next_number(connection, "select max(num) as last_ from till_count");
        Sql statement =
            Sql("insert into till_count (num,stcode,scope,itype,by_date,title,opened,opened_by) select ") +
            number + "," + *fields.store + "," + static_cast<int>(scope) + ",";
        statement += is_group ? Sql("") + *fields.what : Sql("null");
        connection.execute(statement + "," + (fields.by_date ? 1 : 0) + "," + quoted(fields.title) + "," +
                           quoted(clock.now()) + "," + session.user_code);
    });
    connection.make_durable();
    return number;
}

}  // namespace counting
