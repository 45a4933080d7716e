#include "sales/sales_desk.h"

#include <fmt/format.h>

#include "database/till_settings.h"
#include "database/till_tables.h"
#include "sales/sale_period.h"

namespace sales {

namespace {

std::string twelve_hours_with_seconds(const common::TimeOfDay& time) {
    const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
    return fmt::format("{:02}:{:02}:{:02} {}", hour, time.minute, time.second, time.hour < 12 ? "AM" : "PM");
}

}  // namespace

SalesDesk::SalesDesk(database::Connection& connection, signin::Session& session, common::Services services,
                     printing::ReceiptPrinter& printer)
    : DeskStateHolder{DeskState(connection, session, services, printer)}, DeskPart(own_state) {}

bool SalesDesk::Open() {
    return change("open the sales screen", false, [&] {
        // The tables that invoices go to are opened without reading a row: a missing one is reported now, not
        // at the first sale.
        const std::vector<std::string> needed = {"sales", "saledata", "inv_d", "stk", "print"};
        database::unless_table_is_missing([&] {
            std::vector<std::string> all = needed;
            all.push_back("till_number");  // of card payments; a shop may lack it
            connection_.describe_all(all);
        });
        connection_.describe_all(needed);
        clock_text_ = common::twelve_hour_text(services_.clock.now().time);
        sale_.chosen_store = session_.store_code;
        sale_ = empty_sale();
        last_tick_day_ = services_.clock.now().date;
        const auto& folder = session_.program_folder;
        state_.draft.open(folder.empty() ? folder : draft_file(folder, session_.shop, session_.cash_point));
        database::Reads reads;
        Today today;
        state_.draft.ask(reads);
        held_.ask(reads);
        ask_lists(reads, state_.lists);
        ask_invoice_number(reads);
        ask_today(reads, today);
        ask_shifts(reads, session_, shifts_);
        ask_news(reads, news_);
        ask_default_level(reads);
        state_.raise_equal = false;
        database::ask_yes_or_no(reads, {{database::setting::raise_equal_codes, &state_.raise_equal}});
        database::ask_denominations(reads, state_.denominations);
        database::ask_text(reads, database::setting::display_greeting, state_.display_greeting);
        database::ask_text(reads, database::setting::screen_greeting, state_.screen_greeting);
        reads.run(connection_);
        invoice_.date = today.day;
        state_.sale_period = checked_period(today);
        if (!holds_period_prices(connection_, state_.sale_period))
            fill_period_prices(connection_, state_.sale_period);
        return true;
    });
}

std::int64_t SalesDesk::shift_number() const {
    return shifts_.empty() || !shifts_.back().end.empty() ? 0 : shifts_.back().number;
}

void SalesDesk::tick() {
    const common::Moment now = services_.clock.now();
    clock_text_ = twelve_hours_with_seconds(now.time);
    const bool may_change = !state_.busy && !sale_.shows_saved_receipt() && !sale_.partly_saved;
    if (now.date != last_tick_day_ && may_change) take_day(now.date);
    last_tick_day_ = now.date;
    // Keeps what was typed into a field without running an action.
    if (!state_.busy) keep_draft();
}

void SalesDesk::reload() {
    look_up("reload the lists", false, [&] {
        database::Reads reads;
        ask_parties(reads, state_.lists);
        ask_shifts(reads, session_, shifts_);
        reads.run(connection_);
        return true;
    });
}

}  // namespace sales
