#include "sales/kinds.h"

#include <array>

namespace sales {

std::uint32_t grid_colour(KindOption kind) {
    switch (kind) {
        case KindOption::sale:
            return colour_sale;
        case KindOption::return_:
            return colour_return;
        case KindOption::third:
            return colour_third;
    }
    return colour_sale;
}

std::string_view kind_caption(KindOption kind, PaymentOption payment) {
    const bool on_account = payment == PaymentOption::account;
    if (kind == KindOption::return_) return on_account ? "مرتجع الي" : "مرتجع نقدي";
    return on_account ? "بيع الي" : "بيع نقدي";
}

std::string_view payment_caption(PaymentOption payment) {
    constexpr std::array<std::string_view, 4> captions = {"آجل", "نقدي", "بطاقة إئتمان", "أكراميات"};
    return captions[static_cast<std::size_t>(payment)];
}

bool payment_enabled(PaymentOption payment, KindOption kind) {
    return kind == KindOption::sale || payment == PaymentOption::account || payment == PaymentOption::cash;
}

// Tips are handed over in cash, so what is left of them on a return is cash; for a card the rule is account.
PaymentOption payment_after_switch(PaymentOption payment, KindOption kind) {
    if (payment_enabled(payment, kind)) return payment;
    return payment == PaymentOption::card ? PaymentOption::account : PaymentOption::cash;
}

std::string_view line_heading(int index) {
    switch (index) {
        case column::number:
            return "م";
        case column::code:
            return "كود";
        case column::name:
            return "اسم الصنف";
        case column::group:
            return "مجموعة";
        case column::quantity:
            return "كمية";
        case column::price:
            return "سعر";
        case column::discount_value:
            return "خصم ق";
        case column::discount_percent:
            return "خصم %";
        case column::total:
            return "اجمالي";
        case column::balance:
            return "رصيد";
        default:
            return "";
    }
}

}  // namespace sales
