#include "bench/by_hand_cash.h"

#include <fmt/format.h>

#include <cmath>

#include "database/embedded/moments.h"

namespace bench {

namespace {

using database::embedded::ticks_of;

double two_decimals(double amount) {
    return std::round(amount * 100) / 100;
}

// Conditions on the moment of a row, its date and time of day together. ?1 is the drawer, ?2 and ?3 are
// moments or days.
std::string moment_of(const std::string& date) {
    return date + " + ifnull(time_ % 86400000, 0)";
}
// Past days need no check of the time.
std::string before(const std::string& date) {
    return fmt::format("({} < ?2 - ?2 % 86400000 or {} < ?2)", date, moment_of(date));
}
std::string up_to(const std::string& date) {
    return fmt::format("({} < ?2 - ?2 % 86400000 or {} <= ?2)", date, moment_of(date));
}
// Of one day, after its midnight.
std::string of_day(const std::string& date) {
    return date + " = ?2 and ifnull(time_ % 86400000, 0) > 0";
}
std::string of_period(const std::string& date) {
    return fmt::format("{0} >= ?3 - ?3 % 86400000 and {1} > ?3 and {1} <= ?2", date, moment_of(date));
}

using When = std::string (*)(const std::string&);

std::string invoices(When when, const char* amount, const char* condition, const char* index = "") {
    return fmt::format("select sum({}) from sales {} where stcode = 1 and ptype = ?1 and {} and {}", amount,
                       index, condition, when("date"));
}
std::string vouchers(When when) {
    return "select sum(case when ptype = 2 then quan else 0 end), sum(case when ptype = 1 then quan else 0 "
           "end) "
           "from vencuspay where stcode = 1 and cash_n = ?1 and type = 1 and " +
           when("date");
}
std::string bank(When when, int type) {
    return fmt::format(
        "select sum(quan) from btran where stcode = 1 and cash_n = ?1 and type1 = 1 and type = {} and {}",
        type, when("date"));
}
std::string transfers(When when, const char* store, const char* drawer) {
    return fmt::format("select sum(round(caml, 2)) from cach_t where {} = 1 and {} = ?1 and {}", store,
                       drawer, when("cdate"));
}
std::string in_and_out(When when) {
    return "select sum(case when type1 = 1 then aml else 0 end), sum(case when type1 = 0 then aml else 0 "
           "end) from "
           "in_out where stcode = 1 and cash_n = ?1 and " +
           when("date");
}
std::string expenses(When when) {
    return "select sum(value) from dailyexp where stcode = 1 and cash_n = ?1 and " + when("expdate");
}
std::string counts(When when) {
    return "select sum(aml) from mor_les where stcode = 1 and ptype = ?1 and " + when("date");
}

// For account invoices of a day: without this SQLite reads all invoices of the drawer.
constexpr const char* by_day = "indexed by \"sales.sales_day\"";
constexpr const char* sold = "vcode = -1 and ctype in (0, 1)";
constexpr const char* sold_but_card = "vcode = -1 and ctype in (0, 1) and stype <> 1";
constexpr const char* by_card = "vcode = -1 and ctype in (0, 1) and stype = 1";
constexpr const char* with_tips = "vcode = -1 and ctype in (0, 1) and stype = 2";
constexpr const char* with_coupons = "vcode = -1 and ctype in (0, 1) and stype = 3";
constexpr const char* not_collected = "vcode = -1 and ctype in (0, 1) and stype = 4 and safe = 0";
constexpr const char* back = "vcode = -1 and ctype in (1, 2)";
constexpr const char* back_but_card = "vcode = -1 and ctype in (2, 3) and stype <> 1";
constexpr const char* card_back = "vcode = -1 and ctype in (2, 3) and stype = 1";
constexpr const char* discounted =
    "vcode = -1 and ctype in (0, 1) and stype not in (1, 2) and (stype <> 4 or ifnull(safe, 1) <> 0) and "
    "pdis <> 0";
constexpr const char* discounted_back = "vcode = -1 and ctype in (1, 2) and pdis <> 0";
constexpr const char* discounted_back_but_card =
    "vcode = -1 and ctype in (2, 3) and stype <> 1 and pdis <> 0";
constexpr const char* coupons_back = "vcode = -1 and ctype in (2, 3) and stype = 3";

}  // namespace

HandCash::HandCash(HandEngine& engine) {
    const auto add = [&](std::vector<Sum>& to, const std::string& text, int first, int second = 0) {
        to.push_back({engine.prepare(text), first, second});
    };
    // What the position and the balance brought forward have in common.
    const auto add_movements = [&](std::vector<Sum>& to, When when) {
        add(to, vouchers(when), 1, -1);
        add(to, bank(when, 1), -1);
        add(to, bank(when, 0), 1);
        add(to, transfers(when, "cfr", "cash_nf"), -1);
        add(to, transfers(when, "cto", "cash_nt"), 1);
        add(to, in_and_out(when), 1, -1);
        add(to, expenses(when), -1);
        add(to, counts(when), 1);
    };
    const std::string opening = "select sum(copen) from cash where stcode = 1 and code = ?1";
    add(position_, opening, 1);
    add(position_, invoices(before, "ptot", sold_but_card), 1);
    add(position_, invoices(before, "disboun", with_tips), -1);
    add(position_, invoices(before, "disboun", with_coupons), -1);
    add(position_, invoices(before, "ptot", not_collected), -1);
    add(position_, invoices(before, "ptot", back_but_card), -1);
    add(position_, invoices(before, "disboun", coupons_back), 1);
    add(position_, invoices(before, "pdis", discounted), -1);
    add(position_, invoices(before, "pdis", discounted_back_but_card), 1);
    add_movements(position_, before);

    add(period_, invoices(of_period, "ptot", by_card), 1);
    add(period_, invoices(of_period, "ptot", card_back), -1);
    add(period_, invoices(of_period, "ptot", not_collected), 1);

    add(carried_, opening, 1);
    add(carried_, invoices(up_to, "ptot", sold), 1);
    add(carried_, invoices(up_to, "ptot", by_card), -1);
    add(carried_, invoices(up_to, "disboun", with_tips), -1);
    add(carried_, invoices(up_to, "disboun", with_coupons), -1);
    add(carried_, invoices(up_to, "ptot", not_collected), -1);
    add(carried_, invoices(up_to, "ptot", back), -1);
    add(carried_, invoices(up_to, "pdis", discounted), -1);
    add(carried_, invoices(up_to, "pdis", discounted_back), 1);
    add_movements(carried_, up_to);

    add(day_, invoices(of_day, "ptot", "vcode <> -1 and ctype in (0, 1)", by_day), 1);
    add(day_, invoices(of_day, "ptot", "vcode <> -1 and ctype in (1, 2)", by_day), 1);
    add(day_, invoices(of_day, "ptot", sold), 1);
    add(day_, invoices(of_day, "ptot", by_card), 1);
    add(day_, invoices(of_day, "disboun", with_tips), 1);
    add(day_, invoices(of_day, "disboun", with_coupons), 1);
    add(day_, invoices(of_day, "ptot", not_collected), 1);
    add(day_, invoices(of_day, "ptot", back), 1);
    add(day_, invoices(of_day, "pdis", discounted), 1);
    add(day_, invoices(of_day, "pdis", discounted_back), 1);
    add(day_, counts(of_day), 1);
    add(day_, vouchers(of_day), 1, 1);
    add(day_, transfers(of_day, "cto", "cash_nt"), 1);
    add(day_, bank(of_day, 0), 1);
    add(day_, in_and_out(of_day), 1, 1);
    add(day_, transfers(of_day, "cfr", "cash_nf"), 1);
    add(day_, bank(of_day, 1), 1);
    add(day_, expenses(of_day), 1);

    const auto whole_day = [](const std::string& date) { return date + " = ?2"; };
    const auto summed = [&](const char* amount, const char* condition, const char* index = "") {
        summary_.push_back(engine.prepare(invoices(whole_day, amount, condition, index)));
    };
    summary_.push_back(
        engine.prepare("select count(pnum) from sales where stcode = 1 and ptype = ?1 and date = ?2"));
    summed("ptot", "vcode = -1 and ctype = 0 and stype in (0, 2)");
    summed("ptot", "vcode <> -1 and ctype in (0, 1)", by_day);
    summed("ptot", "vcode = -1 and ctype = 0 and stype = 1");
    summary_.push_back(
        engine.prepare("select sum(aml) from mor_les where stcode = 1 and ptype = ?1 and date = ?2"));
    summed("disboun", "vcode = -1 and ctype = 0 and stype = 2");
    summed("ptot), sum(disboun", "vcode = -1 and ctype in (2, 3)");
    summed("ptot", "vcode <> -1 and ctype in (2, 3)", by_day);
    summed("pdis", "vcode = -1 and ctype = 0 and stype = 0 and pdis <> 0");
    summed("pdis", "vcode = -1 and ctype in (2, 3) and pdis <> 0");

    for (const auto& [table, store, drawer, date, more] :
         std::vector<std::array<const char*, 5>>{{"sales", "stcode", "ptype", "date", ""},
                                                 {"vencuspay", "stcode", "cash_n", "date", " and t.type = 1"},
                                                 {"btran", "stcode", "cash_n", "date", " and t.type1 = 1"},
                                                 {"in_out", "stcode", "cash_n", "date", ""},
                                                 {"dailyexp", "stcode", "cash_n", "expdate", ""},
                                                 {"mor_les", "stcode", "ptype", "date", ""},
                                                 {"cach_t", "cfr", "cash_nf", "cdate", ""},
                                                 {"cach_t", "cto", "cash_nt", "cdate", ""}})
        strays_.push_back(
            engine.prepare(fmt::format("select count(*) from {0} t left join cash on t.{1} = cash.stcode and "
                                       "t.{2} = cash.code where t.{1} = 1 "
                                       "and t.{3} = ?1{4} and cash.code is null",
                                       table, store, drawer, date, more)));

    stores_ = engine.prepare("select code, name from stocks");
    drawers_ = engine.prepare("select code, name from cash where stcode = 1");
    journal_ = engine.prepare(
        "select s.pnum, s.ptot, s.time_, s.note, s.vcode, s.ctype, s.stype, s.pdis, s.inv_type, s.shift, "
        "s.teln, "
        "u.name, w.work_name, c.cname, v.vname, b.cname, l.cname from sales s left join users u on s.user = "
        "u.code "
        "left join worker w on s.wcode = w.work_code left join custdata c on s.vcode = c.ccode "
        "left join vendata v on s.vcode = v.vcode left join boundata b on s.link = b.ccode "
        "left join link l on s.link = l.ccode where s.stcode = 1 and s.date = ?1 order by s.pnum");
}

std::vector<std::int64_t> HandCash::drawers() {
    std::vector<std::int64_t> codes;
    for (HandRun row(drawers_); row.row(); row.next())
        codes.push_back(row.whole(0));
    return codes;
}

std::vector<HandCash::Position> HandCash::positions(const common::Moment& start,
                                                    const common::Moment& until) {
    std::vector<Position> positions;
    for (const std::int64_t drawer : drawers()) {
        Position at;
        for (const Sum& sum : position_) {
            const HandRun row(sum.statement, drawer, ticks_of(until));
            at.position = two_decimals(at.position + sum.first * two_decimals(row.number(0)) +
                                       (sum.second == 0 ? 0 : sum.second * two_decimals(row.number(1))));
        }
        const auto figure = [&](std::size_t i) {
            return two_decimals(
                HandRun(period_[i].statement, drawer, ticks_of(until), ticks_of(start)).number(0));
        };
        at.card_sales = figure(0) - figure(1);
        at.uncollected = figure(2);
        positions.push_back(at);
    }
    return positions;
}

HandCash::Statement HandCash::statement(const common::Date& day) {
    Statement made;
    const std::int64_t midnight = ticks_of({day, {}});
    for (HandRun store(stores_); store.row(); store.next()) {
        if (store.whole(0) != 1) continue;
        for (const std::int64_t drawer : drawers()) {
            std::size_t at = 0;
            const auto count = [&](double amount) {
                if (at == made.sums.size()) made.sums.push_back(0);
                made.sums[at] = two_decimals(made.sums[at] + two_decimals(amount));
                ++at;
            };
            for (const Sum& sum : day_) {
                const HandRun row(sum.statement, drawer, midnight);
                count(row.number(0));
                if (sum.second != 0) count(row.number(1));
            }
            for (const Sum& sum : carried_) {
                const HandRun row(sum.statement, drawer, midnight);
                made.brought_forward =
                    two_decimals(made.brought_forward + sum.first * two_decimals(row.number(0)) +
                                 (sum.second == 0 ? 0 : sum.second * two_decimals(row.number(1))));
            }
            for (std::size_t i = 0; i < summary_.size(); ++i)
                made.summary[i] += two_decimals(HandRun(summary_[i], drawer, midnight).number(0));
        }
    }
    made.journal = journal(day);
    for (sqlite3_stmt* stray : strays_)
        made.strays += HandRun(stray, midnight).whole(0);
    return made;
}

std::vector<HandCash::JournalLine> HandCash::journal(const common::Date& day) {
    std::vector<JournalLine> lines;
    const std::string date = fmt::format("{:04}/{:02}/{:02}", day.year, day.month, day.day);
    for (HandRun row(journal_, ticks_of({day, {}})); row.row(); row.next()) {
        JournalLine line;
        line.number = row.whole(0);
        line.value = row.number(1);
        if (!row.null(2)) {
            const std::int64_t minute = row.whole(2) % 86'400'000 / 60'000;
            const std::int64_t hour = minute / 60 % 12 == 0 ? 12 : minute / 60 % 12;
            line.time = fmt::format("{:02}:{:02} {}", hour, minute % 60, minute < 720 ? "AM" : "PM");
        }
        line.date = date;
        line.note = row.text(3);
        line.customer = row.whole(4);
        line.ctype = row.whole(5);
        line.stype = row.whole(6);
        line.kind =
            std::string(line.ctype < 2 ? "مبيعات" : "مرتجعات") + (line.customer == -1 ? " نقدية" : " آجلة");
        line.discount = row.number(7);
        line.inv_type = row.whole(8);
        line.shift = row.whole(9);
        line.telephone = row.text(10);
        line.user = row.text(11);
        line.salesman = row.text(12);
        line.link = row.text(line.stype == 2 ? 15 : 16);
        line.party = row.text(13);
        if (line.party.empty()) line.party = row.text(14);
        if (line.party.empty() && line.stype == 2) line.party = line.link;
        lines.push_back(std::move(line));
    }
    return lines;
}

}  // namespace bench
