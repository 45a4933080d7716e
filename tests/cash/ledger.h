// An independent ledger of a random shop's movements: plain rows in memory, summed by hand from the shop's
// table of signs, for comparison with what the program reads from the database.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "drawers.h"

namespace test {

struct Movement {
    enum Table { sales, vencuspay, btran, cach_t, in_out, dailyexp, mor_les } table = sales;
    std::int64_t store = 1, drawer = 1;
    std::int64_t to_store = 1, to_drawer = 1;  // cach_t
    int day = 0;                               // 0, 1, 2: 2026/11/20 and the days after
    int second = -1;                           // of the day; -1 a null time
    int ctype = 0, stype = 0, vcode = -1, safe = 0;
    int type = 1, kind = 1;  // vencuspay.type and ptype, btran.type1 and Type, in_out.type1
    long amount = 0;         // hundredths
    long paid_out = 0;       // disboun, hundredths
    bool null_amount = false;

    // Seconds since the first day's midnight; a null time is midnight.
    long moment() const { return day * 86400L + (second < 0 ? 0 : second); }
    long counted() const { return null_amount ? 0 : amount; }
};

class Ledger {
  public:
    std::vector<Movement> rows;
    long copen(std::int64_t store, std::int64_t drawer) const { return 1000L * store + 10L * drawer; }
    long salary(std::int64_t store, std::int64_t drawer) const { return 700L * store + 30L * drawer; }

    enum class Rule { store_wide, calc, previous };

    // The hundredths of cash in a drawer, of the movements that `counts` accepts by their moment.
    template <typename Counts>
    long cash(std::int64_t store, std::int64_t drawer, Rule rule, const Counts& counts) const {
        long total = rule == Rule::calc ? salary(store, drawer) : copen(store, drawer);
        for (const Movement& row : rows) {
            const bool mine = row.store == store && row.drawer == drawer;
            if (row.table == Movement::cach_t) {
                if (!counts(row)) continue;
                if (mine) total -= row.counted();
                if (row.to_store == store && row.to_drawer == drawer) total += row.counted();
                continue;
            }
            if (!mine || !counts(row)) continue;
            total += row.table == Movement::sales ? of_invoice(row, rule) : of_other(row);
        }
        return total;
    }

    static long of_invoice(const Movement& row, Rule rule) {
        if (row.vcode != -1) return 0;
        const bool sale = row.ctype == 0 || row.ctype == 1;
        long effect = 0;
        if (rule == Rule::store_wide) {
            // Sales but card, less tips, coupons and uncollected orders; returns but card; their coupons come
            // back.
            if (sale && row.stype != 1) effect += row.counted();
            if (!sale && row.stype != 1) effect -= row.counted();
            if (!sale && row.stype == 3) effect += row.paid_out;
        } else {
            if (sale) effect += row.counted();
            if (sale && row.stype == 1) effect -= row.counted();
            if (row.ctype == 1 || row.ctype == 2) effect -= row.counted();
        }
        if (sale && (row.stype == 2 || row.stype == 3)) effect -= row.paid_out;
        if (sale && row.stype == 4 && row.safe == 0) effect -= row.counted();
        return effect;
    }

    static long of_other(const Movement& row) {
        switch (row.table) {
            case Movement::vencuspay:
                if (row.type != 1) return 0;
                return row.kind == 2 ? row.counted() : -row.counted();
            case Movement::btran:
                if (row.type != 1) return 0;
                return row.kind == 1 ? -row.counted() : row.counted();
            case Movement::in_out:
                return row.type == 0 ? -row.counted() : row.counted();
            case Movement::dailyexp:
                return -row.counted();
            default:
                return row.counted();  // a shortage is negative
        }
    }
};

// A random day and the days around it: all kinds of movements on the three drawers, often at midnight, at the
// noon of the middle day, or without a time.
inline Ledger random_ledger(std::mt19937& random, int size) {
    const auto pick = [&random](int from, int to) {
        return std::uniform_int_distribution<int>(from, to)(random);
    };
    constexpr std::int64_t drawers[][2] = {{1, 1}, {1, 2}, {2, 1}};
    Ledger ledger;
    for (int i = 0; i < size; ++i) {
        Movement row;
        row.table = pick(0, 1) == 0 ? Movement::sales : static_cast<Movement::Table>(pick(1, 6));
        const int from = pick(0, 2);
        const int to = pick(0, 2);
        row.store = drawers[from][0];
        row.drawer = drawers[from][1];
        row.to_store = drawers[to][0];
        row.to_drawer = drawers[to][1];
        row.day = pick(0, 2);
        const int times[] = {-1, 0, 43200, 86399, pick(1, 86398), pick(1, 86398), 43199, 43201};
        row.second = times[pick(0, 7)];
        row.ctype = pick(0, 3);
        row.stype = pick(0, 4);
        row.vcode = pick(0, 3) == 0 ? 7 : -1;
        row.safe = pick(0, 1);
        row.type = row.table == Movement::vencuspay ? pick(0, 3) : pick(0, 1);
        row.kind = row.table == Movement::vencuspay ? pick(1, 2) : pick(0, 1);
        row.amount = pick(1, 50000);
        if (row.table == Movement::mor_les && pick(0, 1) == 0) row.amount = -row.amount;
        row.paid_out = pick(0, 3000);
        row.null_amount = pick(0, 14) == 0;
        ledger.rows.push_back(row);
    }
    return ledger;
}

inline std::string amount_text(long hundredths) {
    return common::format_amount(static_cast<double>(hundredths) / 100);
}

// Writes the ledger into the shop in place of all movements there.
inline void write(Drawers& drawers, const Ledger& ledger) {
    for (const char* table : {"sales", "vencuspay", "btran", "cach_t", "in_out", "dailyexp", "mor_les"})
        drawers.shop.sql("delete from " + std::string(table));
    for (const auto& [store, drawer] : {std::pair{1, 1}, std::pair{1, 2}, std::pair{2, 1}}) {
        drawers.shop.sql("update cash set copen = " + amount_text(ledger.copen(store, drawer)) +
                         ", salary1 = " + amount_text(ledger.salary(store, drawer)) + " where stcode = " +
                         std::to_string(store) + " and code = " + std::to_string(drawer));
    }
    int number = 0;
    for (const Movement& row : ledger.rows) {
        const std::string date = "'2026/11/" + std::to_string(20 + row.day) + "'";
        char clock[16];
        std::snprintf(clock, sizeof clock, "'%02d:%02d:%02d'", row.second / 3600 % 24, row.second / 60 % 60,
                      row.second % 60);
        const std::string time = row.second < 0 ? "null" : clock;
        const std::string amount = row.null_amount ? "null" : amount_text(row.amount);
        const std::string where = std::to_string(row.store) + "," + std::to_string(row.drawer);
        const std::string type = std::to_string(row.type);
        const std::string kind = std::to_string(row.kind);
        ++number;
        switch (row.table) {
            case Movement::sales:
                drawers.shop.sql(
                    "insert into sales (pnum,stcode,ptype,[date],time_,ctype,stype,vcode,ptot,disboun,safe) "
                    "select " +
                    std::to_string(number) + "," + where + "," + date + "," + time + "," +
                    std::to_string(row.ctype) + "," + std::to_string(row.stype) + "," +
                    std::to_string(row.vcode) + "," + amount + "," + amount_text(row.paid_out) + "," +
                    std::to_string(row.safe));
                break;
            case Movement::vencuspay:
                drawers.shop.sql(
                    "insert into vencuspay (chkno,stcode,cash_n,[date],time_,[type],ptype,ztype,vcode,quan) "
                    "select '" +
                    std::to_string(number) + "'," + where + "," + date + "," + time + "," + type + "," +
                    kind + ",2,7," + amount);
                break;
            case Movement::btran:
                drawers.shop.sql(
                    "insert into btran (ser,stcode,cash_n,[date],time_,type1,[type],quan) select " +
                    std::to_string(number) + "," + where + "," + date + "," + time + "," + type + "," + kind +
                    "," + amount);
                break;
            case Movement::cach_t:
                drawers.shop.sql(
                    "insert into cach_t (cnum,cfr,cash_nf,cto,cash_nt,cdate,time_,caml) select " +
                    std::to_string(number) + "," + where + "," + std::to_string(row.to_store) + "," +
                    std::to_string(row.to_drawer) + "," + date + "," + time + "," + amount);
                break;
            case Movement::in_out:
                drawers.shop.sql("insert into in_out (ser,stcode,cash_n,[date],time_,type1,aml) select " +
                                 std::to_string(number) + "," + where + "," + date + "," + time + "," + type +
                                 "," + amount);
                break;
            case Movement::dailyexp:
                drawers.shop.sql("insert into dailyexp (stcode,cash_n,expdate,time_,[value]) select " +
                                 where + "," + date + "," + time + "," + amount);
                break;
            case Movement::mor_les:
                drawers.shop.sql("insert into mor_les (stcode,ptype,[date],time_,aml) select " + where + "," +
                                 date + "," + time + "," + amount);
                break;
        }
    }
}

}  // namespace test
