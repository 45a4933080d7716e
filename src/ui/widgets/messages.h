// What the screens themselves say, each with its English meaning. What the actions say stands with the
// actions.
#pragma once

#include <string_view>

namespace ui::message {

inline constexpr std::string_view title = "Tallvex";

inline constexpr std::string_view ok = "موافق";  // OK
inline constexpr std::string_view yes = "نعم";   // yes
inline constexpr std::string_view no = "لا";     // no

// "The action did not succeed. The reason is written in the activity log."
inline constexpr std::string_view failed = "لم تتم العملية. السبب مسجل في سجل البرنامج";
// "The program could not be started again."
inline constexpr std::string_view no_restart = "تعذرت إعادة تشغيل البرنامج";
// "The date is not a valid date."
inline constexpr std::string_view wrong_date = "التاريخ غير صحيح";
// "The two new passwords differ."
inline constexpr std::string_view passwords_differ = "كلمتا السر الجديدتان غير متطابقتين";

// "Enter the counted cash."
inline constexpr std::string_view enter_counted = "ادخل الرصيد الفعلي";

// "The test page was sent to port …" / "The printer does not answer on port …"
inline constexpr std::string_view test_sent = "تم إرسال صفحة التجربة إلى المنفذ ";
inline constexpr std::string_view test_failed = "الطابعة لا تستجيب على المنفذ ";

// "Printed."
inline constexpr std::string_view printed = "تمت الطباعة";
// "There is no printer; kept in the file …"
inline constexpr std::string_view kept_instead = "لا توجد طابعة .. تم الحفظ في الملف ";

// "The receipt was saved under number …" / ", shall it be printed?"
inline constexpr std::string_view direct_receipt_saved = "تم حفظ إيصال القبض رقم ";
inline constexpr std::string_view print_it = " .. هل تريد طباعته ؟";
// "A walk-in customer is recorded on cash receipts only."
inline constexpr std::string_view walk_in_on_account = "العميل النقدي يسجل على البون النقدي فقط";

}  // namespace ui::message
