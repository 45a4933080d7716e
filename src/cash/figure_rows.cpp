#include <map>

#include "cash/cash_sums.h"
#include "cash/figure_parts.h"
#include "cash/figures.h"
#include "common/numbers.h"

namespace cash {

namespace {

using database::Row;
using database::Sql;

constexpr int vendor_party = 1;  // vencuspay.ztype

// The names of parties, each read once.
class Parties {
  public:
    explicit Parties(database::Connection& connection) : connection_(connection) {}

    std::string of_invoice(const Row& row) {
        const std::int64_t customer = row.integer("vcode");
        return customer == -1 ? walk_in(row.integer("cust_c")) : account(customer);
    }
    std::string of_voucher(const Row& row) {
        const std::int64_t code = row.integer("vcode");
        if (row.integer("ztype") != vendor_party) return account(code);
        return read(1, code, Sql("select * from vendata where vcode = ") + code, "vname");
    }
    std::string of_bank(const Row& row) {
        const std::int64_t code = row.integer("bcode");
        return read(2, code, Sql("select * from bankdata where bcode = ") + code, "bname");
    }
    // The headings of an expense and its note.
    std::string of_expense(const Row& row) {
        const std::int64_t main = row.integer("mcode");
        const std::int64_t sub = row.integer("scode");
        std::string text = read(3, main, Sql("select * from mainx where code = ") + main, "name");
        const std::string below =
            read(4, main * 1000000 + sub,
                 Sql("select * from subx where mcode = ") + main + " and code = " + sub, "name");
        for (const std::string& more : {below, row.text("notes")}) {
            if (!more.empty()) text += (text.empty() ? "" : " - ") + more;
        }
        return text;
    }

  private:
    std::string walk_in(std::int64_t code) {
        if (code == 0) return "";
        return read(5, code, Sql("select * from cust_cash where zcode = ") + code, "zname");
    }
    std::string account(std::int64_t code) {
        return read(6, code, Sql("select * from custdata where ccode = ") + code, "cname");
    }
    const std::string& read(int list, std::int64_t code, const Sql& statement, std::string_view column) {
        const auto known = names_.find({list, code});
        if (known != names_.end()) return known->second;
        const auto rows = connection_.query(statement);
        return names_.emplace(std::pair{list, code}, rows.empty() ? "" : rows.front().text(column))
            .first->second;
    }

    database::Connection& connection_;
    std::map<std::pair<int, std::int64_t>, std::string> names_;
};

std::string moment_of_row(const Row& row, std::string_view date_column) {
    const std::string day = common::date_text(row.moment(date_column).date);
    return row.null("time_") ? day : day + " " + common::twelve_hour_text(row.moment("time_").time);
}

FigureRow described(const Row& row, Movement movement, Parties& parties) {
    switch (movement) {
        case Movement::vouchers:
            return {"", row.text("chkno"), moment_of_row(row, "date"), parties.of_voucher(row),
                    row.number("quan")};
        case Movement::to_bank:
        case Movement::from_bank:
            return {"", row.text("ser"), moment_of_row(row, "date"), parties.of_bank(row),
                    row.number("quan")};
        case Movement::transfers_out:
        case Movement::transfers_in:
            return {"", row.text("cnum"), moment_of_row(row, "cdate"), row.text("note1"),
                    common::round_decimals(row.number("caml"), 2)};
        case Movement::in_and_out:
            return {"", row.text("ser"), moment_of_row(row, "date"), row.text("note"), row.number("aml")};
        case Movement::expenses:
            return {"", "", moment_of_row(row, "expdate"), parties.of_expense(row), row.number("value")};
        case Movement::count_difference:
            return {"", "", moment_of_row(row, "date"), "", row.number("aml")};
        default: {
            const bool paid_out = movement == Movement::tips || movement == Movement::coupons;
            return {"", row.text("pnum"), moment_of_row(row, "date"), parties.of_invoice(row),
                    row.number(paid_out ? "disboun" : "ptot")};
        }
    }
}

// The two sums of one statement tell their rows apart by a code.
bool counts_in(const SummedFigure& figure, const Row& row) {
    if (figure.movement == Movement::vouchers) return row.integer("ptype") == (figure.column == "a1" ? 1 : 2);
    if (figure.movement == Movement::in_and_out) {
        return !row.null("type1") && row.integer("type1") == (figure.column == "Expr1" ? 0 : 1);
    }
    return true;
}

FigureRows rows_of_sum(database::Connection& connection, const Drawer& drawer, const common::Date& day,
                       const SummedFigure& figure, Parties& parties) {
    FigureRows found;
    double sum = 0;
    for (const Row& row :
         connection.query(rows_statement(statement_day, figure.movement, drawer, day_window(day)))) {
        if (!counts_in(figure, row)) continue;
        found.rows.push_back(described(row, figure.movement, parties));
        found.rows.back().kind = figure_headings[static_cast<std::size_t>(figure.figure)];
        sum += found.rows.back().amount;
    }
    found.sum = share_of_figure(figure.figure, common::round_decimals(sum, 2));
    if (found.sum == 0 && sum != 0) {
        // A surplus is no shortage: its rows belong to the other figure.
        if (figure.movement == Movement::count_difference) found.rows.clear();
    } else if (figure.figure == Figure::shortage) {
        for (FigureRow& row : found.rows)
            row.amount = -row.amount;
    }
    return found;
}

FigureRows rows_of_balance(database::Connection& connection, const Drawer& drawer, const common::Date& day) {
    FigureRows found;
    const auto sums = read_all_sums(connection, balance_brought_forward, drawer, start_of(day));
    for (const Sum& sum : sums) {
        if (sum.amount == 0) continue;
        found.rows.push_back({std::string(sum.reading->caption), "", "", "", sum.counted()});
    }
    found.sum = total_of(sums);
    return found;
}

FigureRows collect(database::Connection& connection, const Drawer& drawer, const common::Date& day,
                   Figure figure, Parties& parties) {
    if (figure == Figure::previous_balance) return rows_of_balance(connection, drawer, day);
    for (const SummedFigure& entry : summed_figures()) {
        if (entry.figure == figure) return rows_of_sum(connection, drawer, day, entry, parties);
    }
    FigureRows all;
    for (const MadeFigure& entry : made_figures()) {
        if (entry.figure != figure) continue;
        FigureRows part = collect(connection, drawer, day, entry.part, parties);
        for (FigureRow& row : part.rows) {
            row.amount *= entry.sign;
            all.rows.push_back(std::move(row));
        }
        all.sum = add_amounts(all.sum, entry.sign * part.sum);
    }
    return all;
}

}  // namespace

FigureRows rows_behind(database::Connection& connection, const Drawer& drawer, const common::Date& day,
                       Figure figure) {
    Parties parties(connection);
    return collect(connection, drawer, day, figure, parties);
}

}  // namespace cash
