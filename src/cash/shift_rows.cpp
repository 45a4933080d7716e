#include "cash/shift_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "database/recordset.h"
#include "database/resumption.h"

namespace cash {

using database::Connection;
using database::Journal;
using database::JournalEntry;
using database::quoted;
using database::Recordset;
using database::Sql;
using database::Value;

TALLVEX_JSON(Drawer, store, code)
TALLVEX_JSON(CashTransfer, from, to, amount, note, user, at)
TALLVEX_JSON(InvoiceDiscounts, taken_off, beside)
TALLVEX_JSON(Pieces, denomination, count)
TALLVEX_JSON(DrawerCount, pieces, other)
TALLVEX_JSON(ShiftReport, number, worker, store, drawer, start, end, counted, pieces, expected, card_sales,
             uncollected, discounts)
TALLVEX_JSON(ShiftEnd, number, at, counted, transfer, report)
TALLVEX_JSON(ShiftBegin, number, at, worker)
TALLVEX_JSON(ShiftToSave, drawer, closed, started)

namespace {

constexpr std::string_view journal_kind = "shift";

// The steps, in their order; the journal keeps their numbers.
enum Step { transfer_cash = 1, end_shift = 2, start_shift = 3 };

ShiftToSave read_save(const JournalEntry& entry) {
    return common::from_json_text<ShiftToSave>(entry.content);
}

std::string log_name_of(const JournalEntry& entry) {
    return log_name(read_save(entry));
}

// The rows of one shift: usually one, more if workstations with the same drawer started it at the same
// moment.
Sql rows_of(const Drawer& drawer, std::int64_t number) {
    return Sql(" from shift where stcode = ") + drawer.store + " and cash_no = " + drawer.code +
           " and scode = " + number;
}

}  // namespace

const database::Resumption shift_resumption = {journal_kind, log_name_of,
                                               database::finish_rows<ShiftToSave, ShiftRows>,
                                               database::undo_rows<ShiftToSave, ShiftRows>};

JournalEntry entry_of(const ShiftToSave& save, const common::Moment& begun) {
    const std::string title = save.closed ? fmt::format("إغلاق الوردية رقم {}", save.closed->number)
                                          : fmt::format("بدء الوردية رقم {}", save.started->number);
    return {0,     save.drawer.store,      save.drawer.code, std::string(journal_kind), title,
            begun, common::json_text(save)};
}

std::optional<ShiftReport> report_to_print(const JournalEntry& entry) {
    if (entry.kind != journal_kind) return std::nullopt;
    const ShiftToSave save = read_save(entry);
    return save.closed ? save.closed->report : std::nullopt;
}

std::string log_name(const ShiftToSave& save) {
    return fmt::format("shift change {} (store {}, drawer {})",
                       save.closed ? save.closed->number : save.started->number, save.drawer.store,
                       save.drawer.code);
}

bool ShiftRows::write() {
    if (save_.closed && save_.closed->transfer)
        journal_.once(transfer_cash, [this] {
            return std::to_string(write_transfer(connection_, *save_.closed->transfer));
        });
    if (save_.closed) journal_.once(end_shift, [this] { return close_shift(); });
    if (!save_.started) return true;
    journal_.once(start_shift, [this] {
        add_shift();
        return std::string();
    });
    if (!is_started_elsewhere()) return true;
    remove_shift();
    return false;
}

void ShiftRows::undo() {
    journal_.undo([this](int step, const std::string& noted) { take_back(step, noted); });
}

void ShiftRows::take_back(int step, const std::string& noted) {
    switch (step) {
        case transfer_cash:
            remove_transfer(connection_, std::stoll(noted), *save_.closed->transfer);
            break;
        case end_shift:
            reopen_shift(noted);
            break;
        default:
            remove_shift();
    }
}

// Returns the starts of the rows that it closed.
std::string ShiftRows::close_shift() {
    std::vector<common::Moment> closed;
    Recordset rows(connection_, Sql("select *") + rows_of(save_.drawer, save_.closed->number));
    for (; !rows.at_end(); rows.move_next()) {
        if (!rows.null("e_date")) continue;
        rows.set("e_date", Value(save_.closed->at));
        rows.set("cur_bal", save_.closed->counted.value());
        rows.update();
        closed.push_back(rows.moment("s_date"));
    }
    return common::json_text(closed);
}

void ShiftRows::reopen_shift(const std::string& noted) {
    const auto closed = common::from_json_text<std::vector<common::Moment>>(noted);
    Recordset rows(connection_, Sql("select *") + rows_of(save_.drawer, save_.closed->number));
    for (; !rows.at_end(); rows.move_next()) {
        if (std::find(closed.begin(), closed.end(), rows.moment("s_date")) == closed.end()) continue;
        rows.set("e_date", Value(database::Null{}));
        rows.set("cur_bal", Value(database::Null{}));
        rows.update();
    }
}

void ShiftRows::add_shift() {
    const ShiftBegin& started = *save_.started;
    Recordset shifts(connection_, "select * from shift ");
    shifts.add();
    shifts.set("scode", started.number);
    shifts.set("s_date", Value(started.at));
    shifts.set("man_", started.worker);
    shifts.set("stcode", save_.drawer.store);
    shifts.set("cash_no", save_.drawer.code);
    shifts.update();
}

bool ShiftRows::is_started_elsewhere() {
    const ShiftBegin& started = *save_.started;
    for (const auto& row : connection_.query(Sql("select *") + rows_of(save_.drawer, started.number)))
        if (row.moment("s_date") != started.at || row.integer("man_") != started.worker) return true;
    return false;
}

void ShiftRows::remove_shift() {
    const ShiftBegin& started = *save_.started;
    connection_.execute(Sql("delete") + rows_of(save_.drawer, started.number) + " and s_date = " +
                        quoted(started.at) + " and man_ = " + started.worker + " and e_date is null");
}

}  // namespace cash
