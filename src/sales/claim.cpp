#include "sales/claim.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <random>
#include <set>
#include <thread>

#include "database/till_tables.h"

namespace sales {

using database::Row;
using database::Sql;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

constexpr std::int64_t oldest_claim = 60;  // seconds

// How long a save waits for goods that another till claims, and how often it looks.
constexpr milliseconds patience(500);
constexpr milliseconds pause(25);

// More attempts than competing tills can use up.
constexpr int most_attempts = 100;

// Longer statements bring nothing, and SQLite takes 500 at most.
constexpr int rows_of_a_statement = 100;

constexpr std::string_view key_violated = "23000";

std::int64_t random_id() {
    std::random_device source;
    return std::uniform_int_distribution<std::int64_t>(1, 0x7fffffff)(source);
}

// A clock that was set back makes a claim one of the future.
bool is_fresh(const Row& claim) {
    return std::abs(claim.integer("age")) <= oldest_claim;
}

// The series of returns counts by store, the others across all of them.
std::int64_t store_of_series(const Invoice& invoice) {
    return series_of(invoice.kind, invoice.payment) == Series::returns ? invoice.store : 0;
}

Sql where_series(const Invoice& invoice) {
    return Sql(" where series = ") + static_cast<int>(series_of(invoice.kind, invoice.payment)) +
           " and stcode = " + store_of_series(invoice);
}

}  // namespace

Claims::Claims(database::Connection& connection) : connection_(connection), id_(random_id()) {}

// A till that may not create the tables works without them.
template <typename Action>
void Claims::unless_missing(const Action& action) {
    if (are_missing_) return;
    try {
        action();
    } catch (const database::Error& error) {
        if (error.sqlstate() != database::no_such_table) throw;
        are_missing_ = true;
    }
}

void Claims::forget_number(std::int64_t claim) {
    connection_.execute(Sql("delete from till_claim where claim = ") + claim);
}

void Claims::forget_goods(std::int64_t claim) {
    connection_.execute(Sql("delete from till_claim_goods where claim = ") + claim);
}

void Claims::write_goods(const Goods& goods) {
    auto next = goods.begin();
    while (next != goods.end()) {
        Sql statement("insert into till_claim_goods (claim, icode, stcode, quan, moment) ");
        for (int rows = 0; rows < rows_of_a_statement && next != goods.end(); ++rows, ++next) {
            if (rows > 0) statement += " union all ";
            statement = std::move(statement) + "select " + id_ + ", " + next->first.first + ", " +
                        next->first.second + ", " + next->second + ", getdate()";
        }
        has_goods_ = true;  // even if the answer is lost
        connection_.execute(statement);
    }
}

Claims::OthersGoods Claims::goods_of_others() {
    OthersGoods goods;
    std::set<std::int64_t> older;
    bool before_own = true;
    for (const Row& row : connection_.query(
             "select claim, icode, stcode, quan, datediff(second, moment, getdate()) as age from "
             "till_claim_goods order by moment, claim")) {
        const std::int64_t claim = row.integer("claim");
        if (claim == id_) {
            before_own = false;
            continue;
        }
        if (!is_fresh(row)) {
            forget_goods(claim);
            continue;
        }
        if (before_own) older.insert(claim);
        const std::pair place(row.integer("icode"), row.integer("stcode"));
        goods.all[place] += row.number("quan");
        if (older.contains(claim)) goods.older[place] += row.number("quan");
    }
    return goods;
}

std::optional<Shortage> Claims::claim_goods(const Invoice& invoice) {
    release();  // what a lost connection left of the last save
    are_missing_ = false;
    const Goods goods = goods_taken(invoice);
    if (goods.empty()) return std::nullopt;
    const auto deadline = steady_clock::now() + patience;
    while (true) {
        if (!has_goods_) unless_missing([&] { write_goods(goods); });
        // In this order: a claim disappears after its stock has moved, so what is no longer claimed is no
        // longer in stock.
        OthersGoods others;
        unless_missing([&] { others = goods_of_others(); });
        const Goods levels = stock_levels(connection_, goods);
        const Line* line = first_short_line(invoice, without(levels, others.all));
        if (line == nullptr) return std::nullopt;
        const Line* lacking = first_short_line(invoice, levels);
        const bool may_wait = lacking == nullptr && steady_clock::now() < deadline;
        // The older claim goes first, so a younger one makes way for it and lines up again.
        if (!may_wait || first_short_line(invoice, without(levels, others.older)) != nullptr) release();
        if (!may_wait) return Shortage{(lacking != nullptr ? lacking : line)->name, lacking == nullptr};
        std::this_thread::sleep_for(pause);
    }
}

std::int64_t Claims::highest_claimed(const Invoice& invoice) {
    std::int64_t highest = 0;
    for (const Row& row : connection_.query(
             Sql("select claim, pnum, datediff(second, moment, getdate()) as age from till_claim") +
             where_series(invoice))) {
        if (is_fresh(row))
            highest = std::max(highest, row.integer("pnum"));
        else
            forget_number(row.integer("claim"));
    }
    return highest;
}

// Returns false if another till claimed the number first.
bool Claims::write_number(const Invoice& invoice) {
    try {
        has_number_ = true;  // even if the answer is lost
        connection_.execute(Sql("insert into till_claim (series, stcode, pnum, claim, moment) select ") +
                            static_cast<int>(series_of(invoice.kind, invoice.payment)) + ", " +
                            store_of_series(invoice) + ", " + invoice.number + ", " + id_ + ", getdate()");
        return true;
    } catch (const database::Error& error) {
        if (error.sqlstate() != key_violated) throw;
        return false;
    }
}

void Claims::claim_number(Invoice& invoice) {
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        std::int64_t claimed = 0;
        bool is_ours = true;
        unless_missing([&] {
            if (has_number_) forget_number(id_);
            claimed = highest_claimed(invoice);
        });
        invoice.number = std::max(next_invoice_number(connection_, invoice), claimed + 1);
        unless_missing([&] { is_ours = write_number(invoice); });
        // Another till may have claimed, saved and released the number since it was read.
        if (is_ours && next_invoice_number(connection_, invoice) <= invoice.number) return;
    }
    throw database::Error(std::string(key_violated), "other tills claimed every number", "");
}

bool Claims::number_taken(const Invoice& invoice) {
    Sql statement = Sql("select pnum from sales where ") +
                    condition_of(series_of(invoice.kind, invoice.payment), invoice.store) +
                    " and pnum = " + invoice.number;
    if (has_number_ && !are_missing_) {
        statement = std::move(statement) + " union all select pnum from till_claim" + where_series(invoice) +
                    " and pnum = " + invoice.number + " and claim <> " + id_;
    }
    return !connection_.query(statement).empty();
}

void Claims::release() noexcept {
    try {
        if (has_number_ && !are_missing_) forget_number(id_);
        has_number_ = false;
        if (has_goods_ && !are_missing_) forget_goods(id_);
        has_goods_ = false;
    } catch (const std::exception&) {
        // The next save tries again; until then the claim grows old.
    }
}

}  // namespace sales
