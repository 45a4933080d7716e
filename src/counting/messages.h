// What stock-taking, write-offs and their lists say, each text with its English meaning.
#pragma once

#include <string_view>

#include "common/messages.h"

namespace counting::message {

// Stock-taking.
inline constexpr std::string_view choose_scope = "اختر ما يعد";  // choose what is counted
// The till's tables are missing in this shop, so no stock-taking can be kept.
inline constexpr std::string_view no_tables = "جداول الجرد غير موجودة في قاعدة بيانات المحل";
// The count was closed meanwhile; nothing was added or changed.
inline constexpr std::string_view count_closed = "هذا الجرد أغلق، لم يتغير فيه شيء";
inline constexpr std::string_view no_such_item = "الصنف غير موجود";                // the item does not exist
inline constexpr std::string_view is_service = "هذا الصنف خدمة وليس له رصيد يعد";  // a service has no stock
inline constexpr std::string_view no_unit = "الصنف ليست له هذه الوحدة";            // has no such unit
// The item is not of the group that is counted.
inline constexpr std::string_view other_group = "هذا الصنف ليس من المجموعة التي تعد";
// "The item is being counted in the open count number …; count it there."
inline constexpr std::string_view counted_elsewhere = "هذا الصنف معدود في جرد آخر مفتوح، عده هناك: جرد رقم ";
inline constexpr std::string_view wrong_quantity = "الكمية غير صحيحة";  // the quantity is not correct
inline constexpr std::string_view quantity_too_large = "الكمية أكبر من المسموح";  // too large
inline constexpr std::string_view nothing_counted = "لم يعد أي صنف بعد";          // nothing was counted yet

// Write-offs.
inline constexpr std::string_view nothing_to_write_off = "أضف صنفا واحدا على الأقل";  // add an item at least
inline constexpr std::string_view enter_reason = "اكتب السبب";                        // enter the reason
inline constexpr std::string_view quantity_above_zero = "اكتب كمية أكبر من صفر";  // enter a quantity above 0
// "The store holds only … of the item."
inline constexpr std::string_view not_so_many = "رصيد الصنف في المخزن أقل من ذلك: ";
inline constexpr std::string_view already_reversed = "هذا المحضر معكوس من قبل";  // reversed before
inline constexpr std::string_view is_reversal =
    "هذا محضر عكسي، لا يعكس مرة أخرى";  // is a counter entry itself

}  // namespace counting::message
