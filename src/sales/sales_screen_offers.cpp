// The sales screen's offers: an invoice kept as a quotation, and one loaded back.
#include "sales/messages.h"
#include "sales/offer_bridge.h"
#include "sales/sales_screen.h"
#include "sales/sales_screen_guard.h"
#include "sales/saving_messages.h"
#include "sales/walk_in.h"

namespace sales {

using signin::Action;

std::int64_t SalesScreen::SaveOffer() {
    return guarded("save an offer", std::int64_t{0}, [&]() -> std::int64_t {
        if (frozen()) return 0;
        if (invoice_.lines.empty()) {
            services_.prompts.message(message::empty_offer, common::Icon::exclamation);
            return 0;
        }
        if (!lines_complete()) return 0;
        if (invoice_.payment == PaymentOption::account && invoice_.customer == walk_in_customer) {
            services_.prompts.message(saving_message::choose_customer, common::Icon::exclamation);
            return 0;
        }
        // The offer knows a walk-in customer by his code alone.
        if (invoice_.walk_in && invoice_.walk_in->is_new)
            store_walk_in_customer(connection_, *invoice_.walk_in);
        const std::int64_t number =
            stock::save_offer(connection_, offer_header(invoice_, session_.user_code), offer_lines(invoice_));
        busy_ = false;
        clear();
        busy_ = true;
        return number;
    });
}

bool SalesScreen::LoadOffer(std::int64_t number) {
    return guarded("load an offer", false, [&] {
        const auto offer = stock::load_offer(connection_, number);
        if (!offer) {
            services_.prompts.message(message::no_such_offer);
            return false;
        }
        Invoice loaded = invoice_of(connection_, *offer);
        if (loaded.is_return() && !authorise(Action::return_kind)) return false;
        if (!may_replace_invoice()) return false;
        loaded.date = server_date();
        loaded.store = chosen_store_;
        loaded.price_level = invoice_.price_level;
        if (loaded.payment == PaymentOption::card && !lists_.banks.empty())
            loaded.card.bank_code = lists_.banks.front().code;
        // What was to come from the store that sells now needs no transfer.
        for (Line& line : loaded.lines) {
            if (line.source_kind == SourceKind::other_store && line.source_store == loaded.store)
                line.source_kind = SourceKind::selling_store;
        }
        reset_invoice();
        invoice_ = std::move(loaded);
        date_chosen_ = false;
        loaded_offer_ = number;
        chosen_customer_ = invoice_.customer;
        draw_number();
        line_changed(invoice_.lines.empty() ? std::nullopt : std::optional<std::size_t>(0));
        return true;
    });
}

}  // namespace sales
