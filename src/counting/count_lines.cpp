#include "counting/count_lines.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/typed.h"
#include "counting/messages.h"
#include "database/next_number.h"
#include "database/transaction.h"
#include "sales/items.h"
#include "sales/line_editing.h"

namespace counting {

using common::Refusal;
using database::Connection;
using database::quoted;
using database::Sql;

namespace {

// A quantity that was counted may be 0: then there is nothing left.
std::optional<Refusal> read_quantity(const Counted& counted, double& quantity) {
    const auto typed = common::read_number(counted.quantity, message::wrong_quantity);
    if (!typed.is_good()) return Refusal("count_quantity", typed.refusal);
    if (typed.value > sales::largest_quantity) return Refusal("count_quantity", message::quantity_too_large);
    quantity = common::round_decimals(typed.value, 3);
    return std::nullopt;
}

std::optional<Refusal> refusal_of(const Count& count, const std::optional<sales::Item>& item) {
    if (!item) return Refusal("count_item", message::no_such_item);
    if (item->sale_only) return Refusal("count_item", message::is_service);
    if (item->factor <= 0) return Refusal("count_item", message::no_unit);
    if (count.scope == Scope::group && item->type != count.group)
        return Refusal("count_item", message::other_group);
    return std::nullopt;
}

// Another open count of the store that contains the item. If both were booked, they would correct the stock
// by the same difference twice.
std::optional<std::int64_t> other_count(Connection& connection, const Count& count, std::int64_t item) {
    const auto rows = connection.query(
        Sql("select top 1 till_count.num from till_count_line inner join till_count on till_count_line.cnum "
            "= "
            "till_count.num where till_count_line.icode = ") +
        item + " and till_count_line.removed is null and till_count.closed is null and till_count.stcode = " +
        count.store + " and till_count.num <> " + count.number);
    if (rows.empty()) return std::nullopt;
    return rows.front().integer("num");
}

struct NewLine {
    std::int64_t number = 0;
    std::optional<common::Date> expiry;
    double quantity = 0;  // base units
    LineKind kind = LineKind::adds;
};

// Writes the line with the stock at that moment, unless the count has been closed.
bool write_line(Connection& connection, const signin::Session& session, const common::Moment& moment,
                const Count& count, const Counted& counted, const NewLine& line) {
    Sql stock = Sql("isnull((select sum(quan) from stk where icode = ") + counted.item +
                " and stcode = " + count.store;
    if (line.expiry) stock += Sql(" and isnull(edate,'3000/01/01') = ") + quoted(*line.expiry);
    const Sql expiry = line.expiry ? Sql("") + quoted(*line.expiry) : Sql("null");
    return connection.execute(
               Sql("insert into till_count_line "
                   "(cnum,num,icode,edate,quan,scode,stock,cost,kind,moment,user_code,computer) select ") +
               count.number + "," + line.number + "," + counted.item + "," + expiry + "," + line.quantity +
               "," + counted.unit_level + "," + stock + "),0),isnull(items.price11,0)," +
               static_cast<int>(line.kind) + "," + quoted(moment) + "," + session.user_code + "," +
               quoted(session.computer_name) +
               " from till_count inner join items on items.code = " + counted.item +
               " where till_count.num = " + count.number + " and till_count.closed is null") > 0;
}

}  // namespace

std::string_view name_of(LineKind kind) {
    switch (kind) {
        case LineKind::adds:
            return "عد";  // counted
        case LineKind::replaces:
            return "إعادة عد";  // counted again
        case LineKind::missing:
            return "لم يعد";  // not counted
    }
    return "";
}

std::optional<Refusal> add_line(Connection& connection, const signin::Session& session, common::Clock& clock,
                                const Count& count, const Counted& counted) {
    double quantity = 0;
    if (auto refusal = read_quantity(counted, quantity)) return refusal;
    const auto item = sales::load_item(connection, counted.item, counted.unit_level);
    if (auto refusal = refusal_of(count, item)) return refusal;
    if (quantity * item->factor > sales::largest_quantity)
        return Refusal("count_quantity", message::quantity_too_large);

    std::optional<Refusal> refusal;
    database::in_transaction(connection, [&] {
        refusal.reset();
        NewLine line;
        line.number = database::next_number(
            connection, Sql("select max(num) as last_ from till_count_line where cnum = ") + count.number);
        if (const auto other = other_count(connection, count, counted.item)) {
            refusal.emplace("count_item", std::string(message::counted_elsewhere) + std::to_string(*other));
            return;
        }
        if (count.by_date) line.expiry = counted.expiry.value_or(common::no_expiry);
        line.quantity = quantity * item->factor;
        line.kind = counted.replaces ? LineKind::replaces : LineKind::adds;
        if (!write_line(connection, session, clock.now(), count, counted, line))
            refusal.emplace("", message::count_closed);
    });
    connection.make_durable();
    return refusal;
}

std::optional<Refusal> remove_line(Connection& connection, const signin::Session& session, const Count& count,
                                   std::int64_t line) {
    std::int64_t changed = 0;
    database::in_transaction(connection, [&] {
        database::hold_numbers(connection);  // so that the count is not booked meanwhile
        changed = connection.execute(
            Sql("update till_count_line set removed = ") + session.user_code +
            " where cnum = " + count.number + " and num = " + line +
            " and removed is null and exists (select num from till_count where num = " + count.number +
            " and closed is null)");
    });
    connection.make_durable();
    if (changed == 0) return Refusal("", message::count_closed);
    return std::nullopt;
}

std::vector<CountLine> read_lines(Connection& connection, const Count& count, std::optional<int> last) {
    Sql statement = last ? Sql("select top ") + *last + " " : Sql("select ");
    statement += Sql("l.*, items.[name], items.num2, items.num3, users.[name] as user_name from "
                     "till_count_line l left join items on l.icode = items.code left join users on "
                     "l.user_code = users.code where l.cnum = ") +
                 count.number + " order by l.num" +
                 (last ? database::Fragment(" desc") : database::Fragment(""));
    std::vector<CountLine> lines;
    for (const auto& row : connection.query(statement)) {
        CountLine line;
        line.number = row.integer("num");
        line.item = row.integer("icode");
        line.name = row.text("name");
        if (count.by_date) line.expiry = row.moment("edate").date;
        line.quantity = row.number("quan");
        line.unit_level = sales::unit_level_of(row.integer("scode"));
        if (line.unit_level > 1) line.factor = row.number(line.unit_level == 2 ? "num2" : "num3");
        line.stock = row.number("stock");
        line.cost = row.number("cost");
        line.kind = static_cast<LineKind>(row.integer("kind"));
        line.moment = row.moment("moment");
        line.user = row.text("user_name");
        line.computer = row.text("computer");
        line.is_removed = !row.null("removed");
        lines.push_back(std::move(line));
    }
    if (last) std::ranges::reverse(lines);
    return lines;
}

}  // namespace counting
