// What the office tells of a shop that is made, and of its users and lists.
#pragma once

#include <string_view>

namespace shop::message {

// The folder cannot be made; there is a shop there already. Each is followed by the path.
inline constexpr std::string_view folder_not_made = "لا يمكن إنشاء المجلد، اختر مجلدا آخر:\n\u200E";
inline constexpr std::string_view shop_there = "يوجد متجر هنا من قبل:\n\u200E";
// No device and no receipt file; followed by what was given.
inline constexpr std::string_view no_port = "هذا ليس منفذ طابعة ولا ملف إيصالات:\n\u200E";

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
inline constexpr std::string_view no_denominations =
    "اكتب قيم النقود وبينها مسافات، مثل: 200 100 50 20 10 5 1 0.50 0.25";

}  // namespace shop::message
