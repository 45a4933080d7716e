#include "audit/event.h"

#include <algorithm>
#include <array>

namespace audit {

namespace {

constexpr std::array names = {
    KindName{Kind::sign_in, "sign_in", "دخول مستخدم"},                      // a user signed in
    KindName{Kind::sign_in_refused, "sign_in_refused", "دخول مرفوض"},       // a refused sign-in
    KindName{Kind::line_deleted, "line_deleted", "حذف صنف"},                // a deleted line
    KindName{Kind::quantity_lowered, "quantity_lowered", "تقليل كمية"},     // a lowered quantity
    KindName{Kind::unit_changed, "unit_changed", "تغيير وحدة"},             // a cheaper unit
    KindName{Kind::invoice_cancelled, "invoice_cancelled", "إلغاء بون"},    // a cancelled invoice
    KindName{Kind::invoice_held, "invoice_held", "تعليق بون"},              // an invoice put aside
    KindName{Kind::invoice_resumed, "invoice_resumed", "استرجاع بون"},      // and taken up again
    KindName{Kind::price_changed, "price_changed", "تغيير سعر"},            // a changed price
    KindName{Kind::discount, "discount", "خصم"},                            // a discount
    KindName{Kind::approval, "approval", "موافقة مشرف"},                    // a supervisor's approval
    KindName{Kind::refusal, "refusal", "رفض"},                              // a refused action
    KindName{Kind::drawer_opened, "drawer_opened", "فتح الدرج بدون بيع"},   // drawer opened without a sale
    KindName{Kind::reprint, "reprint", "إعادة طباعة"},                      // a reprint
    KindName{Kind::return_saved, "return_saved", "مرتجع"},                  // a return
    KindName{Kind::count, "count", "جرد خزينة"},                            // a count of a drawer
    KindName{Kind::shift_changed, "shift_changed", "تغيير وردية"},          // a shift started or closed
    KindName{Kind::item_changed, "item_changed", "تغيير بيانات صنف"},       // an item's card was changed
    KindName{Kind::prices_changed, "prices_changed", "تعديل أسعار أصناف"},  // prices of items were changed
    KindName{Kind::goods_received, "goods_received", "بضاعة واردة"},        // goods taken in
    KindName{Kind::goods_returned, "goods_returned", "مرتجع لمورد"},        // goods returned to a supplier
    KindName{Kind::stock_counted, "stock_counted", "ترحيل جرد"},            // a booked stock-taking
    KindName{Kind::goods_written_off, "goods_written_off", "تسجيل تالف"},   // damaged, expired goods
    KindName{Kind::list_changed, "list_changed", "تعديل قائمة"},            // a changed list of the shop
    KindName{Kind::user_changed, "user_changed", "تعديل مستخدم"},           // a changed user
    KindName{Kind::setting_changed, "setting_changed", "تعديل إعداد"},      // a changed setting
    KindName{Kind::day_closed, "day_closed", "إقفال يوم"},                  // a day was closed
};

}  // namespace

std::span<const KindName> kinds() {
    return names;
}

const KindName& name_of(Kind kind) {
    return *std::ranges::find(names, kind, &KindName::kind);
}

std::string_view caption_of(std::string_view stored) {
    const auto* const found = std::ranges::find(names, stored, &KindName::stored);
    return found == names.end() ? stored : found->caption;
}

}  // namespace audit
