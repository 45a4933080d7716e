// What the owner is told about items and prices.
#pragma once

#include <string_view>

namespace goods::message {

// --- the card ----------------------------------------------------------------------------------------
inline constexpr std::string_view no_such_item = "الصنف غير موجود، ربما حذفه مستخدم آخر";
inline constexpr std::string_view enter_code = "أدخل كود الصنف";
inline constexpr std::string_view enter_name = "أدخل اسم الصنف";
// The code belongs to the item …
inline constexpr std::string_view code_taken = "الكود مسجل للصنف : ";
// The code is also a barcode of …
inline constexpr std::string_view code_is_barcode = "الكود هو أيضا باركود للصنف : ";
inline constexpr std::string_view wrong_factor = "عدد الوحدات رقم أكبر من صفر";  // a number above 0
inline constexpr std::string_view wrong_minimum = "الحد الأدنى رقم صفر أو أكثر";
inline constexpr std::string_view control_character = "النص به رموز لا تطبع";  // characters that do not print
// Enter the unit's retail price; it must be above 0 / a selling price of 0 would give the item away.
inline constexpr std::string_view enter_price = "أدخل سعر بيع الوحدة قطاعي";
inline constexpr std::string_view price_is_zero = "سعر البيع صفر، والكاشير سيبيع الصنف بلا مقابل";
inline constexpr std::string_view wrong_cost = "التكلفة رقم صفر أو أكثر";
inline constexpr std::string_view price_too_large = "السعر أكبر من المسموح به";
// The unit has barcodes, so its number of base units must be given.
inline constexpr std::string_view factor_needed = "لهذه الوحدة باركود، أدخل عدد الوحدات بها";
// Prices below the cost: … Save all the same?
inline constexpr std::string_view below_cost = "أسعار أقل من التكلفة :";
inline constexpr std::string_view save_all_the_same = "هل تحفظ كما هي ؟";
// The group / the maker "…" is new; add it?
inline constexpr std::string_view new_group = "المجموعة غير مسجلة، هل تضاف ؟\n";
inline constexpr std::string_view new_maker = "الشركة غير مسجلة، هل تضاف ؟\n";
// Another user changed the item since it was opened: … Nothing was saved; look it over and save again.
inline constexpr std::string_view changed_meanwhile = "غير مستخدم آخر هذا الصنف بعد أن فتحته :";
inline constexpr std::string_view look_again = "لم يحفظ شيء. راجع الكارت ثم احفظ مرة أخرى";

// --- barcodes ----------------------------------------------------------------------------------------
inline constexpr std::string_view enter_barcode = "أدخل الباركود";
inline constexpr std::string_view barcode_too_long = "الباركود أطول من المسموح به";
inline constexpr std::string_view barcode_has_blank = "الباركود به مسافة، ولا يرسلها الماسح";
inline constexpr std::string_view barcode_has_apostrophe = "الباركود به علامة اقتباس";
inline constexpr std::string_view barcode_was_rounded = "الباركود قربه برنامج الجداول، اكتبه من العبوة";
inline constexpr std::string_view barcode_of_receipt = "الباركود يقرؤه الكاشير رقم بون";
inline constexpr std::string_view barcode_of_scale =
    "الباركود يبدأ بـ 20 مثل ملصق الميزان، والكاشير يقرؤه وزنا";
// The check digit is wrong: a misread or mistyped code. Keep it all the same?
inline constexpr std::string_view wrong_check_digit =
    "رقم المراجعة في آخر الباركود غير صحيح، ربما كتب خطأ.\nهل تحتفظ به كما هو ؟";
// The barcode is on this card already / belongs to the item … / is also the code of the item …
inline constexpr std::string_view barcode_on_card = "الباركود موجود في هذا الكارت";
inline constexpr std::string_view barcode_taken = "الباركود مسجل للصنف : ";
inline constexpr std::string_view barcode_is_code = "الباركود هو أيضا كود الصنف : ";
inline constexpr std::string_view no_free_barcode = "لا يوجد باركود داخلي خال لهذه الوحدة";

// --- deleting ----------------------------------------------------------------------------------------
// The item cannot be deleted; it is in: … Stop it instead.
inline constexpr std::string_view referred_to = "لا يمكن حذف الصنف لأنه مسجل في : ";
inline constexpr std::string_view stop_instead = "\nيمكن إيقاف تداوله بدلا من حذفه";

// --- prices of several items -------------------------------------------------------------------------
inline constexpr std::string_view wrong_percent = "النسبة رقم أكبر من صفر وحتى 1000، وللتخفيض أقل من 100";
inline constexpr std::string_view choose_step = "اختر التقريب";  // choose the rounding
inline constexpr std::string_view choose_prices =
    "اختر الوحدات والأسعار التي تتغير";                                     // choose units and levels
inline constexpr std::string_view nothing_changes = "لا توجد أسعار تتغير";  // no price would change
// So many of the new prices are below the cost.
inline constexpr std::string_view some_below_cost = "أسعار جديدة أقل من التكلفة، عددها ";
// Another user changed the price of …; nothing was saved.
inline constexpr std::string_view price_changed_meanwhile = "غير مستخدم آخر سعر ";
inline constexpr std::string_view work_out_again = "لم يحفظ شيء. اعرض التغييرات مرة أخرى";

// --- import ------------------------------------------------------------------------------------------
inline constexpr std::string_view choose_file = "اختر ملف الأصناف";        // choose the items file
inline constexpr std::string_view file_not_read = "تعذرت قراءة الملف : ";  // the file cannot be read
// Nothing was imported; the line at fault is at the top.
inline constexpr std::string_view nothing_imported = "لم يستورد شيء. السطر المرفوض في أول القائمة";

}  // namespace goods::message
