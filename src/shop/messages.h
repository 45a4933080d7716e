// The office's messages about making a shop, and about its users and lists.
#pragma once

#include <string_view>

namespace shop::message {

// The folder cannot be made; there is a shop there already. Each is followed by the path.
inline constexpr std::string_view folder_not_made = "لا يمكن إنشاء المجلد، اختر مجلدا آخر:\n\u200E";
inline constexpr std::string_view shop_there = "يوجد محل هنا من قبل:\n\u200E";
// No device and no receipt file; followed by what was given.
inline constexpr std::string_view no_port = "هذا ليس منفذ طابعة ولا ملف بونات:\n\u200E";

// A user needs a name; it is too long; it is a number; somebody has it (followed by it); it has hidden marks.
inline constexpr std::string_view no_name = "اكتب الاسم";
inline constexpr std::string_view name_too_long = "الاسم أطول من المسموح";
inline constexpr std::string_view name_is_number = "الاسم لا يكون رقما فقط";
inline constexpr std::string_view name_taken = "هذا الاسم موجود من قبل: ";
inline constexpr std::string_view name_not_plain = "في الاسم علامات غير ظاهرة، اكتبه من جديد";
// Write a password; the two passwords differ.
inline constexpr std::string_view no_password = "اكتب كلمة سر";
inline constexpr std::string_view passwords_differ = "كلمتا السر غير متطابقتين";
inline constexpr std::string_view password_too_long = "كلمة السر أطول من المسموح";

// At the first start: the shop's name, the store's, the first drawer's; a drawer between two was left out;
// cash without a drawer; an amount below 0; values that are no notes and coins.
inline constexpr std::string_view no_shop_name = "اكتب اسم المحل كما يظهر على البون";
inline constexpr std::string_view no_store_name = "اكتب اسم الفرع أو المخزن";
inline constexpr std::string_view no_drawer = "اكتب اسم الدرج الأول";
inline constexpr std::string_view drawer_left_out = "تركت درجا قبل هذا بدون اسم، والأدراج ترقم بالترتيب";
inline constexpr std::string_view cash_without_drawer = "كتبت نقدية لدرج بدون اسم";
inline constexpr std::string_view below_zero = "لا تقبل قيمة أقل من صفر";
// The items file: there is none of this name; lines that are refused; and so many more.
inline constexpr std::string_view no_such_file = "لا يوجد ملف بهذا الاسم:\n\u200E";
inline constexpr std::string_view items_refused =
    "في الملف سطور لا تقبل، ولم يحفظ منه شيء. صححها ثم أعد المحاولة:";
inline constexpr std::string_view and_more = "وسطور أخرى: ";
inline constexpr std::string_view no_denominations =
    "اكتب قيم النقود وبينها مسافات، مثل: 200 100 50 20 10 5 1 0.50 0.25";

// Lists: the row was deleted, or changed (followed by what it is now, field by field), at another office; it
// is in use (followed by where); a period ends before it begins, or overlaps another one.
inline constexpr std::string_view row_is_gone = "حذف هذا السطر من جهاز آخر، ولم يحفظ تعديلك";
inline constexpr std::string_view row_was_changed =
    "عدل هذا السطر من جهاز آخر منذ عرضه، ولم يحفظ تعديلك. هو الآن:";
inline constexpr std::string_view row_is_used = "لا يمكن حذفه لأنه مستعمل في: ";
inline constexpr std::string_view ends_before_it_begins = "نهاية الفترة قبل بدايتها";
inline constexpr std::string_view overlaps = "تتداخل هذه الفترة مع فترة أخرى: ";

// A period's price: the item has no retail price; the price is not below the card's; no percent.
inline constexpr std::string_view no_card_price = "ليس لهذا الصنف سعر قطاعي، اكتبه في كارت الصنف أولا";
inline constexpr std::string_view price_not_lower = "سعر الفترة يكون أقل من سعر الصنف وأكبر من صفر";
inline constexpr std::string_view wrong_percent = "اكتب نسبة الخصم: أكبر من صفر وأقل من 100";

// Users: nobody else could change users any more; it is the user's own right.
inline constexpr std::string_view last_of_users = "لا يمكن ذلك: لن يبقى أحد له صلاحية تعديل المستخدمين";
inline constexpr std::string_view own_right = "لا يمكنك أن توقف نفسك أو تسحب صلاحيتك لتعديل المستخدمين";
// Badges: what was scanned is none; it is somebody else's.
inline constexpr std::string_view no_badge = "رقم البطاقة من 8 إلى 40 رقما بدون حروف";
inline constexpr std::string_view badge_taken = "هذه البطاقة لمستخدم آخر";
// Settings: the text is no value (followed by what the setting is); there must be one; the store has no
// drawer, so nobody could sign in at a till.
inline constexpr std::string_view wrong_setting = "القيمة غير صحيحة. ";
// Followed by the folders for backups that are not there now.
inline constexpr std::string_view no_backup_folder =
    "تم الحفظ، لكن النسخ لا تصل إلى مجلد غير موجود. وصل الفلاشة أو أنشئ المجلد:";
inline constexpr std::string_view setting_missing = "هذا الإعداد لا يترك فارغا";
inline constexpr std::string_view store_without_drawer =
    "ليس لهذا الفرع أدراج، فلن يدخل أحد من أجهزة الكاشير. أضف له درجا أولا";

}  // namespace shop::message
