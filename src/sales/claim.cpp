#include "sales/claim.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <locale>
#include <sstream>
#include <thread>

#include "common/random.h"
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

constexpr std::int64_t highest_claim = 0x7fffffff;  // that its column holds

// After a clock was set back, a claim may lie in the future.
bool is_fresh(const Row& claim) {
    return std::abs(claim.integer("age")) <= oldest_claim;
}

// The series of returns counts by store, the others across all of them.
std::int64_t store_of_series(const Invoice& invoice) {
    return series_of(invoice.kind, invoice.payment) == Series::returns ? invoice.store : 0;
}

int number_of_series(const Invoice& invoice) {
    return static_cast<int>(series_of(invoice.kind, invoice.payment));
}

// Quantities of items by store as a text: "item store quantity;" for each.
std::string text_of(const Goods& goods) {
    std::string text;
    for (const auto& [place, quantity] : goods)
        text += fmt::format("{} {} {};", place.first, place.second, quantity);
    return text;
}

void add(Goods& goods, const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    std::int64_t item = 0;
    std::int64_t store = 0;
    char end = 0;
    for (double quantity = 0; in >> item >> store >> quantity >> end;)
        goods[{item, store}] += quantity;
}

constexpr database::Fragment all_claims =
    "select series, stcode, pnum, claim, goods, datediff(second, moment, getdate()) as age from till_claim "
    "order by moment, claim";

}  // namespace

// Runs commands in one round trip. A till that may not create the table works without it; `commands` is then
// called again.
template <typename Commands>
Claims::Outcomes Claims::run(const Commands& commands) {
    try {
        return connection_.run_all(commands());
    } catch (const database::Error& error) {
        if (is_missing_ || error.sqlstate() != database::no_such_table) throw;
        is_missing_ = true;
        return connection_.run_all(commands());
    }
}

Sql Claims::removal_of(std::int64_t claim) const {
    return Sql("delete from till_claim where claim = ") + claim;
}

std::vector<database::Command> Claims::removal() const {
    if (!has_claimed_ || is_missing_) return {};
    return {removal_of(id_)};
}

Claims::Others Claims::others_in(const database::Result& claims, const Invoice& invoice) {
    Others others;
    bool before_own = true;
    for (const Row& row : claims) {
        const std::int64_t claim = row.integer("claim");
        if (claim == id_) {
            before_own = false;
            continue;
        }
        if (!is_fresh(row)) {
            connection_.execute(removal_of(claim));
            continue;
        }
        const std::string goods = row.text("goods");
        add(others.goods, goods);
        if (before_own) add(others.older_goods, goods);
        if (row.integer("series") == number_of_series(invoice) &&
            row.integer("stcode") == store_of_series(invoice))
            others.highest_number = std::max(others.highest_number, row.integer("pnum"));
    }
    return others;
}

std::pair<Claims::Others, database::Result> Claims::read_with_claims(const Sql& statement,
                                                                     const Invoice& invoice) {
    Outcomes seen = run([&] {
        std::vector<database::Command> commands;
        if (!is_missing_) commands.emplace_back(all_claims);
        commands.emplace_back(statement);
        return commands;
    });
    return {is_missing_ ? Others() : others_in(seen.front().result, invoice), std::move(seen.back().result)};
}

// Writes a claim on number_, then reads what else is there. Returns false if another till was first.
bool Claims::write_and_look(const Invoice& invoice, Look& look) {
    try {
        const Outcomes seen = run([&] {
            std::vector<database::Command> commands;
            if (!is_missing_) {
                has_claimed_ = true;  // even if the answer is lost
                commands.emplace_back(
                    Sql("insert into till_claim (series, stcode, pnum, claim, goods, moment) select ") +
                    number_of_series(invoice) + ", " + store_of_series(invoice) + ", " + number_ + ", " +
                    id_ + ", " + database::quoted(text_of(goods_)) + ", getdate()");
                commands.emplace_back(all_claims);
            }
            commands.emplace_back(last_number(invoice));
            commands.emplace_back(levels_statement(goods_));
            return commands;
        });
        // In this order: a claim disappears after its stock has moved, so what is no longer claimed is no
        // longer in stock.
        const Others others = is_missing_ ? Others() : others_in(seen[1].result, invoice);
        look = judge(invoice, others, stock_levels(seen.back().result));
        // Another till may have claimed, saved and released the number since it was read.
        if (next_invoice_number(seen[seen.size() - 2].result) <= number_) return true;
        if (!is_missing_) connection_.execute(removal_of(id_));
    } catch (const database::Error& error) {
        if (error.sqlstate() != database::key_violated) throw;
    }
    return false;
}

Claims::Look Claims::draw_number(const Invoice& invoice) {
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        const auto [others, last] = read_with_claims(last_number(invoice), invoice);
        number_ = std::max(next_invoice_number(last), others.highest_number + 1);
        if (Look look; write_and_look(invoice, look)) return look;
    }
    throw database::Error(std::string(database::key_violated), "other tills claimed every number", "");
}

Claims::Look Claims::judge(const Invoice& invoice, const Others& others, const Goods& levels) const {
    Look look;
    look.short_line = first_short_line(invoice, levels);
    look.is_lacking = look.short_line != nullptr;
    if (look.is_lacking || others.goods.empty()) return look;
    look.short_line = first_short_line(invoice, without(levels, others.goods));
    look.makes_way = first_short_line(invoice, without(levels, others.older_goods)) != nullptr;
    return look;
}

Claims::Look Claims::look_at_stock(const Invoice& invoice) {
    const auto [others, levels] = read_with_claims(levels_statement(goods_), invoice);
    return judge(invoice, others, stock_levels(levels));
}

std::optional<Shortage> Claims::claim(const Invoice& invoice) {
    release();  // what a lost connection left of the last save
    if (!has_claimed_) id_ = common::random_number(highest_claim);
    is_missing_ = false;
    goods_ = goods_taken(invoice);
    Look look = draw_number(invoice);
    const auto deadline = steady_clock::now() + patience;
    while (look.short_line != nullptr) {
        const bool may_wait = !look.is_lacking && steady_clock::now() < deadline;
        // The older claim goes first, so a younger one makes way for it and lines up again.
        if (!may_wait || look.makes_way) release();
        if (!may_wait) return Shortage{look.short_line->name, !look.is_lacking};
        std::this_thread::sleep_for(pause);
        look = look_at_stock(invoice);
        if (look.short_line != nullptr || has_claimed_) continue;
        look = draw_number(invoice);
    }
    return std::nullopt;
}

void Claims::claim_number(Invoice& invoice) {
    release();
    draw_number(invoice);
    invoice.number = number_;
}

bool Claims::number_taken(const Invoice& invoice) {
    const Sql saved = Sql("select pnum from sales where ") +
                      condition_of(series_of(invoice.kind, invoice.payment), invoice.store) +
                      " and pnum = " + invoice.number;
    const Outcomes seen = run([&] {
        if (is_missing_) return std::vector<database::Command>{saved};
        // Another till may have claimed the number if the claim here grew too old.
        return std::vector<database::Command>{
            saved + " union all select pnum from till_claim where series = " + number_of_series(invoice) +
            " and stcode = " + store_of_series(invoice) + " and pnum = " + invoice.number + " and claim <> " +
            id_};
    });
    return !seen.front().result.empty();
}

void Claims::release() noexcept {
    try {
        connection_.run_all(removal());
        has_claimed_ = false;
    } catch (const std::exception&) {
        // The next save tries again; until then the claim grows old.
    }
}

}  // namespace sales
