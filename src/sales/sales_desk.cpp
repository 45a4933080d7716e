#include "sales/sales_desk.h"

#include <fmt/format.h>

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
        for (const char* table : {"sales", "saledata", "inv_d"})
            connection_.describe(table);
        state_.lists = load_lists(connection_);
        clock_text_ = common::twelve_hour_text(services_.clock.now().time);
        sale_.chosen_store = session_.store_code;
        sale_ = empty_sale();
        invoice_.date = server_date();
        last_tick_day_ = services_.clock.now().date;
        NextInvoiceNumber();
        state_.sale_period = load_sale_period(connection_, invoice_.date);
        state_.lists.user_filter = load_user_filter(connection_);
        shifts_ = load_shifts(connection_, session_);
        news_ = load_news(connection_);
        select_default_level();
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
}

void SalesDesk::reload_customers() {
    look_up("reload the customers", false, [&] {
        reload_parties(connection_, state_.lists);
        return true;
    });
}

void SalesDesk::reload_shifts() {
    look_up("reload the shifts", false, [&] {
        shifts_ = load_shifts(connection_, session_);
        return true;
    });
}

}  // namespace sales
