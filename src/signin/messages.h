// What the sign-in screen and the password screen say.
#pragma once

#include <string_view>

namespace signin::message {

inline constexpr std::string_view enter_user = "ادخل اسم المستخدم";         // enter the user name
inline constexpr std::string_view no_such_user = "اسم المستخدم غير موجود";  // user name not found
inline constexpr std::string_view wrong_password = "كلمة السر غير صحيحة";   // the password is not correct
// "Too many wrong attempts. Wait …" (minutes and seconds) "then try again."
inline constexpr std::string_view wait_before = "محاولات خاطئة كثيرة. انتظر ";
inline constexpr std::string_view wait_after = " ثم حاول مرة أخرى";
// Approvals: the badge belongs to nobody with this right; the badge is not known; no other user has this
// right; in the journal, "wrong password for the approval of …".
inline constexpr std::string_view badge_without_right = "صاحب هذه البطاقة ليست له هذه الصلاحية";
inline constexpr std::string_view no_such_badge = "البطاقة غير معروفة، اختر المشرف واكتب كلمة السر";
inline constexpr std::string_view no_supervisor = "لا يوجد مستخدم آخر له هذه الصلاحية";
inline constexpr std::string_view wrong_approval = "كلمة سر أو بطاقة غير صحيحة لموافقة ";
// The user is blocked.
inline constexpr std::string_view blocked = "هذا المستخدم موقوف عن العمل، راجع المدير";
inline constexpr std::string_view wrong_data = "بيانات غير صحيحة";  // the data are not correct
// In the office: the user has none of its rights; another program keeps the shop's tables.
inline constexpr std::string_view no_office_right = "هذا المستخدم ليست له صلاحية في برنامج المكتب";
inline constexpr std::string_view read_only =
    "بيانات هذا المحل يسجلها برنامج آخر، وبرنامج المكتب هنا للعرض فقط";
inline constexpr std::string_view wrong_old_password =
    "كلمة السر القديم غير صحيحة";  // old password not correct
// The new password is too long.
inline constexpr std::string_view password_too_long = "كلمة السر الجديدة أطول من المسموح";
// The password was changed.
inline constexpr std::string_view password_changed = "تم تغيير كلمة السر";
// The password was not changed: the database did not accept it. The old password is still valid.
inline constexpr std::string_view password_not_changed =
    "لم يتم تغيير كلمة السر لأن قاعدة البيانات لم تقبل التغيير، وكلمة السر القديمة ما زالت سارية";
// The database did not store the new password as it was typed; ask the manager to set another.
inline constexpr std::string_view password_garbled =
    "لم تحفظ قاعدة البيانات كلمة السر كما كتبت، اطلب من المدير تعيين كلمة سر جديدة";

}  // namespace signin::message
