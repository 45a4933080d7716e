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
inline constexpr std::string_view password_too_long = "كلمة السر أطول من المسموح";

}  // namespace shop::message
