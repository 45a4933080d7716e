#include "ui/help/places.h"

#include <QWidget>
#include <algorithm>

namespace ui {

const std::vector<std::pair<QString, QString>>& help_places() {
    static const std::vector<std::pair<QString, QString>> places = {
        {"Form62", "sign-in"},
        {"Form63", "password"},
        // The sales screen, and the parts of it.
        {"Form31", "ringing-up"},
        {"lines", "lines"},
        {"discount_value", "discounts"},
        {"discount_percent", "discounts"},
        {"invoice_number", "recall"},
        {"invoice_banner", "recall"},
        {"entry_for_recalled", "recall"},
        {"account_customer", "account-sale"},
        {"permit", "permit"},
        {"permit_number", "permit"},
        {"bank", "card"},
        {"card_holder", "card"},
        {"card_reference", "card"},
        {"tips_receiver", "tips"},
        {"Form34", "payment"},
        {"search_panel", "search"},
        {"quick_quantity_sheet", "quick-quantity"},
        {"item_info_sheet", "item-info"},
        {"invoice_data", "invoice-data"},
        {"line_source", "line-source"},
        {"receipts_screen", "receipts"},
        {"offers_screen", "offers"},
        {"printer_screen", "printer"},
        {"paper_sheet", "printer"},
        // Shifts and cash.
        {"shift2s", "shift-start"},
        {"shiftc", "shift-start"},
        {"shift_counted", "shift-close"},
        {"shift_leave", "shift-close"},
        {"shift_side", "cash-position"},
        {"cash_count", "cash-count"},
        {"cash_panel", "cash-count"},
        {"daily_statement", "daily-statement"},
        {"figure_rows", "daily-statement"},
        {"Form41ca", "expenses"},
        // Customers and vouchers.
        {"Cust_cash", "walk-in"},
        {"account_customers", "account-customers"},
        {"Form7ca", "account-customers"},
        {"Form39", "account-statement"},
        {"Form38", "vouchers"},
        {"Form23", "payment-vouchers"},
        {"voucher_list", "voucher-edit"},
        {"direct_receipt", "direct-receipt"},
        {"tips_receivers", "tips-receivers"},
        {"Form36", "tips-receivers"},
    };
    return places;
}

QString help_place_of(const QWidget* widget) {
    const auto& places = help_places();
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const auto found = std::find_if(places.begin(), places.end(), [&](const auto& place) {
            return place.first == widget->objectName();
        });
        if (found != places.end()) return found->second;
    }
    return {};
}

}  // namespace ui
