#include "cash/figures.h"

#include "cash/parties.h"
#include "database/till_settings.h"

namespace cash {

using common::Amount;
using database::Fragment;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

// A figure that is the sum of a movement.
struct SummedFigure {
    Figure figure;
    Movement movement;
};
constexpr SummedFigure summed_figures[] = {
    {Figure::account_sales, Movement::account_sales},
    {Figure::account_returns, Movement::account_returns},
    {Figure::cash_sales, Movement::sales},
    {Figure::card_sales, Movement::card_sales},
    {Figure::tips, Movement::tips},
    {Figure::coupons, Movement::coupons},
    {Figure::uncollected, Movement::uncollected},
    {Figure::cash_returns, Movement::returns},
    {Figure::surplus, Movement::count_difference},
    {Figure::receipts, Movement::receipts},
    {Figure::transfers_in, Movement::transfers_in},
    {Figure::from_bank, Movement::from_bank},
    {Figure::deposits, Movement::deposits},
    {Figure::payments, Movement::payments},
    {Figure::transfers_out, Movement::transfers_out},
    {Figure::to_bank, Movement::to_bank},
    {Figure::expenses, Movement::expenses},
    {Figure::withdrawals, Movement::withdrawals},
    {Figure::shortage, Movement::count_difference},
    {Figure::discounts, Movement::discounts},
    {Figure::returned_discounts, Movement::returned_discounts},
};

// The headings of figures that are not a movement's sum, or only a part of it.
struct OwnHeading {
    Figure figure;
    std::string_view text;
};
constexpr OwnHeading own_headings[] = {
    {Figure::surplus, "زيادة جردية"},
    {Figure::net_cash, "صافي نقــــدي"},
    {Figure::total_deposits, "اجمال ايداعات"},
    {Figure::shortage, "عجز جـــــردي"},
    {Figure::total_outgoings, "اجمالي مصروفات"},
    {Figure::net, "الصـــــافي"},
    {Figure::previous_balance, "رصيد سابق"},
    {Figure::current_balance, "رصيد حــالي"},
};

std::array<std::string_view, figure_count> all_headings() {
    std::array<std::string_view, figure_count> headings{};
    for (const SummedFigure& entry : summed_figures)
        headings[static_cast<std::size_t>(entry.figure)] = term(entry.movement).caption;
    for (const OwnHeading& entry : own_headings)
        headings[static_cast<std::size_t>(entry.figure)] = entry.text;
    return headings;
}

// A figure that is made from others. A figure comes before those that contain it.
struct MadeFigure {
    Figure figure;
    Figure part;
    int sign;
};
constexpr MadeFigure made_figures[] = {
    {Figure::net_cash, Figure::cash_sales, +1},
    {Figure::net_cash, Figure::card_sales, -1},
    {Figure::net_cash, Figure::tips, -1},
    {Figure::net_cash, Figure::coupons, -1},
    {Figure::net_cash, Figure::uncollected, -1},
    {Figure::net_cash, Figure::cash_returns, -1},
    {Figure::net_cash, Figure::surplus, +1},
    {Figure::net_cash, Figure::discounts, -1},
    {Figure::net_cash, Figure::returned_discounts, +1},
    {Figure::total_deposits, Figure::net_cash, +1},
    {Figure::total_deposits, Figure::receipts, +1},
    {Figure::total_deposits, Figure::transfers_in, +1},
    {Figure::total_deposits, Figure::from_bank, +1},
    {Figure::total_deposits, Figure::deposits, +1},
    {Figure::total_outgoings, Figure::payments, +1},
    {Figure::total_outgoings, Figure::transfers_out, +1},
    {Figure::total_outgoings, Figure::to_bank, +1},
    {Figure::total_outgoings, Figure::expenses, +1},
    {Figure::total_outgoings, Figure::withdrawals, +1},
    {Figure::total_outgoings, Figure::shortage, +1},
    {Figure::net, Figure::total_deposits, +1},
    {Figure::net, Figure::total_outgoings, -1},
    {Figure::current_balance, Figure::previous_balance, +1},
    {Figure::current_balance, Figure::net, +1},
};

// The part of a sum that a figure shows. The count difference is shown as a surplus if it is above zero and
// as a shortage, without its sign, if it is below; every other sum is shown whole.
Amount share_of_figure(Figure figure, Amount amount) {
    if (figure == Figure::surplus) return amount > Amount() ? amount : Amount();
    if (figure == Figure::shortage) return amount < Amount() ? -amount : Amount();
    return amount;
}

// The window of a day's sums, and that of the balance before it.
struct DayWindows {
    Window day;
    Window before;
};
DayWindows windows_of(database::Connection& connection, const common::Date& day) {
    const auto net_from = database::net_from(connection);
    const common::Moment start{day, {}};
    return {{common::moment_text(start), common::moment_text({day, {23, 59, 59, 0}}), net_from},
            until(start, net_from)};
}

void add_part(Amount& figure, Amount part, int sign) {
    figure += sign < 0 ? -part : part;
}

std::string_view heading(Figure figure) {
    return figure_headings[static_cast<std::size_t>(figure)];
}

// The columns of a movement's rows that a line shows.
struct Listing {
    std::string_view number;  // column; "" if such rows have no number
    std::string_view date;    // column
    std::string (Parties::*party)(const Row&);
};
Listing listing_of(Movement movement) {
    switch (movement) {
        case Movement::receipts:
        case Movement::payments:
            return {"chkno", "date", &Parties::of_voucher};
        case Movement::to_bank:
        case Movement::from_bank:
            return {"ser", "date", &Parties::of_bank};
        case Movement::transfers_out:
        case Movement::transfers_in:
            return {"cnum", "cdate", &Parties::of_transfer};
        case Movement::withdrawals:
        case Movement::deposits:
            return {"ser", "date", &Parties::of_in_and_out};
        case Movement::expenses:
            return {"", "expdate", &Parties::of_expense};
        case Movement::count_difference:
            return {"", "date", nullptr};
        default:
            return {"pnum", "date", &Parties::of_invoice};
    }
}

std::string moment_of_row(const Row& row, std::string_view date_column) {
    const std::string day = common::date_text(row.moment(date_column).date);
    return row.null("time_") ? day : day + " " + common::twelve_hour_text(row.moment("time_").time);
}

// Reads the rows that make the figures of one drawer's day.
class RowsBehind {
  public:
    RowsBehind(database::Connection& connection, const Drawer& drawer, DayWindows windows)
        : connection_(connection), drawer_(drawer), windows_(std::move(windows)), parties_(connection) {}

    FigureRows of(Figure figure) {
        if (figure == Figure::previous_balance) return of_previous_balance();
        for (const SummedFigure& entry : summed_figures) {
            if (entry.figure == figure) return of_sum(figure, term(entry.movement));
        }
        FigureRows all;
        for (const MadeFigure& entry : made_figures) {
            if (entry.figure != figure) continue;
            FigureRows part = of(entry.part);
            for (FigureRow& row : part.rows) {
                row.amount *= entry.sign;
                all.rows.push_back(std::move(row));
            }
            add_part(all.sum, part.sum, entry.sign);
        }
        return all;
    }

  private:
    FigureRows of_sum(Figure figure, const Term& summed) {
        const Listing listing = listing_of(summed.movement);
        FigureRows found;
        if (!is_summed(statement_day, summed.movement, windows_.day)) return found;
        double sum = 0;
        const auto rows =
            connection_.query(rows_statement(statement_day, summed.movement, drawer_, windows_.day));
        if (listing.party == &Parties::of_invoice) parties_.read_walk_ins(rows);
        for (const Row& row : rows) {
            // If a statement has two sums, each row counts in only one of them.
            if (!summed.code.empty() &&
                (row.null(summed.code) || row.integer(summed.code) != summed.code_value))
                continue;
            FigureRow line;
            line.kind = heading(figure);
            if (!listing.number.empty()) line.number = row.text(listing.number);
            line.moment = moment_of_row(row, listing.date);
            if (listing.party != nullptr) line.party = (parties_.*listing.party)(row);
            line.amount = row.number(summed.amount);
            if (listing.party == &Parties::of_invoice) {
                line.discount = row.number("pdis");
                line.by_card = summed.movement == Movement::card_sales || row.integer("stype") == 1;
            }
            sum += line.amount;
            found.rows.push_back(std::move(line));
        }
        found.sum = share_of_figure(figure, Amount(sum));
        if (found.sum.is_zero() && sum != 0) {
            // The rows of a surplus do not belong to the shortage, nor the other way round.
            if (summed.movement == Movement::count_difference) found.rows.clear();
        } else if (figure == Figure::shortage) {
            for (FigureRow& row : found.rows)
                row.amount = -row.amount;
        }
        return found;
    }

    FigureRows of_previous_balance() {
        FigureRows found;
        const auto sums = read_sums(connection_, balance_brought_forward, drawer_, windows_.before);
        for (const Sum& sum : sums) {
            if (sum.amount.is_zero()) continue;
            found.rows.push_back({std::string(sum.term->caption), "", "", "", sum.counted().value()});
        }
        found.sum = total_of(sums);
        return found;
    }

    database::Connection& connection_;
    Drawer drawer_;
    DayWindows windows_;
    Parties parties_;
};

}  // namespace

const std::array<std::string_view, figure_count> figure_headings = all_headings();

Figures& Figures::operator+=(const Figures& other) {
    for (std::size_t i = 0; i < figure_count; ++i)
        values[i] += other.values[i];
    return *this;
}

Figures compute_figures(database::Connection& connection, const Drawer& drawer, const common::Date& day) {
    Figures figures;
    const DayWindows windows = windows_of(connection, day);
    for (const Sum& sum : read_sums(connection, statement_day, drawer, windows.day)) {
        for (const SummedFigure& entry : summed_figures) {
            if (entry.movement == sum.term->movement)
                figures[entry.figure] = share_of_figure(entry.figure, sum.amount);
        }
    }
    figures[Figure::previous_balance] =
        total_of(read_sums(connection, balance_brought_forward, drawer, windows.before));
    for (const MadeFigure& entry : made_figures)
        add_part(figures[entry.figure], figures[entry.part], entry.sign);
    return figures;
}

FigureRows rows_behind(database::Connection& connection, const Drawer& drawer, const common::Date& day,
                       Figure figure) {
    return RowsBehind(connection, drawer, windows_of(connection, day)).of(figure);
}

FigureRows rows_between(database::Connection& connection, const Drawer& drawer, const common::Moment& from,
                        const common::Moment& until_moment, Figure figure) {
    const auto net_from = database::net_from(connection);
    DayWindows windows{{common::moment_text(from), common::moment_text(until_moment), net_from},
                       until(from, net_from)};
    return RowsBehind(connection, drawer, std::move(windows)).of(figure);
}

// The number of invoices and the sum of all sales have names of their own.
const std::array<std::string_view, summary_count> summary_headings{"عدد البونات",
                                                                   "إجمالي المبيعات",
                                                                   heading(Figure::account_sales),
                                                                   heading(Figure::card_sales),
                                                                   heading(Figure::cash_sales),
                                                                   heading(Figure::account_returns),
                                                                   heading(Figure::cash_returns),
                                                                   heading(Figure::tips),
                                                                   heading(Figure::surplus),
                                                                   heading(Figure::shortage),
                                                                   heading(Figure::net_cash),
                                                                   heading(Figure::discounts),
                                                                   heading(Figure::returned_discounts)};

DaySummary& DaySummary::operator+=(const DaySummary& other) {
    invoices += other.invoices;
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i] += other.columns[i];
    return *this;
}

std::array<std::string, summary_count> DaySummary::cells() const {
    std::array<std::string, summary_count> texts;
    texts[0] = std::to_string(invoices);
    for (std::size_t i = 1; i < columns.size(); ++i)
        texts[i] = columns[i].text();
    return texts;
}

DaySummary compute_summary(database::Connection& connection, const Drawer& drawer, const common::Date& day) {
    // Every query compares the date alone and ignores the time.
    const Sql of_day = Sql("") + drawer.code + " and date =" + quoted(day) + " and stcode = " + drawer.store;
    const auto read = [&](const Sql& statement) {
        return Amount(database::number_of(connection.scalar(statement)));
    };
    const auto invoices_sum = [&](Fragment condition) {
        return read(Sql("select sum(ptot) as xs from sales where ptype = ") + of_day + condition);
    };
    const auto discounts_sum = [&](Fragment condition) {
        return read(Sql("select sum(pdis) as xs from sales where ptype = ") + of_day + condition);
    };

    DaySummary summary;
    summary.invoices = database::integer_of(
        connection.scalar(Sql("select count(pnum) as xc from sales where ptype = ") + of_day));
    auto& column = summary.columns;
    column[4] = invoices_sum(" and ctype = 0 and vcode = -1 and (stype = 0 Or stype = 2)");
    column[2] = invoices_sum(" and (ctype = 0 Or ctype = 1) and vcode <> -1 ");
    column[3] = invoices_sum(" and ctype = 0 and vcode = -1 and stype = 1 ");
    column[1] = column[2] + column[3] + column[4];
    const Amount counted = read(Sql("select sum(aml) as xs from mor_les where ptype = ") + of_day);
    if (counted > Amount()) column[8] = counted;
    if (counted < Amount()) column[9] = -counted;
    column[7] = read(Sql("select sum(disboun) as xs from sales where ptype = ") + of_day +
                     " and ctype = 0 and vcode = -1 and stype = 2 ");
    const auto returns =
        connection.query(Sql("select sum(ptot) as xs ,sum(disboun) as xy from sales where ptype = ") +
                         of_day + " and (ctype = 2 Or ctype = 3) and vcode = -1");
    if (!returns.empty())
        column[6] = Amount(returns.front().number("xs")) + Amount(returns.front().number("xy"));
    column[5] = invoices_sum(" and (ctype = 2 Or ctype = 3) and vcode <> -1");
    const auto net_from = database::net_from(connection);
    if (net_from && day >= *net_from) {
        // Of the invoices in columns 4 and 6; a tips sale's discount is in column 7.
        column[11] = discounts_sum(" and ctype = 0 and vcode = -1 and stype = 0 and pdis <> 0");
        column[12] = discounts_sum(" and (ctype = 2 Or ctype = 3) and vcode = -1 and pdis <> 0");
    }
    column[10] = column[4] - column[6] - column[7] + column[8] - column[9] - column[11] + column[12];
    return summary;
}

}  // namespace cash
