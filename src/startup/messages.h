// What start-up tells the cashier: two fixed messages, and the reasons that follow the first.
#pragma once

#include <string_view>

namespace startup::message {

// The cash point is wrong: the program takes one number from 0 to 9. Correct it in the icon's command, or
// CASH_POINT in till.conf. Followed by the words that were given, on a line of their own.
inline constexpr std::string_view wrong_cash_point =
    "رقم نقطة البيع غير صحيح. يقبل البرنامج رقما واحدا من 0 إلى 9. صحح الرقم في أمر الأيقونة أو "
    "CASH_POINT في الملف till.conf. المكتوب الآن:\n\u200E";
// The database path is not correct.
inline constexpr std::string_view wrong_path = "مسار قاعدة البيانات غير صحيح ";
// The program cannot run because its version differs; the current version is dated ...
inline constexpr std::string_view version_differs =
    "لا يمكن تشغيل البرنامج لوجود اختلاف في اصدار البرنامج    الاصدار الحالي بتاريخ ";

// This program is older than the shop: install the newer version, or go back to the shop's copy from before
// the update. Followed by this program's version.
inline constexpr std::string_view program_older =
    "هذا البرنامج أقدم من بيانات المحل. ثبت الإصدار الأحدث، أو استرجع نسخة المحل التي حفظت قبل التحديث "
    "(tallvex-admin restore). إصدار هذا البرنامج: ";

// Cash point N … is open on this machine for another user; is open here and does not answer; is open on
// another machine: close it there. If that machine was switched off, try again after three minutes.
inline constexpr std::string_view cash_point = "نقطة البيع رقم ";
// The office, in the place of the cash point; so many offices of a shop are open that none can be added.
inline constexpr std::string_view office = "نافذة المكتب";
inline constexpr std::string_view too_many_offices = "المكتب مفتوح على عشرة أجهزة، أغلق أحدها أولا:\n\u200E";
inline constexpr std::string_view runs_as_user = " مفتوحة الآن على هذا الجهاز باسم المستخدم: ";
inline constexpr std::string_view runs_silently =
    " مفتوحة الآن على هذا الجهاز ولا تستجيب. انتظر قليلا، فإن لم تظهر فأعد تشغيل الجهاز";
inline constexpr std::string_view runs_elsewhere = " مفتوحة الآن على جهاز آخر. أغلقها هناك أولا:\n\u200E";
inline constexpr std::string_view free_after_three_minutes =
    "\nإذا كان ذلك الجهاز قد أغلق فجأة فحاول مرة أخرى بعد ثلاث دقائق";
// Cash point N … was opened on another machine while this one was cut off from the server: complete what is
// on the screen, then leave the program here, or close it there. Two tills mix up one drawer's cash.
inline constexpr std::string_view taken_by_other =
    " فتحت على جهاز آخر أثناء انقطاع هذا الجهاز عن الخادم:\n\u200E";
inline constexpr std::string_view one_till_for_a_drawer =
    "\nأكمل ما على الشاشة ثم اخرج من البرنامج هنا، أو أغلقه هناك. البيع من الجهازين معا يخلط نقدية الدرج";

// Reasons. The server does not answer: check that it is on and the network cable is in.
inline constexpr std::string_view server_unreachable =
    "جهاز الخادم لا يستجيب. تأكد من أنه يعمل ومن توصيل الشبكة ثم أعد تشغيل البرنامج";
// The server's new address was found and kept: start the program again.
inline constexpr std::string_view address_renewed =
    "تم العثور على عنوان جديد لجهاز الخادم وحفظه، أعد تشغيل البرنامج";
// The server refused the password of the database login.
inline constexpr std::string_view wrong_password = "رفض الخادم كلمة سر الاتصال بقاعدة البيانات";
// The server does not encrypt the password, so it was not sent. Tell the person in charge.
inline constexpr std::string_view not_encrypted =
    "الخادم لا يشفر كلمة سر الاتصال، فلم ترسل إليه. أبلغ المدير";
// The server has no database of this name.
inline constexpr std::string_view database_missing = "قاعدة البيانات غير موجودة على الخادم: ";
// The shop's file: missing, a folder, read-only, locked, corrupt, on a full disk.
inline constexpr std::string_view shop_file_missing = "ملف قاعدة البيانات غير موجود: ";
inline constexpr std::string_view shop_file_is_folder = "مسار ملف قاعدة البيانات هو مجلد وليس ملفا: ";
inline constexpr std::string_view shop_file_read_only =
    "ملف قاعدة البيانات للقراءة فقط ولا يمكن الكتابة فيه: ";
inline constexpr std::string_view shop_file_corrupt = "ملف قاعدة البيانات تالف أو ليس قاعدة بيانات: ";
inline constexpr std::string_view shop_file_unreadable = "ملف قاعدة البيانات غير مسموح بقراءته: ";
inline constexpr std::string_view shop_file_busy = "ملف قاعدة البيانات مشغول ببرنامج آخر: ";
inline constexpr std::string_view disk_full = "القرص ممتلئ، أفرغ بعض المساحة ثم أعد تشغيل البرنامج";
// The driver package for servers is not installed.
inline constexpr std::string_view no_driver = "برنامج الاتصال بالخادم (tdsodbc) غير مثبت على هذا الجهاز";
inline constexpr std::string_view connection_lost = "انقطع الاتصال بقاعدة البيانات";
// The settings row is missing.
inline constexpr std::string_view settings_missing = "بيانات الإعدادات غير موجودة في قاعدة البيانات";
// The database on the server is incomplete, so some screens may not work; the program cannot run on it. Tell
// the person in charge. Followed by what is missing, line by line, and by the number of what is not listed.
inline constexpr std::string_view schema_incomplete =
    "قاعدة البيانات على الخادم ناقصة، وقد لا تعمل بعض الشاشات. أبلغ المدير. ينقصها:";
inline constexpr std::string_view schema_unusable =
    "لا يمكن تشغيل البرنامج لأن قاعدة البيانات على الخادم ناقصة. أبلغ المدير. ينقصها:";
inline constexpr std::string_view and_others = "وغير ذلك: ";
// No copy of the shop could be made before the update, so it was not updated. Make room on the disk, then
// start the program again.
inline constexpr std::string_view no_copy_before_update =
    "لم يبدأ تحديث بيانات المحل لأن نسخة منها قبل التحديث لم تحفظ. تأكد من وجود مساحة كافية على القرص ثم "
    "أعد "
    "تشغيل البرنامج";
// The day's copy for training could not be made: make room on the disk, or see the log.
inline constexpr std::string_view no_training_copy =
    "لم يتم تجهيز نسخة التدريب، ولم يتغير شيء في بيانات المحل. تأكد من وجود مساحة كافية على القرص، "
    "والسبب مسجل في ملف السجل";
// Anything else; the cause is in the log for the support engineer.
inline constexpr std::string_view see_log = "حدث خطأ أثناء بدء البرنامج، وسببه مسجل في ملف السجل";

// There is no shop on this machine yet: open the office to make it. Followed by the folder where it was
// looked for, on a line of its own. The left-to-right mark keeps the parts of the path in order.
inline constexpr std::string_view no_shop_folder =
    "لا يوجد محل على هذا الجهاز بعد، افتح برنامج المكتب لإنشائه في المجلد:\n\u200E";
// This user may not enter the shop's folder; followed by it.
inline constexpr std::string_view shop_folder_closed = "غير مسموح لهذا المستخدم بفتح مجلد المحل:\n\u200E";

// Files beside the program. Each is followed by the file's name.
inline constexpr std::string_view file_missing = "الملف غير موجود: ";
inline constexpr std::string_view file_unreadable = "لا يمكن قراءة الملف: ";
inline constexpr std::string_view file_unwritable = "لا يمكن كتابة الملف: ";
inline constexpr std::string_view connection_file_short = "ملف الاتصال بقاعدة البيانات ناقص: ";
// Blank, or its names cannot be read.
inline constexpr std::string_view connection_file_damaged = "ملف الاتصال بقاعدة البيانات فارغ أو تالف: ";
inline constexpr std::string_view version_file_length = "ملف إصدار البرنامج طوله غير صحيح: ";
inline constexpr std::string_view text_too_long = "النص أطول من المكان المخصص له: ";
inline constexpr std::string_view text_not_arabic_page = "النص به حروف لا يمكن حفظها في الملف: ";
// No password of the database login is given.
inline constexpr std::string_view no_password =
    "لم تحدد كلمة سر الاتصال بقاعدة البيانات في الملف sa.pwd أو في المتغير TALLVEX_SA_PASSWORD";
// The password file may be read by others than its owner.
inline constexpr std::string_view password_file_open =
    "ملف كلمة السر sa.pwd مسموح لغير صاحبه، اجعله لصاحبه وحده (chmod 600 sa.pwd)";

}  // namespace startup::message
