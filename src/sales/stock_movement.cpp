#include "sales/stock_movement.h"

#include <algorithm>
#include <cmath>

#include "database/recordset.h"

namespace sales {

using common::Date;
using database::Connection;
using database::quoted;
using database::Recordset;
using database::Sql;

namespace {

// Another till changed the batch between reading and writing it.
constexpr const char* changed_meanwhile = "40001";
// Far more rounds than tills that could be in the way.
constexpr int most_rounds = 100;

// Sums of decimal quantities miss by some 1e-16; what is smaller than any piece or gram is nothing, else six
// tenths taken one by one would leave a batch of almost none behind.
double without_dust(double quantity) {
    constexpr double dust = 1e-9;
    return std::abs(quantity) < dust ? 0 : quantity;
}

// Runs `movement` until nobody was in the way; a second round goes on where the first was disturbed.
template <typename Movement>
void until_undisturbed(Movement movement) {
    for (int round = 1;; ++round) {
        try {
            movement();
            return;
        } catch (const database::Error& error) {
            if (error.sqlstate() != changed_meanwhile || round == most_rounds) throw;
        }
    }
}

// Adds to the batch of one expiry date (negative to take), making the batch when it is missing.
void move_batch(Connection& connection, std::int64_t item, int store, const Date& expiry, double quantity) {
    until_undisturbed([&] {
        Recordset batch(connection, Sql("select * from stk where icode = ") + item +
                                        " and stcode = " + store + " and edate = " + quoted(expiry));
        if (batch.at_end()) {
            batch.add();
            batch.set("icode", item);
            batch.set("stcode", store);
            batch.set("edate", expiry);
            batch.set("quan", quantity);
        } else {
            batch.set("quan", without_dust(batch.number("quan") + quantity));
        }
        batch.update();
    });
}

}  // namespace

void take_from_stock(Connection& connection, std::int64_t item, int store, double quantity) {
    double left = quantity;
    until_undisturbed([&] {
        Recordset batches(connection, Sql("select * from stk where icode = ") + item + " order by edate");
        for (; left > 0 && !batches.at_end(); batches.move_next()) {
            const double held = batches.number("quan");
            if (batches.integer("stcode") != store || held <= 0) continue;
            const double taken = std::min(held, left);
            batches.set("quan", without_dust(held - taken));
            batches.update();
            left = without_dust(left - taken);
        }
    });
    if (left > 0) move_batch(connection, item, store, common::no_expiry, -left);
}

void put_into_stock(Connection& connection, std::int64_t item, int store, double quantity,
                    const std::optional<Date>& expiry) {
    Date into = expiry.value_or(common::no_expiry);
    if (!expiry) {
        for (const auto& batch :
             connection.query(Sql("select * from stk where icode = ") + item + " order by edate desc")) {
            if (batch.integer("stcode") != store || batch.null("edate")) continue;
            into = batch.moment("edate").date;
            break;
        }
    }
    move_batch(connection, item, store, into, quantity);
}

std::map<std::int64_t, Date> oldest_batches(Connection& connection, const std::set<std::int64_t>& items,
                                            int store) {
    std::map<std::int64_t, Date> oldest;
    if (items.empty()) return oldest;
    Sql statement = Sql("select icode, min(edate) as edate from stk where stcode = ") + store +
                    " and quan > 0 and icode in (";
    bool first = true;
    for (const std::int64_t item : items) {
        if (!first) statement += ",";
        statement += item;
        first = false;
    }
    for (const auto& row : connection.query(statement + ") group by icode"))
        if (!row.null("edate")) oldest[row.integer("icode")] = row.moment("edate").date;
    return oldest;
}

}  // namespace sales
