#include "bench/by_hand_sale.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>

#include "bench/sizes.h"
#include "database/embedded/moments.h"

namespace bench {

namespace {

using database::embedded::ticks_of;

constexpr const char* time_form = "2026/11/21 12:00";

}  // namespace

HandSale::HandSale(HandEngine& engine, std::filesystem::path log) : engine_(engine), log_(std::move(log)) {
    const auto prepare = [&](const std::string& text) { return engine_.prepare(text); };
    period_ = prepare("select sale_no from sal_prd where sale_from <= ? and sale_to >= ?");
    barcode_ = prepare("select code, scode from barcode where bar = ?");
    card_ = prepare(
        "select i.name, i.itype, i.stop, i.sale_only, i.num1, i.price11, i.price12, i.price13, i.price14, "
        "i.price15, "
        "ifnull(p.p_per, 0), p.s_price from items i left join tmp_price p on i.code = p.icode where i.code = "
        "?");
    stock_ = prepare("select sum(quan) from stk where icode = ? and stcode = 1");
    expiries_ = prepare("select edate from stk where icode = ?");
    found_ = prepare(
        "select code, name, itype, stop, price12, price13, price22, price23, price32, price33, "
        "(select sum(quan) from stk where icode = items.code) from items where name >= ?1 and name < ?2 "
        "order by name");
    shift_ = prepare(
        "select scode, e_date from shift where stcode = 1 and cash_no = 1 order by scode desc limit 1");
    number_ = prepare("select max(pnum) from sales where vcode = -1 and (ctype = 0 or ctype = 1)");
    claims_ =
        prepare("select series, stcode, pnum, claim, goods, moment from till_claim order by moment, claim");
    claim_ = prepare(
        "insert into till_claim (series, stcode, pnum, claim, goods, moment) values (0, 0, ?, 1, ?, ?)");
    taken_ = prepare(
        "select pnum from sales where (ctype = 0 or ctype = 1) and vcode = -1 and pnum = ?1 union all "
        "select pnum from till_claim where series = 0 and stcode = 0 and pnum = ?1 and claim <> 1");
    release_ = prepare("delete from till_claim where claim = 1");
    begin_ = prepare("begin immediate");
    commit_ = prepare("commit");
    enter_ = prepare(
        "insert into till_save (id, stcode, cash_no, kind, title, begun, content) values (1, 1, 1, "
        "'invoice', "
        "?, ?, ?)");
    note_ =
        prepare("insert into till_step (save_id, step, noted) select id, ?, ? from till_save where id = 1");
    leave_ = prepare("delete from till_save where id = 1");
    forget_notes_ = prepare("delete from till_step where save_id = 1");
    settings_ = prepare("select inv_p, csh_inv, cust_n, main_p from basic");
    header_ = prepare(
        "insert into sales (pnum, vcode, date, ctype, ptot, pdis, ptax, stcode, user, wcode, types, shift, "
        "time_, stype, "
        "ptype, inv_type) values (?, -1, ?, 0, ?, 0.0, 0, 1, 1, 0, 0, ?, ?, 0, 1, 0)");
    line_ = prepare(
        "insert into saledata (pnum, vcode, date, ctype, stcode, stype, serial, sid, icode, note, quan, "
        "price, disc, "
        "unit1, scode, quan1, edate, time_, inv_type) values (?1, -1, ?2, 0, 1, 0, ?3, ?3, ?4, ?5, ?6, ?7, "
        "0.0, ?8, "
        "?9, ?10, ?11, ?12, 0)");
    batches_ = prepare("select rowid, stcode, quan, edate from stk where icode = ? order by edate");
    // Another till may have changed the batch meanwhile.
    take_ = prepare("update stk set quan = ?1 where rowid = ?2 and quan = ?3");
}

HandLine HandSale::enter(const std::string& code, bool first) {
    const std::int64_t today = ticks_of({last_day, {}});
    if (first && HandRun(period_, today, today).row())
        throw std::runtime_error("no sale period was expected");
    HandLine line;
    line.item = std::atoll(code.c_str());
    for (HandRun bar(barcode_, code); bar.row(); bar.next()) {
        line.item = bar.whole(0);
        line.unit = static_cast<int>(bar.whole(1));
    }
    const HandRun card(card_, line.item);
    if (!card.row() || card.whole(2) != 0 || card.whole(3) != 0) throw std::runtime_error("no such item");
    line.name = card.text(0);
    line.factor = card.number(4);
    line.price = card.number(6) * (100 - card.number(10)) / 100;
    if (HandRun(stock_, line.item).number(0) < line.factor) throw std::runtime_error("no stock");
    [[maybe_unused]] const double balance = HandRun(stock_, line.item).number(0) / line.factor;
    [[maybe_unused]] const std::string shown = fmt::format("{:.3f}", HandRun(stock_, line.item).number(0));
    std::vector<std::int64_t> expiries;
    for (HandRun batch(expiries_, line.item); batch.row(); batch.next())
        expiries.push_back(batch.whole(0));
    std::sort(expiries.begin(), expiries.end());
    return line;
}

std::vector<HandSale::Found> HandSale::search(const std::string& prefix) {
    std::vector<Found> list;
    const std::string end = prefix + "\xf4\x8f\xbf\xbf";  // the last character of Unicode
    for (HandRun row(found_, prefix, end); row.row(); row.next()) {
        Found found;
        found.code = row.whole(0);
        found.name = row.text(1);
        found.type = row.whole(2);
        found.stopped = row.whole(3);
        for (int i = 0; i < 6; ++i)
            found.prices[i] = row.number(4 + i);
        found.stock = row.number(10);
        list.push_back(std::move(found));
    }
    return list;
}

void HandSale::save(const std::vector<HandLine>& lines) {
    const std::int64_t shift = open_shift();
    const std::int64_t number = claim(lines);
    double total = 0;
    for (const HandLine& line : lines)
        total += line.quantity * line.price;
    log(fmt::format("save of invoice {} begins, lines {}", number, lines.size()));
    if (HandRun(settings_).whole(0) == 1) throw std::runtime_error("a page printer was not expected");
    const std::int64_t today = ticks_of({last_day, {}});
    const std::int64_t now = ticks_of({{1900, 1, 1}, {12, 0, 0, 0}});
    HandRun(enter_, fmt::format("{}: {:.2f}", number, total), today, journal_text(lines, number));
    if (HandRun(taken_, number).row()) throw std::runtime_error("the number was taken");
    std::vector<std::vector<Batch>> batches;
    for (const HandLine& line : lines)
        batches.push_back(batches_of(line.item));

    HandRun{begin_};
    HandRun(header_, number, today, total, shift, now);
    note(10, "");  // the receipt
    note(30, "");
    HandRun{commit_};
    HandRun{begin_};
    int serial = 0;
    for (const HandLine& line : lines) {
        const std::int64_t oldest = batches[static_cast<std::size_t>(serial)].front().expiry;
        HandRun(line_, number, today, ++serial, line.item, line.name, line.quantity, line.price, line.factor,
                line.unit, line.quantity * line.factor, oldest, now);
    }
    note(50, "");
    HandRun{commit_};
    HandRun{begin_};
    std::string changes;
    for (std::size_t i = 0; i < lines.size(); ++i)
        take(lines[i], batches[i], changes);
    note(70, changes);
    HandRun{commit_};
    HandRun{begin_};
    HandRun{leave_};
    HandRun{forget_notes_};
    HandRun{release_};
    HandRun{commit_};
    engine_.make_durable();
    log(fmt::format("save of invoice {} finished", number));
    if (HandRun(settings_).whole(3) == 1 || HandRun(number_).whole(0) != number)
        throw std::runtime_error("the next invoice is not as expected");
}

std::int64_t HandSale::claim(const std::vector<HandLine>& lines) {
    if (HandRun(claims_).row()) throw std::runtime_error("no claim was expected");
    std::map<std::int64_t, double> needed;
    for (const HandLine& line : lines)
        needed[line.item] += line.quantity * line.factor;
    std::string goods;
    for (const auto& [item, quantity] : needed)
        goods += fmt::format("{} 1 {};", item, quantity);
    const std::int64_t number = HandRun(number_).whole(0) + 1;
    const std::int64_t now = ticks_of({last_day, {}});
    HandRun{claim_, number, goods, now};
    if (HandRun(number_).whole(0) >= number) throw std::runtime_error("the number was saved");
    for (HandRun other(claims_); other.row(); other.next())
        if (other.whole(3) != 1) throw std::runtime_error("no other claim was expected");
    for (const auto& [item, quantity] : needed)
        if (HandRun(stock_, item).number(0) < quantity) throw std::runtime_error("no stock");
    return number;
}

std::int64_t HandSale::open_shift() {
    const HandRun row(shift_);
    if (!row.row() || !row.null(1)) throw std::runtime_error("no shift");
    return row.whole(0);
}

std::vector<HandSale::Batch> HandSale::batches_of(std::int64_t item) {
    std::vector<Batch> batches;
    for (HandRun row(batches_, item); row.row(); row.next())
        if (row.whole(1) == 1 && row.number(2) > 0)
            batches.push_back({row.whole(0), row.number(2), row.whole(3)});
    if (batches.empty()) throw std::runtime_error("no batch");
    return batches;
}

void HandSale::take(const HandLine& line, const std::vector<Batch>& batches, std::string& changes) {
    double left = line.quantity * line.factor;
    for (const Batch& batch : batches) {
        if (left <= 0) break;
        const double taken = std::min(left, batch.held);
        HandRun(take_, batch.held - taken, batch.row, batch.held);
        if (engine_.changes() != 1) throw std::runtime_error("the batch was changed meanwhile");
        fmt::format_to(std::back_inserter(changes), "{} {} {};", line.item, batch.expiry, taken);
        left -= taken;
    }
}

void HandSale::note(int step, const std::string& text) {
    HandRun(note_, step, text);
    if (engine_.changes() != 1) throw std::runtime_error("the save is not in the journal");
}

// What finishing the save after a crash needs.
std::string HandSale::journal_text(const std::vector<HandLine>& lines, std::int64_t number) const {
    std::string text = fmt::format("{{\"number\":{},\"lines\":[", number);
    for (const HandLine& line : lines)
        fmt::format_to(std::back_inserter(text),
                       "{{\"item\":{},\"name\":\"{}\",\"price\":{},\"factor\":{},\"quantity\":{},"
                       "\"unit\":{}}},",
                       line.item, line.name, line.price, line.factor, line.quantity, line.unit);
    return text + "]}";
}

void HandSale::log(const std::string& line) {
    const std::string text = line + "  ----  250  ----  " + time_form + "\n";
    const int file = ::open(log_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, text.data(), text.size()) < 0) throw std::runtime_error("the log failed");
    ::close(file);
}

}  // namespace bench
